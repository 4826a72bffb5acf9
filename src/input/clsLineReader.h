#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clsCodePage.h"
#include "clsFileBytes.h"
#include "clsKeyWatch.h"
#include "modFailure.h"
#include "modTextEnds.h"

namespace quillon {

/// How a text file is read. pCodePage null: found by content ("auto").
struct TextFileOptions {
  bool bUnix = false;
  const clsCodePage* pCodePage = &clsCodePage::Windows1252();
  /// Above 0: a longer file is read as if it ended with the last row that ends in its first so many bytes (in the
  /// middle of a row if none does). For looks that must not take long.
  int64_t lMostBytes = 0;
  /// A report: what is no text yet is made into text first, by the choices in force (see modReportText). All other
  /// files are read as they stand.
  bool bReport = false;
};

/// The one reader of rows: reports, recipes, profiles, marks.
///
/// A row ends at LF; the CRs directly before it belong to the line end. Other CRs are characters with bUnix off and
/// dropped with it on. With bUnix off a file that has CRs and no LF at all ends its rows at CR. Bytes 0x1A at the very
/// end (and NULs behind them) are the old end-of-file mark and no row. A last line without line end is a row; an empty
/// rest is none. A BOM in front makes the file UTF-8 and belongs to no row. NULs inside stay.
///
/// The file is read in blocks, never mapped (a file that shrinks while it is read must not kill the run); memory is one
/// block or the longest row, and a row of more than kMaxRowBytes is a failure. Each block but the first lets events
/// run (modEventLoop); work that is to stop there ends with StoppedFailure.
class clsLineReader {
 public:
  static constexpr size_t kMaxRowBytes = size_t{256} << 20;
  static constexpr size_t kRoomBehind = 16;

  clsLineReader() = default;
  clsLineReader(const clsLineReader&) = delete;
  clsLineReader& operator=(const clsLineReader&) = delete;

  /// sPath is a path text (either separator, drive letters). False with the reason if the file can't be read.
  bool Open(std::string_view sPath, const TextFileOptions& options, Failure& failure);
  /// Reads from memory instead; the bytes must outlive the reader.
  void OpenMemory(std::string_view sBytes, const TextFileOptions& options);
  void Close();
  /// Until the next Open: whoever reads row by row lets events run, and can stop where it likes.
  void LeaveEventsToCaller(bool bLeave) { bRunsEvents_ = !bLeave; }

  /// The next row in the bytes of the file, without its line end; valid until the next call. False at the end and on a
  /// failure (see LastFailure).
  bool ReadRow(std::string_view& sRow);
  /// Passes over nRows rows; returns how many there were.
  int64_t SkipRows(int64_t nRows);
  /// True if no row is left.
  bool AtEnd();
  /// Goes to the row behind row lRow, whose first byte is at nOffset: what RowNumber and BytesDone said before it was
  /// read. After a failure only Open helps.
  bool SeekRow(int64_t lRow, int64_t nOffset);
  /// Number of rows read or passed over so far.
  int64_t RowNumber() const { return lRow_; }
  int64_t BytesDone() const;
  /// Where the row read last begins.
  int64_t RowOffset() const { return BytesDone() - static_cast<int64_t>(raw_.size()) - (bEnded_ ? 1 : 0); }
  int64_t BytesTotal() const { return nEnd_; }
  /// True if the file goes on behind lMostBytes.
  bool IsCutShort() const { return bCutShort_; }

  /// Reads on to the next row that contains sNeedle (bytes; "" is in every row that isn't empty) and, if sExclusion
  /// isn't empty, not sExclusion. Returns how many rows that took (the row found included), 0 at the end.
  int64_t FindRow(std::string_view sNeedle, std::string_view sExclusion, std::string_view& sRow);
  /// Bytes behind the row read last that may be read too (not what they are): so rows can be taken in chunks.
  size_t RoomBehind() const { return file_.IsOpen() && bInBuffer_ ? kRoomBehind : 0; }
  /// False if the row read last holds no tab, found out for many rows at once. True says nothing.
  bool RowMayHaveTab();
  /// Texts (bytes of the file) whose first rows are found wherever the whole file is looked at before its rows are
  /// read. To be called before Open.
  void LookOutFor(const std::vector<std::string>& texts) { watch_.Expect(texts); }
  /// The file's first bytes stay in memory, so that reading them again costs nothing. To be called before Open.
  void KeepFirst(size_t nBytes) { file_.KeepFirst(nBytes); }
  /// The first row with such a text, as far as it is known; lRow 0 if none has it. Several texts are looked for now,
  /// unless that was done.
  std::optional<clsKeyWatch::Row> Sighted(std::string_view sText);
  /// True if a tab stands anywhere in the file. The place of the next row stays.
  bool HasTab();

  const clsCodePage& CodePage() const { return *pCodePage_; }
  const Failure& LastFailure() const { return failure_; }

 private:
  enum class Ends { Lf, Cr };

  /// What the look at the whole file is for; it ends where all of it is known.
  struct Wanted {
    bool bEnds = false, bPage = false, bTab = false, bKeys = false;
    bool Any() const { return bEnds || bPage || bTab || bKeys; }
  };

  int OpenReport(Failure& failure);
  bool Prepare();
  bool Fail(int nError);
  bool SettleEnds();
  bool LookThrough(Wanted wanted, clsTextSigns& signs);
  bool LookAhead(Wanted wanted);
  bool Fill();
  bool MayGoOn();
  bool NextRawRow(std::string_view& sRow);
  std::string_view StripRow(std::string_view sRow);
  int64_t PassToNeedle(std::string_view sNeedle);

  clsFileBytes file_;
  TextFileOptions options_;
  const clsCodePage* pCodePage_ = &clsCodePage::Windows1252();
  std::string sPath_;
  Failure failure_;
  Ends ends_ = Ends::Lf;
  std::optional<bool> hasTab_;
  clsKeyWatch watch_;
  bool bWatched_ = false;  ///< The whole file
  bool bCutShort_ = false;
  bool bRunsEvents_ = true;
  bool bEnded_ = false;     ///< The row handed out last had a line end
  bool bInBuffer_ = false;  ///< The row handed out last lies in the buffer
  int64_t nStart_ = 0;      ///< First byte behind a BOM
  int64_t nEnd_ = 0;        ///< First byte of the end-of-file mark, or the size
  int64_t nFilePos_ = 0;    ///< File offset of the byte behind the buffer
  int64_t nBlock_ = 0;      ///< File offset of the buffer's first byte
  int64_t lRow_ = 0;
  std::vector<char> buffer_;
  std::string_view memory_;  ///< What is read where there is no file
  std::string_view window_;  ///< Bytes read and not yet handed out
  std::string_view raw_;     ///< The row handed out last, with its CRs
  /// Whether the block in hand holds a tab, once that was asked
  enum class Tabs { Unknown, None, Some } tabs_ = Tabs::Unknown;
  std::string sScratch_;  ///< A row whose CRs were dropped
};

/// All rows of a file as UTF-8, for the small files of the system. False with the reason.
bool ReadAllRows(std::string_view sPath, const TextFileOptions& options, std::vector<std::string>& rows,
                 Failure& failure);

}  // namespace quillon
