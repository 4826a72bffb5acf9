#pragma once
// Sheets that a run adds to an existing package, and the lists that must then name them.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "clsXlsxPackage.h"
#include "modXlsxWorkbookPart.h"

namespace quillon {

/// A sheet without a cell.
constexpr std::string_view kEmptySheetPart =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
    "<sheetFormatPr defaultRowHeight=\"15\"/><sheetData/></worksheet>";

/// Takes the sheets named behind the others into the workbook part's list, each with a part of a name that is free.
void AddSheets(const clsXlsxPackage& package, std::span<const std::string> names, WorkbookPart& workbook);
/// The relationships of the workbook, and the list of content types, with the added sheets.
std::string RelationsWithAdded(std::string_view sBytes, const WorkbookPart& workbook);
std::string ContentTypesWithAdded(std::string_view sBytes, const WorkbookPart& workbook);
/// The list entry of an added sheet, made after that of another one.
std::string AddedSheetTag(std::string_view sModel, const WorkbookSheet& sheet, uint32_t nSheetId);

}  // namespace quillon
