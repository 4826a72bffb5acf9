#include "clsReportLines.h"

#include <algorithm>
#include <unordered_map>

#include "modRows.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kWidest = 4096;  ///< Characters of a line that are looked at

bool IsDigit(char32_t ch) {
  return ch >= U'0' && ch <= U'9';
}
bool IsLetter(char32_t ch) {
  return (ch >= U'A' && ch <= U'Z') || (ch >= U'a' && ch <= U'z') || ch >= 0xC0;
}
/// Control characters, such as the form feed in front of a page, take their place and mean nothing.
bool IsBlankCharacter(char32_t ch) {
  return ch <= U' ' || ch == 0xA0 || ch == 0x7F;
}

void AddToken(ReportLine& line, size_t nFrom, size_t nEnd) {
  size_t nDigits = 0;
  size_t nLetters = 0;
  for (size_t i = nFrom; i < nEnd; ++i) {
    nDigits += IsDigit(line.characters[i]) ? 1U : 0U;
    nLetters += IsLetter(line.characters[i]) ? 1U : 0U;
  }
  const bool bFigure = nDigits > 0 && nDigits >= nLetters;
  line.tokens.push_back({static_cast<int32_t>(nFrom) + 1, static_cast<int32_t>(nEnd), bFigure});
  line.lFigures += bFigure ? 1 : 0;
}

void FindTokens(ReportLine& line) {
  constexpr std::u32string_view kStrokes = U"-=_*+|~.:#\u2500\u2550";
  const std::u32string& characters = line.characters;
  bool bStrokes = true;
  size_t nStrokes = 0;
  for (size_t i = 0; i < characters.size();) {
    if (IsBlankCharacter(characters[i])) {
      ++i;
      continue;
    }
    const size_t nFrom = i;
    for (; i < characters.size() && !IsBlankCharacter(characters[i]); ++i) {
      bStrokes = bStrokes && kStrokes.find(characters[i]) != std::u32string_view::npos;
      ++nStrokes;
    }
    AddToken(line, nFrom, i);
  }
  constexpr size_t kFewest = 3;
  line.bRule = bStrokes && nStrokes >= kFewest;
}

/// Tabs, page feeds and the marks of printers aside.
bool IsBinary(std::string_view sText) {
  constexpr std::string_view kUsual = "\t\v\f\r\b\x1B\x0E\x0F\x1A";
  return std::any_of(sText.begin(), sText.end(), [&](char c) {
    return static_cast<unsigned char>(c) < ' ' && kUsual.find(c) == std::string_view::npos;
  });
}

/// The line with its figures and its blanks made alike.
std::string Pattern(const ReportLine& line) {
  std::string sPattern;
  for (const LineToken& token : line.tokens) {
    for (int32_t l = token.lStart; l <= token.lEnd; ++l) {
      const char32_t ch = line.characters[static_cast<size_t>(l) - 1];
      if (!IsDigit(ch)) {
        AppendUtf8(ch, sPattern);
      } else if (sPattern.empty() || sPattern.back() != '0') {
        sPattern += '0';
      }
    }
    sPattern += ' ';
  }
  return sPattern;
}

}  // namespace

bool clsReportLines::Read(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize, Failure& failure) {
  clsLineReader reader;
  if (!reader.Open(sInput, options, failure)) return false;
  for (std::string_view sRow; sAll_.size() < kMostBytes && lines_.size() < kMostLines && reader.ReadRow(sRow);) {
    ReportLine& line = lines_.emplace_back();
    line.sText = reader.CodePage().ToUtf8(sRow);
    offsets_.push_back(sAll_.size());
    sAll_.append(line.sText).append("\n");
    const std::string sExpanded = lTabSize > 0 ? ExpandTabs(line.sText, lTabSize) : line.sText;
    for (size_t i = 0; i < sExpanded.size() && line.characters.size() < kWidest;) {
      line.characters += DecodeUtf8(sExpanded, i);
    }
    line.bBinary = IsBinary(line.sText);
    FindTokens(line);
    line.characters.resize(line.tokens.empty() ? 0 : static_cast<size_t>(line.tokens.back().lEnd));
  }
  failure = reader.LastFailure();
  bWhole_ = reader.AtEnd();
  FindFurniture();
  return !failure.Failed();
}

/// What comes a third time and has words in it. Rows may do so as well: only lines that have no place in a table are
/// ever asked whether they are furniture.
void clsReportLines::FindFurniture() {
  constexpr int32_t kOften = 3;
  std::unordered_map<std::string, int32_t> counts;
  std::vector<const int32_t*> ofLine;
  for (const ReportLine& line : lines_) {
    int32_t& lCount = counts[Pattern(line)];
    ++lCount;
    ofLine.push_back(&lCount);
  }
  for (size_t i = 0; i < lines_.size(); ++i) {
    lines_[i].bFurniture = *ofLine[i] >= kOften && !lines_[i].IsBlank() && !lines_[i].bRule;
  }
}

bool clsReportLines::IsFirstWith(std::string_view sText, size_t nLine) const {
  const size_t nAt = std::string_view(sAll_).find(sText);
  return nAt >= offsets_[nLine] && nAt != std::string_view::npos && nAt < offsets_[nLine] + lines_[nLine].sText.size();
}

}  // namespace quillon
