#pragma once
// The account of a report for a panel of a window, and for keys of a recipe.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "modProofModel.h"

namespace quillon {

enum class ProofMood : uint8_t {
  Whole,   ///< Nothing speaks against it
  Doubt,   ///< Something may be missing, or not all values are what their columns say
  Missing  ///< Something is missing or lost, or a printed total disagrees
};

/// Lines that need a look.
struct ProofPlace {
  int64_t lLine = 0;  ///< The first of them
  int64_t lLines = 1;
  std::string sText;      ///< What is there: "12 lines like ...", "Gross: printed 5,140.00, rows 4,100.00"
  bool bMissing = false;  ///< Missing or lost for certain, else perhaps
};

/// What a panel shows from top to bottom.
struct ProofSummary {
  ProofMood mood = ProofMood::Whole;
  std::string sVerdict;                                 ///< The closing sentence
  std::vector<std::pair<TidyLineKind, int64_t>> kinds;  ///< Kinds that there are lines of, and how many
  std::string sTotals;                                  ///< "12 printed totals agree, 1 does not"; "" if there are none
  std::vector<ProofPlace> places;                       ///< Rows that may be missing first, then totals that disagree
};

/// See VerdictText for the last two.
ProofSummary SummaryOf(const ReportProof& proof, bool bAllTables, bool bAllValues);

/// A value for the key Totals= of a table: the words of lines that proved to be totals and all agree; "" if there are
/// none.
std::string TotalsKey(const ReportProof& proof, int32_t lTable);

}  // namespace quillon
