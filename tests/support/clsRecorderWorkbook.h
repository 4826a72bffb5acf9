#pragma once

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "clsWorkbook.h"

namespace quillon {

/// A workbook in memory: keeps what was written where.
class clsRecorderWorkbook : public clsWorkbook {
 public:
  int64_t nLastRow = kMaxSheetRows;  ///< Cells below fail
  std::vector<std::string> names{"Sheet1", "Sheet2"};
  std::string sFont;

  /// The sheet's rows up to the last written one, cells joined by "|", rows by "/".
  std::string Sheet(int nSheet) const {
    std::string sOut;
    int64_t nRow = 1;
    int nColumn = 1;
    for (const auto& [place, sText] : cells_) {
      if (std::get<0>(place) != nSheet) continue;
      for (; nRow < std::get<1>(place); ++nRow, nColumn = 1) sOut += "/";
      for (; nColumn < std::get<2>(place); ++nColumn) sOut += "|";
      sOut += sText;
    }
    return sOut;
  }

  void Clear() { cells_.clear(); }

  bool WriteCell(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure) override {
    if (!Inside(nSheet, nRow, nColumn, failure)) return false;
    cells_[{nSheet, nRow, nColumn}] = sText;
    return true;
  }
  bool ReadCell(int nSheet, int64_t nRow, int nColumn, std::string& sText, Failure& failure) override {
    if (!Inside(nSheet, nRow, nColumn, failure)) return false;
    const auto found = cells_.find({nSheet, nRow, nColumn});
    sText = found == cells_.end() ? std::string() : found->second;
    return true;
  }
  int SheetCount() const override { return static_cast<int>(names.size()); }
  bool SetSheetName(int nSheet, std::string_view sName, Failure& failure) override {
    if (sName.size() > 31) {
      failure = OwnFailure("Sheet", "too long");
      return false;
    }
    names.at(static_cast<size_t>(nSheet) - 1) = sName;
    return true;
  }
  std::string SheetName(int nSheet) const override { return names.at(static_cast<size_t>(nSheet) - 1); }
  int SheetNamed(std::string_view sName, Failure&) override {
    for (size_t i = 0; i < names.size(); ++i)
      if (names[i] == sName) return static_cast<int>(i) + 1;
    names.emplace_back(sName);
    return SheetCount();
  }
  void SetStandardFont(std::string_view sName) override { sFont = sName; }
  std::optional<CellRange> ActiveUsedRange() override { return std::nullopt; }
  bool ClearContents(int, const CellRange&, Failure&) override { return true; }
  bool ActivateSheet(std::string_view) override { return false; }
  bool ActivateSheet(int) override { return false; }
  bool SaveAs(std::string_view, int32_t, Failure&) override { return true; }
  int64_t RefusedFormulas() const override { return 0; }

 private:
  bool Inside(int nSheet, int64_t nRow, int nColumn, Failure& failure) const {
    const bool bInside = nSheet >= 1 && nSheet <= SheetCount() && nRow >= 1 && nRow <= nLastRow && nColumn >= 1;
    if (!bInside) failure = OwnFailure("Cell", "outside");
    return bInside;
  }

  std::map<std::tuple<int, int64_t, int>, std::string> cells_;
};

}  // namespace quillon
