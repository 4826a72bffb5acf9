#include "clsLateLibrary.h"

#include <gtest/gtest.h>

#include "modFailure.h"

namespace quillon {
namespace {

TEST(LateLibrary, WhatIsMissingIsAFailureThatNamesIt) {
  clsLateLibrary none("libquillon-no-such.so.1");
  try {
    none.Find<int()>("anything");
    FAIL();
  } catch (const UnhandledFailure& failure) {
    EXPECT_NE(std::string(failure.what()).find("libquillon-no-such.so.1"), std::string::npos);
  }
  clsLateLibrary maths("libm.so.6");
  EXPECT_EQ(maths.Find<double(double)>("sqrt")(49.0), 7.0);
  EXPECT_THROW(maths.Find<int()>("quillon_no_such"), UnhandledFailure);
}

}  // namespace
}  // namespace quillon
