#pragma once
// What became of a report's lines, totals and characters, as a list for people.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "clsReportProof.h"

namespace quillon {

/// A line of the list. Texts are translated.
struct ProofEntry {
  std::string sText;
  int64_t lLine = 0;      ///< Of the report, to go to; 0: none
  bool bWarning = false;  ///< Something may be lost or wrong
};
struct ProofGroup {
  std::string sTitle;
  bool bWarning = false;
  std::vector<ProofEntry> entries;
};

/// Lines by kind; lines left out, by shape, those like rows first; printed totals, those that disagree first; what the
/// columns cut or leave. Groups without an entry are left out.
std::vector<ProofGroup> ListProof(const ReportProof& proof);
/// "Row lines: 12": kinds without a line are left out.
std::vector<std::string> KindTexts(const std::function<int64_t(TidyLineKind)>& linesOf);
// What a closing line says of it; "" where there is nothing to say.
std::string ProofSentence(const ReportProof& proof);  ///< "4 totals agree, 1 total disagrees"
std::string LossSentence(const ReportProof& proof);   ///< "Lines that look like rows and are in no table: 2"
/// True if something of it is to be looked at.
bool IsProofBad(const ReportProof& proof);

}  // namespace quillon
