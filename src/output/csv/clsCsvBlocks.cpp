#include "clsCsvBlocks.h"

#include <algorithm>
#include <cstring>

#include "modBlankBlocks.h"
#include "modText.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace quillon {

namespace {

constexpr size_t kBlock = SinkRow::kRoom;
constexpr char kNoted = '=';

}  // namespace

clsCsvBlocks::clsCsvBlocks(const CsvRules& rules, bool bNotes) : rules_(rules), bNotes_(bNotes) {
  if (rules.sSeparator.empty() || rules.sSeparator.size() > separator_.size() || rules.bSafe) return;
  rules.sSeparator.copy(separator_.data(), separator_.size());
  std::string sAsks = "\"";
  const auto ask = [&sAsks](char c) {
    if (sAsks.find(c) == std::string::npos) sAsks += c;
  };
  for (const char c : rules.sQuoteOn) ask(c);
  // The first byte of a character stands for it: what holds that one alone is looked at closely.
  if (rules.bQuoteSeparator) ask(rules.sSeparator.front());
  if (rules.quoting != CsvQuoting::Sometimes) sAsks.resize(1);
  if (bNotes) ask(kNoted);
  if (sAsks.size() > asks_.size()) return;
  asks_.fill(sAsks.front());
  sAsks.copy(asks_.data(), sAsks.size());
  if (sAsks.size() <= 3) {
    ChoosePuts<3>();
  } else if (sAsks.size() == 4) {
    ChoosePuts<4>();
  } else {
    ChoosePuts<kMostAsks>();
  }
}

size_t clsCsvBlocks::RoomFor(const SinkRow& row) const {
  size_t nBytes = 0;
  for (const std::string_view sField : row.fields) nBytes += sField.size();
  return 2 * nBytes + row.fields.size() * (2 + separator_.size()) + 2 * kBlock;
}

/// A field that may need quotes or begin with an equal sign.
char* clsCsvBlocks::PutAsking(std::string_view sField, char* pOut, Call noted) const {
  if (bNotes_ && sField.find(kNoted) != std::string_view::npos) noted.call(noted.pNoted, sField);
  if (rules_.quoting == CsvQuoting::Never || !NeedsQuotes(rules_, sField)) {
    return std::copy(sField.begin(), sField.end(), pOut);
  }
  return PutQuoted(pOut, sField);
}

#if defined(__SSE2__)

namespace {

inline __m128i Load(const char* p) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
inline void Store(char* p, __m128i v) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
}
inline uint32_t Bits(__m128i v) {
  return static_cast<uint32_t>(_mm_movemask_epi8(v));
}

/// What a field's blocks hold of the bytes that want more than their copy.
struct Found {
  uint32_t nAny = 0;    ///< Any of them
  uint32_t nClose = 0;  ///< Double quotes, equal signs: the field is looked at closely
  uint32_t nHigh = 0;   ///< Bytes that aren't ASCII
};

template <size_t nAsks, bool bAsciiOnly>
class Looker {
 public:
  Looker(const char* pAsks, bool bNotes) : close_(_mm_set1_epi8(bNotes ? kNoted : *pAsks)) {
    for (size_t i = 0; i < nAsks; ++i) asks_[i].bytes = _mm_set1_epi8(pAsks[i]);
  }

  /// pFrom has a whole block to read; with bCopy it goes to pTo, which has a block to write.
  template <bool bCopy>
  Found Look(const char* pFrom, size_t nBytes, char* pTo) const {
    Found found;
    size_t i = 0;
    for (; i + kBlock <= nBytes; i += kBlock) LookAt<bCopy>(pFrom + i, 0xFFFF, pTo + i, found);
    if (i < nBytes) LookAt<bCopy>(pFrom + i, (1U << (nBytes - i)) - 1, pTo + i, found);
    return found;
  }

 private:
  template <bool bCopy>
  inline void LookAt(const char* pFrom, uint32_t nMask, char* pTo, Found& found) const {
    const __m128i bytes = Load(pFrom);
    if constexpr (bCopy) Store(pTo, bytes);
    if constexpr (bAsciiOnly) found.nHigh |= Bits(bytes) & nMask;
    __m128i any = _mm_cmpeq_epi8(bytes, asks_[0].bytes);
    for (size_t i = 1; i < nAsks; ++i) any = _mm_or_si128(any, _mm_cmpeq_epi8(bytes, asks_[i].bytes));
    const uint32_t nAny = Bits(any) & nMask;
    if (nAny == 0) return;
    found.nAny |= nAny;
    found.nClose |= nMask & Bits(_mm_or_si128(_mm_cmpeq_epi8(bytes, asks_[0].bytes), _mm_cmpeq_epi8(bytes, close_)));
  }

  struct Block {
    __m128i bytes;
  };
  std::array<Block, nAsks> asks_;
  __m128i close_;
};

}  // namespace

template <size_t nAsks, bool bRoom, bool bAsciiOnly>
char* clsCsvBlocks::PutFields(const SinkRow& row, char* p, Call noted) const {
  const Looker<nAsks, bAsciiOnly> looker(asks_.data(), bNotes_);
  const size_t nSeparator = rules_.sSeparator.size();
  const CsvQuoting quoting = rules_.quoting;
  bool bFirst = true;
  for (std::string_view sField : row.fields) {
    if (!bFirst) {
      std::memcpy(p, separator_.data(), separator_.size());  // the next field writes over the surplus
      p += nSeparator;
    }
    bFirst = bFirst && rules_.bJoinEmpty && sField.empty();
    if (rules_.bTrim) sField = bRoom ? TrimByteInBlocks(sField, ' ', true, true) : TrimBlanks(sField);
    const size_t n = sField.size();
    char* const pData = quoting == CsvQuoting::Always ? p + 1 : p;
    Found found;
    if constexpr (bRoom) {
      found = looker.template Look<true>(sField.data(), n, pData);
    } else {
      sField.copy(pData, n);
      found = looker.template Look<false>(pData, n, pData);
    }
    if (bAsciiOnly && found.nHigh != 0) return nullptr;
    if (found.nClose != 0 || (found.nAny != 0 && nSeparator > 1)) {
      p = PutAsking(sField, p, noted);
    } else if (quoting == CsvQuoting::Never || (quoting == CsvQuoting::Sometimes && found.nAny == 0)) {
      p += n;
    } else {
      // An amount, mostly: copied once more, one further.
      if (quoting == CsvQuoting::Sometimes) {
        if constexpr (bRoom) {
          for (size_t i = 0; i < n; i += kBlock) Store(p + 1 + i, Load(sField.data() + i));
        } else {
          sField.copy(p + 1, n);
        }
      }
      *p = '"';
      p[n + 1] = '"';
      p += n + 2;
    }
  }
  *p++ = '\r';
  *p++ = '\n';
  return p;
}

template <size_t nAsks>
void clsCsvBlocks::ChoosePuts() {
  put_[0][0] = &clsCsvBlocks::PutFields<nAsks, false, false>;
  put_[0][1] = &clsCsvBlocks::PutFields<nAsks, false, true>;
  put_[1][0] = &clsCsvBlocks::PutFields<nAsks, true, false>;
  put_[1][1] = &clsCsvBlocks::PutFields<nAsks, true, true>;
}

#else

template <size_t nAsks>
void clsCsvBlocks::ChoosePuts() {}

#endif

}  // namespace quillon
