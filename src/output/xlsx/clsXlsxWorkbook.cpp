#include "clsXlsxWorkbook.h"

#include <algorithm>

#include "clsCellRanges.h"
#include "clsOutputFile.h"
#include "clsZipWriter.h"
#include "modOutputMessages.h"
#include "modXlsxParts.h"

namespace quillon {

namespace {

constexpr int kNewSheets = 2;

}  // namespace

clsXlsxWorkbook::clsXlsxWorkbook(const WorkbookOptions& options)
    : clsSheetBook(options, {kMaxSheetRows, kMaxSheetColumns, kFormatXlsx}), cells_(options.typing) {
  for (int i = 1; i <= kNewSheets; ++i) {
    clsXlsxWorkbook::AddSheet();
    names_.push_back("Sheet" + std::to_string(i));
  }
  cells_.SetSheetNames(names_);
}

void clsXlsxWorkbook::SetHeadingRow(int nSheet, int64_t nRow) {
  if (HasSheet(nSheet)) At(nSheet).xml.SetHeadingRow(nRow);
}

bool clsXlsxWorkbook::PutText(int nSheet, int64_t nRow, int nColumn, std::string_view sStored, Failure&) {
  At(nSheet).xml.WriteCell(nRow, nColumn, sStored);
  if (options_.bReadBack) At(nSheet).kept.Write(nRow, nColumn, sStored);
  return true;
}

bool clsXlsxWorkbook::GetText(int nSheet, int64_t nRow, int nColumn, std::string& sStored, Failure& failure) {
  std::string_view sKept;
  if (options_.bReadBack) {
    if (At(nSheet).kept.Read(nRow, nColumn, sKept)) sStored = sKept;
    return true;
  }
  if (!Contains(At(nSheet).xml.UsedRange(), nRow, nColumn)) return true;
  failure = CellFailure(nSheet, nRow, nColumn, OutputMessage::NotKeptForReading);
  return false;
}

bool clsXlsxWorkbook::ClearContents(int nSheet, const CellRange& range, Failure& failure) {
  if (!CheckSheet(nSheet, failure)) return false;
  Sheet& sheet = At(nSheet);
  const CellRange used = sheet.xml.UsedRange();
  if (used.Empty() || range.Empty()) return true;
  if (Covers(range, used)) {
    sheet.xml.Clear();
    sheet.kept.Clear();
    return true;
  }
  for (int64_t nRow = std::max(range.nTop, used.nTop); nRow <= std::min(range.nBottom, used.nBottom); ++nRow)
    for (int64_t nColumn = std::max(range.nLeft, used.nLeft); nColumn <= std::min(range.nRight, used.nRight); ++nColumn)
      if (!PutText(nSheet, nRow, static_cast<int>(nColumn), {}, failure)) return false;
  return true;
}

bool clsXlsxWorkbook::Save(std::string_view sPath, Failure& failure) {
  clsOutputFile file;
  return file.Open(sPath, failure) && WriteParts(file, failure) && file.Commit(failure);
}

bool clsXlsxWorkbook::WriteParts(clsOutputFile& file, Failure& failure) {
  clsZipWriter zip(file);
  zip.Add("[Content_Types].xml", ContentTypesPart(SheetCount()));
  zip.Add("_rels/.rels", PackageRelationsPart());
  zip.Add("docProps/app.xml", AppPropertiesPart());
  zip.Add("docProps/core.xml", CorePropertiesPart());
  zip.Add("xl/_rels/workbook.xml.rels", WorkbookRelationsPart(SheetCount()));
  for (int i = 1; i <= SheetCount(); ++i) {
    if (!At(i).xml.Save(zip, SheetPartName(i), i == nActive_, failure)) return false;
    bOrderTaken_ |= At(i).xml.OrderIsOpen();
  }
  nRefused_ = cells_.RefusedFormulas();
  // Late cells may have brought formats and formulas of their own.
  zip.Add("xl/workbook.xml", WorkbookPart(names_, nActive_, cells_.HasFormulas()));
  zip.Add("xl/styles.xml", StylesPart(sFont_, cells_.Formats()));
  zip.Finish();
  return true;
}

}  // namespace quillon
