#include "clsTidyAwake.h"

#include <algorithm>

namespace quillon {

namespace {

/// Fewer tables are asked one by one sooner than their texts are looked for.
constexpr size_t kFewTables = 4;

}  // namespace

void clsTidyAwake::Add(size_t nTable, const std::vector<std::string>& keyTexts) {
  awake_.push_back(nTable);
  for (const std::string& sText : keyTexts) {
    const size_t nText = texts_.try_emplace(sText, texts_.size()).first->second;
    if (nText == tablesOf_.size()) tablesOf_.emplace_back();
    auto& tables = tablesOf_[nText];
    if (tables.empty() || tables.back() != nTable) tables.push_back(nTable);
  }
}

void clsTidyAwake::Starts() {
  if (states_.size() <= kFewTables || texts_.empty()) return;
  std::vector<std::string> texts(texts_.size());
  size_t nBytes = 0;
  for (const auto& [sText, nText] : texts_) {
    texts[nText] = sText;
    nBytes += sText.size();
  }
  if (nBytes <= clsKeySearch::kMostBytes) search_ = std::make_unique<clsKeySearch>(texts);
}

void clsTidyAwake::Sort() {
  std::sort(awake_.begin(), awake_.end());
}

}  // namespace quillon
