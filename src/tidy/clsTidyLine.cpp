#include "clsTidyLine.h"

#include <algorithm>

namespace quillon {

namespace {

constexpr std::string_view kDrawing = "-=_*+|.:~#";

bool IsBoxCharacter(char32_t ch) {
  return ch >= 0x2500 && ch <= 0x259F;
}

}  // namespace

bool IsTidyLetter(char32_t ch) {
  if (ch < 0x80) return IsAsciiLetter(static_cast<char>(ch));
  if (ch < 0xC0 || ch == 0xD7 || ch == 0xF7) return ch == 0xAA || ch == 0xB5 || ch == 0xBA;
  return !(ch >= 0x2000 && ch <= 0x2BFF) && !(ch >= 0x3000 && ch <= 0x303F) && !(ch >= 0xE000 && ch <= 0xF8FF) &&
         ch != 0xFFFD;
}

void clsTidyLine::Set(std::string_view sText) {
  // Form feeds and what a printer takes for a line's end have no width.
  while (!sText.empty() && (sText.front() == '\f' || sText.front() == '\r')) sText.remove_prefix(1);
  while (!sText.empty() && (sText.back() == ' ' || sText.back() == '\f' || sText.back() == '\r'))
    sText.remove_suffix(1);
  sText_ = sText;
  bAscii_ = IsAscii(sText);
  if (bAscii_) return;
  starts_.clear();
  for (size_t i = 0; i < sText.size(); i += Utf8CharBytes(sText, i)) starts_.push_back(static_cast<uint32_t>(i));
  starts_.push_back(static_cast<uint32_t>(sText.size()));
}

bool clsTidyLine::IsDrawn() const {
  bool bRun = false;
  char32_t chBefore = 0;
  // What nearly all lines begin with tells it at once.
  const size_t nFirst = std::min(sText_.find_first_not_of(' '), sText_.size());
  if (nFirst < sText_.size() && (IsAsciiDigit(sText_[nFirst]) || IsAsciiLetter(sText_[nFirst]))) return false;
  for (size_t i = 0; i < sText_.size();) {
    const char32_t ch = DecodeUtf8(sText_, i);
    const bool bDrawing =
        ch < 0x80 ? kDrawing.find(static_cast<char>(ch)) != std::string_view::npos : IsBoxCharacter(ch);
    if (ch != ' ' && !bDrawing) return false;
    bRun = bRun || (bDrawing && ch == chBefore);
    chBefore = ch;
  }
  return bRun;
}

bool clsTidyLine::IsLetterAt(size_t nPosition) const {
  if (nPosition >= Size()) return false;
  size_t nByte = Offset(nPosition);
  if (bAscii_) return IsAsciiLetter(sText_[nByte]);
  return IsTidyLetter(DecodeUtf8(sText_, nByte));
}

size_t clsTidyLine::PositionOf(size_t nByte) const {
  if (bAscii_) return nByte;
  return static_cast<size_t>(std::lower_bound(starts_.begin(), starts_.end(), nByte) - starts_.begin());
}

}  // namespace quillon
