// Work that takes long, and the box that stands over the window meanwhile.

#include "frmWorking.h"

#include "clsDesktopFixture.h"
#include "modEventLoop.h"
#include "modFiles.h"

namespace quillon {
namespace {

class Working : public clsDesktopFixture {
 protected:
  void SetUp() override {
    clsDesktopFixture::SetUp();
    Load();
    screen_.onAlong = [this](clsForm& form) { pBox_ = &form; };
  }
  void PassTime() { host_.lTick += frmWorking::kMoment + 1; }

  clsForm* pBox_ = nullptr;
};

TEST_F(Working, WhatTakesAMomentOnlyShowsABusyPointer) {
  frmWorking working(form_, "Reading");
  bool bBusy = false;
  EXPECT_TRUE(working.Run([&] { bBusy = RunEvents() && form_.bBusyPointer; }));
  EXPECT_TRUE(bBusy);
  EXPECT_EQ(pBox_, nullptr);
  EXPECT_FALSE(form_.bBusyPointer);
}

TEST_F(Working, ABoxTellsHowFarTheWorkIs) {
  frmWorking working(form_, "Reading");
  EXPECT_TRUE(working.Run([&] {
    PassTime();
    EXPECT_TRUE(RunEvents());
    ASSERT_NE(pBox_, nullptr);
    EXPECT_FALSE(form_.bBusyPointer) << "the box can be clicked on";
    EXPECT_EQ(pBox_->Get("lblWhat").sCaption, "Reading");
    EXPECT_EQ(working.Percent(), -1);
    working.Progress(5, 8);
    EXPECT_EQ(working.Percent(), 62);
  }));
}

TEST_F(Working, CancelStopsTheWorkAndNothingThatRunsBeside) {
  frmWorking working(form_, "Reading");
  bool bBesideGoesOn = false;
  host_.onEvents = [&] {
    pBox_->Click("cmdCancel");
    bBesideGoesOn = RunEvents();
  };
  bool bGoesOn = true;
  EXPECT_FALSE(working.Run([&] {
    PassTime();
    bGoesOn = RunEvents();
  }));
  EXPECT_FALSE(bGoesOn);
  EXPECT_TRUE(bBesideGoesOn);
  EXPECT_TRUE(RunEvents()) << "only that work was stopped";
}

TEST_F(Working, AStoppedSearchForTablesLeavesTheJobAsItWas) {
  std::string sReport = "No  Name      Gross\n";
  for (int i = 10; i < 90; ++i) sReport += std::to_string(i) + "  Ann" + std::to_string(i) + "   10.00\n";
  form_.TypeText("cbInputFile", folder_.Write("r.txt", sReport));
  host_.onEvents = [&] { pBox_->Click("cmdCancel"); };
  host_.bTickRuns = true;
  form_.Click("cmdFindTables");
  ASSERT_NE(pBox_, nullptr);
  EXPECT_TRUE(host_.messages.empty());
  EXPECT_EQ(Text("cbRecipeFile"), "");
  EXPECT_FALSE(IsFile(folder_.Path("r.rcp")));
}

}  // namespace
}  // namespace quillon
