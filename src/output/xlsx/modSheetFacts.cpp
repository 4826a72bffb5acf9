#include "modSheetFacts.h"

#include <algorithm>

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

bool TakeFormula(clsXmlScanner& scanner, const clsSheetCursor& cursor, SheetFacts& facts) {
  facts.bHasFormulas = true;
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
  while (scanner.Next() != XmlToken::End) {
    if (scanner.Token() == XmlToken::Failed) return false;
    switch (cursor.Look(scanner)) {
      case clsSheetCursor::Event::Damaged:
        return false;
      case clsSheetCursor::Event::Cell:
        Include(facts.used, {cursor.Row(), cursor.Column(), cursor.Row(), cursor.Column()});
        break;
      case clsSheetCursor::Event::None:
        if (!scanner.IsOpening()) break;
        if (scanner.Depth() == 1 && !scanner.IsMain("worksheet")) return false;
        if (scanner.Depth() == 3 && scanner.IsMain("col")) TakeColumns(scanner, facts);
        if (scanner.Depth() == 5 && cursor.InSheetData() && scanner.IsMain("f") && !TakeFormula(scanner, cursor, facts))
          return false;
        break;
      default:
        break;
    }
  }
  facts.arrays.Sort();
  return cursor.SeenSheetData();
}

}  // namespace quillon
