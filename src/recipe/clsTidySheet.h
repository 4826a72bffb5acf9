#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
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
};

/// The tables of one sheet under one heading row: columns of one name stand together, rows in the order of the report.
///
/// Names must be known: where several tables share the sheet those printed above the first row are looked for before.
class clsTidySheet {
 public:
  explicit clsTidySheet(std::unique_ptr<clsTidyOutput> output) : output_(std::move(output)) {}

  void AddTable(size_t nTable) { tables_.push_back({nTable, {}, 0, 0}); }
  bool HasTable(size_t nTable) const { return Find(nTable) != nullptr; }
  size_t TableCount() const { return tables_.size(); }
  /// Columns of the table, before its rows. All tables' are told before the first row where there are several.
  void SetColumns(size_t nTable, const std::vector<TidyColumnInfo>& columns);

  /// A row of the table begins; its record comes at this line or later.
  void Begins(size_t nTable, int64_t lLine);
  /// The table is done with lines up to this one, but for a record that began.
  void Passes(size_t nTable, int64_t lLine);
  /// False if the output takes no more.
  bool Put(const TidyRecord& record);
  /// Writes what waits for other tables, as far as it need wait no longer; all of it at the end.
  bool Release(bool bAll);
  /// Behind all rows: a sheet without any still gets its heading row where the names are known.
  bool End();
  int64_t Rows() const { return lRows_; }

 private:
  struct Table {
    size_t nTable;
    std::vector<size_t> columns;  ///< Of the sheet, by those of the table
    int64_t lPassed;
    int64_t lOpen;  ///< Line of a row whose record has yet to come; 0 for none
    std::vector<TidyTyping> types = {};
  };
  struct KeptCell {
    TidyCellKind kind;
    const TidyTyping* pTyping;
    std::string sPrinted, sPlain;
  };
  const Table* Find(size_t nTable) const;
  Table* Find(size_t nTable);
  bool WriteHeading();
  bool Write(const std::vector<TidyOutCell>& cells);
  void Place(const Table& table, const TidyRecord& record);

  std::unique_ptr<clsTidyOutput> output_;
  std::vector<Table> tables_;
  std::vector<std::string> names_;
  std::multimap<int64_t, std::vector<KeptCell>> kept_;  ///< By line
  std::vector<TidyOutCell> cells_;
  bool bHeadingDone_ = false;
  int64_t lRows_ = 0;
};

}  // namespace quillon
