#pragma once
// Workbooks in .xls form (BIFF8), new ones and existing ones that are changed record by record.

#include <memory>
#include <string_view>

#include "clsWorkbook.h"

namespace quillon {

/// A new workbook of two sheets.
std::unique_ptr<clsWorkbook> NewXlsWorkbook(const WorkbookOptions& options);

/// An existing one, at a host path. Null, with the reason and what to do, for a file of an older version, an encrypted
/// or a damaged one. Nothing in it changes but the cells, names and selections that the run touches; dependent formulas
/// are marked for calculation. A write into a part of an array formula or data table fails, as in a spreadsheet.
std::unique_ptr<clsWorkbook> OpenXlsWorkbook(std::string_view sHostPath, const WorkbookOptions& options,
                                             Failure& failure);

}  // namespace quillon
