#include "modReportText.h"

#include <gtest/gtest.h>

#include <functional>

#include "clsEbcdicPage.h"
#include "clsLineReader.h"
#include "clsPageLines.h"
#include "clsPrinterCodes.h"
#include "clsTempFolder.h"

namespace quillon {
namespace {

class ReportText : public testing::Test {
 protected:
  ReportText() { ResetReportInput(); }
  ~ReportText() override { ResetReportInput(); }

  /// The text as lines, or "!" and why there is none.
  std::string Read(std::string_view sBytes, int64_t nMost = 0) {
    const std::string sFile = folder_.Write("in.txt", sBytes);
    clsLineReader reader;
    Failure failure;
    if (!reader.Open(sFile, {.lMostBytes = nMost, .bReport = true}, failure)) return "!" + failure.sText;
    std::string sText;
    for (std::string_view sRow; reader.ReadRow(sRow);) sText.append(reader.CodePage().ToUtf8(sRow)).append("\n");
    notes_.clear();
    for (const std::string& sNote : ReportNotes(sFile)) notes_ += sNote + "\n";
    return sText;
  }

  clsTempFolder folder_;
  std::string notes_;
};

/// ASCII letters as that page has them.
std::string Ebcdic(std::string_view sText, std::string_view sPage = "cp037") {
  const clsEbcdicPage* const pPage = clsEbcdicPage::Find(sPage);
  std::string sBytes;
  for (const char c : sText) {
    int nByte = 0;
    while (pPage->CharOf(static_cast<unsigned char>(nByte)) != static_cast<unsigned char>(c)) ++nByte;
    sBytes += static_cast<char>(nByte);
  }
  return sBytes;
}

std::string Counted(std::string_view sRecord) {
  const size_t n = sRecord.size() + 4;
  return std::string{static_cast<char>(n >> 8), static_cast<char>(n), 0, 0}.append(sRecord);
}

std::string Filled(std::string sText, size_t nLength) {
  sText.resize(nLength, ' ');
  return sText;
}

const std::vector<std::string> kRecords{"1LEDGER OF MAY",      " CASH      1,234.50", "+____",
                                        "0TOTAL     1,234.50", "1LEDGER OF JUNE",     " CASH          7.00"};
const std::string kPrinted =
    "LEDGER OF MAY\nCASH      1,234.50\n\nTOTAL     1,234.50\n\fLEDGER OF JUNE\nCASH          7.00\n";

TEST_F(ReportText, EveryFormOfRecordsGivesTheSameLines) {
  std::string sFixed, sRdw, sBlocks, sNel, sLf;
  for (const std::string& s : kRecords) {
    sFixed += Ebcdic(Filled(s, 133));
    sRdw += Counted(Ebcdic(s));
    sBlocks += Counted(Counted(Ebcdic(s)) + Counted(Ebcdic(" ROW")));
    sNel += Ebcdic(s) + '\x15';
    sLf += Ebcdic(s) + "\x0D\x25";
  }
  ReportInput().bFindKinds = true;
  for (const std::string& sBytes : {sFixed, sRdw, sNel, sLf}) {
    EXPECT_EQ(Read(sBytes), kPrinted);
    EXPECT_NE(notes_.find("EBCDIC (cp037)"), std::string::npos) << notes_;
    EXPECT_NE(notes_.find("ASA carriage control"), std::string::npos) << notes_;
  }
  EXPECT_EQ(Read(sBlocks).find("LEDGER OF MAY\nROW\nCASH"), 0U);
  // Told, the same forms hold text of the report's own page.
  ReportInput() = {.lRecordLength = 30, .carriageControl = CarriageControl::Auto};
  std::string sAscii;
  for (const std::string& s : kRecords) sAscii += Filled(s, 30);
  EXPECT_EQ(Read(sAscii), kPrinted);
  ReportInput() = {.sEbcdicPage = "cp273", .records = RecordForm::Rdw, .carriageControl = CarriageControl::None};
  EXPECT_EQ(Read(Counted("\xC1\x4A\xE0\x5A")), "A\xC3\x84\xC3\x96\xC3\x9C\n");
}

TEST_F(ReportText, RecordsThatAreNoneAreRefused) {
  ReportInput() = {.records = RecordForm::Rdw};
  EXPECT_NE(Read("plain text\n").find("no lengths in front"), std::string::npos);
  EXPECT_NE(Read(Counted("ab") + std::string("\0\x20\0\0x", 5)).find("cut off"), std::string::npos);
  ReportInput() = {.records = RecordForm::Fixed};
  EXPECT_NE(Read("plain text\n").find("--record-length"), std::string::npos);
}

TEST_F(ReportText, PlainTextIsNoEbcdicWhateverItsBytes) {
  ReportInput().bFindKinds = true;
  for (const std::string_view sText : {"A ledger\nof May\n", "\xC1\xC2 \xC3\xC4\xC5 \xC6\n", "1234567890123456789\n"}) {
    Read(sText);
    EXPECT_EQ(notes_, "") << sText;
  }
}

TEST_F(ReportText, MachineCodesMoveThePaperBehindTheLine) {
  const std::string sText = Counted("\x89" + Ebcdic("TITLE")) + Counted("\x11" + Ebcdic("ROW")) +
                            Counted("\x01" + Ebcdic("BOLD")) + Counted("\x09" + Ebcdic("BOLD")) + Counted("\x8B") +
                            Counted("\x09" + Ebcdic("LAST"));
  ReportInput() = {.sEbcdicPage = "cp037", .carriageControl = CarriageControl::Machine};
  ReportInput().records = RecordForm::Rdw;
  EXPECT_EQ(Read(sText), "TITLE\n\fROW\n\nBOLD\n\fLAST\n");
}

TEST_F(ReportText, ABeginningIsEnoughForALook) {
  ReportInput().bFindKinds = true;
  std::string sLong = "\xFF\xFE";
  for (int i = 0; i < 200000; ++i) sLong += std::string("a\0\n\0", 4);
  EXPECT_EQ(Read(sLong, 10), "a\na\na\na\na\n");
}

TEST(PageLines, HidesNothingThatIsPrintedOverOther) {
  const auto join = [](std::string sLine, std::string_view sOver) {
    return JoinOverprint(sOver, sLine) ? sLine : "refused";
  };
  EXPECT_EQ(join("TOTAL", "_____"), "TOTAL");
  EXPECT_EQ(join("_____", "TOTAL"), "TOTAL");
  EXPECT_EQ(join("A   B", " X"), "AX  B");
  EXPECT_EQ(join("\xC3\x84 B", "\xC3\x84-"), "\xC3\x84-B");
  EXPECT_EQ(join("TOTAL", "SUM"), "refused");
}

std::string WithoutCodes(std::string_view sText, size_t nBlock) {
  clsPrinterCodes codes(true);
  std::string sOut;
  for (size_t n = 0; n < sText.size(); n += nBlock) codes.Take(sText.substr(n, nBlock), sOut);
  codes.End(sOut);
  return sOut;
}

TEST(PrinterCodes, LeaveTheTextThatWasPrinted) {
  struct Case {
    std::string sText, sWanted;
  };
  const Case cases[] = {
      {"plain\r\n\fpage\r\nlast", "plain\n\fpage\nlast"},
      {"T\bTO\bOT\bT\n_\ba_\bb\nx\b_\n", "TOT\nab\nx\n"},
      {"\xC3\xA9\b\xC3\xA9t\n", "\xC3\xA9t\n"},
      {"A\bB\nnext\n", "A\nB\nnext\n"},
      {"TOTAL\r_____\r\n", "TOTAL\n"},
      {"a\fb\n", "a\n\fb\n"},
      {"\x1B[1mbold\x1B[0m \x1B[3Cfar\n", "bold    far\n"},
      {"\x1B"
       "E\x1B&l1O\x1B(s0p16.67h8.5v0s0b0Tsmall\x1B&a10Ccol\n",
       "small     col\n"},
      {"x\x1B*b3W\n\x1B"
       "ay\n",
       "xy\n"},
      {"\x1B%-12345X@PJL JOB\n@PJL ENTER LANGUAGE=PCL\nrow\n\x1B%-12345X", "row\n"},
      {std::string("\0n\x0Fu\x0El\n", 7), "nul\n"},
  };
  for (const Case& c : cases) {
    for (const size_t nBlock : {size_t{1}, size_t{3}, size_t{1000}})
      EXPECT_EQ(WithoutCodes(c.sText, nBlock), c.sWanted) << c.sText;
  }
  EXPECT_TRUE(HasPrinterCodes("a\bb") && HasPrinterCodes("\x1B[0m") && HasPrinterCodes("\x1B&l0O"));
  EXPECT_FALSE(HasPrinterCodes("plain\r\n\f text"));
}

}  // namespace
}  // namespace quillon
