#pragma once
// .xlsx packages made part by part, so that each can hold what ordinary writers seldom write.

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "clsOutputFile.h"
#include "clsTempFolder.h"
#include "clsXlsxEditor.h"
#include "clsXlsxPackage.h"
#include "clsZipWriter.h"

namespace quillon {

constexpr std::string_view kMain = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr std::string_view kOffice = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

using Parts = std::map<std::string, std::string>;

inline std::string Sheet(std::string_view sData, std::string_view sBehind = {}) {
  return "<worksheet xmlns=\"" + std::string(kMain) + "\"><sheetData>" + std::string(sData) + "</sheetData>" +
         std::string(sBehind) + "</worksheet>";
}

inline std::string Relations(std::string_view sItems) {
  return "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" +
         std::string(sItems) + "</Relationships>";
}

inline std::string Relation(std::string_view sId, std::string_view sType, std::string_view sTarget) {
  return "<Relationship Id=\"" + std::string(sId) + "\" Type=\"" + std::string(kOffice) + "/" + std::string(sType) +
         "\" Target=\"" + std::string(sTarget) + "\"/>";
}

/// Two sheets, One and Two; sBehind stands behind their list.
inline std::string WorkbookOf(std::string_view sBehind = {}) {
  return "<workbook xmlns=\"" + std::string(kMain) + "\" xmlns:r=\"" + std::string(kOffice) +
         "\"><sheets><sheet name=\"One\" sheetId=\"1\" r:id=\"a\"/><sheet name=\"Two\" "
         "sheetId=\"2\" r:id=\"b\"/></sheets>" +
         std::string(sBehind) + "</workbook>";
}

inline Parts GoodParts() {
  return {{"[Content_Types].xml", "<Types/>"},
          {"_rels/.rels", Relations(Relation("a", "officeDocument", "xl/workbook.xml"))},
          {"xl/_rels/workbook.xml.rels",
           Relations(Relation("a", "worksheet", "one.xml") + Relation("b", "worksheet", "two.xml"))},
          {"xl/one.xml", Sheet("<row r=\"2\"><c r=\"B2\"><v>1</v></c></row>")},
          {"xl/two.xml", Sheet("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>")},
          {"xl/workbook.xml", WorkbookOf()}};
}

/// A part of the package; "" with a failed test for none.
inline std::string PartIn(const std::string& sPath, std::string_view sName) {
  clsXlsxPackage package;
  Failure failure;
  std::string sBytes;
  EXPECT_TRUE(package.Open(sPath, failure)) << failure.sText;
  const auto nPart = package.Find(sName);
  EXPECT_TRUE(nPart && package.ReadAll(*nPart, sBytes, failure)) << sName << failure.sText;
  return sBytes;
}

class clsPackageFixture : public testing::Test {
 protected:
  std::string Make(const Parts& parts) {
    const std::string sPath = folder_.Path("book.xlsx");
    clsOutputFile file;
    Failure failure;
    EXPECT_TRUE(file.Open(sPath, failure));
    clsZipWriter zip(file);
    for (const auto& [sName, sContent] : parts) zip.Add(sName, sContent);
    zip.Finish();
    EXPECT_TRUE(file.Commit(failure));
    return sPath;
  }
  std::unique_ptr<clsWorkbook> Open(Failure& failure) {
    return OpenXlsxWorkbook(folder_.Path("book.xlsx"), {}, failure);
  }
  std::string Part(std::string_view sName) { return PartIn(folder_.Path("book.xlsx"), sName); }

  clsTempFolder folder_;
};

}  // namespace quillon
