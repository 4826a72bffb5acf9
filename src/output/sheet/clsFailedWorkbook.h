#pragma once

#include <utility>

#include "clsWorkbook.h"

namespace quillon {

/// Stands for a workbook that could not be opened: every operation fails with the one reason, and saving touches
/// nothing.
class clsFailedWorkbook : public clsWorkbook {
 public:
  explicit clsFailedWorkbook(Failure reason) : reason_(std::move(reason)) {}

  bool WriteCell(int, int64_t, int, std::string_view, Failure& failure) override { return Refuse(failure); }
  bool ReadCell(int, int64_t, int, std::string&, Failure& failure) override { return Refuse(failure); }
  int SheetCount() const override { return 0; }
  bool SetSheetName(int, std::string_view, Failure& failure) override { return Refuse(failure); }
  std::string SheetName(int) const override { return {}; }
  int SheetNamed(std::string_view, Failure& failure) override { return Refuse(failure) ? 1 : 0; }
  void SetStandardFont(std::string_view) override {}
  std::optional<CellRange> ActiveUsedRange() override { return std::nullopt; }
  bool ClearContents(int, const CellRange&, Failure& failure) override { return Refuse(failure); }
  bool ActivateSheet(std::string_view) override { return false; }
  bool ActivateSheet(int) override { return false; }
  Failure WhyRefused() const override { return reason_; }
  bool SaveAs(std::string_view, int32_t, Failure& failure) override { return Refuse(failure); }
  int64_t RefusedFormulas() const override { return 0; }

 private:
  bool Refuse(Failure& failure) const {
    failure = reason_;
    return false;
  }

  Failure reason_;
};

}  // namespace quillon
