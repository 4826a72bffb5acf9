#include "modFileStory.h"

#include <gtest/gtest.h>

#include "clsLongRun.h"
#include "modPacking.h"
#include "modProofText.h"

namespace quillon {
namespace {

ReportProof HardProof() {
  ReportProof proof;
  for (size_t i = 0; i < proof.lines.size(); ++i) proof.lines[i] = static_cast<int64_t>(i) * 5'000'000'000;
  proof.loss = {1, 2, 3, 4, 5, 6};
  proof.lTotalsAgree = 7;
  proof.lTotalsLastDigit = 8;
  proof.lTotalsDisagree = 9;
  proof.totals.push_back({2, "Größe;\n", {12, 3, TotalVerdict::Disagrees, "5,140.00", "4100.00"}});
  proof.lLikeRows = 10;
  proof.lMeantLikeRows = 11;
  proof.lFigureLines = 12;
  proof.pages.lPages = 13;
  return proof;
}

/// Each member that somebody asks about has a value of its own, texts that are hard among them.
FileStory HardStory() {
  FileStory story;
  story.nFile = 16384;
  story.events.push_back({true, {-5604, "title", std::string("a\0b", 3), "", EntryType::Warning, false, "/o: full"}});
  story.events.back().icon = MessageIcon::Critical;
  story.events.back().buttons = MessageButtons::NoYes;
  story.events.emplace_back();
  FileOutcome& outcome = story.outcome;
  outcome.sInput = "\xFF\xFE.txt";
  outcome.sOutput = std::string(70'000, 'o');
  outcome.status = FileStatus::Converted;
  outcome.lResult = -2'000'000'000;
  outcome.reasons = {{EntryType::Warning, -7, "a\nb", "here", "cause", true}, {}};
  outcome.account.lLinesRead = 6'000'000'000;
  outcome.account.lLinesInTables = 5;
  outcome.account.lCharactersLost = 4;
  outcome.account.lFormulasRefused = 3;
  outcome.account.lCellsFailed = 2;
  outcome.account.bOutputWritten = true;
  outcome.account.namesRefused = {"", "name"};
  outcome.account.workbookNotes = {"note"};
  outcome.account.tables = {{3, 4, 5, 6, 7, {8, 9, 10, 11, 12, 13}, 14}};
  outcome.account.proof = HardProof();
  story.notes = {"", "über"};
  story.sListLine = "{}";
  return story;
}

/// What a run says of its files as it closes.
std::string Closing(const FileOutcome& outcome) {
  RunTotals totals;
  totals.Add(outcome);
  const ReportProof& proof = totals.proof;
  std::string sText =
      LineKindsText(proof.lines) + "|" + LossText(proof) + "|" + DoubtText(proof) + "|" + TotalsText(proof);
  for (const int64_t l : {totals.lFilesConverted, totals.lTables, totals.lLinesRead, totals.lLinesInTables,
                          totals.lCellsFailed, totals.lCharactersLost, totals.lFormulasRefused}) {
    sText += "|" + std::to_string(l);
  }
  return sText;
}

TEST(FileStory, TellsAllThatARunSaysOfAFile) {
  FileStory told = HardStory();
  FileStory heard;
  ASSERT_TRUE(TakeStory(PackedStory(told), heard));
  EXPECT_EQ(heard.nFile, told.nFile);
  EXPECT_EQ(heard.notes, told.notes);
  EXPECT_EQ(heard.sListLine, told.sListLine);
  EXPECT_EQ(heard.outcome.sInput, told.outcome.sInput);
  EXPECT_EQ(heard.outcome.sOutput, told.outcome.sOutput);
  EXPECT_EQ(heard.outcome.lResult, told.outcome.lResult);
  EXPECT_EQ(heard.outcome.account.namesRefused, told.outcome.account.namesRefused);
  EXPECT_EQ(heard.outcome.account.workbookNotes, told.outcome.account.workbookNotes);
  EXPECT_EQ(Closing(heard.outcome), Closing(told.outcome)) << "the closing line knows no processes";
  EXPECT_EQ(heard.outcome.account.tables.at(0).lLastLine, 5);
  EXPECT_EQ(heard.outcome.account.tables.at(0).lRows, 6);
  EXPECT_EQ(heard.outcome.account.tables.at(0).lColumns, 7);
}

TEST(FileStory, TellsEventsAndReasonsInTheirOrder) {
  FileStory told = HardStory();
  FileStory heard;
  ASSERT_TRUE(TakeStory(PackedStory(told), heard));
  ASSERT_EQ(heard.events.size(), 2u);
  const HostEvent& event = heard.events[0];
  EXPECT_TRUE(event.bMessage);
  EXPECT_FALSE(event.entry.bShowMessageBox);
  EXPECT_EQ(event.entry.lErr, -5604);
  EXPECT_EQ(event.entry.sErr2, std::string("a\0b", 3));
  EXPECT_EQ(event.entry.type, EntryType::Warning);
  EXPECT_EQ(event.entry.sCause, "/o: full");
  EXPECT_EQ(event.icon, MessageIcon::Critical);
  EXPECT_EQ(event.buttons, MessageButtons::NoYes);
  EXPECT_FALSE(heard.events[1].bMessage);
  ASSERT_EQ(heard.outcome.reasons.size(), 2u);
  EXPECT_TRUE(heard.outcome.HasLogged() && heard.outcome.TellsOf("cause"));
  EXPECT_EQ(heard.outcome.reasons[0].sPlace, "here");
  EXPECT_EQ(heard.outcome.reasons[1].type, EntryType::Error);
}

TEST(FileStory, IsNoneWhereItIsCutOffOrGoesOn) {
  FileStory told = HardStory();
  told.outcome.sOutput = "o";
  const std::string sWhole = PackedStory(told);
  for (size_t n = 0; n < sWhole.size(); ++n) {
    FileStory heard;
    ASSERT_FALSE(TakeStory(std::string_view(sWhole).substr(0, n), heard)) << n;
    ASSERT_TRUE(heard.outcome.status == FileStatus::Failed && heard.events.empty() && heard.outcome.reasons.empty())
        << "half a story of " << n << " bytes tells nothing";
  }
  FileStory heard;
  EXPECT_FALSE(TakeStory(sWhole + '\0', heard));
  EXPECT_EQ(heard.outcome.sInput, "");
  EXPECT_FALSE(TakeStory(sWhole + sWhole, heard));
}

TEST(FileStory, IsRefusedOrTakenAsItStandsWhicheverByteIsDamaged) {
  FileStory told = HardStory();
  told.outcome.sOutput = "o";
  const std::string sWhole = PackedStory(told);
  size_t nRefused = 0;
  for (size_t n = 0; n < sWhole.size(); ++n) {
    std::string sBad = sWhole;
    sBad[n] = static_cast<char>(sBad[n] ^ 0xFF);
    FileStory heard;
    if (TakeStory(sBad, heard)) {
      ASSERT_EQ(PackedStory(heard), sBad) << "byte " << n;
    } else {
      ++nRefused;
    }
  }
  EXPECT_GT(nRefused, 100u) << "lengths, counts and truths are all looked at";
}

TEST(Packing, CountsThatLieTakeNoMemory) {
  struct Case {
    const char* sWhat;
    size_t nCount;
  };
  for (const Case& c :
       {Case{"all bits", SIZE_MAX}, Case{"one too many", 5}, Case{"times eight wraps", SIZE_MAX / 8 + 2}}) {
    size_t nCount = c.nCount;
    clsPacker packer;
    packer.Count(nCount);
    packer.Bytes(std::string("four").data(), 4);
    std::vector<int64_t> numbers{1, 2};
    std::string sText = "old";
    clsTaker first(packer.Packed());
    Exchange(first, numbers);
    EXPECT_TRUE(!first.Whole() && numbers.empty()) << c.sWhat;
    clsTaker second(packer.Packed());
    Exchange(second, sText);
    EXPECT_TRUE(!second.Whole() && sText.empty()) << c.sWhat;
  }
}

TEST(Packing, WhatIsNotThereIsZeroAndSoIsAllBehindIt) {
  clsTaker taker(std::string_view("\1\2\3", 3));
  int32_t lFirst = 7;
  uint8_t nSecond = 7;
  bool bThird = true;
  Exchange(taker, lFirst, nSecond, bThird);
  EXPECT_EQ(lFirst, 0);
  EXPECT_EQ(nSecond, 0) << "bytes of the number in front are no number of their own";
  EXPECT_FALSE(bThird);
  EXPECT_FALSE(taker.Whole());
}

}  // namespace
}  // namespace quillon
