#pragma once
// The tables of an unknown report.

#include <cstdint>
#include <string>
#include <vector>

#include "clsHeadingCandidates.h"
#include "clsReportSample.h"
#include "modTidyModel.h"

namespace quillon {

/// A table that was found. Lines count from 1.
struct FoundTable {
  TidyTable tidy;                                     ///< What a recipe says of it
  std::vector<size_t> rows;                           ///< Indexes of the sample's lines that are rows
  std::vector<size_t> headingLines;                   ///< Lines that hold the names above its columns
  std::vector<size_t> furtherLines;                   ///< Lines that belong to the rows without being ones
  bool bRecords = false;                              ///< Records of several lines with labels; its rows tell no edges
  bool bDoubtful = false;                             ///< May be a list of labels or a side note
  bool bChosen = true;                                ///< Part of the recipe; others are comments in it
  std::vector<std::vector<std::string>> namesByKind;  ///< By part and column, for a recipe to call those without names
  std::vector<TidyPart> otherHeadings;                ///< Headings that weren't chosen
  int64_t lRows = 0;                                  ///< Rows in all of the report
  int64_t lPages = 0;                                 ///< Pages, by form feeds, that have rows of it
  int64_t lFirstLine = 0, lLastLine = 0;              ///< Of its rows, in all of the report
  int64_t lMissing = 0;                               ///< Rows that the recipe doesn't take
  std::vector<std::string> doubts;                    ///< What its cells say against it, in all of the report
  int64_t lStrangers = 0;                             ///< Lines that it takes for rows and that look like none
};

/// All tables of the lines, those that leave little doubt first.
std::vector<FoundTable> FindTables(const clsReportSample& report);

}  // namespace quillon
