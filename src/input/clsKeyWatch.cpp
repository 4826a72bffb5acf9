#include "clsKeyWatch.h"

#include <algorithm>

#include "modByteCount.h"
#include "modText.h"

namespace quillon {

void clsKeyWatch::Expect(const std::vector<std::string>& texts) {
  for (const std::string& sText : texts) {
    const bool bPlain = !sText.empty() && IsAscii(sText) && sText.find_first_of("\r\n") == std::string::npos;
    if (!bPlain || texts_.size() >= kMostTexts || RowOf(sText) != nullptr) continue;
    texts_.push_back({sText, {}});
    nLongest_ = std::max(nLongest_, sText.size());
  }
}

void clsKeyWatch::Start(int64_t nOffset) {
  for (Text& text : texts_) text.row = {};
  sTail_.clear();
  nBlock_ = nRowStart_ = nOffset;
  lRows_ = 0;
}

/// Place of the text in what was kept and the block, in bytes from the kept tail's start; npos if it isn't there.
size_t clsKeyWatch::FindIn(std::string_view sBlock, std::string_view sText) const {
  if (!sTail_.empty()) {
    const std::string sEdge = sTail_ + std::string(sBlock.substr(0, sText.size() - 1));
    const size_t nEdge = sEdge.find(sText);
    if (nEdge < sTail_.size()) return nEdge;
  }
  const size_t nHit = FindBytes(sBlock, sText);
  return nHit == std::string_view::npos ? nHit : nHit + sTail_.size();
}

/// Counts the line ends of the block up to there.
void clsKeyWatch::PassTo(std::string_view sBlock, size_t nTo) {
  const std::string_view sPassed = sBlock.substr(nPassed_, nTo - nPassed_);
  const size_t nLast = sPassed.rfind('\n');
  if (nLast != std::string_view::npos) nRowStart_ = nBlock_ + static_cast<int64_t>(nPassed_ + nLast + 1);
  lRows_ += CountByte(sPassed, '\n');
  nPassed_ = nTo;
}

void clsKeyWatch::Look(std::string_view sBlock) {
  std::vector<std::pair<size_t, Text*>> hits;
  bool bAll = true;
  for (Text& text : texts_) {
    if (text.row.lRow > 0) continue;
    const size_t nHit = FindIn(sBlock, text.sText);
    bAll = bAll && nHit != std::string_view::npos;
    if (nHit != std::string_view::npos) hits.emplace_back(nHit, &text);
  }
  if (bAll && hits.empty()) return;
  std::sort(hits.begin(), hits.end());
  nPassed_ = 0;
  for (const auto& [nHit, pText] : hits) {
    // What begins before the block begins in its row: the kept tail has no line end in front of it.
    PassTo(sBlock, std::max(nHit, sTail_.size()) - sTail_.size());
    pText->row = {lRows_ + 1, nRowStart_};
  }
  PassTo(sBlock, sBlock.size());
  const size_t nKept = std::min(sBlock.size(), nLongest_ - 1);
  sTail_ = (sTail_ + std::string(sBlock.substr(sBlock.size() - nKept)));
  // Neither longer than a text may begin in, nor with a line end, across which none goes.
  if (sTail_.size() >= nLongest_) sTail_.erase(0, sTail_.size() - (nLongest_ - 1));
  sTail_.erase(0, sTail_.rfind('\n') + 1);
  nBlock_ += static_cast<int64_t>(sBlock.size());
}

const clsKeyWatch::Row* clsKeyWatch::RowOf(std::string_view sText) const {
  const auto found =
      std::find_if(texts_.begin(), texts_.end(), [sText](const Text& text) { return text.sText == sText; });
  return found == texts_.end() ? nullptr : &found->row;
}

}  // namespace quillon
