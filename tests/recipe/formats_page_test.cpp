// The page that tells the formats shows files that are read, and what the program makes of them.

#include <map>

#include "clsRecipeTest.h"

namespace quillon {
namespace {

class FormatsPage : public clsRecipeTest {
 protected:
  void SetUp() override {
    clsRecipeTest::SetUp();
    std::ifstream in(QUILLON_SOURCE_DIR "/docs/formats-recipe.md");
    std::string* pBlock = nullptr;
    for (std::string sLine; std::getline(in, sLine);) {
      if (!sLine.starts_with("```")) {
        if (pBlock != nullptr) *pBlock += sLine + "\r\n";
      } else {
        const size_t nBlank = sLine.find(' ');
        pBlock = nBlank == std::string::npos ? nullptr : &blocks[sLine.substr(nBlank + 1)];
      }
    }
    for (const auto& [sName, sText] : blocks) folder.Write(sName, sText);
  }

  std::map<std::string, std::string> blocks;
};

TEST_F(FormatsPage, ShortRecipeGivesTheSpecificationShown) {
  gsInputFile = folder.Path("ledger.txt");
  recipe.LoadFromFileShort(context, folder.Path("ledger.rcp"));
  ASSERT_TRUE(recipe.ReadExportSpecs(context));
  EXPECT_EQ(folder.Read("_ExportSpecs.t2x"), blocks["ledger_ExportSpecs.t2x"]);
  EXPECT_EQ(TakeCodes(), Codes{});
}

TEST_F(FormatsPage, TidyTableStandsInItsSpecification) {
  gsInputFile = folder.Path("ledger.txt");
  recipe.LoadFromFileShort(context, folder.Path("stock.rcp"));
  ASSERT_TRUE(recipe.ReadExportSpecs(context));
  EXPECT_EQ(folder.Read("_ExportSpecs.t2x"), blocks["stock_ExportSpecs.t2x"]);
  EXPECT_EQ(TakeCodes(), Codes{});
}

TEST_F(FormatsPage, MarksGiveTheRecipeShown) {
  gsInputFile = folder.Path("marked.txt");
  recipe.LoadFromMarks(context);
  EXPECT_EQ(folder.Read("_AutoRecipe.rcp"), blocks["marked.rcp"]);
}

TEST_F(FormatsPage, LongRecipeIsReadAndWrittenAsShown) {
  recipe.LoadFromFile(context, folder.Path("year.rcp"));
  EXPECT_EQ(recipe.InputFileNameOf(2), "february.txt");
  EXPECT_EQ(TakeCodes(), Codes{-5504}) << "the specification is named by the folder that the program runs in";
  recipe.ExportSpecs.ReadFromFile(context, folder.Path("year_ExportSpecs.t2x"));
  EXPECT_EQ(TakeCodes(), Codes{});
  Failure failure;
  ASSERT_TRUE(recipe.ExportSpecs.WriteToFile(context, folder.Path("again.t2x"), failure));
  EXPECT_EQ(folder.Read("again.t2x"), blocks["year_ExportSpecs.t2x"]);
}

}  // namespace
}  // namespace quillon
