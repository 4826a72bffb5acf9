// Which sheet is written, what is refused, and what is kept of the old file.

#include <gtest/gtest.h>

#include <filesystem>

#include "clsTempFolder.h"
#include "modExcelLink.h"

namespace quillon {
namespace {

constexpr const char* kNames[] = {"a.xlsx", "a.xls"};

class Target : public testing::TestWithParam<const char*> {
 protected:
  std::string Path() const { return folder_.Path(GetParam()); }
  int32_t Format() const { return OutputFormatOfPath(GetParam()); }
  /// A workbook with the sheets "Data" and "1", each with its name in A1.
  void MakeBook() {
    Failure failure;
    auto workbook = NewExcelWorkbook(Format(), {});
    EXPECT_TRUE(workbook->SetSheetName(1, "Data", failure) && workbook->SetSheetName(2, "1", failure));
    for (int n = 1; n <= 2; ++n) EXPECT_TRUE(workbook->WriteCell(n, 1, 1, "of " + workbook->SheetName(n), failure));
    EXPECT_TRUE(workbook->SaveAs(Path(), Format(), failure)) << failure.sText;
  }
  /// Writes a cell to the sheet that goes by number 1; the reason if that fails.
  std::string Write(const WorkbookOptions& options, std::string_view sText = "new") {
    Failure failure;
    auto workbook = OpenExcelWorkbook(Path(), options);
    if (workbook->WriteCell(1, 5, 2, sText, failure)) workbook->SaveAs(Path(), Format(), failure);
    return failure.sText;
  }
  /// Each sheet as "name=A1,B5".
  std::string Sheets(const std::string& sPath) {
    Failure failure;
    auto workbook = OpenExcelWorkbook(sPath, {});
    std::string sAll;
    for (int n = 1; n <= workbook->SheetCount(); ++n) {
      std::string sFirst, sNew;
      EXPECT_TRUE(workbook->ReadCell(n, 1, 1, sFirst, failure) && workbook->ReadCell(n, 5, 2, sNew, failure));
      sAll.append(workbook->SheetName(n)).append("=").append(sFirst).append(",").append(sNew).append(" ");
    }
    return sAll;
  }
  clsTempFolder folder_;
};

TEST_P(Target, ASheetGoesByNameThenByNumberElseItIsMade) {
  for (const auto& [sSheet, sExpected] : std::initializer_list<std::pair<std::string, std::string>>{
           {"", "Data=of Data,new 1=of 1, "},
           {"dATA", "Data=of Data,new 1=of 1, "},
           {"1", "Data=of Data, 1=of 1,new "},
           {"2", "Data=of Data, 1=of 1,new "},
           {"3", "Data=of Data, 1=of 1, 3=,new "},
           {"0", "Data=of Data, 1=of 1, 0=,new "},
           {"It's \xC3\xA9", "Data=of Data, 1=of 1, It's \xC3\xA9=,new "},
           {std::string(31, 'x'), "Data=of Data, 1=of 1, " + std::string(31, 'x') + "=,new "}}) {
    MakeBook();
    EXPECT_EQ(Write({.typing = {}, .sSheet = sSheet}), "") << sSheet;
    EXPECT_EQ(Sheets(Path()), sExpected) << sSheet;
  }
}

TEST_P(Target, NamesThatASpreadsheetRefusesFailAndLeaveTheFile) {
  MakeBook();
  const std::string sBefore = folder_.Read(GetParam());
  for (const std::string& sSheet : {std::string("a/b"), std::string("[x]"), std::string(32, 'x')}) {
    EXPECT_NE(Write({.typing = {}, .sSheet = sSheet}), "") << sSheet;
    EXPECT_TRUE(folder_.Read(GetParam()) == sBefore) << sSheet;
  }
  std::filesystem::remove(Path());
  EXPECT_NE(Write({.typing = {}, .sSheet = "a/b"}), "");
  EXPECT_FALSE(folder_.Has(GetParam()));
}

TEST_P(Target, ANewWorkbookGivesItsFirstSheetTheName) {
  for (const auto& [sSheet, sExpected] :
       std::initializer_list<std::pair<std::string, std::string>>{{"Ledger", "Ledger=,new Sheet2=, "},
                                                                  {"2", "Sheet1=, Sheet2=,new "},
                                                                  {"sheet2", "Sheet1=, Sheet2=,new "},
                                                                  {"7", "7=,new Sheet2=, "}}) {
    std::filesystem::remove(Path());
    EXPECT_EQ(Write({.typing = {}, .sSheet = sSheet}), "");
    EXPECT_EQ(Sheets(Path()), sExpected) << sSheet;
    MakeBook();
    EXPECT_EQ(Write({.typing = {}, .sSheet = sSheet, .bReplace = true}), "");
    EXPECT_EQ(Sheets(Path()), sExpected) << sSheet << ", with nothing of the old one";
  }
}

TEST_P(Target, TheUsedRangeIsThatOfTheNamedSheet) {
  MakeBook();
  EXPECT_EQ(Write({.typing = {}, .sSheet = "2"}), "");
  auto workbook = OpenExcelWorkbook(Path(), {.typing = {}, .sSheet = "2"});
  EXPECT_EQ(workbook->ActiveUsedRange()->nBottom, 5);
  EXPECT_EQ(workbook->SheetName(1), "1");
  EXPECT_EQ(workbook->SheetName(2), "Data") << "the first one goes by the number of the named one";
  workbook = OpenExcelWorkbook(Path(), {.typing = {}, .sSheet = "None yet"});
  EXPECT_EQ(workbook->ActiveUsedRange()->nBottom, 1);
}

TEST_P(Target, NothingIsOverwrittenWhereThatIsForbidden) {
  MakeBook();
  const std::string sBefore = folder_.Read(GetParam());
  for (const char* const pSheet : {"", "data", "1"}) {
    EXPECT_NE(Write({.typing = {}, .sSheet = pSheet, .bNoOverwrite = true}).find("The sheet holds something"),
              std::string::npos);
    EXPECT_TRUE(folder_.Read(GetParam()) == sBefore);
  }
  EXPECT_NE(Write({.typing = {}, .bReplace = true, .bNoOverwrite = true}).find("The file is there already"),
            std::string::npos);
  EXPECT_TRUE(folder_.Read(GetParam()) == sBefore);
  EXPECT_EQ(Write({.typing = {}, .sSheet = "Other", .bNoOverwrite = true}), "");
  EXPECT_NE(Write({.typing = {}, .sSheet = "Other", .bNoOverwrite = true}), "") << "the second run in a row";
  EXPECT_EQ(Sheets(Path()), "Data=of Data, 1=of 1, Other=,new ");
}

TEST_P(Target, ASheetWhoseCellsWereEmptiedMayBeWritten) {
  MakeBook();
  Failure failure;
  auto workbook = OpenExcelWorkbook(Path(), {});
  EXPECT_TRUE(workbook->ClearContents(1, {1, 1, 9, 9}, failure));
  EXPECT_TRUE(workbook->SaveAs(Path(), Format(), failure)) << failure.sText;
  EXPECT_EQ(Write({.typing = {}, .bNoOverwrite = true}), "");
  EXPECT_NE(Write({.typing = {}, .bNoOverwrite = true}), "") << "now it holds something";
}

TEST_P(Target, TheOldFileStaysBesideTheNewOne) {
  EXPECT_EQ(Write({.typing = {}, .bBackup = true}), "");
  const std::string sKept = std::string(GetParam()) + "~";
  EXPECT_FALSE(folder_.Has(sKept)) << "there was none";
  MakeBook();
  std::string sBefore = folder_.Read(GetParam());
  EXPECT_EQ(Write({.typing = {}, .sSheet = "2", .bBackup = true}), "");
  EXPECT_TRUE(folder_.Read(sKept) == sBefore);
  sBefore = folder_.Read(GetParam());
  EXPECT_EQ(Write({.typing = {}, .bReplace = true, .bBackup = true}, "a much longer text than before"), "");
  EXPECT_TRUE(folder_.Read(sKept) == sBefore) << "that of the run before";

  std::filesystem::remove(folder_.Path(sKept));
  folder_.Write(sKept + "/in the way", "x");
  sBefore = folder_.Read(GetParam());
  EXPECT_NE(Write({.typing = {}, .bBackup = true}).find("could not be kept"), std::string::npos);
  EXPECT_TRUE(folder_.Read(GetParam()) == sBefore) << "without a copy nothing is changed";
}

INSTANTIATE_TEST_SUITE_P(Forms, Target, testing::ValuesIn(kNames),
                         [](const auto& form) { return std::string(form.param).substr(2); });

}  // namespace
}  // namespace quillon
