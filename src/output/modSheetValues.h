#pragma once
// The shown values of an existing sheet, for reading cells back.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsCellStore.h"
#include "clsXlsxStyles.h"
#include "clsXmlScanner.h"

namespace quillon {

/// The strings that cells share, in one piece of memory.
class clsSharedStrings {
 public:
  /// False if the part is damaged or larger than kMaxBytes.
  bool Load(clsXmlScanner& scanner);
  std::string_view At(size_t nIndex) const;

  static constexpr size_t kMaxBytes = size_t{1} << 30;

 private:
  std::string sBytes_;
  std::vector<size_t> ends_;
};

struct ShownValueOptions {
  bool bDayFirst = false;  ///< Dates as 31/12/2024 rather than 12/31/2024
  bool b1904 = false;      ///< Days count from 1904
};

/// A number in plain form, or as date and time by the cell's format.
std::string ShownNumber(double nValue, FormatKind kind, const ShownValueOptions& options);

/// Puts each cell's value into the store. False if the part is damaged or its texts would take more than kMaxBytes.
bool ReadSheetValues(clsXmlScanner& scanner, const clsSharedStrings& strings, const clsXlsxStyles& styles,
                     const ShownValueOptions& options, clsCellStore& store);

}  // namespace quillon
