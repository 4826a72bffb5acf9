#include <gtest/gtest.h>
#include <unistd.h>

#include "CFileSearch.h"
#include "clsTempFolder.h"
#include "modFileListing.h"
#include "modTranslator.h"

namespace quillon {
namespace {

TEST(PathMatch, FollowsTheShellsRules) {
  struct Case {
    const char* sName;
    const char* sMasks;
    bool bMatches;
  };
  const std::vector<Case> cases{
      {"a.txt", "*.txt", true},
      {"A.TXT", "*.txt", true},
      {"a.txtx", "*.txt", false},
      {"noext", "*.*", true},
      {"noext", "*", true},
      {"noext", "*.", false},
      {"a.dat", "*.d??", true},
      {"a.d", "*.d??", false},
      {"a.doc", "x;  *.doc;y", true},
      {"ab", "?", false},
      {"\xc3\xbc.txt", "?.txt", true},
      {"\xc3\x9c.txt", "\xc3\xbc.*", true},
      {"aXbXc", "a*b*c", true},
      {"ab", "a*b*c", false},
      {"a b", " a b", true},
      {"\xff.txt", "?.txt", true},
      {"", "*", true},
      {"x", "", false},
  };
  for (const Case& one : cases)
    EXPECT_EQ(clsPathMatch(one.sMasks).Matches(one.sName), one.bMatches) << one.sName << " " << one.sMasks;
  EXPECT_FALSE(clsPathMatch("*a*a*a*a*a*a*a*a*a*a*b").Matches(std::string(5000, 'a'))) << "and that at once";
}

class FileSearch : public testing::Test {
 protected:
  std::vector<std::string> List(std::string_view sMask, bool bSubfolders) {
    std::vector<std::string> files;
    bool ok = false;
    BuildFileListing(folder.Path() + "\\" + std::string(sMask), bSubfolders, files, sErr, true, ok);
    EXPECT_TRUE(ok);
    for (std::string& file : files) file.erase(0, folder.Path().size() + 1);
    return files;
  }
  clsTempFolder folder;
  std::string sErr;
};

TEST_F(FileSearch, WalksSubfoldersButNoneThatBeginsWithADot) {
  for (const char* name : {"b.txt", "A.txt", "c.dat", "sub/z.txt", "sub/deep/y.TXT", ".git/x.txt", ".hidden.txt"}) {
    folder.Write(name, "x");
  }
  ASSERT_EQ(symlink("..", folder.Path("sub/loop").c_str()), 0);
  ASSERT_EQ(symlink("nowhere", folder.Path("gone.txt").c_str()), 0);
  EXPECT_EQ(List("*.txt", false), (std::vector<std::string>{".hidden.txt", "A.txt", "b.txt"}));
  EXPECT_EQ(List("*.txt", true),
            (std::vector<std::string>{".hidden.txt", "A.txt", "b.txt", "sub\\deep\\y.TXT", "sub\\z.txt"}));
  EXPECT_EQ(sErr, "");
}

TEST_F(FileSearch, KeepsEveryHitAndExcludesByMask) {
  for (int i = 0; i < 501; ++i) folder.Write(std::to_string(i) + ".t", "12345");
  folder.Write("other.x", "");
  CFileSearch search;
  int32_t result = 1;
  search.BuildFileList1(folder.Path(), "*.t", false, false, true, result);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(search.TotalFound(), 501);
  EXPECT_EQ(search.TotalSearched(), 502);
  EXPECT_EQ(search.Files().back().FileSize, 5);
  search.BuildFileList1(folder.Path(), "*.t", false, true, true, result);
  ASSERT_EQ(search.TotalFound(), 1);
  EXPECT_EQ(search.Files()[0].filename, folder.Path("other.x"));
}

TEST_F(FileSearch, RefusesPathsWithoutFolderOrMask) {
  const auto number = [](std::string_view sPath) {
    CFileSearch search;
    int32_t result = 0;
    search.BuildFileList(sPath, false, true, result);
    EXPECT_EQ(search.LastErrorNumber(), result);
    return static_cast<uint32_t>(result);
  };
  EXPECT_EQ(number("*."), kSearchTooShort);
  EXPECT_EQ(number("*.txt"), kSearchNoFolder);
  EXPECT_EQ(number("C:\\in\\ "), kSearchNoMask);
  EXPECT_EQ(List("missing\\*.txt", true), std::vector<std::string>{});
  EXPECT_EQ(sErr, "An error occured while searching for files: 3 : Path Not Found.");

  setenv("QUILLON_DRIVE_C", folder.Path().c_str(), 1);
  folder.Write("a.txt", "");
  CFileSearch search;
  int32_t result = 0;
  search.BuildFileList("C:*.txt", false, true, result);
  ASSERT_EQ(search.TotalFound(), 1);
  EXPECT_EQ(search.Files()[0].filename, "C:\\a.txt");
  unsetenv("QUILLON_DRIVE_C");
}

}  // namespace
}  // namespace quillon
