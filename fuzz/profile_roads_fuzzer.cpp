// Any columns over rows of any bytes: the quick road to CSV gives the bytes of the plain one.

#include <string>
#include <vector>

#include "clsCsvRowSink.h"
#include "clsFuzzInput.h"
#include "clsRowCutter.h"
#include "clsTempFolder.h"

using namespace quillon;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  static const clsTempFolder folder;
  clsFuzzInput input(pData, nSize);
  const unsigned choice = input.TakeByte();
  const clsCodePage* const pages[] = {&clsCodePage::Windows1252(), clsCodePage::Find("cp437"), &clsCodePage::Utf8()};
  const clsCodePage& pageIn = *pages[choice % 3];
  const clsCodePage& pageOut = *pages[choice / 3 % 3];
  CsvRules rules;
  rules.quoting = static_cast<CsvQuoting>(choice / 9 % 3);
  const unsigned flags = input.TakeByte();
  rules.sSeparator = (flags & 1) != 0 ? "," : "\t";
  std::vector<CellwrightColumn> columns((flags >> 1) % 16);
  for (CellwrightColumn& column : columns) {
    column.lCount = static_cast<int8_t>(input.TakeByte());
    column.inputPad = input.TakeByte();
    const unsigned place = input.TakeByte();
    column.lInputSide = static_cast<int32_t>(place % 3);
    column.lOrder = static_cast<int32_t>(place / 3 % 20);
  }
  const CutPlan plan = MakeCutPlan(columns, 1 + static_cast<int32_t>(flags >> 6), pageIn);
  clsOutputFile files[2];
  Failure failure;
  files[0].Open(folder.Path("quick"), failure);
  files[1].Open(folder.Path("plain"), failure);
  rules.bSafe = (flags & 32) != 0;
  clsCsvRowSink quick(files[0], rules, pageOut);
  clsCsvRowSink plain(files[1], rules, pageOut, {}, clsCsvRowSink::Road::Plain);
  clsRowCutter cutter(plan, pageIn);
  for (std::string_view s = input.sInput; !s.empty();) {
    const size_t nEnd = std::min(s.find('\n'), s.size());
    // In an allocation of its own, so that the sanitizer sees each byte read behind it.
    std::vector<char> row(s.begin(), s.begin() + static_cast<std::ptrdiff_t>(nEnd));
    row.resize(nEnd + SinkRow::kRoom, '"');
    cutter.Cut({row.data(), nEnd}, true);
    quick.PutRow(cutter.Row());
    row.resize(nEnd);
    row.shrink_to_fit();
    cutter.Cut({row.data(), nEnd}, false);
    plain.PutRow(cutter.Row());
    s.remove_prefix(std::min(nEnd + 1, s.size()));
  }
  Must(files[0].Commit(failure) && files[1].Commit(failure), "both are written");
  Must(folder.Read("quick") == folder.Read("plain"), "both roads give the same bytes");
  Must(quick.CharsLost() == plain.CharsLost(), "and the same count");
  return 0;
}
