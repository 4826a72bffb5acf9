#include "modTidyTablesOf.h"

#include "modShortTable.h"
#include "modTidyRecipe.h"

namespace quillon {

namespace {

void PlaceByRuler(const PreviewRequest& report, clsSectionFile& recipe, TidyTable& table) {
  PreviewRequest request = report;
  request.lTable = table.lNumber;
  request.lRows = 1;
  std::vector<TidyPlace>& places = table.row.cut.places.emplace_back();
  for (const PreviewColumn& column : PreviewByRecipe(request, recipe).columns) {
    places.push_back({column.lStart, column.lEnd});
  }
}

}  // namespace

bool ReadTidyTablesOf(const PreviewRequest& request, clsSectionFile& recipe, std::vector<TidyTable>& tables,
                      std::string& sFault) {
  const clsTidyTables tidy(recipe);
  if (!tidy.Any()) return false;
  const auto lTables = static_cast<int32_t>(CountShortTables(recipe));
  TidyFault fault;
  if (!tidy.Check(lTables, fault)) {
    sFault = fault.sText;
    return true;
  }
  for (int32_t l = 1; l <= lTables; ++l) {
    TidyTable table;
    if (!tidy.Has(l) || !tidy.Read(l, table, fault)) continue;
    if (table.row.cut.places.empty() && table.row.cut.split == TidySplit::None) PlaceByRuler(request, recipe, table);
    tables.push_back(std::move(table));
  }
  return true;
}

}  // namespace quillon
