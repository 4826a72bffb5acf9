#pragma once
// The shown values of an existing sheet, for reading cells back.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsCellStore.h"
#include "clsXlsxStyles.h"
#include "clsXmlScanner.h"
#include "modShownNumber.h"

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

/// Puts each cell's value into the store. False if the part is damaged or its texts would take more than kMaxBytes.
bool ReadSheetValues(clsXmlScanner& scanner, const clsSharedStrings& strings, const clsXlsxStyles& styles,
                     const ShownValueOptions& options, clsCellStore& store);

}  // namespace quillon
