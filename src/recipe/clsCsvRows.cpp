#include "clsCsvRows.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "clsRecipe.h"
#include "clsUtf8Walk.h"
#include "modColumnLetters.h"
#include "modCsvField.h"
#include "modRecipeFailures.h"
#include "modRecipeMessages.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kChunk = 16;
constexpr size_t kWide = 4096;  // wider cuts are mostly "the rest of the row"
constexpr size_t kMostRowBytes = clsOutputFile::kBufferBytes / 2;

bool IsTwoLetters(std::string_view sLetters) {
  return (sLetters.size() == 1 || sLetters.size() == 2) &&
         std::all_of(sLetters.begin(), sLetters.end(), [](char c) { return IsAsciiLetter(c); });
}

bool IsPlainCut(const clsColumn& column, const clsRecipe& recipe) {
  const std::string sOperator = UpperText(TrimBlanks(column.PeriodOperator));
  if (sOperator == "FIRST") return recipe.InputFileFirst == 1;
  return recipe.InputFileLast == 1 && (sOperator.empty() || sOperator == "LAST" || sOperator == "AVG");
}

/// Commas, double quotes and equal signs of a field: what asks for more than its copy.
struct Specials {
  bool bAny = false;     ///< Any of them
  bool bOthers = false;  ///< Any but commas
};

#if defined(__SSE2__)
/// One chunk, in registers; nMask has a bit for each of its bytes that belongs to the field.
inline Specials LookAt(__m128i bytes, int nMask) {
  const __m128i commas = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(','));
  const __m128i others = _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('"')),  //
                                      _mm_cmpeq_epi8(bytes, _mm_set1_epi8('=')));
  if ((_mm_movemask_epi8(_mm_or_si128(commas, others)) & nMask) == 0) return {};
  return {true, (_mm_movemask_epi8(others) & nMask) != 0};
}

/// Copies a field with kChunk bytes to read behind it and to write behind its copy. Nearly all fields go through here
/// in one step: copy and look at once take a third of the time of memcpy and a search. Null for one that PutQuoted must
/// do.
inline char* PutChunks(char* p, std::string_view s) {
  const char* const pEnd = s.data() + s.size();
  Specials specials;
  for (const char* pFrom = s.data(); pFrom < pEnd; pFrom += kChunk) {
    const auto nLeft = static_cast<size_t>(pEnd - pFrom);
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pFrom));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p + (pFrom - s.data())), bytes);
    const Specials found = LookAt(bytes, nLeft >= kChunk ? 0xFFFF : (1 << nLeft) - 1);
    if (found.bOthers) return nullptr;
    specials.bAny = specials.bAny || found.bAny;
  }
  if (!specials.bAny) return p + s.size();
  *p++ = '"';  // an amount, mostly: copied once more, one further
  for (size_t i = 0; i < s.size(); i += kChunk) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s.data() + i));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p + i), bytes);
  }
  p[s.size()] = '"';
  return p + s.size() + 1;
}
#else
inline char* PutChunks(char*, std::string_view) {
  return nullptr;
}
#endif

}  // namespace

clsCsvRows::clsCsvRows(RecipeContext& context, std::vector<clsColumn>& columns, int32_t lDelimitationChar,
                       const clsCodePage& pageOfReport, clsOutputFile& file)
    : context_(context),
      columns_(columns),
      file_(file),
      pageOfOutput_(context.options.text.pCodePage != nullptr ? *context.options.text.pCodePage : pageOfReport) {
  if (lDelimitationChar >= 1 && lDelimitationChar <= 255) {
    // A character code of the system's code page; a Unicode report has none, so there it is that of the default page.
    const clsCodePage& page = pageOfOutput_.IsSingleByte() ? pageOfOutput_ : clsCodePage::Windows1252();
    AppendUtf8(page.CharOf(static_cast<unsigned char>(lDelimitationChar)), sSeparatorUtf8_);
    pageOfOutput_.Encode(sSeparatorUtf8_, sSeparator_);
    sSeparator_.copy(separator_.data(), separator_.size());
  }
  bFast_ = MayBeFast(columns);
  for (const clsColumn& column : columns) {
    const Cut cut{static_cast<size_t>(std::max(column.ReadColumnStart, 1)) - 1,
                  static_cast<size_t>(std::max(column.ReadColumnEnd, 1))};
    cuts_.push_back(cut);
    // Each byte may be doubled; quotes, separator and the blank behind come on top.
    const bool bWide = cut.nEnd > cut.nFrom + kWide;
    nWideCuts_ += bWide ? 1 : 0;
    nFixedBytes_ += (bWide ? 0 : 2 * (cut.nEnd - std::min(cut.nFrom, cut.nEnd))) + sSeparator_.size() + 5;
  }
  FindEdges();
  nFixedBytes_ += 2 + kChunk;
  bFast_ = bFast_ && nFixedBytes_ <= kMostRowBytes;
}

void clsCsvRows::FindEdges() {
  for (const Cut& cut : cuts_) {
    edges_.push_back(cut.nFrom);
    edges_.push_back(cut.nEnd);
  }
  std::sort(edges_.begin(), edges_.end());
  edges_.erase(std::unique(edges_.begin(), edges_.end()), edges_.end());
  offsets_.resize(edges_.size());
  const auto index = [this](size_t nEdge) {
    return static_cast<size_t>(std::lower_bound(edges_.begin(), edges_.end(), nEdge) - edges_.begin());
  };
  for (const Cut& cut : cuts_) edgesOfCuts_.push_back({index(cut.nFrom), index(cut.nEnd)});
}

bool clsCsvRows::MayBeFast(const std::vector<clsColumn>& columns) const {
  return HasSeparator() && !context_.options.bSafeCsv &&
         std::all_of(columns.begin(), columns.end(), [this](const clsColumn& column) {
           return IsTwoLetters(column.WriteColumn) && IsPlainCut(column, context_.recipe);
         });
}

bool clsCsvRows::WritePlain() {
  sRow_.clear();
  bool bEmpty = true;
  for (clsColumn& column : columns_) {
    if (!column.TakeField(context_, true, sField_)) return false;
    AlphaToNum2(context_.host, column.WriteColumn);  // for its message box alone
    if (!bEmpty) sRow_ += sSeparatorUtf8_;
    bEmpty = bEmpty && sField_.empty();
    AppendCsvField(sField_, context_.options, sRow_, sSeparatorUtf8_);
  }
  sBytes_.clear();
  context_.account.lCharactersLost += static_cast<int64_t>(pageOfOutput_.Encode(sRow_, sBytes_));
  sBytes_ += "\r\n";
  file_.Write(sBytes_);
  return true;
}

bool clsCsvRows::Write(clsRow& row) {
  // A character of a Unicode row has up to four bytes.
  const size_t nMost = (row.BytesAreCharacters() ? 1 : 4) * nFixedBytes_ + nWideCuts_ * 2 * row.Bytes().size();
  const bool bSamePage = row.BytesAreCharacters() || &row.Page() == &pageOfOutput_;
  if (!bFast_ || !bSamePage || nMost > kMostRowBytes) return WritePlain();
  char* const pRow = file_.Reserve(nMost);
  char* p = row.BytesAreCharacters() ? PutBytes(pRow, row) : PutCharacters(pRow, row);
  *p++ = '\r';
  *p++ = '\n';
  file_.Used(static_cast<size_t>(p - pRow));
  return true;
}

/// The fields of a row whose bytes are its characters.
char* clsCsvRows::PutBytes(char* p, const clsRow& row) {
  const std::string_view s = row.Bytes();
  const size_t nReadable = s.size() + row.RoomBehind();
  const bool bTrim = context_.options.bTrimFields;
  bool bEmpty = true;
  for (const Cut& cut : cuts_) {
    if (!bEmpty) p = PutSeparator(p);
    if (cut.nEnd + kChunk <= nReadable && cut.nEnd <= s.size() && !bTrim) {
      // The usual case, apart so that it stays short.
      const std::string_view sField(s.data() + cut.nFrom, cut.nEnd - cut.nFrom);
      bEmpty = false;
      char* const pNext = PutChunks(p, sField);
      p = pNext != nullptr ? pNext : PutQuoted(p, sField);
      continue;
    }
    const bool bBlankBehind = row.HasBlankBehind() && cut.nEnd > s.size() && cut.nFrom <= s.size();
    const std::string_view sField =
        cut.nFrom < s.size() ? s.substr(cut.nFrom, cut.nEnd - cut.nFrom) : std::string_view{};
    bEmpty = bEmpty && sField.empty() && !bBlankBehind;
    p = PutField(p, sField, bBlankBehind, nReadable - std::min(cut.nFrom, nReadable));
  }
  return p;
}

/// The fields of a UTF-8 row: one walk through it finds the bytes of all cuts.
char* clsCsvRows::PutCharacters(char* p, const clsRow& row) {
  const std::string_view s = row.Bytes();
  clsUtf8Walk walk(s);
  for (size_t i = 0; i < edges_.size(); ++i) offsets_[i] = walk.To(static_cast<int64_t>(edges_[i]));
  // Where the walk came to the row's end, it knows how many characters there are.
  const bool bToEnd = !offsets_.empty() && offsets_.back() == s.size();
  const auto nCharacters = static_cast<size_t>(walk.Passed());
  bool bEmpty = true;
  for (size_t i = 0; i < cuts_.size(); ++i) {
    if (!bEmpty) p = PutSeparator(p);
    const size_t nFrom = offsets_[edgesOfCuts_[i].nFrom];
    const std::string_view sField = s.substr(nFrom, offsets_[edgesOfCuts_[i].nEnd] - nFrom);
    const bool bBlankBehind =
        row.HasBlankBehind() && bToEnd && cuts_[i].nEnd > nCharacters && cuts_[i].nFrom <= nCharacters;
    bEmpty = bEmpty && sField.empty() && !bBlankBehind;
    p = PutField(p, sField, bBlankBehind, sField.empty() ? 0 : s.size() - nFrom + row.RoomBehind());
  }
  return p;
}

/// A field at the row's end, or one to be trimmed. nReadable: bytes from its start that may be read.
char* clsCsvRows::PutField(char* p, std::string_view sField, bool bBlankBehind, size_t nReadable) {
  if (context_.options.bTrimFields) {
    const std::string_view sTrimmed = TrimLeftBlanks(sField);
    nReadable -= sField.size() - sTrimmed.size();
    sField = TrimRightBlanks(sTrimmed);
    bBlankBehind = false;
  }
  if (sField.empty()) {
    if (bBlankBehind) *p++ = ' ';
    return p;
  }
  char* pEnd = sField.size() + kChunk <= nReadable ? PutChunks(p, sField) : nullptr;
  if (pEnd == nullptr && bBlankBehind) {
    sField_.assign(sField).append(1, ' ');
    return PutQuoted(p, sField_);
  }
  if (pEnd == nullptr) return PutQuoted(p, sField);
  if (bBlankBehind) {
    const bool bQuoted = pEnd != p + sField.size();
    if (bQuoted) *pEnd = '"';
    pEnd[bQuoted ? -1 : 0] = ' ';
    ++pEnd;
  }
  return pEnd;
}

/// A field that may need quotes or begin with an equal sign.
char* clsCsvRows::PutQuoted(char* p, std::string_view sField) {
  if (TrimLeftBlanks(sField).starts_with('=') && context_.account.lEqualSigns++ == 0) {
    ReportRecipe(context_.host, kLeadingEqualSign);
  }
  bool bQuotes = false;
  for (const char c : sField) bQuotes = bQuotes || c == ',' || c == '"';
  if (!bQuotes) {
    return std::copy(sField.begin(), sField.end(), p);
  }
  *p++ = '"';
  for (const char c : sField) {
    if (c == '"') *p++ = '"';
    *p++ = c;
  }
  *p++ = '"';
  return p;
}

}  // namespace quillon
