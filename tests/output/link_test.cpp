#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <string_view>

#include "clsCellStore.h"
#include "clsOutputFile.h"
#include "clsSpool.h"
#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "modColumnLetters.h"
#include "modEventLoop.h"
#include "modExcelLink.h"

namespace quillon {
namespace {

TEST(ColumnLetters, CountLikeASheetAndRefuseWithABox) {
  clsTestHost host;
  EXPECT_EQ(NumToAlpha(host, 26), "Z");
  EXPECT_EQ(NumToAlpha2(host, 26) + NumToAlpha2(host, 27) + NumToAlpha2(host, 52) + NumToAlpha2(host, 53), "ZAAAZBA");
  EXPECT_EQ(NumToAlpha2(host, 702), "ZZ");
  EXPECT_EQ(ColumnLetters(703) + ColumnLetters(16384), "AAAXFD");
  EXPECT_EQ(AlphaToNum(host, "z"), 26);
  EXPECT_EQ(AlphaToNum2(host, "a") + AlphaToNum2(host, "AA") + AlphaToNum2(host, "zZ"), 1 + 27 + 702);
  EXPECT_EQ(ColumnOfLetters("xfd"), 16384);
  for (const char* sLetters : {"", "XFE", "A1"}) EXPECT_EQ(ColumnOfLetters(sLetters), 0) << sLetters;
  EXPECT_TRUE(host.messages.empty());

  for (const int32_t nColumn : {0, 703}) EXPECT_EQ(NumToAlpha2(host, nColumn), "");
  EXPECT_EQ(NumToAlpha(host, 27), "");
  for (const char* sLetters : {"", "AAA", "A1"}) EXPECT_EQ(AlphaToNum2(host, sLetters), 0);
  EXPECT_EQ(AlphaToNum(host, "AA"), 0);
  ASSERT_EQ(host.messages.size(), 7u);
  EXPECT_EQ(host.messages[0].sText, "unexpected number code in xl.NumToAlpha2!");
  EXPECT_EQ(host.messages[2].sText, "unexpected number code in utilities.NumToAlpha!");
  EXPECT_EQ(host.messages[3].sText, "unexpected letter code in xl.AlphaToNum2!");
  EXPECT_EQ(host.messages[6].sText, "unexpected Letter code in utilities.AlphaToNum!");
  EXPECT_EQ(host.messages[6].icon, MessageIcon::Critical);
}

TEST(ExcelLink, TellsTheFormatByTheWholePath) {
  EXPECT_EQ(OutputFormatOfPath("C:\\out\\a.xlsx"), kFormatXlsx);
  EXPECT_EQ(OutputFormatOfPath("a.Xls"), kFormatXls);
  EXPECT_EQ(OutputFormatOfPath("/in.csv/a.xlsx"), kFormatCsv);
  EXPECT_EQ(OutputFormatOfPath("report.txt"), kFormatNone);
}

TEST(ExcelLink, NumbersOfTheNextReportDoNotTakeTheFormatsOfTheLastOne) {
  clsTempFolder folder;
  for (const char* const pName : {"a.xlsx", "a.xls"}) {
    const auto run = [&](std::initializer_list<std::string_view> texts) {
      Failure failure;
      auto workbook = OpenExcelWorkbook(folder.Path(pName), {});
      if (const auto used = workbook->ActiveUsedRange()) workbook->ClearContents(1, *used, failure);
      int64_t nRow = 0;
      for (const std::string_view sText : texts) workbook->WriteCell(1, ++nRow, 1, sText, failure);
      EXPECT_TRUE(SaveExcelWorkbookAs(*workbook, folder.Path(pName), OutputFormatOfPath(pName), failure))
          << failure.sText;
    };
    const std::initializer_list<std::string_view> next = {"12.75", "12/31/2024", "Total", "5", "0.5", "TRUE"};
    run({"$5", "12", "(1.5)", "7%", "12/31/2024", "1,234.5"});
    run(next);
    auto workbook = OpenExcelWorkbook(folder.Path(pName), {});
    int64_t nRow = 0;
    for (const std::string_view sText : next) {
      std::string sShown;
      Failure failure;
      EXPECT_TRUE(workbook->ReadCell(1, ++nRow, 1, sShown, failure));
      EXPECT_EQ(sShown, sText) << pName;
    }
    const std::string sSecond = folder.Read(pName);
    run(next);
    EXPECT_EQ(folder.Read(pName).size(), sSecond.size()) << pName << " grows from run to run";
  }
}

/// The reason for which every cell write fails; saving must fail with it too and leave the file.
std::string Refusal(const clsTempFolder& folder, std::string_view sName) {
  const bool bFile = std::filesystem::is_regular_file(folder.Path(sName));
  const std::string sBefore = bFile ? folder.Read(sName) : "";
  auto workbook = OpenExcelWorkbook(folder.Path(sName), {});
  Failure failure, saving;
  EXPECT_FALSE(workbook->WriteCell(1, 1, 1, "x", failure));
  EXPECT_FALSE(SaveExcelWorkbookAs(*workbook, folder.Path(sName), OutputFormatOfPath(sName), saving));
  EXPECT_EQ(failure.sText, saving.sText);
  if (bFile) {
    EXPECT_EQ(folder.Read(sName), sBefore);
  }
  return failure.sText;
}

TEST(ExcelLink, WhatCannotBeOpenedRefusesEveryCellWithAReason) {
  clsTempFolder folder;
  folder.Write("empty.xlsx", "");
  folder.Write("text.xls", "no workbook");
  folder.Write("zip.xls", "PK\3\4 and so on");
  folder.Write("old.xlsx", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
  folder.Write("folder.xlsx/x", "");
  EXPECT_NE(Refusal(folder, "empty.xlsx").find("is empty"), std::string::npos);
  EXPECT_NE(Refusal(folder, "text.xls").find("no workbook"), std::string::npos);
  EXPECT_NE(Refusal(folder, "zip.xls").find("Rename it"), std::string::npos);
  EXPECT_NE(Refusal(folder, "old.xlsx").find("Rename it"), std::string::npos);
  EXPECT_NE(Refusal(folder, "folder.xlsx").find("is a folder"), std::string::npos);
  EXPECT_NE(Refusal(folder, "missing/a.xlsx").find("folder does not exist"), std::string::npos);
  EXPECT_FALSE(folder.Has("missing"));

  auto workbook = NewExcelWorkbook(kFormatXlsx, {});
  Failure failure;
  ASSERT_TRUE(workbook->SaveAs(folder.Path("open.xlsx"), kFormatXlsx, failure));
  folder.Write(".~lock.open.xlsx#", "somebody");
  EXPECT_NE(Refusal(folder, "open.xlsx").find("open in another program"), std::string::npos);
}

TEST(NewXlsx, SheetsAreFoundByNameAndNumber) {
  auto workbook = NewExcelWorkbook(kFormatXlsx, {});
  Failure failure;
  ASSERT_EQ(workbook->SheetCount(), 2);
  EXPECT_TRUE(workbook->SetSheetName(1, "Ledger (P1)", failure));
  EXPECT_FALSE(workbook->SetSheetName(2, "LEDGER (p1)", failure));
  EXPECT_FALSE(workbook->SetSheetName(2, std::string(32, 'x'), failure));
  EXPECT_FALSE(workbook->SetSheetName(2, "a/b", failure));
  EXPECT_FALSE(workbook->SetSheetName(3, "c", failure));
  EXPECT_TRUE(workbook->SetSheetName(2, std::string(31, 'x'), failure));
  EXPECT_TRUE(ActivateWorksheet(*workbook, "ledger (P1)"));
  EXPECT_TRUE(ActivateWorksheet(*workbook, "2"));
  EXPECT_FALSE(ActivateWorksheet(*workbook, "3"));
  EXPECT_FALSE(ActivateWorksheet(*workbook, ""));
}

TEST(NewXlsx, ReadsBackWhatItWasAskedToKeep) {
  for (const bool bReadBack : {false, true}) {
    WorkbookOptions options;
    options.bReadBack = bReadBack;
    auto workbook = NewExcelWorkbook(kFormatXlsx, options);
    Failure failure;
    std::string sText = "before";
    ASSERT_TRUE(workbook->WriteCell(1, 2, 2, " 007 ", failure));
    EXPECT_EQ(workbook->ReadCell(1, 2, 2, sText, failure), bReadBack);
    EXPECT_EQ(sText, bReadBack ? " 007 " : "");
    EXPECT_TRUE(workbook->ReadCell(1, 9, 9, sText, failure));
    EXPECT_EQ(sText, "");
    EXPECT_FALSE(workbook->ReadCell(1, 0, 1, sText, failure));
  }
}

TEST(NewXlsx, AFailedSaveLeavesTheOldFileAndCanBeRepeated) {
  clsTempFolder folder;
  auto workbook = NewExcelWorkbook(kFormatXlsx, {});
  Failure failure;
  ASSERT_TRUE(workbook->WriteCell(1, 1, 1, "x", failure));
  EXPECT_FALSE(workbook->SaveAs(folder.Path("missing/a.xlsx"), kFormatXlsx, failure));
  EXPECT_FALSE(workbook->SaveAs(folder.Path("a.xls"), kFormatXls, failure));
  EXPECT_TRUE(workbook->SaveAs(folder.Path("a.xlsx"), kFormatXlsx, failure));
  EXPECT_TRUE(workbook->SaveAs(folder.Path("b.xlsx"), kFormatXlsx, failure));
  EXPECT_EQ(folder.Read("a.xlsx"), folder.Read("b.xlsx"));
}

/// Turns of opening, one change and saving.
int TurnsOfChange(const std::string& sPath, bool bGiveUp, Failure& failure) {
  int nTurns = 0;
  const clsEventLoop loop([&] {
    ++nTurns;
    gbAbandonOutput = bGiveUp;
    return !bGiveUp;
  });
  auto workbook = OpenExcelWorkbook(sPath, {});
  EXPECT_TRUE(workbook->WriteCell(1, 2, 2, "changed", failure)) << failure.sText;
  SaveExcelWorkbookAs(*workbook, sPath, OutputFormatOfPath(sPath), failure);
  gbAbandonOutput = false;
  return nTurns;
}

TEST(ExcelLink, GivesTurnsWhileALargeWorkbookIsMadeReadAndSaved) {
  clsTempFolder folder;
  for (const char* const pName : {"a.xlsx", "a.xls"}) {
    const std::string sPath = folder.Path(pName);
    Failure failure;
    int nTurns = 0;
    {
      const clsEventLoop loop([&] { return ++nTurns > 0; });
      auto workbook = OpenExcelWorkbook(sPath, {});
      std::mt19937 chance(5);
      for (int64_t nRow = 1; nRow <= 20000; ++nRow)
        for (int nColumn = 1; nColumn <= 10; ++nColumn)
          workbook->WriteCell(1, nRow, nColumn, "t" + std::to_string(chance()) + std::to_string(chance()), failure);
      ASSERT_TRUE(SaveExcelWorkbookAs(*workbook, sPath, OutputFormatOfPath(pName), failure));
    }
    EXPECT_GE(nTurns, 5) << pName;
    EXPECT_GE(TurnsOfChange(sPath, false, failure), 10) << pName;
    EXPECT_FALSE(failure.Failed());
    const std::string sBefore = folder.Read(pName);
    TurnsOfChange(sPath, true, failure);
    EXPECT_TRUE(IsStopped(failure)) << pName << failure.sText;
    EXPECT_TRUE(folder.Read(pName) == sBefore) << "a save given up keeps the old file";
  }
}

TEST(CellStore, HoldsTheLastTextOfEveryCellInWhateverOrder) {
  clsCellStore store;
  std::mt19937 chance(7);
  constexpr int kRows = 40, kColumns = 300;
  std::vector<std::string> expected(kRows * kColumns);
  std::vector<bool> written(expected.size());
  for (int i = 0; i < 60000; ++i) {
    const size_t nCell = chance() % expected.size();
    expected[nCell].assign(chance() % 40 == 0 ? 20000 : chance() % 6, static_cast<char>('a' + chance() % 26));
    written[nCell] = true;
    store.Write(static_cast<int64_t>(nCell / kColumns) + 1, static_cast<int>(nCell % kColumns) + 1, expected[nCell]);
  }
  std::vector<StoredCell> cells;
  for (size_t nRow = 0; nRow < kRows; ++nRow) {
    store.Row(static_cast<int64_t>(nRow) + 1, cells);
    auto cell = cells.begin();
    for (size_t nColumn = 0; nColumn < kColumns; ++nColumn) {
      const size_t nCell = nRow * kColumns + nColumn;
      std::string_view sText;
      ASSERT_EQ(store.Read(static_cast<int64_t>(nRow) + 1, static_cast<int>(nColumn) + 1, sText), written[nCell]);
      if (!written[nCell]) continue;
      ASSERT_EQ(sText, expected[nCell]);
      ASSERT_NE(cell, cells.end());
      ASSERT_EQ(cell->nColumn, static_cast<int>(nColumn) + 1);
      ASSERT_EQ((cell++)->sText, expected[nCell]);
    }
    ASSERT_EQ(cell, cells.end());
  }
}

TEST(Spool, GivesBackInOrderWhatOverflowsMemory) {
  clsTempFolder folder;
  clsSpool spool;
  std::string sAll;
  std::mt19937 chance(3);
  while (sAll.size() < clsSpool::kMemoryBytes + (size_t{3} << 20)) {
    std::string sPiece(chance() % 200000, '\0');
    for (char& ch : sPiece) ch = static_cast<char>(chance());
    spool.Write(sPiece);
    sAll += sPiece;
  }
  Failure failure;
  clsOutputFile file;
  ASSERT_TRUE(file.Open(folder.Path("all"), failure) && spool.CopyTo(file, failure) && file.Commit(failure));
  EXPECT_EQ(folder.Read("all"), sAll);
  std::string sRead(5000, '\0');
  for (const size_t nOffset :
       {size_t{12345}, clsSpool::kMemoryBytes - 100, clsSpool::kMemoryBytes + 100, sAll.size() - 9}) {
    const size_t nRead = spool.ReadAt(static_cast<int64_t>(nOffset), sRead.data(), sRead.size());
    ASSERT_GT(nRead, 0u);
    EXPECT_EQ(sRead.substr(0, nRead), sAll.substr(nOffset, nRead));
  }
}

}  // namespace
}  // namespace quillon
