#include "clsReportSample.h"

#include <algorithm>

#include "modCellKinds.h"
#include "modText.h"

namespace quillon {

void TakePlaces(std::string_view sUtf8, int32_t lTabSize, std::u32string& sText) {
  sText.clear();
  const auto nTab = static_cast<size_t>(lTabSize > 0 ? lTabSize : 1);
  for (size_t i = 0; i < sUtf8.size() && sText.size() < clsReportSample::kWidest;) {
    const auto c = static_cast<unsigned char>(sUtf8[i]);
    if (c == '\t') {
      sText.append(nTab - sText.size() % nTab, U' ');
      ++i;
    } else {
      sText += c < 0x80 ? static_cast<char32_t>(sUtf8[i++]) : DecodeUtf8(sUtf8, i);
    }
  }
  while (!sText.empty() && IsBlankPlace(sText.back())) sText.pop_back();
}

std::string TabsExpanded(std::string_view sUtf8, int32_t lTabSize) {
  std::string sOut;
  size_t nPlace = 0;
  const auto nTab = static_cast<size_t>(lTabSize);
  for (const char ch : sUtf8) {
    const size_t nBlanks = ch == '\t' ? nTab - nPlace % nTab : 0;
    if (nBlanks > 0) {
      sOut.append(nBlanks, ' ');
      nPlace += nBlanks;
    } else {
      sOut += ch;
      nPlace += (static_cast<unsigned char>(ch) & 0xC0U) == 0x80U ? 0U : 1U;
    }
  }
  return sOut;
}

std::string Utf8Of(std::u32string_view sText) {
  std::string sOut;
  for (const char32_t ch : sText) AppendUtf8(ch, sOut);
  return sOut;
}

/// Texts and marks are only counted here: they move as long as lines are added.
void clsReportSample::AddLine(std::string_view sText, int32_t lTabSize) {
  std::u32string sLine;
  TakePlaces(sText, lTabSize, sLine);
  FindMarks(sLine, scratch_);
  SampleLine& line = lines_.emplace_back();
  all_ += sLine;
  marks_.insert(marks_.end(), scratch_.begin(), scratch_.end());
  line.sText = {all_.data(), sLine.size()};
  line.marks = {marks_.data(), scratch_.size()};
  line.bDrawn = IsDrawn(sLine);
}

void clsReportSample::Settle() {
  size_t nText = 0;
  size_t nMark = 0;
  for (SampleLine& line : lines_) {
    line.sText = std::u32string_view(all_).substr(nText, line.sText.size());
    line.marks = std::span(marks_).subspan(nMark, line.marks.size());
    nText += line.sText.size();
    nMark += line.marks.size();
  }
}

void clsReportSample::LookAtDecimals() {
  clsDecimalSigns signs;
  for (const SampleLine& line : lines_) {
    for (const LineMark& mark : line.marks) {
      if (mark.kind != MarkKind::Number) continue;
      signs.Add(line.sText.substr(static_cast<size_t>(mark.lStart), static_cast<size_t>(mark.lEnd - mark.lStart) + 1));
    }
  }
  bComma_ = signs.IsComma();
}

void clsReportSample::ReadOn(clsLineReader& reader, int32_t lTabSize, size_t nCharacters, size_t nLines,
                             int64_t lAtLeastTo) {
  std::string_view sRow;
  while ((all_.size() < nCharacters && lines_.size() < nLines) || reader.RowNumber() < lAtLeastTo) {
    if (!reader.ReadRow(sRow)) return;
    AddLine(reader.CodePage().ToUtf8(sRow), lTabSize);
  }
}

bool clsReportSample::Read(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize, Failure& failure,
                           int64_t lAround) {
  clsLineReader reader;
  if (!reader.Open(sInput, options, failure)) return false;
  ReadOn(reader, lTabSize, kMostCharacters / 2, kMostLines / 2, 0);
  constexpr int64_t kAbove = 1000;
  if (lAround > reader.RowNumber() && !reader.AtEnd()) {
    const int64_t lSkipped = lAround - kAbove - reader.RowNumber();
    if (lSkipped > 0) {
      AddLine({}, 0);
      nFirstPart_ = lines_.size();
      reader.SkipRows(lSkipped);
      lSecondPart_ = reader.RowNumber() + 1;
    }
  }
  ReadOn(reader, lTabSize, kMostCharacters, kMostLines, lAround);
  failure = reader.LastFailure();
  bWhole_ = failure.Failed() || (reader.AtEnd() && nFirstPart_ == 0);
  Settle();
  LookAtDecimals();
  return !failure.Failed();
}

size_t clsReportSample::IndexOf(int64_t lLine) const {
  if (lLine < 1) return lines_.size();
  const auto n = static_cast<size_t>(lLine) - 1;
  if (nFirstPart_ == 0 || n + 1 < nFirstPart_) return std::min(n, lines_.size());
  if (lLine < lSecondPart_) return lines_.size();
  return std::min(nFirstPart_ + static_cast<size_t>(lLine - lSecondPart_), lines_.size());
}

}  // namespace quillon
