#pragma once
// Trimming of one byte around a text, many bytes at a time.

#include <bit>
#include <cstdint>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace quillon {

/// The text without the bytes c at its left, its right or both; 16 bytes behind its end may be read, whatever they are.
inline std::string_view TrimByteInBlocks(std::string_view s, char c, bool bLeft, bool bRight) {
#if defined(__SSE2__)
  constexpr size_t kBlock = 16;
  const __m128i bytes = _mm_set1_epi8(c);
  const auto others = [&bytes](const char* p) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    return ~static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(block, bytes))) & 0xFFFFU;
  };
  while (bLeft && s.size() > kBlock) {
    const uint32_t nOthers = others(s.data());
    s.remove_prefix(nOthers == 0 ? kBlock : static_cast<size_t>(std::countr_zero(nOthers)));
    if (nOthers != 0) break;
  }
  while (bRight && s.size() > kBlock) {
    const uint32_t nOthers = others(s.data() + s.size() - kBlock);
    s.remove_suffix(nOthers == 0 ? kBlock : kBlock - static_cast<size_t>(std::bit_width(nOthers)));
    if (nOthers != 0) return s;
  }
  if (s.size() > kBlock || s.empty()) return s;
  const uint32_t nOthers = others(s.data()) & ((1U << s.size()) - 1);
  if (nOthers == 0) return s.substr(0, bLeft || bRight ? 0 : s.size());
  const auto nFirst = bLeft ? static_cast<size_t>(std::countr_zero(nOthers)) : 0;
  const auto nLast = bRight ? static_cast<size_t>(std::bit_width(nOthers)) : s.size();
  return s.substr(nFirst, nLast - nFirst);
#else
  while (bLeft && !s.empty() && s.front() == c) s.remove_prefix(1);
  while (bRight && !s.empty() && s.back() == c) s.remove_suffix(1);
  return s;
#endif
}

}  // namespace quillon
