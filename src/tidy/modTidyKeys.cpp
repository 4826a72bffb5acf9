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

bool FailUnknown(TidyFault& fault, const TidySection& section, std::string_view sKey, SectionKind kind) {
  std::vector<std::string_view> words;
  for (const TidyKey& key : kKeys) {
    if (MayStandIn(key, kind)) words.push_back(key.sName);
  }
  std::string sWhat = "`" + std::string(sKey) + "`";
  if (const std::string_view sNearest = NearestWord(sKey, words); !sNearest.empty()) {
    sWhat += "; did you mean `" + std::string(sNearest) + "`?";
  }
  return FailTidy(fault, kTidyUnknownKey, section.sName, sKey, {section.sName, sWhat});
}

bool FailValue(TidyFault& fault, const TidySection& section, std::string_view sKey, const TidyValueFault& value) {
  return FailTidy(fault, value.lCode, section.sName, sKey, {section.sName, sKey, value.sWhat, value.sLimit});
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
    return column < nColumns ||
           FailTidy(fault, kTidyNoColumn, section.sName, sKey,
                    {section.sName, sKey, TidyColumnLetters(column), TidyColumnLetters(nColumns - 1)});
  };
  for (const TidyNeed& need : part.needs) {
    if (!fits(need.column, "Needs")) return false;
  }
  if (!part.types.empty() && !fits(part.types.size() - 1, "Types")) return false;
  const bool bAbove = std::find(part.names.begin(), part.names.end(), "^") != part.names.end();
  if (bAbove && (part.cut.places.empty() || !section.sName.starts_with("Table "))) {
    return FailTidy(fault, kTidyBadValue, section.sName, "Names",
                    {section.sName, "Names", "^ is the name above a column of a table's Places; write the names here"});
  }
  const bool bAllNamed = part.names.size() == 1 && part.names[0] == "^";
  if (part.names.size() <= nColumns || bAllNamed) return true;
  return FailTidy(fault, kTidyManyNames, section.sName, "Names",
                  {section.sName, std::to_string(part.names.size()), std::to_string(nColumns)});
}

bool CheckTable(const TidySection& section, TidyTable& table, TidyFault& fault) {
  if (!CheckPart(section, table.row, fault)) return false;
  const size_t nColumns = table.row.ColumnCount();
  const auto fits = [&](TidyColumn column, std::string_view sKey) {
    return column == kNoTidyColumn || column < nColumns ||
           FailTidy(fault, kTidyNoColumn, section.sName, sKey,
                    {section.sName, sKey, TidyColumnLetters(column), TidyColumnLetters(nColumns - 1)});
  };
  for (const TidyColumn column : table.fills) {
    if (!fits(column, "Fill")) return false;
  }
  if (!fits(table.joinColumn, "Join") || !fits(table.levelColumn, "Levels")) return false;
  const bool bCutTwice = table.row.cut.split != TidySplit::None && !table.row.cut.places.empty();
  if (bCutTwice) return FailValue(fault, section, "Split", {kTidyBadValue, "stands beside Places; take one", {}});
  if (table.row.cut.split != TidySplit::None && table.row.names.empty() && table.row.types.empty()) {
    return FailTidy(fault, kTidyMissingKey, section.sName, "Split",
                    {section.sName, "Split", "Names, which say how many columns there are"});
  }
  if (table.bRepeat && table.sStartLine.empty()) {
    return FailTidy(fault, kTidyMissingKey, section.sName, "Repeat", {section.sName, "Repeat", "ReadStartLine"});
  }
  for (const int32_t lOffset : {table.lStartOffset, table.lEndOffset}) {
    if (lOffset >= -clsTidyReport::kMaxGroup) continue;
    return FailTidy(fault, kTidyTooMuch, section.sName, "ReadStartLineOffset",
                    {section.sName, "ReadStartLineOffset", std::to_string(lOffset) + " lines back", "100000"});
  }
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
      return FailTidy(fault, kTidyTooMuch, section.sName, {}, {section.sName, "k", std::to_string(lPart), "1000"});
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
    return FailTidy(fault, kTidyMissingKey, section.sName, {},
                    {section.sName, "It", "Text, Like or Needs, which find it"});
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

bool HasTidyKey(const TidySection& section) {
  return std::any_of(section.keys.begin(), section.keys.end(), [](const auto& pair) {
    return std::any_of(kKeys.begin(), kKeys.end(),
                       [&](const TidyKey& key) { return key.bTidy && key.bTable && key.sName == pair.first; });
  });
}

bool HasKeyOfTables(const TidySection& section) {
  return std::any_of(section.keys.begin(), section.keys.end(), [](const auto& pair) {
    return std::any_of(kKeys.begin(), kKeys.end(), [&](const TidyKey& key) { return key.sName == pair.first; });
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
      case '\\':
        // What would be read as an escape.
        sOut += TidyUnescaped(sText.substr(i, 4)) != sText.substr(i, 4) ? "\\x5C" : "\\";
        break;
      default:
        sOut += bEdge ? "\\x20" : std::string(1, sText[i]);
    }
  }
  return sOut;
}

}  // namespace quillon
