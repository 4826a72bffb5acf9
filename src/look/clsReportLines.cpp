#include "clsReportLines.h"

#include <cstring>

#include <algorithm>
#include <unordered_map>

#include "modRows.h"
#include "modText.h"

namespace quillon {

namespace {

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
bool IsStroke(char32_t ch) {
  return std::u32string_view(U"-=_*+|~.:#\u2500\u2550").find(ch) != std::u32string_view::npos;
}

LineToken Token(const std::u32string& characters, size_t nFrom, size_t nEnd) {
  size_t nDigits = 0;
  size_t nLetters = 0;
  for (size_t i = nFrom; i < nEnd; ++i) {
    nDigits += IsDigit(characters[i]) ? 1U : 0U;
    nLetters += IsLetter(characters[i]) ? 1U : 0U;
  }
  return {static_cast<int32_t>(nFrom) + 1, static_cast<int32_t>(nEnd), nDigits > 0 && nDigits >= nLetters};
}

/// The characters that are looked at, up to the last one that is no blank. lWidth: of all of the line.
void TakeCharacters(std::string_view sText, int32_t lTabSize, std::u32string& characters, int32_t& lWidth) {
  characters.clear();
  lWidth = 0;
  const bool bTabs = lTabSize > 0 && sText.find('\t') != std::string_view::npos;
  const std::string sExpanded = bTabs ? ExpandTabs(sText, lTabSize) : std::string();
  if (bTabs) sText = sExpanded;
  characters.resize(std::min(sText.size(), static_cast<size_t>(clsReportLines::kWidest)));
  size_t nPlace = 0;
  for (size_t i = 0; i < sText.size();) {
    const auto c = static_cast<unsigned char>(sText[i]);
    const char32_t ch = c < 0x80 ? static_cast<char32_t>(sText[i++]) : DecodeUtf8(sText, i);
    if (nPlace < characters.size()) characters[nPlace] = ch;
    ++nPlace;
    if (!IsBlankCharacter(ch)) lWidth = static_cast<int32_t>(nPlace);
  }
  characters.resize(std::min(characters.size(), static_cast<size_t>(lWidth)));
}

std::string PatternOf(const std::u32string& characters, std::span<const LineToken> tokens) {
  std::string sPattern;
  for (const LineToken& token : tokens) {
    for (int32_t l = token.lStart; l <= token.lEnd; ++l) {
      const char32_t ch = characters[static_cast<size_t>(l) - 1];
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

std::u32string clsReportLines::Characters(size_t nLine) const {
  std::u32string characters;
  int32_t lWidth = 0;
  TakeCharacters(lines_[nLine].sText, lTabSize_, characters, lWidth);
  return characters;
}

std::string clsReportLines::Pattern(size_t nLine) const {
  return PatternOf(Characters(nLine), lines_[nLine].tokens);
}

void clsReportLines::FindTokens(ReportLine& line) {
  bool bStrokes = true;
  size_t nStrokes = 0;
  for (size_t i = 0; i < characters_.size();) {
    if (IsBlankCharacter(characters_[i])) {
      ++i;
      continue;
    }
    const size_t nFrom = i;
    for (; i < characters_.size() && !IsBlankCharacter(characters_[i]); ++i) {
      bStrokes = bStrokes && IsStroke(characters_[i]);
      ++nStrokes;
    }
    tokens_.push_back(Token(characters_, nFrom, i));
    line.lFigures += tokens_.back().bFigure ? 1 : 0;
  }
  constexpr size_t kFewest = 3;
  line.bRule = bStrokes && nStrokes >= kFewest;
}

/// Texts and tokens are only counted here: they move as long as lines are added.
void clsReportLines::AddLine(std::string_view sText) {
  ReportLine& line = lines_.emplace_back();
  sAll_.append(sText).append("\n");
  line.sText = {sAll_.data(), sText.size()};
  line.bBinary = IsBinaryText(sText);
  TakeCharacters(sText, lTabSize_, characters_, line.lWidth);
  const size_t nBefore = tokens_.size();
  FindTokens(line);
  line.tokens = {tokens_.data(), tokens_.size() - nBefore};
  patterns_.push_back(std::hash<std::string>()(PatternOf(characters_, std::span(tokens_).subspan(nBefore))));
}

void clsReportLines::Settle() {
  size_t nText = 0;
  size_t nToken = 0;
  for (ReportLine& line : lines_) {
    line.sText = std::string_view(sAll_).substr(nText, line.sText.size());
    line.tokens = std::span(tokens_).subspan(nToken, line.tokens.size());
    nText += line.sText.size() + 1;
    nToken += line.tokens.size();
  }
}

bool IsBinaryText(std::string_view sText) {
  constexpr std::string_view kUsual = "\t\v\f\r\b\x1B\x0E\x0F\x1A";
  return std::any_of(sText.begin(), sText.end(), [&](char c) {
    return static_cast<unsigned char>(c) < ' ' && kUsual.find(c) == std::string_view::npos;
  });
}

bool clsReportLines::Read(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize, Failure& failure) {
  clsLineReader reader;
  if (!reader.Open(sInput, options, failure)) return false;
  lTabSize_ = lTabSize;
  for (std::string_view sRow; sAll_.size() < kMostBytes && lines_.size() < kMostLines && reader.ReadRow(sRow);) {
    AddLine(reader.CodePage().ToUtf8(sRow));
  }
  failure = reader.LastFailure();
  bWhole_ = reader.AtEnd();
  Settle();
  FindFurniture();
  return !failure.Failed();
}

/// What comes a third time and has words in it. Rows may do so as well: only lines that have no place in a table are
/// ever asked whether they are furniture.
void clsReportLines::FindFurniture() {
  constexpr int32_t kOften = 3;
  std::unordered_map<size_t, int32_t> counts;
  for (const size_t nPattern : patterns_) ++counts[nPattern];
  for (size_t i = 0; i < lines_.size(); ++i) {
    lines_[i].bFurniture = counts[patterns_[i]] >= kOften && !lines_[i].IsBlank() && !lines_[i].bRule;
  }
  patterns_ = {};
}

bool clsReportLines::IsFirstWith(std::string_view sText, size_t nLine) const {
  const std::string_view sLine = lines_[nLine].sText;
  if (sLine.find(sText) == std::string_view::npos) return false;
  const auto nBefore = static_cast<size_t>(sLine.data() - sAll_.data());
  return memmem(sAll_.data(), nBefore, sText.data(), sText.size()) == nullptr;
}

}  // namespace quillon
