#include "modRecipeText.h"

#include <algorithm>

#include "clsSectionFile.h"
#include "modNumbers.h"
#include "modText.h"

namespace quillon {

namespace {

const TextFileOptions kUtf8{false, &clsCodePage::Utf8()};

/// What ends the lines of the text, as the reader of files decides it.
char LineEnd(std::string_view sText) {
  return sText.find('\n') == std::string_view::npos ? '\r' : '\n';
}

/// Where line nLine (from 1) begins; the length of the text behind the last one.
size_t StartOfLine(std::string_view sText, size_t nLine) {
  const char end = LineEnd(sText);
  size_t nAt = 0;
  for (size_t n = 1; n < nLine && nAt < sText.size(); ++n) nAt = std::min(sText.find(end, nAt), sText.size() - 1) + 1;
  return nAt;
}

std::string SectionOf(int32_t lTable) {
  return "Table " + std::to_string(lTable);
}

/// The number in the header of a table; 0 if the line is none. What counts as one is what the count of tables counts.
int32_t NumberInHeader(std::string_view sLine) {
  constexpr std::string_view kHeader = "[Table ";
  const size_t nAt = sLine.find(kHeader);
  if (nAt == std::string_view::npos || sLine.find("Col") != std::string_view::npos) return 0;
  const std::string_view sNumber = sLine.substr(nAt + kHeader.size());
  return ParseWholeNumber(TrimBlanks(sNumber.substr(0, sNumber.find(']')))).value_or(0);
}

/// The value in a line, without the blanks around its right end and the comment behind.
TextEdit EditOfValue(std::string_view sRecipe, size_t nLineStart, std::string_view sValue) {
  const size_t nFrom = sRecipe.find('=', nLineStart) + 1;
  const size_t nEnd = std::min(sRecipe.find_first_of(";\r\n", nFrom), sRecipe.size());
  return {nFrom, TrimRightBlanks(sRecipe.substr(nFrom, nEnd - nFrom)).size(), std::string(sValue)};
}

}  // namespace

std::string TextEdit::Applied(std::string_view sText) const {
  return std::string(sText.substr(0, nFrom)).append(sNew).append(sText.substr(nFrom + nLength));
}

int32_t TableAt(std::string_view sRecipe, size_t nPlace) {
  int32_t lTable = 0;
  const char end = LineEnd(sRecipe);
  for (size_t nAt = 0; nAt < sRecipe.size();) {
    if (nAt > nPlace && lTable > 0) break;
    const size_t nEnd = std::min(sRecipe.find(end, nAt), sRecipe.size());
    const int32_t lNumber = NumberInHeader(sRecipe.substr(nAt, nEnd - nAt));
    if (lNumber > 0) lTable = lNumber;
    nAt = nEnd + 1;
  }
  return std::max(lTable, 1);
}

std::optional<size_t> PlaceOfTable(std::string_view sRecipe, int32_t lTable) {
  clsSectionFile file;
  if (!file.OpenMemory(sRecipe, kUtf8) || !file.SeekSection(SectionOf(lTable))) return std::nullopt;
  return StartOfLine(sRecipe, file.LineNumber());
}

std::optional<TextEdit> SetTableKey(std::string_view sRecipe, int32_t lTable, std::string_view sKey,
                                    std::string_view sValue) {
  clsSectionFile file;
  if (!file.OpenMemory(sRecipe, kUtf8) || !file.SeekSection(SectionOf(lTable))) return std::nullopt;
  const size_t nHeader = file.LineNumber();
  for (std::string_view sLine; file.ReadLine(sLine) && sLine.find('[') == std::string_view::npos;) {
    const size_t nEqual = sLine.find('=');
    if (nEqual == std::string_view::npos || sLine.find(sKey) == std::string_view::npos) continue;
    if (TrimBlanks(sLine.substr(0, nEqual)) != sKey) break;
    return EditOfValue(sRecipe, StartOfLine(sRecipe, file.LineNumber()), sValue);
  }
  const size_t nBehind = StartOfLine(sRecipe, nHeader + 1);
  const char end = LineEnd(sRecipe);
  const std::string sEnd = end == '\r' || sRecipe.find("\r\n") != std::string_view::npos ? "\r\n" : "\n";
  std::string sLine = std::string(sKey) + "=" + std::string(sValue) + sEnd;
  const bool bOpenLine = nBehind == sRecipe.size() && (sRecipe.empty() || sRecipe.back() != end);
  if (bOpenLine) sLine.insert(0, sEnd);
  return TextEdit{nBehind, 0, std::move(sLine)};
}

}  // namespace quillon
