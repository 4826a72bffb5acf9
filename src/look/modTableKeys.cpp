#include "modTableKeys.h"

#include <algorithm>
#include <array>

#include "modSectionFile.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kLinesAbove = 10;  ///< How far from the table a key text may stand
constexpr size_t kLinesBelow = 6;
constexpr size_t kFarLines = 200;  ///< Looked through if there is none near
constexpr size_t kLongestText = 60;

bool HasDigit(std::string_view sText) {
  return sText.find_first_of("0123456789") != std::string_view::npos;
}

bool HasWord(std::string_view sText) {
  constexpr size_t kFewest = 3;
  return static_cast<size_t>(std::count_if(sText.begin(), sText.end(), [](char c) {
           return IsAsciiLetter(c) || static_cast<unsigned char>(c) >= 0x80;
         })) >= kFewest;
}

/// What a recipe can hold as the value of a key, and find again by it.
bool CanBeValue(std::string_view sText) {
  constexpr std::array<std::string_view, 4> kKeys{"ReadStartLine", "ReadEndLine", "Parsing", "WriteColumn"};
  const bool bKey = std::any_of(kKeys.begin(), kKeys.end(),
                                [&](std::string_view sKey) { return sText.find(sKey) != std::string_view::npos; });
  return sText.size() >= 3 && sText != kMissing && !bKey && sText.find_first_of("[];") == std::string_view::npos &&
         IsValidUtf8(sText);
}

/// What stands in front of the first figure: "Totals =" of "Totals = $47,500.00".
std::string_view BeforeFigures(std::string_view sText) {
  const size_t nDigit = sText.find_first_of("0123456789");
  if (nDigit == std::string_view::npos) return {};
  const size_t nBlank = sText.substr(0, nDigit).rfind(' ');
  return nBlank == std::string_view::npos ? std::string_view{} : sText.substr(0, nBlank);
}

/// Stretches of a line that may serve as key texts: between wide gaps, tabs and control characters; then all of it.
std::vector<std::string_view> TextsOf(std::string_view sLine) {
  std::vector<std::string_view> texts;
  const auto add = [&](std::string_view sText) {
    sText = TrimBlanks(sText);
    if (CharCount(sText) > kLongestText) sText = TrimBlanks(sText.substr(0, ByteOffset(sText, kLongestText + 1)));
    if (CanBeValue(sText)) texts.push_back(sText);
  };
  size_t nControlFree = 0;
  for (size_t i = 0; i <= sLine.size(); ++i) {
    if (i < sLine.size() && (static_cast<unsigned char>(sLine[i]) >= ' ' && sLine[i] != 0x7F)) continue;
    const std::string_view sPart = sLine.substr(nControlFree, i - nControlFree);
    nControlFree = i + 1;
    for (size_t nFrom = 0; nFrom < sPart.size();) {
      const size_t nEnd = std::min(sPart.find("  ", nFrom), sPart.size());
      if (nEnd > nFrom) {
        add(sPart.substr(nFrom, nEnd - nFrom));
        add(BeforeFigures(sPart.substr(nFrom, nEnd - nFrom)));
      }
      nFrom = nEnd == nFrom ? nFrom + 1 : nEnd;
    }
    add(sPart);
  }
  return texts;
}

/// What is wanted of a key text, the best first: words without figures are the same in the next report, and longer ones
/// stand less often elsewhere.
enum class Wanted { LongWords, Words, Anything };

bool Serves(std::string_view sText, Wanted wanted) {
  constexpr size_t kLong = 5;
  if (wanted == Wanted::Anything) return true;
  return !HasDigit(sText) && HasWord(sText) && (wanted == Wanted::Words || CharCount(sText) >= kLong);
}

/// The first text of a line that serves and stands there for the first time.
std::optional<std::string> KeyOnLine(const clsReportLines& report, size_t nLine, Wanted wanted) {
  for (const std::string_view sText : TextsOf(report.Lines()[nLine].sText)) {
    if (!Serves(sText, wanted)) continue;
    if (report.IsFirstWith(sText, nLine)) return std::string(sText);
  }
  return std::nullopt;
}

/// The lines that a key text may stand on, the best first.
std::optional<TableKey> FindKey(const clsReportLines& report, const std::vector<size_t>& nLines) {
  for (const Wanted wanted : {Wanted::LongWords, Wanted::Words, Wanted::Anything}) {
    for (const size_t nLine : nLines) {
      if (auto sText = KeyOnLine(report, nLine, wanted)) return TableKey{std::move(*sText), nLine};
    }
  }
  return std::nullopt;
}

/// Lines that are looked through if no text near the table serves: upwards from the table, then from the report's top,
/// where most texts stand for the first time.
std::vector<size_t> FarLines(const clsReportLines& report, size_t nFrom) {
  std::vector<size_t> nLines;
  for (size_t n = nFrom; n > 0 && nFrom - n < kFarLines; --n) nLines.push_back(n - 1);
  for (size_t n = 0; n < std::min(report.Lines().size(), kFarLines); ++n) nLines.push_back(n);
  return nLines;
}

std::optional<TableKey> FindNearOrFar(const clsReportLines& report, const std::vector<size_t>& nNear, size_t nFirst,
                                      size_t nLast) {
  std::optional<TableKey> key = FindKey(report, nNear);
  const bool bFar = !key;
  if (bFar) key = FindKey(report, FarLines(report, nFirst));
  if (!key) return key;
  key->bFar = bFar;
  key->bInRows = !bFar && key->nLine >= nFirst && key->nLine <= nLast;
  return key;
}

}  // namespace

std::optional<TableKey> FindStartKey(const clsReportLines& report, size_t nFirst, size_t nLast, size_t nAfter) {
  std::vector<size_t> nLines;
  for (size_t n = nFirst; n > nAfter && nFirst - n < kLinesAbove; --n) nLines.push_back(n - 1);
  for (size_t n = nFirst; n <= nLast && n < nFirst + kLinesBelow; ++n) nLines.push_back(n);
  return FindNearOrFar(report, nLines, nFirst, nLast);
}

std::optional<TableKey> FindEndKey(const clsReportLines& report, size_t nFirst, size_t nLast, size_t nBefore) {
  std::vector<size_t> nLines;
  for (size_t n = nLast + 1; n < nBefore && n <= nLast + kLinesBelow; ++n) nLines.push_back(n);
  for (size_t n = nLast + 1; n > nFirst && nLast + 1 - n < kLinesBelow; --n) nLines.push_back(n - 1);
  return FindNearOrFar(report, nLines, nFirst, nLast);
}

}  // namespace quillon
