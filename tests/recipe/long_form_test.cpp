// The long form: a recipe with its export specification, read and written.

#include "clsRecipeTest.h"
#include "modFailure.h"

namespace quillon {
namespace {

constexpr const char* kSpecs =
    "[Header]\nProduct=QLN\nFileType=EXPORT SPEC\nFileFormat=1.1\n[General]\nName=Year\n"
    "[Title 1]\nWriteSheet=2\nWriteColumn=B\nTotalLines=3\nText1=Ledger\nText2=\nText3=2024\n"
    "[Table 1]\nReadStartLine=Account\nReadStartLineOffset=1\nReadEndLine=Total\nReadEndLineOffset=-1\nTotalColumns=2\n"
    "[Table 1 Col 1]\nReadColumnStart=1\nReadColumnEnd=9\nWriteColumn=A\nPeriodOperator=\n"
    "[Table 1 Col 2]\nReadColumnStart=10\nReadColumnEnd=15\nWriteColumn=AB\nPeriodOperator=sum\n"
    "[Consolidate 1]\nTable=1\nReadAccountsColumn=1\nTotalDepartments=2\n"
    "[Con 1 Dept 1]\nReadStartLine=North\nReadStartLineOffset=1\nReadEndLine=End\nReadEndLineOffset=-1\n"
    "[Con 1 Dept 2]\nReadStartLine=South\nReadStartLineOffset=0\nReadEndLine=End\nReadEndLineOffset=0\n"
    "[Title 2]\nWriteSheet=1\nWriteColumn=A\nTotalLines=1\nText1=Note\n";

class LongForm : public clsRecipeTest {
 protected:
  clsExportSpecs& Read(std::string_view sSpecs) {
    recipe.ExportSpecs.ReadFromFile(context, folder.Write("specs.t2x", sSpecs));
    return recipe.ExportSpecs;
  }
  /// The specification with one line's text changed.
  static std::string With(std::string_view sFrom, std::string_view sTo) {
    std::string s = kSpecs;
    return s.replace(s.find(sFrom), sFrom.size(), sTo);
  }
};

TEST_F(LongForm, ReadsEverySectionInItsOrder) {
  const clsExportSpecs& specs = Read(kSpecs);
  EXPECT_EQ(TakeCodes(), Codes{});
  EXPECT_EQ(specs.Name, "Year");
  EXPECT_EQ(specs.SectionSequenceCollection, (std::vector<std::string>{"Title", "Table", "Consolidate", "Title"}));
  EXPECT_EQ(specs.TitlesCollection.at(0).WriteSheet, 2);
  EXPECT_EQ(specs.TitlesCollection[0].TextLines, (std::vector<std::string>{"Ledger", "", "2024"}));
  EXPECT_EQ(specs.TablesCollection.at(0).ReadEndLineOffset, -1);
  EXPECT_EQ(specs.TablesCollection[0].ColumnsCollection.at(1).WriteColumn, "AB");
  EXPECT_EQ(specs.TablesCollection[0].ColumnsCollection[1].PeriodOperator, "sum");
  EXPECT_EQ(specs.ConsolidateCollection.at(0).Table, 1);
  EXPECT_EQ(specs.ConsolidateCollection[0].DepartmentsCollection.at(0).ReadStartLineOffset, 1);
  EXPECT_EQ(specs.ConsolidateCollection[0].DepartmentsCollection.at(1).ReadStartLine, "South");
}

TEST_F(LongForm, EachRefusedKeyIsReportedAndTheNextSectionIsRead) {
  struct Case {
    const char *sFrom, *sTo;
    int32_t lErr;
    const char* sMessage;
  };
  for (const Case& c : {
           Case{"ReadColumnStart=10", "ReadColumnStart=0", -5000, "Invalid Read Column start position!"},
           Case{"ReadColumnStart=10", "ReadColumnStart=x", -5000, "Invalid Read Column start position!"},
           Case{"ReadColumnEnd=15", "ReadColumnEnd=-1", -5001, "Invalid Read Column end position!"},
           Case{"=AB", "=ZA", -5002, "Error in [Table 1 Col 2] : Write Column must be (A-Z)!"},
           Case{"=AB", "=", -5002, "Error in [Table 1 Col 2] : Write Column must be (A-Z)!"},
           Case{"=sum", "=LAST", -5003, "Invalid Multi-file operator!"},
           Case{"Table=1", "Table=0", -5101, "Error in section [Consolidate 1] : Table number must be > 0!"},
           Case{"Table=1", "Table=2", -5102, "Error in section [Consolidate 1] : Table number [2] does not exist!"},
           Case{"ReadAccountsColumn=1", "ReadAccountsColumn=0", -5103,
                "Error in section [Consolidate 1] : Accounts Column Number must be > 0!"},
           Case{"ReadStartLine=South", "ReadStartLine=-999999", -5200,
                "Error in [Con 1 Dept 2] : Missing ReadStartLine text!"},
           Case{"=South\nReadStartLineOffset=0\n", "=South\n", -5201,
                "Error in [Con 1 Dept 2] : Missing ReadEndLine text!"},
           Case{"ReadStartLine=Account", "ReadStartLine=", -5601, "Error in [Table 1] : Invalid ReadStartLine!"},
           Case{"ReadEndLine=Total", "ReadEndLine=;", -5602, "Error in [Table 1] : Invalid ReadEndLine!"},
           Case{"TotalColumns=2", "TotalColumns=abc", -5603, "Error in [Table 1] : Number of Columns must be > 0!"},
           Case{"WriteSheet=2", "WriteSheet=0", -5801, "Error in Title 1 : Write sheet number must be > 0!"},
           Case{"WriteColumn=B", "WriteColumn=1", -5802, "Error in Title 1 : Write Column must be (A-Z)!"},
           Case{"TotalLines=3", "TotalLines=", -5803, "Error in Title 1 : Number of lines must be > 0!"},
       }) {
    const clsExportSpecs& specs = Read(With(c.sFrom, c.sTo));
    ASSERT_EQ(host.reports.size(), 1U) << c.sTo;
    EXPECT_EQ(host.reports[0].sErr1, "Error [" + std::to_string(c.lErr) + "]");
    EXPECT_EQ(host.reports[0].sErr2, c.sMessage);
    EXPECT_TRUE(host.reports[0].bShowMessageBox);
    EXPECT_EQ(specs.TitlesCollection.size() + specs.TablesCollection.size() + specs.ConsolidateCollection.size(), 4U);
    host.reports.clear();
  }
}

TEST_F(LongForm, RefusedValueLeavesTheMemberAsItWas) {
  const clsExportSpecs& specs = Read(With("ReadColumnEnd=15", "ReadColumnEnd=0"));
  const clsColumn& column = specs.TablesCollection.at(0).ColumnsCollection.at(1);
  EXPECT_EQ(column.ReadColumnStart, 10);
  EXPECT_EQ(column.ReadColumnEnd, 1);
  EXPECT_EQ(column.WriteColumn, "A");
  EXPECT_EQ(Read(With("Table=1", "Table=2")).ConsolidateCollection.at(0).Table, 0);
  EXPECT_THROW(Read(With("ReadEndLineOffset=-1", "ReadEndLineOffset=abc")), UnhandledFailure);
}

TEST_F(LongForm, KeysInAnotherOrderAndMissingSectionsReadAsMissing) {
  Read(With("WriteSheet=2\nWriteColumn=B", "WriteColumn=B\nWriteSheet=2"));
  EXPECT_EQ(TakeCodes(), Codes{-5802});
  Read(With("TotalColumns=2", "TotalColumns=3"));
  EXPECT_EQ(TakeCodes(), Codes{-5000});
  EXPECT_EQ(recipe.ExportSpecs.TablesCollection.at(0).ColumnsCollection.size(), 3U);
  EXPECT_EQ(Read(With("Text2=", "x")).TitlesCollection.at(0).TextLines, (std::vector<std::string>{"Ledger", "", ""}))
      << "the reader has run into the next section";
  Read(With("Text3=2024", "Text3=[Title x"));
  EXPECT_EQ(TakeCodes(), Codes{-5801}) << "a section word in a value counts as a section";
  EXPECT_EQ(recipe.ExportSpecs.TitlesCollection.size(), 3U);
}

TEST_F(LongForm, CountsThatLieCostNeitherTimeNorMemory) {
  Read(With("TotalColumns=2", "TotalColumns=2000000000"));
  EXPECT_LE(TakeCodes().size(), size_t{clsSectionFile::kMaxMissing} + 20);
  Read(With("TotalLines=3", "TotalLines=2000000000"));
  EXPECT_LE(recipe.ExportSpecs.TitlesCollection.at(0).TextLines.size(), size_t{clsSectionFile::kMaxMissing} + 20);
  std::string sTables = "[Header]\nProduct=QLN\nFileType=EXPORT SPEC\nFileFormat=1.1\n";
  for (int i = 0; i < 100000; ++i) sTables += "[Table \n";
  Read(sTables);
  EXPECT_LE(TakeCodes().size(), size_t{clsSectionFile::kMaxMissing} + 20);
}

TEST_F(LongForm, WrongHeaderKeepsTheFormerContent) {
  Read(kSpecs);
  const clsExportSpecs& specs = Read(With("FileFormat=1.1", "FileFormat=1.0"));
  EXPECT_EQ(specs.TablesCollection.size(), 1U);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].sText, "Incorrect file format!");
}

TEST_F(LongForm, ReadWrittenAndReadAgainIsTheSame) {
  Read(kSpecs);
  Failure failure;
  ASSERT_TRUE(recipe.ExportSpecs.WriteToFile(context, folder.Path("first.t2x"), failure)) << failure.sText;
  clsExportSpecs& specs = Read(folder.Read("first.t2x"));
  ASSERT_TRUE(specs.WriteToFile(context, folder.Path("second.t2x"), failure)) << failure.sText;
  EXPECT_EQ(TakeCodes(), Codes{});
  EXPECT_EQ(folder.Read("second.t2x"), folder.Read("first.t2x"));
  std::string sExpected = kSpecs;
  for (size_t n = 0; (n = sExpected.find('\n', n)) != std::string::npos; n += 2) sExpected.insert(n, 1, '\r');
  EXPECT_EQ(folder.Read("first.t2x"), sExpected);
  specs.SectionSequenceCollection.emplace_back("Chart");
  ASSERT_TRUE(specs.WriteToFile(context, folder.Path("first.t2x"), failure));
  EXPECT_EQ(host.reports.at(0).sErr2, "Invalid item specfied!");
  EXPECT_EQ(TakeCodes(), Codes{-5306});
  EXPECT_EQ(folder.Read("first.t2x"), sExpected) << "keys are replaced in place";
}

TEST_F(LongForm, RecipeIsSavedAndLoadedWhole) {
  Read(kSpecs);
  recipe.OutputFileTitle = "Year";
  recipe.OutputFileName = "out.xlsx";
  recipe.InputFileFirst = 2;
  recipe.InputFileLast = 11;
  recipe.ExportSpecFileName = folder.Path("Y_ExportSpecs.t2x");
  recipe.WriteDataFormat = "NearestCent";
  recipe.Sheet2Name = "Sums";
  recipe.InputFileTitle[0] = "January";
  recipe.InputFileName[10] = "nov.txt";
  Failure failure;
  ASSERT_TRUE(recipe.SaveToFile(context, folder.Path("year.rcp"), failure)) << failure.sText;
  EXPECT_TRUE(folder.Read("year.rcp")
                  .starts_with("[Header]\r\nProduct=QLN\r\nFileType=RECIPE\r\nFileFormat=1.1\r\n[Output "
                               "File]\r\nOutputFileTitle=Year\r\n"));
  clsRecipe loaded;
  RecipeContext other{host, options, loaded, gLineProcessor(), account};
  loaded.LoadFromFile(other, folder.Path("year.rcp"));
  EXPECT_EQ(TakeCodes(), Codes{});
  EXPECT_EQ(loaded.InputFileLast, 11);
  EXPECT_EQ(loaded.WriteDataFormat, "NearestCent");
  EXPECT_EQ(loaded.InputFileTitle, recipe.InputFileTitle);
  EXPECT_EQ(loaded.InputFileName, recipe.InputFileName);
  EXPECT_EQ(loaded.ExportSpecs.TablesCollection.size(), 1U);
  const std::string sSaved = folder.Read("year.rcp");
  ASSERT_TRUE(loaded.SaveToFile(other, folder.Path("year.rcp"), failure));
  EXPECT_EQ(folder.Read("year.rcp"), sSaved);
}

TEST_F(LongForm, LoadReportsWhatIsMissingAndGoesOn) {
  EXPECT_THROW(recipe.LoadFromFile(context, folder.Path("none.rcp")), UnhandledFailure);
  ASSERT_EQ(host.reports.size(), 2U);
  EXPECT_EQ(host.reports[1].sErr2, "Cannot find recipe file: " + folder.Path("none.rcp"));
  EXPECT_EQ(TakeCodes(), (Codes{-5501, -5502}));
  const std::string sPath = folder.Write("r.rcp",
                                         "[Header]\nProduct=QLN-B\n[Output File]\nInputFileFirst=1\nInputFileLast=2\n"
                                         "ExportSpecFileName=none.t2x\nWriteDataFormat=nearestcent\n");
  recipe.LoadFromFile(context, sPath);
  EXPECT_EQ(recipe.InputFileLast, 2);
  EXPECT_EQ(recipe.WriteDataFormat, "") << "case included";
  ASSERT_EQ(host.reports.size(), 2U);
  EXPECT_EQ(host.reports[0].sErr2, "Invalid header in recipe file: " + sPath);
  EXPECT_EQ(host.reports[1].sErr2, "Cannot find Export Specs file: none.t2x");
  EXPECT_EQ(TakeCodes(), (Codes{-5503, -5504}));
}

TEST_F(LongForm, WritePointersExistForTwoSheets) {
  clsExportSpecs& specs = recipe.ExportSpecs;
  specs.setWritePointer(host, 2, 7);
  EXPECT_EQ(specs.getWritePointer(host, 1), 1);
  EXPECT_EQ(specs.getWritePointer(host, 2), 7);
  EXPECT_EQ(specs.getWritePointer(host, 3), 0);
  specs.setWritePointer(host, 0, 1);
  EXPECT_EQ(host.reports.at(0).sErr2, "Invalid sheet number specified!");
  EXPECT_EQ(TakeCodes(), (Codes{-5304, -5305}));
}

TEST_F(LongForm, SheetRowColumnTextIsDecodedAndCorrected) {
  int32_t lSheet = 0, lRow = 0;
  std::string sColumn;
  clsTitle::ParseSheetRowColumn(host, "2,15, c ", lSheet, lRow, sColumn);
  EXPECT_EQ(std::to_string(lSheet) + std::to_string(lRow) + sColumn, "215c");
  EXPECT_EQ(TakeCodes(), Codes{});
  for (const char* const sCode : {"", "0,0,", "1,1", "x,y,7"}) {
    clsTitle::ParseSheetRowColumn(host, sCode, lSheet, lRow, sColumn);
    EXPECT_EQ(std::to_string(lSheet) + std::to_string(lRow) + sColumn, "11A") << sCode;
  }
  EXPECT_EQ(host.reports.at(0).sErr1, "Warning [-5804]");
  EXPECT_EQ(TakeCodes(), Codes(4, -5804));
}

}  // namespace
}  // namespace quillon
