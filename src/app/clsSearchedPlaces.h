#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "modPathMatch.h"

namespace quillon {

/// The folders and masks that a command's patterns search. Tells of a file that doesn't exist yet whether the next run
/// of the same command would take it for an input.
class clsSearchedPlaces {
 public:
  /// sPattern: folder, separator, mask. Looks at the file system.
  void Add(std::string_view sPattern, bool bSubfolders);
  /// For files that are written under their own name.
  bool WouldFind(const std::string& sPath);
  /// For files that are written under a private name first, ".quillon-" and six characters.
  bool WouldFindOutput(const std::string& sPath);
  /// The path with the links of its folder resolved, as far as it exists.
  std::string RealPath(const std::string& sPath);

 private:
  struct Place {
    std::string sFolder;  ///< Links resolved, a separator behind
    clsPathMatch mask;
    bool bSubfolders;
  };
  bool IsSearched(const Place& place, const std::string& sFolder) const;
  const std::string& ResolvedFolder(const std::string& sPath);

  std::vector<Place> places_;
  std::unordered_map<std::string, std::string> resolved_;  ///< As written, and where it leads
};

}  // namespace quillon
