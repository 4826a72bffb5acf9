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
  added_.clear();
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
  AddNewest(added_, sItem);
  AddNewest(colItems, sItem);
}

void clsMRU::AddNewest(std::vector<std::string>& items, std::string_view sItem) const {
  std::erase_if(items, [&](const std::string& sOther) { return EqualNoCase(sOther, sItem); });
  if (!items.empty() && static_cast<int32_t>(items.size()) >= lMaxItems_) items.erase(items.begin());
  items.emplace_back(sItem);
}

void clsMRU::WriteCollectionToIniFile() {
  if (bDisabled || !bChanged_) return;
  const bool bWritten = ChangePrivateProfile(sIniFile_, [this](clsIniFile& file) {
    const std::vector<std::string> now = ItemsOf(file);
    if (!bCleared_ && now != read_ && file.HasSection(sSection_)) {
      colItems.clear();
      for (const std::string& sItem : now) AddNewest(colItems, sItem);
      for (const std::string& sItem : added_) AddNewest(colItems, sItem);
    }
    int32_t i = 1;
    for (const std::string& sItem : colItems) file.Set(sSection_, sSection_ + std::to_string(i++), sItem);
    file.Set(sSection_, sSection_ + std::to_string(i), kDone);
  });
  if (!bWritten) return;
  read_ = colItems;
  added_.clear();
  bChanged_ = bCleared_ = false;
}

std::vector<std::string> clsMRU::ItemsOf(const clsIniFile& file) const {
  std::vector<std::string> items;
  for (int32_t i = 1; i <= lMaxItems_; ++i) {
    std::string sItem = file.Get(sSection_, sSection_ + std::to_string(i), kAbsent);
    if (sItem == kAbsent || sItem == kDone) break;
    items.push_back(std::move(sItem));
  }
  return items;
}

void clsMRU::ReadIniFileIntoCollection() {
  if (bDisabled) return;
  ClearAllItemsInList();
  clsIniFile file;
  Failure ignored;
  file.Load(sIniFile_, ignored);
  read_ = ItemsOf(file);
  for (const std::string& sItem : read_) {
    if (!sItem.empty()) AddNewest(colItems, sItem);
  }
  bCleared_ = false;
}

void clsMRU::ClearAllItemsInList() {
  colItems.clear();
  added_.clear();
  bChanged_ = bCleared_ = true;
}

}  // namespace quillon
