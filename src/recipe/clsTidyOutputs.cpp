#include "clsTidyOutputs.h"

#include <algorithm>
#include <cstring>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "clsWorkbook.h"
#include "modRecipeFailures.h"
#include "modSettling.h"

namespace quillon {

namespace {

constexpr int64_t kLookEvery = 1000;

constexpr size_t kChunk = 16;
constexpr size_t kMostLooked = 4000;  // a byte counts the asking ones of each place in a chunk

/// Copies a text; few are longer than a chunk.
inline char* PutShort(char* p, std::string_view s) {
  const size_t n = s.size();
  if (n > kChunk) return p + s.copy(p, n);
  // Both ends, which may overlap.
  const auto putEnds = [&](auto word) {
    std::memcpy(&word, s.data(), sizeof word);
    auto behind = word;
    std::memcpy(&behind, s.data() + n - sizeof word, sizeof word);
    std::memcpy(p, &word, sizeof word);
    std::memcpy(p + n - sizeof word, &behind, sizeof word);
  };
  if (n >= sizeof(uint64_t)) {
    putEnds(uint64_t{});
  } else if (n >= sizeof(uint32_t)) {
    putEnds(uint32_t{});
  } else {
    for (size_t i = 0; i < n; ++i) p[i] = s[i];
  }
  return p + n;
}

/// "2024-12-31 23:59:00", the time only where there is one.
CalendarMoment MomentOf(std::string_view sPlain) {
  const auto number = [sPlain](size_t nFrom, size_t nCount) {
    int nValue = 0;
    for (const char ch : sPlain.substr(std::min(nFrom, sPlain.size()), nCount)) nValue = nValue * 10 + (ch - '0');
    return nValue;
  };
  return {number(0, 4), number(5, 2), number(8, 2), (number(11, 2) * 60 + number(14, 2)) * 60 + number(17, 2)};
}

/// A plain number with its point two digits further left.
std::string HundredthOf(std::string_view sPlain) {
  const bool bNegative = sPlain.starts_with('-');
  const size_t nPoint = sPlain.find('.');
  std::string sWhole(sPlain.substr(bNegative ? 1 : 0, nPoint == std::string_view::npos ? nPoint : nPoint - bNegative));
  if (sWhole.size() < 3) sWhole.insert(0, 3 - sWhole.size(), '0');
  sWhole.insert(sWhole.size() - 2, ".");
  if (nPoint != std::string_view::npos) sWhole += sPlain.substr(nPoint + 1);
  return bNegative ? "-" + sWhole : sWhole;
}

}  // namespace

clsTidyCsvOutput::clsTidyCsvOutput(RecipeContext& context, clsOutputFile& file, const CsvRules& rules,
                                   const clsCodePage& pageOfOutput)
    : context_(context),
      file_(file),
      sink_(file, rules, pageOfOutput),
      bPlain_(rules.sSeparator.size() == 1 && !rules.bSafe),
      cSeparator_(rules.sSeparator.front()) {
  bPlain_ = bPlain_ && rules.sQuoteOn.size() <= asks_.size();
  asks_.fill(cSeparator_);
  if (bPlain_) std::copy(rules.sQuoteOn.begin(), rules.sQuoteOn.end(), asks_.begin());
}

bool clsTidyCsvOutput::Heading(const std::vector<std::string>& names) {
  fields_.assign(names.begin(), names.end());
  return PutFields();
}

bool clsTidyCsvOutput::Row(const std::vector<TidyOutCell>& cells) {
  fields_.resize(cells.size());
  for (size_t i = 0; i < cells.size(); ++i) fields_[i] = cells[i].sPlain;
  return PutFields();
}

bool clsTidyCsvOutput::PlainRow(const std::vector<TidyCell>& cells) {
  if (PutPlain(cells, [](const TidyCell& cell) { return cell.sPlain; })) return RowEnds();
  fields_.resize(cells.size());
  for (size_t i = 0; i < cells.size(); ++i) fields_[i] = cells[i].sPlain;
  sink_.PutRow({fields_, &clsCodePage::Utf8()});
  return RowEnds();
}

bool clsTidyCsvOutput::PutFields() {
  if (!PutPlain(fields_, [](std::string_view sField) { return sField; })) sink_.PutRow({fields_, &clsCodePage::Utf8()});
  return RowEnds();
}

bool clsTidyCsvOutput::RowEnds() {
  if (++lRows_ % kLookEvery != 0 || !file_.LastFailure().Failed()) return true;
  return EndWalk(context_, "The report could not be written", file_.LastFailure().sText);
}

/// A row of fields that go into the file as they are, which is what nearly all rows are: copied field by field, and
/// then looked at as a whole, many bytes at a time. False, and nothing written, for any other.
template <typename Cells, typename TextOf>
bool clsTidyCsvOutput::PutPlain(const Cells& cells, TextOf textOf) {
  size_t nMost = 2;
  for (const auto& cell : cells) nMost += textOf(cell).size() + 1;
  if (!bPlain_ || cells.empty() || nMost > kMostLooked) return false;
  char* const pRow = file_.Reserve(nMost + kChunk);
  char* p = pRow;
  for (const auto& cell : cells) {
    p = PutShort(p, textOf(cell));
    *p++ = cSeparator_;
  }
  if (!IsAsItIs(pRow, static_cast<size_t>(p - pRow), cells.size())) return false;
  p[-1] = '\r';
  *p++ = '\n';
  file_.Used(static_cast<size_t>(p - pRow));
  return true;
}

/// Only the separators between and behind the fields may be of those that want more than their copy.
bool clsTidyCsvOutput::IsAsItIs(const char* pRow, size_t nBytes, size_t nFields) const {
#if defined(__SSE2__)
  const auto all = [](char ch) { return _mm_set1_epi8(ch); };
  const __m128i ask0 = all(asks_[0]), ask1 = all(asks_[1]), ask2 = all(asks_[2]), ask3 = all(asks_[3]);
  const __m128i separator = all(cSeparator_), zero = _mm_setzero_si128();
  __m128i counts = zero;
  size_t i = 0;
  for (; i + kChunk <= nBytes; i += kChunk) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pRow + i));
    const __m128i asks = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(bytes, ask0), _mm_cmpeq_epi8(bytes, ask1)),
                                      _mm_or_si128(_mm_cmpeq_epi8(bytes, ask2), _mm_cmpeq_epi8(bytes, ask3)));
    const __m128i others = _mm_or_si128(_mm_cmpeq_epi8(bytes, separator), _mm_cmplt_epi8(bytes, zero));
    counts = _mm_sub_epi8(counts, _mm_or_si128(asks, others));  // true is -1
  }
  const __m128i sums = _mm_sad_epu8(counts, zero);
  auto nAsking = static_cast<size_t>(_mm_cvtsi128_si32(sums) + _mm_extract_epi16(sums, 4));
  for (; i < nBytes; ++i) nAsking += Asks(pRow[i]) ? 1U : 0U;
#else
  const auto nAsking = static_cast<size_t>(std::count_if(pRow, pRow + nBytes, [this](char ch) { return Asks(ch); }));
#endif
  return nAsking == nFields;
}

bool clsTidySheetOutput::Heading(const std::vector<std::string>& names) {
  int nColumn = nColumn_;
  for (const std::string& sName : names) {
    Failure failure;
    const SettledCell cell{SettledCell::Kind::Heading, sName, {}, {}};
    if (!context_.pWorkbook->WriteSettled(nSheet_, nRow_, nColumn++, cell, failure))
      ReportCellFailure(context_, failure);
  }
  context_.pWorkbook->SetHeadingRow(nSheet_, nRow_);
  ++nRow_;
  return true;
}

bool clsTidySheetOutput::Row(const std::vector<TidyOutCell>& cells) {
  int nColumn = nColumn_;
  for (const TidyOutCell& cell : cells) {
    Failure failure;
    if (!Put(nColumn++, cell, failure)) ReportCellFailure(context_, failure);
  }
  ++nRow_;
  return true;
}

/// A printed percent sign is shown, so the value of the cell is a hundredth.
SettledCell clsTidySheetOutput::Number(const TidyOutCell& cell) {
  if (cell.sPrinted.find('%') != std::string_view::npos) {
    sHundredth_ = HundredthOf(cell.sPlain);
    const SettledCell settled = SettledNumber(cell.sPrinted, sHundredth_, sScratch_);
    if (settled.sFormat.find('%') != std::string_view::npos) return settled;
  }
  return SettledNumber(cell.sPrinted, cell.sPlain, sScratch_);
}

bool clsTidySheetOutput::Put(int nColumn, const TidyOutCell& cell, Failure& failure) {
  if (cell.kind == TidyCellKind::Empty) return true;
  const TidyType type = cell.pTyping != nullptr ? cell.pTyping->type : TidyType::Auto;
  if (type == TidyType::Auto) return context_.pWorkbook->WriteCell(nSheet_, nRow_, nColumn, cell.sPrinted, failure);
  SettledCell settled{SettledCell::Kind::Text, cell.sPrinted, {}, {}};
  if (cell.kind == TidyCellKind::Number) settled = Number(cell);
  if (cell.kind == TidyCellKind::Date) {
    settled = SettledDate(cell.sPrinted, MomentOf(cell.sPlain), cell.pTyping->sDateForm, sScratch_);
  }
  return context_.pWorkbook->WriteSettled(nSheet_, nRow_, nColumn, settled, failure);
}

}  // namespace quillon
