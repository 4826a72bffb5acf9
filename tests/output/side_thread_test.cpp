// A second thread for packing: the bytes of one thread, and no error of it is lost.

#include "clsSideThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>

#include "clsDeflater.h"
#include "clsSpool.h"
#include "clsTempFolder.h"
#include "modExcelLink.h"

namespace quillon {
namespace {

/// Sets the use of side threads, and puts back what was.
class clsThreads {
 public:
  explicit clsThreads(bool bUse) { UseSideThreads(bUse); }
  clsThreads(const clsThreads&) = delete;
  clsThreads& operator=(const clsThreads&) = delete;
  ~clsThreads() { UseSideThreads(bBefore_); }

 private:
  bool bBefore_ = UsesSideThreads();
};

TEST(SideThread, TakesEveryPieceInOrderAsItWasPut) {
  std::string sTaken, sAll, sPiece;
  clsSideThread side([&sTaken](std::string_view sPut) { sTaken.append(sPut).push_back('|'); });
  std::mt19937 chance(11);
  for (int i = 0; i < 5000; ++i) {
    // The caller's memory is another piece's right behind the call.
    sPiece.assign(chance() % 40 == 0 ? 70000 : chance() % 30, static_cast<char>('a' + i % 26));
    sAll.append(sPiece).push_back('|');
    side.Put(sPiece);
    sPiece.assign(sPiece.size(), '#');
  }
  side.Finish();
  EXPECT_TRUE(sTaken == sAll);
}

TEST(SideThread, WhatItThrowsComesOutOnceAndNothingIsTakenBehindIt) {
  for (const int nBad : {0, 1, 50, 99}) {
    std::atomic<int> nTaken = 0;
    clsSideThread side([&](std::string_view) {
      if (nTaken++ == nBad) throw std::runtime_error("piece " + std::to_string(nBad));
    });
    std::string sReason;
    try {
      for (int i = 0; i < 100; ++i) side.Put("x");
      side.Finish();
    } catch (const std::runtime_error& error) {
      sReason = error.what();
    }
    EXPECT_EQ(sReason, "piece " + std::to_string(nBad));
    EXPECT_THROW(side.Finish(), std::runtime_error) << "who asks again hears it again";
    EXPECT_EQ(nTaken, nBad + 1);
  }
}

TEST(SideThread, DroppedWithPiecesWaitingItEndsAfterTheOneInHand) {
  std::atomic<int> nTaken = 0;
  std::atomic<bool> bGo = false;
  {
    clsSideThread side([&](std::string_view) {
      ++nTaken;
      while (!bGo) std::this_thread::yield();
    });
    for (int i = 0; i < 4; ++i) side.Put("x");
    while (nTaken == 0) std::this_thread::yield();
    bGo = true;
  }
  const int nAtEnd = nTaken;
  EXPECT_GE(nAtEnd, 1);
  EXPECT_LE(nAtEnd, 4);
  std::this_thread::yield();
  EXPECT_EQ(nTaken, nAtEnd) << "nothing runs behind its end";
}

/// The packed bytes of so many that arrive in pieces of so many.
std::string Packed(const std::string& sAll, size_t nPiece, bool bThreads, uint32_t& nCrc) {
  const clsThreads threads(bThreads);
  clsSpool spool;
  clsDeflater deflater(spool);
  for (size_t n = 0; n < sAll.size(); n += nPiece) deflater.Write(std::string_view(sAll).substr(n, nPiece));
  deflater.Close(true);
  nCrc = deflater.Crc();
  EXPECT_EQ(deflater.Size(), static_cast<int64_t>(sAll.size()));
  std::string sPacked(static_cast<size_t>(spool.Size()), '\0');
  for (size_t n = 0; n < sPacked.size();)
    n += spool.ReadAt(static_cast<int64_t>(n), sPacked.data() + n, sPacked.size() - n);
  return sPacked;
}

TEST(SideThread, PacksTheSameBytesAsOneThread) {
  constexpr size_t kLarge = size_t{4} << 20;
  std::mt19937 chance(3);
  std::string sAll;
  while (sAll.size() < 3 * kLarge) sAll += "<c r=\"A" + std::to_string(chance() % 9999) + "\"><v>1</v></c>";
  for (const auto& [nBytes, nPiece] : std::initializer_list<std::pair<size_t, size_t>>{{0, 1},
                                                                                       {kLarge - 1, 65536},
                                                                                       {kLarge, 65536},
                                                                                       {kLarge + 1, 1000},
                                                                                       {3 * kLarge, 65536},
                                                                                       {3 * kLarge, sAll.size()}}) {
    uint32_t nAlone = 0, nBeside = 1;
    const std::string sPart = sAll.substr(0, nBytes);
    const std::string sAlone = Packed(sPart, nPiece, false, nAlone);
    EXPECT_TRUE(sAlone == Packed(sPart, nPiece, true, nBeside)) << nBytes << " in pieces of " << nPiece;
    EXPECT_EQ(nAlone, nBeside);
  }
}

TEST(SideThread, ALargeWorkbookIsTheSameFileAndReadsBack) {
  clsTempFolder folder;
  for (const bool bThreads : {false, true}) {
    const clsThreads threads(bThreads);
    Failure failure;
    auto workbook = NewExcelWorkbook(kFormatXlsx, {});
    for (int64_t nRow = 1; nRow <= 40000; ++nRow)
      for (int nColumn = 1; nColumn <= 5; ++nColumn)
        workbook->WriteCell(1, nRow, nColumn, std::to_string(nRow * 7919 % 10007) + ".5 x", failure);
    ASSERT_TRUE(workbook->SaveAs(folder.Path(bThreads ? "two.xlsx" : "one.xlsx"), kFormatXlsx, failure));
  }
  EXPECT_TRUE(folder.Read("one.xlsx") == folder.Read("two.xlsx"));
  const clsThreads threads(true);
  Failure failure;
  auto workbook = OpenExcelWorkbook(folder.Path("two.xlsx"), {});
  std::string sText;
  EXPECT_TRUE(workbook->ReadCell(1, 40000, 5, sText, failure)) << failure.sText;
  EXPECT_EQ(sText, std::to_string(int64_t{40000} * 7919 % 10007) + ".5 x");
}

}  // namespace
}  // namespace quillon
