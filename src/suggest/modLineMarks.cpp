#include "modLineMarks.h"

#include <algorithm>

#include "clsReportSample.h"
#include "modCellKinds.h"

namespace quillon {

bool IsCurrencyPlace(char32_t ch) {
  return std::u32string_view(U"$\u20AC\u00A3\u00A5").find(ch) != std::u32string_view::npos;
}

bool IsDrawn(std::u32string_view sLine) {
  constexpr std::u32string_view kStrokes = U"-=_*+|~.:#";
  constexpr size_t kFewest = 3;
  size_t nStrokes = 0;
  for (const char32_t ch : sLine) {
    if (IsBlankPlace(ch)) continue;
    if (kStrokes.find(ch) == std::u32string_view::npos && (ch < 0x2500 || ch > 0x257F)) return false;
    ++nStrokes;
  }
  return nStrokes >= kFewest;
}

namespace {

/// What is printed in front of or behind a number to part it from its neighbour.
std::u32string_view WithoutPartingMarks(std::u32string_view sText) {
  constexpr std::u32string_view kParting = U":/;,|";
  while (sText.size() > 1 && kParting.find(sText.back()) != std::u32string_view::npos) sText.remove_suffix(1);
  return sText;
}

LineMark MarkOf(std::u32string_view sLine, size_t nFrom, size_t nEnd) {
  LineMark mark;
  mark.lStart = static_cast<int32_t>(nFrom);
  mark.lEnd = static_cast<int32_t>(nEnd) - 1;
  mark.lFigure = mark.lPoint = mark.lEnd;
  const std::u32string_view sText = WithoutPartingMarks(sLine.substr(nFrom, nEnd - nFrom));
  if (IsNumberText(sText)) {
    mark.kind = MarkKind::Number;
    const size_t nLast = sText.find_last_of(U"0123456789");
    const size_t nPoint = sText.find(U'.');
    mark.lFigure = static_cast<int32_t>(nFrom + nLast);
    mark.lPoint = static_cast<int32_t>(nFrom + std::min(nPoint, nLast + 1));
  } else if (std::none_of(sText.begin(), sText.end(),
                          [](char32_t ch) { return IsDigitPlace(ch) || IsLetterPlace(ch); })) {
    mark.kind = MarkKind::Sign;
  }
  return mark;
}

}  // namespace

void FindMarks(std::u32string_view sLine, std::vector<LineMark>& marks) {
  marks.clear();
  for (size_t i = 0; i < sLine.size();) {
    if (IsBlankPlace(sLine[i])) {
      ++i;
      continue;
    }
    const size_t nFrom = i;
    while (i < sLine.size() && !IsBlankPlace(sLine[i])) ++i;
    LineMark mark = MarkOf(sLine, nFrom, i);
    const bool bNear = !marks.empty() && marks.back().lEnd + 2 == mark.lStart;
    mark.bGoesOn = bNear && mark.kind == MarkKind::Word && marks.back().kind == MarkKind::Word;
    marks.push_back(mark);
    if (sLine.substr(nFrom, i - nFrom) == U"=") {
      // What stands in front of an equals sign is one label.
      for (size_t k = 1; k + 1 < marks.size(); ++k) marks[k].bGoesOn = true;
    }
  }
}

std::string PictureOfText(std::u32string_view sText) {
  std::string sPicture;
  for (const char32_t ch : sText) {
    if (IsBlankPlace(ch)) {
      sPicture += '_';
    } else if (std::u32string_view(U"[];|").find(ch) != std::u32string_view::npos) {
      sPicture += 'X';
    } else {
      if (std::u32string_view(U"9AX_.\\").find(ch) != std::u32string_view::npos) sPicture += '\\';
      sPicture += Utf8Of(std::u32string_view(&ch, 1));
    }
  }
  return sPicture;
}

}  // namespace quillon
