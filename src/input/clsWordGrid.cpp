#include "clsWordGrid.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "modText.h"

namespace quillon {

namespace {

constexpr double kHundredths = 100;
/// What lies further out comes of a made-up page, not of a printed one.
constexpr int64_t kMostColumns = 4000;
constexpr int64_t kMostLines = 2000;
/// What is nearer than this part of a column or line is at the same place.
constexpr double kTouch = 0.25;

/// The next number in quotes, which then leaves the line with all in front of it.
double TakeNumber(std::string_view& sLine) {
  sLine.remove_prefix(std::min(sLine.find('='), sLine.size()));
  double d = 0;
  if (!sLine.starts_with("=\"")) return d;
  const char* const pEnd = std::from_chars(sLine.data() + 2, sLine.data() + sLine.size(), d).ptr;
  sLine.remove_prefix(static_cast<size_t>(pEnd - sLine.data()));
  return std::isfinite(d) ? std::clamp(d, -1e6, 1e6) : 0;
}

std::string Plain(std::string_view sMarked) {
  struct Mark {
    std::string_view sMark;
    char plain;
  };
  // The fonts of many printing programs draw the key "-" as a minus or as one of the hyphens, the key "'" as a quote,
  // and a blank that holds words together: a number has its sign, and a key text is found, whichever was drawn.
  constexpr std::array kMarks{Mark{"&amp;", '&'},        Mark{"&lt;", '<'},          Mark{"&gt;", '>'},
                              Mark{"&quot;", '"'},       Mark{"&apos;", '\''},       Mark{"&#39;", '\''},
                              Mark{"\xE2\x88\x92", '-'}, Mark{"\xE2\x80\x90", '-'},  Mark{"\xE2\x80\x91", '-'},
                              Mark{"\xC2\xAD", '-'},     Mark{"\xE2\x80\x99", '\''}, Mark{"\xC2\xA0", ' '}};
  if (IsAscii(sMarked) && sMarked.find('&') == std::string_view::npos) return std::string(sMarked);
  std::string sText;
  while (!sMarked.empty()) {
    const auto mark =
        std::find_if(kMarks.begin(), kMarks.end(), [&](const Mark& m) { return sMarked.starts_with(m.sMark); });
    sText += mark != kMarks.end() ? mark->plain : sMarked.front();
    sMarked.remove_prefix(mark != kMarks.end() ? mark->sMark.size() : 1);
  }
  return sText;
}

}  // namespace

bool PlacedWord::IsTurned() const {
  constexpr size_t kFewest = 3;
  constexpr double kTimes = 1.5;
  return CharCount(sText) >= kFewest && dBottom - dTop > kTimes * (dRight - dLeft);
}

void clsWordList::Take(std::string_view sBlock, const PageSink& sink) {
  for (size_t nEnd = sBlock.find('\n'); nEnd != std::string_view::npos; nEnd = sBlock.find('\n')) {
    if (!sKept_.empty()) sKept_.append(sBlock.substr(0, nEnd));
    TakeLine(sKept_.empty() ? sBlock.substr(0, nEnd) : std::string_view(sKept_), sink);
    sKept_.clear();
    sBlock.remove_prefix(nEnd + 1);
  }
  sKept_.append(sBlock);
}

void clsWordList::TakeLine(std::string_view sLine, const PageSink& sink) {
  // Each line of the list is <word xMin="1.5" yMin="2" xMax="3" yMax="4">text</word> or begins or ends a page.
  constexpr std::string_view kEnd = "</word>";
  sLine.remove_prefix(std::min(sLine.find_first_not_of(' '), sLine.size()));
  if (sLine.starts_with("</page>")) {
    sink(words_);
    words_.clear();
  }
  if (!sLine.starts_with("<word ") || !sLine.ends_with(kEnd)) return;
  sLine.remove_suffix(kEnd.size());
  PlacedWord word;
  for (double* const pNumber : {&word.dLeft, &word.dTop, &word.dRight, &word.dBottom}) *pNumber = TakeNumber(sLine);
  const size_t nText = sLine.find('>');
  if (nText != std::string_view::npos) word.sText = Plain(sLine.substr(nText + 1));
  if (!word.sText.empty()) words_.push_back(std::move(word));
}

void clsWordGrid::Measure(const std::vector<PlacedWord>& words) {
  std::vector<double> tops;
  for (const PlacedWord& word : words) {
    if (word.IsTurned()) continue;
    const auto nChars = static_cast<double>(CharCount(word.sText));
    widths_[std::llround((word.dRight - word.dLeft) / nChars * kHundredths)] += nChars;
    dLeft_ = std::min(dLeft_, word.dLeft);
    dTop_ = std::min(dTop_, word.Middle());
    tops.push_back(word.Middle());
  }
  std::sort(tops.begin(), tops.end());
  for (size_t i = 1; i < tops.size(); ++i) {
    const double dApart = tops[i] - tops[i - 1];
    // Less is one line in letters of several sizes.
    constexpr double kLeast = 3;
    if (dApart >= kLeast) heights_[std::llround(dApart * kHundredths)] += 1;
  }
}

/// The length that most have, over those that differ from it by no more than rounding.
double clsWordGrid::Dominant(const Lengths& lengths) {
  constexpr double kNear = 0.02;
  double dBest = 0;
  double dMost = 0;
  for (const auto& [length, often] : lengths) {
    const auto nNear = static_cast<int64_t>(std::ceil(static_cast<double>(length) * kNear));
    double dSum = 0;
    double dCount = 0;
    for (auto it = lengths.lower_bound(length - nNear); it != lengths.end() && it->first <= length + nNear; ++it) {
      dSum += static_cast<double>(it->first) * it->second;
      dCount += it->second;
    }
    if (dCount <= dMost) continue;
    dMost = dCount;
    dBest = dSum / dCount;
  }
  return dBest / kHundredths;
}

void clsWordGrid::EndMeasure() {
  constexpr double kLeast = 0.5;
  if (const double d = Dominant(widths_); d >= kLeast) dWidth_ = d;
  if (const double d = Dominant(heights_); d >= kLeast) dHeight_ = d;
}

int64_t clsWordGrid::LineOf(const PlacedWord& word) const {
  return std::clamp<int64_t>(std::llround((word.Middle() - dTop_) / dHeight_), 0, kMostLines);
}

int64_t clsWordGrid::ColumnOf(const PlacedWord& word) const {
  return std::clamp<int64_t>(std::llround((word.dLeft - dLeft_) / dWidth_), 0, kMostColumns);
}

bool clsWordGrid::LiesOver(const PlacedWord& word, const PlacedWord& other) const {
  const auto near = [](double d1, double d2, double dMost) { return std::abs(d1 - d2) < dMost; };
  return word.sText == other.sText && near(word.dLeft, other.dLeft, kTouch * dWidth_) &&
         near(word.dRight, other.dRight, kTouch * dWidth_) && near(word.Middle(), other.Middle(), kTouch * dHeight_);
}

void clsWordGrid::PlaceLine(const std::vector<const PlacedWord*>& words, std::string& sOut) {
  int64_t lColumn = 0;
  const PlacedWord* pLast = nullptr;
  for (const PlacedWord* const pWord : words) {
    if (pLast != nullptr && LiesOver(*pWord, *pLast)) {
      ++lDoubled_;
      continue;
    }
    int64_t lWanted = ColumnOf(*pWord);
    // Pieces that touch are one word, whose letters were drawn in several steps.
    const bool bPiece = pLast != nullptr && std::abs(pWord->dLeft - pLast->dRight) < kTouch * dWidth_;
    // Words never run into each other, nor over what stands there.
    const int64_t lFree = lColumn == 0 || bPiece ? lColumn : lColumn + 1;
    if (lWanted < lFree && !bPiece) ++lMoved_;
    lWanted = bPiece ? lFree : std::max(lWanted, lFree);
    sOut.append(static_cast<size_t>(lWanted - lColumn), ' ').append(pWord->sText);
    lColumn = lWanted + static_cast<int64_t>(CharCount(pWord->sText));
    pLast = pWord;
  }
}

void clsWordGrid::Place(std::vector<PlacedWord>& words, std::string& sOut) {
  if (++lPages_ > 1) sOut += '\f';
  lWords_ += static_cast<int64_t>(words.size());
  if (words.empty()) ++lEmpty_;
  std::map<int64_t, std::vector<const PlacedWord*>> lines;
  for (const PlacedWord& word : words) {
    if (word.IsTurned()) ++lTurned_;
    if (!word.IsTurned()) lines[LineOf(word)].push_back(&word);
  }
  int64_t lLine = 0;
  for (auto& [lAt, line] : lines) {
    std::stable_sort(line.begin(), line.end(), [](auto* a, auto* b) { return a->dLeft < b->dLeft; });
    sOut.append(static_cast<size_t>(lAt - lLine), '\n');
    PlaceLine(line, sOut);
    sOut += '\n';
    lLine = lAt + 1;
  }
}

}  // namespace quillon
