// Any bytes as rows: from a file as from memory, passed over as read, and none of their bytes lost.

#include <string>
#include <vector>

#include "clsFuzzInput.h"
#include "clsLineReader.h"
#include "clsTempFolder.h"

using namespace quillon;

namespace {

std::vector<std::string> Rows(clsLineReader& reader) {
  std::vector<std::string> rows;
  std::string_view sRow;
  while (reader.ReadRow(sRow)) {
    if (!reader.RowMayHaveTab()) Must(sRow.find('\t') == std::string_view::npos, "a row without tabs has none");
    rows.emplace_back(sRow);
  }
  Must(reader.AtEnd() && reader.RowNumber() == static_cast<int64_t>(rows.size()), "rows are counted");
  return rows;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  static const clsTempFolder folder;
  clsFuzzInput input(pData, nSize);
  const unsigned choice = input.TakeByte();
  const TextFileOptions options{(choice & 4) != 0, FuzzPage(choice)};
  const size_t nNeedle = (choice >> 3) & 3;
  const std::string_view sNeedle = input.sInput.substr(0, nNeedle);

  clsLineReader memory;
  memory.OpenMemory(input.sInput, options);
  const std::vector<std::string> rows = Rows(memory);
  const std::string sFile = folder.Write("in.txt", input.sInput);
  clsLineReader file;
  Failure failure;
  Must(file.Open(sFile, options, failure), "the file is read");
  Must(&file.CodePage() == &memory.CodePage(), "with the same page");
  Must(Rows(file) == rows, "a file has the rows of its bytes");

  // With CRs out of play, the plainest reading there is.
  if (input.sInput.find_first_of("\r\x1A\xEF") == std::string_view::npos) {
    size_t nRow = 0;
    for (std::string_view s = input.sInput; !s.empty(); ++nRow) {
      const size_t nEnd = std::min(s.find('\n'), s.size());
      Must(nRow < rows.size() && rows[nRow] == s.substr(0, nEnd), "a row ends at its line end");
      s.remove_prefix(std::min(nEnd + 1, s.size()));
    }
    Must(nRow == rows.size(), "and no row besides");
  }
  memory.OpenMemory(input.sInput, options);
  file.Open(sFile, options, failure);
  std::string_view sRow;
  int64_t lRow = 0;
  for (int64_t lTaken = 1; lTaken != 0 && lRow < 1000; lRow += lTaken) {
    lTaken = file.FindRow(sNeedle, "", sRow);
    if (lTaken != 0) Must(sRow == rows[static_cast<size_t>(lRow + lTaken) - 1], "the row found is the row");
    for (int64_t l = lRow; lTaken != 0 && l < lRow + lTaken - 1; ++l) {
      const std::string& sPassed = rows[static_cast<size_t>(l)];
      Must(sPassed.find(sNeedle) == std::string::npos || sPassed.empty(), "and the first that holds the text");
    }
  }
  Must(memory.SkipRows(1 << 30) == static_cast<int64_t>(rows.size()), "as many are passed over");
  return 0;
}
