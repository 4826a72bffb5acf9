#include "modXlsxAddedSheets.h"

#include <algorithm>

#include "clsXmlScanner.h"
#include "modXmlText.h"

namespace quillon {

namespace {

constexpr std::string_view kSheetType = "application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml";
constexpr std::string_view kRelationType =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet";

/// The part with elements added behind the last one below its root; each comes without "<", prefix and end.
std::string WithElements(std::string_view sBytes, const std::vector<std::string>& elements) {
  clsXmlScanner scanner(sBytes);
  std::string sOut;
  while (scanner.Next() != XmlToken::End && scanner.Token() != XmlToken::Failed) {
    if (scanner.Depth() == 1 && scanner.Token() == XmlToken::EndTag) {
      const std::string sPrefix = std::string(scanner.Prefix()) + (scanner.Prefix().empty() ? "" : ":");
      for (const std::string& sElement : elements) sOut += "<" + sPrefix + sElement + "/>";
    }
    sOut += scanner.Raw();
  }
  return sOut;
}

}  // namespace

void AddSheets(const clsXlsxPackage& package, std::span<const std::string> names, WorkbookPart& workbook) {
  const std::string sFolder = workbook.sName.substr(0, workbook.sName.rfind('/') + 1) + "worksheets/sheet";
  const auto IsTaken = [&](const std::string& sPart) {
    return package.Find(sPart) || std::any_of(workbook.sheets.begin(), workbook.sheets.end(),
                                              [&](const WorkbookSheet& sheet) { return sheet.sPart == sPart; });
  };
  const auto IsTakenId = [&](const std::string& sId) {
    return std::any_of(workbook.relationships.begin(), workbook.relationships.end(),
                       [&](const Relationship& relationship) { return relationship.sId == sId; });
  };
  size_t nNumber = workbook.sheets.size(), nId = workbook.relationships.size();
  for (size_t i = workbook.sheets.size(); i < names.size(); ++i) {
    WorkbookSheet sheet{names[i], {}, true, true, {}};
    do {
      sheet.sPart = sFolder + std::to_string(++nNumber) + ".xml";
    } while (IsTaken(sheet.sPart));
    do {
      sheet.sRelation = "rId" + std::to_string(++nId);
    } while (IsTakenId(sheet.sRelation));
    workbook.relationships.push_back({sheet.sRelation, "worksheet", sheet.sPart, false});
    workbook.sheets.push_back(std::move(sheet));
  }
}

std::string RelationsWithAdded(std::string_view sBytes, const WorkbookPart& workbook) {
  std::vector<std::string> elements;
  for (const WorkbookSheet& sheet : workbook.sheets)
    if (sheet.bAdded)
      elements.push_back("Relationship Id=\"" + sheet.sRelation + "\" Type=\"" + std::string(kRelationType) +
                         "\" Target=\"/" + sheet.sPart + "\"");
  return WithElements(sBytes, elements);
}

std::string ContentTypesWithAdded(std::string_view sBytes, const WorkbookPart& workbook) {
  std::vector<std::string> elements;
  for (const WorkbookSheet& sheet : workbook.sheets)
    if (sheet.bAdded)
      elements.push_back("Override PartName=\"/" + sheet.sPart + "\" ContentType=\"" + std::string(kSheetType) + "\"");
  return WithElements(sBytes, elements);
}

std::string AddedSheetTag(std::string_view sModel, const WorkbookSheet& sheet, uint32_t nSheetId) {
  std::string sName;
  AppendXmlAttribute(sName, sheet.sName);
  std::string sTag = WithAttribute(WithoutAttribute(sModel, "state"), "name", sName);
  sTag = WithAttribute(sTag, "sheetId", std::to_string(nSheetId));
  // The attribute of the relationships' namespace has a prefix of the file's choice.
  const size_t nId = sTag.find(":id=");
  const size_t nPrefix = nId == std::string::npos ? nId : sTag.find_last_of(" \t\r\n", nId);
  if (nPrefix == std::string::npos) return sTag;
  return WithAttribute(sTag, sTag.substr(nPrefix + 1, nId + 3 - nPrefix - 1), sheet.sRelation);
}

}  // namespace quillon
