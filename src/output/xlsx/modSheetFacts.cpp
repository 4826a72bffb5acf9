#include "modSheetFacts.h"

#include <algorithm>
#include <utility>

namespace quillon {

namespace {

void TakeColumns(const clsXmlScanner& scanner, SheetFacts& facts) {
  const auto nFirst = ParseIndex(scanner.Attribute("min").value_or(""));
  const auto nLast = ParseIndex(scanner.Attribute("max").value_or(""));
  const auto nStyle = ParseIndex(scanner.Attribute("style").value_or("0"));
  if (!nFirst || *nFirst == 0 || !nLast || !nStyle || *nStyle == 0) return;
  facts.columnStyles.resize(kMaxSheetColumns);
  for (size_t n = *nFirst; n <= *nLast && n <= facts.columnStyles.size(); ++n) facts.columnStyles[n - 1] = *nStyle;
}

/// What stands beside the cells and has to do with them.
void TakeBeside(const clsXmlScanner& scanner, SheetFacts& facts) {
  if (scanner.Depth() == 3 && scanner.IsMain("col")) TakeColumns(scanner, facts);
  if (scanner.Depth() == 3 && scanner.IsMain("mergeCell") && ++facts.nMerged <= SheetFacts::kMostMerged)
    if (const auto range = ParseCellRange(scanner.Attribute("ref").value_or(""))) facts.merged.Add(*range);
  if (scanner.Depth() != 2) return;
  const std::string_view sSheet = scanner.Attribute("sheet").value_or("0");
  if (scanner.IsMain("sheetProtection")) facts.bProtected = sSheet == "1" || sSheet == "true";
  if (scanner.IsMain("autoFilter"))
    facts.filter = ParseCellRange(scanner.Attribute("ref").value_or("")).value_or(CellRange());
}

bool TakeFormula(clsXmlScanner& scanner, const clsSheetCursor& cursor, SheetFacts& facts) {
  ++facts.content.nFormulas;
  const std::string_view sType = scanner.Attribute("t").value_or("");
  const auto range = ParseCellRange(scanner.Attribute("ref").value_or(""));
  if ((sType == "array" || sType == "dataTable") && range &&
      (range->nTop != range->nBottom || range->nLeft != range->nRight))
    facts.arrays.Add(*range);
  const auto nShared = ParseIndex(scanner.Attribute("si").value_or(""));
  if (sType != "shared" || !nShared || !range) return scanner.SkipElement();
  SharedFormula shared{{}, {cursor.Row(), cursor.Column()}, *range};
  const int nDepth = scanner.Depth();
  while (scanner.Token() != XmlToken::EmptyTag && scanner.Next() != XmlToken::EndTag) {
    if (scanner.Token() == XmlToken::Failed) return false;
    if (scanner.Token() == XmlToken::Text && scanner.Depth() == nDepth) scanner.AppendText(shared.sFormula);
  }
  facts.shared.emplace(*nShared, std::move(shared));
  return true;
}

}  // namespace

bool SheetFacts::InArray(int64_t nRow, int nColumn, const std::vector<CellRange>& cleared) const {
  const CellRange* const pArray = arrays.At(nRow, nColumn);
  return pArray != nullptr && std::none_of(cleared.begin(), cleared.end(),
                                           [pArray](const CellRange& range) { return Covers(range, *pArray); });
}

bool ReadSheetFacts(clsXmlScanner& scanner, SheetFacts& facts) {
  clsSheetCursor cursor;
  bool bCounted = false;  // The cell in hand
  const auto count = [&] {
    if (std::exchange(bCounted, true)) return;
    ++facts.content.nFilled;
    Include(facts.filled, {cursor.Row(), cursor.Column(), cursor.Row(), cursor.Column()});
  };
  while (scanner.Next() != XmlToken::End) {
    if (scanner.Token() == XmlToken::Failed) return false;
    switch (cursor.Look(scanner)) {
      case clsSheetCursor::Event::Damaged:
        return false;
      case clsSheetCursor::Event::Cell:
        bCounted = false;
        Include(facts.content.used, {cursor.Row(), cursor.Column(), cursor.Row(), cursor.Column()});
        if (scanner.TakePlainValue()) count();
        break;
      case clsSheetCursor::Event::None:
        if (!scanner.IsOpening()) break;
        if (scanner.Depth() == 1 && !scanner.IsMain("worksheet")) return false;
        if (!cursor.InSheetData()) TakeBeside(scanner, facts);
        if (scanner.Depth() != 5 || !cursor.InSheetData()) break;
        if (scanner.IsMain("v") || scanner.IsMain("is") || scanner.IsMain("f")) count();
        if (scanner.IsMain("f") && !TakeFormula(scanner, cursor, facts)) return false;
        break;
      default:
        break;
    }
  }
  facts.arrays.Sort();
  facts.merged.Sort();
  return cursor.SeenSheetData();
}

}  // namespace quillon
