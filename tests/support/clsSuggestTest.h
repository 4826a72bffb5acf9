#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "clsReportSample.h"
#include "clsTempFolder.h"
#include "clsTidyReport.h"
#include "modSuggestTables.h"
#include "modTidyKeys.h"

namespace quillon {

/// Rows of tables: names of the columns and cells, each with a bar behind it.
class clsSuggestedRows : public clsTidyListener {
 public:
  void TableStarts(size_t, const std::vector<TidyColumnInfo>& columns) override {
    for (const TidyColumnInfo& column : columns) sNames += column.sName + "|";
  }
  void Record(const TidyRecord& record) override {
    std::string sRow;
    for (const TidyCell& cell : record.cells) sRow.append(cell.sPlain).append("|");
    rows.push_back(sRow);
  }
  std::string sNames;
  std::vector<std::string> rows;
};

using Strings = std::vector<std::string>;

/// Suggests tables for reports, and reads reports to look at.
class clsSuggestTest : public testing::Test {
 protected:
  /// Suggests, and runs the recipe as its text is read back.
  void Suggest(const std::string& sReport, const SuggestChoices& choices = {}) {
    Failure failure;
    ASSERT_TRUE(SuggestTables(folder.Write("r.txt", sReport), {false, nullptr}, 8, choices, suggestion, failure))
        << failure.sText;
    got = Run(sReport);
  }
  /// What the suggested recipe takes of another report.
  clsSuggestedRows Run(const std::string& sReport) const {
    clsSuggestedRows rows;
    std::vector<TidyTable> tables;
    TidyFault fault;
    EXPECT_TRUE(ReadTidyRecipe(suggestion.Text(), tables, fault)) << fault.sText << "\n" << suggestion.Text();
    clsTidyReport run(tables, rows);
    for (size_t i = 0; i < sReport.size();) {
      const size_t nEnd = std::min(sReport.find('\n', i), sReport.size());
      run.Line(std::string_view(sReport).substr(i, nEnd - i));
      i = nEnd + 1;
    }
    run.End();
    return rows;
  }
  const clsReportSample& Sample(const std::string& sReport) {
    sample = std::make_unique<clsReportSample>();
    Failure failure;
    EXPECT_TRUE(sample->Read(folder.Write("s.txt", sReport), {false, nullptr}, 8, failure)) << failure.sText;
    all.resize(sample->Lines().size());
    std::iota(all.begin(), all.end(), size_t{0});
    return *sample;
  }

  clsTempFolder folder;
  TableSuggestion suggestion;
  clsSuggestedRows got;
  std::unique_ptr<clsReportSample> sample;
  std::vector<size_t> all;  ///< Indexes of the sample's lines
};

}  // namespace quillon
