#pragma once
// A tidy table as its recipe tells it: which lines of a report are records, where their values stand, what they are.

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace quillon {

/// Columns A to ... as indexes from 0.
using TidyColumn = size_t;
constexpr TidyColumn kNoTidyColumn = static_cast<TidyColumn>(-1);

/// What a cell must be for its line to fit (Needs).
enum class TidyKind : uint8_t { Number, Digits, Date, Letters, Any, Blank, Holds };
struct TidyKindOrText {
  TidyKind kind = TidyKind::Any;
  std::string sText;  ///< Of Holds
};
struct TidyNeed {
  TidyColumn column = 0;
  std::vector<TidyKindOrText> alternatives;
};

/// What a column holds (Types). Auto: as printed, and in a workbook by the rule for cells without a type.
enum class TidyType : uint8_t { Auto, Text, Number, Date, Skip };
struct TidyTyping {
  TidyType type = TidyType::Auto;
  bool bComma = false;    ///< 1.234,56
  int nImplied = 0;       ///< Digits that stand behind a point that isn't printed: 2 for "/100"
  std::string sDateForm;  ///< "DD.MM.YY"; of Date
};

/// Characters of a line, from 1, both included. nEnd 0: to the line's end.
struct TidyPlace {
  int32_t nStart = 1;
  int32_t nEnd = 0;
};
enum class TidySplit : uint8_t { None, AtText, AtBlanks, AtGaps };
/// Where the values of a line stand.
struct TidyCut {
  /// Columns by position; each further list is a further record of the same line, column by column.
  std::vector<std::vector<TidyPlace>> places;
  TidySplit split = TidySplit::None;
  std::string sSplit;  ///< Of AtText
};

/// What rows, headings and further lines have in common.
struct TidyPart {
  std::vector<std::string> texts;  ///< Text: one of them finds the line
  std::string sBefore;             ///< Before: the value found by a text ends before this one
  std::vector<std::string> likes;  ///< Like: pictures, as written
  std::vector<TidyNeed> needs;
  TidyCut cut;
  std::vector<std::string> names;  ///< By column; "^": the name printed above it. Those that lack stand for no name
  std::vector<TidyTyping> types;   ///< By column; those that lack are Auto
  TidyTyping otherTypes;           ///< Of the columns that types lacks
  std::vector<std::string> blanks;

  /// Columns that the cut or, without places, names and types give.
  size_t ColumnCount() const;
  const TidyTyping& TypeOf(TidyColumn column) const { return column < types.size() ? types[column] : otherTypes; }
  /// By column, "" for none. Names stand for all columns, or for those alone that aren't skipped.
  std::vector<std::string> ColumnNames() const;
};

/// [Line n.k]
struct TidyFurtherLine {
  int32_t nDistance = 1;  ///< Lines below the row, where nothing else finds it
  TidyPart part;
  bool IsByDistance() const { return part.texts.empty() && part.likes.empty() && part.needs.empty(); }
};

enum class TidyJoin : uint8_t { None, Up, Down };

/// Keys of a section as they stand in the file, in their order.
struct TidySection {
  std::string sName;  ///< "Table 1", "Heading 1.2", "Line 1.2"
  std::vector<std::pair<std::string, std::string>> keys;
};

struct TidyTable {
  int32_t lNumber = 1;  ///< n of [Table n]
  std::string sStartLine;
  int32_t lStartOffset = 0;
  std::string sEndLine;
  int32_t lEndOffset = 0;
  std::string sParsing;      ///< A ruler; measured and made places before the table runs
  std::string sWriteColumn;  ///< Column letters of the first column in a workbook; "" is A
  bool bUntilBlank = false, bRepeat = false, bOptional = false;

  TidyPart row;
  std::vector<std::string> drops;
  std::vector<TidyColumn> fills;
  TidyJoin join = TidyJoin::None;
  TidyColumn joinColumn = kNoTidyColumn;  ///< Join=up E: all of the line goes there
  TidyColumn levelColumn = kNoTidyColumn;
  bool bLevelRows = false;  ///< Levels=B rows Parent
  std::vector<std::string> levelNames;
  std::string sSheet;
  std::vector<std::string> totals;
  bool bProof = true;

  std::vector<TidyPart> headings;  ///< [Heading n.1] ...
  std::vector<TidyFurtherLine> lines;

  /// The sections as they were read, for files that keep them.
  std::vector<TidySection> sections;
};

}  // namespace quillon
