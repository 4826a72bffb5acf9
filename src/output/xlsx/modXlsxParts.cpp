#include "modXlsxParts.h"

#include <array>
#include <ctime>
#include <utility>

#include "clsZipWriter.h"
#include "modCellTyping.h"
#include "modFormatKinds.h"
#include "modXmlText.h"

namespace quillon {

namespace {

constexpr std::string_view kMain = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr std::string_view kOffice = "http://schemas.openxmlformats.org/officeDocument/2006/";
constexpr std::string_view kPackage = "http://schemas.openxmlformats.org/package/2006/";
constexpr std::string_view kSheetType = "application/vnd.openxmlformats-officedocument.spreadsheetml.";
constexpr int kFirstOwnFormat = 164;

template <typename... Pieces>
std::string Join(const Pieces&... pieces) {
  std::string sOut;
  (sOut.append(pieces), ...);
  return sOut;
}

std::string Override(std::string_view sPart, std::string_view sType) {
  return Join("<Override PartName=\"/", sPart, "\" ContentType=\"", sType, "\"/>");
}

std::string Relation(int nId, std::string_view sTypeBase, std::string_view sType, std::string_view sTarget) {
  return Join("<Relationship Id=\"rId", std::to_string(nId), "\" Type=\"", sTypeBase, "relationships/", sType,
              "\" Target=\"", sTarget, "\"/>");
}

std::string Relations(const std::string& sAll) {
  return Join(kXmlHead, "<Relationships xmlns=\"", kPackage, "relationships\">", sAll, "</Relationships>");
}

}  // namespace

std::string SheetPartName(int nSheet) {
  return "xl/worksheets/sheet" + std::to_string(nSheet) + ".xml";
}

std::string ContentTypesPart(int nSheets) {
  std::string sSheets;
  for (int i = 1; i <= nSheets; ++i) sSheets += Override(SheetPartName(i), Join(kSheetType, "worksheet+xml"));
  return Join(kXmlHead, "<Types xmlns=\"", kPackage, "content-types\">",
              "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>",
              "<Default Extension=\"xml\" ContentType=\"application/xml\"/>",
              Override("xl/workbook.xml", Join(kSheetType, "sheet.main+xml")), sSheets,
              Override("xl/styles.xml", Join(kSheetType, "styles+xml")),
              Override("docProps/core.xml", "application/vnd.openxmlformats-package.core-properties+xml"),
              Override("docProps/app.xml", "application/vnd.openxmlformats-officedocument.extended-properties+xml"),
              "</Types>");
}

std::string PackageRelationsPart() {
  return Relations(Relation(1, kOffice, "officeDocument", "xl/workbook.xml") +
                   Relation(2, kPackage, "metadata/core-properties", "docProps/core.xml") +
                   Relation(3, kOffice, "extended-properties", "docProps/app.xml"));
}

std::string AppPropertiesPart() {
  return Join(kXmlHead, "<Properties xmlns=\"", kOffice, "extended-properties\">", kOwnApplication, "</Properties>");
}

std::string CorePropertiesPart() {
  const auto moment = static_cast<std::time_t>(CreationTime());
  std::tm parts{};
  gmtime_r(&moment, &parts);
  std::array<char, 32> stamp{};
  const size_t nStamp = std::strftime(stamp.data(), stamp.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
  const std::string_view sStamp(stamp.data(), nStamp);
  return Join(kXmlHead, "<cp:coreProperties xmlns:cp=\"", kPackage, "metadata/core-properties\" ",
              "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:dcterms=\"http://purl.org/dc/terms/\" ",
              "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"><dc:creator>Quillon</dc:creator>",
              "<cp:lastModifiedBy>Quillon</cp:lastModifiedBy><dcterms:created xsi:type=\"dcterms:W3CDTF\">", sStamp,
              "</dcterms:created><dcterms:modified xsi:type=\"dcterms:W3CDTF\">", sStamp,
              "</dcterms:modified></cp:coreProperties>");
}

std::string WorkbookPart(std::span<const std::string> sheetNames, int nActiveSheet, bool bRecalculate) {
  std::string sSheets;
  for (size_t i = 0; i < sheetNames.size(); ++i) {
    const std::string sNumber = std::to_string(i + 1);
    sSheets += "<sheet name=\"";
    AppendXmlAttribute(sSheets, sheetNames[i]);
    sSheets += Join("\" sheetId=\"", sNumber, "\" r:id=\"rId", sNumber, "\"/>");
  }
  return Join(kXmlHead, "<workbook xmlns=\"", kMain, "\" xmlns:r=\"", kOffice, "relationships\"><workbookPr/>",
              "<bookViews><workbookView activeTab=\"", std::to_string(nActiveSheet - 1), "\"/></bookViews><sheets>",
              sSheets, "</sheets>", bRecalculate ? "<calcPr calcId=\"0\" fullCalcOnLoad=\"1\"/>" : "", "</workbook>");
}

std::string WorkbookRelationsPart(int nSheets) {
  std::string sAll;
  for (int i = 1; i <= nSheets; ++i)
    sAll += Relation(i, kOffice, "worksheet", "worksheets/sheet" + std::to_string(i) + ".xml");
  return Relations(sAll + Relation(nSheets + 1, kOffice, "styles", "styles.xml"));
}

std::string StylesPart(std::string_view sFont, const clsNumberFormats& formats) {
  std::string sFormats, sCells;
  int nOwn = 0;
  bool bHeadings = false;
  for (const std::string& sCode : formats.Codes()) {
    if (sCode == kHeadingFormat) {
      sCells += "<xf numFmtId=\"0\" fontId=\"1\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyFont=\"1\"/>";
      bHeadings = true;
      continue;
    }
    int nNumber = BuiltInFormatId(sCode.empty() ? "General" : sCode).value_or(0);
    if (nNumber == 0 && !sCode.empty()) {
      nNumber = kFirstOwnFormat + nOwn++;
      sFormats += Join("<numFmt numFmtId=\"", std::to_string(nNumber), "\" formatCode=\"");
      AppendXmlAttribute(sFormats, sCode);
      sFormats += "\"/>";
    }
    sCells += Join("<xf numFmtId=\"", std::to_string(nNumber), "\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"",
                   nNumber == 0 ? "/>" : " applyNumberFormat=\"1\"/>");
  }
  if (nOwn > 0) sFormats = Join("<numFmts count=\"", std::to_string(nOwn), "\">", sFormats, "</numFmts>");
  std::string sFontRest = "<sz val=\"10\"/><name val=\"";
  AppendXmlAttribute(sFontRest, sFont);
  sFontRest += "\"/></font>";
  return Join(kXmlHead, "<styleSheet xmlns=\"", kMain, "\">", sFormats,
              bHeadings ? "<fonts count=\"2\"><font>" : "<fonts count=\"1\"><font>", sFontRest,
              bHeadings ? "<font><b/>" + sFontRest : "", "</fonts>",
              "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>",
              "<fill><patternFill patternType=\"gray125\"/></fill></fills>",
              "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>",
              "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/></cellStyleXfs>",
              "<cellXfs count=\"", std::to_string(formats.Codes().size()), "\">", sCells, "</cellXfs>",
              "<cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles>",
              "<dxfs count=\"0\"/><tableStyles count=\"0\"/></styleSheet>");
}

}  // namespace quillon
