// Any bytes as a report, cut by any columns: the fast rows take as many bytes as the plain ones.
#include <cstdint>

#include "clsCsvRowSink.h"
#include "clsLineProcessor.h"
#include "clsRecipe.h"
#include "clsRowFields.h"
#include "clsTableTarget.h"
#include "clsTestHost.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t nBytes) {
  using namespace quillon;
  if (nBytes < 12) return 0;
  clsTestHost host;
  RecipeOptions options;
  options.text.pCodePage = pBytes[0] % 2 == 0 ? &clsCodePage::Windows1252() : &clsCodePage::Utf8();
  options.text.bUnix = pBytes[0] % 3 == 0;
  options.bTrimFields = pBytes[1] % 3 == 1;
  FileAccount account;
  clsRecipe recipe;
  RecipeContext context{host, options, recipe, gLineProcessor(), account};
  std::vector<clsColumn> columns(4);
  for (size_t i = 0; i < columns.size(); ++i) {
    columns[i].ReadColumnStart = pBytes[3 + 2 * i] + 1;
    columns[i].ReadColumnEnd = columns[i].ReadColumnStart + pBytes[4 + 2 * i] % 80;
  }
  Failure failure;
  clsLineReader reader;
  reader.OpenMemory({reinterpret_cast<const char*>(pBytes) + 11, nBytes - 11}, options.text);
  clsOutputFile fast, plain;
  fast.Open("/dev/null", failure);
  plain.Open("/dev/null", failure);
  const CsvRules rules = RecipeCsvRules(options, ",");
  clsCsvRowSink fastRows(fast, rules, reader.CodePage());
  clsCsvRowSink plainRows(plain, rules, reader.CodePage(), {}, clsCsvRowSink::Road::Plain);
  clsRowFields fastFields(context, columns);
  clsRowFields plainFields(context, columns, false);
  clsRow& row = gLineProcessor().RowCollection[0];
  while (!reader.AtEnd() && gLineProcessor().ReadRowPeriod1Only(context, &reader, pBytes[2] % 12)) {
    fastFields.Cut(row) && fastRows.PutRow(fastFields.Row());
    plainFields.Cut(row) && plainRows.PutRow(plainFields.Row());
    if (fast.BytesWritten() != plain.BytesWritten()) __builtin_trap();
  }
  row.Clear();
  return 0;
}
