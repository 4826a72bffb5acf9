#include "clsReportText.h"

#include <algorithm>

#include "modFiles.h"
#include "modRows.h"
#include "modText.h"

namespace quillon {

namespace {

std::string StampOf(const PreviewRequest& request) {
  const clsCodePage* const pPage = request.text.pCodePage;
  return request.sInput + "\n" + std::to_string(FileSizeOf(request.sInput)) + "\n" +
         std::to_string(FileDateLastModified(request.sInput)) + "\n" +
         (pPage != nullptr ? std::string(pPage->Name()) : "auto") + (request.text.bUnix ? "\nunix\n" : "\n") +
         std::to_string(request.lTabSize);
}

std::string Shown(std::string_view sRow, const clsCodePage& page, int32_t lTabSize) {
  constexpr size_t kBytesOfCharacter = 4;
  std::string sText = page.ToUtf8(sRow.substr(0, clsReportText::kCharacters * kBytesOfCharacter));
  if (lTabSize > 0) sText = ExpandTabs(sText, lTabSize);
  sText.resize(ByteOffset(sText, clsReportText::kCharacters + 1));
  sText.resize(TrimRightBlanks(sText).size());
  return sText;
}

}  // namespace

bool clsReportText::Open(const PreviewRequest& request) {
  const std::string sStamp = StampOf(request);
  if (bOpen_ && sStamp == sStamp_) return true;
  TextFileOptions text = request.text;
  text.lMostBytes = 0;
  Failure failure;
  bOpen_ = IsFile(request.sInput) && reader_.Open(request.sInput, text, failure);
  sStamp_ = sStamp;
  lTabSize_ = request.lTabSize;
  bAll_ = false;
  lCounted_ = 0;
  places_ = {0};
  return bOpen_;
}

/// Called behind a line that is counted first.
void clsReportText::NotePlace() {
  lCounted_ = std::max(lCounted_, reader_.RowNumber());
  const bool bNext = reader_.RowNumber() == static_cast<int64_t>(places_.size()) * kEvery;
  if (bNext) places_.push_back(reader_.BytesDone());
}

bool clsReportText::CountOn(int64_t lBytes) {
  if (!bOpen_ || bAll_) return false;
  const int64_t lBlock = static_cast<int64_t>(places_.size()) - 1;
  if (!reader_.SeekRow(lBlock * kEvery, places_.back())) bAll_ = true;
  const int64_t lEnd = reader_.BytesDone() + lBytes;
  while (!bAll_ && reader_.BytesDone() < lEnd) {
    bAll_ = reader_.SkipRows(kEvery) < kEvery;
    NotePlace();
  }
  return !bAll_;
}

bool clsReportText::Seek(int64_t lLine) {
  const auto nBlock = std::min(static_cast<size_t>((lLine - 1) / kEvery), places_.size() - 1);
  const int64_t lBefore = static_cast<int64_t>(nBlock) * kEvery;
  if (!reader_.SeekRow(lBefore, places_[nBlock])) return false;
  const int64_t lSkip = lLine - 1 - lBefore;
  return reader_.SkipRows(lSkip) == lSkip;
}

std::vector<PreviewRow> clsReportText::Lines(int64_t lFirst, int64_t lLast) {
  std::vector<PreviewRow> rows;
  if (!bOpen_ || lFirst < 1 || !Seek(lFirst)) return rows;
  std::string_view sRow;
  while (reader_.RowNumber() < lLast && reader_.ReadRow(sRow)) {
    PreviewRow& row = rows.emplace_back();
    row.lLine = reader_.RowNumber();
    row.sText = Shown(sRow, reader_.CodePage(), lTabSize_);
    NotePlace();
  }
  return rows;
}

int64_t clsReportText::FindIn(std::string_view sText, int64_t lFirst, int64_t lLast, bool bLast) {
  if (lFirst > lLast || !Seek(lFirst)) return 0;
  int64_t lFound = 0;
  std::string_view sRow;
  std::string sHeld;
  while (reader_.RowNumber() < lLast && reader_.ReadRow(sRow)) {
    if (!IsAscii(sRow)) sRow = sHeld = reader_.CodePage().ToUtf8(sRow);
    if (FindNoCase(sRow, sText) == std::string_view::npos) continue;
    lFound = reader_.RowNumber();
    if (!bLast) break;
  }
  return lFound;
}

int64_t clsReportText::Find(std::string_view sText, int64_t lFrom, bool bForward) {
  if (!bOpen_ || sText.empty()) return 0;
  if (bForward) return FindIn(sText, lFrom + 1, INT64_MAX, false);
  while (lFrom > 1) {
    const int64_t lFirst = (lFrom - 2) / kEvery * kEvery + 1;
    const int64_t lFound = FindIn(sText, lFirst, lFrom - 1, true);
    if (lFound > 0) return lFound;
    lFrom = lFirst;
  }
  return 0;
}

}  // namespace quillon
