#pragma once

#include <gtest/gtest.h>

#include <cstdlib>

#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "clsTestScreen.h"
#include "frmMain.h"
#include "modFreshStart.h"
#include "modSettings.h"
#include "modTranslator.h"

namespace quillon {

/// A main form in a data folder of its own, with nobody at the screen.
class clsDesktopFixture : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("LC_ALL", "C", 1);
    StartAfresh(folder_.Path());
  }
  void TearDown() override {
    ResetTranslator();
    ResetFoundationGlobals();
  }
  void Load() {
    bool bFirst = false;
    form_.Form_Load(bFirst);
  }
  std::string Data(std::string_view sName) { return "Brindlemark, Inc/Quillon/" + std::string(sName); }
  std::string Text(std::string_view sControl) { return form_.Get(sControl).sText; }

  clsTempFolder folder_;
  clsTestHost host_;
  clsTestScreen screen_;
  clsRunFields fields_;
  clsRunLog log_{host_, gConversionOptions};
  frmMain form_{host_, screen_, gConversionOptions, log_, fields_};
};

}  // namespace quillon
