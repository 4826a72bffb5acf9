#include "modTablePart.h"

#include <array>
#include <utility>

#include "modXmlReading.h"
#include "modXmlText.h"

namespace quillon {

namespace {

constexpr size_t kMaxTableColumns = kMaxSheetColumns;

/// What SUBTOTAL is told for a function of the totals row, rows out of sight left out.
constexpr auto kSubtotals = std::to_array<std::pair<std::string_view, int>>({{"average", 101},
                                                                             {"countNums", 102},
                                                                             {"count", 103},
                                                                             {"max", 104},
                                                                             {"min", 105},
                                                                             {"stdDev", 107},
                                                                             {"sum", 109},
                                                                             {"var", 110}});

void TakeColumn(const clsXmlScanner& scanner, XlsxTable& table) {
  XlsxTableColumn& column = table.columns.emplace_back();
  column.sName = DecodeCellText(scanner.AttributeText("name"));
  column.sTotalsLabel = DecodeCellText(scanner.AttributeText("totalsRowLabel"));
  column.sTotalsFunction = scanner.AttributeText("totalsRowFunction");
}

/// The names of columns stand in formulas with their brackets, "#", "'" and "@" marked.
std::string MarkedName(std::string_view sName) {
  std::string sMarked;
  for (const char ch : sName) {
    if (std::string_view("[]#'@").find(ch) != std::string_view::npos) sMarked += '\'';
    sMarked += ch;
  }
  return sMarked;
}

}  // namespace

bool ReadTablePart(std::string_view sBytes, XlsxTable& table) {
  clsXmlScanner scanner(sBytes);
  bool bArray = false;  // A formula for one cell with an array of results: none that is put into cell after cell
  while (scanner.Next() != XmlToken::End) {
    if (scanner.Token() == XmlToken::Failed) return false;
    if (scanner.Token() == XmlToken::Text && scanner.Parent() == "totalsRowFormula" && !table.columns.empty())
      scanner.AppendText(table.columns.back().sTotalsFormula);
    if (scanner.Token() == XmlToken::Text && scanner.Parent() == "calculatedColumnFormula" && !table.columns.empty() &&
        !bArray)
      scanner.AppendText(table.columns.back().sFormula);
    if (!scanner.IsOpening()) continue;
    bArray = scanner.Attribute("array").value_or("0") != "0";
    if (scanner.Depth() == 1) {
      const auto range = ParseCellRange(scanner.Attribute("ref").value_or(""));
      if (!scanner.IsMain("table") || !range) return false;
      table.range = *range;
      table.bHeading = scanner.Attribute("headerRowCount").value_or("1") != "0";
      table.bTotals = scanner.Attribute("totalsRowCount").value_or("0") != "0";
      table.sName = scanner.AttributeText("displayName");
    } else if (scanner.Depth() == 3 && scanner.IsMain("tableColumn")) {
      TakeColumn(scanner, table);
      if (table.columns.size() > kMaxTableColumns) return false;
    }
  }
  return table.columns.size() == static_cast<size_t>(table.range.nRight - table.range.nLeft + 1);
}

std::string ChangedTablePart(std::string_view sBytes, const XlsxTable& table) {
  clsXmlScanner scanner(sBytes);
  std::string sOut, sName;
  size_t nColumn = 0;
  const CellRange filter{table.range.nTop, table.range.nLeft, table.LastRow(), table.range.nRight};
  while (scanner.Next() != XmlToken::End && scanner.Token() != XmlToken::Failed) {
    if (scanner.IsOpening() && scanner.Depth() == 1) {
      sOut += WithAttribute(scanner.Raw(), "ref", CellRangeText(table.range));
    } else if (scanner.IsOpening() && scanner.Depth() == 2 && scanner.IsMain("autoFilter")) {
      sOut += WithAttribute(scanner.Raw(), "ref", CellRangeText(filter));
    } else if (scanner.IsOpening() && scanner.IsMain("sortState")) {
      auto range = ParseCellRange(scanner.Attribute("ref").value_or("")).value_or(filter);
      range.nTop = table.FirstRow();
      range.nBottom = table.LastRow();
      sOut += WithAttribute(scanner.Raw(), "ref", CellRangeText(range));
    } else if (scanner.IsOpening() && scanner.Depth() == 3 && scanner.IsMain("tableColumn")) {
      sName.clear();
      AppendXmlAttribute(sName, table.columns[nColumn++].sName);
      sOut += WithAttribute(scanner.Raw(), "name", sName);
    } else {
      sOut += scanner.Raw();
    }
  }
  return sOut;
}

std::string TotalsFormula(const XlsxTable& table, const XlsxTableColumn& column) {
  if (column.sTotalsFunction == "custom") return column.sTotalsFormula;
  for (const auto& [sFunction, nSubtotal] : kSubtotals)
    if (sFunction == column.sTotalsFunction)
      return "SUBTOTAL(" + std::to_string(nSubtotal) + "," + table.sName + "[" + MarkedName(column.sName) + "])";
  return {};
}

}  // namespace quillon
