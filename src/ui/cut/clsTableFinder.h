#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "modProofList.h"
#include "modReportPreview.h"
#include "modSuggestTables.h"

namespace quillon {

/// A column of a found table, as a list shows it.
struct ListedColumn {
  std::string sName;  ///< "" if the report prints none
  std::string sPlaces;
  TidyType type = TidyType::Auto;
};

/// A value above the rows that would be a column, or several, in front of them.
struct ListedHeading {
  std::string sName;  ///< Of its columns, parted by ", "
  bool bTicked = true;
};

/// A table that was found in a report, as a list shows it.
struct ListedTable {
  std::string sName;  ///< Of its sheet
  bool bTicked = true;
  int64_t lRows = 0, lPages = 0, lFirstLine = 0, lLastLine = 0;
  bool bDoubtful = false;          ///< May be a list of labels or a side note
  bool bIncomplete = false;        ///< Lines that look like its rows aren't taken
  std::vector<ProofEntry> doubts;  ///< What speaks against it
  std::vector<ListedHeading> headings;
  std::vector<ListedColumn> columns;
};

/// The tables of a report that no recipe describes yet, what a person chooses of them and how they are named, and the
/// recipe of that choice.
class clsTableFinder {
 public:
  /// False with the reason if the report can't be read or holds none.
  bool Find(const PreviewRequest& report, std::string& sFault, const SuggestProgress& progress = {});
  const std::vector<ListedTable>& Tables() const { return tables_; }
  /// False if the report goes on behind the lines in which tables were looked for.
  bool IsWhole() const { return found_.bWholeSample; }
  /// Something speaks against it, or rows are in no table.
  bool LooksIncomplete() const { return found_.LooksIncomplete(); }
  /// Lines that look like rows and that no table takes, by shape.
  ProofGroup LeftOut() const;

  void Tick(size_t nTable, bool bOn) { tables_[nTable].bTicked = bOn; }
  void TickHeading(size_t nTable, size_t nHeading, bool bOn) { tables_[nTable].headings[nHeading].bTicked = bOn; }
  bool AnyTicked() const;
  void NameTable(size_t nTable, std::string_view sName);
  void NameColumn(size_t nTable, size_t nColumn, std::string_view sName);

  /// The recipe of the ticked tables and headings, UTF-8 with LF. Reads the report again if others are ticked than at
  /// first. "" with the reason if that fails.
  std::string Recipe(std::string& sFault, const SuggestProgress& progress = {});
  /// The recipe of the ticked tables and of one more, to look at, and that one's number in it.
  std::string RecipeWith(size_t nTable, int32_t& lNumber) const;

 private:
  void List(const FoundTable& table, size_t nTable);
  TableSuggestion Chosen(size_t nTable) const;

  PreviewRequest report_;
  TableSuggestion found_;  ///< With all headings; sheets are named where a person did
  std::vector<ListedTable> tables_;
};

}  // namespace quillon
