#pragma once
// Values of existing .xls cells as a sheet shows them.

#include <string>
#include <string_view>

#include "clsXlsGlobals.h"
#include "clsXlsSheet.h"

namespace quillon {

/// The cell's text: strings as they are, numbers plain, dates in the system's order, a formula's last result.
std::string ShownXlsCell(std::string_view sStream, const XlsCell& cell, clsXlsGlobals& globals, bool bDayFirst);

}  // namespace quillon
