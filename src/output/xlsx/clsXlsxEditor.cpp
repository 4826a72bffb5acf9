#include "clsXlsxEditor.h"

#include <sys/stat.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "clsXlsxPackage.h"
#include "clsXlsxSaver.h"
#include "modOutputMessages.h"
#include "modSheetNames.h"
#include "modSheetValues.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

class clsXlsxEditor : public clsWorkbook {
 public:
  explicit clsXlsxEditor(const WorkbookOptions& options) : options_(options) {}

  bool Open(std::string_view sHostPath, Failure& failure);

  bool WriteCell(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure) override;
  bool ReadCell(int nSheet, int64_t nRow, int nColumn, std::string& sText, Failure& failure) override;
  int SheetCount() const override { return static_cast<int>(book_.workbook.sheets.size()); }
  bool SetSheetName(int nSheet, std::string_view sName, Failure& failure) override;
  std::string SheetName(int nSheet) const override { return HasSheet(nSheet) ? NameOf(nSheet) : std::string(); }
  void SetStandardFont(std::string_view) override {}
  std::optional<CellRange> ActiveUsedRange() override;
  bool ClearContents(int nSheet, const CellRange& range, Failure& failure) override;
  bool ActivateSheet(std::string_view sName) override;
  bool ActivateSheet(int nSheet) override;
  bool SaveAs(std::string_view sPath, int32_t lFormat, Failure& failure) override;
  int64_t RefusedFormulas() const override { return nRefused_; }

 private:
  bool HasSheet(int nSheet) const { return nSheet >= 1 && nSheet <= SheetCount(); }
  const std::string& NameOf(int nSheet) const { return book_.edit.names[static_cast<size_t>(nSheet) - 1]; }
  XlsxSheet* Prepare(int nSheet, Failure& failure);
  bool Scan(XlsxSheet& sheet, const WorkbookSheet& entry);
  bool LoadShown(XlsxSheet& sheet, const WorkbookSheet& entry);
  bool LoadStrings();

  WorkbookOptions options_;
  XlsxBook book_;
  std::optional<clsSharedStrings> strings_;
  int64_t nRefused_ = 0;
};

bool clsXlsxEditor::Open(std::string_view sHostPath, Failure& failure) {
  const std::string sPath(sHostPath);
  book_.typing = options_.typing;
  book_.state = FileState::Of(sPath);
  if (!book_.package.Open(sPath, failure) || !ReadWorkbookPart(book_.package, book_.workbook, failure)) return false;
  book_.sheets.resize(book_.workbook.sheets.size());
  for (const WorkbookSheet& sheet : book_.workbook.sheets) book_.edit.names.push_back(sheet.sName);
  book_.edit.nActive = book_.workbook.nActive;
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
  if (!HasSheet(nSheet) || !book_.workbook.sheets[static_cast<size_t>(nSheet) - 1].bWorksheet) {
    failure = OutputFailure(Translate("Sheet") + " " + std::to_string(nSheet), OutputMessage::NoSuchSheet);
    return nullptr;
  }
  auto& pSheet = book_.sheets[static_cast<size_t>(nSheet) - 1];
  const WorkbookSheet& entry = book_.workbook.sheets[static_cast<size_t>(nSheet) - 1];
  if (pSheet == nullptr) {
    pSheet = std::make_unique<XlsxSheet>();
    if (!Scan(*pSheet, entry)) pSheet->failure = book_.package.Damaged(entry.sPart);
  }
  failure = pSheet->failure;
  return failure.Failed() ? nullptr : pSheet.get();
}

bool clsXlsxEditor::Scan(XlsxSheet& sheet, const WorkbookSheet& entry) {
  const auto nPart = book_.package.Find(entry.sPart);
  if (!nPart) return false;
  clsXmlScanner scanner = book_.package.Scan(*nPart);
  return ReadSheetFacts(scanner, sheet.facts);
}

bool clsXlsxEditor::WriteCell(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure) {
  XlsxSheet* const pSheet = Prepare(nSheet, failure);
  if (pSheet == nullptr) return false;
  std::optional<OutputMessage> refusal;
  if (nRow < 1 || nRow > kMaxSheetRows || nColumn < 1 || nColumn > kMaxSheetColumns)
    refusal = OutputMessage::OutsideSheet;
  else if (Utf16Count(sText) > kMaxCellChars)
    refusal = OutputMessage::TextTooLong;
  else if (pSheet->facts.InArray(nRow, nColumn, pSheet->edit.cleared))
    refusal = OutputMessage::PartOfArray;
  if (refusal) {
    failure = CellFailure(nSheet, nRow, nColumn, *refusal);
    return false;
  }
  pSheet->edit.cells.Write(nRow, nColumn, sText);
  return true;
}

bool clsXlsxEditor::ReadCell(int nSheet, int64_t nRow, int nColumn, std::string& sText, Failure& failure) {
  sText.clear();
  XlsxSheet* const pSheet = Prepare(nSheet, failure);
  if (pSheet == nullptr) return false;
  if (nRow < 1 || nRow > kMaxSheetRows || nColumn < 1 || nColumn > kMaxSheetColumns) {
    failure = CellFailure(nSheet, nRow, nColumn, OutputMessage::OutsideSheet);
    return false;
  }
  std::string_view sFound;
  if (!pSheet->edit.cells.Read(nRow, nColumn, sFound) && !pSheet->edit.Cleared(nRow, nColumn)) {
    if (pSheet->pShown == nullptr && !LoadShown(*pSheet, book_.workbook.sheets[static_cast<size_t>(nSheet) - 1])) {
      failure = pSheet->failure;
      return false;
    }
    pSheet->pShown->Read(nRow, nColumn, sFound);
  }
  sText = sFound;
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
  clsXmlScanner scanner = book_.package.Scan(*book_.package.Find(entry.sPart));
  const ShownValueOptions shown{options_.typing.bDayFirst, book_.workbook.b1904};
  if (LoadStrings() && ReadSheetValues(scanner, *strings_, book_.styles, shown, *sheet.pShown)) return true;
  sheet.pShown.reset();
  sheet.failure = book_.package.Damaged(entry.sPart);
  return false;
}

bool clsXlsxEditor::SetSheetName(int nSheet, std::string_view sName, Failure& failure) {
  if (!HasSheet(nSheet)) {
    failure = OutputFailure(Translate("Sheet") + " " + std::to_string(nSheet), OutputMessage::NoSuchSheet);
    return false;
  }
  if (NameOf(nSheet) == sName) return true;
  if (const auto refusal = RefusalOfSheetName(sName, book_.edit.names, nSheet)) {
    failure = OutputFailure(sName, *refusal);
    return false;
  }
  book_.edit.names[static_cast<size_t>(nSheet) - 1] = sName;
  return true;
}

std::optional<CellRange> clsXlsxEditor::ActiveUsedRange() {
  Failure ignored;
  const XlsxSheet* const pSheet = Prepare(static_cast<int>(book_.edit.nActive) + 1, ignored);
  if (pSheet == nullptr) return std::nullopt;
  CellRange range = pSheet->facts.used;
  Include(range, pSheet->edit.cells.Range());
  // A sheet with nothing in it has its first cell in use.
  return range.Empty() ? CellRange{1, 1, 1, 1} : range;
}

bool clsXlsxEditor::ClearContents(int nSheet, const CellRange& range, Failure& failure) {
  XlsxSheet* const pSheet = Prepare(nSheet, failure);
  if (pSheet == nullptr) return false;
  if (range.Empty()) return true;
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
  std::erase_if(edit.cleared, [&](const CellRange& old) { return Covers(range, old); });
  edit.cleared.push_back(range);
  return true;
}

bool clsXlsxEditor::ActivateSheet(std::string_view sName) {
  for (int n = 1; n <= SheetCount(); ++n)
    if (EqualNoCase(NameOf(n), sName)) return ActivateSheet(n);
  return false;
}

bool clsXlsxEditor::ActivateSheet(int nSheet) {
  if (!HasSheet(nSheet) || !book_.workbook.sheets[static_cast<size_t>(nSheet) - 1].bWorksheet) return false;
  book_.edit.nActive = static_cast<size_t>(nSheet) - 1;
  return true;
}

bool clsXlsxEditor::SaveAs(std::string_view sPath, int32_t lFormat, Failure& failure) {
  if (lFormat != kFormatXlsx) {
    failure = OutputFailure(sPath, OutputMessage::OtherFormat);
    return false;
  }
  clsXlsxSaver saver(book_);
  const bool bSaved = saver.Save(sPath, failure);
  nRefused_ = saver.RefusedFormulas();
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
