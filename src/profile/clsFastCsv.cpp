#include "clsFastCsv.h"

#include <algorithm>
#include <bit>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace quillon {

clsFastCsv::clsFastCsv(const CutPlan& plan, const CsvRules& rules)
    : separator_(rules.sSeparator.front()), quoting_(rules.quoting) {
  for (const PlanColumn& column : plan.columns) {
    Column fast{static_cast<size_t>(column.nStart), static_cast<size_t>(column.nCount), {}, 1, 1};
    if (column.sPad.size() == 1) {
      fast.pads.fill(column.sPad.front());
      fast.nKeepFirst = column.side == TrimSide::Left ? 0 : 1;
      fast.nKeepLast = column.side == TrimSide::Right ? 0 : 1;
    }
    columns_.push_back(fast);
  }
}

#ifdef __SSE2__

namespace {

constexpr size_t kBlock = sizeof(__m128i);

__m128i Load(const char* p) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
void Store(char* p, __m128i v) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
}
/// A bit for each byte that is set in a comparison's result.
uint32_t Bits(__m128i v) {
  return static_cast<uint32_t>(_mm_movemask_epi8(v));
}
uint32_t LowBits(size_t n) {
  return (1U << n) - 1;
}

/// 16 bytes from p on, what lies behind the row being any bytes; nothing outside the row is read.
__m128i LoadWithin(const char* p, std::string_view sRow) {
  const char* const pEnd = sRow.data() + sRow.size();
  if (pEnd - p >= static_cast<ptrdiff_t>(kBlock)) return Load(p);
  char tail[2 * kBlock] = {};
  if (sRow.size() >= kBlock) {
    Store(tail, Load(pEnd - kBlock));
    return Load(tail + (p - (pEnd - kBlock)));
  }
  std::copy(p, pEnd, tail);
  return Load(tail);
}

/// The bytes for whose sake a value is quoted or its quotes are doubled.
template <CsvQuoting quoting>
class Specials {
 public:
  explicit Specials(char separator)
      : separator_(_mm_set1_epi8(separator)), quote_(_mm_set1_epi8('"')), cr_(_mm_set1_epi8('\r')) {}

  uint32_t Quotes(__m128i v) const { return Bits(_mm_cmpeq_epi8(v, quote_)); }
  uint32_t In(__m128i v) const {
    if constexpr (quoting == CsvQuoting::Never) return 0;
    const __m128i quotes = _mm_cmpeq_epi8(v, quote_);
    if constexpr (quoting == CsvQuoting::Always) return Bits(quotes);
    return Bits(_mm_or_si128(quotes, _mm_or_si128(_mm_cmpeq_epi8(v, separator_), _mm_cmpeq_epi8(v, cr_))));
  }

 private:
  __m128i separator_, quote_, cr_;
};

/// A trimmed value that was copied, and what special bytes it holds.
struct Copied {
  const char* p;
  size_t n;
  bool bSpecial;
  bool bPlain;  ///< No double quotes among them, and short: it can be put in quotes as it is
};

/// Up to 16 bytes: one load answers for trimming and special bytes without a branch.
template <typename SpecialBytes>
Copied CopyShort(const char* p, size_t n, const auto& column, const SpecialBytes& specials, std::string_view sRow,
                 char* pOut) {
  const __m128i v = LoadWithin(p, sRow);
  const uint32_t nValue = ~Bits(_mm_cmpeq_epi8(v, Load(column.pads.data()))) & LowBits(n);
  const auto nFirst = static_cast<size_t>(std::countr_zero(nValue | column.nKeepFirst | (1U << n)));
  const auto nLast = static_cast<size_t>(std::bit_width(nValue | ((column.nKeepLast << n) >> 1)));
  const size_t nLength = nLast - std::min(nFirst, nLast);
  Store(pOut, LoadWithin(p + nFirst, sRow));
  const bool bSpecial = ((specials.In(v) >> nFirst) & LowBits(nLength)) != 0;
  return {p + nFirst, nLength, bSpecial, bSpecial && ((specials.Quotes(v) >> nFirst) & LowBits(nLength)) == 0};
}

template <typename SpecialBytes>
Copied CopyLong(const char* p, size_t n, const auto& column, const SpecialBytes& specials, std::string_view sRow,
                char* pOut) {
  const __m128i pads = Load(column.pads.data());
  const auto all = [&](const char* pBlock) { return Bits(_mm_cmpeq_epi8(Load(pBlock), pads)) == 0xFFFF; };
  if (column.nKeepFirst == 0) {
    for (; n > kBlock && all(p); n -= kBlock) p += kBlock;
  } else if (column.nKeepLast == 0) {
    while (n > kBlock && all(p + n - kBlock)) n -= kBlock;
  }
  if (n <= kBlock) return CopyShort(p, n, column, specials, sRow, pOut);
  for (; column.nKeepFirst == 0 && *p == column.pads[0]; --n) ++p;
  while (column.nKeepLast == 0 && p[n - 1] == column.pads[0]) --n;
  if (n <= kBlock) return CopyShort(p, n, column, specials, sRow, pOut);
  const __m128i last = Load(p + n - kBlock);
  uint32_t nFound = specials.In(last);
  for (size_t i = 0; i + kBlock < n; i += kBlock) {
    const __m128i v = Load(p + i);
    nFound |= specials.In(v);
    Store(pOut + i, v);
  }
  Store(pOut + n - kBlock, last);
  return {p, n, nFound != 0, false};
}

}  // namespace

bool clsFastCsv::Serves(const CsvRules& rules) {
  return rules.sSeparator.size() == 1;
}

template <CsvQuoting quoting>
char* clsFastCsv::PutFields(std::string_view sRow, char* pOut) const {
  const Specials<quoting> specials(separator_);
  for (const Column& column : columns_) {
    const size_t nStart = std::min(column.nStart, sRow.size());
    const size_t n = std::min(column.nCount, sRow.size() - nStart);
    const char* const p = sRow.data() + nStart;
    char* const pData = quoting == CsvQuoting::Always ? pOut + 1 : pOut;
    const Copied value =
        n <= kBlock ? CopyShort(p, n, column, specials, sRow, pData) : CopyLong(p, n, column, specials, sRow, pData);
    if (value.bPlain) {
      Store(pOut + 1, LoadWithin(value.p, sRow));
      *pOut = pOut[value.n + 1] = '"';
      pOut += value.n + 2;
    } else if (value.bSpecial) {
      pOut = PutQuoted(pOut, {value.p, value.n});
    } else {
      if constexpr (quoting == CsvQuoting::Always) *pOut = pData[value.n] = '"';
      pOut = pData + value.n + (quoting == CsvQuoting::Always ? 1 : 0);
    }
    *pOut++ = separator_;
  }
  return columns_.empty() ? pOut : pOut - 1;
}

char* clsFastCsv::PutRow(std::string_view sRow, char* pOut) const {
  switch (quoting_) {
    case CsvQuoting::Never:
      pOut = PutFields<CsvQuoting::Never>(sRow, pOut);
      break;
    case CsvQuoting::Sometimes:
      pOut = PutFields<CsvQuoting::Sometimes>(sRow, pOut);
      break;
    case CsvQuoting::Always:
      pOut = PutFields<CsvQuoting::Always>(sRow, pOut);
      break;
  }
  *pOut++ = '\r';
  *pOut++ = '\n';
  return pOut;
}

#else

// Without the block operations the plain road serves all rows.
bool clsFastCsv::Serves(const CsvRules&) {
  return false;
}
char* clsFastCsv::PutRow(std::string_view, char* pOut) const {
  return pOut;
}

#endif

}  // namespace quillon
