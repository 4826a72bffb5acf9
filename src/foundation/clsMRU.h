#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

class clsIniFile;

/// A bounded list of recently used texts, kept in one section of the settings file. The oldest entry comes first.
/// Entries are told apart without regard to case.
class clsMRU {
 public:
  std::vector<std::string> colItems;
  bool bDisabled = false;  ///< The list neither reads nor writes the settings file

  /// Reads the file; if nothing was read and sDefaultItems isn't "-1", it is split at commas and its pieces added.
  void Setup(int32_t lMaxItems, std::string_view sIniFile, std::string_view sSection, std::string_view sDefaultItems);
  void ShutDown() { WriteCollectionToIniFile(); }
  bool bItemExistsInMRU(std::string_view sItem, bool bExact) const;  ///< No caller yet
  /// Moves or adds the item to the newest place; the oldest gives way. An empty text is ignored.
  void AddUniqueItemToCollection(std::string_view sItem);
  /// Writes the entries and "MRU_DONE" behind them, if the list was changed. Where another process has written the list
  /// meanwhile, what was added here is added to that one.
  void WriteCollectionToIniFile();
  void ReadIniFileIntoCollection();
  void ClearAllItemsInList();
  int32_t Count() const { return static_cast<int32_t>(colItems.size()); }
  /// Entry n counted from the newest (1), as lists and menus show them.
  const std::string& FromNewest(int32_t n) const { return colItems[colItems.size() - static_cast<size_t>(n)]; }

 private:
  std::vector<std::string> ItemsOf(const clsIniFile& file) const;
  void AddNewest(std::vector<std::string>& items, std::string_view sItem) const;

  int32_t lMaxItems_ = 0;
  std::string sSection_;
  std::string sIniFile_;
  bool bChanged_ = false;
  std::vector<std::string> read_;   ///< As the file had it last
  std::vector<std::string> added_;  ///< Since then, oldest first
  bool bCleared_ = false;           ///< Since then
};

}  // namespace quillon
