// PreviewCommand and CheckCommand of modLookCommands.

#include <fmt/format.h>

#include <algorithm>

#include "clsLook.h"
#include "modConvertCommand.h"
#include "modFrontDoor.h"
#include "modLookCommands.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kMargin = 8;  ///< Characters of the line number and the blanks behind it

std::string Numbered(int64_t lLine, std::string_view sText) {
  return fmt::format("{:>6}  {}", lLine, sText);
}

std::string KeyText(std::string_view sName, const PreviewKey& key) {
  std::string sText = fmt::format("{} \"{}\" ", sName, ShownText(key.sText));
  if (key.place == KeyPlace::Found) sText += fmt::format("on line {}", key.lLine);
  if (key.place == KeyPlace::Missing) sText += "not found";
  if (key.place == KeyPlace::FurtherDown) sText += "not on a line that is shown";
  if (key.lOffset != 0) sText += fmt::format(", offset {}", key.lOffset);
  return sText;
}

void PrintBounds(clsLook& look, const ReportPreview& preview) {
  if (preview.start.sText.empty() && preview.end.sText.empty()) return;
  look.Print(fmt::format("Table {} of {}", preview.lTable, preview.lTables));
  look.Print("  " + KeyText("ReadStartLine", preview.start));
  look.Print("  " + KeyText("ReadEndLine", preview.end));
  if (!preview.rows.empty()) look.Print("");
}

void PrintLines(clsLook& look, const ReportPreview& preview) {
  look.Print(std::string(kMargin, ' ') + preview.sRuler);
  for (const PreviewRow& row : preview.rows) {
    look.Print(Numbered(row.lLine, ShownText(row.sText)));
    const std::string sMarks = LossMarks(row, preview.columns);
    if (!sMarks.empty()) look.Print(std::string(kMargin, ' ') + sMarks);
  }
  if (preview.bMore) look.Print(std::string(kMargin, ' ') + "...");
}

std::string CellText(const std::string& sCell) {
  return ShownText(TrimBlanks(sCell));
}

/// Letters of the output's columns, in the order of the cells.
std::vector<std::string> Letters(const ReportPreview& preview) {
  std::vector<std::string> letters;
  for (const PreviewColumn& column : preview.columns) {
    if (!column.sLetters.empty()) letters.push_back(column.sLetters);
  }
  std::sort(letters.begin(), letters.end(), [](const std::string& a, const std::string& b) {
    return a.size() != b.size() ? a.size() < b.size() : a < b;
  });
  return letters;
}

void PrintCells(clsLook& look, const ReportPreview& preview) {
  const std::vector<std::string> letters = Letters(preview);
  std::vector<size_t> widths;
  for (const std::string& sLetters : letters) widths.push_back(sLetters.size());
  for (const PreviewRow& row : preview.rows) {
    widths.resize(std::max(widths.size(), row.cells.size()));
    for (size_t i = 0; i < row.cells.size(); ++i) widths[i] = std::max(widths[i], CharCount(CellText(row.cells[i])));
  }
  const auto line = [&](const std::vector<std::string>& cells) {
    std::string sLine;
    for (size_t i = 0; i < cells.size(); ++i) {
      const std::string sCell = CellText(cells[i]);
      sLine += (i > 0 ? " | " : "") + sCell + std::string(widths[i] - CharCount(sCell), ' ');
    }
    return sLine;
  };
  look.Print("");
  look.Print(std::string(kMargin, ' ') + line(letters));
  for (const PreviewRow& row : preview.rows) look.Print(Numbered(row.lLine, line(row.cells)));
}

void PrintSum(clsLook& look, const ReportPreview& preview) {
  look.Print("");
  look.Print(fmt::format("{} shown: {} left out, {} of them behind the last column; {} cut",
                         CountedText(preview.lRows, "row", "rows"),
                         CountedText(preview.lLeftOut, "character", "characters"), preview.lBehind,
                         CountedText(preview.lCuts, "value", "values")));
}

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
  PrintBounds(look, preview);
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

}  // namespace

int PreviewCommand(const LookRequest& request) {
  clsLook look(request);
  const bool bRecipe = !request.sRecipe.empty();
  if (!look.TakeInput() || (bRecipe && !look.OpenRecipe())) return kExitWrongUse;
  const ReportPreview preview = bRecipe ? PreviewByRecipe(look.preview, look.recipe)
                                        : PreviewByProfile(look.preview, ProfileFor(request.sProfile));
  PrintBounds(look, preview);
  if (!preview.rows.empty()) {
    PrintLines(look, preview);
    PrintCells(look, preview);
    PrintSum(look, preview);
  }
  const bool bShown = look.Flush();
  if (!preview.sFault.empty()) clsLook::Say(preview.sFault);
  return bShown && preview.sFault.empty() ? kExitDone : kExitSomeFailed;
}

int CheckCommand(const LookRequest& request) {
  clsLook look(request);
  if (!look.TakeInput() || !look.OpenRecipe()) return kExitWrongUse;
  look.preview.bWholeTable = true;
  look.preview.lRows = 0;
  bool bGood = true;
  int32_t lTables = 1;
  for (look.preview.lTable = 1; look.preview.lTable <= lTables; ++look.preview.lTable) {
    const ReportPreview preview = PreviewByRecipe(look.preview, look.recipe);
    if (preview.lTables == 0) {
      clsLook::Say(request.sRecipe + ": no table in this recipe");
      return kExitSomeFailed;
    }
    lTables = preview.lTables;
    bGood = CheckTable(look, preview) && bGood;
  }
  look.Print(bGood ? "Nothing is lost." : "Something is missing or lost.");
  return look.Flush() && bGood ? kExitDone : kExitSomeFailed;
}

}  // namespace quillon
