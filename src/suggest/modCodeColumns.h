#pragma once
// Columns of figures that name something: employees, accounts, articles, zip codes. They are texts, lest a zero or a
// point be lost.

#include <span>

#include "clsTableShape.h"
#include "modTidyModel.h"

namespace quillon {

/// Makes texts of number columns whose values have one form and one width, if they stand first or are called a number
/// or code. The part's names must be set.
void KeepCodes(const clsReportSample& report, const clsTableShape& shape, std::span<const size_t> rows, TidyPart& part);

}  // namespace quillon
