#include "modTidySections.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "modNumbers.h"
#include "modText.h"
#include "modTidyKeys.h"
#include "modTidyText.h"

namespace quillon {

std::vector<TidySection> SectionsOfText(std::string_view sRecipe) {
  std::vector<TidySection> sections;
  bool bInSection = false;
  while (!sRecipe.empty()) {
    const size_t nEnd = std::min(sRecipe.find('\n'), sRecipe.size());
    std::string_view sLine = sRecipe.substr(0, nEnd);
    sRecipe.remove_prefix(std::min(nEnd + 1, sRecipe.size()));
    while (sLine.ends_with('\r')) sLine.remove_suffix(1);
    const size_t nOpen = sLine.find('[');
    const size_t nClose = nOpen == std::string_view::npos ? nOpen : sLine.find(']', nOpen + 1);
    if (nClose != std::string_view::npos && nClose > nOpen + 1) {
      sections.push_back({std::string(TrimBlanks(sLine.substr(nOpen + 1, nClose - nOpen - 1))), {}});
      bInSection = true;
      continue;
    }
    // A bracket of any kind ends a section.
    if (nOpen != std::string_view::npos) bInSection = false;
    const size_t nEqual = sLine.find('=');
    const std::string_view sKey = TrimBlanks(sLine.substr(0, nEqual));
    if (!bInSection || nEqual == std::string_view::npos || sKey.starts_with(';')) continue;
    std::string_view sValue = sLine.substr(nEqual + 1);
    sValue = TrimRightBlanks(sValue.substr(0, sValue.find(';')));
    sections.back().keys.emplace_back(sKey, sValue);
  }
  return sections;
}

const TidySection* FindSection(const std::vector<TidySection>& sections, std::string_view sName) {
  const auto found = std::find_if(sections.begin(), sections.end(),
                                  [&](const TidySection& section) { return section.sName == sName; });
  return found == sections.end() ? nullptr : &*found;
}

bool PartOfName(std::string_view sName, std::string_view sKind, std::string& sTable, int32_t& lPart) {
  if (!sName.starts_with(sKind)) return false;
  const std::string_view sNumbers = sName.substr(sKind.size());
  const size_t nPoint = std::min(sNumbers.find('.'), sNumbers.size());
  const auto digits = [](std::string_view s) {
    return !s.empty() && s.size() < 6 && s.front() != '0' && std::all_of(s.begin(), s.end(), IsAsciiDigit);
  };
  sTable = sNumbers.substr(0, nPoint);
  const std::string_view sPart = sNumbers.substr(std::min(nPoint + 1, sNumbers.size()));
  lPart = digits(sTable) && digits(sPart) ? ParseWholeNumber(sPart).value_or(0) : 0;
  return true;
}

namespace {

/// A section with keys of these that is called nearly as one of them is, but not quite: "[Headings 1.1]". One that
/// begins with another character, as "[-Table 2]", was switched off.
bool IsMisnamed(const TidySection& section, std::string& sExample) {
  constexpr std::array<std::string_view, 3> kNames{"Table", "Heading", "Line"};
  const size_t nWord = std::min(section.sName.find_first_of(" 0123456789"), section.sName.size());
  const std::string_view sWord = std::string_view(section.sName).substr(0, nWord);
  const bool bExact = std::find(kNames.begin(), kNames.end(), sWord) != kNames.end();
  if (!HasKeyOfTables(section) || (bExact && section.sName.substr(nWord).starts_with(' '))) return false;
  if (section.sName.empty() || !IsAsciiLetter(section.sName.front())) return false;
  // Titles have keys of tables, and nearly their name.
  if (sWord == "Title") return false;
  const std::string_view sNearest = NearestWord(sWord, kNames);
  if (sNearest.empty()) return false;
  sExample = std::string(sNearest) + (sNearest == kNames[0] ? " 1" : sNearest == kNames[1] ? " 1.1" : " 1.2");
  return true;
}

bool HasMisnamed(const std::vector<TidySection>& sections, TidyFault& fault) {
  // Recipes of other tables may call their sections what they like.
  const bool bTidy = std::any_of(sections.begin(), sections.end(), [](const TidySection& section) {
    const bool bPart = section.sName.starts_with("Heading ") || section.sName.starts_with("Line ");
    return HasTidyKey(section) || (bPart && section.sName.find('.') != std::string::npos);
  });
  if (!bTidy) return false;
  for (const TidySection& section : sections) {
    std::string sTable;
    int32_t lPart = 0;
    std::string sExample;
    for (const auto& [sKind, lFirst] : {std::pair<std::string_view, int32_t>{"Heading ", 1}, {"Line ", 2}}) {
      if (PartOfName(section.sName, sKind, sTable, lPart) && lPart < lFirst)
        sExample = std::string(sKind) + "1." + std::to_string(lFirst);
    }
    if (sExample.empty() && !IsMisnamed(section, sExample)) continue;
    return !FailTidy(fault, kTidyBadSection, section.sName, {}, {section.sName, sExample});
  }
  return false;
}

}  // namespace

bool HasStraySections(const std::vector<TidySection>& sections, int32_t nTables, TidyFault& fault) {
  std::set<std::string_view> seen;
  for (const TidySection& section : sections) {
    std::string sTable;
    int32_t lPart = 0;
    for (const std::string_view sKind : {"Heading ", "Line "}) {
      if (!PartOfName(section.sName, sKind, sTable, lPart) || lPart == 0) continue;
      if (ParseWholeNumber(sTable).value_or(0) > nTables)
        return !FailTidy(fault, kTidyStraySection, section.sName, {}, {section.sName, sTable});
      if (!seen.insert(section.sName).second) return !FailTidy(fault, kTidyTwice, section.sName, {}, {section.sName});
    }
  }
  return HasMisnamed(sections, fault);
}

}  // namespace quillon
