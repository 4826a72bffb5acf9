#pragma once
// The text of a number as a sheet shows it.

#include <string>

#include "modFormatKinds.h"

namespace quillon {

struct ShownValueOptions {
  bool bDayFirst = false;  ///< Dates as 31/12/2024 rather than 12/31/2024
  bool b1904 = false;      ///< Days count from 1904
};

/// A number in plain form, or as date and time by the cell's format.
std::string ShownNumber(double nValue, FormatKind kind, const ShownValueOptions& options);

}  // namespace quillon
