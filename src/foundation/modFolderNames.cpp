#include "modFolderNames.h"

#include <dirent.h>
#include <sys/stat.h>

#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "modText.h"

namespace quillon {

namespace {

/// Folded names by hash: a hit is looked at again by its caller, a miss is certain. Names that are gone may stay.
struct KnownFolder {
  dev_t nDevice = 0;
  ino_t nNumber = 0;
  timespec changed{};
  std::unordered_set<uint64_t> names;

  bool IsOf(const struct stat& about) const {
    return nDevice == about.st_dev && nNumber == about.st_ino && changed.tv_sec == about.st_mtim.tv_sec &&
           changed.tv_nsec == about.st_mtim.tv_nsec;
  }
};

// A run writes to one or two folders at a time, a mirrored tree to one after another.
constexpr size_t kMostFolders = 64;
std::unordered_map<std::string, KnownFolder> gKnownFolders;

uint64_t FoldedHash(std::string_view sName) {
  uint64_t hash = 14695981039346656037ULL;  // FNV-1a
  for (size_t pos = 0; pos < sName.size();) {
    hash = (hash ^ FoldChar(DecodeUtf8(sName, pos))) * 1099511628211ULL;
  }
  return hash;
}

bool List(const std::string& sFolder, const struct stat& about, KnownFolder& known) {
  DIR* const pFolder = opendir(sFolder.c_str());
  if (pFolder == nullptr) return false;
  known = {about.st_dev, about.st_ino, about.st_mtim, {}};
  while (const dirent* const pEntry = readdir(pFolder)) known.names.insert(FoldedHash(pEntry->d_name));
  closedir(pFolder);
  return true;
}

std::string KeyOf(const std::string& sFolder) {
  return sFolder.empty() ? "./" : sFolder;
}

}  // namespace

bool MayHoldName(const std::string& sFolder, std::string_view sName) {
  const std::string sKey = KeyOf(sFolder);
  struct stat about {};
  if (stat(sKey.c_str(), &about) != 0) return false;
  if (gKnownFolders.size() >= kMostFolders && !gKnownFolders.contains(sKey)) gKnownFolders.clear();
  KnownFolder& known = gKnownFolders[sKey];
  // The time is taken before the listing: what comes while it is made shows as a change at the next look.
  if (!known.IsOf(about) && !List(sKey, about, known)) {
    gKnownFolders.erase(sKey);
    return false;
  }
  return known.names.contains(FoldedHash(sName));
}

void NoteOwnChange(std::string_view sHostPath) {
  const size_t nName = sHostPath.rfind('/') + 1;
  const auto found = gKnownFolders.find(KeyOf(std::string(sHostPath.substr(0, nName))));
  struct stat about {};
  if (found == gKnownFolders.end() || stat(found->first.c_str(), &about) != 0) return;
  found->second.names.insert(FoldedHash(sHostPath.substr(nName)));
  found->second.changed = about.st_mtim;
}

}  // namespace quillon
