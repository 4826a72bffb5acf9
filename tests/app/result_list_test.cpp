#include "clsResultList.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <filesystem>

#include "clsInHandNote.h"
#include "clsTempFolder.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;

class ResultList : public testing::Test {
 protected:
  /// A converted file as it is now, and its line.
  PlannedFile Done(std::string_view sName) {
    const PlannedFile file{folder.Write(std::string(sName) + ".in", "12345"),
                           folder.Write(std::string(sName) + ".out", "123")};
    return file;
  }
  static ResultLine LineOf(const PlannedFile& file, bool bDone = true) {
    ResultLine line;
    line.sInput = file.sInput;
    line.sOutput = file.sOutput;
    line.bDone = bDone;
    line.state = StateOfFile(file.sInput);
    line.lOutputBytes = 3;
    line.sMadeBy = "way";
    return line;
  }
  static std::string TextOf(const PlannedFile& file, bool bDone = true) { return ResultLineText(LineOf(file, bDone)); }
  /// Whether a list of these bytes shows the file as done.
  bool Shows(std::string_view sBytes, const PlannedFile& file, std::string_view sMadeBy = "way") {
    folder.Write("l.jsonl", sBytes);
    clsResultList list;
    EXPECT_TRUE(list.Open(folder.Path("l.jsonl"), failure) && list.Read(failure));
    return list.IsDone(file, sMadeBy);
  }
  /// How many lines of the list are this one; those that are neither this one nor blank count in nOther.
  size_t LinesThatAre(const std::string& sWanted, size_t& nOther) const {
    std::ifstream list(folder.Path("l.jsonl"), std::ios::binary);
    size_t nLines = 0;
    for (std::string sLine; std::getline(list, sLine);) {
      if (!sLine.empty()) ++(sLine == sWanted ? nLines : nOther);
    }
    return nLines;
  }

  clsTempFolder folder;
  Failure failure;
};

TEST_F(ResultList, NamesAndTextsOfAnyBytesAreOneLineOfAsciiSafeJsonAndReadBack) {
  for (const char* const sName : {"plain", "qu\"ote", "li\nne\r", "\xE2\x80\xA8\x7F\x01",
                                  "b\xFF"
                                  "ad\xC3",
                                  "\xEF\xBF\xBD", "Größe ; [x]"}) {
    const PlannedFile file = Done(sName);
    ResultLine line = LineOf(file);
    line.errors.push_back({-1, "a\nb\xFF\t\"" + file.sInput});
    const std::string sLine = ResultLineText(line);
    EXPECT_EQ(std::count_if(sLine.begin(), sLine.end(), [](char c) { return c >= 0 && c < ' '; }), 0) << sName;
    EXPECT_TRUE(Shows(sLine + "\n", file)) << sName;
  }
  const PlannedFile bad = Done("x\xFF");
  const PlannedFile other = Done("x\xFE");
  EXPECT_NE(TextOf(bad).find("\"output_hex\":"), std::string::npos);
  EXPECT_FALSE(Shows(TextOf(bad) + "\n", other)) << "both read as x and U+FFFD";
}

TEST_F(ResultList, LinesThatAreNoneArePassedOver) {
  const PlannedFile file = Done("a");
  const std::string sGood = TextOf(file);
  for (size_t n = 0; n < sGood.size(); n += 5) {
    EXPECT_FALSE(Shows(sGood.substr(0, n), file)) << "torn at " << n;
    EXPECT_TRUE(Shows(sGood.substr(0, n) + "\n" + sGood, file)) << "a whole line without an end counts";
  }
  for (const std::string& sOther :
       {std::string("[]"), std::string("7"), std::string("null"), std::string(R"({"output":7,"status":"failed"})"),
        std::string(R"({"output_hex":"","status":"failed"})"), std::string(200'000, '['), std::string(300, '\0'),
        std::string("\xFF\xFE{}"), std::string(size_t{3} << 20, 'x')}) {
    EXPECT_TRUE(Shows(sOther + "\n" + sGood + "\n" + sOther, file)) << sOther.substr(0, 40);
  }
}

TEST_F(ResultList, TheLastLineOfAnOutputCounts) {
  const PlannedFile file = Done("a");
  const PlannedFile other = Done("b");
  const std::string sDone = TextOf(file) + "\n";
  const std::string sFailed = TextOf(file, false) + "\n";
  const std::string sOther = TextOf(other, false) + "\n";
  EXPECT_TRUE(Shows(sFailed + sDone + sOther, file));
  EXPECT_FALSE(Shows(sDone + sFailed, file));
  EXPECT_FALSE(Shows(sDone + R"({"output":")" + file.sOutput + "\",\"status\":\"of a later program\"}\n", file));
  EXPECT_FALSE(Shows("", file));
}

TEST_F(ResultList, WhateverChangedMeansAgain) {
  const PlannedFile file = Done("a");
  const std::string sList = TextOf(file) + "\n";
  EXPECT_TRUE(Shows(sList, file));
  EXPECT_FALSE(Shows(sList, file, "Way"));
  EXPECT_FALSE(Shows(sList, {Done("b").sInput, file.sOutput}));
  const auto changed = fs::last_write_time(file.sInput);
  fs::last_write_time(file.sInput, changed + std::chrono::nanoseconds(1));
  EXPECT_FALSE(Shows(sList, file)) << "a nanosecond later";
  fs::last_write_time(file.sInput, changed);
  EXPECT_TRUE(Shows(sList, file));
  folder.Write("a.out", "1234");
  EXPECT_FALSE(Shows(sList, file));
  fs::remove(file.sOutput);
  EXPECT_FALSE(Shows(sList, file));
  folder.Write("a.out", "abc");
  EXPECT_TRUE(Shows(sList, file)) << "the size of an output tells that it is whole";
  fs::remove(file.sInput);
  EXPECT_FALSE(Shows(sList, file));
}

TEST_F(ResultList, ATornLineOfAnotherWriterTakesNoLineWithIt) {
  const PlannedFile first = Done("a");
  const PlannedFile second = Done("b");
  folder.Write("l.jsonl", "{\"torn");
  clsResultList list;
  ASSERT_TRUE(list.Open(folder.Path("l.jsonl"), failure));
  ASSERT_TRUE(list.Write(TextOf(first), failure));
  // Another process is killed in the middle of its line while this one lives.
  std::ofstream(folder.Path("l.jsonl"), std::ios::app) << "{\"version\":1,\"inp";
  ASSERT_TRUE(list.Write(TextOf(second), failure));
  const std::string sBytes = folder.Read("l.jsonl");
  EXPECT_EQ(sBytes, "{\"torn\n" + TextOf(first) + "\n{\"version\":1,\"inp\n" + TextOf(second) + "\n");
  EXPECT_TRUE(Shows(sBytes, first));
  EXPECT_TRUE(Shows(sBytes, second));
}

TEST_F(ResultList, WritersTogetherLoseNoLine) {
  constexpr int kWriters = 4, kLines = 150;
  const std::string sLine = "{\"a\":\"" + std::string(40'000, 'x') + "\"}";
  for (int i = 0; i < kWriters; ++i) {
    if (fork() != 0) continue;
    clsResultList list;
    bool bGood = list.Open(folder.Path("l.jsonl"), failure);
    list.Share();
    for (int n = 0; n < kLines; ++n) bGood = bGood && list.Write(sLine, failure);
    _exit(bGood ? 0 : 1);
  }
  for (int i = 0, nStatus = 0; i < kWriters; ++i) {
    ASSERT_GT(wait(&nStatus), 0);
    EXPECT_EQ(nStatus, 0);
  }
  size_t nOther = 0;
  EXPECT_EQ(LinesThatAre(sLine, nOther), size_t{kWriters * kLines});
  EXPECT_EQ(nOther, 0u);
}

TEST_F(ResultList, IsLeftAloneIfItWasThereAndNobodyHasIt) {
  const std::string sFile = folder.Path("l.jsonl");
  clsResultList fresh;
  ASSERT_TRUE(fresh.Open(sFile, failure));
  EXPECT_FALSE(fresh.IsLeftAlone()) << "no earlier run kept it";
  clsResultList second;
  ASSERT_TRUE(second.Open(sFile, failure));
  EXPECT_FALSE(second.IsLeftAlone());
  fresh.Share();
  second.Share();
  {
    clsResultList third;
    ASSERT_TRUE(third.Open(sFile, failure));
    EXPECT_FALSE(third.IsLeftAlone()) << "two share it";
  }
  clsResultList nowhere;
  EXPECT_FALSE(nowhere.Open(folder.Path("no/l.jsonl"), failure));
  EXPECT_NE(failure.sText.find("no/l.jsonl"), std::string::npos);
  folder.Write("old.jsonl", "");
  clsResultList alone;
  ASSERT_TRUE(alone.Open(folder.Path("old.jsonl"), failure));
  EXPECT_TRUE(alone.IsLeftAlone());
  alone.Share();
  EXPECT_FALSE(alone.IsLeftAlone());
}

class InHandNote : public ResultList {
 protected:
  InHandNote() { folder.Write("l.jsonl", ""); }
  static std::string Noted(const std::string& sOutput, std::time_t since) {
    return std::to_string(since) + " " + sOutput + '\0';
  }
  /// The outputs that a note of these bytes lays to a killed run.
  std::vector<std::string> Left(const std::string& sNote, const std::vector<PlannedFile>& files) {
    folder.Write("l.jsonl.now", sNote);
    clsInHandNote note;
    note.Open(folder.Path("l.jsonl"));
    std::vector<std::string> left;
    for (const PlannedFile* const pFile : note.LeftBehind(files)) left.push_back(pFile->sOutput);
    return left;
  }
};

TEST_F(InHandNote, LaysToAKilledRunWhatItNotedAndNobodyTouchedSince) {
  const PlannedFile file = Done("a b\nc");
  const PlannedFile other = Done("other");
  const PlannedFile gone{file.sInput, folder.Path("gone.out")};
  const std::time_t now = std::time(nullptr);
  const std::vector<std::string> kFile{file.sOutput};
  EXPECT_EQ(Left(Noted(gone.sOutput, now) + Noted(file.sOutput, now), {other, file, gone}), kFile);
  EXPECT_EQ(Left(Noted(file.sOutput, now + 50), {file}), kFile);
  const std::vector<std::string> kNone;
  EXPECT_EQ(Left(Noted(file.sOutput, now - 90), {file}), kNone) << "somebody wrote it later";
  EXPECT_EQ(Left(Noted(file.sOutput, now + 90), {file}), kNone) << "it is older than the run";
  EXPECT_EQ(Left(std::to_string(now) + " " + file.sOutput, {file}), kNone) << "the note itself is torn";
  for (const std::string& sBad : {std::string(), std::string(50, '\0'), std::string("x\0 \0 x\0 1\0", 11),
                                  file.sOutput + '\0', " " + file.sOutput + '\0'}) {
    EXPECT_EQ(Left(sBad, {file}), kNone) << sBad;
  }
}

TEST_F(InHandNote, TellsOfWhatIsInHandUntilTheListDoes) {
  const PlannedFile there = Done("there");
  const std::string sNew = folder.Path("new.out");
  {
    clsInHandNote note;
    note.Open(folder.Path("l.jsonl"));
    note.Begin({there.sOutput, sNew});
    EXPECT_NE(folder.Read("l.jsonl.now").find(" " + sNew + '\0'), std::string::npos);
    EXPECT_EQ(folder.Read("l.jsonl.now").find(there.sOutput), std::string::npos) << "an output that is there stays";
    clsInHandNote second;
    second.Open(folder.Path("l.jsonl"));
    second.Begin({folder.Path("second.out")});
    EXPECT_EQ(folder.Read("l.jsonl.now").find("second.out"), std::string::npos) << "one process has the note";
    note.End(sNew);
    EXPECT_EQ(folder.Read("l.jsonl.now"), "");
  }
  EXPECT_FALSE(folder.Has("l.jsonl.now"));
}

}  // namespace
}  // namespace quillon
