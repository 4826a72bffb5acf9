#include "modFormulaWords.h"

#include <algorithm>
#include <array>
#include <utility>

#include "clsWorkbook.h"
#include "modText.h"

namespace quillon {

namespace {

// What fetches, calls or asks another program. None of them ever becomes a formula here.
constexpr std::array<std::string_view, 36> kOutside = {"WEBSERVICE",
                                                       "RTD",
                                                       "CALL",
                                                       "REGISTER",
                                                       "REGISTER.ID",
                                                       "UNREGISTER",
                                                       "EXEC",
                                                       "EXECUTE",
                                                       "IMPORTXML",
                                                       "IMPORTHTML",
                                                       "IMPORTDATA",
                                                       "IMPORTFEED",
                                                       "IMPORTRANGE",
                                                       "IMAGE",
                                                       "GOOGLEFINANCE",
                                                       "STOCKHISTORY",
                                                       "SQL.REQUEST",
                                                       "DDE",
                                                       "INITIATE",
                                                       "REQUEST",
                                                       "POKE",
                                                       "SEND.KEYS",
                                                       "FOPEN",
                                                       "FWRITE",
                                                       "FWRITELN",
                                                       "FREAD",
                                                       "FILES",
                                                       "DIRECTORY",
                                                       "CUBEMEMBER",
                                                       "CUBEVALUE",
                                                       "CUBESET",
                                                       "CUBESETCOUNT",
                                                       "CUBEKPIMEMBER",
                                                       "CUBEMEMBERPROPERTY",
                                                       "CUBERANKEDMEMBER",
                                                       "EVALUATE"};

}  // namespace

bool IsFormulaWord(char ch) {
  return IsAsciiDigit(ch) || IsAsciiLetter(ch) || ch == '_' || ch == '.' || ch == '$' ||
         static_cast<unsigned char>(ch) >= 0x80;
}

std::optional<FormulaCorner> ParseFormulaCorner(std::string_view sWord) {
  FormulaCorner corner;
  size_t i = 0;
  const auto Dollar = [&] { return i < sWord.size() && sWord[i] == '$' ? (++i, true) : false; };
  bool bFixed = Dollar();
  size_t nLetters = 0;
  for (; i < sWord.size() && IsAsciiLetter(sWord[i]); ++i) {
    if (++nLetters > 3) return std::nullopt;
    corner.nColumn = corner.nColumn * 26 + ((sWord[i] | 0x20) - 'a' + 1);
  }
  if (nLetters > 0) {
    corner.bColumnFixed = bFixed;
    bFixed = Dollar();
  }
  corner.bRowFixed = bFixed;
  const size_t nDigits = i;
  for (; i < sWord.size() && IsAsciiDigit(sWord[i]); ++i) {
    corner.nRow = corner.nRow * 10 + (sWord[i] - '0');
    if (corner.nRow > kMaxSheetRows) return std::nullopt;
  }
  const bool bRowGiven = i > nDigits;
  if (i < sWord.size() || (!bRowGiven && (nLetters == 0 || bFixed)) || (bRowGiven && corner.nRow == 0) ||
      corner.nColumn > kMaxSheetColumns)
    return std::nullopt;
  return corner;
}

bool LooksLikeR1C1(std::string_view sWord) {
  size_t i = 0;
  const auto Part = [&](char ch) {
    if (i < sWord.size() && (sWord[i] | 0x20) == ch) ++i;
    while (i < sWord.size() && IsAsciiDigit(sWord[i])) ++i;
  };
  Part('r');
  Part('c');
  return i == sWord.size() && !sWord.empty() && IsAsciiLetter(sWord[0]);
}

FormulaReference OrderedReference(FormulaCorner first, FormulaCorner second) {
  if (first.nRow > second.nRow) {
    std::swap(first.nRow, second.nRow);
    std::swap(first.bRowFixed, second.bRowFixed);
  }
  if (first.nColumn > second.nColumn) {
    std::swap(first.nColumn, second.nColumn);
    std::swap(first.bColumnFixed, second.bColumnFixed);
  }
  FormulaReference reference;
  reference.bWholeColumns = first.nRow == 0;
  reference.bWholeRows = first.nColumn == 0;
  reference.nTop = reference.bWholeColumns ? 1 : first.nRow;
  reference.nBottom = reference.bWholeColumns ? static_cast<int32_t>(kMaxSheetRows) : second.nRow;
  reference.nLeft = static_cast<int16_t>(reference.bWholeRows ? 1 : first.nColumn);
  reference.nRight = static_cast<int16_t>(reference.bWholeRows ? kMaxSheetColumns : second.nColumn);
  reference.bTopFixed = first.bRowFixed;
  reference.bBottomFixed = second.bRowFixed;
  reference.bLeftFixed = first.bColumnFixed;
  reference.bRightFixed = second.bColumnFixed;
  return reference;
}

bool CallsOutside(std::string_view sName) {
  for (const std::string_view sPrefix : {"_xlfn.", "_xlws."})
    if (EqualNoCase(sName.substr(0, sPrefix.size()), sPrefix)) sName.remove_prefix(sPrefix.size());
  return std::any_of(kOutside.begin(), kOutside.end(), [&](std::string_view s) { return EqualNoCase(s, sName); });
}

}  // namespace quillon
