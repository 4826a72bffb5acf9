#include "modShard.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "clsFingerprint.h"

namespace quillon {
namespace {

std::vector<std::string> Names(const std::vector<PlannedFile>& files) {
  std::vector<std::string> names;
  for (const PlannedFile& file : files) names.push_back(file.sInput);
  return names;
}

std::vector<std::string> Part(const std::vector<PlannedFile>& files, int32_t lPart, int32_t lParts) {
  ShardSummary ignored;
  return Names(FilesOfShard(files, {lPart, lParts}, ignored));
}

TEST(Shard, IsTwoWholeNumbersAndNothingElse) {
  for (const char* const sGood : {"1/1", "2/8", "8/8", "1000000/1000000", "01/02"}) {
    EXPECT_TRUE(ParseShard(sGood).has_value()) << sGood;
  }
  for (const char* const sBad :
       {"", "/", "1", "0/1", "1/0", "2/1", "-1/2", "1/-2", "+1/2", "1/+2", " 1/2", "1/2 ", "1/2/3", "0x1/2",
        "1000001/1000001", "1/1000001", "4294967297/4294967298", "1/99999999999999999999", "\xD9\xA1/2"}) {
    EXPECT_FALSE(ParseShard(sBad).has_value()) << sBad;
  }
  EXPECT_EQ(ParseShard("3/17")->lPart, 3);
  EXPECT_EQ(ParseShard("3/17")->lParts, 17);
}

TEST(Shard, FollowsTheStatedRuleAtTies) {
  using Strings = std::vector<std::string>;
  const int64_t k = kShardFileWeight;
  // By size, then byte order: big, Z, a, z-, ä (bytes above z), and those of no size behind.
  const std::vector<PlannedFile> files{{"ä", "", k},       {"z", "", k},     {"a", "", k},    {"Z", "", k},
                                       {"big", "", 3 * k}, {"gone", "", -1}, {"empty", "", 0}};
  // big to 1 (weight 4); Z, a to 2 (4); z to 1 as both are equal (6); ä to 2 (6); empty to 1 (7), gone to 2 (7).
  EXPECT_EQ(Part(files, 1, 2), (Strings{"z", "big", "empty"})) << "in the order of the list";
  EXPECT_EQ(Part(files, 2, 2), (Strings{"ä", "a", "Z", "gone"}));
  EXPECT_EQ(Part(files, 1, 9), (Strings{"big"}));
  EXPECT_EQ(Part(files, 9, 9), Strings{}) << "more parts than files";
  EXPECT_EQ(Part({}, 1, 2), Strings{});
}

TEST(Shard, PartsAreTheSameInWhateverOrderTheNamesCameAndLoseNothing) {
  std::vector<PlannedFile> files;
  for (int64_t i = 0; i < 200; ++i) files.push_back({"f" + std::to_string(i), "", (i * i * 7919) % 400'000 - 1});
  std::vector<PlannedFile> other = files;
  std::reverse(other.begin(), other.end());
  std::rotate(other.begin(), other.begin() + 31, other.end());
  std::vector<std::string> all;
  ShardSummary before;
  for (int32_t lPart = 1; lPart <= 7; ++lPart) {
    ShardSummary summary, otherSummary;
    auto names = Names(FilesOfShard(files, {lPart, 7}, summary));
    auto otherNames = Names(FilesOfShard(other, {lPart, 7}, otherSummary));
    EXPECT_EQ(summary.nFiles, names.size());
    EXPECT_EQ(summary.nAllFiles, 200u);
    EXPECT_EQ(summary.sListing, otherSummary.sListing);
    if (lPart > 1) {
      EXPECT_EQ(summary.sListing, before.sListing) << "all parts tell the same number";
    }
    before = summary;
    all.insert(all.end(), names.begin(), names.end());
    std::sort(names.begin(), names.end());
    std::sort(otherNames.begin(), otherNames.end());
    EXPECT_EQ(names, otherNames) << lPart;
  }
  std::sort(all.begin(), all.end());
  EXPECT_EQ(all.size(), 200u);
  EXPECT_EQ(std::unique(all.begin(), all.end()), all.end());
}

TEST(Shard, ListingTellsEachChangeOfANameOrSize) {
  const auto listing = [](const std::vector<PlannedFile>& files) {
    ShardSummary summary;
    FilesOfShard(files, {1, 2}, summary);
    return summary.sListing;
  };
  const std::string sOne = listing({{"a", "x", 5}, {"b", "y", 6}});
  EXPECT_EQ(listing({{"b", "other", 6}, {"a", "output", 5}}), sOne);
  for (const auto& files : std::vector<std::vector<PlannedFile>>{{{"a", "", 6}, {"b", "", 5}},
                                                                 {{"a", "", 5}, {"B", "", 6}},
                                                                 {{"a", "", 5}},
                                                                 {{"a", "", 5}, {"b", "", 6}, {"c", "", -1}},
                                                                 {{"a", "", 5}, {"b", "", -1}},
                                                                 {{"a5", "", 5}, {"b", "", 6}}}) {
    EXPECT_NE(listing(files), sOne);
  }
}

/// Worked out by another program: lists of earlier versions must go on to be understood.
TEST(Fingerprint, IsTheSameNumberOnEveryMachine) {
  EXPECT_EQ(clsFingerprint().Text(), "cbf29ce484222325");
  EXPECT_EQ(clsFingerprint().Add("").Text(), "a8c7f832281a39c5");
  EXPECT_EQ(clsFingerprint().Add("ab").Add("c").Text(), "5091916f8ceeb7b0");
  EXPECT_EQ(clsFingerprint().Add("a").Add("bc").Text(), "d3effa61b782f8b8");
  EXPECT_EQ(clsFingerprint().Add("abc").Text(), "e5f49fafdcdf1048");
  EXPECT_EQ(clsFingerprint().Add(int64_t{-1}).Text(), "2b38678b094ed049");
  EXPECT_EQ(clsFingerprint().Add(std::string_view("\xC3\xA9\0", 3)).Text(), "c73a1ba0436b51b0")
      << "bytes above 127 and zeros";
  EXPECT_EQ(clsFingerprint().Add(std::string(300, 'a')).Text(), "fadb107128902ed2") << "a length of two bytes";
}

}  // namespace
}  // namespace quillon
