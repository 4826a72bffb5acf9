#pragma once
// A report read by a recipe's text, with what came out of it as plain texts.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clsTidyReport.h"
#include "modTidyKeys.h"

namespace quillon {

class clsTidyTrial : public clsTidyListener {
 public:
  clsTidyTrial(std::string_view sRecipe, std::string_view sReport) {
    if (!ReadTidyRecipe(sRecipe, tables, fault)) return;
    report.emplace(tables, *this);
    while (!sReport.empty()) {
      const size_t nEnd = sReport.find('\n');
      report->Line(sReport.substr(0, nEnd));
      sReport.remove_prefix(nEnd == std::string_view::npos ? sReport.size() : nEnd + 1);
    }
    report->End();
  }

  void TableStarts(size_t, const std::vector<TidyColumnInfo>& columns) override {
    std::string sNames;
    for (const TidyColumnInfo& column : columns) sNames += (sNames.empty() ? "" : "|") + column.sName;
    names.push_back(sNames);
  }
  void Record(const TidyRecord& record) override {
    std::string sRow;
    for (const TidyCell& cell : record.cells) sRow.append("|").append(cell.sPlain);
    rows.push_back(sRow.substr(1));
    lines.push_back(record.lLine);
  }
  void Line(int64_t lLine, std::string_view, TidyLineKind kind, size_t) override {
    constexpr std::string_view kLetters = "RFJHTDLO.";
    if (static_cast<size_t>(lLine) == kinds.size() + 1) kinds += kLetters[static_cast<size_t>(kind)];
  }

  std::vector<TidyTable> tables;
  TidyFault fault;
  std::optional<clsTidyReport> report;
  std::vector<std::string> names, rows;
  std::vector<int64_t> lines;
  std::string kinds;  ///< A letter a line: row, further, joined, heading, total, dropped, left out, outside, blank
};

using Rows = std::vector<std::string>;

}  // namespace quillon
