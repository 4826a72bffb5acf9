#pragma once
// What became of a report's lines, characters and printed totals, as plain values.

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "clsTidyReport.h"

namespace quillon {

/// What the columns of a cut leave of rows. Blanks are no loss, nor is what stands beside the columns in every row.
struct CharacterLoss {
  int64_t lInFront = 0;    ///< Characters in front of the first column
  int64_t lBetween = 0;    ///< In gaps between columns
  int64_t lBehind = 0;     ///< Behind the last column
  int64_t lCuts = 0;       ///< Edges of columns with a character on both sides: a value was cut there
  int64_t lFirstLine = 0;  ///< The first line that loses something
  int64_t lSame = 0;       ///< Bars and labels that every row has there; not lost, and not counted above

  int64_t Characters() const { return lInFront + lBetween + lBehind; }
  bool Any() const { return Characters() > 0 || lCuts > 0; }
  void Add(const CharacterLoss& other);
};
/// Lines of one shape: how many, and the first of them.
struct ShapeOfLines {
  std::string sKey;    ///< LineShapeKey of its lines
  std::string sShape;  ///< "9999 AAAA 999.99"
  std::string sFirst;  ///< The first line, shortened to some 1,000 bytes
  int64_t lLines = 0;
  int64_t lFirstLine = 0;
  bool bLikeRow = false;  ///< Looks like a row of a table
  bool bAgain = false;    ///< The same line again and again, word for word
  bool bFigures = false;  ///< It doesn't look like a row, but most of its words are figures
  TidyLineKind kind = TidyLineKind::LeftOut;
  bool bMeant = false;  ///< The recipe names such lines: dropped, or a further line of a record
};

enum class TotalVerdict : uint8_t {
  Agrees,
  LastDigit,  ///< Off in the last digit printed: the report rounds
  Disagrees
};

/// A total that the report prints, beside the sum of its rows that it comes nearest to.
struct PrintedTotal {
  int64_t lLine = 0;
  size_t nColumn = 0;
  TotalVerdict verdict = TotalVerdict::Agrees;
  std::string sPrinted;  ///< As printed
  std::string sSummed;   ///< Plain: "-1234.50"
  bool bNearly = false;  ///< Disagrees by no more than rounding its rows may give
};

/// A printed total of one of several tables.
struct TableTotal {
  int32_t lTable = 0;   ///< n of [Table n]
  std::string sColumn;  ///< Its name, or its letter in the table
  PrintedTotal total;
};

/// Pages that don't follow the page before, by the numbers printed on them.
struct PageOrder {
  int64_t lPages = 0;                ///< How many
  int64_t lLine = 0;                 ///< Of the first
  int64_t lNumber = 0, lBefore = 0;  ///< The number on it, and on the page before
};

/// What became of all lines, characters and totals of a report.
struct ReportProof {
  /// Lines by kind; totals that were proved are no longer left out or outside.
  std::array<int64_t, kTidyLineKinds> lines{};
  CharacterLoss loss;
  int64_t lDivided = 0;      ///< Words that two touching columns share
  int64_t lDividedLine = 0;  ///< The first of them
  int64_t lTotalsAgree = 0, lTotalsLastDigit = 0, lTotalsDisagree = 0;
  std::vector<TableTotal> totals;                      ///< By table and line
  std::vector<std::pair<int32_t, std::string>> words;  ///< For Totals= of a table: they found lines that agree alone
  /// Of lines left out or outside of all tables, and of lines of other kinds that look like rows.
  std::vector<ShapeOfLines> shapes;
  /// Such lines that look like rows, and headings and joined lines that do.
  int64_t lLikeRows = 0, lFirstLikeRow = 0;
  /// Lines that the recipe takes for dropped or further ones, and that look like rows.
  int64_t lMeantLikeRows = 0, lFirstMeant = 0;
  /// Lines in no table most of whose words are figures: perhaps rows of a table that the recipe lacks.
  int64_t lFigureLines = 0, lFirstFigures = 0;
  PageOrder pages;

  /// Adds the counts of another report, and its totals as far as a message may want them.
  void Add(const ReportProof& other);
  int64_t Lines(TidyLineKind kind) const { return lines[static_cast<size_t>(kind)]; }
  int64_t Totals() const { return lTotalsAgree + lTotalsLastDigit + lTotalsDisagree; }
};

}  // namespace quillon
