#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "clsCodePage.h"
#include "clsIniFile.h"
#include "modFailure.h"

namespace quillon {

/// A section file in the making: keys are set in memory and written at once. The bytes are those that setting each key
/// in the file would give.
class clsSectionWriter {
 public:
  explicit clsSectionWriter(const clsCodePage& page) : pPage_(&page) {}

  /// Goes on from an existing file: keys that it has are replaced in place, what else it holds stays. A missing file
  /// leaves the writer as it is. False with the reason if the file can't be read.
  bool Load(std::string_view sPath, Failure& failure);
  /// The keys of a section come one after another, and none twice, unless a file was loaded.
  void Set(std::string_view section, std::string_view key, std::string_view sValue);
  void Set(std::string_view section, std::string_view key, int32_t lValue);

  /// In the code page; as UTF-8 with a BOM if the page lacks a character. A file larger than a reader takes fails.
  bool Save(std::string_view sPath, Failure& failure) const;
  std::string Bytes() const;

 private:
  const clsCodePage* pPage_;
  std::optional<clsIniFile> loaded_;
  std::string sText_;  ///< A new file's text so far
  std::string sSection_;
};

}  // namespace quillon
