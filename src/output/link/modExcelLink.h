#pragma once
// The operations of the link in the order of a run. One workbook at a time, held by the caller.

#include <memory>
#include <string_view>

#include "clsWorkbook.h"

namespace quillon {

/// No spreadsheet application ever stands in the way here: always False.
bool IsExcelRunning();

/// The workbook of the path: the existing file, to be changed in place, or a new one of the format of its name
/// (".XLSX", else ".XLS", looked for anywhere in the upper-cased path). Always gives a workbook. For an existing file
/// that can't be read as what its name says, and for a folder or unwritable place, every cell write of it fails with
/// the reason, and SaveAs leaves the file as it is. So it is for what the options don't let it do.
std::unique_ptr<clsWorkbook> OpenExcelWorkbook(std::string_view sPath, const WorkbookOptions& options);

/// A new workbook of the format (kFormatXlsx or kFormatXls), whatever stands at the path that it will be saved to:
/// SaveAs replaces that.
std::unique_ptr<clsWorkbook> NewExcelWorkbook(int32_t lFormat, const WorkbookOptions& options);

bool SaveExcelWorkbookAs(clsWorkbook& workbook, std::string_view sPath, int32_t lFormat, Failure& failure);
void CloseExcelWorkbook(std::unique_ptr<clsWorkbook>& workbook);

/// 6 for ".CSV", 51 for ".XLSX", -4143 for ".XLS" anywhere in the upper-cased path, in this order; else 0.
int32_t OutputFormatOfPath(std::string_view sPath);

/// By name, then by number if the text is numeric; an empty text gives False. No caller yet.
bool ActivateWorksheet(clsWorkbook& workbook, std::string_view sSheet);
bool ActivateWorksheetByName(clsWorkbook& workbook, std::string_view sName);
bool ActivateWorksheetByNumber(clsWorkbook& workbook, int nSheet);

}  // namespace quillon
