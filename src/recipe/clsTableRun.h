#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "clsCutMeasure.h"
#include "clsLineReader.h"
#include "clsPeriodFiles.h"
#include "clsRowFields.h"
#include "clsTable.h"
#include "clsTableTarget.h"
#include "modRecipeMessages.h"

namespace quillon {

/// One run of a table: finds its block in the report and exports it row by row, with its account kept. What is reported
/// and when the walk of sections ends: see clsTable::Process.
class clsTableRun {
 public:
  clsTableRun(RecipeContext& context, clsTable& table, clsTableTarget& target);
  clsTableRun(const clsTableRun&) = delete;
  clsTableRun& operator=(const clsTableRun&) = delete;
  /// The rows in the line processor are views into the run's readers and go with it.
  ~clsTableRun();

  bool Run();

 private:
  enum class Step { Next, Done, Died };

  Step FindBlock();
  const std::string& SearchedReport() const;
  Step FindLine(std::string_view sKeyText, RecipeCode code, int64_t& lLine);
  Step Fatal(RecipeCode code, std::initializer_list<std::string_view> values);
  Step OpenRows();
  Step OpenReport(const std::string& sPath);
  Step ExportRows();
  Step CheckColumns();
  Step EndAtColumn(size_t nBad);
  void PutBroken();
  bool ReadRow();
  bool WriteRow();
  void MeasureRow(const clsRow& row);
  bool AtEnd() { return bAllPeriods_ ? periods_.AtEnd() : Reader().AtEnd(); }
  void TellProgress(int64_t lLine);
  Step ReadFailure(const clsLineReader& reader);
  void CountLines();
  void KeepAccount();
  clsRow& Row();
  clsLineReader& Reader() { return bAllPeriods_ ? periods_.First() : pReport_->Reader(); }
  TableAccount& Account() { return context_.account.tables.back(); }

  RecipeContext& context_;
  clsTable& table_;
  clsTableTarget& target_;
  clsReport* pReport_ = nullptr;  ///< The one opened last
  clsPeriodFiles periods_;
  bool bAllPeriods_;
  std::optional<clsRowFields> fields_;
  std::unique_ptr<clsRowSink> sink_;
  bool bBegun_ = false;
  std::string sRowLabel_;
  int64_t lStart_ = 0, lEnd_ = 0;  ///< Lines of the block
  int64_t lFirstSheetRow_ = 0;
  int64_t lRowIndex_ = 0;
  int64_t lCellsFailedBefore_;
  clsCutMeasure measure_;
};

}  // namespace quillon
