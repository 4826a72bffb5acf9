#pragma once
// What became of a report's lines, characters and totals, in words.

#include <array>
#include <string>
#include <string_view>

#include "modProofModel.h"

namespace quillon {

/// "4 rows, 2 headings, 3 totals, 5 left out, 1 outside of all tables": kinds without a line are left out.
std::string LineKindsText(const std::array<int64_t, kTidyLineKinds>& lines);
/// "12 printed totals agree, 1 does not (line 204, column Gross: printed 5,140.00, rows 4,100.00)"; "" if there are
/// none.
std::string TotalsText(const ReportProof& proof);
/// The same without the first that doesn't agree.
std::string TotalsCountText(const ReportProof& proof);
/// The sum of the rows, written as the total beside it is: "4,100.00", "4.100,00".
std::string SummedText(const PrintedTotal& total);
/// "line 204, column Gross: printed 5,140.00, rows 4,100.00"
std::string TotalText(const TableTotal& total);

/// A tidy table of a check: its stretch, its records, what didn't fit.
std::string TidyTableText(const TidyTable& table, const TidyTableState& state);
/// Lines by kind, those left out or outside by shape, and the totals. bAll: all shapes and totals.
std::string ProofText(const ReportProof& proof, bool bAll);
/// What is lost, in words: "3 lines look like rows, 1 value cut"; "" if nothing is.
std::string LossText(const ReportProof& proof);

/// The characters of it: "1 character between columns, 1 value cut".
std::string CharactersText(const CharacterLoss& loss);
/// "2 pages that don't follow the one before (line 204: page 5 behind page 2)"; "" if all follow.
std::string PagesText(const PageOrder& pages);
/// What may be missing, in words: "1 line of figures in no table (first on line 4)"; "" if there is no doubt.
std::string DoubtText(const ReportProof& proof);
/// The closing sentence. "Nothing is lost." only if nothing speaks against it. bAllTables: all were found and have
/// rows; bAllValues: all are what their columns say.
std::string VerdictText(const ReportProof& proof, bool bAllTables, bool bAllValues);

}  // namespace quillon
