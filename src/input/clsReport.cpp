#include "clsReport.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "clsKeySearch.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr int64_t kAllRows = std::numeric_limits<int64_t>::max();

}  // namespace

bool clsReport::Open(Failure& failure) {
  if (bOpen_ && !reader_.LastFailure().Failed()) return true;
  bOpen_ = reader_.Open(sPath_, options_, failure);
  if (!bOpen_) return false;
  options_.pCodePage = &reader_.CodePage();
  places_.assign(1, {0, reader_.BytesDone()});
  return true;
}

void clsReport::AddPlace(Place place) {
  const auto after = std::upper_bound(places_.begin(), places_.end(), place.lRow,
                                      [](int64_t lRow, const Place& other) { return lRow < other.lRow; });
  if (std::prev(after)->lRow == place.lRow) return;
  places_.insert(after, place);
  ThinPlaces();
}

void clsReport::ThinPlaces() {
  if (places_.size() < kMostPlaces) return;
  lStride_ *= 2;
  size_t nKept = 1;
  for (size_t i = 1; i < places_.size(); ++i) {
    if (places_[i].lRow - places_[nKept - 1].lRow >= lStride_) places_[nKept++] = places_[i];
  }
  places_.resize(nKept);
}

/// The reader's next row is a place, if the last one is far enough above.
void clsReport::NotePlace() {
  if (reader_.RowNumber() - places_.back().lRow < lStride_) return;
  places_.push_back({reader_.RowNumber(), reader_.BytesDone()});
  ThinPlaces();
}

/// Goes to the nearest place with no more than lRow rows before it.
bool clsReport::SeekPlace(int64_t lRow) {
  if (reader_.LastFailure().Failed()) return false;
  const auto after = std::upper_bound(places_.begin(), places_.end(), lRow,
                                      [](int64_t lWanted, const Place& place) { return lWanted < place.lRow; });
  const Place place = *std::prev(after);
  if (reader_.RowNumber() >= place.lRow && reader_.RowNumber() <= lRow) return true;
  return reader_.SeekRow(place.lRow, place.nOffset);
}

bool clsReport::SeekLine(int64_t lLine) {
  const int64_t lBefore = std::max<int64_t>(lLine, 1) - 1;
  if (!SeekPlace(lBefore)) return false;
  while (reader_.RowNumber() < lBefore) {
    NotePlace();
    const int64_t lWanted = std::min(lStride_, lBefore - reader_.RowNumber());
    if (reader_.SkipRows(lWanted) == lWanted) continue;
    if (!reader_.LastFailure().Failed()) lLines_ = reader_.RowNumber();
    return false;
  }
  return true;
}

int64_t clsReport::CountLines() {
  if (lLines_ < 0) SeekLine(kAllRows);
  return lLines_ < 0 ? reader_.RowNumber() : lLines_;
}

/// A page to be found by content is one of two, and the texts are looked out for in both.
void clsReport::LookOutFor(const std::vector<std::string>& texts) {
  const bool bEither = options_.pCodePage == nullptr;
  const clsCodePage& page = bEither ? clsCodePage::Windows1252() : *options_.pCodePage;
  std::vector<std::string> bytes;
  for (const std::string& sText : texts) {
    if (page.CanEncode(sText)) bytes.push_back(page.FromUtf8(sText));
    if (bEither && !IsAscii(sText)) bytes.push_back(sText);
  }
  reader_.LookOutFor(bytes);
}

void clsReport::Expect(std::span<const std::string> texts) {
  for (const std::string& sText : texts) {
    if (!sText.empty() && found_.find(sText) == found_.end()) expected_.push_back(sText);
  }
}

int64_t clsReport::LineOf(const std::string& sText) {
  auto known = found_.find(sText);
  if (known == found_.end() && FindSighted(sText)) known = found_.find(sText);
  if (known == found_.end() && expected_.size() >= kFew) {
    FindExpected();
    if (reader_.LastFailure().Failed()) return 0;
    known = found_.find(sText);
  }
  if (known != found_.end()) return known->second;
  if (!SeekPlace(0)) return 0;
  const int64_t lLine = SearchOn(sText);
  if (!reader_.LastFailure().Failed()) found_[sText] = lLine;
  return lLine;
}

/// True if the first look at the report has found where the text stands, or that it doesn't.
bool clsReport::FindSighted(const std::string& sText) {
  if (!reader_.CodePage().CanEncode(sText)) return false;
  const auto sighted = reader_.Sighted(reader_.CodePage().FromUtf8(sText));
  if (!sighted || reader_.LastFailure().Failed()) return false;
  if (sighted->lRow > 0) AddPlace({sighted->lRow - 1, sighted->nOffset});
  found_[sText] = sighted->lRow;
  return true;
}

int64_t clsReport::LineBehind(const std::string& sText, int64_t lAfter) {
  const int64_t lFirst = LineOf(sText);
  if (lFirst == 0 || lFirst > lAfter) return lFirst;
  return SeekLine(lAfter + 1) ? SearchOn(sText) : 0;
}

/// The next line that holds the text, behind the reader's place.
int64_t clsReport::SearchOn(const std::string& sText) {
  const clsCodePage& page = reader_.CodePage();
  std::string_view sRow;
  if (!page.CanEncode(sText)) {
    reader_.SkipRows(kAllRows);
    return 0;
  }
  if (reader_.FindRow(page.FromUtf8(sText), {}, sRow) == 0) return 0;
  AddPlace({reader_.RowNumber() - 1, reader_.RowOffset()});
  return reader_.RowNumber();
}

/// Finds all texts that are expected, each group that a search takes in one pass.
void clsReport::FindExpected() {
  std::sort(expected_.begin(), expected_.end());
  expected_.erase(std::unique(expected_.begin(), expected_.end()), expected_.end());
  std::vector<std::string> texts;
  std::vector<std::string> encoded;
  size_t nBytes = 0;
  for (std::string& sText : expected_) {
    if (found_.find(sText) != found_.end() || FindSighted(sText) || sText.size() > clsKeySearch::kMostBytes) continue;
    if (!reader_.CodePage().CanEncode(sText)) {
      found_[sText] = 0;
      continue;
    }
    std::string sBytes = reader_.CodePage().FromUtf8(sText);
    if (nBytes + sBytes.size() > clsKeySearch::kMostBytes) {
      FindAll(std::exchange(texts, {}), std::exchange(encoded, {}));
      nBytes = 0;
    }
    nBytes += sBytes.size();
    texts.push_back(std::move(sText));
    encoded.push_back(std::move(sBytes));
  }
  FindAll(texts, encoded);
  expected_.clear();
}

void clsReport::FindAll(const std::vector<std::string>& texts, const std::vector<std::string>& encoded) {
  if (texts.empty() || !SeekPlace(0)) return;
  clsKeySearch search(encoded);
  std::vector<int64_t> lines(texts.size());
  std::string_view sRow;
  while (search.Left() > 0) {
    NotePlace();
    if (!reader_.ReadRow(sRow)) break;
    search.Look(sRow, [&](size_t n, size_t) {
      lines[n] = reader_.RowNumber();
      AddPlace({lines[n] - 1, reader_.RowOffset()});
    });
  }
  if (reader_.LastFailure().Failed()) return;
  if (search.Left() > 0) lLines_ = reader_.RowNumber();
  for (size_t i = 0; i < texts.size(); ++i) found_[texts[i]] = lines[i];
}

}  // namespace quillon
