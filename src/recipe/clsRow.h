#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsCodePage.h"

namespace quillon {

/// One row of report text in the bytes of its code page, cut by character position (from 1).
///
/// A row is a view of the reader's buffer as long as nothing has to be changed in it, and then good until the reader's
/// next row; else it has bytes of its own. The blank that closes a row is only thought behind the view, as few fields
/// reach it.
class clsRow {
 public:
  clsRow() = default;
  clsRow(const clsRow&) = delete;
  clsRow& operator=(const clsRow&) = delete;

  void Clear() { SetView({}, clsCodePage::Utf8(), false); }
  /// nRoomBehind: so many bytes behind the view may be read.
  void SetView(std::string_view sBytes, const clsCodePage& page, bool bBlankBehind, size_t nRoomBehind = 0);
  void SetText(std::string_view sUtf8);
  /// Turns tabs into blanks by the rules of ExpandTabs. False if the row grew too long; it then stays as it was.
  bool Expand(int32_t tab_size);

  /// The bytes without the blank thought behind.
  std::string_view Bytes() const { return sBytes_; }
  bool HasBlankBehind() const { return bBlankBehind_; }
  size_t RoomBehind() const { return nRoomBehind_; }
  const clsCodePage& Page() const { return *pPage_; }
  /// A byte is a character: a single-byte page, or a row of plain ASCII.
  bool BytesAreCharacters() const { return bByteChars_; }

  /// Characters nStart to nEnd in the bytes of the page; positions behind the end give less or nothing. Good until the
  /// row changes.
  std::string_view Field(int64_t nStart, int64_t nEnd);
  /// The whole row as UTF-8.
  std::string Text() const;

 private:
  void Own();
  size_t OffsetOf(int64_t nCharacter);
  size_t Pass(int64_t nCharacter);

  static constexpr int64_t kCheckpoint = 64;
  static constexpr size_t kRoomBehind = 16;  ///< Of a row with bytes of its own

  std::string sOwn_;
  std::string sNext_;  ///< What becomes sOwn_; kept for its memory
  std::string_view sBytes_;
  const clsCodePage* pPage_ = &clsCodePage::Utf8();
  size_t nRoomBehind_ = 0;
  bool bBlankBehind_ = false;
  bool bByteChars_ = true;
  /// Byte offsets of characters 1, 65, 129 ... of a row where they differ from the positions, as far as asked for; so
  /// columns in any order cost no pass over the row each.
  std::vector<uint32_t> checkpoints_;
  struct Cursor {
    int64_t nCharacter = 1;
    size_t nOffset = 0;
  } cursor_;  ///< Where the last search for an offset ended
};

}  // namespace quillon
