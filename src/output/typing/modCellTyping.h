#pragma once
// The one written rule by which a text becomes a typed cell: a number, date or truth value only if the sheet then shows
// the same characters as the report did (blanks aside) and no digit is lost; else text. A text of blanks alone is an
// empty cell. An error word such as #N/A stays text: it shows the same, and as an error it would spoil every total.
// Times stay text as well.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "clsWorkbook.h"

namespace quillon {

enum class CellKind : uint8_t { Empty, Text, Number, Date, Boolean, Formula };

/// A typed cell. Views point into the text given or into static storage.
struct TypedCell {
  CellKind kind = CellKind::Empty;
  double nValue = 0;  ///< Number; date as serial day of the 1900 system; 0 or 1
  /// The number as it goes into the file where its own digits serve ("1234.50" minus separators); "" = use nValue.
  std::string_view sDigits;
  std::string_view sFormat;      ///< Number format code; "" is General. Of a text kHeadingFormat, or ""
  std::string_view sText;        ///< Text; formula without its "="
  bool bDigits = false;          ///< A number of digits alone
  bool bSettled = false;         ///< Its kind was given with it
  bool bRefusedFormula = false;  ///< Text because its formula reaches outside the workbook
};

/// Stands among number formats for a heading's: General, in bold.
constexpr std::string_view kHeadingFormat = "\1";

/// The parts of a date in their order; None: what looks like such a date is text.
enum class DateReading : uint8_t { None, MonthFirst, DayFirst, YearFirst };
/// Forms of dates: three runs of digits parted by "/", "-" or ".", the first of four digits or not.
constexpr size_t kDateForms = 6;

/// What is settled for all cells of a column.
struct ColumnRule {
  bool bDigitsAreText = false;     ///< They are codes: one of them begins with a zero, or is too long for a number
  bool bNumbersAreText = false;    ///< One of them has a form that no format shows
  bool bPointsAreNumbers = false;  ///< "5." is a number, as the column's others are
  std::array<DateReading, kDateForms> dates{};
  bool operator==(const ColumnRule&) const = default;
};
/// The rule for a cell that stands by itself.
ColumnRule RuleAlone(const CellTypingOptions& options);

/// Types one text in its stored form by its column's rule. A number that stays text for its column's sake has no blanks
/// around it. sScratch backs views of the result where its form differs from the text's.
TypedCell TypeCell(std::string_view sText, const CellTypingOptions& options, const ColumnRule& rule,
                   std::string& sScratch);
/// The same for a cell that stands by itself.
TypedCell TypeCell(std::string_view sText, const CellTypingOptions& options, std::string& sScratch);

/// "mdy", "dmy" or "ymd", in any case.
std::optional<DateOrder> DateOrderOf(std::string_view sWord);

/// True if the user's locale (LC_TIME) writes the day before the month.
bool LocaleIsDayFirst();

}  // namespace quillon
