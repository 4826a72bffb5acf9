#include "modSectionFile.h"

#include <gtest/gtest.h>

#include "clsSectionWriter.h"
#include "clsTempFolder.h"
#include "clsTestHost.h"

namespace quillon {
namespace {

clsSectionFile Opened(std::string_view sBytes, const TextFileOptions& options = {}) {
  clsSectionFile file;
  file.OpenMemory(sBytes, options);
  return file;
}

TEST(SectionFile, ValueIsFoundWithinTheLimitsOfTheFormat) {
  struct Case {
    const char *sWhat, *sText, *sExpected;
  };
  for (const Case& c : {
           Case{"plain, LF", "[S]\nKey=value\n", "value"},
           Case{"plain, CR LF, blanks", "[S]\r\n  Key =  a b  \r\n", "a b"},
           Case{"comment", "[S]\nKey=TOTAL; PAGE", "TOTAL"},
           Case{"comment from the start", "[S]\nKey=; PAGE", "D"},
           Case{"semicolon before the =", "[S]\n;Key=x\nKey=y", "D"},
           Case{"bracket in the value", "[S]\nKey=[PAGE\nKey=x", "D"},
           Case{"bracket in a line before", "[S]\nOther=a]b[\nKey=x", "D"},
           Case{"empty value", "[S]\nKey=   \nKey=x", "D"},
           Case{"= in the value", "[S]\nKey==R", "=R"},
           Case{"name with blanks", "[ S ]\nKey=x", "x"},
           Case{"text before the header", "a]b [S] c\nKey=x", "x"},
           Case{"other case of the name", "[s]\nKey=x", "D"},
           Case{"other case of the key", "[S]\nkey=x", "D"},
           Case{"longer key before it", "[S]\nKey0=x\nKey=y", "D"},
           Case{"its text in a value before it", "[S]\nOther=Key\nKey=y", "D"},
           Case{"its text in a line without =", "[S]\nKey is here\nKey=y", "y"},
           Case{"first of two", "[S]\nKey=x\nKey=y", "x"},
           Case{"first section of that name", "[S]\n[S]\nKey=y", "D"},
           Case{"behind the next header", "[S]\n[T]\nKey=y", "D"},
           Case{"empty name", "[]\n[S\nKey=y", "D"},
           Case{"empty file", "", "D"},
       }) {
    clsSectionFile file = Opened(c.sText);
    EXPECT_EQ(ReadKeyFromFile(file, "S", "Key", "D"), c.sExpected) << c.sWhat;
  }
}

TEST(SectionFile, TrimModesKeepTheBlanksOfTheOtherSide) {
  clsSectionFile file = Opened("[S]\nKey=  -- ---  ;");
  EXPECT_EQ(ReadKeyFromFileTrimmed(file, "S", "Key", "", TrimMode::Both), "-- ---");
  EXPECT_EQ(ReadKeyFromFileTrimmed(file, "S", "Key", "", TrimMode::LeftOnly), "-- ---  ");
  EXPECT_EQ(ReadKeyFromFileTrimmed(file, "S", "Key", "", TrimMode::RightOnly), "  -- ---");
}

TEST(SectionFile, SequentialReadingGoesOnBehindTheLastLineLookedAt) {
  clsSectionFile file = Opened("[A]\nOne=1\nTwo=2\n[B]\nThree=3\nFour=4\n[A]\nOne=5\n");
  EXPECT_EQ(ReadSectionValue(file, "A", "One", "D"), "1");
  EXPECT_EQ(ReadSectionValue(file, "", "Three", "D"), "D") << "ends at the header of B and takes it";
  EXPECT_EQ(ReadSectionValue(file, "", "Three", "D"), "3");
  EXPECT_EQ(ReadSectionValue(file, "B", "Four", "D"), "D") << "the header of B is passed";
  EXPECT_TRUE(file.AtEnd());
  file.Rewind();
  EXPECT_EQ(ReadSectionValue(file, "B", "Four", "D"), "4");
  EXPECT_EQ(ReadSectionValue(file, "A", "One", "D"), "5") << "the next section of that name from here on";
}

TEST(SectionFile, TextsAreDecodedFromTheCodePage) {
  const char* const sBytes = "[S]\nKey=Z\xFCrich\n";
  clsSectionFile file = Opened(sBytes);
  EXPECT_EQ(ReadKeyFromFile(file, "S", "Key", ""), "Z\xC3\xBCrich");
  file = Opened(sBytes, {.pCodePage = clsCodePage::Find("cp437")});
  EXPECT_EQ(ReadKeyFromFile(file, "S", "Key", ""), "Z\xE2\x81\xBFrich");
}

TEST(SectionFile, HeaderCheckIgnoresCaseAndNamesTheFirstWrongKey) {
  clsTestHost host;
  clsSectionFile file = Opened("[Header]\nProduct=qln\nFileType=Recipe\nFileFormat=1.0\n");
  EXPECT_FALSE(CheckFileHeader(host, file, "QLN", "RECIPE", "1.0"));
  EXPECT_TRUE(CheckFileHeader(host, file, "QLN", "RECIPE", "1.1"));
  EXPECT_TRUE(CheckFileHeader(host, file, "QLN", "CONFIG", "1.1"));
  EXPECT_TRUE(CheckFileHeader(host, file, "QLN-B", "CONFIG", "1.1"));
  ASSERT_EQ(host.messages.size(), 3U);
  EXPECT_EQ(host.messages[0].sText, "Incorrect file format!");
  EXPECT_EQ(host.messages[1].sText, "Incorrect file type!");
  EXPECT_EQ(host.messages[2].sText, "Incorrect product code!");
  EXPECT_EQ(host.messages[2].icon, MessageIcon::Critical);
}

/// The same scan over a section file and over a report must give the same.
int64_t Find(std::string_view sBytes, const KeyTexts& texts, const TextFileOptions& options = {}) {
  clsSectionFile file = Opened(sBytes, options);
  clsLineReader reader;
  reader.OpenMemory(sBytes, options);
  const int64_t lFound = FindKeyText(file, texts);
  EXPECT_EQ(FindKeyText(reader, texts), lFound);
  return lFound;
}

TEST(FindKeyText, CodesTheNeedleIntoTheLineNumber) {
  const char* const sText = "one\n\n[Title 1]\n[Table 1 Col 1]\n[Table 1]\nx\n[Consolidate 1]\n";
  EXPECT_EQ(Find(sText, {.sNeedle1 = "one"}), 1);
  EXPECT_EQ(Find(sText, {.sNeedle1 = ""}), 1);
  EXPECT_EQ(Find("\n\nx", {.sNeedle1 = ""}), 3) << "an empty needle is in every line that isn't empty";
  EXPECT_EQ(Find(sText, {.sNeedle1 = "ONE"}), 0);
  EXPECT_EQ(Find(sText, {.sNeedle1 = "?", .sNeedle2 = "[Table "}), -4);
  EXPECT_EQ(Find(sText, {.sNeedle1 = "?", .sNeedle2 = "[Table ", .sExclusion = "Col"}), -5);
  EXPECT_EQ(Find(sText, {.sNeedle1 = "?", .sNeedle2 = "!", .sNeedle3 = "[Cons"}), 10000007);
  EXPECT_EQ(Find("ab x\nb", {.sNeedle1 = "a", .sNeedle2 = "b", .sExclusion = "x"}), -2)
      << "a line that is excluded for the first needle isn't looked at for the second";
}

TEST(FindKeyText, LooksAtPartOfALineByCharacters) {
  EXPECT_EQ(Find("a >>\n >>\n>> a", {.sNeedle1 = ">>", .lLength = 2}), 3);
  EXPECT_EQ(Find("abcdef\nabc", {.sNeedle1 = "c", .lStartColumn = 3, .lLength = 1}), 1);
  EXPECT_EQ(Find("ab\n", {.sNeedle1 = "", .lStartColumn = 3, .lLength = 1}), 0);
  const TextFileOptions utf8{.pCodePage = &clsCodePage::Utf8()};
  EXPECT_EQ(Find("\xC3\xA4z\nzz", {.sNeedle1 = "z", .lStartColumn = 2, .lLength = 1}, utf8), 1);
}

TEST(FindKeyText, SearchesInTheBytesOfTheCodePage) {
  EXPECT_EQ(Find("x\nSumme \x80\n", {.sNeedle1 = "\xE2\x82\xAC"}), 2) << "the euro sign of windows-1252";
  EXPECT_EQ(Find("x\n?\n", {.sNeedle1 = "\xD0\x96"}), 0) << "a letter that the page lacks is in no line";
  EXPECT_EQ(Find("x\n?\n", {.sNeedle1 = "\xD0\x96", .sNeedle2 = "x"}), -1);
}

TEST(FindKeyText, CountsFromThePresentLineAndCountsAllMatches) {
  clsSectionFile file = Opened("a\nb\na\na");
  FindKeyText(file, {.sNeedle1 = "b"});
  EXPECT_EQ(FindKeyText(file, {.sNeedle1 = "a"}), 1);
  EXPECT_EQ(CountMatchingLines(file, {.sNeedle1 = "a"}), 3);
  const clsTempFolder folder;
  const std::string sPath = folder.Write("f.txt", "a\nb\na");
  EXPECT_EQ(FindKeyTextInFile(sPath, {}, {.sNeedle1 = "b"}), 2);
  EXPECT_EQ(CountMatchingLines(sPath, {}, {.sNeedle1 = "a"}), 2);
  EXPECT_EQ(FindKeyTextInFile(folder.Path("none"), {}, {.sNeedle1 = "b"}), 0);
  EXPECT_EQ(CountMatchingLines(folder.Path("none"), {}, {.sNeedle1 = "a"}), 0);
}

TEST(SectionWriter, GivesTheBytesOfSettingKeyAfterKey) {
  const clsTempFolder folder;
  const std::string sPlain = folder.Path("plain.t2x");
  clsSectionWriter writer(clsCodePage::Windows1252());
  for (const auto& [sSection, sKey, sValue] : std::vector<std::array<const char*, 3>>{
           {"Header", "Product", "QLN"}, {"General", "Name", ""}, {"Table 1", "ReadStartLine", " \xC3\x9C=1"}}) {
    ASSERT_TRUE(WriteSectionValue(sPlain, sSection, sKey, sValue));
    writer.Set(sSection, sKey, sValue);
  }
  EXPECT_EQ(writer.Bytes(), folder.Read("plain.t2x"));
  EXPECT_EQ(writer.Bytes(), "[Header]\r\nProduct=QLN\r\n[General]\r\nName=\r\n[Table 1]\r\nReadStartLine= \xDC=1\r\n");
  writer.Set("Table 1", "ReadEndLine", "\xD0\x96");
  EXPECT_TRUE(writer.Bytes().starts_with("\xEF\xBB\xBF[Header]")) << "a text that the page lacks isn't damaged";
}

TEST(SectionWriter, ChangesALoadedFileInPlace) {
  const clsTempFolder folder;
  const std::string sPath = folder.Write("f.rcp", "note\n[header]\nPRODUCT=old\n; kept\n\n[More]\nx=1\n");
  clsSectionWriter writer(clsCodePage::Windows1252());
  Failure failure;
  ASSERT_TRUE(writer.Load(sPath, failure));
  writer.Set("Header", "Product", "QLN");
  writer.Set("Header", "FileType", "RECIPE");
  ASSERT_TRUE(writer.Save(sPath, failure));
  EXPECT_EQ(folder.Read("f.rcp"), "note\n[header]\nProduct=QLN\n; kept\nFileType=RECIPE\r\n\n[More]\nx=1\n");
}

}  // namespace
}  // namespace quillon
