#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "modHelp.h"

namespace quillon {
namespace {

TEST(Help, EachTopicHasItsPageAndSection) {
  for (const int nTopic : {0, 2, 12, 13, 14, 15, 16, 17, 22, 25, 50, 60, 70}) {
    const std::string sPage = HelpPage(nTopic);
    const size_t nSection = sPage.find('#');
    std::string sName = std::filesystem::path(sPage.substr(0, nSection)).stem().string();
    if (sName == "index") sName = "README";
    const std::string sFolder = std::string(QUILLON_SOURCE_DIR) + (sName == "changelog" ? "/" : "/docs/manual/");
    std::ifstream in(sFolder + (sName == "changelog" ? "CHANGELOG" : sName) + ".md");
    ASSERT_TRUE(in.good()) << nTopic << " " << sName;
    const std::string sText(std::istreambuf_iterator<char>(in), {});
    if (nSection == std::string::npos) continue;
    EXPECT_NE(sText.find("\n## " + sPage.substr(nSection + 1)), std::string::npos) << sPage;
  }
}

}  // namespace
}  // namespace quillon
