#include "modFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <random>
#include <vector>

#include "clsOutputFile.h"
#include "modFolderNames.h"
#include "modPaths.h"
#include "modStrings.h"
#include "modSystemIo.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace fs = std::filesystem;

namespace {

bool Look(std::string_view sPath, struct stat& info) {
  return !sPath.empty() && stat(HostPath(sPath).c_str(), &info) == 0;
}

std::string TemporaryFolder() {
  std::error_code error;
  const fs::path folder = fs::temp_directory_path(error);
  return error ? ProgramFolder() : folder.string();
}

}  // namespace

bool FileExists(std::string_view sPath) {
  return !HasWildcards(sPath) && IsFile(TrimBlanks(sPath));
}

bool IsFile(std::string_view sPath) {
  struct stat info {};
  return Look(sPath, info) && !S_ISDIR(info.st_mode);
}

bool FolderExists(std::string_view sFolder) {
  struct stat info {};
  return Look(sFolder, info) && S_ISDIR(info.st_mode);
}

// The folder's own entry always comes back, so this is the test that a folder is there.
bool FolderHasEntries(std::string_view sFolder) {
  return FolderExists(WithSeparator(sFolder));
}

bool PathExists(std::string_view sPath) {
  struct stat info {};
  return Look(sPath, info);
}

bool IsSameFile(std::string_view sPath1, std::string_view sPath2) {
  struct stat info1 {};
  struct stat info2 {};
  return Look(sPath1, info1) && Look(sPath2, info2) && info1.st_dev == info2.st_dev && info1.st_ino == info2.st_ino;
}

std::string NearestExistingPath(std::string_view sPath) {
  const std::string sExpanded = ExpandedPath(sPath);
  const std::string sFolder = FolderOfPath(sExpanded);
  if (FolderExists(sFolder)) return sFolder;
  for (size_t n = sFolder.size(); n > 3;) {
    const std::string_view sCut = std::string_view(sFolder).substr(0, --n);
    if (HasSeparator(sCut.substr(sCut.size() - 1)) && FolderExists(sCut)) {
      return std::string(sCut) + FileNameOfPath(sExpanded);
    }
  }
  return sExpanded;
}

std::string DeepestExistingFolder(std::string_view sPath) {
  const std::string sRoot = DriveOrShareRoot(sPath, false);
  size_t nRoot = sPath.starts_with(sRoot) ? sRoot.size() : 0;  // A colon further on belongs to a folder's name.
  if (HasSeparator(sPath.substr(nRoot, 1))) ++nRoot;
  std::string_view sRest = sPath.substr(nRoot);
  std::string sCandidate(sPath.substr(0, nRoot));
  std::string sDeepest = FolderExists(sCandidate) ? sCandidate : "";
  while (!sRest.empty()) {
    const size_t nEnd = std::min(sRest.find_first_of("\\/"), sRest.size());
    const std::string_view sName = sRest.substr(0, nEnd);
    const std::string_view sSeparator = sRest.substr(nEnd, 1);
    sRest.remove_prefix(nEnd + sSeparator.size());
    if (sName.empty()) continue;
    sCandidate.append(sName);
    if (!FolderExists(sCandidate)) break;
    sDeepest = sCandidate;
    sCandidate.append(sSeparator);
  }
  return sDeepest;
}

void MakeFolderPath(std::string_view sFolder) {
  std::error_code ignored;
  fs::create_directories(HostPath(sFolder), ignored);
}

bool CopyFileOver(std::string_view sSource, std::string_view sTarget) {
  const int nSource = OpenHandle(HostPath(sSource), O_RDONLY);
  if (nSource < 0) return false;
  clsOutputFile target;
  Failure ignored;
  std::vector<char> block(size_t{64} << 10);
  int64_t nGot = target.Open(sTarget, ignored) ? 1 : -1;
  while (nGot > 0) {
    nGot = ReadHandle(nSource, block.data(), block.size());
    if (nGot > 0) target.Write({block.data(), static_cast<size_t>(nGot)});
  }
  struct stat info {};
  const bool bDone = nGot == 0 && fstat(nSource, &info) == 0 && target.Commit(ignored);
  close(nSource);
  // A copy of a script can be run, and one of a shipped file changed.
  if (bDone) chmod(HostPath(sTarget).c_str(), (info.st_mode & 0777) | S_IWUSR);
  return bDone;
}

bool MoveFileOver(std::string_view sSource, std::string_view sTarget) {
  return !IsSameFile(sSource, sTarget) && CopyFileOver(sSource, sTarget) && DeleteFileForced(sSource);
}

bool CopyFolderOver(std::string_view sSource, std::string_view sTarget, bool bOverwrite) {
  std::error_code error;
  fs::directory_iterator entries(HostPath(sSource), error);
  if (!error) MakeFolderPath(sTarget);
  bool bDone = !error && FolderExists(sTarget);
  for (; bDone && !error && entries != fs::directory_iterator(); entries.increment(error)) {
    const std::string sFrom = entries->path().string();
    const std::string sTo = JoinPath(sTarget, entries->path().filename().string());
    bDone = FolderExists(sFrom) ? CopyFolderOver(sFrom, sTo, bOverwrite)
                                : (bOverwrite || !PathExists(sTo)) && CopyFileOver(sFrom, sTo);
  }
  return bDone && !error;
}

bool DeleteFileForced(std::string_view sPath) {
  const std::string sHost = HostPath(sPath);
  const bool bDone = unlink(sHost.c_str()) == 0;
  if (bDone) NoteOwnChange(sHost);
  return bDone;
}

bool DeleteFileWithRetry(clsHost& host, std::string_view sPath) {
  constexpr int kTries = 20;
  for (int i = 0; i <= kTries; ++i) {
    if (!FileExists(sPath) || DeleteFileForced(sPath)) return true;
    if (i < kTries) host.Wait(1000);
  }
  return false;
}

int OpenOrdinaryFile(std::string_view sPath, int64_t& nBytes, Failure& failure) {
  // Without O_NONBLOCK the opening of a pipe would wait for a writer before its kind could be looked at.
  const int nHandle = OpenHandle(HostPath(sPath), O_RDONLY | O_NONBLOCK);
  struct stat info {};
  if (nHandle < 0 || fstat(nHandle, &info) != 0) {
    failure = SystemFailure(sPath, errno);
  } else if (S_ISDIR(info.st_mode)) {
    failure = SystemFailure(sPath, EISDIR);
  } else if (!S_ISREG(info.st_mode)) {
    failure = OwnFailure(sPath, Translate("Not an ordinary file"));
  } else {
    nBytes = info.st_size;
    return nHandle;
  }
  if (nHandle >= 0) CloseHandle(nHandle);
  return -1;
}

std::time_t FileDateLastModified(std::string_view sPath) {
  struct stat info {};
  return Look(sPath, info) ? info.st_mtime : 0;
}

bool GetFileTimes(std::string_view sPath, FileTimes& times, bool bLocal) {
  struct stat info {};
  if (!Look(sPath, info)) return false;
  const auto shift = [&](std::time_t moment) {
    std::tm parts{};
    localtime_r(&moment, &parts);
    return bLocal ? moment + parts.tm_gmtoff : moment;
  };
  // The system keeps no time of creation that every file system knows; the status change stands for it.
  times = {shift(info.st_ctime), shift(info.st_atime), shift(info.st_mtime)};
  return true;
}

int64_t FileSizeOf(std::string_view sPath) {
  struct stat info {};
  return Look(sPath, info) ? static_cast<int64_t>(info.st_size) : -1;
}

std::string UniqueTempFileName(std::string_view sFolder, std::string_view sPrefix, std::string_view sExtension) {
  const std::string_view sName = TrimBlanks(sPrefix);
  const std::string_view sEnd = TrimBlanks(sExtension).empty() ? "TMP" : TrimBlanks(sExtension);
  const size_t nDigits = CharCount(sName) < 8 ? 8 - CharCount(sName) : 0;
  const std::string sPlace = WithSeparator(sFolder.empty() ? TemporaryFolder() : std::string(sFolder));
  std::mt19937 random(static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count()));
  std::uniform_int_distribution<int> whole(0, 99999999);
  const auto nTries = static_cast<int>(std::pow(10.0, static_cast<double>(nDigits)));
  for (int i = 0; i < nTries; ++i) {
    const std::string sDigits = std::to_string(whole(random)).substr(0, nDigits);
    const std::string sCandidate = sPlace + std::string(sName) + sDigits + "." + std::string(sEnd);
    if (!FileExists(sCandidate)) return sCandidate;
  }
  return {};
}

bool IsFolderWriteable(std::string_view sPath) {
  if (sPath.empty()) return false;
  const std::string sFile = UniqueTempFileName(DeepestExistingFolder(sPath), "", "");
  const std::string sHost = HostPath(sFile);
  const int nHandle = open(sHost.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (nHandle < 0) return false;
  constexpr std::string_view kLine = "Hello World\r\n";
  const bool bWritten = write(nHandle, kLine.data(), kLine.size()) == static_cast<ssize_t>(kLine.size());
  const bool bClosed = close(nHandle) == 0;
  unlink(sHost.c_str());
  return bWritten && bClosed;
}

}  // namespace quillon
