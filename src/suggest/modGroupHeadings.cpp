#include "modGroupHeadings.h"

#include <algorithm>

#include "modCellKinds.h"
#include "modRecordHeadings.h"

namespace quillon {

namespace {

using Way = HeadingCandidate::Way;

bool Overlap(const HeadingCandidate& a, const HeadingCandidate& b) {
  for (const HeadingHit& hit : a.hits) {
    for (const HeadingHit& other : b.hits) {
      if (other.nLine > hit.nLine) break;
      if (other.nLine == hit.nLine && other.lFirst <= hit.lLast && other.lLast >= hit.lFirst) return true;
    }
  }
  return false;
}

/// Which of two candidates for the same place tells it better.
bool IsBetter(const HeadingCandidate& a, const HeadingCandidate& b) {
  // A label says more than a shape, even if other lines have the shape, too.
  if (a.way != b.way && (a.way == Way::Shape || b.way == Way::Shape)) {
    const HeadingCandidate& shape = a.way == Way::Shape ? a : b;
    const HeadingCandidate& label = a.way == Way::Shape ? b : a;
    return (&a == &label) == (label.hits.size() * 3 >= shape.hits.size() * 2);
  }
  if (a.hits.size() != b.hits.size()) return a.hits.size() > b.hits.size();
  if (a.bNumbered != b.bNumbered) return a.bNumbered;
  return a.way < b.way;
}

std::string NameOf(std::u32string_view sText) {
  constexpr std::u32string_view kEnds = U":=.#-* ";
  const size_t nGap = sText.rfind(U"  ");
  if (nGap != std::u32string_view::npos) sText.remove_prefix(nGap);
  while (!sText.empty() && kEnds.find(sText.back()) != std::u32string_view::npos) sText.remove_suffix(1);
  while (!sText.empty() && kEnds.find(sText.front()) != std::u32string_view::npos) sText.remove_prefix(1);
  return Utf8Of(sText);
}

TidyTyping TypeOfValues(const clsReportSample& report, const HeadingCandidate& candidate) {
  clsDateForms dates;
  for (const HeadingHit& hit : candidate.hits) {
    dates.Add(report.Lines()[hit.nLine].sText.substr(static_cast<size_t>(hit.lFirst),
                                                     static_cast<size_t>(hit.lLast - hit.lFirst) + 1));
  }
  const std::string_view sForm = dates.Form();
  if (sForm.empty()) return {TidyType::Text, false, 0, {}};
  return {TidyType::Date, false, 0, std::string(sForm)};
}

/// The mark that a hit's number is.
size_t NumberMark(const SampleLine& line, const HeadingHit& hit) {
  size_t i = 0;
  while (line.marks[i].lStart < hit.lFirst) ++i;
  return i;
}

/// Places from 1 of a number and of the name behind it. False if they differ from line to line.
bool PlacesOfNumbered(const clsReportSample& report, const HeadingCandidate& candidate,
                      std::vector<TidyPlace>& places) {
  constexpr int32_t kOpen = INT32_MAX;
  const HeadingHit& first = candidate.hits.front();
  int32_t lFirst = first.lFirst;
  int32_t lNumberLast = 0;
  int32_t lNameLast = 0;
  int32_t lNext = kOpen;
  for (const HeadingHit& hit : candidate.hits) {
    if (hit.lName != first.lName || hit.lNumberLast >= first.lName) return false;
    const SampleLine& line = report.Lines()[hit.nLine];
    const size_t n = NumberMark(line, hit);
    lFirst = std::min(lFirst, n > 0 ? line.marks[n - 1].lEnd + 2 : hit.lFirst);
    lNumberLast = std::max(lNumberLast, hit.lNumberLast);
    lNameLast = std::max(lNameLast, hit.lLast);
    for (const LineMark& mark : line.marks) {
      if (mark.lStart > hit.lLast && candidate.sEnds.empty()) lNext = std::min(lNext, mark.lStart);
    }
  }
  if (lNameLast >= lNext) return false;
  places = {{lFirst + 1, lNumberLast + 1}, {first.lName + 1, lNext == kOpen ? 0 : lNext - 1}};
  return true;
}

/// A number and a name: by their places, or, where the words in front have not always the same length, word by word:
/// those in front are passed over, the last column takes the rest of the line.
void SplitNumbered(const clsReportSample& report, const HeadingCandidate& candidate, TidyPart& part) {
  const std::string sName = part.names.front();
  part.names = {sName + " No", sName};
  part.types.assign(2, {TidyType::Text, false, 0, {}});
  part.cut.places.clear();
  if (std::vector<TidyPlace> places; PlacesOfNumbered(report, candidate, places)) {
    part.cut.places.push_back(std::move(places));
    return;
  }
  part.cut.split = TidySplit::AtBlanks;
  const size_t nInFront = NumberMark(report.Lines()[candidate.hits.front().nLine], candidate.hits.front());
  part.types.insert(part.types.begin(), nInFront, {TidyType::Skip, false, 0, {}});
}

/// What the values of a shape begin with: a letter, a number of one width, anything.
std::string PictureOfStart(const clsReportSample& report, const HeadingCandidate& candidate) {
  if (candidate.bLetters) return "A";
  if (!candidate.bNumbered) return "X";
  const HeadingHit& first = candidate.hits.front();
  for (const HeadingHit& hit : candidate.hits) {
    const std::u32string_view sText = report.Lines()[hit.nLine].sText;
    for (int32_t l = hit.lFirst; l <= hit.lNumberLast; ++l) {
      if (!IsDigitPlace(sText[static_cast<size_t>(l)])) return "X";
    }
    if (hit.lNumberLast != first.lNumberLast) return "9";
  }
  return std::string(static_cast<size_t>(first.lNumberLast - first.lFirst) + 1, '9') + "_";
}

TidyPart PartOf(const clsReportSample& report, const HeadingCandidate& candidate) {
  TidyPart part;
  if (candidate.way == Way::Shape) {
    const auto nStart = static_cast<size_t>(candidate.hits.front().lFirst);
    part.likes.push_back(PictureOfText(candidate.sText) + PictureOfStart(report, candidate));
    part.cut.places = {{{static_cast<int32_t>(nStart) + 1, 0}}};
    part.names.emplace_back("Group");
    if (candidate.lBehind > 0 && !candidate.bNumbered) {
      part.cut.places = {{{static_cast<int32_t>(nStart) + 1, candidate.lBehind}, {candidate.lBehind + 1, 0}}};
      part.needs = {{0, {{TidyKind::Any, {}}}}, {1, {{TidyKind::Blank, {}}}}};
      part.types = {{TidyType::Text, false, 0, {}}, {TidyType::Skip, false, 0, {}}};
      return part;
    }
  } else if (candidate.sText.empty()) {
    // The value comes first, and what it is known by behind it.
    part.texts.push_back(Utf8Of(candidate.sBehind));
    part.cut.split = TidySplit::AtBlanks;
    part.names.push_back(NameOf(candidate.sBehind));
    part.types = {{TidyType::Text, false, 0, {}}, {TidyType::Skip, false, 0, {}}};
    return part;
  } else {
    if (candidate.bPrefix) {
      const HeadingHit& hit = candidate.hits.front();
      part.likes.push_back(PictureOfText(report.Lines()[hit.nLine].sText.substr(0, static_cast<size_t>(hit.lFirst))) +
                           "X");
      part.cut.places = {{{hit.lFirst + 1, 0}}};
    } else {
      part.texts.push_back(Utf8Of(candidate.sText));
    }
    if (candidate.way == Way::Figures && !candidate.sBehind.empty()) part.sBefore = Utf8Of(candidate.sBehind);
    part.names.push_back(NameOf(candidate.sText));
  }
  part.types.push_back(TypeOfValues(report, candidate));
  if (!candidate.sEnds.empty()) part.sBefore = Utf8Of(candidate.sEnds);
  if (candidate.bNumbered) SplitNumbered(report, candidate, part);
  return part;
}

}  // namespace

std::vector<TidyPart> FindGroupHeadings(const clsReportSample& report, std::span<const size_t> rows,
                                        const LineOwners& owners, size_t nNames, bool bJoined,
                                        std::span<const ShapeColumn> columns) {
  std::vector<HeadingCandidate> kept;
  for (HeadingCandidate& candidate : clsHeadingCandidates(report, rows, owners, nNames, bJoined, columns).Find()) {
    bool bKeep = true;
    for (const HeadingCandidate& other : kept)
      bKeep = bKeep && (!Overlap(candidate, other) || IsBetter(candidate, other));
    if (!bKeep) continue;
    std::erase_if(kept, [&](const HeadingCandidate& other) { return Overlap(candidate, other); });
    kept.push_back(std::move(candidate));
  }
  std::vector<TidyPart> headings;
  std::set<size_t> taken;
  for (const HeadingCandidate& candidate : kept) {
    headings.push_back(PartOf(report, candidate));
    for (const HeadingHit& hit : candidate.hits) taken.insert(hit.nLine);
  }
  if (auto record = FindRecordHeading(report, rows, owners, taken)) headings.push_back(std::move(*record));
  return headings;
}

}  // namespace quillon
