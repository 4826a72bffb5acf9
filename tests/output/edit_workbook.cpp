// Drives the link by a script, for tests that compare workbooks before and after: edit_workbook FILE SCRIPT
// [text|day|mdy|dmy|ymd|stream]
//
// One command a line, fields parted by tabs: write SHEET ROW COLUMN TEXT, read SHEET ROW COLUMN, clear SHEET TOP LEFT
// BOTTOM RIGHT, clearused, used, name SHEET NAME, names, activate SHEET, save PATH, sheet NAME (its number), table
// SHEET, heading SHEET ROW, settle SHEET ROW COLUMN T|N|H DIGITS FORMAT TEXT. "\n", "\t", "\\" and "\xHH" stand in
// texts. Each answer is one line: "ok", "ok VALUE" or "failed REASON".

#include <charconv>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "modExcelLink.h"

namespace quillon {
namespace {

std::vector<std::string> Fields(const std::string& sLine) {
  std::vector<std::string> fields(1);
  for (const char ch : sLine) {
    if (ch == '\t') {
      fields.emplace_back();
    } else {
      fields.back() += ch;
    }
  }
  fields.resize(8);
  return fields;
}

std::string Unescaped(const std::string& sText) {
  std::string sOut;
  for (size_t i = 0; i < sText.size(); ++i) {
    if (sText[i] != '\\' || i + 1 == sText.size()) {
      sOut += sText[i];
      continue;
    }
    const char ch = sText[++i];
    if (ch == 'x') {
      int nCode = 0;
      std::from_chars(sText.data() + i + 1, sText.data() + i + 3, nCode, 16);
      sOut += static_cast<char>(nCode);
      i += 2;
    } else {
      sOut += ch == 'n' ? '\n' : ch == 't' ? '\t' : ch;
    }
  }
  return sOut;
}

class clsScript {
 public:
  explicit clsScript(clsWorkbook& workbook) : workbook_(workbook) {}

  bool Run(const std::string& sLine, std::string& sAnswer) {
    fields_ = Fields(sLine);
    const std::string& sCommand = fields_[0];
    Failure failure;
    sAnswer.clear();
    bool bDone = true;
    const int nSheet = Number(1);
    if (sCommand == "write") {
      bDone = workbook_.WriteCell(nSheet, Number(2), Number(3), Unescaped(fields_[4]), failure);
    } else if (sCommand == "read") {
      bDone = workbook_.ReadCell(nSheet, Number(2), Number(3), sAnswer, failure);
    } else if (sCommand == "clear") {
      bDone = workbook_.ClearContents(nSheet, {Number(2), Number(3), Number(4), Number(5)}, failure);
    } else if (sCommand == "clearused") {
      const auto range = workbook_.ActiveUsedRange();
      bDone = range && workbook_.ClearContents(1, *range, failure);
    } else if (sCommand == "used") {
      const auto range = workbook_.ActiveUsedRange();
      bDone = range.has_value();
      if (range)
        sAnswer = std::to_string(range->nTop) + " " + std::to_string(range->nLeft) + " " +
                  std::to_string(range->nBottom) + " " + std::to_string(range->nRight);
    } else if (sCommand == "name") {
      bDone = workbook_.SetSheetName(nSheet, fields_[2], failure);
    } else if (sCommand == "names") {
      for (int n = 1; n <= workbook_.SheetCount(); ++n) sAnswer += (n > 1 ? "|" : "") + workbook_.SheetName(n);
    } else if (sCommand == "sheet") {
      const int nFound = workbook_.SheetNamed(fields_[1], failure);
      bDone = nFound != 0;
      sAnswer = std::to_string(nFound);
    } else if (sCommand == "notes") {
      for (const std::string& sNote : workbook_.Notes()) sAnswer += sNote;
    } else if (sCommand == "table") {
      workbook_.BeginTable(nSheet);
    } else if (sCommand == "heading") {
      workbook_.SetHeadingRow(nSheet, Number(2));
    } else if (sCommand == "settle") {
      const auto kind = static_cast<SettledCell::Kind>(fields_[4].front());
      bDone = workbook_.WriteSettled(nSheet, Number(2), Number(3), {kind, fields_[7], fields_[5], fields_[6]}, failure);
    } else if (sCommand == "activate") {
      bDone = workbook_.ActivateSheet(nSheet);
    } else if (sCommand == "save") {
      bDone = SaveExcelWorkbookAs(workbook_, fields_[1], OutputFormatOfPath(fields_[1]), failure);
    } else if (sCommand == "refused") {
      sAnswer = std::to_string(workbook_.RefusedFormulas());
    } else {
      failure.sText = "unknown command";
      bDone = false;
    }
    if (!bDone) sAnswer = failure.sText;
    return bDone;
  }

 private:
  int Number(size_t nField) const { return std::atoi(fields_[nField].c_str()); }

  clsWorkbook& workbook_;
  std::vector<std::string> fields_;
};

int RunScript(const std::string& sFile, const char* pScript, const std::string& sMode) {
  WorkbookOptions options;
  options.bReadBack = sMode != "stream";
  options.typing.bAllText = sMode == "text";
  options.typing.bDayFirst = sMode == "day";
  options.typing.order = sMode == "mdy"   ? DateOrder::MonthFirst
                         : sMode == "dmy" ? DateOrder::DayFirst
                         : sMode == "ymd" ? DateOrder::YearFirst
                                          : DateOrder::ByColumn;
  auto workbook = OpenExcelWorkbook(sFile, options);
  clsScript script(*workbook);
  std::ifstream in(pScript);
  std::string sAnswer;
  for (std::string sLine; std::getline(in, sLine);) {
    if (sLine.empty()) continue;
    const bool bDone = script.Run(sLine, sAnswer);
    std::cout << (bDone ? "ok" : "failed") << (sAnswer.empty() ? "" : " ") << sAnswer << "\n";
  }
  return 0;
}

}  // namespace
}  // namespace quillon

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  return quillon::RunScript(argv[1], argv[2], argc > 3 ? argv[3] : "");
}
