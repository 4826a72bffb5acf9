// Departments collect their accounts from a written table; a consolidation adds them up on sheet 2.

#include "clsRunTest.h"

namespace quillon {
namespace {

class Consolidate : public clsRunTest {
 protected:
  /// Departments are named by their key texts.
  static std::string Con(int n, const std::vector<std::string>& departments, int lStart = 1, int lEnd = -1,
                         int lTable = 1, int lColumn = 1) {
    const std::string sCon = std::to_string(n);
    std::string s = "[Consolidate " + sCon + "]\nTable=" + std::to_string(lTable) +
                    "\nReadAccountsColumn=" + std::to_string(lColumn) +
                    "\nTotalDepartments=" + std::to_string(departments.size()) + "\n";
    for (size_t d = 0; d < departments.size(); ++d) {
      s += "[Con " + sCon + " Dept " + std::to_string(d + 1) + "]\nReadStartLine=<" + departments[d] +
           ">\nReadStartLineOffset=" + std::to_string(lStart) + "\nReadEndLine=</" + departments[d] +
           ">\nReadEndLineOffset=" + std::to_string(lEnd) + "\n";
    }
    return s;
  }
  void Report(const std::string& sRows, const std::string& sSections) {
    Input("TOP\n" + sRows + "END");
    Specification(Table(1, "TOP", 1, "END", -1, {"1 6 A", "7 14 B"}) + sSections);
  }
  std::string Sheet2() {
    workbook.Clear();
    Sheet();
    return workbook.Sheet(2);
  }
  clsCon& Section() { return recipe.ExportSpecs.ConsolidateCollection[0]; }

  const std::string sTwo =
      "<1>\n"
      "Cash  1,000.50\n"
      "Rent  5\n"
      "Rent  6\n"
      "</1>\n"
      "<2>\n"
      " CASH 2\n"
      "Wages 7\n"
      "wages (2)\n"
      "Rent  n/a\n"
      "</2>\n";
};

TEST_F(Consolidate, AddsAccountsUp) {
  Report(sTwo, Con(1, {"1", "2"}) + Con(2, {"2"}));
  EXPECT_EQ(Sheet2(), " CASH |1002.5/Rent  |n/a /Rent  |6 /wages |5/ CASH |2 /Wages |7 /wages |(2) /Rent  |n/a ");
  EXPECT_EQ(TakeReports(), "");
  EXPECT_EQ(Section().WriteConTopRow, 1);
  EXPECT_EQ(Section().WriteConBottomRow, 0) << "counted before the accounts are known";
  EXPECT_EQ(recipe.ExportSpecs.getWritePointer(host, 2), 9);
  recipe.WriteDataFormat = "NearestCent";
  EXPECT_EQ(Sheet2().substr(0, 15), " CASH |1,002.50");
  recipe.WriteDataFormat = "NearestDollar";
  EXPECT_EQ(Sheet2().substr(0, 12), " CASH |1,003");
}

TEST_F(Consolidate, CountsWhatIsNoNumberAsZero) {
  Report("<1>\nCash  n/a\n</1>\n<2>\ncash  2\n</2>\n", Con(1, {"1", "2"}));
  EXPECT_EQ(Sheet2(), "cash  |2");
  EXPECT_EQ(TakeReports(), "Error [-5106]: Unexpected non-numeric field! (Sheet: 2, Row: 1)\n");
}

TEST_F(Consolidate, TellsOfDepartmentsThatAreNotThere) {
  struct Case {
    const char* sStart;
    int lStart;
    const char* sEnd;
    const char* sReport;
  };
  const Case cases[] = {
      {"<3>", 1, "</1>", "Error [-5202]: Error in Department specs: Cannot find ReadStartLine: <3>\n"},
      {"Cash", 0, "RENT", "Error [-5203]: Error in Department specs: Cannot find ReadEndLine: RENT\n"},
      {"Rent", 0, "<",
       "Error [-5204]: Error in Table specs: ReadEndLine key text [<] was found before ReadStartLine key text "
       "[Rent]\n"},
      {"Rent", 1, "Rent",
       "Error [-5204]: Error in Table specs: ReadEndLine key text [Rent] was found before ReadStartLine key text "
       "[Rent]\n"},
      {"<1>", 4, "</1>", ""},
  };
  Report(sTwo, Con(1, {"1"}));
  for (const Case& c : cases) {
    clsDepartment& department = Section().DepartmentsCollection[0];
    department.ReadStartLine = c.sStart;
    department.ReadStartLineOffset = c.lStart;
    department.ReadEndLine = c.sEnd;
    EXPECT_EQ(Sheet2(), "") << c.sStart;
    EXPECT_EQ(TakeReports(), c.sReport);
    EXPECT_EQ(recipe.ExportSpecs.getWritePointer(host, 2), 1);
    EXPECT_FALSE(recipe.ExportSpecs.FatalProcessError);
  }
  Section().DepartmentsCollection[0].ReadStartLine.clear();
  Section().DepartmentsCollection[0].ReadStartLineOffset = 0;
  Sheet2();
  EXPECT_EQ(Section().AccNames[0], "<1> ") << "an empty key text is in the first cell that isn't empty";
}

TEST_F(Consolidate, EndsTheRunWhereTheTableIsNotThere) {
  Report(sTwo, Con(1, {"1"}) + Table(2, "TOP", 0, "TOP", 0, {"1 3 A"}));
  Section().Table = 2;
  Sheet2();
  EXPECT_EQ(TakeReports(), "Error [-5104]: Cannot consolidate table [2]. Table does not exist!\n");
  EXPECT_EQ(recipe.ExportSpecs.ProcessedTables, 1);
  Section().Table = 1;
  Section().ReadAccountsColumn = 3;
  Sheet2();
  EXPECT_EQ(TakeReports(), "Error [-5105]: Error in Consolidate: Table [1] does not have [3] columns!\n");
  EXPECT_TRUE(recipe.ExportSpecs.FatalProcessError);
  Section().Table = 0;
  Sheet2();
  EXPECT_EQ(TakeReports(), "");
  EXPECT_TRUE(recipe.ExportSpecs.FatalProcessError);
}

TEST_F(Consolidate, GoesOnWithoutDepartments) {
  Report(sTwo, Con(1, {}) + Table(2, "TOP", 0, "TOP", 0, {"1 3 A"}));
  EXPECT_EQ(Sheet2(), "");
  EXPECT_EQ(TakeReports(), "Error [-5107]: No Departments to consolidate in clsCon!\n");
  EXPECT_EQ(recipe.ExportSpecs.ProcessedTables, 2);
}

TEST_F(Consolidate, EndsTheWalkInSilence) {
  Report("<1>\nCash  9E14\n</1>\n<2>\nCash  9E14\n</2>\n", Con(1, {"1", "2"}));
  EXPECT_EQ(Sheet2(), "Cash  |9E14 ") << "a sum beyond the 64-bit range; what was written stays";
  EXPECT_NE(account.sWalkEnded, "");
  Section().DepartmentsCollection[0].ReadStartLineOffset = -5;
  Sheet2();
  EXPECT_NE(account.sWalkEnded.find("outside"), std::string::npos) << "rows above the sheet";
  Csv();
  EXPECT_EQ(account.sWalkEnded, "A consolidation needs a workbook");
  EXPECT_TRUE(account.bOutputWritten);
  EXPECT_EQ(TakeReports(), "");
}

TEST_F(Consolidate, AddsManyDepartmentsUp) {
  constexpr int kDepartments = 20, kAccounts = 300;
  std::vector<std::string> names;
  std::vector<int64_t> totals(kAccounts);  // in the order of the first department
  std::string sRows;
  for (int d = 0; d < kDepartments; ++d) {
    names.push_back(std::to_string(d));
    sRows += "<" + names.back() + ">\n";
    for (int a = 0; a < kAccounts; ++a) {
      const int lAccount = (a * 7 + d) % kAccounts;
      totals[static_cast<size_t>(lAccount * 43 % kAccounts)] += a * d;
      std::string sRow = "a" + std::to_string(lAccount);
      sRow.resize(6, ' ');
      sRows += sRow + std::to_string(a * d) + "\n";
    }
    sRows += "</" + names.back() + ">\n";
  }
  Report(sRows, Con(1, names));
  Sheet2();
  for (int n = 0; n < kAccounts; ++n) {
    std::string sTotal;
    Failure failure;
    workbook.ReadCell(2, n + 1, 2, sTotal, failure);
    EXPECT_EQ(sTotal, std::to_string(totals[static_cast<size_t>(n)])) << Section().AccNames[static_cast<size_t>(n)];
  }
  EXPECT_EQ(Section().AccNames.size(), static_cast<size_t>(kAccounts));
}

}  // namespace
}  // namespace quillon
