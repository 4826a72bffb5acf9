// What a changed sheet takes along: its tables, names and filter, the totals of tables, and the strings that it no
// longer has.

#include <algorithm>
#include <unordered_map>

#include "clsDeflater.h"
#include "clsXlsxSaver.h"
#include "modXlsxTables.h"

namespace quillon {

bool clsXlsxSaver::PrepareSheet(size_t nSheet, Failure& failure) {
  const WorkbookSheet& entry = book_.workbook.sheets[nSheet];
  XlsxSheet& sheet = *book_.sheets[nSheet];
  if (sheet.pAnew != nullptr) return true;
  sheet.edit.typing.NoteAll(sheet.edit.cells);
  if (entry.bAdded) return true;
  if (book_.package.Find(book_.workbook.TargetOf("sharedStrings"))) sheet.edit.pStrings = &strings_;
  if (!AdjustTables(book_.package, entry.sPart, sheet.facts, sheet.edit, {renames_, tables_}, failure)) return false;
  nBehindTables_ += sheet.edit.nBehindTables;
  FollowData(sheet, entry.sName);
  return sheet.edit.fromRows.empty() || TakeFromRows(sheet, entry, failure);
}

/// Names and a filter that covered exactly the old data follow the new.
void clsXlsxSaver::FollowData(XlsxSheet& sheet, const std::string& sName) {
  SheetEdit& edit = sheet.edit;
  const CellRange& before = sheet.facts.filled;
  CellRange now = edit.typing.Used();
  const bool bCleared = std::any_of(edit.cleared.begin(), edit.cleared.end(),
                                    [&](const CellRange& range) { return Covers(range, before); });
  if (!bCleared || before.Empty() || now.Empty()) return;
  Include(now, edit.calculated);
  std::vector<DataMove> moves = {{before, now}};
  if (edit.bTotalsBelow) {
    ++moves[0].now.nBottom;
    moves.push_back({before, now});
    --moves[1].before.nBottom;
  }
  for (const DataMove& move : moves) {
    book_.edit.moves.emplace_back(sName, move);
    if (!edit.filter && !sheet.facts.filter.Empty()) edit.filter = Followed(sheet.facts.filter, move);
  }
}

/// From a cell's start tag to its end: its formula or text goes to another row, to be written there.
bool clsXlsxSaver::TakeContent(clsXmlScanner& scanner, SheetEdit& edit, int64_t nRow, int nColumn) {
  const std::string sType(scanner.Attribute("t").value_or(""));
  const int nDepth = scanner.Depth();
  std::string sFormula, sValue;
  while (scanner.Token() != XmlToken::EmptyTag && (scanner.Next() != XmlToken::EndTag || scanner.Depth() != nDepth)) {
    if (scanner.Token() == XmlToken::Failed) return false;
    if (scanner.Token() != XmlToken::Text) continue;
    if (scanner.Parent() == "f") scanner.AppendText(sFormula);
    if (scanner.Parent() == "v" || scanner.Parent() == "t") scanner.AppendText(sValue);
  }
  const auto nStrings = book_.package.Find(book_.workbook.TargetOf("sharedStrings"));
  if (sFormula.empty() && sType == "s" && nStrings) {
    if (!oldStrings_) {
      oldStrings_.emplace();
      clsXmlScanner all = book_.package.Scan(*nStrings);
      if (!oldStrings_->Load(all)) return false;
    }
    sValue = oldStrings_->At(ParseIndex(sValue).value_or(UINT32_MAX));
  }
  const int64_t nKey = nRow * kMaxSheetColumns + nColumn;
  if (!sFormula.empty())
    edit.formulas[nKey] = RenamedFormula(sFormula, renames_);
  else if (!sType.empty())
    edit.textCells.insert(nKey);
  if (!sFormula.empty() || !sValue.empty()) edit.cells.Write(nRow, nColumn, sFormula.empty() ? sValue : "=");
  return true;
}

/// Formats and contents that cells get of others.
bool clsXlsxSaver::TakeFromRows(XlsxSheet& sheet, const WorkbookSheet& entry, Failure& failure) {
  std::unordered_multimap<int64_t, SheetEdit::FromRow> wanted;
  for (const SheetEdit::FromRow& from : sheet.edit.fromRows)
    wanted.emplace(from.nFrom * kMaxSheetColumns + from.nColumn, from);
  clsXmlScanner scanner = book_.package.Scan(*book_.package.Find(entry.sPart));
  clsSheetCursor cursor;
  while (scanner.Next() != XmlToken::End) {
    bool bFailed = scanner.Token() == XmlToken::Failed;
    const auto event = bFailed ? clsSheetCursor::Event::Damaged : cursor.Look(scanner);
    bFailed |= event == clsSheetCursor::Event::Damaged;
    int64_t nContentRow = 0;
    if (event == clsSheetCursor::Event::Cell) {
      const auto [first, last] = wanted.equal_range(cursor.Row() * kMaxSheetColumns + cursor.Column());
      for (auto it = first; it != last; ++it) {
        sheet.edit.styles[it->second.nTo * kMaxSheetColumns + cursor.Column()] = cursor.Style();
        if (it->second.bContent) nContentRow = it->second.nTo;
      }
    }
    if (nContentRow > 0) bFailed |= !TakeContent(scanner, sheet.edit, nContentRow, cursor.Column());
    if (!bFailed) continue;
    failure = book_.package.Damaged(entry.sPart);
    return false;
  }
  return true;
}

/// The strings of sheets that are copied as they stand are in use. False if one is damaged: then nobody knows.
bool clsXlsxSaver::NoteKeptStrings() {
  for (size_t i = 0; i < book_.sheets.size(); ++i) {
    const WorkbookSheet& entry = book_.workbook.sheets[i];
    const auto nPart = book_.package.Find(entry.sPart);
    const XlsxSheet* const pSheet = book_.sheets[i].get();
    const bool bMerged = pSheet != nullptr && (pSheet->pAnew != nullptr || pSheet->edit.pStrings != nullptr);
    if (bMerged || !nPart || !entry.bWorksheet) continue;
    clsXmlScanner scanner = book_.package.Scan(*nPart);
    bool bShared = false;
    std::string sIndex;
    while (scanner.Next() != XmlToken::End) {
      if (scanner.Token() == XmlToken::Failed) return false;
      if (scanner.IsOpening() && scanner.Depth() == 4 && scanner.IsMain("c")) bShared = scanner.Attribute("t") == "s";
      if (!bShared || scanner.Token() != XmlToken::Text || scanner.Parent() != "v") continue;
      sIndex.clear();
      scanner.AppendText(sIndex);
      StringUse::Note(strings_.kept, sIndex);
    }
  }
  return true;
}

/// What stood in cells that are gone, and in no other, doesn't stay in the file.
bool clsXlsxSaver::DropStrings(Failure& failure) {
  if (strings_.dropped.empty() || !NoteKeptStrings()) return true;
  const size_t nPart = *book_.package.Find(book_.workbook.TargetOf("sharedStrings"));
  return MakePart(nPart, failure, [&](clsDeflater& deflater) {
    clsXmlScanner scanner = book_.package.Scan(nPart);
    size_t nString = 0;
    while (scanner.Next() != XmlToken::End) {
      bool bWhole = scanner.Token() != XmlToken::Failed;
      const bool bString = bWhole && scanner.IsOpening() && scanner.Depth() == 2 && scanner.IsMain("si");
      if (bString && strings_.IsGone(nString++)) {
        const std::string sPrefix = std::string(scanner.Prefix()) + (scanner.Prefix().empty() ? "" : ":");
        deflater.Write("<" + sPrefix + "si><" + sPrefix + "t/></" + sPrefix + "si>");
        bWhole = scanner.SkipElement();
      } else if (bWhole) {
        deflater.Write(scanner.Raw());
      }
      if (bWhole) continue;
      failure = book_.package.Damaged(book_.package.Parts()[nPart].sName);
      return false;
    }
    return true;
  });
}

}  // namespace quillon
