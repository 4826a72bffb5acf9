#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsLineProcessor.h"
#include "clsRecipe.h"
#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "modSettings.h"

namespace quillon {

/// A recipe with all that it works with, its own files in a folder of the test.
class clsRecipeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ResetRecipeGlobals();
    gsAppDataFolder = folder.Path() + "/";
    gbCommandLineMode = true;
    glTabSize = 8;
  }
  void TearDown() override {
    ResetRecipeGlobals();
    ResetFoundationGlobals();
  }
  /// Codes reported since the last call.
  std::vector<int32_t> TakeCodes() {
    std::vector<int32_t> codes = host.Codes();
    host.reports.clear();
    return codes;
  }

  clsTempFolder folder;
  clsTestHost host;
  RecipeOptions options;
  FileAccount account;
  clsRecipe recipe;
  RecipeContext context{host, options, recipe, gLineProcessor(), account};
};

using Codes = std::vector<int32_t>;

}  // namespace quillon
