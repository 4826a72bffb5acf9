#pragma once
// Path texts. A path text may use "\" or "/"; both separate. Nothing here touches a file unless it says so.

#include <string>
#include <string_view>

namespace quillon {

/// The host path that a path text names: a leading "X:" becomes what QUILLON_DRIVE_X holds (or nothing), each "\" a
/// "/". If that exact name doesn't exist, each component is matched without regard to case (the first in byte order
/// wins); components that don't exist are taken as given. Looks at the file system.
std::string HostPath(std::string_view sPath);

/// Byte position behind the last separator; 0 if there is none.
size_t BehindLastSeparator(std::string_view sPath);
bool HasSeparator(std::string_view sPath);
/// The separator that the program adds to this text: "/" if it holds "/" and no "\", else "\".
char SeparatorFor(std::string_view sPath);
/// The folder and a separator behind it, unless it ends in one.
std::string WithSeparator(std::string_view sFolder);
/// Folder, separator (one at most), name.
std::string JoinPath(std::string_view sFolder, std::string_view sName);

/// Up to and including the last separator; "" if there is none.
std::string FolderOfPath(std::string_view sPath);
/// Removes one at most.
std::string RemoveTrailingBackslash(std::string_view sPath);
/// Base name, ".", extension: a name with no extension gets a trailing ".".
std::string FileNameOfPath(std::string_view sPath);
/// Name behind the last separator without its extension.
std::string BaseNameOfPath(std::string_view sPath);
/// Behind the last "." of the name, without it; "" if there is none.
std::string ExtensionOfPath(std::string_view sPath);
/// Without the last component and its separator; "" if there is none. The root's parent is "".
std::string ParentFolderOfPath(std::string_view sPath);
/// Made absolute against the current directory, in the separators of the text.
std::string AbsolutePath(std::string_view sPath);
/// "C:" or "\\server\share"; "" if there is neither.
std::string DriveOrShareRoot(std::string_view sPath, bool bTrailingBackslash);

/// Folder of a special-folder number (5, 26, 28, 35, 36, 38, 40, 42, 46); "(error)" if there is none.
std::string SpecialFolder(int lFolderId);
/// The form for the settings: other words for a failure. Same numbers. No caller yet.
std::string GetSpecialFolderPath(int lFolderId);
/// Trims sPath and replaces the first known token (%APPDATA% ..., or "~/" in front) by its folder, in place and as
/// result.
std::string ExpandFolderTokens(std::string& sPath);
std::string ExpandedPath(std::string_view sPath);

/// Folder of the running program, links resolved (host path, no separator behind).
std::string ProgramFolder();
/// A file or folder that is shipped with the program: beside it, in share/quillon beside its bin, or in the source
/// tree's data; the first that exists, else the place beside the program. Looks at the file system.
std::string ShippedPath(std::string_view sName);

}  // namespace quillon
