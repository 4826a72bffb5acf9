#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsLineReader.h"
#include "modReportPreview.h"

namespace quillon {

/// The lines of a report, read when they are asked for, whatever its size: where each thousandth line begins is kept.
class clsReportText {
 public:
  static constexpr size_t kCharacters = 2000;  ///< Of a line that are handed out

  /// Opens it, or keeps it open if it is the same file still. False if it can't be read.
  bool Open(const PreviewRequest& request);
  /// Tells this state of the file, and how it is read, from others.
  const std::string& Stamp() const { return sStamp_; }
  /// Lines that are known to be there.
  int64_t Counted() const { return lCounted_; }
  /// Counts on for about so many bytes. False once all are counted.
  bool CountOn(int64_t lBytes);
  /// Lines lFirst to lLast as far as they are there, as they are shown.
  std::vector<PreviewRow> Lines(int64_t lFirst, int64_t lLast);
  /// The next line behind lFrom with the text, or the last one in front of it, without regard to case; 0 if there is
  /// none.
  int64_t Find(std::string_view sText, int64_t lFrom, bool bForward);

 private:
  static constexpr int64_t kEvery = 1000;
  bool Seek(int64_t lLine);
  void NotePlace();
  int64_t FindIn(std::string_view sText, int64_t lFirst, int64_t lLast, bool bLast);

  clsLineReader reader_;
  bool bOpen_ = false, bAll_ = false;
  int32_t lTabSize_ = 0;
  std::string sStamp_;           ///< Path, size and time of what is open
  std::vector<int64_t> places_;  ///< Bytes in front of line 1, 1001, 2001 ...
  int64_t lCounted_ = 0;
};

}  // namespace quillon
