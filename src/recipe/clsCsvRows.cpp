#include "clsCsvRows.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "clsRecipe.h"
#include "modColumnLetters.h"
#include "modCsvField.h"
#include "modCsvSafety.h"
#include "modRecipeFailures.h"
#include "modRecipeMessages.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kChunk = 16;
constexpr size_t kWide = 4096;  // wider cuts are mostly "the rest of the row"
constexpr size_t kMostRowBytes = clsOutputFile::kBufferBytes / 2;

bool IsTwoLetters(std::string_view sLetters) {
  return (sLetters.size() == 1 || sLetters.size() == 2) && std::all_of(sLetters.begin(), sLetters.end(), [](char c) {
           return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
         });
}

bool IsPlainCut(const clsColumn& column, const clsRecipe& recipe) {
  const std::string sOperator = UpperText(TrimBlanks(column.PeriodOperator));
  if (sOperator == "FIRST") return recipe.InputFileFirst == 1;
  return recipe.InputFileLast == 1 && (sOperator.empty() || sOperator == "LAST" || sOperator == "AVG");
}

/// What a field holds that asks for more than its copy.
enum Specials : int { kNone = 0, kComma = 1, kQuoteOrEqual = 2 };

/// Copies the field and tells what is in it. Up to kChunk bytes behind the target's end are written over; bReadBehind:
/// as many may be read behind the field. One pass in chunks takes a third of the time of memcpy and a search.
int CopyAndLook(char* p, std::string_view s, [[maybe_unused]] bool bReadBehind) {
  size_t i = 0;
  int nSpecials = kNone;
#if defined(__SSE2__)
  const __m128i quote = _mm_set1_epi8('"');
  const __m128i comma = _mm_set1_epi8(',');
  const __m128i equal = _mm_set1_epi8('=');
  int nCommas = 0;
  int nOthers = 0;
  for (; i < s.size() && (bReadBehind || s.size() - i >= kChunk); i += kChunk) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s.data() + i));
    const __m128i others = _mm_or_si128(_mm_cmpeq_epi8(bytes, quote), _mm_cmpeq_epi8(bytes, equal));
    const size_t nLeft = s.size() - i;
    const int nMask = nLeft >= kChunk ? 0xFFFF : (1 << nLeft) - 1;
    nCommas |= _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, comma)) & nMask;
    nOthers |= _mm_movemask_epi8(others) & nMask;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p + i), bytes);
  }
  nSpecials = (nCommas != 0 ? kComma : kNone) | (nOthers != 0 ? kQuoteOrEqual : kNone);
#endif
  for (; i < s.size(); ++i) {
    p[i] = s[i];
    if (s[i] == ',') nSpecials |= kComma;
    if (s[i] == '"' || s[i] == '=') nSpecials |= kQuoteOrEqual;
  }
  return nSpecials;
}

}  // namespace

clsCsvRows::clsCsvRows(RecipeContext& context, std::vector<clsColumn>& columns, int32_t lDelimitationChar,
                       const clsCodePage& pageOfReport, clsOutputFile& file)
    : context_(context),
      columns_(columns),
      file_(file),
      pageOfReport_(pageOfReport),
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
    // Each byte may be doubled; quotes, apostrophe, separator and the blank behind come on top.
    const bool bWide = cut.nEnd > cut.nFrom + kWide;
    nWideCuts_ += bWide ? 1 : 0;
    nFixedBytes_ += (bWide ? 0 : 2 * (cut.nEnd - std::min(cut.nFrom, cut.nEnd))) + sSeparator_.size() + 5;
  }
  nFixedBytes_ += 2 + kChunk;
  bFast_ = bFast_ && nFixedBytes_ <= kMostRowBytes;
}

bool clsCsvRows::MayBeFast(const std::vector<clsColumn>& columns) const {
  return HasSeparator() && std::all_of(columns.begin(), columns.end(), [this](const clsColumn& column) {
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
    AppendCsvField(sField_, context_.options, sRow_);
  }
  sBytes_.clear();
  context_.account.lCharactersLost += static_cast<int64_t>(pageOfOutput_.Encode(sRow_, sBytes_));
  sBytes_ += "\r\n";
  file_.Write(sBytes_);
  return true;
}

void clsCsvRows::WriteFast(const clsRow& row) {
  const std::string_view s = row.Bytes();
  const size_t nMost = nFixedBytes_ + nWideCuts_ * 2 * s.size();
  if (nMost > kMostRowBytes) {
    WritePlain();  // plain cuts cannot fail
    return;
  }
  char* const pRow = file_.Reserve(nMost);
  char* p = pRow;
  bool bEmpty = true;
  for (const Cut& cut : cuts_) {
    if (!bEmpty) {
      std::memcpy(p, separator_.data(), separator_.size());  // of a fixed size; the next field writes over the surplus
      p += sSeparator_.size();
    }
    if (cut.nEnd + kChunk <= s.size() && !context_.options.bTrimFields && !context_.options.bSafeCsv) {
      // The usual case, apart so that it stays short.
      const std::string_view sField(s.data() + cut.nFrom, cut.nEnd - cut.nFrom);
      bEmpty = false;
      const int nSpecials = CopyAndLook(p, sField, true);
      if (nSpecials == kComma) {  // amounts, mostly
        *p = '"';
        CopyAndLook(p + 1, sField, true);
        p[sField.size() + 1] = '"';
        p += sField.size() + 2;
      } else {
        p = nSpecials == kNone ? p + sField.size() : PutQuoted(p, sField);
      }
      continue;
    }
    const bool bBlankBehind = row.HasBlankBehind() && cut.nEnd > s.size() && cut.nFrom <= s.size();
    const std::string_view sField =
        cut.nFrom < s.size() ? s.substr(cut.nFrom, cut.nEnd - cut.nFrom) : std::string_view{};
    bEmpty = bEmpty && sField.empty() && !bBlankBehind;
    p = PutField(p, sField, bBlankBehind);
  }
  *p++ = '\r';
  *p++ = '\n';
  file_.Used(static_cast<size_t>(p - pRow));
}

/// A field near the row's end, or with one of the options on.
char* clsCsvRows::PutField(char* p, std::string_view sField, bool bBlankBehind) {
  if (context_.options.bTrimFields) {
    sField = TrimBlanks(sField);
    bBlankBehind = false;
  }
  const std::string_view sRest = context_.options.bSafeCsv ? TrimLeftBlanks(sField) : std::string_view{};
  const bool bSuspect = !sRest.empty() && StartsFormula(sRest[0]);
  if (bSuspect || CopyAndLook(p, sField, false) != kNone) {
    if (!bBlankBehind) return PutQuoted(p, sField);
    sField_.assign(sField).append(1, ' ');
    return PutQuoted(p, sField_);
  }
  p += sField.size();
  if (bBlankBehind) *p++ = ' ';
  return p;
}

/// A field that may need quotes or an apostrophe or begin with an equal sign.
char* clsCsvRows::PutQuoted(char* p, std::string_view sField) {
  if (TrimLeftBlanks(sField).starts_with('=') && context_.account.lEqualSigns++ == 0) {
    ReportRecipe(context_.host, -5005);
  }
  const bool bHarmful = context_.options.bSafeCsv && MayRunAsFormula(pageOfReport_.ToUtf8(sField));
  if (!bHarmful && sField.find_first_of(",\"") == std::string_view::npos) {
    return std::copy(sField.begin(), sField.end(), p);
  }
  *p++ = '"';
  if (bHarmful) *p++ = '\'';
  for (const char c : sField) {
    if (c == '"') *p++ = '"';
    *p++ = c;
  }
  *p++ = '"';
  return p;
}

}  // namespace quillon
