#include "clsKeyWatch.h"

#include <algorithm>

#include "modByteCount.h"

namespace quillon {

namespace {

/// Texts that are found faster one by one than each byte is looked at.
constexpr size_t kFew = 6;

}  // namespace

void clsKeyWatch::Expect(const std::vector<std::string>& texts) {
  for (const std::string& sText : texts) {
    const bool bTold = !sText.empty() && sText.size() <= kLongest && sText.find_first_of("\r\n") == std::string::npos;
    if (!bTold || nBytes_ + sText.size() > kMostBytes || !byText_.emplace(sText, texts_.size()).second) continue;
    texts_.push_back({sText, {}});
    nBytes_ += sText.size();
    nLongest_ = std::max(nLongest_, sText.size());
  }
}

void clsKeyWatch::Start(int64_t nOffset) {
  for (Text& text : texts_) text.row = {};
  nLeft_ = texts_.size();
  search_.reset();
  if (texts_.size() > kFew) {
    std::vector<std::string> all;
    for (const Text& text : texts_) all.push_back(text.sText);
    search_.emplace(all);
  }
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

clsKeyWatch::Hits clsKeyWatch::Few(std::string_view sBlock) const {
  Hits hits;
  for (size_t i = 0; i < texts_.size(); ++i) {
    if (texts_[i].row.lRow > 0) continue;
    const size_t nHit = FindIn(sBlock, texts_[i].sText);
    // What begins before the block begins in its row: the kept tail has no line end in front of it.
    if (nHit != std::string_view::npos) hits.emplace_back(std::max(nHit, sTail_.size()) - sTail_.size(), i);
  }
  return hits;
}

clsKeyWatch::Hits clsKeyWatch::Many(std::string_view sBlock) {
  Hits hits;
  const std::string sEdge = sTail_ + std::string(sBlock.substr(0, nLongest_ - 1));
  search_->Look(sEdge, [&](size_t n, size_t nLast) { hits.emplace_back(nLast - sTail_.size(), n); });
  search_->Look(sBlock, [&](size_t n, size_t nLast) { hits.emplace_back(nLast, n); });
  return hits;
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
  if (IsDone() || sBlock.empty()) return;
  Hits hits = search_ ? Many(sBlock) : Few(sBlock);
  std::sort(hits.begin(), hits.end());
  nPassed_ = 0;
  for (const auto& [nHit, nText] : hits) {
    PassTo(sBlock, nHit);
    texts_[nText].row = {lRows_ + 1, nRowStart_};
  }
  nLeft_ -= hits.size();
  PassTo(sBlock, sBlock.size());
  KeepTail(sBlock);
  nBlock_ += static_cast<int64_t>(sBlock.size());
}

/// Neither longer than a text may begin in, nor with a line end, across which none goes.
void clsKeyWatch::KeepTail(std::string_view sBlock) {
  const size_t nKept = std::min(sBlock.size(), nLongest_ - 1);
  sTail_ += sBlock.substr(sBlock.size() - nKept);
  if (sTail_.size() >= nLongest_) sTail_.erase(0, sTail_.size() - (nLongest_ - 1));
  sTail_.erase(0, sTail_.rfind('\n') + 1);
}

const clsKeyWatch::Row* clsKeyWatch::RowOf(std::string_view sText) const {
  const auto found = byText_.find(std::string(sText));
  return found == byText_.end() ? nullptr : &texts_[found->second].row;
}

}  // namespace quillon
