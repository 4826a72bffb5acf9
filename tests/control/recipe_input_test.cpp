#include "modRecipeInput.h"

#include <gtest/gtest.h>

#include "clsTempFolder.h"
#include "modFailure.h"
#include "modOptionTable.h"

namespace quillon {
namespace {

class RecipeInput : public testing::Test {
 protected:
  std::string Take(const std::string& sInput) {
    return TakeInputOfRecipe(options, folder.Write("r.rcp", "[Header]\n" + sInput + "\n[Table 1]\nInput=pages 9\n"));
  }
  /// What of the record isn't that of a new one.
  std::string Set() const {
    const clsConversionOptions fresh;
    std::string sSet;
    for (const Option& option : OptionTable()) {
      const std::string sValue = OptionValueText(option, options);
      if (sValue != OptionValueText(option, fresh)) sSet += std::string(option.sName) + "=" + sValue + " ";
    }
    return sSet;
  }
  clsTempFolder folder;
  clsConversionOptions options;
};

TEST_F(RecipeInput, FillsWhatIsUnsaid) {
  struct Case {
    const char *sKey, *sSet;
  };
  for (const Case& c : {
           Case{"Input=records fixed, record-length 133, carriage-control asa",
                "sRecords=fixed lRecordLength=133 sCarriageControl=asa "},
           Case{"Input=  RECORDS   rdw  ,printer-codes on,", "sRecords=rdw sPrinterCodes=on "},
           Case{"Input=pages 2-5", "sPages=2-5 "},
           Case{"Input=record-length 32760; of the host", "lRecordLength=32760 "},
           Case{"Input=pages -", ""},
           Case{"Input=", ""},
           Case{"Other=records fixed", ""},
       }) {
    options = clsConversionOptions();
    const std::string sWrong = Take(c.sKey);
    EXPECT_EQ(sWrong.empty(), std::string_view(c.sKey) != "Input=pages -") << c.sKey << ": " << sWrong;
    EXPECT_EQ(Set(), c.sSet) << c.sKey;
  }
}

TEST_F(RecipeInput, OptionsHoldOverItWordByWord) {
  options.sRecords = "lines";
  options.lRecordLength = 80;
  EXPECT_EQ(Take("Input=records fixed, record-length 133, carriage-control asa"), "");
  EXPECT_EQ(Set(), "sRecords=lines lRecordLength=80 sCarriageControl=asa ");
}

TEST_F(RecipeInput, NamesRecipeKeyAndReasonOfAMistakeEvenWhereOptionsHoldOverIt) {
  struct Case {
    const char *sValue, *sReason;
  };
  for (const bool bSaid : {false, true}) {
    for (const Case& c : {
             Case{"record fixed",
                  "\"record\" is none of records, record-length, carriage-control, printer-codes, pages"},
             Case{"records", "records: one of auto, lines, fixed, rdw, blocks is wanted"},
             Case{"records Fixd", "records: one of auto, lines, fixed, rdw, blocks is wanted"},
             Case{"record-length 32761", "record-length: a whole number from 0 to 32760 is wanted"},
             Case{"record-length -1", "record-length: a whole number from 0 to 32760 is wanted"},
             Case{"record-length", "record-length: a whole number from 0 to 32760 is wanted"},
             Case{"jobs 4", "\"jobs\" is none of records, record-length, carriage-control, printer-codes, pages"},
             Case{"pages 5-2", "pages: pages such as 2, 2-5 or 3- are wanted"},
             Case{"--pages 2", "\"--pages\" is none of records, record-length, carriage-control, printer-codes, pages"},
         }) {
      options = clsConversionOptions();
      if (bSaid) options.sRecords = "lines", options.lRecordLength = 5, options.sPages = "1";
      const std::string sBefore = Set();
      EXPECT_EQ(Take("Input=" + std::string(c.sValue)), folder.Path("r.rcp") + ": [Header] Input=" + c.sValue + ": " +
                                                            c.sReason + "; correct this key of the recipe.");
      EXPECT_EQ(Set(), sBefore) << c.sValue;
      EXPECT_THROW(TakeInputOfRecipeOrEnd(options, folder.Path("r.rcp")), UnhandledFailure);
    }
  }
}

TEST_F(RecipeInput, ARecipeThatIsNotThereSaysNothing) {
  EXPECT_EQ(TakeInputOfRecipe(options, ""), "");
  EXPECT_EQ(TakeInputOfRecipe(options, folder.Path("gone.rcp")), "");
  EXPECT_EQ(TakeInputOfRecipe(options, folder.Path()), "");
  EXPECT_EQ(Set(), "");
}

}  // namespace
}  // namespace quillon
