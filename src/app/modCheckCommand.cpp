// CheckCommand of modLookCommands.

#include <fmt/format.h>

#include "clsCheckPage.h"
#include "clsLook.h"
#include "clsOutputFile.h"
#include "modFiles.h"
#include "modFrontDoor.h"
#include "modLookCommands.h"
#include "modNumbers.h"
#include "modPaths.h"
#include "modProofText.h"
#include "modText.h"

namespace quillon {

namespace {

std::string CensusText(const CellCensus& census) {
  std::string sText;
  const auto add = [&](int64_t lCount, std::string_view sOne, std::string_view sMany) {
    if (lCount > 0) sText += (sText.empty() ? "" : ", ") + CountedText(lCount, sOne, sMany);
  };
  add(census.lNumbers, "number", "numbers");
  add(census.lDates, "date", "dates");
  add(census.lOthers, "truth value or formula", "truth values or formulas");
  add(census.lTexts, "text", "texts");
  add(census.lEmpty, "empty", "empty");
  if (census.lLikeNumbers == 0) return sText;
  return sText + fmt::format("; {} like a number: {} on line {}",
                             CountedText(census.lLikeNumbers, "text looks", "texts look"),
                             ShownText(census.sLikeNumber), census.lLikeNumberLine);
}

/// False if the table isn't there or loses something.
bool CheckTable(clsLook& look, const ReportPreview& preview) {
  const std::string sBounds = BoundsText(preview);
  look.PrintText(sBounds.empty() ? fmt::format("Table {} of {}\n", preview.lTable, preview.lTables) : sBounds);
  if (!preview.sFault.empty()) {
    look.Print("  " + preview.sFault);
    return false;
  }
  look.Print(fmt::format("  lines {} to {}: {}, {}", preview.lFirstLine, preview.lFirstLine + preview.lRows - 1,
                         CountedText(preview.lRows, "row", "rows"),
                         CountedText(static_cast<int64_t>(preview.columns.size()), "column", "columns")));
  look.Print(fmt::format("  {} left out, {} of them behind the last column; {} cut{}",
                         CountedText(preview.lLeftOut, "character", "characters"), preview.lBehind,
                         CountedText(preview.lCuts, "value", "values"),
                         preview.Loses() ? fmt::format("; the first on line {}", preview.lFirstLossLine) : ""));
  for (const PreviewColumn& column : preview.columns) {
    look.Print(fmt::format("    {:<3} {:>4} to {:<4} {}", column.sLetters, column.lStart, column.lEnd,
                           CensusText(column.census)));
  }
  return !preview.Loses();
}

/// A table by characters. False if it isn't there or loses something.
bool CheckCutTable(clsLook& look, clsRecipeCheck& tables, int32_t lTable, std::vector<ReportPreview>& cutTables) {
  const ReportPreview& preview = cutTables.emplace_back(tables.Look(lTable));
  const bool bGood = CheckTable(look, preview);
  // A run ends at a key text that isn't there.
  const bool bMissing = preview.start.place == KeyPlace::Missing || preview.end.place == KeyPlace::Missing;
  if (bMissing && lTable < tables.Tables()) look.Print("  The tables behind this one would not be converted.");
  return bGood;
}

bool CheckTidyTable(clsLook& look, const ReportCheck& check, size_t nTidy, int32_t lTables) {
  const TidyTable& table = check.tables[nTidy];
  look.Print(fmt::format("Table {} of {}", table.lNumber, lTables));
  if (nTidy >= check.states.size()) return false;
  const TidyTableState& state = check.states[nTidy];
  look.PrintText(TidyTableText(table, state));
  return (state.bStarted && state.lRecords > 0) || table.bOptional;
}

/// False, said, if the page can't be written.
bool WritePage(const clsLook& look, const LookRequest& request, clsSectionFile& recipe, const ReportCheck& check,
               const std::vector<ReportPreview>& cutTables, const CheckPageHead& head) {
  clsCheckPage page(check, CutsOf(cutTables), head);
  CheckReport(look.preview, recipe, cutTables, &page);
  Failure failure;
  if (!WriteWholeFile(AbsolutePath(ExpandedPath(request.sHtml)), page.Finish(), failure)) {
    clsLook::Say(failure.sText);
    return false;
  }
  return true;
}

/// A page replaces a page alone. False: said.
bool MayBecomePage(const LookRequest& request) {
  std::string sBytes;
  Failure unread;
  if (request.sHtml.empty() || !IsFile(request.sHtml)) return true;
  const bool bPage = ReadWholeFile(request.sHtml, sBytes, clsSectionFile::kMaxBytes, unread) &&
                     (sBytes.empty() || sBytes.starts_with(clsCheckPage::kBegins));
  if (!bPage) clsLook::Say(request.sHtml + ": this file is no page of a check and stays as it is; name another one");
  return bPage;
}

}  // namespace

int CheckCommand(const LookRequest& request) {
  clsLook look(request);
  if (!look.TakeInput() || !look.OpenRecipe()) return look.Refused();
  if (!MayBecomePage(request)) return kExitWrongUse;
  look.preview.lRows = 0;
  clsRecipeCheck tables(look.preview, look.recipe, look.Specs());
  const int32_t lTables = tables.Tables();
  const bool bHints = look.SayHints();
  if (lTables == 0) {
    clsLook::Say(look.RecipeName() + ": no table in this recipe");
    return kExitSomeFailed;
  }
  bool bGood = !bHints;
  std::vector<ReportPreview> cutTables;
  const std::set<int32_t> tidy = TidyTablesIn(look.recipe);
  for (int32_t lTable = 1; lTable <= lTables; ++lTable) {
    if (!tidy.contains(lTable)) bGood = CheckCutTable(look, tables, lTable, cutTables) && bGood;
  }
  const ReportCheck check = CheckReport(look.preview, look.recipe, cutTables, nullptr);
  for (size_t i = 0; i < check.tables.size(); ++i) bGood = CheckTidyTable(look, check, i, lTables) && bGood;
  if (!check.sFault.empty()) {
    look.Print("  " + check.sFault);
    bGood = false;
  } else {
    look.PrintText(ProofText(check.proof, request.bLines));
  }
  const std::string sVerdict = VerdictText(check.proof, bGood, check.AllValuesFit());
  look.Print(sVerdict);
  bGood = bGood && check.IsWhole();
  const CheckPageHead head{request.sInput, look.RecipeName(), sVerdict, bGood};
  const bool bPage =
      request.sHtml.empty() || !check.sFault.empty() || WritePage(look, request, look.recipe, check, cutTables, head);
  return look.Flush() && bPage && bGood ? kExitDone : kExitSomeFailed;
}

}  // namespace quillon
