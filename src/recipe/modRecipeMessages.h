#pragma once
// Codes -5000 to -5900: text, kind and message box of each in one table.

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "clsHost.h"

namespace quillon {

/// The code's entry for the run log, its text with the values put in and its phrases translated one by one.
ReportEntry RecipeEntry(int32_t lErr, std::initializer_list<std::string_view> values = {});
/// Reports the code to the run log.
/// bShowMessageBox False keeps the box away from a code that else wants one.
void ReportRecipe(clsHost& host, int32_t lErr, std::initializer_list<std::string_view> values = {},
                  bool bShowMessageBox = true, std::string sThirdLine = {});

/// A failure of the system inside an operation that goes on without its result: its own number as the code, no box.
void ReportTrappedFailure(clsHost& host, int32_t lNumber, std::string_view sDescription);

}  // namespace quillon
