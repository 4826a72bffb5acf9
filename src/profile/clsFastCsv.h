#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "clsCsvWriter.h"
#include "modCutPlan.h"

namespace quillon {

/// The quick road from a row whose bytes are its characters to a CSV row: cuts, trims, tests and copies each field in
/// blocks of 16 bytes. It gives the same bytes as clsRowCutter with clsCsvWriter, which stand in for it elsewhere.
class clsFastCsv {
 public:
  /// Whether this machine and these rules have the quick road. The rules' sQuoteOn must be its default.
  static bool Serves(const CsvRules& rules);

  /// Pads of more than one byte can't stand in such rows, so they trim nothing.
  clsFastCsv(const CutPlan& plan, const CsvRules& rules);

  /// Most bytes that a row of nRow bytes takes, with the room behind that the copying needs.
  size_t RoomFor(size_t nRow) const { return 2 * nRow + 3 * columns_.size() + 2 * kBlock; }
  /// Writes the row (no LF in it) and its line end to pOut; returns the place behind.
  char* PutRow(std::string_view sRow, char* pOut) const;

 private:
  static constexpr size_t kBlock = 16;
  struct Column {
    size_t nStart, nCount;
    std::array<char, kBlock> pads;   ///< The pad character all over
    uint32_t nKeepFirst, nKeepLast;  ///< 1: that end of the value is left as it is
  };
  template <CsvQuoting quoting>
  char* PutFields(std::string_view sRow, char* pOut) const;

  std::vector<Column> columns_;
  char separator_;
  CsvQuoting quoting_;
};

}  // namespace quillon
