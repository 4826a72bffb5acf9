#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsHost.h"
#include "modRecipeGlobals.h"

namespace quillon {

/// Turns the ruler of a table into column positions, and works out from the table's text what the ruler leaves open.
///
/// A ruler is a text over a report, position by position: a run of characters that aren't blank is a field. A "=" in a
/// field means that this stretch is to be worked out from the columns that are blank in every row; an "R" in it, that
/// blanks in front of a value belong to the value rather than those behind.
class clsTableParser {
 public:
  static constexpr int32_t kMaxRows = 9999;
  static constexpr int32_t kMaxFields = 16384;

  bool OptionNoSpaceColumns = true;  ///< Blank columns are joined to the block behind them
  bool OptionLeftJustify = false;    ///< Kept and set back; nothing reads it
  int32_t MarkerTopLoc = 0;          ///< Line of the start key text
  int32_t MarkerBotLoc = 0;          ///< Line of the end key text
  int32_t DataTopLoc = 0;            ///< First line of the table
  int32_t DataBotLoc = 0;            ///< Last line of the table
  int32_t TableWidth = 0;            ///< Characters of the longest row; 0: no table was read
  /// What the rows come down to: for each character column, whether any row has something there.
  std::vector<bool> ColumnOccupied;

  /// Fields of a template, from 1. A field ends with the blank behind it, if there is one. "+" in front makes the
  /// operation "Sum". False, and no fields, if there are none; more than kMaxFields report -5700.
  static bool analyze_template(clsHost& host, std::string_view sTemplate, std::vector<int32_t>& colStart,
                               std::vector<int32_t>& colEnd, std::vector<std::string>& colOp);

  /// Finds the table and looks at its rows. A table that isn't there leaves TableWidth 0; more than kMaxRows report
  /// -5701; failures of the system, and rows wider than any report's, are reported by their own number, and a report
  /// that can't be read is kept as the run's failure, so that nothing is written over. A search that was stopped
  /// (modEventLoop) leaves TableWidth 0 without a report.
  void ReadFromFile(RecipeContext& context, std::string_view text_file, std::string_view topMarker, int32_t topOffset,
                    std::string_view botMarker, int32_t botOffset, int32_t tab_size);

  /// The template with every "=" worked out; "" if it has no field.
  std::string VariableToFixedTemplate(clsHost& host, std::string_view sTemplate) const;

 private:
  /// A stretch of table columns, looked at from its left or (reversed) from its right end. Columns count from 1.
  struct Piece {
    const std::vector<bool>& occupied;
    int32_t lFrom, lWidth;
    bool bReversed;
    bool IsColumnBlank(int32_t column) const;
  };
  struct Block {
    int32_t lEnd;
    bool bBlank;
  };
  void ResetParser();
  static void FindTableMarkers(clsReport& report, std::string_view topMarker, std::string_view botMarker, int64_t& top,
                               int64_t& bot);
  bool LocateMarkers(RecipeContext& context, std::string_view text_file, std::string_view topMarker,
                     std::string_view botMarker);
  bool LocateRows(RecipeContext& context, int32_t topOffset, int32_t botOffset);
  void ReadRows(RecipeContext& context, std::string_view text_file, int32_t tab_size);
  std::string BuildTemplateFromRows(const Piece& piece) const;
  static Block FindNextBlock(const Piece& piece, int32_t start);
  std::string FixedSegment(int32_t lStart, int32_t lEnd, bool bLeft) const;
};

}  // namespace quillon
