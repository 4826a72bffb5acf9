#pragma once

#include <cstdlib>
#include <string>

#include "clsConversionOptions.h"
#include "modPaths.h"
#include "modRecipeGlobals.h"
#include "modSettings.h"
#include "modTranslator.h"

namespace quillon {

/// The desktop program's values as at its start, with its data in a folder of the test.
inline void StartAfresh(const std::string& sDataFolder) {
  setenv("APPDATA", sDataFolder.c_str(), 1);
  ResetFoundationGlobals();
  ResetRecipeGlobals();
  ResetTranslator();
  ResetConversionOptions();
  FindSettingsFile();
  gsAppDataFolder = AppDataFolder();
}

}  // namespace quillon
