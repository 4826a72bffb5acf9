#pragma once
// Widths of an existing sheet's columns, so that what a run has written can be read there.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "modXlsRecords.h"

namespace quillon {

/// Width that holds so many characters, in 1/256 of one: five of a character's eight pixels are the cell's margins.
constexpr unsigned XlsColumnWidth(unsigned nChars) {
  return nChars * 256 + 160;
}

/// The records of a sheet's head with columns that hold the longest values written (in characters, by column from 0; 0
/// for none). Columns that a user has made as wide as they are stay so; others grow, and with bAnew, in a file that is
/// this program's own, they are made anew. nXf is the format of columns that have none.
std::string WithColumnWidths(std::string_view sHead, std::span<const uint8_t> longest, bool bAnew, uint16_t nXf);

}  // namespace quillon
