#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "clsCellStore.h"
#include "clsXlsCellTable.h"
#include "clsXlsFormats.h"
#include "clsXlsStrings.h"
#include "modCellTyping.h"

namespace quillon {

/// What stands where a cell is written.
struct XlsOldCell {
  uint16_t nXf = 0;
  bool bExists = false;  ///< Else the format is the row's, the column's or that of all cells
  bool bValueDecides =
      false;  ///< The number format is that of an older value: it stays if it shows the new one rightly
};

/// Types texts and puts them as cells into the table of a sheet; strings and formats that they need are added to those
/// of the workbook.
class clsXlsCellWriter {
 public:
  clsXlsCellWriter(clsXlsStrings& strings, clsXlsFormats& formats, const CellTypingOptions& options)
      : strings_(strings), formats_(formats), options_(options) {}

  /// Days count from 1904 in this workbook; strings of the file come before the added ones.
  void SetBase(bool b1904, uint32_t nFirstString) {
    b1904_ = b1904;
    nFirstString_ = nFirstString;
  }

  /// A cell of the row in hand. A number format other than General of nXf stays; where it is Text, so does the text. An
  /// empty text leaves a blank cell if there was one before or the format isn't the plain one.
  void Write(clsXlsCellTable& table, unsigned nColumn, std::string_view sText, const ColumnRule& rule,
             const XlsOldCell& old);
  /// Said of a row some rows before it is written, then once more just before: what its texts need of the string table
  /// is at hand by then.
  void Expect(std::span<const StoredCell> cells, std::vector<uint32_t>& hashes) const;
  void ExpectEntries(std::span<const uint32_t> hashes) const;
  bool SameCode(uint16_t nXf, uint16_t nOther) const {
    return formats_.NumberFormatOf(nXf) == formats_.NumberFormatOf(nOther);
  }
  int64_t Reformatted() const { return nReformatted_; }  ///< Cells that got a number format in place of another
  int64_t RefusedFormulas() const { return nRefused_; }

 private:
  void WriteText(clsXlsCellTable& table, unsigned nColumn, std::string_view sText, uint16_t nXf);
  bool WriteBool(clsXlsCellTable& table, unsigned nColumn, bool bValue, uint16_t nXf);
  bool WriteNumber(clsXlsCellTable& table, unsigned nColumn, const TypedCell& cell, uint16_t nXf);
  bool WriteTyped(clsXlsCellTable& table, unsigned nColumn, const TypedCell& cell, uint16_t nXf);

  clsXlsStrings& strings_;
  clsXlsFormats& formats_;
  CellTypingOptions options_;
  bool b1904_ = false;
  uint32_t nFirstString_ = 0;
  std::string sScratch_;
  std::string sTokens_;
  int64_t nRefused_ = 0, nReformatted_ = 0;
  bool bValueDecides_ = false;  ///< Of the cell in hand
  std::string_view sShown_;
};

/// Days between the two date systems.
constexpr double kDaysTo1904 = 1462;

}  // namespace quillon
