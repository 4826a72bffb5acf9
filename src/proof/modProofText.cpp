#include "modProofText.h"

#include <fmt/format.h>

#include <algorithm>

#include "modNumbers.h"
#include "modText.h"
#include "modTidyText.h"

namespace quillon {

namespace {

/// Text of a report for a terminal.
std::string Shown(std::string_view sText) {
  return WithoutControls(sText);
}

struct KindWords {
  TidyLineKind kind;
  std::string_view sOne, sMany;
};
constexpr std::array<KindWords, 8> kKindWords{{
    {TidyLineKind::Row, "row", "rows"},
    {TidyLineKind::Further, "further line", "further lines"},
    {TidyLineKind::Joined, "joined line", "joined lines"},
    {TidyLineKind::Heading, "heading", "headings"},
    {TidyLineKind::Total, "total", "totals"},
    {TidyLineKind::Dropped, "dropped", "dropped"},
    {TidyLineKind::LeftOut, "left out", "left out"},
    {TidyLineKind::Outside, "outside of all tables", "outside of all tables"},
}};

void AddPart(std::string& sText, std::string_view sPart) {
  if (!sText.empty()) sText += ", ";
  sText += sPart;
}

/// What the recipe takes lines for that look like rows.
std::string_view TakenForText(TidyLineKind kind) {
  switch (kind) {
    case TidyLineKind::Joined:
      return " (joined to the row above or below)";
    case TidyLineKind::Heading:
      return " (taken for a heading)";
    case TidyLineKind::Further:
      return " (taken for a further line)";
    case TidyLineKind::Dropped:
      return " (dropped)";
    default:
      return {};
  }
}

bool MayBeRow(const ShapeOfLines& shape) {
  return shape.bFigures || (shape.bLikeRow && shape.bMeant);
}

std::string ShapeText(const ShapeOfLines& shape) {
  constexpr size_t kMostShown = 80;
  return fmt::format("  {} {:>6} like \"{}\"{}, first on line {}: {}\n",
                     MayBeRow(shape)  ? '?'
                     : shape.bLikeRow ? '!'
                                      : ' ',
                     CountedText(shape.lLines, "line", "lines"), Shown(shape.sShape), TakenForText(shape.kind),
                     shape.lFirstLine, Shown(TrimBlanks(MidChars(shape.sFirst, 1, kMostShown))));
}

std::string ShapesText(const std::vector<ShapeOfLines>& shapes, bool bAll) {
  if (shapes.empty()) return {};
  constexpr size_t kFew = 10;
  constexpr size_t kFewRows = 20;
  const bool bLikeRow = shapes.front().bLikeRow && !shapes.front().bMeant;
  const bool bMayBe = std::any_of(shapes.begin(), shapes.end(), MayBeRow);
  std::string sText = "Lines left out or outside of all tables, by shape";
  sText += bLikeRow && bMayBe ? " (! looks like a row, ? may be one):\n"
           : bLikeRow         ? " (! looks like a row):\n"
           : bMayBe           ? " (? may be a row):\n"
                              : ":\n";
  size_t nShown = 0;
  for (const ShapeOfLines& shape : shapes) {
    if (!bAll && nShown >= (shape.bLikeRow ? kFewRows : kFew)) break;
    sText += ShapeText(shape);
    ++nShown;
  }
  if (nShown < shapes.size())
    sText += fmt::format("    and {} more (--lines shows all)\n",
                         CountedText(static_cast<int64_t>(shapes.size() - nShown), "shape", "shapes"));
  return sText;
}

std::string VerdictsText(const ReportProof& proof) {
  if (proof.Totals() == 0) return {};
  std::string sText = fmt::format("{} {}", CountedText(proof.lTotalsAgree, "printed total", "printed totals"),
                                  proof.lTotalsAgree == 1 ? "agrees" : "agree");
  if (proof.lTotalsLastDigit > 0) sText += fmt::format(", {} but for the last digit", proof.lTotalsLastDigit);
  if (proof.lTotalsDisagree > 0) {
    sText += fmt::format(", {} {} not", proof.lTotalsDisagree, proof.lTotalsDisagree == 1 ? "does" : "do");
  }
  return sText;
}

}  // namespace

std::string LineKindsText(const std::array<int64_t, kTidyLineKinds>& lines) {
  std::string sText;
  for (const KindWords& words : kKindWords) {
    const int64_t lLines = lines[static_cast<size_t>(words.kind)];
    if (lLines > 0) AddPart(sText, CountedText(lLines, words.sOne, words.sMany));
  }
  return sText.empty() ? "no lines" : sText;
}

std::string SummedText(const PrintedTotal& total) {
  const std::string& sPlain = total.sSummed;
  const size_t nPoint = std::min(sPlain.find('.'), sPlain.size());
  const size_t nDecimals = nPoint < sPlain.size() ? sPlain.size() - nPoint - 1 : 0;
  const size_t nLast = total.sPrinted.find_last_of("0123456789");
  if (nLast == std::string::npos || nLast < nDecimals + 1) return sPlain;
  const char cMark = total.sPrinted[nLast - nDecimals];
  const bool bMark = nDecimals > 0 && (cMark == '.' || cMark == ',');
  if (nDecimals > 0 && !bMark) return sPlain;
  const size_t nGroup = total.sPrinted.substr(0, bMark ? nLast - nDecimals : nLast).find_first_of(".,'");
  std::string sText = sPlain;
  if (bMark) sText[nPoint] = cMark;
  if (nGroup == std::string::npos) return sText;
  constexpr size_t kGroup = 3;
  const size_t nSign = sPlain.starts_with('-') ? 1 : 0;
  for (size_t n = nPoint; n > nSign + kGroup; n -= kGroup) sText.insert(n - kGroup, 1, total.sPrinted[nGroup]);
  return sText;
}

std::string TotalText(const TableTotal& total) {
  return fmt::format("line {}, column {}: printed {}, rows {}", total.total.lLine, Shown(total.sColumn),
                     Shown(total.total.sPrinted), SummedText(total.total));
}

std::string TotalsText(const ReportProof& proof) {
  const auto wrong = std::find_if(proof.totals.begin(), proof.totals.end(), [](const TableTotal& total) {
    return total.total.verdict == TotalVerdict::Disagrees;
  });
  const std::string sText = VerdictsText(proof);
  return wrong == proof.totals.end() ? sText : sText + " (" + TotalText(*wrong) + ")";
}

std::string TidyTableText(const TidyTable& table, const TidyTableState& state) {
  if (!state.bStarted && !table.bOptional) {
    return fmt::format("  ReadStartLine \"{}\" not found\n", Shown(table.sStartLine));
  }
  if (state.lRecords == 0 && state.lNearLine > 0) {
    return fmt::format(
        "  no line is a row; line {} is, but for {}\n", state.lNearLine,
        state.nearColumn == kNoTidyColumn ? "its picture" : "column " + TidyColumnLetters(state.nearColumn));
  }
  std::string sText = fmt::format("  lines {} to {}: {}\n", state.lFirstLine, state.lLastLine,
                                  CountedText(state.lRecords, "record", "records"));
  if (state.lMisfits > 0) {
    sText += fmt::format("  {} in columns of numbers or dates; the first on line {}, column {}: {}\n",
                         CountedText(state.lMisfits, "text", "texts"), state.lMisfitLine, Shown(state.sMisfitColumn),
                         Shown(state.sMisfit));
  }
  return sText;
}

std::string ProofText(const ReportProof& proof, bool bAll) {
  std::string sText = fmt::format("Lines: {}\n", LineKindsText(proof.lines));
  sText += ShapesText(proof.shapes, bAll);
  if (proof.lDivided > 0) {
    sText += fmt::format("{} by columns that touch, the first on line {}\n",
                         CountedText(proof.lDivided, "word is divided", "words are divided"), proof.lDividedLine);
  }
  if (proof.loss.lSame > 0) {
    sText += fmt::format("{} beside the columns, the same in every row\n",
                         CountedText(proof.loss.lSame, "character", "characters"));
  }
  if (proof.Totals() == 0) return sText;
  sText += VerdictsText(proof) + "\n";
  for (const TableTotal& total : proof.totals) {
    const bool bAgrees = total.total.verdict == TotalVerdict::Agrees;
    if (bAgrees && !bAll) continue;
    sText += fmt::format("    {}{}\n", TotalText(total),
                         total.total.verdict == TotalVerdict::LastDigit ? " (the last digit)" : "");
  }
  return sText;
}

std::string TotalsCountText(const ReportProof& proof) {
  return VerdictsText(proof);
}

std::string CharactersText(const CharacterLoss& loss) {
  std::string sText;
  const auto add = [&](int64_t lCount, std::string_view sOne, std::string_view sMany) {
    if (lCount > 0) AddPart(sText, CountedText(lCount, sOne, sMany));
  };
  add(loss.lInFront, "character in front of the first column", "characters in front of the first column");
  add(loss.lBetween, "character between columns", "characters between columns");
  add(loss.lBehind, "character behind the last column", "characters behind the last column");
  add(loss.lCuts, "value cut", "values cut");
  return sText;
}

std::string LossText(const ReportProof& proof) {
  std::string sText;
  if (proof.lLikeRows > 0) {
    sText = CountedText(proof.lLikeRows, "line that looks like a row", "lines that look like rows");
  }
  const std::string sCharacters = CharactersText(proof.loss);
  if (!sCharacters.empty()) AddPart(sText, sCharacters);
  return sText;
}

std::string PagesText(const PageOrder& pages) {
  if (pages.lPages == 0) return {};
  std::string sText = CountedText(pages.lPages, "page that doesn't follow", "pages that don't follow");
  sText += " the one before";
  if (pages.lLine == 0) return sText;
  return sText + fmt::format(" (line {}: page {} behind page {})", pages.lLine, pages.lNumber, pages.lBefore);
}

std::string DoubtText(const ReportProof& proof) {
  std::string sText;
  const auto add = [&](int64_t lCount, std::string_view sOne, std::string_view sMany, int64_t lFirst) {
    if (lCount == 0) return;
    AddPart(sText, CountedText(lCount, sOne, sMany) + (lFirst > 0 ? fmt::format(" (first on line {})", lFirst) : ""));
  };
  add(proof.lFigureLines, "line of figures in no table", "lines of figures in no table", proof.lFirstFigures);
  add(proof.lMeantLikeRows, "dropped or further line that looks like a row",
      "dropped or further lines that look like rows", proof.lFirstMeant);
  const std::string sPages = PagesText(proof.pages);
  if (!sPages.empty()) AddPart(sText, sPages);
  return sText;
}

std::string VerdictText(const ReportProof& proof, bool bAllTables, bool bAllValues) {
  const std::string sLoss = LossText(proof);
  if (!bAllTables || !sLoss.empty()) return "Something is missing or lost" + (sLoss.empty() ? "" : ": " + sLoss) + ".";
  if (proof.lTotalsDisagree > 0) return "Not all printed totals agree with the rows.";
  const std::string sDoubt = DoubtText(proof);
  if (!sDoubt.empty()) return "Something may be missing: " + sDoubt + ".";
  return bAllValues ? "Nothing is lost." : "Not all values are what their columns say.";
}

}  // namespace quillon
