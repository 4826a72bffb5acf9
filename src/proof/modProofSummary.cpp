#include "modProofSummary.h"

#include <fmt/format.h>

#include "modNumbers.h"
#include "modProofText.h"
#include "modText.h"
#include "modTidyKeys.h"

namespace quillon {

namespace {

constexpr size_t kMostPlaces = 100;

}  // namespace

ProofSummary SummaryOf(const ReportProof& proof, bool bAllTables, bool bAllValues) {
  ProofSummary summary;
  summary.sVerdict = VerdictText(proof, bAllTables, bAllValues);
  const bool bMissing = !bAllTables || !LossText(proof).empty() || proof.lTotalsDisagree > 0;
  const bool bDoubt = !bAllValues || !DoubtText(proof).empty();
  summary.mood = bMissing ? ProofMood::Missing : bDoubt ? ProofMood::Doubt : ProofMood::Whole;
  for (size_t i = 0; i < proof.lines.size(); ++i) {
    const auto kind = static_cast<TidyLineKind>(i);
    if (kind != TidyLineKind::Blank && proof.lines[i] > 0) summary.kinds.emplace_back(kind, proof.lines[i]);
  }
  summary.sTotals = TotalsCountText(proof);
  for (const ShapeOfLines& shape : proof.shapes) {
    if (!(shape.bLikeRow || shape.bFigures) || summary.places.size() >= kMostPlaces) continue;
    summary.places.push_back(
        {shape.lFirstLine, shape.lLines,
         fmt::format("{} like \"{}\"", CountedText(shape.lLines, "line", "lines"), WithoutControls(shape.sShape)),
         shape.bLikeRow && !shape.bMeant});
  }
  if (proof.loss.Any()) summary.places.push_back({proof.loss.lFirstLine, 1, CharactersText(proof.loss), true});
  if (proof.pages.lPages > 0) summary.places.push_back({proof.pages.lLine, 1, PagesText(proof.pages), false});
  for (const TableTotal& total : proof.totals) {
    if (total.total.verdict != TotalVerdict::Disagrees || summary.places.size() >= 2 * kMostPlaces) continue;
    summary.places.push_back({total.total.lLine, 1, TotalText(total), true});
  }
  return summary;
}

std::string TotalsKey(const ReportProof& proof, int32_t lTable) {
  std::string sKey;
  for (const auto& [lOf, sWords] : proof.words) {
    if (lOf == lTable) sKey += (sKey.empty() ? "" : "|") + TidyEscaped(sWords);
  }
  return sKey;
}

}  // namespace quillon
