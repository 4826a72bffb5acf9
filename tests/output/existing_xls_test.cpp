// Existing .xls workbooks made record by record, so that each can hold what ordinary writers seldom write.

#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-input-memory.h>
#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-output-stdio.h>
#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <vector>

#include "clsTempFolder.h"
#include "clsXlsStringTable.h"
#include "clsXlsWorkbook.h"
#include "modCompoundFile.h"
#include "modXlsLayout.h"
#include "modXlsText.h"

namespace quillon {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

std::string Record(uint16_t nId, std::string_view sData) {
  std::string sOut;
  PutRecord(sOut, nId, sData);
  return sOut;
}

std::string Cell(uint16_t nId, unsigned nRow, unsigned nColumn, std::string_view sRest, unsigned nXf = 15) {
  std::string sData;
  PutU16(sData, nRow);
  PutU16(sData, nColumn);
  PutU16(sData, nXf);
  return Record(nId, sData.append(sRest));
}

/// A formula with a number as its last result.
std::string Formula(unsigned nRow, unsigned nColumn, std::string_view sTokens, double nResult = 0) {
  std::string sRest;
  Put(sRest, nResult);
  PutU16(sRest, 0);
  PutU32(sRest, 0);
  PutU16(sRest, static_cast<unsigned>(sTokens.size()));
  return Cell(xls::kFormula, nRow, nColumn, sRest.append(sTokens));
}

std::string Exp(unsigned nRow, unsigned nColumn) {
  std::string sTokens("\x01");
  PutU16(sTokens, nRow);
  PutU16(sTokens, nColumn);
  return sTokens;
}

std::string AreaOf(unsigned nTop, unsigned nBottom, unsigned nLeft, unsigned nRight) {
  std::string sData;
  PutU16(sData, nTop);
  PutU16(sData, nBottom);
  PutU8(sData, nLeft);
  PutU8(sData, nRight);
  return sData;
}

/// A workbook stream whose sheets have the given cell tables; globals gets what stands before the sheets' names.
std::string StreamOf(const std::vector<std::string>& tables, std::string_view sGlobals = {},
                     std::string_view sStrings = {}) {
  clsXlsFormats formats;
  AddStandardXfs(formats);
  std::string sStream;
  PutGlobalsHead(sStream, "Arial", static_cast<int>(tables.size()), 0, formats);
  sStream.append(sGlobals);
  std::vector<size_t> places;
  for (size_t i = 0; i < tables.size(); ++i) {
    places.push_back(sStream.size() + 4);
    PutBoundSheet(sStream, "Sheet" + std::to_string(i + 1));
  }
  sStream.append(sStrings);
  PutEof(sStream);
  for (size_t i = 0; i < tables.size(); ++i) {
    SetAt(sStream, places[i], static_cast<uint32_t>(sStream.size()));
    const XlsSheetHead head = MakeSheetHead({}, 0, 10, 0, 5);
    sStream += head.sBof + head.sRest + tables[i] + MakeSheetTail(i == 0);
  }
  return sStream;
}

std::string FileOf(const clsTempFolder& folder, std::string_view sStream, std::string_view sName = "Workbook") {
  Failure failure;
  const std::string sPath = folder.Path("a.xls");
  const std::array<std::string_view, 1> pieces = {sStream};
  EXPECT_TRUE(SaveCompoundFile(sPath, nullptr, sName, pieces, failure));
  return sPath;
}

std::string StreamIn(const std::string& sPath) {
  clsCompoundFile file;
  Failure failure;
  std::string sStream;
  EXPECT_TRUE(file.Open(sPath, failure)) << failure.sText;
  EXPECT_TRUE(file.ReadStream("Workbook", sStream));
  return sStream;
}

/// Records of the first sheet's cell table, numbers and data.
std::vector<std::pair<uint16_t, std::string>> TableIn(const std::string& sStream) {
  std::vector<std::pair<uint16_t, std::string>> records;
  clsXlsRecordReader reader(sStream, 0);
  XlsRecord record;
  bool bIn = false;
  while (reader.Next(record) && record.nId != xls::kWindow2) {
    if (bIn) records.emplace_back(record.nId, record.sData);
    bIn = bIn || record.nId == xls::kDimensions;
  }
  return records;
}

std::string Row(unsigned nRow) {
  std::string sData;
  for (const unsigned nValue : {nRow, 0U, 5U, 300U, 0U, 0U, 0x0100U, 15U}) PutU16(sData, nValue);
  return Record(xls::kRow, sData);
}

class ExistingXls : public testing::Test {
 protected:
  std::unique_ptr<clsWorkbook> Open(std::string_view sStream) {
    auto workbook = OpenXlsWorkbook(FileOf(folder_, sStream), {}, failure_);
    EXPECT_NE(workbook, nullptr) << failure_.sText;
    return workbook;
  }
  std::string Read(clsWorkbook& workbook, int nRow, int nColumn) {
    std::string sText;
    EXPECT_TRUE(workbook.ReadCell(1, nRow, nColumn, sText, failure_)) << failure_.sText;
    return sText;
  }
  std::string Saved(clsWorkbook& workbook) {
    EXPECT_TRUE(workbook.SaveAs(folder_.Path("b.xls"), kFormatXls, failure_)) << failure_.sText;
    return StreamIn(folder_.Path("b.xls"));
  }
  clsTempFolder folder_;
  Failure failure_;
};

TEST_F(ExistingXls, ShowsEveryKindOfCell) {
  std::string sText, sNumber, sMulRk, sStrings;
  PutXlsString(sText, "as it was", 2);
  Put(sNumber, 45292.75);
  for (const unsigned nValue : {0U, 2U, 15U}) PutU16(sMulRk, nValue);
  PutU32(sMulRk, 7U << 2 | 2);
  PutU16(sMulRk, 15);
  PutU32(sMulRk, 1234U << 2 | 3);
  PutU16(sMulRk, 3);
  clsXlsStrings strings;
  strings.Add("shared \xE2\x82\xAC");
  clsXlsStringTable().Write(strings, 0, sStrings);
  std::string sStringResult = Formula(1, 1, "\x1E\1\0"sv);
  StoreAt(sStringResult.data() + 10, uint64_t{0xFFFF000000000000});
  const std::string sDateXf = "\0\0\x16\0\1\0\x20\0\0\0\0\0\0\0\0\0\0\0\xC0\x20"s;
  const auto workbook =
      Open(StreamOf({Row(0) + Cell(xls::kLabel, 0, 0, sText) + Cell(xls::kLabelSst, 0, 1, "\0\0\0\0"sv) +
                     Record(xls::kMulRk, sMulRk) + Cell(xls::kBoolErr, 0, 4, "\1\0"sv) + Row(1) +
                     Cell(xls::kBoolErr, 1, 0, "\x2A\1"sv) + sStringResult + Record(xls::kString, sText) +
                     Formula(1, 2, "\x1E\1\0"sv, 2.5) + Cell(xls::kNumber, 1, 3, sNumber, 16)},
                    Record(xls::kXf, sDateXf), sStrings));
  EXPECT_EQ(Read(*workbook, 1, 1), "as it was");
  EXPECT_EQ(Read(*workbook, 1, 2), "shared \xE2\x82\xAC");
  EXPECT_EQ(Read(*workbook, 1, 3), "7");
  EXPECT_EQ(Read(*workbook, 1, 4), "12.34");
  EXPECT_EQ(Read(*workbook, 1, 5), "TRUE");
  EXPECT_EQ(Read(*workbook, 2, 1), "#N/A");
  EXPECT_EQ(Read(*workbook, 2, 2), "as it was");
  EXPECT_EQ(Read(*workbook, 2, 3), "2.5");
  EXPECT_EQ(Read(*workbook, 2, 4), "01/01/2024 18:00:00");
  EXPECT_EQ(Read(*workbook, 9, 9), "");
  EXPECT_EQ(workbook->ActiveUsedRange()->nBottom, 2);
  EXPECT_EQ(workbook->ActiveUsedRange()->nRight, 5);
}

TEST_F(ExistingXls, HandsASharedFormulaOnWhenItsFirstCellIsOverwritten) {
  // B1:B3 share "the cell to the left, doubled".
  const std::string sShared = AreaOf(0, 2, 1, 1) + "\0\3"s + "\x09\0\x4C\0\0\xFF\xC0\x1E\2\0\5"s;
  const auto workbook = Open(StreamOf({Row(0) + Formula(0, 1, Exp(0, 1)) + Record(xls::kShrFmla, sShared) + Row(1) +
                                       Formula(1, 1, Exp(0, 1)) + Row(2) + Formula(2, 1, Exp(0, 1))}));
  ASSERT_TRUE(workbook->WriteCell(1, 1, 2, "9", failure_));
  const auto table = TableIn(Saved(*workbook));
  ASSERT_EQ(table.size(), 7U);
  EXPECT_EQ(table[3].first, xls::kRk);
  EXPECT_EQ(table[4].second.substr(22), Exp(1, 1));
  EXPECT_EQ(table[5].first, xls::kShrFmla);
  EXPECT_EQ(table[5].second, AreaOf(1, 2, 1, 1) + "\0\2"s + sShared.substr(8));
  EXPECT_EQ(table[6].second.substr(22), Exp(1, 1));
  EXPECT_EQ(GetU16(table[6].second, 14) & 3, 3);  // to be calculated on loading
}

TEST_F(ExistingXls, LetsAnArrayFormulaBeClearedOnlyWhole) {
  const std::string sArray = AreaOf(1, 2, 0, 0) + "\0\0\0\0\0\0"s + "\3\0\x1E\1\0"s;
  const auto workbook = Open(StreamOf({Row(0) + Cell(xls::kBlank, 0, 0, {}) + Row(1) + Formula(1, 0, Exp(1, 0)) +
                                       Record(xls::kArray, sArray) + Row(2) + Formula(2, 0, Exp(1, 0))}));
  EXPECT_FALSE(workbook->WriteCell(1, 3, 1, "x", failure_));
  EXPECT_NE(failure_.sText.find("array"), std::string::npos);
  EXPECT_FALSE(workbook->ClearContents(1, {1, 1, 2, 1}, failure_));
  EXPECT_TRUE(workbook->ClearContents(1, {1, 1, 3, 1}, failure_));
  EXPECT_TRUE(workbook->WriteCell(1, 3, 1, "x", failure_));
  EXPECT_EQ(Read(*workbook, 2, 1), "");
  const auto table = TableIn(Saved(*workbook));
  std::vector<uint16_t> ids;
  for (const auto& [nId, sData] : table) ids.push_back(nId);
  EXPECT_EQ(ids, (std::vector<uint16_t>{xls::kRow, xls::kRow, xls::kRow, xls::kBlank, xls::kBlank, xls::kLabelSst}));
}

TEST_F(ExistingXls, ShowsTheHiddenWindowAndLeavesASecondOneAlone) {
  constexpr size_t kFlags = 8;
  const std::string sSecond(18, '\1');
  std::string sStream = StreamOf({"", ""}, Record(xls::kWindow1, sSecond));
  clsXlsRecordReader reader(sStream, 0);
  XlsRecord record;
  while (reader.Next(record) && record.nId != xls::kWindow1) continue;
  SetAt(sStream, record.nOffset + 4 + kFlags, uint16_t{0x39});
  const std::string sSaved = Saved(*Open(sStream));
  std::vector<std::string> windows;
  clsXlsRecordReader saved(sSaved, 0);
  while (saved.Next(record)) {
    if (record.nId == xls::kWindow1) windows.emplace_back(record.sData);
  }
  ASSERT_EQ(windows.size(), 2U);
  EXPECT_EQ(GetU16(windows[0], kFlags), 0x38);
  EXPECT_EQ(windows[1], sSecond);
}

TEST_F(ExistingXls, KeepsRecordsThatItDoesNotKnow) {
  const std::string sUnknown = Record(0x0899, "between cells");
  const auto workbook = Open(StreamOf({Row(0) + Cell(xls::kRk, 0, 0, "\2\0\0\0"sv) + sUnknown +
                                       Cell(xls::kRk, 0, 1, "\6\0\0\0"sv) + Record(0x0898, "behind")},
                                      Record(0x0897, "globals")));
  ASSERT_TRUE(workbook->WriteCell(1, 1, 1, "text", failure_));
  ASSERT_TRUE(workbook->WriteCell(1, 40, 3, "1,234.50", failure_));
  const std::string sStream = Saved(*workbook);
  for (const std::string_view sKept : {"between cells", "behind", "globals"})
    EXPECT_NE(sStream.find(sKept), std::string::npos) << sKept;
  EXPECT_EQ(TableIn(sStream).back().second, "behind");
}

TEST_F(ExistingXls, GivesRowAndColumnFormatsToNewCellsAndKeepsThoseOfOldOnes) {
  std::string sRow = Row(0);
  StoreAt(sRow.data() + 16, uint32_t{0x00100180});  // format 16 for the row
  const std::string sPercentXf = "\0\0\x09\0\1\0\x20\0\0\0\0\0\0\0\0\0\0\0\xC0\x20"s;
  const std::string sTextXf = "\0\0\x31\0\1\0\x20\0\0\0\0\0\0\0\0\0\0\0\xC0\x20"s;
  std::string sStream =
      StreamOf({sRow + Cell(xls::kBlank, 0, 0, {}, 17)}, Record(xls::kXf, sPercentXf) + Record(xls::kXf, sTextXf));
  sStream.replace(sStream.find(xls::kOwnName), xls::kOwnName.size(), "Another");
  const auto workbook = Open(sStream);
  ASSERT_TRUE(workbook->WriteCell(1, 1, 1, "12", failure_));  // a cell for text
  ASSERT_TRUE(workbook->WriteCell(1, 1, 2, "7%", failure_));  // per cent as the row has it
  ASSERT_TRUE(workbook->WriteCell(1, 1, 3, "7", failure_));   // would show 700%
  ASSERT_TRUE(workbook->WriteCell(1, 2, 1, "8%", failure_));  // a format of its own
  const auto table = TableIn(Saved(*workbook));
  ASSERT_EQ(table.size(), 6U);
  const auto Is = [&table](size_t n, uint16_t nId, unsigned nXf) {
    return table[n].first == nId && GetU16(table[n].second, 4) == nXf;
  };
  EXPECT_TRUE(Is(2, xls::kLabelSst, 17) && Is(3, xls::kRk, 16) && Is(4, xls::kLabelSst, 16) && Is(5, xls::kRk, 18));
}

TEST_F(ExistingXls, MovesOnlyWhatMustMoveInOtherSheets) {
  // The second sheet has an index, made by saving a new workbook.
  const auto made = NewXlsWorkbook({});
  ASSERT_TRUE(made->WriteCell(2, 1, 1, "note", failure_) && made->WriteCell(1, 1, 1, "x", failure_));
  ASSERT_TRUE(made->SaveAs(folder_.Path("b.xls"), kFormatXls, failure_));
  const std::string sBefore = StreamIn(folder_.Path("b.xls"));
  auto workbook = OpenXlsWorkbook(folder_.Path("b.xls"), {}, failure_);
  EXPECT_EQ(Saved(*workbook), sBefore);  // nothing touched, nothing changed
  ASSERT_TRUE(workbook->WriteCell(1, 500, 200, "far", failure_));
  ASSERT_TRUE(workbook->SetSheetName(1, "Long name (P1)", failure_));
  EXPECT_FALSE(workbook->SetSheetName(2, "long NAME (P1)", failure_));
  const std::string sAfter = Saved(*workbook);
  auto again = OpenXlsWorkbook(folder_.Path("b.xls"), {}, failure_);
  ASSERT_NE(again, nullptr) << failure_.sText;
  std::string sText;
  EXPECT_TRUE(again->ReadCell(2, 1, 1, sText, failure_));
  EXPECT_EQ(sText, "note");
  EXPECT_EQ(again->SheetName(1), "Long name (P1)");
  // Each DBCELL that an INDEX names is one, and the shared strings stand where EXTSST says.
  clsXlsRecordReader reader(sAfter, 0);
  XlsRecord record;
  int nNamed = 0;
  while (reader.Next(record)) {
    for (size_t i = 16; record.nId == xls::kIndex && i < record.sData.size(); i += 4, ++nNamed)
      EXPECT_EQ(GetU16(sAfter, GetU32(record.sData, i)), xls::kDbCell);
    if (record.nId != xls::kExtSst) continue;
    EXPECT_EQ(GetU16(sAfter, GetU32(record.sData, 2)), 1);  // the length of "x"
  }
  EXPECT_EQ(nNamed, 16 + 1);
}

TEST_F(ExistingXls, DoesNotOverwriteWhatAnotherProgramSavedMeanwhile) {
  const std::string sStream = StreamOf({Row(0)});
  const auto workbook = Open(sStream);
  ASSERT_TRUE(workbook->WriteCell(1, 1, 1, "x", failure_));
  folder_.Write("a.xls", "the other program's work");
  EXPECT_FALSE(workbook->SaveAs(folder_.Path("a.xls"), kFormatXls, failure_));
  EXPECT_EQ(folder_.Read("a.xls"), "the other program's work");
  EXPECT_TRUE(workbook->SaveAs(folder_.Path("b.xls"), kFormatXls, failure_)) << failure_.sText;
}

/// Adds a storage with macros, as office programs keep it, to a file.
void WriteWithMacros(const std::string& sPath, std::string_view sStream) {
  GsfOutput* pFile = gsf_output_stdio_new(sPath.c_str(), nullptr);
  GsfOutfile* pRoot = gsf_outfile_msole_new(pFile);
  const auto Add = [](GsfOutfile* pFolder, const char* pName, std::string_view sBytes) {
    GsfOutput* pStream = gsf_outfile_new_child(pFolder, pName, FALSE);
    gsf_output_write(pStream, sBytes.size(), reinterpret_cast<const guint8*>(sBytes.data()));
    gsf_output_close(pStream);
    g_object_unref(pStream);
  };
  constexpr std::array<guint8, 16> kClass = {0x20, 8, 2, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};
  gsf_outfile_msole_set_class_id(GSF_OUTFILE_MSOLE(pRoot), kClass.data());
  Add(pRoot, "Workbook", sStream);
  Add(pRoot, "\005SummaryInformation", "properties");
  GsfOutput* pProject = gsf_outfile_new_child(pRoot, "_VBA_PROJECT_CUR", TRUE);
  Add(GSF_OUTFILE(pProject), "PROJECT", "ID=\"{1}\"");
  GsfOutput* pVba = gsf_outfile_new_child(GSF_OUTFILE(pProject), "VBA", TRUE);
  Add(GSF_OUTFILE(pVba), "Module1", std::string(9000, 'm'));
  for (GsfOutput* pOutput : {pVba, pProject, GSF_OUTPUT(pRoot)}) {
    gsf_output_close(pOutput);
    g_object_unref(pOutput);
  }
  g_object_unref(pFile);
}

std::string BytesAt(GsfInfile* pRoot, const std::vector<const char*>& path) {
  std::vector<const char*> names = path;
  names.push_back(nullptr);
  GsfInput* pStream = gsf_infile_child_by_aname(pRoot, names.data());
  if (pStream == nullptr) return "(missing)";
  std::string sBytes(static_cast<size_t>(gsf_input_size(pStream)), '\0');
  gsf_input_read(pStream, sBytes.size(), reinterpret_cast<guint8*>(sBytes.data()));
  g_object_unref(pStream);
  return sBytes;
}

TEST_F(ExistingXls, CopiesMacrosAndPropertiesUnchanged) {
  const std::string sPath = folder_.Path("macros.xls");
  WriteWithMacros(sPath, StreamOf({Row(0), Row(0)}));
  const auto workbook = OpenXlsWorkbook(sPath, {}, failure_);
  ASSERT_NE(workbook, nullptr) << failure_.sText;
  ASSERT_TRUE(workbook->WriteCell(2, 7, 3, "touched", failure_));
  ASSERT_TRUE(workbook->SaveAs(sPath, kFormatXls, failure_));
  const std::string sFile = folder_.Read("macros.xls");
  GsfInput* pInput =
      gsf_input_memory_new(reinterpret_cast<const guint8*>(sFile.data()), static_cast<gsf_off_t>(sFile.size()), FALSE);
  GsfInfile* pRoot = gsf_infile_msole_new(pInput, nullptr);
  ASSERT_NE(pRoot, nullptr);
  EXPECT_EQ(BytesAt(pRoot, {"_VBA_PROJECT_CUR", "VBA", "Module1"}), std::string(9000, 'm'));
  EXPECT_EQ(BytesAt(pRoot, {"_VBA_PROJECT_CUR", "PROJECT"}), "ID=\"{1}\"");
  EXPECT_EQ(BytesAt(pRoot, {"\005SummaryInformation"}), "properties");
  EXPECT_NE(BytesAt(pRoot, {"Workbook"}).find("touched"), std::string::npos);
  std::array<guint8, 16> classId{};
  EXPECT_TRUE(gsf_infile_msole_get_class_id(GSF_INFILE_MSOLE(pRoot), classId.data()));
  EXPECT_EQ(classId[0], 0x20);
  g_object_unref(pRoot);
  g_object_unref(pInput);
}

TEST_F(ExistingXls, RefusesWhatItCannotReadWithTheReason) {
  const auto Reason = [this](std::string_view sStream, std::string_view sName = "Workbook") {
    failure_ = {};
    EXPECT_EQ(OpenXlsWorkbook(FileOf(folder_, sStream, sName), {}, failure_), nullptr);
    return failure_.sText;
  };
  const std::string sGood = StreamOf({Row(0) + Cell(xls::kRk, 0, 0, "\2\0\0\0"sv)});
  EXPECT_NE(Reason(StreamOf({""}, Record(xls::kFilePass, "\1\0\1\0"sv))).find("encrypted"), std::string::npos);
  EXPECT_NE(Reason(sGood, "EncryptedPackage").find("encrypted"), std::string::npos);
  EXPECT_NE(Reason(sGood, "Book").find("before 97"), std::string::npos);
  EXPECT_NE(Reason(sGood, "WordDocument").find("no workbook"), std::string::npos);
  std::string sBroken = sGood;
  SetAt(sBroken, 4, uint16_t{0x0500});
  EXPECT_NE(Reason(sBroken).find("before 97"), std::string::npos);

  std::string sStrings;
  clsXlsStrings strings;
  strings.Add("one");
  clsXlsStringTable().Write(strings, 0, sStrings);
  SetAt(sStrings, 8, uint32_t{5});
  EXPECT_NE(Reason(StreamOf({""}, {}, sStrings)).find("damaged"), std::string::npos);
  const size_t nPlace = sGood.find("Sheet1") - 8;
  for (const uint32_t nOffset : {0U, 20U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    sBroken = sGood;
    SetAt(sBroken, nPlace, nOffset);
    EXPECT_NE(Reason(sBroken).find("damaged"), std::string::npos) << nOffset;
  }
  for (const size_t nBytes : {size_t{3}, size_t{600}, sGood.size() - 1, sGood.size() - 30})
    EXPECT_NE(Reason(sGood.substr(0, nBytes)).find("damaged"), std::string::npos) << nBytes;
  EXPECT_NE(Reason(StreamOf({Row(0) + Cell(xls::kRk, 0, 300, "\2\0\0\0"sv)})).find("damaged"), std::string::npos);
}

TEST_F(ExistingXls, SurvivesDamagedCompoundFilesAndLeavesThemAlone) {
  const std::string sPath = folder_.Path("macros.xls");
  WriteWithMacros(sPath, StreamOf({Row(0), Row(0)}));
  const std::string sGood = folder_.Read("macros.xls");
  const auto Try = [&](const std::string& sBytes) {
    folder_.Write("bad.xls", sBytes);
    Failure failure;
    const bool bOpened = OpenXlsWorkbook(folder_.Path("bad.xls"), {}, failure) != nullptr;
    EXPECT_NE(bOpened, failure.Failed());
    EXPECT_EQ(folder_.Read("bad.xls"), sBytes);
    return bOpened;
  };
  for (size_t nBytes = 0; nBytes < sGood.size(); nBytes += 511) Try(sGood.substr(0, nBytes));
  const auto With = [&sGood](size_t nOffset, auto value) {
    std::string sBad = sGood;
    SetAt(sBad, nOffset, value);
    return sBad;
  };
  EXPECT_FALSE(Try(With(30, uint16_t{3})));           // sectors of 8 bytes
  EXPECT_FALSE(Try(With(32, uint16_t{20})));          // small sectors larger than large ones
  EXPECT_FALSE(Try(With(44, uint32_t{0x10000000})));  // more tables than sectors
  EXPECT_FALSE(Try(With(48, uint32_t{0x00FFFFFF})));  // a directory beyond the file
  const size_t nTable = (size_t{GetU32(sGood, 76)} + 1) * 512;
  EXPECT_FALSE(Try(With(nTable + 4 * GetU32(sGood, 48), GetU32(sGood, 48))));  // the directory follows itself
  for (size_t i = 0; i < 128; ++i) Try(With(nTable + 4 * i, uint32_t{1}));
  const size_t nDirectory = (size_t{GetU32(sGood, 48)} + 1) * 512;
  for (size_t i = 0; i < 512; i += 4) Try(With(nDirectory + i, uint32_t{0x7FFFFFFF}));
}

}  // namespace
}  // namespace quillon
