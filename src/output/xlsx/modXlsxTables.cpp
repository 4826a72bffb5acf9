#include "modXlsxTables.h"

#include <algorithm>
#include <vector>

#include "modSettledCell.h"
#include "modText.h"
#include "modXmlReading.h"
#include "modXmlText.h"

namespace quillon {

namespace {

constexpr size_t kMaxTableColumns = kMaxSheetColumns;

struct Table {
  std::string sName;
  CellRange range;
  bool bHeading = true;
  std::vector<std::string> columns;
};

bool ReadTable(std::string_view sBytes, Table& table) {
  clsXmlScanner scanner(sBytes);
  while (scanner.Next() != XmlToken::End) {
    if (scanner.Token() == XmlToken::Failed) return false;
    if (!scanner.IsOpening()) continue;
    if (scanner.Depth() == 1) {
      const auto range = ParseCellRange(scanner.Attribute("ref").value_or(""));
      if (!scanner.IsMain("table") || !range) return false;
      table.range = *range;
      table.bHeading = scanner.Attribute("headerRowCount").value_or("1") != "0";
      table.sName = scanner.AttributeText("displayName");
    } else if (scanner.Depth() == 3 && scanner.IsMain("tableColumn")) {
      table.columns.push_back(DecodeCellText(scanner.AttributeText("name")));
      if (table.columns.size() > kMaxTableColumns) return false;
    }
  }
  return true;
}

/// Names in use, in capitals, each with the number that is tried next for another of that name.
using TakenNames = std::map<std::string, int>;

/// The text with " (2)" and so on behind it where another column bears it.
std::string MadeUnique(const std::string& sText, TakenNames& taken) {
  const auto [entry, bFree] = taken.emplace(UpperText(sText), 2);
  if (bFree) return sText;
  std::string sName;
  do {
    sName = sText + " (" + std::to_string(entry->second++) + ")";
  } while (!taken.emplace(UpperText(sName), 2).second);
  return sName;
}

/// New names of all columns by what the heading cells are to hold; true if one differs from before.
bool NameColumns(const Table& table, SheetEdit& edit, std::vector<std::string>& names) {
  names = table.columns;
  TakenNames taken;
  std::vector<size_t> changed;
  for (size_t i = 0; i < names.size(); ++i) {
    const int nColumn = static_cast<int>(table.range.nLeft) + static_cast<int>(i);
    std::string_view sText;
    const bool bWritten = edit.cells.Read(table.range.nTop, nColumn, sText);
    if (bWritten || edit.Cleared(table.range.nTop, nColumn)) {
      changed.push_back(i);
      names[i] = TrimBlanks(ShownOf(sText)).empty() ? "Column" + std::to_string(i + 1) : std::string(ShownOf(sText));
    } else {
      taken.emplace(UpperText(names[i]), 2);
    }
  }
  for (const size_t i : changed) {
    names[i] = MadeUnique(names[i], taken);
    const int nColumn = static_cast<int>(table.range.nLeft) + static_cast<int>(i);
    edit.cells.Write(table.range.nTop, nColumn, names[i]);
    edit.textCells.insert(table.range.nTop * kMaxSheetColumns + nColumn);
  }
  return names != table.columns;
}

std::string RenamedTable(std::string_view sBytes, const std::vector<std::string>& names) {
  clsXmlScanner scanner(sBytes);
  std::string sOut, sName;
  size_t nColumn = 0;
  while (scanner.Next() != XmlToken::End && scanner.Token() != XmlToken::Failed) {
    if (scanner.IsOpening() && scanner.Depth() == 3 && scanner.IsMain("tableColumn")) {
      sName.clear();
      AppendXmlAttribute(sName, names[nColumn++]);
      sOut += WithAttribute(scanner.Raw(), "name", sName);
    } else {
      sOut += scanner.Raw();
    }
  }
  return sOut;
}

}  // namespace

bool AdjustTables(const clsXlsxPackage& package, const std::string& sSheetPart, SheetEdit& edit,
                  FormulaRenames& renames, std::map<size_t, std::string>& parts, Failure& failure) {
  std::vector<Relationship> relationships;
  if (!package.ReadRelationships(sSheetPart, relationships, failure)) return false;
  for (const Relationship& relationship : relationships) {
    const auto nPart = relationship.sType == "table" ? package.Find(relationship.sTarget) : std::nullopt;
    if (!nPart) continue;
    std::string sBytes;
    Table table;
    if (!package.ReadAll(*nPart, sBytes, failure)) return false;
    if (!ReadTable(sBytes, table)) {
      failure = package.Damaged(relationship.sTarget);
      return false;
    }
    std::vector<std::string> names;
    if (!table.bHeading || !NameColumns(table, edit, names)) continue;
    parts[*nPart] = RenamedTable(sBytes, names);
    for (size_t i = 0; i < names.size(); ++i)
      if (names[i] != table.columns[i]) renames.columns.push_back({table.sName, table.columns[i], names[i]});
  }
  return true;
}

}  // namespace quillon
