#include "modSuggestRecipe.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>

#include "modTableBlocks.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kLinesAbove = 10;  ///< How far from the table a key text may stand
constexpr size_t kLinesBelow = 6;
constexpr size_t kMostTables = 200;
constexpr size_t kLongestText = 60;

struct Key {
  std::string sText;
  size_t nLine;
};

bool HasDigit(std::string_view sText) {
  return sText.find_first_of("0123456789") != std::string_view::npos;
}

bool HasWord(std::string_view sText) {
  constexpr size_t kFewest = 3;
  return static_cast<size_t>(std::count_if(sText.begin(), sText.end(), [](char c) {
           return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
         })) >= kFewest;
}

/// What a recipe can hold as the value of a key, and find again by it.
bool CanBeValue(std::string_view sText) {
  constexpr std::array<std::string_view, 4> kKeys{"ReadStartLine", "ReadEndLine", "Parsing", "WriteColumn"};
  const bool bKey = std::any_of(kKeys.begin(), kKeys.end(),
                                [&](std::string_view sKey) { return sText.find(sKey) != std::string_view::npos; });
  return sText.size() >= 3 && !bKey && sText.find_first_of("[];") == std::string_view::npos && IsValidUtf8(sText);
}

/// What stands in front of the first figure: "Totals =" of "Totals = $47,500.00".
std::string_view BeforeFigures(std::string_view sText) {
  const size_t nDigit = sText.find_first_of("0123456789");
  if (nDigit == std::string_view::npos) return {};
  const size_t nBlank = sText.substr(0, nDigit).rfind(' ');
  return nBlank == std::string_view::npos ? std::string_view{} : sText.substr(0, nBlank);
}

/// Stretches of a line that may serve as key texts: between wide gaps, tabs and control characters; then all of it.
std::vector<std::string_view> TextsOf(std::string_view sLine) {
  std::vector<std::string_view> texts;
  const auto add = [&](std::string_view sText) {
    sText = TrimBlanks(sText);
    if (CharCount(sText) > kLongestText) sText = TrimBlanks(sText.substr(0, ByteOffset(sText, kLongestText + 1)));
    if (CanBeValue(sText)) texts.push_back(sText);
  };
  size_t nControlFree = 0;
  for (size_t i = 0; i <= sLine.size(); ++i) {
    if (i < sLine.size() && (static_cast<unsigned char>(sLine[i]) >= ' ' && sLine[i] != 0x7F)) continue;
    const std::string_view sPart = sLine.substr(nControlFree, i - nControlFree);
    nControlFree = i + 1;
    for (size_t nFrom = 0; nFrom < sPart.size();) {
      const size_t nEnd = std::min(sPart.find("  ", nFrom), sPart.size());
      if (nEnd > nFrom) {
        add(sPart.substr(nFrom, nEnd - nFrom));
        add(BeforeFigures(sPart.substr(nFrom, nEnd - nFrom)));
      }
      nFrom = nEnd == nFrom ? nFrom + 1 : nEnd;
    }
    add(sPart);
  }
  return texts;
}

/// What is wanted of a key text, the best first: words without figures are the same in the next report, and longer ones
/// stand less often elsewhere.
enum class Wanted { LongWords, Words, Anything };

bool Serves(std::string_view sText, Wanted wanted) {
  constexpr size_t kLong = 5;
  if (wanted == Wanted::Anything) return true;
  return !HasDigit(sText) && HasWord(sText) && (wanted == Wanted::Words || CharCount(sText) >= kLong);
}

/// The first text of a line that serves and stands there for the first time.
std::optional<std::string> KeyOnLine(const clsReportLines& report, size_t nLine, Wanted wanted) {
  for (const std::string_view sText : TextsOf(report.Lines()[nLine].sText)) {
    if (!Serves(sText, wanted)) continue;
    if (report.IsFirstWith(sText, nLine)) return std::string(sText);
  }
  return std::nullopt;
}

/// The lines that a key text may stand on, the best first.
std::optional<Key> FindKey(const clsReportLines& report, const std::vector<size_t>& nLines) {
  for (const Wanted wanted : {Wanted::LongWords, Wanted::Words, Wanted::Anything}) {
    for (const size_t nLine : nLines) {
      if (auto sText = KeyOnLine(report, nLine, wanted)) return Key{std::move(*sText), nLine};
    }
  }
  return std::nullopt;
}

/// From just above the table up to the one before it, then the first lines of the table.
std::vector<size_t> LinesForStart(const TableBlock& block, size_t nAfter) {
  std::vector<size_t> nLines;
  for (size_t n = block.nFirst; n > nAfter && block.nFirst - n < kLinesAbove; --n) nLines.push_back(n - 1);
  for (size_t n = block.nFirst; n <= block.nLast && n < block.nFirst + kLinesBelow; ++n) nLines.push_back(n);
  return nLines;
}

/// Below the table up to the next, then the last lines of the table.
std::vector<size_t> LinesForEnd(const TableBlock& block, size_t nBefore) {
  std::vector<size_t> nLines;
  for (size_t n = block.nLast + 1; n < nBefore && n <= block.nLast + kLinesBelow; ++n) nLines.push_back(n);
  for (size_t n = block.nLast + 1; n > block.nFirst && block.nLast + 1 - n < kLinesBelow; --n) nLines.push_back(n - 1);
  return nLines;
}

int64_t Offset(size_t nWanted, size_t nKey) {
  return static_cast<int64_t>(nWanted) - static_cast<int64_t>(nKey);
}

void AddTable(const clsReportLines& report, const TableBlock& block, size_t nAfter, size_t nBefore,
              SuggestedRecipe& recipe) {
  SuggestedTable table;
  table.sRuler = RulerOfBlock(report, block);
  if (table.sRuler.empty()) return;
  table.lColumns = static_cast<int32_t>(std::count(table.sRuler.begin(), table.sRuler.end(), ' ')) + 1;
  table.lFirstLine = static_cast<int64_t>(block.nFirst) + 1;
  table.lLastLine = static_cast<int64_t>(block.nLast) + 1;
  const std::optional<Key> start = FindKey(report, LinesForStart(block, nAfter));
  const std::optional<Key> end = FindKey(report, LinesForEnd(block, nBefore));
  if (!start || !end) {
    recipe.unreachable.push_back(std::move(table));
    return;
  }
  table.sStartLine = start->sText;
  table.lStartOffset = Offset(block.nFirst, start->nLine);
  table.sEndLine = end->sText;
  table.lEndOffset = Offset(block.nLast, end->nLine);
  recipe.tables.push_back(std::move(table));
}

std::string SectionText(const SuggestedTable& table, size_t nTable) {
  return fmt::format(
      "\n; Lines {} to {}: {} lines, {} columns.\n"
      "[Table {}]\n"
      "ReadStartLine={}\nReadStartLineOffset={}\nReadEndLine={}\nReadEndLineOffset={}\nParsing={}\nWriteColumn=A\n",
      table.lFirstLine, table.lLastLine, table.lLastLine - table.lFirstLine + 1, table.lColumns, nTable,
      table.sStartLine, table.lStartOffset, table.sEndLine, table.lEndOffset, table.sRuler);
}

}  // namespace

bool SuggestRecipe(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize, SuggestedRecipe& recipe,
                   Failure& failure) {
  clsReportLines report;
  if (!report.Read(sInput, options, lTabSize, failure)) return false;
  recipe.bWholeReport = report.IsWhole();
  std::vector<TableBlock> blocks = FindTableBlocks(report);
  const size_t nLines = report.Lines().size();
  // Of a table that goes on behind what was looked at, the end isn't known.
  if (!recipe.bWholeReport && !blocks.empty() && blocks.back().nLast + 1 == nLines) blocks.pop_back();
  for (size_t i = 0; i < blocks.size() && recipe.tables.size() < kMostTables; ++i) {
    const size_t nAfter = i == 0 ? 0 : blocks[i - 1].nLast + 1;
    const size_t nBefore = i + 1 < blocks.size() ? blocks[i + 1].nFirst : nLines;
    AddTable(report, blocks[i], nAfter, nBefore, recipe);
  }
  return true;
}

std::string SuggestedRecipe::Text() const {
  std::string sText =
      "; Suggested by the shape of the report. Each key text stands on the line meant for the first time, and each\n"
      "; ruler is drawn over the columns that are blank in all rows. Look at it before you trust it.\n";
  if (!bWholeReport) sText += "; Only the beginning of the report was looked at.\n";
  for (const SuggestedTable& table : unreachable) {
    sText += fmt::format("; Left out: lines {} to {}, as no text near them is new in the report.\n", table.lFirstLine,
                         table.lLastLine);
  }
  sText += "[Header]\nProduct=QLN-B\nFileType=RECIPE\nFileFormat=1.0\n";
  for (size_t i = 0; i < tables.size(); ++i) sText += SectionText(tables[i], i + 1);
  return sText;
}

}  // namespace quillon
