#include "clsTidyStretch.h"

#include <algorithm>
#include <limits>

namespace quillon {

namespace {

constexpr int64_t kNoEnd = std::numeric_limits<int64_t>::max();

bool Holds(std::string_view sLine, std::string_view sText) {
  return sLine.find(sText) != std::string_view::npos;
}

}  // namespace

clsTidyStretch::clsTidyStretch(const TidyTable& table) : table_(table) {
  if (!table.sStartLine.empty()) lDelay_ = std::max<int64_t>(lDelay_, -int64_t{table.lStartOffset});
  if (!table.sEndLine.empty()) lDelay_ = std::max<int64_t>(lDelay_, -int64_t{table.lEndOffset});
  if (table.sStartLine.empty()) {
    stretches_.push_back({1, kNoEnd});
    bFound_ = true;
    lFirstForEnd_ = 1;
    looking_ = table.sEndLine.empty() ? Looking::Nothing : Looking::End;
  }
  bEndFound_ = table.sEndLine.empty();
}

void clsTidyStretch::Begin(int64_t lKeyLine) {
  const int64_t lStart = std::max<int64_t>(lKeyLine + table_.lStartOffset, 1);
  if (!stretches_.empty() && stretches_.back().lEnd == kNoEnd) {
    stretches_.back().lEnd = std::min(lKeyLine, lStart) - 1;
  }
  const int64_t lAfter = stretches_.empty() ? 0 : stretches_.back().lEnd;
  stretches_.push_back({std::max(lStart, lAfter + 1), kNoEnd});
  bFound_ = true;
  lFirstForEnd_ = std::max(lKeyLine + 1, lStart);
  const bool bEndsAtStart = table_.bRepeat && table_.sEndLine.empty();
  looking_ = bEndsAtStart ? Looking::Start : table_.sEndLine.empty() ? Looking::Nothing : Looking::End;
  lFirstForStart_ = lKeyLine + 1;
}

void clsTidyStretch::Finish(int64_t lKeyLine) {
  const int64_t lEnd = lKeyLine + table_.lEndOffset;
  bEndFound_ = true;
  if (!stretches_.empty()) stretches_.back().lEnd = std::max(lEnd, stretches_.back().lStart - 1);
  looking_ = table_.bRepeat ? Looking::Start : Looking::Nothing;
  lFirstForStart_ = std::max(lEnd + 1, lKeyLine);
}

void clsTidyStretch::Arrives(int64_t lLine, std::string_view sLine) {
  if (looking_ == Looking::Nothing) return;
  if (looking_ == Looking::End && lLine >= lFirstForEnd_ && Holds(sLine, table_.sEndLine)) Finish(lLine);
  if (looking_ == Looking::Start && lLine >= lFirstForStart_ && Holds(sLine, table_.sStartLine)) Begin(lLine);
}

bool clsTidyStretch::Covers(int64_t lLine) {
  while (!stretches_.empty() && stretches_.front().lEnd < lLine) stretches_.pop_front();
  return !stretches_.empty() && stretches_.front().lStart <= lLine;
}

bool clsTidyStretch::IsOver(int64_t lLine) const {
  if (looking_ == Looking::Start) return false;
  return stretches_.empty() || stretches_.back().lEnd <= lLine;
}

bool clsTidyStretch::EndHere(int64_t lLine) {
  if (stretches_.empty()) return false;
  const bool bOpen = stretches_.size() == 1 && looking_ == Looking::End;
  stretches_.front().lEnd = lLine;
  if (!bOpen) return false;
  bEndFound_ = true;
  looking_ = table_.bRepeat ? Looking::Start : Looking::Nothing;
  lFirstForStart_ = lLine + 1;
  return table_.bRepeat;
}

}  // namespace quillon
