#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "clsTidyReport.h"

namespace quillon {

/// A cell on its way to the output.
struct TidyOutCell {
  TidyCellKind kind = TidyCellKind::Empty;
  const TidyTyping* pTyping = nullptr;  ///< Of its column; null where the table has none of that name
  std::string_view sPrinted, sPlain;
};

/// Where the rows of one sheet or file go.
class clsTidyOutput {
 public:
  virtual ~clsTidyOutput() = default;
  virtual bool Heading(const std::vector<std::string>& names) = 0;
  virtual bool Row(const std::vector<TidyOutCell>& cells) = 0;
  /// A row of one table that has all columns of the sheet in their order, for outputs that ask for no more of a cell
  /// than its plain form.
  virtual bool PlainRow(const std::vector<TidyCell>& /*cells*/) { return false; }
  virtual bool TakesPlainRows() const { return false; }
};

/// The tables of one sheet under one heading row: columns of one name stand together, rows in the order of the report.
///
/// Names must be known: where several tables share the sheet those printed above the first row are looked for before.
class clsTidySheet {
 public:
  explicit clsTidySheet(std::unique_ptr<clsTidyOutput> output) : output_(std::move(output)) {}

  void AddTable(size_t nTable) {
    placeOf_.emplace(nTable, tables_.size());
    tables_.push_back({nTable, {}, 0});
  }
  bool HasTable(size_t nTable) const { return Find(nTable) != nullptr; }
  size_t TableCount() const { return tables_.size(); }
  /// Columns of the table, before its rows. All tables' are told before the first row where there are several.
  void SetColumns(size_t nTable, const std::vector<TidyColumnInfo>& columns);

  /// A row of the table begins; its record comes at this line or later.
  void Begins(size_t nTable, int64_t lLine);
  /// All tables are done with lines up to this one, but for records that began.
  void Passes(int64_t lLine) { lPassed_ = lLine; }
  /// False if the output takes no more.
  bool Put(const TidyRecord& record);
  /// Rows wait for those of other tables.
  bool IsHolding() const { return !kept_.empty(); }
  /// Writes what waits for other tables, as far as it need wait no longer; all of it at the end.
  bool Release(bool bAll);
  /// Behind all rows: a sheet without any still gets its heading row where the names are known.
  bool End();
  int64_t Rows() const { return lRows_; }

 private:
  struct Table {
    size_t nTable;
    std::vector<size_t> columns;  ///< Of the sheet, by those of the table
    int64_t lOpen;                ///< Line of a row whose record has yet to come; 0 for none
    std::vector<TidyTyping> types = {};
    bool bInOrder = true;  ///< The n-th column of the table is that of the sheet
  };
  struct KeptCell {
    TidyCellKind kind;
    const TidyTyping* pTyping;
    std::string sPrinted, sPlain;
  };
  const Table* Find(size_t nTable) const;
  Table* Find(size_t nTable);
  void Closes(Table& table);
  bool WriteHeading();
  bool Write(const std::vector<TidyOutCell>& cells);
  bool WritePlain(const TidyRecord& record);
  void Place(const Table& table, const TidyRecord& record);

  std::unique_ptr<clsTidyOutput> output_;
  std::vector<Table> tables_;
  std::unordered_map<size_t, size_t> placeOf_;  ///< Of a table among those of the sheet
  std::multiset<int64_t> open_;                 ///< Lines of rows whose records have yet to come
  int64_t lPassed_ = 0;
  std::vector<std::string> names_;
  std::multimap<int64_t, std::vector<KeptCell>> kept_;  ///< By line
  std::vector<TidyOutCell> cells_;
  bool bHeadingDone_ = false;
  int64_t lRows_ = 0;
};

}  // namespace quillon
