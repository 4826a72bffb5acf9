#include "clsTableFinder.h"

#include <algorithm>
#include <utility>

#include "modRecipeOfTables.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr size_t kNone = static_cast<size_t>(-1);

std::string NamesOf(const TidyPart& part) {
  std::string sAll;
  for (const std::string& sName : part.ColumnNames()) {
    if (!sName.empty()) sAll += (sAll.empty() ? "" : ", ") + sName;
  }
  if (sAll.empty() && !part.texts.empty()) sAll = part.texts.front();
  return sAll;
}

std::string PlacesOf(const TidyCut& cut, size_t nColumn) {
  if (cut.places.empty() || nColumn >= cut.places.front().size()) return {};
  const TidyPlace& place = cut.places.front()[nColumn];
  return std::to_string(place.nStart) + " - " + (place.nEnd > 0 ? std::to_string(place.nEnd) : "");
}

std::string ShownPart(std::string_view sText) {
  constexpr size_t kMostShown = 100;
  return WithoutControls(TrimBlanks(MidChars(sText, 1, kMostShown)));
}

std::string Counted(const std::string& sWhat, int64_t lCount) {
  return sWhat + " " + std::to_string(lCount);
}

std::vector<ProofEntry> DoubtsOf(const FoundTable& table) {
  std::vector<ProofEntry> doubts;
  if (table.lMissing > 0) {
    doubts.push_back({Counted(Translate("Lines like its rows that it doesn't take:"), table.lMissing), 0, true});
  }
  if (table.lStrangers > 0) {
    doubts.push_back(
        {Counted(Translate("Lines that it takes and that are perhaps no rows:"), table.lStrangers), 0, true});
  }
  for (const std::string& sDoubt : table.doubts) doubts.push_back({ShownPart(sDoubt), 0, true});
  return doubts;
}

}  // namespace

ProofGroup clsTableFinder::LeftOut() const {
  ProofGroup group{
      Counted(Translate("Lines that look like rows and are in no table:"), found_.leftOut.lLines), true, {}};
  for (const ShapeOfLines& shape : found_.leftOut.shapes) {
    group.entries.push_back({std::to_string(shape.lLines) + "  (" + Translate("Line") + " " +
                                 std::to_string(shape.lFirstLine) + ": " + ShownPart(shape.sFirst) + ")",
                             shape.lFirstLine, true});
  }
  return group;
}

void clsTableFinder::List(const FoundTable& table, size_t nTable) {
  ListedTable& listed = tables_.emplace_back();
  listed.sName = Translate("Table") + " " + std::to_string(nTable + 1);
  listed.bTicked = table.bChosen;
  listed.lRows = table.bChosen ? table.lRows : static_cast<int64_t>(table.rows.size());
  listed.lPages = std::max<int64_t>(table.lPages, 1);
  listed.lFirstLine = table.lFirstLine;
  listed.lLastLine = table.lLastLine;
  listed.bDoubtful = table.bDoubtful;
  listed.bIncomplete = table.lMissing > 0;
  listed.doubts = DoubtsOf(table);
  for (const TidyPart& heading : table.tidy.headings) listed.headings.push_back({NamesOf(heading)});
  const TidyPart& row = table.tidy.row;
  const std::vector<std::string> names = row.ColumnNames();
  for (size_t i = 0; i < row.ColumnCount(); ++i) {
    listed.columns.push_back({i < names.size() ? names[i] : "", PlacesOf(row.cut, i), row.TypeOf(i).type});
  }
}

bool clsTableFinder::Find(const PreviewRequest& report, std::string& sFault, const SuggestProgress& progress) {
  report_ = report;
  tables_.clear();
  Failure failure;
  if (!SuggestTables(report.sInput, report.text, report.lTabSize, {}, found_, failure, progress)) {
    sFault = failure.sText;
    return false;
  }
  for (size_t i = 0; i < found_.tables.size(); ++i) {
    List(found_.tables[i], i);
    found_.tables[i].tidy.sSheet.clear();
  }
  if (tables_.empty()) sFault = Translate("No table was found: no lines of the report stand in columns.");
  return !tables_.empty();
}

bool clsTableFinder::AnyTicked() const {
  return std::any_of(tables_.begin(), tables_.end(), [](const ListedTable& table) { return table.bTicked; });
}

void clsTableFinder::NameTable(size_t nTable, std::string_view sName) {
  tables_[nTable].sName = found_.tables[nTable].tidy.sSheet = sName;
}

void clsTableFinder::NameColumn(size_t nTable, size_t nColumn, std::string_view sName) {
  TidyPart& row = found_.tables[nTable].tidy.row;
  std::vector<std::string> names = row.ColumnNames();
  names.resize(row.ColumnCount());
  tables_[nTable].columns[nColumn].sName = names[nColumn] = sName;
  row.names = std::move(names);
}

/// As ticked, and one more.
TableSuggestion clsTableFinder::Chosen(size_t nTable) const {
  TableSuggestion chosen = found_;
  for (size_t i = 0; i < chosen.tables.size(); ++i) {
    FoundTable& table = chosen.tables[i];
    table.bChosen = tables_[i].bTicked || i == nTable;
    std::vector<TidyPart> headings = std::exchange(table.tidy.headings, {});
    for (size_t k = 0; k < headings.size(); ++k) {
      (tables_[i].headings[k].bTicked ? table.tidy.headings : table.otherHeadings).push_back(std::move(headings[k]));
    }
  }
  chosen.NameSheets();
  return chosen;
}

std::string clsTableFinder::Recipe(std::string& sFault, const SuggestProgress& progress) {
  TableSuggestion chosen = Chosen(kNone);
  const auto same = [&](const FoundTable& table) {
    return table.bChosen == found_.tables[static_cast<size_t>(&table - chosen.tables.data())].bChosen;
  };
  Failure failure;
  if (!std::all_of(chosen.tables.begin(), chosen.tables.end(), same) &&
      !CountTables(report_.sInput, report_.text, report_.lTabSize, chosen, failure, progress)) {
    sFault = failure.sText;
    return {};
  }
  return chosen.Text();
}

std::string clsTableFinder::RecipeWith(size_t nTable, int32_t& lNumber) const {
  const TableSuggestion chosen = Chosen(nTable);
  std::string sRecipe = "[Header]\nProduct=QLN-B\nFileType=RECIPE\nFileFormat=1.0\n";
  size_t nNumber = 0;
  for (size_t i = 0; i < chosen.tables.size(); ++i) {
    if (!chosen.tables[i].bChosen) continue;
    sRecipe += RecipeOfTable(chosen.tables[i].tidy, ++nNumber);
    if (i == nTable) lNumber = static_cast<int32_t>(nNumber);
  }
  return sRecipe;
}

}  // namespace quillon
