#pragma once
// Files and folders. All paths are path texts (see modPaths). Nothing here reports; a caller looks at the result.

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

#include "clsHost.h"
#include "modFailure.h"

namespace quillon {

/// False for "", for wildcards, for a folder and on any failure. Blanks around the name are trimmed.
bool FileExists(std::string_view sPath);
bool IsFile(std::string_view sPath);  ///< An existing path that is no folder, taken as it stands
bool FolderExists(std::string_view sFolder);
bool FolderHasEntries(std::string_view sFolder);  ///< No caller yet
bool PathExists(std::string_view sPath);
/// The same file, by device and number, links resolved. False if either doesn't exist.
bool IsSameFile(std::string_view sPath1, std::string_view sPath2);

std::string NearestExistingPath(std::string_view sPath);
std::string DeepestExistingFolder(std::string_view sPath);

/// Makes all missing levels, ignoring failures.
void MakeFolderPath(std::string_view sFolder);
/// In the manner of clsOutputFile; the copy has the source's permissions, and its owner may write it.
bool CopyFileOver(std::string_view sSource, std::string_view sTarget);
/// False where both are one file, which stays.
bool MoveFileOver(std::string_view sSource, std::string_view sTarget);
/// Copies the folder with all below it. An existing file stops the copy unless bOverwrite.
bool CopyFolderOver(std::string_view sSource, std::string_view sTarget, bool bOverwrite);
bool DeleteFileForced(std::string_view sPath);
/// Up to 20 more tries, a second apart; True at once if the file is absent. No caller yet.
bool DeleteFileWithRetry(clsHost& host, std::string_view sPath);

/// A handle, the caller's to close, and the size of the file that the path text names. -1 with the reason for what is
/// there but no ordinary file, too.
int OpenOrdinaryFile(std::string_view sPath, int64_t& nBytes, Failure& failure);

std::time_t FileDateLastModified(std::string_view sPath);  ///< 0 on failure
struct FileTimes {
  std::time_t created = 0, accessed = 0, written = 0;
};
/// A file that can't be looked at leaves the times as they are and gives False. No caller yet.
bool GetFileTimes(std::string_view sPath, FileTimes& times, bool bLocal);
int64_t FileSizeOf(std::string_view sPath);  ///< -1 on failure

/// A name in the folder that no file has yet; "" if none was found.
std::string UniqueTempFileName(std::string_view sFolder, std::string_view sPrefix, std::string_view sExtension);
/// Whether a file can be made in the deepest existing folder of the path.
bool IsFolderWriteable(std::string_view sPath);

}  // namespace quillon
