#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "clsXlsxStyles.h"
#include "modCellTyping.h"

namespace quillon {

/// Writes cells of an existing sheet. A cell whose format is other than General keeps it, and gets a value of the kind
/// that the format shows rightly; else its text. (In a file of our own all formats count as General.)
class clsCellWriter {
 public:
  /// sheets are the names that formulas may speak of.
  clsCellWriter(clsXlsxStyles& styles, const CellTypingOptions& typing, std::span<const std::string> sheets, bool b1904)
      : styles_(styles), typing_(typing), sheets_(sheets), b1904_(b1904) {}

  /// Where the cell stands and what of it stays.
  struct Cell {
    int64_t nRow = 0;
    int nColumn = 0;
    uint32_t nStyle = 0;
    std::string_view sPrefix;    ///< Of elements, with its ":"
    std::string_view sChildren;  ///< Elements kept behind the value
    bool bValueDecides =
        false;  ///< Its number format is that of an older value: it stays if it shows the new one rightly
  };
  /// Appends the cell's element; a text that must stay one is never typed.
  void Append(const Cell& cell, std::string_view sText, bool bStaysText, const ColumnRule& rule, std::string& sOut);
  /// True for a text that leaves its cell empty.
  bool LeavesEmpty(std::string_view sText) const;
  /// Appends the element of a cell with no value.
  static void AppendEmpty(const Cell& cell, std::string& sOut);
  /// Appends the element of a cell with that formula, without its "=", to be worked out.
  static void AppendFormula(const Cell& cell, std::string_view sFormula, std::string& sOut);
  bool SameCode(uint32_t nStyle, uint32_t nOther) const { return styles_.SameCode(nStyle, nOther); }
  int64_t RefusedFormulas() const { return nRefused_; }
  int64_t Reformatted() const { return nReformatted_; }  ///< Cells that got a number format in place of another
  int64_t Formulas() const { return nFormulas_; }        ///< Written so far

 private:
  bool Fits(TypedCell& typed, const Cell& cell, uint32_t& nStyle);
  bool TakesFormatOfValue(TypedCell& typed, uint32_t& nStyle);
  bool CountFrom1904(TypedCell& typed) const;
  bool NumberFits(const TypedCell& typed, uint32_t& nStyle) const;
  bool DateFits(TypedCell& typed, uint32_t& nStyle) const;
  static void AppendValue(const TypedCell& typed, std::string_view sPrefix, std::string& sOut);

  clsXlsxStyles& styles_;
  CellTypingOptions typing_;
  std::span<const std::string> sheets_;
  bool b1904_;
  int64_t nRefused_ = 0;
  int64_t nReformatted_ = 0;
  int64_t nFormulas_ = 0;
  std::string sScratch_;
  std::string_view sShown_;  ///< Of the cell in hand
};

}  // namespace quillon
