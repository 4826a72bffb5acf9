#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "clsCsvRowSink.h"
#include "clsTidySheet.h"
#include "clsWorkbook.h"
#include "modRecipeGlobals.h"

namespace quillon {

/// Rows of tidy tables in a CSV file: numbers and dates in their plain form.
class clsTidyCsvOutput : public clsTidyOutput {
 public:
  /// The file outlives the object. pageOfOutput: of the file's bytes.
  clsTidyCsvOutput(RecipeContext& context, clsOutputFile& file, const CsvRules& rules, const clsCodePage& pageOfOutput);
  ~clsTidyCsvOutput() override { context_.account.lCharactersLost += sink_.CharsLost(); }

  bool Heading(const std::vector<std::string>& names) override;
  bool Row(const std::vector<TidyOutCell>& cells) override;
  bool PlainRow(const std::vector<TidyCell>& cells) override;
  bool TakesPlainRows() const override { return true; }

 private:
  bool PutFields();

  RecipeContext& context_;
  clsOutputFile& file_;
  clsCsvRowSink sink_;
  std::vector<std::string_view> fields_;
  int64_t lRows_ = 0;
};

/// Rows of tidy tables in a sheet.
class clsTidySheetOutput : public clsTidyOutput {
 public:
  /// From nRow and nColumn on.
  clsTidySheetOutput(RecipeContext& context, int nSheet, int64_t nRow, int nColumn)
      : context_(context), nSheet_(nSheet), nRow_(nRow), nColumn_(nColumn) {}

  bool Heading(const std::vector<std::string>& names) override;
  bool Row(const std::vector<TidyOutCell>& cells) override;
  int64_t NextRow() const { return nRow_; }

 private:
  bool Put(int nColumn, const TidyOutCell& cell, Failure& failure);
  SettledCell Number(const TidyOutCell& cell);

  RecipeContext& context_;
  int nSheet_;
  int64_t nRow_;
  int nColumn_;
  std::string sScratch_, sHundredth_;  ///< Kept for their memory
};

}  // namespace quillon
