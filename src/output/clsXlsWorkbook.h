#pragma once
// Workbooks in .xls form (BIFF8).

#include <memory>

#include "clsWorkbook.h"
#include "modExcelLink.h"

namespace quillon {

/// A new workbook of two sheets.
std::unique_ptr<clsWorkbook> NewXlsWorkbook(const WorkbookOptions& options);

}  // namespace quillon
