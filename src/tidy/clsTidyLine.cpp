#include "clsTidyLine.h"

#include <algorithm>
#include <array>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace quillon {

namespace {

constexpr std::string_view kDrawing = "-=_*+|.:~#";

constexpr size_t kWord = 64;

/// The ink of 64 bytes, a bit each.
uint64_t InkOfWord(const char* p, bool& bAscii) {
#if defined(__SSE2__)
  constexpr size_t kStep = 16;
  const __m128i blank = _mm_set1_epi8(' ');
  uint64_t nBlank = 0;
  int nHigh = 0;
  for (size_t i = 0; i < kWord; i += kStep) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
    nBlank |= static_cast<uint64_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, blank))) << i;
    nHigh |= _mm_movemask_epi8(bytes);
  }
  bAscii = bAscii && nHigh == 0;
  return ~nBlank;
#else
  uint64_t nInk = 0;
  for (size_t i = 0; i < kWord; ++i) {
    nInk |= uint64_t{p[i] != ' '} << i;
    bAscii = bAscii && static_cast<unsigned char>(p[i]) < 0x80;
  }
  return nInk;
#endif
}

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

/// Maps what isn't blank. False, and the map of no use, if the text isn't plain ASCII.
bool clsTidyLine::FindInk(std::string_view sText) {
  const size_t nWords = sText.size() / kWord + 3;
  if (ink_.size() < nWords) ink_.resize(nWords);
  uint64_t* pInk = ink_.data();
  bool bAscii = true;
  for (; sText.size() >= kWord; sText.remove_prefix(kWord)) *pInk++ = InkOfWord(sText.data(), bAscii);
  std::array<char, kWord> rest;
  rest.fill(' ');
  sText.copy(rest.data(), kWord);
  *pInk++ = InkOfWord(rest.data(), bAscii);
  *pInk++ = 0;
  *pInk = 0;
  return bAscii;
}

void clsTidyLine::Set(std::string_view sText) {
  // Form feeds and what a printer takes for a line's end have no width.
  while (!sText.empty() && (sText.front() == '\f' || sText.front() == '\r')) sText.remove_prefix(1);
  while (!sText.empty() && (sText.back() == ' ' || sText.back() == '\f' || sText.back() == '\r'))
    sText.remove_suffix(1);
  sText_ = sText;
  bAscii_ = FindInk(sText);
  if (bAscii_) return;
  starts_.clear();
  for (size_t i = 0; i < sText.size(); i += Utf8CharBytes(sText, i)) starts_.push_back(static_cast<uint32_t>(i));
  starts_.push_back(static_cast<uint32_t>(sText.size()));
}

bool clsTidyLine::IsDrawnFrom(size_t nByte) const {
  bool bRun = false;
  char32_t chBefore = 0;
  while (nByte < sText_.size()) {
    const char32_t ch = DecodeUtf8(sText_, nByte);
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
