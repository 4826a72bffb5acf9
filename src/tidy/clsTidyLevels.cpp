#include "clsTidyLevels.h"

namespace quillon {

void clsTidyLevels::Open(size_t nIndent, std::string_view sText, int64_t lLine) {
  while (!stack_.empty() && stack_.back().nIndent >= nIndent) stack_.pop_back();
  stack_.push_back({nIndent, std::string(sText), lLine});
}

void clsTidyLevels::Row(size_t nIndent, std::string_view sText, int64_t lLine) {
  const auto belongs = [&](const Level& level) {
    return level.nIndent < nIndent || (!bRows_ && level.nIndent == nIndent && level.lLine + 1 == lLine);
  };
  while (!stack_.empty() && !belongs(stack_.back())) stack_.pop_back();
  size_t nLevels = stack_.size();
  if (!stack_.empty() && !bRows_) {
    Level& level = stack_.back();
    if (!level.bHasRow) {
      level.bHasRow = true;
      level.nFirstRow = nIndent;
    } else if (nIndent > level.nFirstRow) {
      nLevels = 1;
    }
  }
  Show(nLevels);
  if (bRows_) stack_.push_back({nIndent, std::string(sText), lLine});
}

/// Levels that have no column of their own share the last.
void clsTidyLevels::Show(size_t nLevels) {
  for (std::string& sText : texts_) sText.clear();
  for (size_t i = 0; i < nLevels; ++i) {
    texts_[i < texts_.size() ? i : texts_.size() - 1] = stack_[i].sText;
  }
}

}  // namespace quillon
