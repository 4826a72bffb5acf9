#include "modPaths.h"

#include <dirent.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "clsKnownPaths.h"
#include "modFolderNames.h"
#include "modText.h"

namespace quillon {

namespace {

bool IsSeparator(char c) {
  return c == '\\' || c == '/';
}

bool Exists(const std::string& sHostPath) {
  struct stat info {};
  return lstat(sHostPath.c_str(), &info) == 0;
}

/// The path text in host form, existing or not.
std::string PlainHostPath(std::string_view sPath) {
  std::string sOut;
  if (sPath.size() >= 2 && sPath[1] == ':' && IsAsciiLetter(sPath[0])) {
    const std::string sVariable = std::string("QUILLON_DRIVE_") + static_cast<char>(sPath[0] & ~0x20);
    const char* pDrive = std::getenv(sVariable.c_str());
    if (pDrive != nullptr) sOut = pDrive;
    sPath.remove_prefix(2);
    if (!sOut.empty() && !sPath.empty() && !IsSeparator(sPath.front())) sOut += '/';
  }
  for (const char c : sPath) sOut += c == '\\' ? '/' : c;
  return sOut;
}

/// The entry of the folder that equals the name, which it doesn't hold, but for case; the first in byte order, the name
/// itself if none does.
std::string FoldedEntry(const std::string& sFolder, const std::string& sName) {
  if (!MayHoldName(sFolder, sName)) return sName;
  DIR* const pFolder = opendir(sFolder.empty() ? "." : sFolder.c_str());
  if (pFolder == nullptr) return sName;
  std::string sBest;
  while (const dirent* const pEntry = readdir(pFolder)) {
    const std::string_view sEntry = pEntry->d_name;
    if (EqualNoCase(sEntry, sName) && (sBest.empty() || sEntry < sBest)) sBest = sEntry;
  }
  closedir(pFolder);
  return sBest.empty() ? sName : sBest;
}

std::string MatchingEntry(const std::string& sFolder, const std::string& sName) {
  return Exists(sFolder + sName) ? sName : FoldedEntry(sFolder, sName);
}

std::string HomeFolder() {
  const char* const pHome = std::getenv("HOME");
  if (pHome != nullptr && *pHome != '\0') return pHome;
  const passwd* const pUser = getpwuid(geteuid());  // A service may be started without that variable.
  return pUser == nullptr || pUser->pw_dir == nullptr ? "" : pUser->pw_dir;
}

std::string FolderFromEnvironment(const char* pVariable, const char* pOther, std::string_view sBelowHome) {
  for (const char* const pName : {pVariable, pOther}) {
    const char* const pValue = pName == nullptr ? nullptr : std::getenv(pName);
    if (pValue != nullptr && *pValue != '\0') return pValue;
  }
  return HomeFolder() + std::string(sBelowHome);
}

/// XDG_DOCUMENTS_DIR of the user's user-dirs.dirs, else ~/Documents.
std::string DocumentsFolder() {
  const std::string sHome = HomeFolder();
  const std::string sFile = FolderFromEnvironment("XDG_CONFIG_HOME", nullptr, "/.config") + "/user-dirs.dirs";
  std::string sFolder = sHome + "/Documents";
  if (FILE* const pFile = std::fopen(sFile.c_str(), "r")) {
    std::array<char, 4096> line{};
    while (std::fgets(line.data(), static_cast<int>(line.size()), pFile) != nullptr) {
      const std::string_view sLine = line.data();
      constexpr std::string_view kKey = "XDG_DOCUMENTS_DIR=\"";
      const size_t nEnd = sLine.rfind('"');
      if (!sLine.starts_with(kKey) || nEnd < kKey.size()) continue;
      sFolder = ReplaceAll(sLine.substr(kKey.size(), nEnd - kKey.size()), "$HOME", sHome);
    }
    std::fclose(pFile);
  }
  return sFolder;
}

std::string_view NameOf(std::string_view sPath) {
  return sPath.substr(BehindLastSeparator(sPath));
}

}  // namespace

std::string HostPath(std::string_view sPath) {
  const std::string sPlain = PlainHostPath(sPath);
  if (sPlain.empty() || clsKnownPaths::Knows(sPlain)) return sPlain;
  if (Exists(sPlain)) {
    clsKnownPaths::Note(sPlain);
    return sPlain;
  }
  // Mostly it is a file to be made in a folder that is there.
  const size_t nName = sPlain.rfind('/') + 1;
  const std::string sFolder = sPlain.substr(0, nName);
  if (nName > 0 && nName < sPlain.size() && sFolder.find("//") == std::string::npos && Exists(sFolder)) {
    return sFolder + FoldedEntry(sFolder, sPlain.substr(nName));
  }
  std::string sOut = sPlain.front() == '/' ? "/" : "";
  bool bFollow = true;
  for (size_t i = 0; i < sPlain.size();) {
    const size_t nEnd = std::min(sPlain.find('/', i), sPlain.size());
    const std::string sName = sPlain.substr(i, nEnd - i);
    if (!sName.empty()) {
      const std::string sMatch = bFollow ? MatchingEntry(sOut, sName) : sName;
      sOut += sMatch;
      bFollow = bFollow && Exists(sOut);
      if (nEnd < sPlain.size()) sOut += '/';
    }
    i = nEnd + 1;
  }
  return sOut;
}

size_t BehindLastSeparator(std::string_view sPath) {
  return sPath.find_last_of("\\/") + 1;
}

bool HasSeparator(std::string_view sPath) {
  return sPath.find_first_of("\\/") != std::string_view::npos;
}

char SeparatorFor(std::string_view sPath) {
  const bool bSlash = sPath.find('/') != std::string_view::npos;
  return bSlash && sPath.find('\\') == std::string_view::npos ? '/' : '\\';
}

std::string WithSeparator(std::string_view sFolder) {
  std::string sOut(sFolder);
  if (sOut.empty() || !IsSeparator(sOut.back())) sOut += SeparatorFor(sFolder);
  return sOut;
}

std::string JoinPath(std::string_view sFolder, std::string_view sName) {
  return WithSeparator(sFolder) + std::string(sName);
}

std::string FolderOfPath(std::string_view sPath) {
  return std::string(sPath.substr(0, BehindLastSeparator(sPath)));
}

std::string RemoveTrailingBackslash(std::string_view sPath) {
  if (!sPath.empty() && IsSeparator(sPath.back())) sPath.remove_suffix(1);
  return std::string(sPath);
}

std::string FileNameOfPath(std::string_view sPath) {
  return BaseNameOfPath(sPath) + "." + ExtensionOfPath(sPath);
}

std::string BaseNameOfPath(std::string_view sPath) {
  const std::string_view sName = NameOf(sPath);
  return std::string(sName.substr(0, sName.rfind('.')));
}

std::string ExtensionOfPath(std::string_view sPath) {
  const std::string_view sName = NameOf(sPath);
  const size_t nPoint = sName.rfind('.');
  return nPoint == std::string_view::npos ? std::string() : std::string(sName.substr(nPoint + 1));
}

std::string ParentFolderOfPath(std::string_view sPath) {
  const size_t nLast = sPath.find_last_not_of("\\/");
  if (nLast == std::string_view::npos) return {};
  const std::string_view sTrimmed = sPath.substr(0, nLast + 1);
  const size_t nSeparator = sTrimmed.find_last_of("\\/");
  if (nSeparator == std::string_view::npos) return {};
  const std::string_view sParent = sTrimmed.substr(0, nSeparator);
  // A root keeps its separator: "/a" lies in "/", "C:\a" in "C:\".
  const bool bRoot = sParent.empty() || (sParent.size() == 2 && sParent[1] == ':');
  return std::string(sTrimmed.substr(0, nSeparator + (bRoot ? 1 : 0)));
}

std::string AbsolutePath(std::string_view sPath) {
  const bool bDrive = sPath.size() >= 2 && sPath[1] == ':' && IsAsciiLetter(sPath[0]);
  if (bDrive || (!sPath.empty() && IsSeparator(sPath.front()))) return std::string(sPath);
  std::error_code error;
  std::string sFolder = std::filesystem::current_path(error).string();
  if (sPath.empty()) return sFolder;
  if (sPath.find('\\') != std::string_view::npos) {
    for (char& c : sFolder) c = c == '/' ? '\\' : c;
  }
  return JoinPath(sFolder, sPath);
}

std::string DriveOrShareRoot(std::string_view sPath, bool bTrailingBackslash) {
  std::string sRoot;
  const size_t nColon = sPath.find(':', 1);
  const size_t nShare = sPath.find("\\\\");
  if (nColon != std::string_view::npos) {
    sRoot = sPath.substr(nColon - 1, 2);
  } else if (nShare != std::string_view::npos) {
    const std::string_view sRest = sPath.substr(nShare + 2);
    const size_t nFirst = sRest.find('\\');
    if (nFirst != std::string_view::npos) {
      const size_t nSecond = std::min(sRest.find('\\', nFirst + 1), sRest.size());
      sRoot = "\\\\" + std::string(sRest.substr(0, nSecond));
    }
  }
  return sRoot.empty() || !bTrailingBackslash ? sRoot : sRoot + "\\";
}

std::string SpecialFolder(int lFolderId) {
  switch (lFolderId) {
    case 5:
      return DocumentsFolder();
    case 26:
      return FolderFromEnvironment("APPDATA", "XDG_CONFIG_HOME", "/.config");
    case 28:
      return FolderFromEnvironment("LOCALAPPDATA", "XDG_DATA_HOME", "/.local/share");
    case 35:
      return "/var/lib/quillon";
    case 40:
      return HomeFolder();
    case 46:
      return HomeFolder() + "/Public";
    default:
      return "(error)";
  }
}

std::string GetSpecialFolderPath(int lFolderId) {
  const std::string sFolder = SpecialFolder(lFolderId);
  return sFolder == "(error)" ? "Folder Not Valid On this OS" : sFolder;
}

std::string ExpandFolderTokens(std::string& sPath) {
  struct Token {
    std::string_view sTest, sReplaced;
    int lFolderId;
  };
  // %HOMEPATH% passes the first test and stays as it is.
  static constexpr std::array<Token, 8> kTokens{{{"%USERPROFILE%", "%USERPROFILE%", 40},
                                                 {"%HOMEPATH%", "%USERPROFILE%", 40},
                                                 {"%APPDATA%", "%APPDATA%", 26},
                                                 {"%LOCALAPPDATA%", "%LOCALAPPDATA%", 28},
                                                 {"%WINDIR%", "%WINDIR%", 36},
                                                 {"%PROGRAMFILES(X86)%", "%PROGRAMFILES(X86)%", 42},
                                                 {"%PROGRAMFILES%", "%PROGRAMFILES%", 38},
                                                 {"%MYDOCUMENTS%", "%MYDOCUMENTS%", 5}}};
  sPath = std::string(TrimBlanks(sPath));
  if (sPath == "~" || sPath.starts_with("~/")) return sPath.replace(0, 1, HomeFolder());
  if (sPath.find('%') == std::string::npos) return sPath;
  for (const Token& token : kTokens) {
    if (FindNoCase(sPath, token.sTest) == std::string_view::npos) continue;
    std::string sFolder = SpecialFolder(token.lFolderId);
    if (sFolder == "(error)") return sPath;
    const bool bBackslashes = sPath.find('/') == std::string::npos && sPath.find('\\') != std::string::npos;
    if (bBackslashes) sFolder = ReplaceAll(sFolder, "/", "\\");
    sPath = ReplaceAllNoCase(sPath, token.sReplaced, sFolder);
    return sPath;
  }
  return sPath;
}

std::string ExpandedPath(std::string_view sPath) {
  std::string sOut(sPath);
  return ExpandFolderTokens(sOut);
}

std::string ProgramFolder() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? "." : program.parent_path().string();
}

std::string ShippedPath(std::string_view sName) {
  const std::string sProgram = ProgramFolder();
  const std::string sBeside = sProgram + "/" + std::string(sName);
  // Installed: bin beside share. Build tree: build*/bin below the source tree.
  for (const std::string& sFolder : {sProgram, sProgram + "/../share/quillon", sProgram + "/../../data"}) {
    const std::string sPath = sFolder + "/" + std::string(sName);
    std::error_code error;
    if (!Exists(sPath)) continue;
    const std::filesystem::path clean = std::filesystem::weakly_canonical(sPath, error);
    return error ? sPath : clean.string();
  }
  return sBeside;
}

}  // namespace quillon
