#include "modTextEnds.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include "modSystemIo.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr char kEndOfFileMark = '\x1A';

/// How many bytes at the end may be the beginning of a character that goes on behind it.
size_t CutTail(std::string_view s) {
  for (size_t n = 1; n <= std::min<size_t>(3, s.size()); ++n) {
    const auto byte = static_cast<unsigned char>(s[s.size() - n]);
    if (byte >= 0xC0) return n;
    if (byte < 0x80) return 0;
  }
  return 0;
}

}  // namespace

std::string_view TextBeforeMarks(std::string_view sBytes) {
  const size_t nLast = sBytes.find_last_not_of('\0');
  if (nLast == std::string_view::npos || sBytes[nLast] != kEndOfFileMark) return sBytes;
  return sBytes.substr(0, sBytes.find_last_not_of(std::string_view("\0\x1A", 2)) + 1);
}

bool FindEndOfText(int nHandle, int64_t& nEnd) {
  std::array<char, 4096> tail{};
  int64_t nAt = nEnd;
  bool bMarked = false;
  while (nAt > 0) {
    const int64_t nFrom = std::max<int64_t>(0, nAt - static_cast<int64_t>(tail.size()));
    const int64_t nGot = ReadHandleAt(nHandle, tail.data(), static_cast<size_t>(nAt - nFrom), nFrom);
    if (nGot < 0) return false;
    if (nGot < nAt - nFrom) return true;  // it shrank meanwhile: reading will find the end
    for (; nAt > nFrom; --nAt) {
      const char c = tail[static_cast<size_t>(nAt - nFrom) - 1];
      if (c == kEndOfFileMark) {
        bMarked = true;
      } else if (c != '\0') {
        if (bMarked) nEnd = nAt;
        return true;
      }
    }
  }
  if (bMarked) nEnd = 0;
  return true;
}

bool FindEndOfRows(int nHandle, int64_t& nEnd) {
  constexpr int64_t kFar = 64 << 10;
  std::string sTail(static_cast<size_t>(std::min(kFar, nEnd)), '\0');
  const int64_t nFrom = nEnd - static_cast<int64_t>(sTail.size());
  const int64_t nGot = ReadHandleAt(nHandle, sTail.data(), sTail.size(), nFrom);
  if (nGot < 0) return false;
  sTail.resize(static_cast<size_t>(nGot));
  const size_t nLastEnd = sTail.rfind('\n');
  const size_t nKept = nLastEnd == std::string::npos ? sTail.size() - CutTail(sTail) : nLastEnd + 1;
  nEnd = nFrom + static_cast<int64_t>(nKept);
  return true;
}

size_t clsTextSigns::Look(std::string_view sBlock, bool bCharacters, bool bMore) {
  bLf_ = bLf_ || sBlock.find('\n') != std::string_view::npos;
  bCr_ = bCr_ || (!bLf_ && sBlock.find('\r') != std::string_view::npos);
  if (!bCharacters || quillon::IsAscii(sBlock)) return 0;
  bAscii_ = false;
  const size_t nKeep = bMore ? CutTail(sBlock) : 0;
  bUtf8_ = bUtf8_ && IsValidUtf8(sBlock.substr(0, sBlock.size() - nKeep));
  return nKeep;
}

}  // namespace quillon
