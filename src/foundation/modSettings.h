#pragma once
// Where the program's files lie, and the values that are one for the whole process.

#include <string>
#include <string_view>

#include "clsCodePage.h"
#include "clsIniFile.h"

namespace quillon {

extern std::string gsSettingsFile;   ///< The INI file of the settings
extern std::string gsDataFolder;     ///< Its folder, no separator behind; Profiles lies in it
extern std::string gsAppDataFolder;  ///< Per-user data folder, with a separator behind
extern bool gbCommandLineMode;       ///< True while a run is unattended
extern bool gbSuppressChanges;       ///< The program itself is filling controls

/// Puts the values above back to their start values.
void ResetFoundationGlobals();

/// Path of the settings file; sets gsDataFolder. Makes the folder and leaves the probe's key in the file. The first
/// result is kept until ResetFoundationGlobals.
std::string FindSettingsFile();
/// True if a settings file can be kept at that path: [Main] Partial is written, read back, changed, read again.
bool TestFolderIsWritable(std::string_view sPath);
/// The eleven lines of a new settings file.
void CreateDefaultSettingsFile(std::string_view sPath);
/// %appdata%\Brindlemark, Inc\Quillon\ with the token expanded.
std::string AppDataFolder();

/// [General] sCodePage of the settings: the page of 8-bit files; null for "auto". An unknown name is windows-1252.
const clsCodePage* SystemCodePage();
/// Overrules the setting for this process; nullptr with bAuto False takes the setting again.
void OverrideSystemCodePage(const clsCodePage* pPage, bool bAuto);

/// The per-user store of named values, Store.ini in the data folder.
std::string StoreGet(std::string_view sSection, std::string_view sKey, std::string_view sDefault);
void StoreSet(std::string_view sSection, std::string_view sKey, std::string_view sValue);

}  // namespace quillon
