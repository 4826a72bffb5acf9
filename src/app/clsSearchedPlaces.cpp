#include "clsSearchedPlaces.h"

#include <algorithm>
#include <filesystem>

#include "modPaths.h"

namespace quillon {

namespace {

constexpr std::string_view kPrivateName = ".quillon-000000";

/// The folder's own path as far as it exists, and a separator.
std::string Resolved(std::string_view sFolder) {
  const std::string sHost = HostPath(sFolder.empty() ? "." : sFolder);
  std::error_code error;
  std::string sPath = std::filesystem::weakly_canonical(std::filesystem::absolute(sHost), error).string();
  if (error) sPath = sHost;
  if (sPath.empty() || sPath.back() != '/') sPath += '/';
  return sPath;
}

}  // namespace

void clsSearchedPlaces::Add(std::string_view sPattern, bool bSubfolders) {
  places_.push_back(
      {Resolved(FolderOfPath(sPattern)), clsPathMatch(sPattern.substr(BehindLastSeparator(sPattern))), bSubfolders});
}

bool clsSearchedPlaces::IsSearched(const Place& place, const std::string& sFolder) const {
  return place.bSubfolders ? sFolder.starts_with(place.sFolder) : sFolder == place.sFolder;
}

const std::string& clsSearchedPlaces::ResolvedFolder(const std::string& sPath) {
  const auto [known, fresh] = resolved_.try_emplace(FolderOfPath(sPath));
  if (fresh) known->second = Resolved(known->first);
  return known->second;
}

std::string clsSearchedPlaces::RealPath(const std::string& sPath) {
  return ResolvedFolder(sPath) + sPath.substr(BehindLastSeparator(sPath));
}

bool clsSearchedPlaces::WouldFind(const std::string& sPath) {
  if (places_.empty()) return false;
  const std::string& sFolder = ResolvedFolder(sPath);
  const std::string_view sName = std::string_view(sPath).substr(BehindLastSeparator(sPath));
  return std::any_of(places_.begin(), places_.end(),
                     [&](const Place& place) { return IsSearched(place, sFolder) && place.mask.Matches(sName); });
}

bool clsSearchedPlaces::WouldFindOutput(const std::string& sPath) {
  return WouldFind(sPath) || WouldFind(FolderOfPath(sPath) + std::string(kPrivateName));
}

}  // namespace quillon
