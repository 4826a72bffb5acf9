#include "CFileSearch.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <memory>
#include <system_error>

#include "modEventLoop.h"
#include "modFailure.h"
#include "modPaths.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

/// One entry of a folder, before it is tested.
struct CFileSearch::Entry {
  std::string sName;
  bool bFolder = false;
  int32_t lSize = 0;
};

namespace {

// The numbers under which these failures have always been known.
constexpr int32_t kPathNotFound = 3, kAccessDenied = 5;

struct CloseFolder {
  void operator()(DIR* pFolder) const { closedir(pFolder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

}  // namespace

void CFileSearch::Refuse(uint32_t lNumber, std::string_view sText, int32_t& lResult) {
  lResult = lLastErrorNumber_ = static_cast<int32_t>(lNumber);
  sLastErrorDescription_ = sText;
}

void CFileSearch::BuildFileList(std::string_view sFilePath, bool bSearchSubfolders, bool bContinueOnError,
                                int32_t& lResult) {
  lLastErrorNumber_ = 0;
  sLastErrorDescription_.clear();
  sLastErrorFolder_.clear();
  files_.clear();
  if (CharCount(sFilePath) <= 2) return Refuse(kSearchTooShort, "The Invalid path or filename provided.", lResult);

  std::string path(sFilePath);
  if (path[1] == ':' && path[2] != '\\' && path[2] != '/') path.insert(2, 1, '\\');
  const size_t cut = BehindLastSeparator(path);
  if (cut == 0) return Refuse(kSearchNoFolder, "Invalid path or filename provided.", lResult);
  const std::string mask = path.substr(cut);
  if (TrimBlanks(mask).empty()) {
    return Refuse(kSearchNoMask,
                  "No file mask/pattern detected. Please provide a path followed by a mask/pattern i.e. "
                  "c:\\myfile*.d??",
                  lResult);
  }
  BuildFileList1(path.substr(0, cut), mask, bSearchSubfolders, false, bContinueOnError, lResult);
}

void CFileSearch::BuildFileList1(std::string_view spath, std::string_view sFileMask, bool bSearchSubfolders,
                                 bool bExclude, bool bContinueOnError, int32_t& lResult) {
  bSearchSubfolders_ = bSearchSubfolders;
  bMatchValue_ = !bExclude;
  bContinueOnError_ = bContinueOnError;
  mask_ = clsPathMatch(sFileMask);
  lTotalSearched_ = 0;
  lLastErrorNumber_ = 0;
  sLastErrorDescription_.clear();
  sLastErrorFolder_.clear();
  files_.clear();
  above_.clear();

  const auto start = std::chrono::steady_clock::now();
  Walk(WithSeparator(spath));
  const std::chrono::duration<float> elapsed = std::chrono::steady_clock::now() - start;
  fElapsedTime_ = std::round(elapsed.count() * 100) / 100;
  lResult = lLastErrorNumber_;
}

void CFileSearch::NoteFailure(const std::string& sFolder, int nError) {
  sLastErrorFolder_ = sFolder;
  switch (nError) {
    case ENOENT:
    case ENOTDIR:
      lLastErrorNumber_ = kPathNotFound;
      sLastErrorDescription_ = "Path Not Found.";
      break;
    case EACCES:
    case EPERM:
      lLastErrorNumber_ = kAccessDenied;
      sLastErrorDescription_ = "Access Denied.";
      break;
    default:
      lLastErrorNumber_ = nError;
      sLastErrorDescription_ = std::generic_category().message(nError);
  }
}

bool CFileSearch::ReadFolder(const std::string& sFolder, std::vector<Entry>& entries) {
  const OpenFolder folder(opendir(HostPath(sFolder).c_str()));
  struct stat self {};
  if (!folder || fstat(dirfd(folder.get()), &self) != 0) {
    NoteFailure(sFolder, errno);
    return false;
  }
  // A link that leads back to a folder above would make the walk endless.
  const std::pair<uint64_t, uint64_t> identity(self.st_dev, self.st_ino);
  if (std::find(above_.begin(), above_.end(), identity) != above_.end()) return false;
  above_.push_back(identity);

  const auto next = [&folder] {
    errno = 0;
    return readdir(folder.get());
  };
  for (const dirent* item = next(); item != nullptr; item = next()) {
    RunEvents();
    struct stat about {};
    if (fstatat(dirfd(folder.get()), item->d_name, &about, 0) != 0) {
      // A link whose target is gone, or that leads to itself, is no file, nor is what was removed meanwhile.
      if (errno != ENOENT && errno != ELOOP) NoteFailure(sFolder, errno);
      continue;
    }
    // A name with a backslash would lead to another place; such a file is refused as one that isn't there.
    entries.push_back({ReplaceAll(item->d_name, "\\", "?"), S_ISDIR(about.st_mode),
                       static_cast<int32_t>(about.st_size & 0xffffffff)});
  }
  if (errno != 0) NoteFailure(sFolder, errno);
  std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.sName < b.sName; });
  return true;
}

void CFileSearch::Walk(const std::string& sFolder) {
  if (lLastErrorNumber_ != 0 && !bContinueOnError_) return;
  std::vector<Entry> entries;
  if (!ReadFolder(sFolder, entries)) return;
  for (const Entry& entry : entries) {
    if (entry.bFolder) {
      if (bSearchSubfolders_ && entry.sName.front() != '.') Walk(WithSeparator(sFolder + entry.sName));
      continue;
    }
    ++lTotalSearched_;
    if (mask_.Matches(entry.sName) == bMatchValue_) files_.push_back({sFolder + entry.sName, entry.lSize});
  }
  above_.pop_back();
}

}  // namespace quillon
