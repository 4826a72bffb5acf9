// Writes a workbook through the link from lines on standard input, for tests that read it back with programs of other
// makers. Fields are separated by tabs; \\, \t, \n, \r and \xHH stand for themselves in texts.
//
//   make_workbook FILE [readback] [dayfirst] [alltext]
//     cell <sheet> <row> <column> <text>
//     name <sheet> <name>
//     clear                                  the used range of the active sheet, on sheet 1
//
// A refused operation prints its reason on standard output; the exit status is 1 if saving failed.

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "modExcelLink.h"

namespace {

using namespace quillon;

std::string Unescaped(const std::string& sText) {
  std::string sOut;
  for (size_t i = 0; i < sText.size(); ++i) {
    if (sText[i] != '\\' || i + 1 == sText.size()) {
      sOut += sText[i];
      continue;
    }
    const char ch = sText[++i];
    if (ch == 'x' && i + 2 < sText.size()) {
      sOut += static_cast<char>(std::stoi(sText.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      sOut += ch == 't' ? '\t' : ch == 'n' ? '\n' : ch == 'r' ? '\r' : ch;
    }
  }
  return sOut;
}

std::vector<std::string> Fields(const std::string& sLine) {
  std::vector<std::string> fields(1);
  for (const char ch : sLine) {
    if (ch == '\t') {
      fields.emplace_back();
    } else {
      fields.back() += ch;
    }
  }
  return fields;
}

bool Execute(clsWorkbook& workbook, const std::vector<std::string>& fields, Failure& failure) {
  if (fields[0] == "cell" && fields.size() == 5)
    return workbook.WriteCell(std::stoi(fields[1]), std::stoll(fields[2]), std::stoi(fields[3]), Unescaped(fields[4]),
                              failure);
  if (fields[0] == "name" && fields.size() == 3)
    return workbook.SetSheetName(std::stoi(fields[1]), Unescaped(fields[2]), failure);
  if (fields[0] == "clear") {
    const auto used = workbook.ActiveUsedRange();
    return used && workbook.ClearContents(1, *used, failure);
  }
  failure = OwnFailure(fields[0], "unknown line");
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  WorkbookOptions options;
  for (int i = 2; i < argc; ++i) {
    const std::string sOption = argv[i];
    options.bReadBack = options.bReadBack || sOption == "readback";
    options.typing.bDayFirst = options.typing.bDayFirst || sOption == "dayfirst";
    options.typing.bAllText = options.typing.bAllText || sOption == "alltext";
  }
  auto workbook = OpenExcelWorkbook(argv[1], options);
  Failure failure;
  for (std::string sLine; std::getline(std::cin, sLine);)
    if (!Execute(*workbook, Fields(sLine), failure)) std::cout << failure.sText << "\n";
  if (SaveExcelWorkbookAs(*workbook, argv[1], OutputFormatOfPath(argv[1]), failure)) return 0;
  std::cout << failure.sText << "\n";
  return 1;
}
