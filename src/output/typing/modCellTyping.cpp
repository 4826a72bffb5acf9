#include "modCellTyping.h"

#include <langinfo.h>

#include <array>
#include <charconv>
#include <clocale>
#include <cmath>
#include <string>

#include "modFormatKinds.h"
#include "modFormula.h"
#include "modNumberTyping.h"
#include "modSettledCell.h"
#include "modText.h"

namespace quillon {

namespace {

enum class FirstByte : uint8_t { Text, Number, Equals, Word };

/// What a text can become, by its first byte.
constexpr std::array<FirstByte, 256> kFirstBytes = [] {
  std::array<FirstByte, 256> kinds{};
  for (const char ch : std::string_view("0123456789.-+($\xC2\xE2"))
    kinds[static_cast<unsigned char>(ch)] = FirstByte::Number;
  kinds['='] = FirstByte::Equals;
  kinds['T'] = kinds['F'] = FirstByte::Word;
  return kinds;
}();

/// TrimBlanks of the common foundation, within reach of the optimizer: it runs once for every cell.
std::string_view Trimmed(std::string_view sText) {
  size_t nStart = 0, nEnd = sText.size();
  while (nEnd > 0 && sText[nEnd - 1] == ' ') --nEnd;
  while (nStart < nEnd && sText[nStart] == ' ') ++nStart;
  return sText.substr(nStart, nEnd - nStart);
}

void TypeFormula(std::string_view sTrimmed, TypedCell& cell) {
  const std::string_view sFormula = sTrimmed.substr(1);
  const FormulaVerdict verdict = CheckFormula(sFormula);
  cell.bRefusedFormula = verdict == FormulaVerdict::ReachesOutside;
  if (verdict != FormulaVerdict::WellFormed) return;
  cell.kind = CellKind::Formula;
  cell.sText = sFormula;
}

void TypeWord(std::string_view sTrimmed, TypedCell& cell) {
  if (sTrimmed != "TRUE" && sTrimmed != "FALSE") return;
  cell.kind = CellKind::Boolean;
  cell.nValue = sTrimmed == "TRUE" ? 1 : 0;
}

/// A number as files have it: digits, a minus in front, a point, an exponent. Nothing else may get into one unseen.
bool IsPlainNumber(std::string_view sDigits, double& nValue) {
  const char* const pEnd = sDigits.data() + sDigits.size();
  const auto [pBehind, error] = std::from_chars(sDigits.data(), pEnd, nValue);
  return error == std::errc{} && pBehind == pEnd && std::isfinite(nValue);
}

TypedCell TypeSettled(std::string_view sStored) {
  const SettledCell settled = SettledOf(sStored);
  TypedCell cell;
  cell.sText = settled.sShown;
  cell.bSettled = true;
  if (settled.sShown.empty()) return cell;
  cell.kind = CellKind::Text;
  if (settled.kind == SettledCell::Kind::Heading) cell.sFormat = kHeadingFormat;
  if (settled.kind != SettledCell::Kind::Number || !IsPlainNumber(settled.sDigits, cell.nValue)) return cell;
  const FormatKind kind = KindOfFormatCode(settled.sFormat);
  const bool bDate = !settled.sFormat.empty() && (kind == FormatKind::Date || kind == FormatKind::DateTime);
  cell.kind = bDate ? CellKind::Date : CellKind::Number;
  cell.sDigits = settled.sDigits;
  cell.sFormat = settled.sFormat;
  return cell;
}

}  // namespace

ColumnRule RuleAlone(const CellTypingOptions& options) {
  using enum DateReading;
  ColumnRule rule;
  const bool bDayFirst =
      options.order == DateOrder::DayFirst || (options.order == DateOrder::ByColumn && options.bDayFirst);
  const DateReading reading = options.order == DateOrder::YearFirst ? YearFirst : bDayFirst ? DayFirst : MonthFirst;
  // Where the month comes first 1.2.24 is an account or a section rather than a date.
  rule.dates = {YearFirst, YearFirst, None, reading, reading, reading == MonthFirst ? None : reading};
  return rule;
}

TypedCell TypeCell(std::string_view sText, const CellTypingOptions& options, std::string& sScratch) {
  return TypeCell(sText, options, RuleAlone(options), sScratch);
}

TypedCell TypeCell(std::string_view sText, const CellTypingOptions& options, const ColumnRule& rule,
                   std::string& sScratch) {
  TypedCell cell;
  if (sText.empty()) return cell;
  cell.kind = CellKind::Text;
  cell.sText = sText;
  if (IsSettled(sText)) return TypeSettled(sText);
  if (options.bAllText) return cell;
  const std::string_view sTrimmed = Trimmed(sText);
  if (sTrimmed.empty()) return TypedCell{};
  switch (kFirstBytes[static_cast<unsigned char>(sTrimmed.front())]) {
    case FirstByte::Text:
      break;
    case FirstByte::Number:
      // A slash is no part of a number.
      if ((sTrimmed.size() > 2 && (sTrimmed[1] == '/' || sTrimmed[2] == '/')) ||
          !TypeNumber(sTrimmed, options.bDropLeadingZeros, sScratch, cell)) {
        if (!rule.bPointsAreNumbers || !TypePointBehind(sTrimmed, sScratch, cell))
          TypeDate(sTrimmed, rule.dates, sScratch, cell);
      } else if (rule.bNumbersAreText || (rule.bDigitsAreText && cell.bDigits)) {
        cell = TypedCell{};
        cell.kind = CellKind::Text;
        cell.sText = sTrimmed;
      }
      break;
    case FirstByte::Equals:
      TypeFormula(sTrimmed, cell);
      break;
    case FirstByte::Word:
      TypeWord(sTrimmed, cell);
      break;
  }
  return cell;
}

std::optional<DateOrder> DateOrderOf(std::string_view sWord) {
  if (EqualNoCase(sWord, "mdy")) return DateOrder::MonthFirst;
  if (EqualNoCase(sWord, "dmy")) return DateOrder::DayFirst;
  if (EqualNoCase(sWord, "ymd")) return DateOrder::YearFirst;
  return std::nullopt;
}

bool LocaleIsDayFirst() {
  const locale_t locale = newlocale(LC_TIME_MASK, "", nullptr);
  if (locale == nullptr) return false;
  const std::string sOrder = nl_langinfo_l(D_FMT, locale);
  freelocale(locale);
  const size_t nDay = sOrder.find_first_of("de"), nMonth = sOrder.find_first_of("mbBDF");
  return nDay != std::string::npos && (nMonth == std::string::npos || nDay < nMonth);
}

}  // namespace quillon
