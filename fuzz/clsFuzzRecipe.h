#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "clsLineProcessor.h"
#include "clsRecipe.h"
#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "modSettings.h"

namespace quillon {

/// What a fuzz entry of the engine works with: one folder for the whole process, all else fresh for each input.
class clsFuzzRecipe {
 public:
  /// The first byte chooses code page and line ends; the rest is left in sInput.
  clsFuzzRecipe(const uint8_t* pData, size_t nSize)
      : sInput(reinterpret_cast<const char*>(pData), nSize), folder(Folder()) {
    const unsigned char choice = sInput.empty() ? '\0' : static_cast<unsigned char>(sInput.front());
    if (!sInput.empty()) sInput.remove_prefix(1);
    const clsCodePage* const pages[] = {&clsCodePage::Windows1252(), &clsCodePage::Utf8(), clsCodePage::Find("cp437"),
                                        nullptr};
    options.text = {(choice & 4) != 0, pages[choice & 3]};
    options.pRecipePage = pages[choice & 3];
    ResetRecipeGlobals();
    gbCommandLineMode = true;
    glTabSize = (choice >> 3) & 15;
    gsAppDataFolder = folder.Path() + "/";
  }
  /// The input up to the next NUL.
  std::string_view TakePart() {
    const size_t nEnd = std::min(sInput.find('\0'), sInput.size());
    const std::string_view sPart = sInput.substr(0, nEnd);
    sInput.remove_prefix(std::min(nEnd + 1, sInput.size()));
    return sPart;
  }

  std::string_view sInput;
  const clsTempFolder& folder;
  clsTestHost host;
  RecipeOptions options;
  FileAccount account;
  clsRecipe recipe;
  RecipeContext context{host, options, recipe, gLineProcessor(), account};

 private:
  static const clsTempFolder& Folder() {
    static const clsTempFolder theFolder;
    return theFolder;
  }
};

}  // namespace quillon
