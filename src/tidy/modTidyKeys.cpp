#include "modTidyKeys.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <set>

#include "clsTidyReport.h"
#include "modNumbers.h"
#include "modText.h"
#include "modTidyKeyValues.h"
#include "modTidyText.h"

namespace quillon {

namespace {

constexpr size_t kMostParts = 1000;

using Parse = bool (*)(std::string_view, TidyTable&, TidyPart&, TidyValueFault&);

/// A key: where it may stand and how its value is read.
struct TidyKey {
  std::string_view sName;
  bool bTable, bHeading, bLine;
  bool bTidy;  ///< Makes its table a tidy one
  Parse parse;
};

bool ReadTexts(std::string_view s, std::vector<std::string>& texts, TidyValueFault& fault) {
  texts = TidyAlternatives(s);
  if (!texts.empty()) return true;
  fault = {kTidyBadValue, "there is no text", {}};
  return false;
}

// In the order of the alphabet within each group, which no rule asks for.
constexpr std::array
    kKeys =
        std::
            to_array<TidyKey>(
                {
                    {"ReadStartLine", true, false, false, false,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault&) {
                       t.sStartLine = TidyUnescaped(s);
                       return true;
                     }},
                    {"ReadStartLineOffset", true, false, false, false,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault& f) {
                       return ParseTidyNumber(s, t.lStartOffset, f);
                     }},
                    {"ReadEndLine", true, false, false, false,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault&) {
                       t.sEndLine = TidyUnescaped(s);
                       return true;
                     }},
                    {"ReadEndLineOffset", true, false, false, false,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault& f) {
                       return ParseTidyNumber(s, t.lEndOffset, f);
                     }},
                    {"WriteColumn", true, false, false, false,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault&) {
                       t.sWriteColumn = s;
                       return true;
                     }},
                    {"Parsing", true, false, false, false,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault&) {
                       t.sParsing = s;
                       return true;
                     }},
                    {"Until", true, false, false, true,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault& f) {
                       t.bUntilBlank = s == "blank";
                       if (!t.bUntilBlank)
                         f = {kTidyBadValue, "`" + std::string(s) + "` ends nothing; there is Until=blank", {}};
                       return t.bUntilBlank;
                     }},
                    {"Repeat", true, false, false, true,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault& f) {
                       return ParseTidyYesNo(s, t.bRepeat, f);
                     }},
                    {"Optional", true, false, false, true,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault& f) {
                       return ParseTidyYesNo(s, t.bOptional, f);
                     }},
                    {"Text", false, true, true, true,
                     [](std::string_view s, TidyTable&, TidyPart& p, TidyValueFault& f) {
                       return ReadTexts(s, p.texts, f);
                     }},
                    {"Before", false, true, true, true,
                     [](std::string_view s, TidyTable&, TidyPart& p, TidyValueFault&) {
                       p.sBefore = TidyUnescaped(s);
                       return true;
                     }},
                    {"Needs", true, true, true, true,
                     [](std::string_view s, TidyTable&, TidyPart& p, TidyValueFault& f) {
                       return ParseTidyNeeds(s, p.needs, f);
                     }},
                    {"Like", true, true, true, true,
                     [](std::string_view s, TidyTable&, TidyPart& p, TidyValueFault& f) {
                       return ParseTidyPictures(s, p.likes, f);
                     }},
                    {"Drop", true, false, false, true,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault& f) {
                       return ReadTexts(s, t.drops, f);
                     }},
                    {"Places", true, true, true, true,
                     [](std::string_view s, TidyTable&, TidyPart& p, TidyValueFault& f) {
                       return ParseTidyPlaces(s, p.cut, f);
                     }},
                    {"Split", true, true, true, true,
                     [](std::string_view s, TidyTable&, TidyPart& p, TidyValueFault& f) {
                       return ParseTidySplit(s, p.cut, f);
                     }},
                    {"Names", true, true, true, true,
                     [](std::string_view s, TidyTable&, TidyPart& p, TidyValueFault& f) {
                       return ParseTidyNames(s, p.names, f);
                     }},
                    {"Types", true, true, true, true,
                     [](std::string_view s, TidyTable&, TidyPart& p, TidyValueFault& f) {
                       return ParseTidyTypes(s, p.types, p.otherTypes, f);
                     }},
                    {"Blank", true, true, true, true,
                     [](std::string_view s, TidyTable&, TidyPart& p, TidyValueFault& f) {
                       return ReadTexts(s, p.blanks, f);
                     }},
                    {"Fill", true, false, false, true,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault& f) {
                       return ParseTidyColumns(s, t.fills, f);
                     }},
                    {"Join", true, false, false, true,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault& f) {
                       return ParseTidyJoin(s, t, f);
                     }},
                    {"Levels", true, false, false, true,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault& f) {
                       return ParseTidyLevels(s, t, f);
                     }},
                    {"Sheet", true, false, false, true,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault& f) {
                       return ParseTidySheet(s, t.sSheet, f);
                     }},
                    {"Totals", true, false, false, true,
                     [](std::string_view s, TidyTable& t, TidyPart&, TidyValueFault& f) {
                       t.bProof = s != "off";
                       return !t.bProof || ReadTexts(s, t.totals, f);
                     }},
                });

enum class SectionKind : uint8_t { Table, Heading, Line };

bool MayStandIn(const TidyKey& key, SectionKind kind) {
  return kind == SectionKind::Table ? key.bTable : kind == SectionKind::Heading ? key.bHeading : key.bLine;
}

bool Fail(TidyFault& fault, int32_t lCode, std::string_view sSection, std::string_view sKey,
          std::initializer_list<std::string_view> values) {
  fault = {lCode, std::string(sSection), std::string(sKey), TidyText(lCode, values)};
  return false;
}

bool FailUnknown(TidyFault& fault, const TidySection& section, std::string_view sKey, SectionKind kind) {
  std::vector<std::string_view> words;
  for (const TidyKey& key : kKeys) {
    if (MayStandIn(key, kind)) words.push_back(key.sName);
  }
  std::string sWhat = "`" + std::string(sKey) + "`";
  if (const std::string_view sNearest = NearestWord(sKey, words); !sNearest.empty()) {
    sWhat += "; did you mean `" + std::string(sNearest) + "`?";
  }
  return Fail(fault, kTidyUnknownKey, section.sName, sKey, {section.sName, sWhat});
}

bool FailValue(TidyFault& fault, const TidySection& section, std::string_view sKey, const TidyValueFault& value) {
  return Fail(fault, value.lCode, section.sName, sKey, {section.sName, sKey, value.sWhat, value.sLimit});
}

/// All keys of one section.
bool ReadKeys(const TidySection& section, SectionKind kind, TidyTable& table, TidyPart& part, TidyFault& fault) {
  std::vector<std::string_view> seen;
  for (const auto& pair : section.keys) {
    const std::string& sName = pair.first;
    const std::string& sValue = pair.second;
    const auto* const key = std::find_if(kKeys.begin(), kKeys.end(),
                                         [&](const TidyKey& k) { return k.sName == sName && MayStandIn(k, kind); });
    if (key == kKeys.end()) return FailUnknown(fault, section, sName, kind);
    if (std::find(seen.begin(), seen.end(), sName) != seen.end()) {
      return FailValue(fault, section, sName, {kTidyBadValue, "stands twice in its section", {}});
    }
    seen.push_back(sName);
    // A ruler keeps its leading blanks, and an empty value is a key that isn't there.
    const std::string_view sText = key->sName == "Parsing" ? std::string_view(sValue) : TrimBlanks(sValue);
    TidyValueFault value;
    if (!TrimBlanks(sText).empty() && !key->parse(sText, table, part, value)) {
      return FailValue(fault, section, sName, value);
    }
  }
  return true;
}

/// Needs of every column become those of each, and all columns are held against those that there are.
bool CheckPart(const TidySection& section, TidyPart& part, TidyFault& fault) {
  std::vector<TidyNeed> needs;
  std::swap(needs, part.needs);
  const size_t nPlaced = part.ColumnCount();
  for (TidyNeed& need : needs) {
    if (need.column != kEveryTidyColumn) {
      part.needs.push_back(std::move(need));
      continue;
    }
    for (need.column = 0; need.column < nPlaced; ++need.column) part.needs.push_back(need);
  }
  const size_t nColumns = part.ColumnCount();
  const auto fits = [&](TidyColumn column, std::string_view sKey) {
    return column < nColumns || Fail(fault, kTidyNoColumn, section.sName, sKey,
                                     {section.sName, sKey, TidyColumnLetters(column), TidyColumnLetters(nColumns - 1)});
  };
  for (const TidyNeed& need : part.needs) {
    if (!fits(need.column, "Needs")) return false;
  }
  if (!part.types.empty() && !fits(part.types.size() - 1, "Types")) return false;
  const bool bAbove = std::find(part.names.begin(), part.names.end(), "^") != part.names.end();
  if (bAbove && (part.cut.places.empty() || !section.sName.starts_with("Table "))) {
    return Fail(fault, kTidyBadValue, section.sName, "Names",
                {section.sName, "Names", "^ is the name above a column of a table's Places; write the names here"});
  }
  const bool bAllNamed = part.names.size() == 1 && part.names[0] == "^";
  if (part.names.size() <= nColumns || bAllNamed) return true;
  return Fail(fault, kTidyManyNames, section.sName, "Names",
              {section.sName, std::to_string(part.names.size()), std::to_string(nColumns)});
}

bool CheckTable(const TidySection& section, TidyTable& table, TidyFault& fault) {
  if (!CheckPart(section, table.row, fault)) return false;
  const size_t nColumns = table.row.ColumnCount();
  const auto fits = [&](TidyColumn column, std::string_view sKey) {
    return column == kNoTidyColumn || column < nColumns ||
           Fail(fault, kTidyNoColumn, section.sName, sKey,
                {section.sName, sKey, TidyColumnLetters(column), TidyColumnLetters(nColumns - 1)});
  };
  for (const TidyColumn column : table.fills) {
    if (!fits(column, "Fill")) return false;
  }
  if (!fits(table.joinColumn, "Join") || !fits(table.levelColumn, "Levels")) return false;
  const bool bCutTwice = table.row.cut.split != TidySplit::None && !table.row.cut.places.empty();
  if (bCutTwice) return FailValue(fault, section, "Split", {kTidyBadValue, "stands beside Places; take one", {}});
  if (table.row.cut.split != TidySplit::None && table.row.names.empty() && table.row.types.empty()) {
    return Fail(fault, kTidyMissingKey, section.sName, "Split",
                {section.sName, "Split", "Names, which say how many columns there are"});
  }
  if (table.bRepeat && table.sStartLine.empty()) {
    return Fail(fault, kTidyMissingKey, section.sName, "Repeat", {section.sName, "Repeat", "ReadStartLine"});
  }
  for (const int32_t lOffset : {table.lStartOffset, table.lEndOffset}) {
    if (lOffset >= -clsTidyReport::kMaxGroup) continue;
    return Fail(fault, kTidyTooMuch, section.sName, "ReadStartLineOffset",
                {section.sName, "ReadStartLineOffset", std::to_string(lOffset) + " lines back", "100000"});
  }
  return true;
}

const TidySection* FindSection(const std::vector<TidySection>& sections, std::string_view sName) {
  const auto found = std::find_if(sections.begin(), sections.end(),
                                  [&](const TidySection& section) { return section.sName == sName; });
  return found == sections.end() ? nullptr : &*found;
}

/// "Heading 2.1" as table 2, number 1. False if the name is none of that kind.
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

/// Sections "Heading n.k" or "Line n.k" in the order of k, which may leave numbers out.
template <typename Take>
bool ReadParts(const std::vector<TidySection>& sections, std::string_view sKind, int32_t lTable, TidyFault& fault,
               Take take) {
  std::map<int32_t, const TidySection*> parts;
  for (const TidySection& section : sections) {
    std::string sTable;
    int32_t lPart = 0;
    if (!PartOfName(section.sName, sKind, sTable, lPart) || sTable != std::to_string(lTable) || lPart == 0) continue;
    if (lPart > static_cast<int32_t>(kMostParts)) {
      return Fail(fault, kTidyTooMuch, section.sName, {}, {section.sName, "k", std::to_string(lPart), "1000"});
    }
    parts.emplace(lPart, &section);
  }
  return std::all_of(parts.begin(), parts.end(), [&](const auto& part) { return take(*part.second, part.first); });
}

/// Without names a label is one.
void NameByText(TidyPart& part) {
  if (!part.names.empty() || part.texts.empty()) return;
  std::string_view sName = part.texts.front();
  while (!sName.empty() && (sName.back() == ':' || sName.back() == '.' || sName.back() == ' ')) sName.remove_suffix(1);
  part.names.emplace_back(sName);
}

bool ReadHeading(const TidySection& section, TidyTable& table, TidyFault& fault) {
  TidyPart& part = table.headings.emplace_back();
  if (!ReadKeys(section, SectionKind::Heading, table, part, fault) || !CheckPart(section, part, fault)) return false;
  if (part.texts.empty() && part.likes.empty() && part.needs.empty()) {
    return Fail(fault, kTidyMissingKey, section.sName, {}, {section.sName, "It", "Text, Like or Needs, which find it"});
  }
  NameByText(part);
  return true;
}

bool ReadFurtherLine(const TidySection& section, int32_t k, TidyTable& table, TidyFault& fault) {
  TidyFurtherLine& line = table.lines.emplace_back();
  line.nDistance = k - 1;
  if (!ReadKeys(section, SectionKind::Line, table, line.part, fault) || !CheckPart(section, line.part, fault))
    return false;
  NameByText(line.part);
  // What means nothing in the row means nothing in the rest of its record.
  if (line.part.blanks.empty()) line.part.blanks = table.row.blanks;
  return true;
}

}  // namespace

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

bool HasTidyKey(const TidySection& section) {
  return std::any_of(section.keys.begin(), section.keys.end(), [](const auto& pair) {
    return std::any_of(kKeys.begin(), kKeys.end(),
                       [&](const TidyKey& key) { return key.bTidy && key.bTable && key.sName == pair.first; });
  });
}

bool IsTidyTable(const std::vector<TidySection>& sections, int32_t lTable) {
  const std::string sNumber = std::to_string(lTable);
  const TidySection* const section = FindSection(sections, "Table " + sNumber);
  if (section == nullptr) return false;
  return HasTidyKey(*section) || std::any_of(sections.begin(), sections.end(), [&](const TidySection& other) {
           return other.sName.starts_with("Heading " + sNumber + ".") ||
                  other.sName.starts_with("Line " + sNumber + ".");
         });
}

bool ReadTidyTable(const std::vector<TidySection>& sections, int32_t lTable, TidyTable& table, TidyFault& fault) {
  const TidySection* const section = FindSection(sections, "Table " + std::to_string(lTable));
  if (section == nullptr) return false;
  table = TidyTable();
  table.lNumber = lTable;
  table.sections.push_back(*section);
  if (!ReadKeys(*section, SectionKind::Table, table, table.row, fault)) return false;
  // Columns of a ruler are known when it has been measured, and the table is read once more then.
  const bool bMeasured =
      !table.sParsing.empty() && table.row.cut.places.empty() && table.row.cut.split == TidySplit::None;
  if (!bMeasured) table.sParsing.clear();
  if (!bMeasured && !CheckTable(*section, table, fault)) return false;
  return ReadParts(sections, "Heading ", lTable, fault,
                   [&](const TidySection& part, int32_t) {
                     table.sections.push_back(part);
                     return ReadHeading(part, table, fault);
                   }) &&
         ReadParts(sections, "Line ", lTable, fault, [&](const TidySection& part, int32_t k) {
           table.sections.push_back(part);
           return ReadFurtherLine(part, k, table, fault);
         });
}

namespace {

/// A section with keys of these that is called nearly as one of them is, but not quite: "[Headings 1.1]". One that
/// begins with another character, as "[-Table 2]", was switched off.
bool IsMisnamed(const TidySection& section, std::string& sExample) {
  constexpr std::array<std::string_view, 3> kNames{"Table", "Heading", "Line"};
  const bool bHasKeys = std::any_of(section.keys.begin(), section.keys.end(), [](const auto& pair) {
    return std::any_of(kKeys.begin(), kKeys.end(), [&](const TidyKey& key) { return key.sName == pair.first; });
  });
  if (section.sName.starts_with('-')) return false;  // switched off
  const size_t nWord = std::min(section.sName.find_first_of(" 0123456789"), section.sName.size());
  const std::string_view sWord = std::string_view(section.sName).substr(0, nWord);
  const bool bExact = std::find(kNames.begin(), kNames.end(), sWord) != kNames.end();
  if (!bHasKeys || (bExact && section.sName.substr(nWord).starts_with(' '))) return false;
  if (section.sName.empty() || !IsAsciiLetter(section.sName.front())) return false;
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
    return !Fail(fault, kTidyBadSection, section.sName, {}, {section.sName, sExample});
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
        return !Fail(fault, kTidyStraySection, section.sName, {}, {section.sName, sTable});
      if (!seen.insert(section.sName).second) return !Fail(fault, kTidyTwice, section.sName, {}, {section.sName});
    }
  }
  return HasMisnamed(sections, fault);
}

bool ReadTidyRecipe(std::string_view sRecipe, std::vector<TidyTable>& tables, TidyFault& fault) {
  const std::vector<TidySection> sections = SectionsOfText(sRecipe);
  int32_t nTables = 0;
  while (FindSection(sections, "Table " + std::to_string(nTables + 1)) != nullptr) ++nTables;
  if (HasStraySections(sections, nTables, fault)) return false;
  for (int32_t lTable = 1; lTable <= nTables; ++lTable) {
    if (!IsTidyTable(sections, lTable)) continue;
    if (!ReadTidyTable(sections, lTable, tables.emplace_back(), fault)) return false;
  }
  return true;
}

std::string TidyEscaped(std::string_view sText) {
  std::string sOut;
  for (size_t i = 0; i < sText.size(); ++i) {
    const bool bEdge = sText[i] == ' ' && (i == 0 || i + 1 == sText.size());
    switch (sText[i]) {
      case '[':
        sOut += "\\x5B";
        break;
      case ';':
        sOut += "\\x3B";
        break;
      case '|':
        sOut += "\\x7C";
        break;
      default:
        sOut += bEdge ? "\\x20" : std::string(1, sText[i]);
    }
  }
  return sOut;
}

}  // namespace quillon
