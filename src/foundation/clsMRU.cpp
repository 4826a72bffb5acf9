#include "clsMRU.h"

#include <algorithm>

#include "clsIniFile.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr std::string_view kDone = "MRU_DONE";
constexpr std::string_view kAbsent = "+-!#";

}  // namespace

void clsMRU::Setup(int32_t lMaxItems, std::string_view sIniFile, std::string_view sSection,
                   std::string_view sDefaultItems) {
  lMaxItems_ = lMaxItems;
  sIniFile_ = sIniFile;
  sSection_ = sSection;
  ReadIniFileIntoCollection();
  if (colItems.empty() && sDefaultItems != "-1") {
    while (!sDefaultItems.empty()) {
      const size_t nComma = std::min(sDefaultItems.find(','), sDefaultItems.size());
      AddUniqueItemToCollection(sDefaultItems.substr(0, nComma));
      sDefaultItems.remove_prefix(std::min(nComma + 1, sDefaultItems.size()));
    }
  }
  bChanged_ = false;
}

bool clsMRU::bItemExistsInMRU(std::string_view sItem, bool bExact) const {
  return std::any_of(colItems.begin(), colItems.end(), [&](const std::string& sOther) {
    return bExact ? sOther == sItem : UpperText(sOther) == UpperText(sItem);
  });
}

void clsMRU::AddUniqueItemToCollection(std::string_view sItem) {
  if (sItem.empty()) return;
  bChanged_ = true;
  std::erase_if(colItems, [&](const std::string& sOther) { return EqualNoCase(sOther, sItem); });
  if (!colItems.empty() && Count() >= lMaxItems_) colItems.erase(colItems.begin());
  colItems.emplace_back(sItem);
}

void clsMRU::WriteCollectionToIniFile() {
  if (bDisabled || !bChanged_) return;
  std::vector<IniEntry> entries;
  for (const std::string& sItem : colItems) {
    entries.push_back({sSection_, sSection_ + std::to_string(entries.size() + 1), sItem});
  }
  entries.push_back({sSection_, sSection_ + std::to_string(entries.size() + 1), std::string(kDone)});
  bChanged_ = !WritePrivateProfileStrings(sIniFile_, entries);
}

void clsMRU::ReadIniFileIntoCollection() {
  if (bDisabled) return;
  ClearAllItemsInList();
  clsIniFile file;
  Failure ignored;
  file.Load(sIniFile_, ignored);
  for (int32_t i = 1; i <= lMaxItems_; ++i) {
    const std::string sItem = file.Get(sSection_, sSection_ + std::to_string(i), kAbsent);
    if (sItem == kAbsent || sItem == kDone) break;
    AddUniqueItemToCollection(sItem);
  }
}

void clsMRU::ClearAllItemsInList() {
  colItems.clear();
  bChanged_ = true;
}

}  // namespace quillon
