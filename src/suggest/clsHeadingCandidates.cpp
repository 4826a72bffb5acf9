#include "clsHeadingCandidates.h"

#include <algorithm>

#include "modCellKinds.h"
#include "modRowKinds.h"

namespace quillon {

namespace {

constexpr size_t kNear = 12;  ///< Lines above a row that may be its group's heading
constexpr size_t kMostMarks = 24;

bool HasDigit(std::u32string_view sText) {
  return std::any_of(sText.begin(), sText.end(), IsDigitPlace);
}
bool HasLetter(std::u32string_view sText) {
  return std::any_of(sText.begin(), sText.end(), IsLetterPlace);
}

std::u32string_view MarkText(const SampleLine& line, const LineMark& mark) {
  return line.sText.substr(static_cast<size_t>(mark.lStart), static_cast<size_t>(mark.lEnd - mark.lStart) + 1);
}

/// The last place of the text that begins at mark nFrom and goes on to two blanks.
size_t LastOfPiece(const SampleLine& line, size_t nFrom) {
  size_t n = nFrom;
  while (n + 1 < line.marks.size() && line.marks[n + 1].lStart - line.marks[n].lEnd <= 2) ++n;
  return n;
}

/// How many of a line's first words are a label: letters alone, but for what ends it. All, if none is.
size_t LabelWords(const SampleLine& line, size_t nWords) {
  size_t n = 0;
  for (; n < nWords; ++n) {
    std::u32string_view sWord = MarkText(line, line.marks[n]);
    constexpr std::u32string_view kEnds = U":=.#,-()";
    while (!sWord.empty() && kEnds.find(sWord.back()) != std::u32string_view::npos) sWord.remove_suffix(1);
    if (!std::all_of(sWord.begin(), sWord.end(), IsLetterPlace)) break;
  }
  return n == 0 ? nWords : n;
}

}  // namespace

clsHeadingCandidates::clsHeadingCandidates(const clsReportSample& report, std::span<const size_t> rows,
                                           const LineOwners& owners, size_t nNames, bool bJoined,
                                           std::span<const ShapeColumn> columns)
    : report_(report), rows_(rows), owners_(owners), nNames_(nNames), bJoined_(bJoined), columns_(columns) {}

void clsHeadingCandidates::Collect() {
  size_t nAfter = 0;
  for (const size_t nRow : rows_) {
    size_t nFound = 0;
    std::vector<size_t> above;
    for (size_t n = nRow; n > nAfter && nFound < kNear; --n) {
      const SampleLine& line = report_.Lines()[n - 1];
      if (owners_.tables[n - 1] != 0) break;
      if (line.IsBlank() || line.bDrawn || owners_.names[n - 1] || owners_.totals[n - 1]) continue;
      ++nFound;
      above.push_back(n - 1);
    }
    lines_.insert(lines_.end(), above.rbegin(), above.rend());
    nAfter = nRow + 1;
  }
}

/// "DEPARTMENT NUMBER: 001 Sales    PERIOD: 11": each label with what stands behind it.
void clsHeadingCandidates::AddLabels(size_t nLine) {
  const SampleLine& line = report_.Lines()[nLine];
  size_t nLabel = 0;  // first mark of the label at hand
  for (size_t i = 0; i + 1 < line.marks.size(); ++i) {
    if (i > nLabel && line.marks[i].lStart - line.marks[i - 1].lEnd > 2) nLabel = i;
    const std::u32string_view sMark = MarkText(line, line.marks[i]);
    const bool bEndsLabel = sMark.back() == U':' || sMark.back() == U'=' || sMark.back() == U'#';
    if (!bEndsLabel) continue;
    const auto nFrom = static_cast<size_t>(line.marks[nLabel].lStart);
    const std::u32string_view sLabel = line.sText.substr(nFrom, static_cast<size_t>(line.marks[i].lEnd) + 1 - nFrom);
    const size_t nValue = i + 1;
    if (HasLetter(sLabel) && !HasDigit(sLabel) && !SaysPage(sLabel)) {
      size_t nLast = LastOfPiece(line, nValue);
      HeadingCandidate& candidate = byText_[std::u32string(sLabel)];
      candidate.sText = sLabel;
      candidate.hits.push_back({nLine, line.marks[nValue].lStart, line.marks[nLast].lEnd});
    }
    nLabel = i + 1;
  }
}

/// "Flow Budget for Zone  1 at Time Step   1": each figure by the words in front of it and behind it.
void clsHeadingCandidates::AddFigures(size_t nLine) {
  const SampleLine& line = report_.Lines()[nLine];
  const size_t nMarks = std::min(line.marks.size(), kMostMarks);
  if (SaysPage(line.sText)) return;
  size_t nWords = 0;  // marks without figures in front of the one at hand
  for (size_t i = 0; i < nMarks; ++i) {
    const std::u32string_view sMark = MarkText(line, line.marks[i]);
    if (!HasDigit(sMark)) {
      ++nWords;
      continue;
    }
    std::u32string_view sText;
    std::u32string_view sBehind;
    if (nWords > 0) {
      const auto nFrom = static_cast<size_t>(line.marks[i - nWords].lStart);
      sText = line.sText.substr(nFrom, static_cast<size_t>(line.marks[i - 1].lEnd) + 1 - nFrom);
    }
    if (i + 1 < nMarks && !HasDigit(MarkText(line, line.marks[i + 1]))) sBehind = MarkText(line, line.marks[i + 1]);
    nWords = 0;
    const bool bWhole = !sText.empty() || (line.marks.size() == 2 && !sBehind.empty());
    if (!bWhole || (!sText.empty() && (!HasLetter(sText) || sText.size() < 2))) continue;
    HeadingCandidate& candidate = byText_[std::u32string(sText) + U'\t' + std::u32string(sBehind)];
    candidate.way = HeadingCandidate::Way::Figures;
    candidate.sText = sText;
    candidate.sBehind = sBehind;
    int32_t lLast = line.marks[i].lEnd;
    candidate.hits.push_back({nLine, line.marks[i].lStart, lLast});
  }
}

void clsHeadingCandidates::AddWords(size_t nLine) {
  const SampleLine& line = report_.Lines()[nLine];
  const std::u32string_view sFirst = MarkText(line, line.marks.front());
  if (line.marks.size() < 2 || SaysPage(line.sText)) return;
  if (!HasLetter(sFirst) && (HasDigit(sFirst) || !HasLetter(MarkText(line, line.marks[1])))) return;
  byFirstWord_[std::u32string(static_cast<size_t>(line.marks.front().lStart), U' ') + std::u32string(sFirst)].push_back(
      nLine);
}

/// A line of one text alone: " :JUNIATA RIVER", "...COASTAL AREAS...".
void clsHeadingCandidates::AddShape(size_t nLine) {
  const SampleLine& line = report_.Lines()[nLine];
  const auto itLetter = std::find_if(line.sText.begin(), line.sText.end(),
                                     [](char32_t ch) { return IsLetterPlace(ch) || IsDigitPlace(ch); });
  if (itLetter == line.sText.end() || SaysPage(line.sText) || SaysTotal(line.sText)) return;
  const auto lStart = static_cast<int32_t>(itLetter - line.sText.begin());
  if (bJoined_ && TrimPlaces(line.sText.substr(0, static_cast<size_t>(lStart))).empty()) return;
  size_t nFirst = 0;
  while (line.marks[nFirst].lEnd < lStart) ++nFirst;
  if (LastOfPiece(line, nFirst) + 1 < line.marks.size()) return;
  byIndent_[lStart].push_back(nLine);
}

/// Lines that begin with the same word: what they all begin with is the label, what follows changes.
void clsHeadingCandidates::FinishWords() {
  for (const auto& [sFirst, lines] : byFirstWord_) {
    if (lines.size() < 2) continue;
    const SampleLine& first = report_.Lines()[lines.front()];
    size_t nCommon = first.marks.size();
    for (const size_t n : lines) {
      const SampleLine& line = report_.Lines()[n];
      size_t i = 0;
      while (i < std::min(nCommon, line.marks.size()) && line.marks[i].lStart == first.marks[i].lStart &&
             MarkText(line, line.marks[i]) == MarkText(first, first.marks[i])) {
        ++i;
      }
      nCommon = i;
    }
    nCommon = LabelWords(first, nCommon);
    if (nCommon == 0) continue;
    const auto nFrom = static_cast<size_t>(first.marks.front().lStart);
    HeadingCandidate candidate;
    candidate.way = HeadingCandidate::Way::Words;
    candidate.sText = first.sText.substr(nFrom, static_cast<size_t>(first.marks[nCommon - 1].lEnd) + 1 - nFrom);
    for (const size_t n : lines) {
      const SampleLine& line = report_.Lines()[n];
      if (line.marks.size() <= nCommon) continue;
      candidate.hits.push_back({n, line.marks[nCommon].lStart, line.marks[LastOfPiece(line, nCommon)].lEnd});
    }
    if (candidate.hits.size() == lines.size()) byText_.try_emplace(candidate.sText + U"\t\t", candidate);
  }
}

void clsHeadingCandidates::FinishShapes() {
  for (const auto& [lStart, lines] : byIndent_) {
    HeadingCandidate candidate;
    candidate.way = HeadingCandidate::Way::Shape;
    candidate.sText = report_.Lines()[lines.front()].sText.substr(0, static_cast<size_t>(lStart));
    candidate.bLetters = true;
    bool bSame = true;
    for (const size_t n : lines) {
      const SampleLine& line = report_.Lines()[n];
      // Of the lines above the first row the last one counts.
      if (n < rows_.front() && candidate.hits.size() == 1) candidate.hits.clear();
      if (n < rows_.front() && line.sText.substr(0, static_cast<size_t>(lStart)) != candidate.sText)
        candidate.sText = line.sText.substr(0, static_cast<size_t>(lStart));
      bSame = bSame && (n < rows_.front() || line.sText.substr(0, static_cast<size_t>(lStart)) == candidate.sText);
      candidate.hits.push_back({n, lStart, line.marks.back().lEnd});
    }
    for (const HeadingHit& hit : candidate.hits)
      candidate.bLetters =
          candidate.bLetters && IsLetterPlace(report_.Lines()[hit.nLine].sText[static_cast<size_t>(lStart)]);
    if (bSame && FindEndOfShape(candidate))
      byText_.try_emplace(U"\t" + std::u32string(static_cast<size_t>(lStart), U' '), candidate);
  }
}

bool clsHeadingCandidates::ShapeFits(const HeadingCandidate& candidate, const SampleLine& line) const {
  const size_t n = candidate.sText.size();
  if (!line.sText.starts_with(candidate.sText) || line.sText.size() <= n || IsBlankPlace(line.sText[n])) return false;
  if (candidate.bLetters && !IsLetterPlace(line.sText[n])) return false;
  return candidate.lBehind == 0 || static_cast<int32_t>(line.sText.size()) <= candidate.lBehind;
}

/// Other lines that begin alike are told apart by what stands further right, where the values have ended.
bool clsHeadingCandidates::FindEndOfShape(HeadingCandidate& candidate) const {
  constexpr int32_t kRoom = 12;
  int32_t lLast = 0;
  std::set<size_t> hits;
  for (const HeadingHit& hit : candidate.hits) {
    lLast = std::max(lLast, hit.lLast);
    hits.insert(hit.nLine);
  }
  int32_t lShortest = INT32_MAX;
  for (size_t n = candidate.hits.front().nLine; n <= rows_.back(); ++n) {
    const SampleLine& line = report_.Lines()[n];
    if (line.IsBlank() || line.bDrawn || hits.contains(n) || !ShapeFits(candidate, line)) continue;
    if (owners_.tables[n] == 0 && !owners_.names[n] && !SaysTotal(line.sText)) continue;
    lShortest = std::min(lShortest, static_cast<int32_t>(line.sText.size()));
  }
  if (lShortest == INT32_MAX) return true;
  candidate.lBehind = std::min(lLast + kRoom, lShortest - 1);
  return candidate.lBehind > lLast;
}

std::u32string_view clsHeadingCandidates::ValueOf(const HeadingHit& hit) const {
  return report_.Lines()[hit.nLine].sText.substr(static_cast<size_t>(hit.lFirst),
                                                 static_cast<size_t>(hit.lLast - hit.lFirst) + 1);
}

/// How many rows stand above a line.
size_t clsHeadingCandidates::GroupOf(size_t nLine) const {
  return static_cast<size_t>(std::lower_bound(rows_.begin(), rows_.end(), nLine) - rows_.begin());
}

bool clsHeadingCandidates::Changes(const HeadingCandidate& candidate) const {
  std::set<std::u32string_view> values;
  for (const HeadingHit& hit : candidate.hits) values.insert(ValueOf(hit));
  return values.size() >= 2;
}

/// In front of the first row, none behind the last one, and rows between most of the changes.
bool clsHeadingCandidates::StandsInFront(const HeadingCandidate& candidate) const {
  if (candidate.hits.size() < 2 || GroupOf(candidate.hits.front().nLine) != 0) return false;
  size_t nWithRows = 0;
  for (size_t i = 0; i < candidate.hits.size(); ++i) {
    const size_t nHere = GroupOf(candidate.hits[i].nLine);
    const size_t nNext = i + 1 < candidate.hits.size() ? GroupOf(candidate.hits[i + 1].nLine) : rows_.size();
    nWithRows += nNext > nHere ? 1U : 0U;
  }
  return nWithRows * 4 >= candidate.hits.size() * 3;
}

/// A label or a numbered name between the names of the columns and the first row, with one value in all of the report.
bool clsHeadingCandidates::StandsBelowNames(const HeadingCandidate& candidate) const {
  const size_t nLine = candidate.hits.front().nLine;
  const bool bMarked = !TrimPlaces(candidate.sText).empty();
  const bool bSure = candidate.way == HeadingCandidate::Way::Label ||
                     (candidate.bNumbered && (candidate.way == HeadingCandidate::Way::Figures ||
                                              (candidate.way == HeadingCandidate::Way::Shape && bMarked)));
  return bSure && nLine > nNames_ && nLine < rows_.front() && GroupOf(candidate.hits.back().nLine) < rows_.size();
}

/// The blanks and the words that all hits begin with.
bool clsHeadingCandidates::PrefixFits(const HeadingCandidate& candidate, const SampleLine& line) const {
  const HeadingHit& hit = candidate.hits.front();
  const auto nPrefix = static_cast<size_t>(hit.lFirst);
  return line.sText.size() > nPrefix &&
         line.sText.substr(0, nPrefix) == report_.Lines()[hit.nLine].sText.substr(0, nPrefix);
}

/// Whether the label or the shape tells these lines from all others that are near.
bool clsHeadingCandidates::IsItsOwn(const HeadingCandidate& candidate) const {
  const bool bShape = candidate.way == HeadingCandidate::Way::Shape;
  const std::u32string_view sWanted = !candidate.sText.empty() || bShape ? std::u32string_view(candidate.sText)
                                                                         : std::u32string_view(candidate.sBehind);
  std::set<size_t> hits;
  for (const HeadingHit& hit : candidate.hits) hits.insert(hit.nLine);
  size_t nOthers = 0;
  for (size_t n = candidate.hits.front().nLine; n <= rows_.back(); ++n) {
    const SampleLine& line = report_.Lines()[n];
    if (line.IsBlank() || line.bDrawn || hits.contains(n)) continue;
    const bool bHit = bShape              ? ShapeFits(candidate, line)
                      : candidate.bPrefix ? PrefixFits(candidate, line)
                                          : line.sText.find(sWanted) != std::u32string_view::npos;
    if (bHit && (owners_.tables[n] != 0 || (bShape && owners_.names[n]))) return false;
    nOthers += bHit ? 1U : 0U;
  }
  return nOthers * 4 <= candidate.hits.size();
}

namespace {

/// A number that names something: 10, 0042, V557, 12-300. No amount, no date, no time.
bool IsCode(std::u32string_view sText) {
  constexpr size_t kLongest = 12;
  const bool bPlain = std::all_of(sText.begin(), sText.end(), [](char32_t ch) {
    return IsDigitPlace(ch) || (ch >= U'A' && ch <= U'Z') || ch == U'-' || ch == U'.';
  });
  const size_t nPoint = sText.rfind(U'.');
  const bool bAmount = nPoint != std::u32string_view::npos && nPoint + 3 == sText.size();
  return bPlain && !bAmount && HasDigit(sText) && sText.size() <= kLongest && !IsDateText(sText);
}

bool IsMonth(std::u32string_view sText) {
  constexpr size_t kShort = 3;
  constexpr std::u32string_view kMonths =
      U"january february march april may june july august september october november december ";
  if (sText.size() < kShort || !std::all_of(sText.begin(), sText.end(), IsLetterPlace)) return false;
  std::u32string sLow(sText);
  for (char32_t& ch : sLow) ch |= 0x20U;
  const size_t n = kMonths.find(sLow);
  const bool bBegins = n != std::u32string_view::npos && (n == 0 || kMonths[n - 1] == U' ');
  return bBegins && (sText.size() == kShort || kMonths[n + sText.size()] == U' ');
}

}  // namespace

/// "10 SHIPPING", "01 - MAIN STREET". Behind a figure among words a name must be one word and end the line.
bool clsHeadingCandidates::FindNumberAndName(HeadingCandidate::Way way, HeadingHit& hit) const {
  constexpr int32_t kNear = 6;
  const SampleLine& line = report_.Lines()[hit.nLine];
  size_t i = 0;
  while (line.marks[i].lStart < hit.lFirst) ++i;
  size_t nName = i + 1;
  if (nName < line.marks.size() && MarkText(line, line.marks[nName]) == U"-") ++nName;
  if (nName >= line.marks.size() || line.marks[nName].lStart - line.marks[nName - 1].lEnd > kNear) return false;
  const std::u32string_view sNumber = MarkText(line, line.marks[i]);
  const std::u32string_view sName = MarkText(line, line.marks[nName]);
  if (!IsCode(sNumber) || !IsLetterPlace(sName.front()) || sName.back() == U':' || IsMonth(sName)) return false;
  const size_t nLast = LastOfPiece(line, nName);
  const auto nEnd = static_cast<size_t>(line.marks[nLast].lEnd) + 1;
  const bool bFar = line.marks[nName].lStart - line.marks[nName - 1].lEnd > 2;
  if (bFar && HasDigit(line.sText.substr(static_cast<size_t>(line.marks[nName].lStart),
                                         nEnd - static_cast<size_t>(line.marks[nName].lStart))))
    return false;
  if (way == HeadingCandidate::Way::Figures) {
    const bool bWord = nLast == nName && std::all_of(sName.begin(), sName.end(), IsLetterPlace);
    if (!bWord || nLast + 1 < line.marks.size() || !std::all_of(sNumber.begin(), sNumber.end(), IsDigitPlace))
      return false;
  }
  hit.lNumberLast = line.marks[i].lEnd;
  hit.lName = line.marks[nName].lStart;
  hit.lLast = line.marks[nLast].lEnd;
  return true;
}

/// A number and a name behind it are two values, if all lines have both, either in places or as the rest of the line.
void clsHeadingCandidates::FindNumbered(HeadingCandidate& candidate) const {
  std::vector<HeadingHit> hits = candidate.hits;
  bool bPlaces = true;
  bool bRest = true;
  std::set<std::u32string_view> names;
  for (HeadingHit& hit : hits) {
    if (!FindNumberAndName(candidate.way, hit)) return;
    names.insert(report_.Lines()[hit.nLine].sText.substr(static_cast<size_t>(hit.lName),
                                                         static_cast<size_t>(hit.lLast - hit.lName) + 1));
    bPlaces = bPlaces && hit.lFirst == hits.front().lFirst && hit.lName == hits.front().lName;
    bRest = bRest && hit.lLast == report_.Lines()[hit.nLine].marks.back().lEnd && hit.lName == hit.lNumberLast + 2;
  }
  const bool bLabel = hits.size() > 1 && names.size() == 1;  // what never changes names the next value
  if ((!bPlaces && !bRest) || bLabel) return;
  candidate.bNumbered = true;
  candidate.hits = std::move(hits);
}

/// What says that a group goes on, on the next page, is no part of its name.
void clsHeadingCandidates::DropContinued(HeadingCandidate& candidate) const {
  for (HeadingHit& hit : candidate.hits) {
    for (const std::u32string_view sEnd : {U"(continued)", U"(Continued)", U"(CONTINUED)", U"(cont.)", U"(CONT.)",
                                           U"(cont'd)", U"(CONT'D)", U"CONTINUED", U"(Fortsetzung)", U"***", U"**"}) {
      const std::u32string_view sValue = ValueOf(hit);
      if (!sValue.ends_with(sEnd) || sValue.size() == sEnd.size()) continue;
      candidate.sEnds = sEnd;
      hit.lLast =
          hit.lFirst + static_cast<int32_t>(TrimPlaces(sValue.substr(0, sValue.size() - sEnd.size())).size()) - 1;
    }
  }
}

/// Amounts under a column of numbers are balances and sums, and belong to no row.
bool clsHeadingCandidates::IsBalance(const HeadingCandidate& candidate) const {
  if (SaysTotal(candidate.sText) && candidate.way != HeadingCandidate::Way::Shape) return true;
  return std::all_of(candidate.hits.begin(), candidate.hits.end(), [&](const HeadingHit& hit) {
    const std::u32string_view sValue = ValueOf(hit);
    const bool bAmount = IsNumberText(sValue) && sValue.find_first_of(U".,") != std::u32string_view::npos;
    return bAmount && std::any_of(columns_.begin(), columns_.end(), [&](const ShapeColumn& column) {
             return column.bNumber && hit.lLast >= column.lFirst && hit.lLast <= column.lPlaceLast;
           });
  });
}

/// The day or the period that a report was made for belongs to its rows, even if it is the same in all of it.
bool IsPeriod(std::u32string_view sLabel) {
  std::u32string sLow(sLabel);
  for (char32_t& ch : sLow) {
    if (ch >= U'A' && ch <= U'Z') ch |= 0x20U;
  }
  for (const std::u32string_view sWord : {U"as of:", U"as at:", U"period:", U"month:", U"as of date:"}) {
    if (sLow.ends_with(sWord)) return true;
  }
  return false;
}

std::vector<HeadingCandidate> clsHeadingCandidates::Find() {
  Collect();
  for (const size_t n : lines_) {
    AddLabels(n);
    AddFigures(n);
    AddWords(n);
    AddShape(n);
  }
  FinishWords();
  FinishShapes();
  std::vector<HeadingCandidate> found;
  for (auto& [sKey, candidate] : byText_) {
    const bool bPeriod = candidate.way == HeadingCandidate::Way::Label && IsPeriod(candidate.sText) &&
                         GroupOf(candidate.hits.front().nLine) == 0;
    DropContinued(candidate);
    FindNumbered(candidate);
    if (candidate.bNumbered) DropContinued(candidate);
    if (IsBalance(candidate)) continue;
    candidate.bPrefix = candidate.way == HeadingCandidate::Way::Words && !IsItsOwn(candidate);
    const bool bOnly = StandsBelowNames(candidate);
    if (!bPeriod && !bOnly && !(Changes(candidate) && StandsInFront(candidate))) continue;
    if (!IsItsOwn(candidate)) continue;
    found.push_back(std::move(candidate));
  }
  std::stable_sort(found.begin(), found.end(), [](const HeadingCandidate& a, const HeadingCandidate& b) {
    return std::pair(a.hits.front().nLine, a.hits.front().lFirst) <
           std::pair(b.hits.front().nLine, b.hits.front().lFirst);
  });
  return found;
}

}  // namespace quillon
