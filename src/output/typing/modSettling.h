#pragma once
// Numbers and dates whose value the caller knows, as cells of a sheet that show what the report did.

#include <optional>
#include <string>
#include <string_view>

#include "clsWorkbook.h"

namespace quillon {

/// A number given by its text in the report and its value as a file has it ("-1234.50"). Its format is the one that
/// shows the text as it stands, if there is one, else that of its decimals, with separators of thousands if the text
/// has any. sScratch backs views of the result.
SettledCell SettledNumber(std::string_view sShown, std::string_view sDigits, std::string& sScratch);

struct CalendarMoment {
  int nYear = 0, nMonth = 0, nDay = 0;
  int nSeconds = 0;  ///< Since midnight
};
/// Day of the 1900 system; nothing for a day that no calendar has, or one before 1900-03-01 (that system counts a day
/// too many before).
std::optional<int> SerialOfDate(int nYear, int nMonth, int nDay);
/// A date written in a form of YYYY, YY, MMM, MM, M, DD, D, HH, NN (minutes) and SS, with any characters between them.
/// Settled as text for one that a sheet doesn't know.
SettledCell SettledDate(std::string_view sShown, const CalendarMoment& moment, std::string_view sForm,
                        std::string& sScratch);

}  // namespace quillon
