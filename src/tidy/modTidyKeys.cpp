#include "modTidyKeys.h"

#include <algorithm>
#include <array>
#include <functional>

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
  for (const auto& [sName, sValue] : section.keys) {
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

/// "Heading 2.1" as table 2, number 1. False if the name is of another kind.
bool PartOfName(std::string_view sName, std::string_view sKind, std::string& sTable, int32_t& lPart) {
  if (!sName.starts_with(sKind)) return false;
  const std::string_view sNumbers = TrimBlanks(sName.substr(sKind.size()));
  const size_t nPoint = sNumbers.find('.');
  if (nPoint == std::string_view::npos) return false;
  sTable = sNumbers.substr(0, nPoint);
  const auto digits = [](std::string_view s) {
    return !s.empty() && s.size() < 6 && std::all_of(s.begin(), s.end(), IsAsciiDigit);
  };
  const std::string_view sPart = sNumbers.substr(nPoint + 1);
  if (!digits(sTable) || !digits(sPart)) return false;
  lPart = ParseWholeNumber(sPart).value_or(0);
  return true;
}

/// Sections "Heading n.1" or "Line n.2" and so on, one after the other.
template <typename Take>
bool ReadParts(const std::vector<TidySection>& sections, std::string_view sKind, int32_t lTable, int32_t lFirst,
               TidyFault& fault, Take take) {
  for (int32_t k = lFirst;; ++k) {
    const TidySection* const section =
        FindSection(sections, std::string(sKind) + std::to_string(lTable) + "." + std::to_string(k));
    if (section == nullptr) return true;
    if (k > static_cast<int32_t>(kMostParts)) {
      return Fail(fault, kTidyTooMuch, section->sName, {}, {section->sName, "", "Sections of one kind", "1000"});
    }
    if (!take(*section, k)) return false;
  }
}

bool ReadHeading(const TidySection& section, TidyTable& table, TidyFault& fault) {
  TidyPart& part = table.headings.emplace_back();
  if (!ReadKeys(section, SectionKind::Heading, table, part, fault) || !CheckPart(section, part, fault)) return false;
  if (part.texts.empty() && part.likes.empty() && part.needs.empty()) {
    return Fail(fault, kTidyMissingKey, section.sName, {}, {section.sName, "It", "Text, Like or Needs, which find it"});
  }
  if (part.names.empty() && !part.texts.empty()) {
    std::string_view sName = part.texts.front();
    while (!sName.empty() && (sName.back() == ':' || sName.back() == '.' || sName.back() == ' '))
      sName.remove_suffix(1);
    part.names.emplace_back(sName);
  }
  return true;
}

bool ReadFurtherLine(const TidySection& section, int32_t k, TidyTable& table, TidyFault& fault) {
  TidyFurtherLine& line = table.lines.emplace_back();
  line.nDistance = k - 1;
  return ReadKeys(section, SectionKind::Line, table, line.part, fault) && CheckPart(section, line.part, fault);
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
  return ReadParts(sections, "Heading ", lTable, 1, fault,
                   [&](const TidySection& part, int32_t) {
                     table.sections.push_back(part);
                     return ReadHeading(part, table, fault);
                   }) &&
         ReadParts(sections, "Line ", lTable, 2, fault, [&](const TidySection& part, int32_t k) {
           table.sections.push_back(part);
           return ReadFurtherLine(part, k, table, fault);
         });
}

bool HasStraySections(const std::vector<TidySection>& sections, int32_t nTables, TidyFault& fault) {
  for (const TidySection& section : sections) {
    std::string sTable;
    int32_t lPart = 0;
    for (const auto& [sKind, lFirst] : {std::pair<std::string_view, int32_t>{"Heading ", 1}, {"Line ", 2}}) {
      if (!PartOfName(section.sName, sKind, sTable, lPart)) continue;
      const int32_t lTable = ParseWholeNumber(sTable).value_or(0);
      const std::string sBefore = std::string(sKind) + sTable + "." + std::to_string(lPart - 1);
      const bool bFollows = lPart == lFirst || (lPart > lFirst && FindSection(sections, sBefore) != nullptr);
      if (lTable < 1 || lTable > nTables)
        return !Fail(fault, kTidyStraySection, section.sName, {}, {section.sName, sTable});
      if (!bFollows)
        return !Fail(fault, kTidyMissingKey, section.sName, {}, {section.sName, "It", "[" + sBefore + "]"});
    }
  }
  return false;
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
