#pragma once

#include <memory>
#include <string>

#include "clsCsvWriter.h"
#include "clsRowSink.h"
#include "clsTable.h"

namespace quillon {

/// Where the rows of tables go. Each table has a sink of its own, made when its report is open.
class clsTableTarget {
 public:
  virtual ~clsTableTarget() = default;
  /// False if there is nothing to write to (EndWalk has noted it). A null sink if the table's separator is none.
  virtual bool MakeSink(const clsTable& table, const clsCodePage& pageOfReport, std::unique_ptr<clsRowSink>& sink) = 0;
  /// Why nothing more can be written, if so.
  virtual Failure LastFailure() const { return {}; }
};

/// csv_file_handle null: the workbook of the context. Both outlive the target.
std::unique_ptr<clsTableTarget> TargetOf(RecipeContext& context, clsOutputFile* csv_file_handle);

/// Sheet 1 of the context's workbook; a cell that can't be written reports -5006, and the rows go on. False if there is
/// no workbook.
bool SheetSink(RecipeContext& context, std::unique_ptr<clsRowSink>& sink);

/// How recipes quote: what holds a comma or double quotes, whatever the separator; in a safe file also what would be
/// read as two.
CsvRules RecipeCsvRules(const RecipeOptions& options, std::string sSeparator);

}  // namespace quillon
