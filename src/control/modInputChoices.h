#pragma once
// The job's choices of how its reports lie in their files, as words.

#include <string>
#include <string_view>

#include "clsConversionOptions.h"
#include "modInputOptions.h"

namespace quillon {

/// Why the value is none of that member's (sRecords, lRecordLength, sCarriageControl, sPrinterCodes, sPages); "" if it
/// is one.
std::string WhyNoInputChoice(std::string_view sMember, std::string_view sValue);

/// Puts the job's choices in force for reports (see ReportInput). What no member speaks of stays; a word that is none
/// chooses nothing.
void ApplyInputChoices(const clsConversionOptions& options);

}  // namespace quillon
