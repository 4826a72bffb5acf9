#include <unordered_map>

#include "clsCon.h"
#include "clsRecipe.h"
#include "clsWorkbook.h"
#include "modColumnLetters.h"
#include "modNumbers.h"
#include "modRecipeFailures.h"
#include "modRecipeMessages.h"
#include "modRows.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr int kSourceSheet = 1;
constexpr int kTargetSheet = 2;

/// The form in which the names of accounts are compared.
std::string AccountKey(std::string_view sName) {
  return UpperText(TrimBlanks(sName));
}

}  // namespace

bool clsCon::Process(RecipeContext& context) {
  clsExportSpecs& specs = context.recipe.ExportSpecs;
  const auto fatal = [&specs] {
    specs.FatalProcessError = true;
    return true;
  };
  if (Table < 1) return fatal();
  if (Table > specs.ProcessedTables || static_cast<size_t>(Table) > specs.TablesCollection.size()) {
    ReportRecipe(context.host, kConTableGone, {std::to_string(Table)});
    return fatal();
  }
  const clsTable& table = specs.TablesCollection[static_cast<size_t>(Table) - 1];
  if (static_cast<size_t>(ReadAccountsColumn) > table.ColumnsCollection.size()) {
    ReportRecipe(context.host, kConTooFewColumns, {std::to_string(Table), std::to_string(ReadAccountsColumn)});
    return fatal();
  }
  if (!CollectDepartments(context, table)) return false;
  WriteConTopRow = specs.getWritePointer(context.host, kTargetSheet);
  WriteConBottomRow = WriteConTopRow + static_cast<int32_t>(AccNames.size()) - 1;
  BuildAccountList(context);
  if (!WriteAccountRows(context, table)) return false;
  specs.setWritePointer(context.host, kTargetSheet, WriteConTopRow + static_cast<int32_t>(AccNames.size()));
  return true;
}

bool clsCon::CollectDepartments(RecipeContext& context, const clsTable& table) {
  if (TotalDepartments > static_cast<int32_t>(DepartmentsCollection.size()) || ReadAccountsColumn < 1) {
    return EndWalk(context, "A consolidation has fewer departments than it says");
  }
  const std::string& sLetters = table.ColumnsCollection[static_cast<size_t>(ReadAccountsColumn) - 1].WriteColumn;
  for (int32_t d = 0; d < TotalDepartments; ++d) {
    clsDepartment& department = DepartmentsCollection[static_cast<size_t>(d)];
    if (!department.ReadAccountNames(context, table.WriteTableTopRow, table.WriteTableBottomRow, sLetters))
      return false;
  }
  return true;
}

void clsCon::BuildAccountList(RecipeContext& context) {
  if (DepartmentsCollection.empty()) return ReportRecipe(context.host, kConNoDepartments);
  AccNames = DepartmentsCollection[0].AccountsNames;
  AccReadRowNumbers = DepartmentsCollection[0].AccReadRowNumbers;
  DupAccReadRowNumbers.clear();
  DupAccWriteRowNumbers.clear();
  std::unordered_map<std::string, int32_t> firstEntries;  // key to its first place in AccNames, from 0
  for (const std::string& sName : AccNames) {
    firstEntries.emplace(AccountKey(sName), static_cast<int32_t>(&sName - AccNames.data()));
  }
  for (size_t d = 1; d < DepartmentsCollection.size(); ++d) {
    const clsDepartment& department = DepartmentsCollection[d];
    for (size_t i = 0; i < department.AccountsNames.size(); ++i) {
      const std::string& sName = department.AccountsNames[i];
      const auto [entry, bNew] = firstEntries.emplace(AccountKey(sName), static_cast<int32_t>(AccNames.size()));
      if (bNew) {
        AccNames.push_back(sName);
        AccReadRowNumbers.push_back(department.AccReadRowNumbers[i]);
      } else {
        DupAccReadRowNumbers.push_back(department.AccReadRowNumbers[i]);
        DupAccWriteRowNumbers.push_back(WriteConTopRow + entry->second);
      }
    }
  }
}

bool clsCon::WriteAccountRows(RecipeContext& context, const clsTable& table) {
  for (size_t i = 0; i < AccNames.size(); ++i) {
    const int32_t lTarget = WriteConTopRow + static_cast<int32_t>(i);
    if (!CopyAccountRow(context, table, AccReadRowNumbers[i], lTarget, false)) return false;
  }
  for (size_t i = 0; i < DupAccReadRowNumbers.size(); ++i) {
    if (!CopyAccountRow(context, table, DupAccReadRowNumbers[i], DupAccWriteRowNumbers[i], true)) return false;
  }
  return true;
}

bool clsCon::CopyAccountRow(RecipeContext& context, const clsTable& table, int32_t source, int32_t target,
                            bool accumulate) {
  context.host.LetEventsRun();
  for (const clsColumn& column : table.ColumnsCollection) {
    const int32_t lColumn = AlphaToNum2(context.host, column.WriteColumn);
    if (!MergeAccountCell(context, source, target, lColumn, accumulate)) return false;
  }
  return true;
}

bool clsCon::MergeAccountCell(RecipeContext& context, int32_t source, int32_t target, int column, bool accumulate) {
  if (context.pWorkbook == nullptr) return EndWalk(context, "A consolidation needs a workbook");
  clsWorkbook& workbook = *context.pWorkbook;
  Failure failure;
  const auto write = [&](std::string_view sText) {
    return workbook.WriteCell(kTargetSheet, target, column, sText, failure) || EndWalkAtCell(context, failure);
  };
  if (!workbook.ReadCell(kTargetSheet, target, column, sCurrent_, failure) ||
      !workbook.ReadCell(kSourceSheet, source, column, sSource_, failure)) {
    return EndWalkAtCell(context, failure);
  }
  if (!IsNumericText(sSource_)) return write(sSource_);
  if (TrimBlanks(sCurrent_).empty()) sCurrent_ = "0";
  if (!IsNumericText(sCurrent_)) {
    ReportRecipe(context.host, kConNoNumber, {std::to_string(target)});
    sCurrent_ = "0";
  }
  if (!accumulate) return write(sSource_);
  ScaledNumber current = 0;
  ScaledNumber source_value = 0;
  const bool bInRange =
      ParseScaled(sCurrent_, current) == ScaleStatus::Ok && ParseScaled(sSource_, source_value) == ScaleStatus::Ok;
  const auto sum = bInRange ? AddScaled(current, source_value) : std::nullopt;
  if (!sum) return EndWalk(context, "A sum of the consolidation is beyond the range of numbers", sSource_);
  return write(RoundByDataFormat(ScaledText(*sum), context.recipe.WriteDataFormat));
}

}  // namespace quillon
