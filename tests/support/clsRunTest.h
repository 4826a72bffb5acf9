#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "clsRecipeTest.h"
#include "clsRecorderWorkbook.h"
#include "modExportRun.h"

namespace quillon {

/// Runs specifications into a CSV report or a recorded workbook.
class clsRunTest : public clsRecipeTest {
 protected:
  void SetUp() override {
    clsRecipeTest::SetUp();
    gsOutputFile = folder.Path("out.csv");
  }
  void Input(std::string_view sBytes, int lSlot = 1) {
    recipe.InputFileName[static_cast<size_t>(lSlot) - 1] = folder.Write("in" + std::to_string(lSlot), sBytes);
  }
  void Specification(const std::string& sBody) {
    const std::string sHead = "[Header]\nProduct=QLN\nFileType=EXPORT SPEC\nFileFormat=1.1\n[General]\nName=\n";
    recipe.ExportSpecs.ReadFromFile(context, folder.Write("spec.t2x", sHead + sBody));
  }
  /// [Table n] from one key text to another; columns as "1 4 A" or "1 4 A SUM".
  static std::string Table(int n, const std::string& sStart, int lStart, const std::string& sEnd, int lEnd,
                           const std::vector<std::string>& columns) {
    const std::string sTable = "Table " + std::to_string(n);
    std::string s = "[" + sTable + "]\nReadStartLine=" + sStart + "\nReadStartLineOffset=" + std::to_string(lStart) +
                    "\nReadEndLine=" + sEnd + "\nReadEndLineOffset=" + std::to_string(lEnd) +
                    "\nTotalColumns=" + std::to_string(columns.size()) + "\n";
    for (size_t m = 0; m < columns.size(); ++m) {
      std::istringstream words(columns[m]);
      std::string sFrom, sTo, sLetters, sOperator;
      words >> sFrom >> sTo >> sLetters >> sOperator;
      s += "[" + sTable + " Col " + std::to_string(m + 1) + "]\nReadColumnStart=" + sFrom + "\nReadColumnEnd=" + sTo +
           "\nWriteColumn=" + sLetters + "\nPeriodOperator=" + sOperator + "\n";
    }
    return s;
  }
  std::string Csv() {
    RunRecipe(context, 6);
    return folder.Read("out.csv");
  }
  /// Sheet 1 of a run into the recorder.
  std::string Sheet() {
    account = FileAccount();
    context.pWorkbook = &workbook;
    recipe.ExportSpecs.Process(context, nullptr);
    context.pWorkbook = nullptr;
    return workbook.Sheet(1);
  }
  /// "Error [-5604]: text" of the entries since the last call.
  std::string TakeReports() {
    std::string sOut;
    for (const ReportEntry& entry : host.reports) sOut += entry.sErr1 + ": " + entry.sErr2 + "\n";
    host.reports.clear();
    return sOut;
  }

  clsRecorderWorkbook workbook;
};

}  // namespace quillon
