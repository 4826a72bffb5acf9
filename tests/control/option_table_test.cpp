#include "modOptionTable.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "clsTempFolder.h"
#include "modInputChoices.h"
#include "modSettings.h"

namespace quillon {
namespace {

/// Values that a row may have beside that of a new record.
std::vector<std::string> OtherValues(const Option& option) {
  static const std::map<std::string_view, std::vector<std::string>> kWords{
      {"sRecords", {"fixed", "rdw", "blocks", "lines"}},
      {"sCarriageControl", {"asa", "none", "machine", "auto"}},
      {"sPrinterCodes", {"on", "auto"}},
      {"sDateOrder", {"dmy", "ymd", "mdy"}},
      {"sPages", {"2-5", "3-", "-7"}},
      {"sSheetTarget", {"2", "Größe, netto", "a=b;c [d]"}}};
  if (const auto words = kWords.find(option.sName); words != kWords.end()) return words->second;
  if (std::holds_alternative<OptionText>(option.field)) return {"C:\\a b\\%APPDATA%\\*.txt", "x=[y];z#", "Größe"};
  if (std::holds_alternative<OptionNumber>(option.field)) return {"0", "1", "124", "-2147483648", "2147483647"};
  return {"TRUE", "FALSE"};
}

void Put(const Option& option, const std::string& sValue, clsConversionOptions& options) {
  if (const auto* text = std::get_if<OptionText>(&option.field)) options.** text = sValue;
  if (const auto* number = std::get_if<OptionNumber>(&option.field)) options.** number = std::stoi(sValue);
  if (const auto* truth = std::get_if<OptionTruth>(&option.field)) options.** truth = sValue == "TRUE";
}

bool IsKept(const Option& option) {
  return option.bInJob || option.bInJobIfSet;
}

/// All that a job keeps, with the names of the keys.
std::string KeptText(const clsConversionOptions& options) {
  std::string sText;
  for (const Option& option : OptionTable()) {
    if (IsKept(option)) sText += std::string(option.sName) + "=" + OptionValueText(option, options) + "\n";
  }
  return sText;
}

class OptionRows : public testing::Test {
 protected:
  ~OptionRows() override { ResetFoundationGlobals(); }
  /// The record after it was saved over what the file holds and opened again.
  clsConversionOptions Reopened(const clsConversionOptions& options) {
    EXPECT_TRUE(options.SaveConversionJob(folder.Path("job.QLN")));
    clsConversionOptions again;
    again.OpenConversionJob(folder.Path("job.QLN"));
    return again;
  }
  clsTempFolder folder;
};

TEST_F(OptionRows, EachValueOfEachKeyIsReadBackAsWrittenAndMovesNoOther) {
  for (const Option& option : OptionTable()) {
    if (!IsKept(option) || option.sName == "bShowStatusMessages") continue;
    for (const std::string& sValue : OtherValues(option)) {
      clsConversionOptions options;
      Put(option, sValue, options);
      folder.Write("job.QLN", "");
      EXPECT_EQ(KeptText(Reopened(options)), KeptText(options)) << option.sName << " in a new file";
      EXPECT_EQ(KeptText(Reopened(clsConversionOptions())), KeptText(clsConversionOptions()))
          << option.sName << " is taken back in a file that holds " << sValue;
    }
  }
}

TEST_F(OptionRows, AllTogetherAreReadBack) {
  for (const size_t nValue : {size_t{0}, size_t{1}}) {
    clsConversionOptions options;
    for (const Option& option : OptionTable()) {
      if (IsKept(option)) Put(option, OtherValues(option).at(nValue), options);
    }
    options.bVerbose = false;
    EXPECT_EQ(KeptText(Reopened(options)), KeptText(options));
  }
}

TEST_F(OptionRows, WhatAJobKeepsOnlyIfSetIsUnsaidInAJobWithoutIt) {
  folder.Write("job.QLN", "[QLN]\n");
  clsConversionOptions job;
  job.OpenConversionJob(folder.Path("job.QLN"));
  const clsConversionOptions fresh;
  for (const Option& option : OptionTable()) {
    if (!IsKept(option)) continue;
    EXPECT_FALSE(IsOptionSet(option, job)) << option.sName;
    EXPECT_FALSE(IsOptionSet(option, fresh)) << option.sName;
    if (option.bInJobIfSet) {
      EXPECT_EQ(OptionValueText(option, job), OptionValueText(option, fresh)) << option.sName;
    }
  }
}

TEST_F(OptionRows, NoTwoRowsShareAKeyASwitchOrALongName) {
  std::set<std::string> keys, longs;
  std::set<char> switches, shorts;
  for (const Option& option : OptionTable()) {
    EXPECT_TRUE(keys.insert(std::string(option.sName)).second) << option.sName;
    if (option.cSwitch != '\0') {
      EXPECT_TRUE(switches.insert(option.cSwitch).second) << option.sName;
    }
    if (!option.sLong.empty()) {
      EXPECT_TRUE(longs.insert(std::string(option.sLong)).second) << option.sName;
    }
    if (option.cShort != '\0') {
      EXPECT_TRUE(shorts.insert(option.cShort).second) << option.sName;
    }
    const bool bFlag = option.longValue == LongValue::Flag;
    if (!option.sLong.empty()) {
      EXPECT_EQ(std::holds_alternative<OptionTruth>(option.field), bFlag) << option.sName << ": a flag takes no value";
    }
  }
}

TEST(InputChoice, PagesAreOneARangeOrAnOpenEnd) {
  for (const char* const sGood : {"", "1", "2-5", "5-5", "3-", "-7", " 2-5 ", "2147483647", "2147483647-2147483647"}) {
    EXPECT_EQ(WhyNoInputChoice("sPages", sGood), "") << sGood;
  }
  for (const char* const sBad :
       {"0", "-", "0-0", "5-2", "--5", "2--5", "a", "2-b", "2-5-7", "2147483648", "99999999999-", "2,3"}) {
    EXPECT_NE(WhyNoInputChoice("sPages", sBad), "") << sBad;
  }
}

}  // namespace
}  // namespace quillon
