#include "modRecipeKind.h"

#include <algorithm>

#include "modSectionFile.h"
#include "modShortTable.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

/// A line of a recipe that the engine takes for the header of a section.
struct RecipeHeader {
  size_t nLine = 0;  ///< From 1
  std::string sName;
};

constexpr std::string_view kTable = "Table ";

std::string NameOfHeader(std::string_view sLine) {
  const size_t nOpen = sLine.find('[');
  const size_t nClose = nOpen == std::string_view::npos ? nOpen : sLine.find(']', nOpen);
  if (nClose == std::string_view::npos || nClose == nOpen + 1) return {};
  return std::string(TrimBlanks(sLine.substr(nOpen + 1, nClose - nOpen - 1)));
}

std::vector<std::string> LinesOf(clsSectionFile& recipe) {
  std::vector<std::string> lines;
  recipe.Rewind();
  for (std::string_view sLine; recipe.ReadLine(sLine);) lines.emplace_back(sLine);
  recipe.Rewind();
  return lines;
}

std::vector<RecipeHeader> HeadersOf(const std::vector<std::string>& lines) {
  std::vector<RecipeHeader> headers;
  for (size_t i = 0; i < lines.size(); ++i) {
    std::string sName = NameOfHeader(lines[i]);
    if (!sName.empty()) headers.push_back({i + 1, std::move(sName)});
  }
  return headers;
}

/// "Table 2" of "table 2", "Table2", "TABLE  2"; "" for what is no table's name.
std::string TableMeant(std::string_view sName) {
  std::string sNumber;
  if (!UpperText(sName).starts_with("TABLE")) return {};
  for (const char ch : sName.substr(kTable.size() - 1)) {
    if (ch == ' ') continue;
    if (!IsAsciiDigit(ch)) return {};
    sNumber += ch;
  }
  return sNumber.empty() ? std::string() : std::string(kTable) + sNumber;
}

std::string TableList(const std::vector<RecipeHeader>& headers) {
  std::string sList;
  for (const RecipeHeader& header : headers) {
    if (!TableMeant(header.sName).empty()) sList += (sList.empty() ? "[" : ", [") + header.sName + "]";
  }
  return sList;
}

std::string NoSuchSection(const std::vector<RecipeHeader>& headers, std::string_view sSection) {
  const std::string sTables = TableList(headers);
  const std::string sText = Translate("There is no such section") + ": [" + std::string(sSection) + "]";
  return sTables.empty() ? sText : sText + "; " + Translate("the recipe has") + " " + sTables;
}

std::string AtLine(size_t nLine, const std::string& sText) {
  return Translate("Line") + " " + std::to_string(nLine) + ": " + sText;
}

bool HasBlankBeforeEqual(std::string_view sLine) {
  const size_t nEqual = sLine.find('=');
  return nEqual != std::string_view::npos && nEqual > 0 && sLine[nEqual - 1] == ' ';
}
bool HasBlankBehindEqual(std::string_view sLine) {
  const size_t nEqual = sLine.find('=');
  return nEqual != std::string_view::npos && nEqual + 1 < sLine.size() && sLine[nEqual + 1] == ' ';
}
bool IsKey(std::string_view sLine, std::string_view sKey) {
  const size_t nEqual = sLine.find('=');
  return nEqual != std::string_view::npos && TrimBlanks(sLine.substr(0, nEqual)) == sKey;
}

/// Blanks behind the "=" of a ruler are columns that are passed over; where other keys have them too, they are none.
void HintAtBlanks(const std::vector<std::string>& lines, size_t nFirst, size_t nEnd, std::vector<std::string>& hints) {
  const auto begin = lines.begin() + static_cast<std::ptrdiff_t>(nFirst);
  const auto end = lines.begin() + static_cast<std::ptrdiff_t>(nEnd);
  const auto ruler = std::find_if(begin, end, [](const std::string& sLine) { return IsKey(sLine, "Parsing"); });
  if (ruler == end || !HasBlankBehindEqual(*ruler)) return;
  const bool bHabit = HasBlankBeforeEqual(*ruler) || std::any_of(begin, end, [&](const std::string& sLine) {
                        return HasBlankBehindEqual(sLine) && !IsKey(sLine, "Parsing");
                      });
  if (!bHabit) return;
  hints.push_back(AtLine(static_cast<size_t>(ruler - lines.begin()) + 1,
                         "the blanks behind the = of Parsing belong to the ruler and move all its columns; write "
                         "Parsing= with no blank"));
}

}  // namespace

std::string WrongKindOfRecipe(clsSectionFile& recipe, std::string_view sName, bool bLongWanted) {
  const std::string sRecipe(sName);
  const auto header = [&](std::string_view sKey) { return ReadKeyFromFile(recipe, "Header", sKey, {}); };
  if (header("FileType") == "EXPORT SPEC") {
    return sRecipe + " is an export specification; name the long-form recipe that uses it, by --specification";
  }
  const bool bLong = header("FileType") == "RECIPE" && header("Product") == "QLN";
  if (bLong && !bLongWanted) return sRecipe + " is a long-form recipe; name it by --specification";
  if (!bLong && bLongWanted && CountShortTables(recipe) > 0) {
    return sRecipe + " is a recipe of the short form; name it by --recipe";
  }
  return {};
}

std::string WhyMissing(clsSectionFile& recipe, std::string_view sSection, std::string_view sKey) {
  const std::vector<std::string> lines = LinesOf(recipe);
  const std::vector<RecipeHeader> headers = HeadersOf(lines);
  const auto section = std::find_if(headers.begin(), headers.end(),
                                    [&](const RecipeHeader& header) { return header.sName == sSection; });
  if (section == headers.end()) return NoSuchSection(headers, sSection);
  for (size_t i = section->nLine; i < lines.size(); ++i) {
    const std::string& sLine = lines[i];
    const size_t nOpen = sLine.find('[');
    const size_t nEqual = sLine.find('=');
    if (nOpen != std::string::npos) {
      if (nEqual == std::string::npos || nEqual > nOpen) break;
      return AtLine(i + 1, Translate("a [ in a value ends the section") + ": " + sLine);
    }
    if (nEqual == std::string::npos || sLine.find(sKey) == std::string::npos) continue;
    if (!IsKey(sLine, sKey)) {
      return AtLine(i + 1, Translate("it holds the name of the key that is looked for, and hides it further down") +
                               ": " + sLine);
    }
    if (sLine.find(';', nEqual) != std::string::npos) {
      return AtLine(i + 1, Translate("a ; begins a comment, so no value is left") + ": " + sLine);
    }
    const bool bEmpty = TrimBlanks(std::string_view(sLine).substr(nEqual + 1)).empty();
    return AtLine(i + 1, (bEmpty ? Translate("the key has no value") + ": " : std::string()) + sLine);
  }
  return Translate("The section has no such key") + ": [" + std::string(sSection) + "] " + std::string(sKey);
}

std::vector<std::string> RecipeHints(clsSectionFile& recipe) {
  const std::vector<std::string> lines = LinesOf(recipe);
  const std::vector<RecipeHeader> headers = HeadersOf(lines);
  std::vector<std::string> hints;
  int32_t lExpected = 0;
  for (size_t i = 0; i < headers.size(); ++i) {
    const RecipeHeader& header = headers[i];
    const std::string sMeant = TableMeant(header.sName);
    if (sMeant.empty()) continue;
    const bool bBefore = std::any_of(headers.begin(), headers.begin() + static_cast<std::ptrdiff_t>(i),
                                     [&](const RecipeHeader& other) { return other.sName == header.sName; });
    const std::string sExpected = std::string(kTable) + std::to_string(lExpected + 1);
    const std::string sSection = "[" + header.sName + "]";
    // What is no table, or stands twice, leaves the numbers of those behind it as they are.
    if (!bBefore && (header.sName == sMeant || sMeant == sExpected)) ++lExpected;
    if (header.sName != sMeant) {
      hints.push_back(AtLine(header.nLine, sSection + " is no table; write [" + sMeant + "]"));
    } else if (bBefore) {
      hints.push_back(AtLine(header.nLine, sSection + " stands twice, and the first one alone is read"));
    } else if (header.sName != sExpected) {
      hints.push_back(AtLine(header.nLine, sSection + " stands where [" + sExpected +
                                               "] is wanted; number the tables from 1 with no gap"));
    }
    const size_t nEnd = i + 1 < headers.size() ? headers[i + 1].nLine - 1 : lines.size();
    HintAtBlanks(lines, header.nLine, nEnd, hints);
  }
  return hints;
}

}  // namespace quillon
