#include <gtest/gtest.h>

#include "clsTestHost.h"
#include "modRunLog.h"
#include "modSettings.h"

namespace quillon {
namespace {

class RunLog : public testing::Test {
 protected:
  RunLog() { gbCommandLineMode = true; }
  ~RunLog() override { ResetFoundationGlobals(); }
  clsTestHost host;
  clsConversionOptions options;
  clsRunLog log{host, options};
};

TEST_F(RunLog, EntryHasUpToThreeLinesAndKeepsItsCode) {
  EXPECT_TRUE(log.Report({-2001, "Error [-2001]", "one%lf%two", "three", EntryType::Warning, true}));
  log.Report({-2, "", "only the second", "", EntryType::Error, true});
  log.Report({0, "plain", "", "", EntryType::Other, true});
  EXPECT_EQ(log.txtLog(),
            "!!!!!!!!!! Error [-2001]\r\n    one\r\ntwo\r\n    three\r\n    only the second\r\n!!!!!!!!!! plain");
  EXPECT_EQ(log.lWarningCount, 1);
  EXPECT_EQ(log.lErrorCount, 1);
  log.Report({-7, "x", "", "", EntryType::Error, true});
  EXPECT_EQ(options.sErr1, "");
  EXPECT_EQ(options.lErr, -7);
}

TEST_F(RunLog, ColumnWarningsComeOnceARun) {
  for (int i = 0; i < 3; ++i) {
    log.Report({-5005, "a", "", "", EntryType::Warning, true});
    log.Report({-5006, "b", "", "", EntryType::Error, true});
  }
  EXPECT_EQ(log.txtLog(), "!!!!!!!!!! a\r\n!!!!!!!!!! b");
  EXPECT_EQ(log.lWarningCount + log.lErrorCount, 2);
  log.LogClear(false);
  EXPECT_EQ(options.lErr, 0);
  EXPECT_TRUE(log.Report({-5005, "a", "", "", EntryType::Warning, true}));
  EXPECT_EQ(log.txtLog(), "!!!!!!!!!! a");
}

TEST_F(RunLog, BoxesGoByTheReporterWithWindowsAndByTheJobWithout) {
  const auto boxes = [this](bool bUnattended, bool bVerbose, bool bWanted) {
    host.messages.clear();
    gbCommandLineMode = bUnattended;
    options.bVerbose = bVerbose;
    log.Report({-1, "title", "text", "third", EntryType::Error, bWanted});
    return host.messages.size();
  };
  EXPECT_EQ(boxes(true, false, true), 0u);
  EXPECT_EQ(boxes(false, true, false), 0u);
  EXPECT_EQ(boxes(false, false, true), 1u);
  EXPECT_EQ(boxes(true, true, false), 1u);
  EXPECT_EQ(host.messages.at(0).sTitle, "title");
  EXPECT_EQ(host.messages.at(0).sText, "text\r\n\r\nthird");
}

TEST_F(RunLog, TextShowsABoxInAVerboseUnattendedRunAlone) {
  log.LogAddText("quiet");
  options.bVerbose = true;
  log.LogAddText("a%lf%b");
  ASSERT_EQ(host.messages.size(), 1u);
  EXPECT_EQ(host.messages[0].sTitle, "Command Line: Messages Enabled");
  EXPECT_EQ(log.txtLog(), "quiet\r\na\r\nb");
}

TEST_F(RunLog, ViewSeesEveryByteOnce) {
  struct View : clsRunLogView {
    std::string sShown;
    void LogReplaced(std::string_view sText) override { sShown = sText; }
    void LogAppended(std::string_view sBytes) override { sShown += sBytes; }
  } view;
  log.SetView(&view);
  setenv("TZ", "UTC", 1);
  log.LogClear(true);
  EXPECT_EQ(view.sShown, "Quillon Log [01/02/24 03:04:05]");
  for (int i = 0; i < 3; ++i) log.LogAddText("row");
  EXPECT_EQ(view.sShown, log.txtLog());
}

}  // namespace
}  // namespace quillon
