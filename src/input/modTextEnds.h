#pragma once
// What is found out about a text file before its first row is handed out: where its text ends, how its rows end, which
// characters it has.

#include <cstdint>
#include <string_view>

namespace quillon {

/// The text before the bytes 0x1A at the very end and the NULs behind them.
std::string_view TextBeforeMarks(std::string_view sBytes);
/// The same for a file: moves nEnd, its size. False with errno.
bool FindEndOfText(int nHandle, int64_t& nEnd);

/// Moves nEnd, a place in the file, behind the last row end before it, if that isn't far, else between two characters.
/// False with errno.
bool FindEndOfRows(int nHandle, int64_t& nEnd);

/// Signs of a text, gathered block by block.
class clsTextSigns {
 public:
  /// The characters are looked at as long as bCharacters was true. Returns how many bytes at the block's end are the
  /// beginning of a character that goes on in the next block (bMore): that must begin with them.
  size_t Look(std::string_view sBlock, bool bCharacters, bool bMore);

  bool HasLf() const { return bLf_; }
  /// Not looked for behind the first LF.
  bool HasCr() const { return bCr_; }
  bool IsAscii() const { return bAscii_; }
  bool IsUtf8() const { return bUtf8_; }

 private:
  bool bLf_ = false;
  bool bCr_ = false;
  bool bAscii_ = true;
  bool bUtf8_ = true;
};

}  // namespace quillon
