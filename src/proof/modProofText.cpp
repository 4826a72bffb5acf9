#include "modProofText.h"

#include <fmt/format.h>

#include <algorithm>

#include "modNumbers.h"
#include "modText.h"

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

std::string ShapeText(const ShapeOfLines& shape) {
  constexpr size_t kMostShown = 80;
  return fmt::format("  {} {:>6} like \"{}\", first on line {}: {}\n", shape.bLikeRow ? '!' : ' ',
                     CountedText(shape.lLines, "line", "lines"), Shown(shape.sShape), shape.lFirstLine,
                     Shown(TrimBlanks(MidChars(shape.sFirst, 1, kMostShown))));
}

std::string ShapesText(const std::vector<ShapeOfLines>& shapes, bool bAll) {
  if (shapes.empty()) return {};
  constexpr size_t kFew = 10;
  constexpr size_t kFewRows = 20;
  const bool bLikeRow = shapes.front().bLikeRow;
  std::string sText = "Lines left out or outside of all tables, by shape";
  sText += bLikeRow ? " (! looks like a row):\n" : ":\n";
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

std::string TotalText(const TableTotal& total) {
  return fmt::format("line {}, column {}: printed {}, rows {}", total.total.lLine, Shown(total.sColumn),
                     Shown(total.total.sPrinted), total.total.sSummed);
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
    return fmt::format("  no line is a row; line {} is, but for {}\n", state.lNearLine,
                       state.nearColumn == kNoTidyColumn
                           ? "its picture"
                           : "column " + std::string(1, static_cast<char>('A' + state.nearColumn % 26)));
  }
  std::string sText = fmt::format("  lines {} to {}: {}\n", state.lFirstLine, state.lLastLine,
                                  CountedText(state.lRecords, "record", "records"));
  if (state.lMisfits > 0) {
    sText += fmt::format("  {} in columns of numbers or dates; the first on line {}: {}\n",
                         CountedText(state.lMisfits, "text", "texts"), state.lMisfitLine, Shown(state.sMisfit));
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

std::string LossText(const ReportProof& proof) {
  std::string sText;
  const auto add = [&](int64_t lCount, std::string_view sOne, std::string_view sMany) {
    if (lCount > 0) AddPart(sText, CountedText(lCount, sOne, sMany));
  };
  add(proof.lLikeRows, "line that looks like a row", "lines that look like rows");
  add(proof.loss.lInFront, "character in front of the first column", "characters in front of the first column");
  add(proof.loss.lBetween, "character between columns", "characters between columns");
  add(proof.loss.lBehind, "character behind the last column", "characters behind the last column");
  add(proof.loss.lCuts, "value cut", "values cut");
  return sText;
}

}  // namespace quillon
