#include "modRecipeOfTables.h"

#include <fmt/format.h>

#include "modTidyKeys.h"

namespace quillon {

namespace {

std::string Joined(const std::vector<std::string>& texts) {
  std::string sAll;
  for (size_t i = 0; i < texts.size(); ++i) {
    if (i > 0) sAll += '|';
    sAll += TidyEscaped(texts[i]);
  }
  return sAll;
}

void AddKey(std::string& sText, std::string_view sKey, std::string_view sValue) {
  if (!sValue.empty()) sText += fmt::format("{}={}\n", sKey, sValue);
}

std::string PlacesText(const TidyCut& cut) {
  std::string sPlaces;
  for (const std::vector<TidyPlace>& record : cut.places) {
    if (!sPlaces.empty()) sPlaces += " | ";
    for (size_t i = 0; i < record.size(); ++i) {
      if (i > 0) sPlaces += ' ';
      sPlaces += fmt::format("{}", record[i].nStart);
      if (record[i].nEnd == 0) {
        sPlaces += '-';
      } else if (record[i].nEnd > record[i].nStart) {
        sPlaces += fmt::format("-{}", record[i].nEnd);
      }
    }
  }
  return sPlaces;
}

std::string KindText(const TidyKindOrText& kind) {
  switch (kind.kind) {
    case TidyKind::Number:
      return "number";
    case TidyKind::Digits:
      return "digits";
    case TidyKind::Date:
      return "date";
    case TidyKind::Letters:
      return "letters";
    case TidyKind::Any:
      return "any";
    case TidyKind::Blank:
      return "blank";
    case TidyKind::Holds:
      break;
  }
  return '"' + TidyEscaped(kind.sText) + '"';
}

std::string KindsText(const TidyNeed& need) {
  std::string sKinds;
  for (const TidyKindOrText& kind : need.alternatives) {
    if (!sKinds.empty()) sKinds += '|';
    sKinds += KindText(kind);
  }
  return sKinds;
}

std::string TypeText(const TidyTyping& typing) {
  switch (typing.type) {
    case TidyType::Text:
      return "text";
    case TidyType::Number:
      return typing.bComma ? "number comma" : "number";
    case TidyType::Date:
      return "date " + typing.sDateForm;
    case TidyType::Skip:
      return "skip";
    case TidyType::Auto:
      break;
  }
  return "auto";
}

/// "A text, B-D number": what is the same in neighbours is said once.
template <typename List, typename Column, typename Text>
std::string ByColumn(const List& list, Column column, Text text) {
  std::string sAll;
  for (size_t i = 0; i < list.size();) {
    const std::string sText = text(list[i]);
    size_t nEnd = i + 1;
    while (nEnd < list.size() && column(nEnd) == column(nEnd - 1) + 1 && text(list[nEnd]) == sText) ++nEnd;
    if (!sAll.empty()) sAll += ", ";
    sAll += ColumnLetters(column(i));
    if (nEnd > i + 1) sAll += '-' + ColumnLetters(column(nEnd - 1));
    sAll += ' ' + sText;
    i = nEnd;
  }
  return sAll;
}

std::string TypesText(const TidyPart& part) {
  bool bAny = false;
  bool bSame = true;
  for (const TidyTyping& typing : part.types) {
    bAny = bAny || typing.type != TidyType::Auto;
    bSame = bSame && TypeText(typing) == TypeText(part.types.front());
  }
  if (!bAny) return {};
  if (bSame) return TypeText(part.types.front());
  return ByColumn(
      part.types, [](size_t i) { return i; }, TypeText);
}

std::string NamesText(const TidyPart& part) {
  bool bAny = false;
  for (const std::string& sName : part.names) bAny = bAny || !sName.empty();
  return bAny ? Joined(part.names) : std::string();
}

std::string SplitText(const TidyCut& cut) {
  switch (cut.split) {
    case TidySplit::AtText:
      return TidyEscaped(cut.sSplit);
    case TidySplit::AtBlanks:
      return "blanks";
    case TidySplit::AtGaps:
      return "gaps";
    case TidySplit::None:
      break;
  }
  return {};
}

/// A backslash of a picture stands for the character behind it, and is that of the escape where one is needed.
std::string EscapedPicture(std::string_view sLike) {
  std::string sOut;
  for (size_t i = 0; i < sLike.size(); ++i) {
    const bool bItself = sLike[i] == '\\' && i + 1 < sLike.size();
    if (bItself) ++i;
    const char ch = sLike[i];
    if (ch == '[' || ch == ';' || ch == '|') {
      sOut += TidyEscaped(sLike.substr(i, 1));
    } else if (bItself && (ch == ' ' || ch == 'x')) {
      sOut += ch == ' ' ? "\\x20" : "\\x78";
    } else {
      sOut.append(bItself ? 1 : 0, '\\').push_back(ch);
    }
  }
  return sOut;
}

void AddPart(std::string& sText, const TidyPart& part) {
  AddKey(sText, "Text", Joined(part.texts));
  AddKey(sText, "Before", TidyEscaped(part.sBefore));
  std::string sLikes;
  for (const std::string& sLike : part.likes) sLikes += (sLikes.empty() ? "" : "|") + EscapedPicture(sLike);
  AddKey(sText, "Like", sLikes);
  AddKey(sText, "Needs",
         ByColumn(
             part.needs, [&](size_t i) { return part.needs[i].column; }, KindsText));
  AddKey(sText, "Places", PlacesText(part.cut));
  AddKey(sText, "Split", SplitText(part.cut));
  AddKey(sText, "Names", NamesText(part));
  AddKey(sText, "Types", TypesText(part));
  AddKey(sText, "Blank", Joined(part.blanks));
}

std::string LettersOf(const std::vector<TidyColumn>& columns) {
  std::string sAll;
  for (const TidyColumn column : columns) sAll += (sAll.empty() ? "" : " ") + ColumnLetters(column);
  return sAll;
}

void AddStretch(std::string& sText, const TidyTable& table) {
  AddKey(sText, "ReadStartLine", TidyEscaped(table.sStartLine));
  if (table.lStartOffset != 0) AddKey(sText, "ReadStartLineOffset", std::to_string(table.lStartOffset));
  AddKey(sText, "ReadEndLine", TidyEscaped(table.sEndLine));
  if (table.lEndOffset != 0) AddKey(sText, "ReadEndLineOffset", std::to_string(table.lEndOffset));
  if (table.bUntilBlank) AddKey(sText, "Until", "blank");
  if (table.bRepeat) AddKey(sText, "Repeat", "yes");
}

/// Numbers of lines are distances where nothing else finds the line, and go up by one.
std::string LinesText(const TidyTable& table, size_t nTable) {
  std::string sText;
  int32_t lNumber = 2;
  for (const bool bByDistance : {true, false}) {
    for (const TidyFurtherLine& line : table.lines) {
      if (line.IsByDistance() != bByDistance) continue;
      for (; bByDistance && lNumber <= line.nDistance; ++lNumber) {
        sText += fmt::format("[Line {}.{}]\nTypes=skip\n", nTable, lNumber);
      }
      sText += fmt::format("[Line {}.{}]\n", nTable, lNumber++);
      AddPart(sText, line.part);
    }
  }
  return sText;
}

std::string JoinText(const TidyTable& table) {
  if (table.join == TidyJoin::None) return {};
  if (table.join == TidyJoin::Down) return "down";
  return table.joinColumn == kNoTidyColumn ? "up" : "up " + ColumnLetters(table.joinColumn);
}

}  // namespace

std::string ColumnLetters(TidyColumn column) {
  constexpr size_t kLetters = 26;
  std::string sLetters;
  for (size_t n = column + 1; n > 0; n = (n - 1) / kLetters) {
    sLetters.insert(sLetters.begin(), static_cast<char>('A' + (n - 1) % kLetters));
  }
  return sLetters;
}

std::string RecipeOfTable(const TidyTable& table, size_t nTable) {
  std::string sText = fmt::format("[Table {}]\n", nTable);
  AddStretch(sText, table);
  AddPart(sText, table.row);
  AddKey(sText, "Drop", Joined(table.drops));
  AddKey(sText, "Fill", LettersOf(table.fills));
  AddKey(sText, "Join", JoinText(table));
  if (table.levelColumn != kNoTidyColumn) {
    AddKey(sText, "Levels",
           ColumnLetters(table.levelColumn) + (table.bLevelRows ? " rows " : " ") + Joined(table.levelNames));
  }
  AddKey(sText, "Totals", Joined(table.totals));
  AddKey(sText, "Sheet", TidyEscaped(table.sSheet));
  for (size_t k = 0; k < table.headings.size(); ++k) {
    sText += RecipeOfHeading(table.headings[k], nTable, k + 1);
  }
  return sText + LinesText(table, nTable);
}

std::string RecipeOfHeading(const TidyPart& heading, size_t nTable, size_t nHeading) {
  std::string sText = fmt::format("[Heading {}.{}]\n", nTable, nHeading);
  AddPart(sText, heading);
  return sText;
}

std::string SwitchedOff(std::string_view sSections) {
  std::string sText;
  for (size_t i = 0; i < sSections.size(); ++i) {
    sText += sSections[i];
    if (sSections[i] == '[' && (i == 0 || sSections[i - 1] == '\n')) sText += '-';
  }
  return sText;
}

}  // namespace quillon
