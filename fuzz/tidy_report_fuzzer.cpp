// Any recipe over any report by tidy tables: each line is told once and in order, each record has all of its columns,
// and a mistake in the recipe names its section.

#include <string>
#include <vector>

#include "clsFuzzInput.h"
#include "clsTidyReport.h"
#include "modTidyKeys.h"

using namespace quillon;

namespace {

class clsCounter : public clsTidyListener {
 public:
  void TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) override {
    columns_[nTable] = columns.size();
  }
  void Row(const TidyRecord& row) override {
    Must(row.cells.size() == columns_[row.nTable], "a row has all columns");
    ++lRows;
  }
  void Record(const TidyRecord& record) override {
    Must(record.cells.size() == columns_[record.nTable], "a record has all columns");
    Must(record.lLastLine >= record.lLine, "a record ends behind its row");
    ++lRecords;
  }
  void Line(int64_t lLine, std::string_view, TidyLineKind, size_t) override {
    Must(lLine == ++lLines, "each line once and in order");
  }

  int64_t lRows = 0, lRecords = 0, lLines = 0;

 private:
  size_t columns_[64] = {};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nSize) {
  clsFuzzInput input(pData, nSize);
  std::vector<TidyTable> tables;
  TidyFault fault;
  if (!ReadTidyRecipe(input.TakePart(), tables, fault)) {
    Must(fault.lCode != 0 && !fault.sSection.empty() && !fault.sText.empty(), "a mistake is told");
    return 0;
  }
  if (tables.size() > 64) return 0;
  clsCounter counter;
  clsTidyReport report(tables, counter);
  int64_t lLines = 0;
  for (std::string_view sReport = input.sInput; !sReport.empty(); ++lLines) {
    const size_t nEnd = sReport.find('\n');
    report.Line(sReport.substr(0, nEnd));
    sReport.remove_prefix(nEnd == std::string_view::npos ? sReport.size() : nEnd + 1);
  }
  report.End();
  Must(counter.lLines == lLines && counter.lRows == counter.lRecords, "nothing is lost");
  return 0;
}
