#include "modProofList.h"

#include <algorithm>
#include <utility>

#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr size_t kMostEntries = 500;

std::string Number(int64_t lNumber) {
  return std::to_string(lNumber);
}

ProofGroup KindsGroup(const ReportProof& proof) {
  ProofGroup group{Translate("Lines by kind"), false, {}};
  for (std::string& sText : KindTexts([&](TidyLineKind kind) { return proof.Lines(kind); }))
    group.entries.push_back({std::move(sText)});
  const PageOrder& pages = proof.pages;
  if (pages.lPages > 0) {
    std::string sText = Translate("Pages that don't follow the page before:") + " " + Number(pages.lPages);
    if (pages.lLine > 0) sText += " (" + Number(pages.lBefore) + ", " + Number(pages.lNumber) + ")";
    group.entries.push_back({std::move(sText), pages.lLine, true});
    group.bWarning = true;
  }
  return group;
}

ProofGroup ShapesGroup(const ReportProof& proof) {
  ProofGroup group{Translate("Lines that are in no table, by shape"), proof.lLikeRows > 0, {}};
  constexpr size_t kMostShown = 100;
  for (const ShapeOfLines& shape : proof.shapes) {
    if (group.entries.size() == kMostEntries) break;
    std::string sText = Number(shape.lLines) + "  " + WithoutControls(shape.sShape) + "  (" + Translate("Line") + " " +
                        Number(shape.lFirstLine) + ": " +
                        WithoutControls(TrimBlanks(MidChars(shape.sFirst, 1, kMostShown))) + ")";
    if (shape.bLikeRow) sText = Translate("Looks like a row:") + " " + sText;
    group.entries.push_back({std::move(sText), shape.lFirstLine, shape.bLikeRow});
  }
  return group;
}

std::string TotalText(const TableTotal& total) {
  const bool bWrong = total.total.verdict == TotalVerdict::Disagrees;
  std::string sText = Translate("Line") + " " + Number(total.total.lLine) + ", " + total.sColumn + ": ";
  sText += Translate("printed") + " " + total.total.sPrinted;
  if (total.total.verdict == TotalVerdict::Agrees) return sText;
  sText += ", " + Translate("the rows give") + " " + total.total.sSummed;
  return bWrong ? sText : sText + " (" + Translate("the last digit") + ")";
}

ProofGroup TotalsGroup(const ReportProof& proof) {
  ProofGroup group{Translate("Printed totals"), proof.lTotalsDisagree > 0, {}};
  if (proof.lTotalsAgree > 0) group.entries.push_back({Number(proof.lTotalsAgree) + "  " + Translate("agree")});
  if (proof.lTotalsLastDigit > 0) {
    group.entries.push_back({Number(proof.lTotalsLastDigit) + "  " + Translate("agree but for the last digit")});
  }
  if (proof.lTotalsDisagree > 0) {
    group.entries.push_back({Number(proof.lTotalsDisagree) + "  " + Translate("disagree"), 0, true});
  }
  for (const TotalVerdict verdict : {TotalVerdict::Disagrees, TotalVerdict::LastDigit, TotalVerdict::Agrees}) {
    for (const TableTotal& total : proof.totals) {
      if (total.total.verdict != verdict || group.entries.size() >= kMostEntries) continue;
      group.entries.push_back({TotalText(total), total.total.lLine, verdict == TotalVerdict::Disagrees});
    }
  }
  return group;
}

ProofGroup LossGroup(const ReportProof& proof) {
  ProofGroup group{Translate("What the columns cut or leave"), proof.loss.Any() || proof.lDivided > 0, {}};
  const auto add = [&](int64_t lCount, const std::string& sWhat, int64_t lLine) {
    if (lCount > 0) group.entries.push_back({sWhat + " " + Number(lCount), lLine, true});
  };
  add(proof.loss.lCuts, Translate("Values cut:"), proof.loss.lFirstLine);
  add(proof.loss.lInFront, Translate("Characters in front of the first column:"), proof.loss.lFirstLine);
  add(proof.loss.lBetween, Translate("Characters between columns:"), proof.loss.lFirstLine);
  add(proof.loss.lBehind, Translate("Characters behind the last column:"), proof.loss.lFirstLine);
  add(proof.lDivided, Translate("Words divided by columns that touch:"), proof.lDividedLine);
  return group;
}

}  // namespace

std::vector<std::string> KindTexts(const std::function<int64_t(TidyLineKind)>& linesOf) {
  std::vector<std::string> texts;
  const auto add = [&](TidyLineKind kind, const std::string& sWhat) {
    const int64_t lLines = linesOf(kind);
    if (lLines > 0) texts.push_back(sWhat + " " + Number(lLines));
  };
  add(TidyLineKind::Row, Translate("Row lines:"));
  add(TidyLineKind::Further, Translate("Further lines:"));
  add(TidyLineKind::Joined, Translate("Joined lines:"));
  add(TidyLineKind::Heading, Translate("Headings:"));
  add(TidyLineKind::Total, Translate("Totals:"));
  add(TidyLineKind::Dropped, Translate("Dropped:"));
  add(TidyLineKind::LeftOut, Translate("Left out:"));
  add(TidyLineKind::Outside, Translate("Outside:"));
  return texts;
}

std::vector<ProofGroup> ListProof(const ReportProof& proof) {
  std::vector<ProofGroup> groups;
  for (ProofGroup group : {KindsGroup(proof), ShapesGroup(proof), TotalsGroup(proof), LossGroup(proof)}) {
    if (!group.entries.empty()) groups.push_back(std::move(group));
  }
  return groups;
}

std::string ProofSentence(const ReportProof& proof) {
  std::string sText;
  const auto add = [&](const std::string& sPart) { sText += (sText.empty() ? "" : ", ") + sPart; };
  const int64_t lAgree = proof.lTotalsAgree + proof.lTotalsLastDigit;
  if (lAgree > 0) {
    add(Number(lAgree) + " " + (lAgree == 1 ? Translate("total agrees") : Translate("totals agree")));
  }
  if (proof.lTotalsDisagree > 0) {
    add(Number(proof.lTotalsDisagree) + " " +
        (proof.lTotalsDisagree == 1 ? Translate("total disagrees") : Translate("totals disagree")));
  }
  return sText;
}

std::string LossSentence(const ReportProof& proof) {
  std::string sText;
  const auto add = [&](int64_t lCount, const std::string& sWhat) {
    if (lCount > 0) sText += (sText.empty() ? "" : "; ") + sWhat + " " + Number(lCount);
  };
  add(proof.lLikeRows, Translate("Lines that look like rows and are in no table:"));
  add(proof.loss.lCuts, Translate("Values cut:"));
  return sText;
}

bool IsProofBad(const ReportProof& proof) {
  return proof.pages.lPages > 0 || proof.lLikeRows > 0 || proof.lTotalsDisagree > 0 || proof.loss.Any();
}

}  // namespace quillon
