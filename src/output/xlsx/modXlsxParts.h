#pragma once
// The small parts of a new .xlsx package, whole, in the order in which they stand in it.

#include <span>
#include <string>
#include <string_view>

#include "clsNumberFormats.h"

namespace quillon {

constexpr std::string_view kXmlHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

/// Who wrote the file, as its properties have it: each program that saves one puts its own name there.
constexpr std::string_view kOwnApplication = "<Application>Quillon</Application>";

std::string ContentTypesPart(int nSheets);
std::string PackageRelationsPart();
std::string AppPropertiesPart();
std::string CorePropertiesPart();  ///< Dated by CreationTime
std::string WorkbookPart(std::span<const std::string> sheetNames, int nActiveSheet, bool bRecalculate);
std::string WorkbookRelationsPart(int nSheets);
/// One font, and a cell format for each number format, in their order.
std::string StylesPart(std::string_view sFont, const clsNumberFormats& formats);
std::string SheetPartName(int nSheet);

}  // namespace quillon
