#include "clsXlsxEditor.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "clsSheetBook.h"
#include "clsXlsxPackage.h"
#include "clsXlsxSaver.h"
#include "modOutputMessages.h"
#include "modSettledCell.h"
#include "modSheetValues.h"
#include "modXlsxAddedSheets.h"

namespace quillon {

namespace {

class clsXlsxEditor : public clsSheetBook {
 public:
  explicit clsXlsxEditor(const WorkbookOptions& options)
      : clsSheetBook(options, {kMaxSheetRows, kMaxSheetColumns, kFormatXlsx}), cells_(options.typing) {
    cells_.SetStyles([this](const std::string& sCode) {
      if (sCode == kHeadingFormat) return book_.styles.Heading();
      return static_cast<uint32_t>(std::max<int64_t>(book_.styles.Derive(0, sCode), 0));
    });
  }

  bool Open(std::string_view sHostPath, Failure& failure);

  void SetStandardFont(std::string_view) override {}
  void BeginTable(int nSheet) override;
  void SetHeadingRow(int nSheet, int64_t nRow) override;
  bool ClearContents(int nSheet, const CellRange& range, Failure& failure) override;
  SheetContent ContentOf(int nSheet) override;
  bool IsExisting() const override { return true; }

 protected:
  bool IsWorksheet(int nSheet) const override { return EntryOf(nSheet).bWorksheet; }
  bool PutText(int nSheet, int64_t nRow, int nColumn, std::string_view sStored, Failure& failure) override;
  bool GetText(int nSheet, int64_t nRow, int nColumn, std::string& sStored, Failure& failure) override;
  std::optional<CellRange> UsedRange(int nSheet) override;
  void AddSheet() override;
  void NamesChanged() override;
  bool Save(std::string_view sPath, Failure& failure) override;

 private:
  const WorkbookSheet& EntryOf(int nSheet) const { return book_.workbook.sheets[static_cast<size_t>(nSheet) - 1]; }
  XlsxSheet* Prepare(int nSheet, Failure& failure);
  std::optional<CellRange> OwnUsedRange(int nSheet) const;
  bool TakeAnew(int nSheet, const CellRange& range);
  bool ClearAnew(XlsxSheet& sheet, const CellRange& range) const;
  bool Scan(XlsxSheet& sheet, const WorkbookSheet& entry);
  bool LoadShown(XlsxSheet& sheet, const WorkbookSheet& entry);
  bool LoadStrings();

  XlsxBook book_;
  clsXlsxCells cells_;  ///< Of sheets that are written anew
  std::optional<clsSharedStrings> strings_;
};

bool clsXlsxEditor::Open(std::string_view sHostPath, Failure& failure) {
  const std::string sPath(sHostPath);
  book_.typing = options_.typing;
  book_.state = FileState::Of(sPath);
  if (!book_.package.Open(sPath, failure) || !ReadWorkbookPart(book_.package, book_.workbook, failure)) return false;
  book_.sheets.resize(book_.workbook.sheets.size());
  for (const WorkbookSheet& sheet : book_.workbook.sheets) names_.push_back(sheet.sName);
  cells_.SetSheetNames(names_);
  nActive_ = static_cast<int>(book_.workbook.nActive) + 1;
  const std::string sStyles = book_.workbook.TargetOf("styles");
  const auto nStyles = book_.package.Find(sStyles);
  std::string sBytes;
  if (!nStyles) return true;
  if (!book_.package.ReadAll(*nStyles, sBytes, failure)) return false;
  if (book_.package.IsOwnWork()) book_.styles.TakeAsOwn();
  if (book_.styles.Load(std::move(sBytes))) return true;
  failure = book_.package.Damaged(sStyles);
  return false;
}

/// The sheet, looked through; null with the reason if its cells can't be touched.
XlsxSheet* clsXlsxEditor::Prepare(int nSheet, Failure& failure) {
  auto& pSheet = book_.sheets[static_cast<size_t>(nSheet) - 1];
  const WorkbookSheet& entry = EntryOf(nSheet);
  if (pSheet == nullptr) {
    pSheet = std::make_unique<XlsxSheet>(book_.typing);
    if (!entry.bAdded && !Scan(*pSheet, entry)) pSheet->failure = book_.package.Damaged(entry.sPart);
  }
  failure = pSheet->failure;
  return failure.Failed() ? nullptr : pSheet.get();
}

bool clsXlsxEditor::Scan(XlsxSheet& sheet, const WorkbookSheet& entry) {
  const auto nPart = book_.package.Find(entry.sPart);
  if (!nPart) return false;
  clsXmlScanner scanner = book_.package.Scan(*nPart);
  sheet.bScanned = ReadSheetFacts(scanner, sheet.facts);
  return sheet.bScanned;
}

/// What a sheet of our own work says of its extent, before its cells are looked at; nothing for any other.
std::optional<CellRange> clsXlsxEditor::OwnUsedRange(int nSheet) const {
  const WorkbookSheet& entry = EntryOf(nSheet);
  const auto nPart = book_.package.Find(entry.sPart);
  if (!book_.styles.IsOwn() || entry.bAdded || !entry.bWorksheet || !nPart) return std::nullopt;
  if (book_.sheets[static_cast<size_t>(nSheet) - 1] != nullptr) return std::nullopt;
  clsXmlScanner scanner = book_.package.Scan(*nPart);
  while (scanner.Next() != XmlToken::End && scanner.Token() != XmlToken::Failed && scanner.Depth() <= 2)
    if (scanner.IsOpening() && scanner.IsMain("dimension"))
      return ParseCellRange(scanner.Attribute("ref").value_or(""));
  return std::nullopt;
}

/// True for a sheet of our own work that is emptied as a whole. Few number formats leave room for all new ones.
bool clsXlsxEditor::TakeAnew(int nSheet, const CellRange& range) {
  const auto used = OwnUsedRange(nSheet);
  constexpr size_t kFewStyles = 1000;
  if (!used || !Covers(range, *used) || book_.styles.Count() > kFewStyles) return false;
  auto& pSheet = book_.sheets[static_cast<size_t>(nSheet) - 1];
  pSheet = std::make_unique<XlsxSheet>(book_.typing);
  pSheet->pAnew = std::make_unique<clsXlsxSheet>(cells_, book_.typing);
  pSheet->pShown = std::make_unique<clsCellStore>();
  return true;
}

void clsXlsxEditor::SetHeadingRow(int nSheet, int64_t nRow) {
  XlsxSheet* const pSheet = HasSheet(nSheet) ? book_.sheets[static_cast<size_t>(nSheet) - 1].get() : nullptr;
  if (pSheet != nullptr && pSheet->pAnew != nullptr) pSheet->pAnew->SetHeadingRow(nRow);
}

void clsXlsxEditor::BeginTable(int nSheet) {
  Failure ignored;
  XlsxSheet* const pSheet = CheckSheet(nSheet, ignored) ? Prepare(nSheet, ignored) : nullptr;
  if (pSheet == nullptr) return;
  if (pSheet->pAnew != nullptr) return pSheet->pAnew->BeginTable();
  pSheet->edit.typing.BeginTable(pSheet->edit.cells.LastRow());
}

void clsXlsxEditor::AddSheet() {
  book_.sheets.push_back(std::make_unique<XlsxSheet>(book_.typing));
  book_.workbook.sheets.push_back({{}, {}, true, true, {}});
}

/// An added sheet gets its part when its name is known.
void clsXlsxEditor::NamesChanged() {
  cells_.SetSheetNames(names_);
  auto& sheets = book_.workbook.sheets;
  for (size_t i = 0; i < sheets.size(); ++i)
    if (sheets[i].bAdded) sheets[i].sName = names_[i];
  if (sheets.empty() || !sheets.back().bAdded || !sheets.back().sPart.empty()) return;
  sheets.pop_back();
  AddSheets(book_.package, names_, book_.workbook);
}

bool clsXlsxEditor::PutText(int nSheet, int64_t nRow, int nColumn, std::string_view sStored, Failure& failure) {
  XlsxSheet* const pSheet = Prepare(nSheet, failure);
  if (pSheet == nullptr) return false;
  if (pSheet->pAnew != nullptr) {
    pSheet->pAnew->WriteCell(nRow, nColumn, sStored);
    if (options_.bReadBack) pSheet->pShown->Write(nRow, nColumn, sStored);
    return true;
  }
  if (pSheet->facts.InArray(nRow, nColumn, pSheet->edit.cleared)) {
    failure = CellFailure(nSheet, nRow, nColumn, OutputMessage::PartOfArray);
    return false;
  }
  if (pSheet->facts.bProtected) NoteProtected(nSheet);
  if (!pSheet->facts.merged.Empty() && sStored.find_first_not_of(' ') != std::string_view::npos) {
    const CellRange* const pMerged = pSheet->facts.merged.At(nRow, nColumn);
    if (pMerged != nullptr && (pMerged->nTop != nRow || pMerged->nLeft != nColumn)) NoteMerged();
  }
  pSheet->edit.cells.Write(nRow, nColumn, sStored);
  return true;
}

bool clsXlsxEditor::GetText(int nSheet, int64_t nRow, int nColumn, std::string& sStored, Failure& failure) {
  XlsxSheet* const pSheet = Prepare(nSheet, failure);
  if (pSheet == nullptr) return false;
  std::string_view sFound;
  if (!pSheet->edit.cells.Read(nRow, nColumn, sFound) && !pSheet->edit.Cleared(nRow, nColumn)) {
    if (pSheet->pShown == nullptr && !LoadShown(*pSheet, EntryOf(nSheet))) {
      failure = pSheet->failure;
      return false;
    }
    pSheet->pShown->Read(nRow, nColumn, sFound);
  }
  sStored = sFound;
  return true;
}

bool clsXlsxEditor::LoadStrings() {
  if (strings_) return true;
  strings_.emplace();
  const auto nPart = book_.package.Find(book_.workbook.TargetOf("sharedStrings"));
  if (!nPart) return true;
  clsXmlScanner scanner = book_.package.Scan(*nPart);
  if (strings_->Load(scanner)) return true;
  strings_.reset();
  return false;
}

bool clsXlsxEditor::LoadShown(XlsxSheet& sheet, const WorkbookSheet& entry) {
  sheet.pShown = std::make_unique<clsCellStore>();
  if (entry.bAdded) return true;
  clsXmlScanner scanner = book_.package.Scan(*book_.package.Find(entry.sPart));
  const ShownValueOptions shown{options_.typing.bDayFirst, book_.workbook.b1904};
  if (LoadStrings() && ReadSheetValues(scanner, *strings_, book_.styles, shown, *sheet.pShown)) return true;
  sheet.pShown.reset();
  sheet.failure = book_.package.Damaged(entry.sPart);
  return false;
}

std::optional<CellRange> clsXlsxEditor::UsedRange(int nSheet) {
  if (const auto own = OwnUsedRange(nSheet)) return own;
  Failure ignored;
  const XlsxSheet* const pSheet = Prepare(nSheet, ignored);
  if (pSheet == nullptr) return std::nullopt;
  if (pSheet->pAnew != nullptr) return pSheet->pAnew->UsedRange();
  CellRange range = pSheet->facts.content.used;
  Include(range, pSheet->edit.cells.Range());
  return range;
}

/// Cells of a sheet that is written anew go one by one.
bool clsXlsxEditor::ClearAnew(XlsxSheet& sheet, const CellRange& range) const {
  const CellRange used = sheet.pAnew->UsedRange();
  for (int64_t nRow = std::max(range.nTop, used.nTop); nRow <= std::min(range.nBottom, used.nBottom); ++nRow)
    for (int64_t nColumn = std::max(range.nLeft, used.nLeft); nColumn <= std::min(range.nRight, used.nRight);
         ++nColumn) {
      sheet.pAnew->WriteCell(nRow, static_cast<int>(nColumn), {});
      if (options_.bReadBack) sheet.pShown->Write(nRow, static_cast<int>(nColumn), {});
    }
  return true;
}

SheetContent clsXlsxEditor::ContentOf(int nSheet) {
  Failure ignored;
  if (!CheckSheet(nSheet, ignored)) return {};
  if (const auto own = options_.bNoOverwrite ? std::nullopt : OwnUsedRange(nSheet)) return {*own};
  const XlsxSheet* const pSheet = CheckSheet(nSheet, ignored) ? Prepare(nSheet, ignored) : nullptr;
  return pSheet != nullptr ? pSheet->facts.content : SheetContent();
}

bool clsXlsxEditor::ClearContents(int nSheet, const CellRange& range, Failure& failure) {
  if (CheckSheet(nSheet, failure) && TakeAnew(nSheet, range)) return true;
  XlsxSheet* const pSheet = CheckSheet(nSheet, failure) ? Prepare(nSheet, failure) : nullptr;
  if (pSheet == nullptr) return false;
  if (range.Empty()) return true;
  if (pSheet->pAnew != nullptr) return ClearAnew(*pSheet, range);
  if (pSheet->facts.arrays.AreCutBy(range)) {
    failure = CellFailure(nSheet, range.nTop, static_cast<int>(range.nLeft), OutputMessage::PartOfArray);
    return false;
  }
  SheetEdit& edit = pSheet->edit;
  std::vector<StoredCell> row;
  std::vector<int> columns;
  for (int64_t nRow = std::max(range.nTop, edit.cells.Range().nTop);
       nRow <= std::min(range.nBottom, edit.cells.LastRow()); ++nRow) {
    edit.cells.Row(nRow, row);
    columns.clear();
    for (const StoredCell& cell : row)
      if (Contains(range, nRow, cell.nColumn)) columns.push_back(cell.nColumn);
    for (const int nColumn : columns) edit.cells.Write(nRow, nColumn, {});
  }
  NoteCleared(nSheet, range, book_.styles.IsOwn());
  std::erase_if(edit.cleared, [&](const CellRange& old) { return Covers(range, old); });
  edit.cleared.push_back(range);
  return true;
}

bool clsXlsxEditor::Save(std::string_view sPath, Failure& failure) {
  book_.edit.names = names_;
  book_.edit.nActive = static_cast<size_t>(nActive_) - 1;
  clsXlsxSaver saver(book_);
  const bool bSaved = saver.Save(sPath, failure);
  nRefused_ = saver.RefusedFormulas();
  nReformatted_ = saver.Reformatted();
  nBehindTables_ = saver.BehindTables();
  nRefused_ += cells_.RefusedFormulas();
  for (const auto& pSheet : book_.sheets) {
    if (pSheet == nullptr) continue;
    bOrderTaken_ |= pSheet->pAnew != nullptr ? pSheet->pAnew->OrderIsOpen() : pSheet->edit.typing.OrderIsOpen();
  }
  return bSaved;
}

}  // namespace

std::unique_ptr<clsWorkbook> OpenXlsxWorkbook(std::string_view sHostPath, const WorkbookOptions& options,
                                              Failure& failure) {
  auto editor = std::make_unique<clsXlsxEditor>(options);
  if (!editor->Open(sHostPath, failure)) return nullptr;
  return editor;
}

}  // namespace quillon
