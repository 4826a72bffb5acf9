#include "modBatchPlan.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(BatchPlan, NamesTheOutputOfEachInput) {
  struct Case {
    const char *sOutput, *sInput, *sRelative;
    bool bBeside;
    const char* sPath;
  };
  for (const Case& c : {
           Case{"out/*.csv", "in/a.txt", "", false, "out/a.csv"},
           Case{"out/*.csv", "in/sub/deep/a.b.txt", "sub/deep/", false, "out/sub/deep/a.b.csv"},
           Case{"*.xlsx", "in/a.txt", "", false, "a.xlsx"},
           Case{"out/x-*-y.csv", "/in/a", "", false, "out/x-a-y.csv"},
           Case{"out/*.csv", "in/report.txt.gz", "", false, "out/report.csv"},
           Case{"out/*.csv", "in/Größe *.txt", "", false, "out/Größe *.csv"},
           Case{"o*t/all.csv", "in/a.txt", "sub/", false, "o*t/sub/all.csv"},
           Case{"out/*.csv", "in/sub/a.txt", "sub/", true, "in/sub/a.csv"},
           Case{"*.csv", "a.txt", "", true, "a.csv"},
       }) {
    EXPECT_EQ(OutputPathFor(c.sOutput, c.sInput, c.sRelative, c.bBeside), c.sPath) << c.sOutput << " of " << c.sInput;
  }
}

}  // namespace
}  // namespace quillon
