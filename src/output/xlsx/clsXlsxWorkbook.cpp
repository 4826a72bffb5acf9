#include "clsXlsxWorkbook.h"

#include <algorithm>

#include "clsOutputFile.h"
#include "clsZipWriter.h"
#include "modOutputMessages.h"
#include "modSheetNames.h"
#include "modText.h"
#include "modXlsxParts.h"

namespace quillon {

namespace {

constexpr int kNewSheets = 2;

bool LiesInSheet(int64_t nRow, int nColumn) {
  return nRow >= 1 && nRow <= kMaxSheetRows && nColumn >= 1 && nColumn <= kMaxSheetColumns;
}

/// Few texts are long enough to be counted: a character has at least one byte.
bool FitsCell(std::string_view sText) {
  return sText.size() <= kMaxCellChars || Utf16Count(sText) <= kMaxCellChars;
}

}  // namespace

clsXlsxWorkbook::clsXlsxWorkbook(const WorkbookOptions& options)
    : bReadBack_(options.bReadBack), cells_(options.typing) {
  for (int i = 1; i <= kNewSheets; ++i) {
    sheets_.push_back(std::make_unique<Sheet>(cells_));
    names_.push_back("Sheet" + std::to_string(i));
  }
  cells_.SetSheetNames(names_);
}

clsXlsxWorkbook::Sheet* clsXlsxWorkbook::FindSheetByNumber(int nSheet) {
  return nSheet >= 1 && nSheet <= SheetCount() ? sheets_[static_cast<size_t>(nSheet - 1)].get() : nullptr;
}

bool clsXlsxWorkbook::WriteCell(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure) {
  Sheet* const pSheet = FindSheetByNumber(nSheet);
  if (pSheet == nullptr || !LiesInSheet(nRow, nColumn) || !FitsCell(sText)) {
    failure = CellFailure(nSheet, nRow, nColumn,
                          pSheet == nullptr             ? OutputMessage::NoSuchSheet
                          : !LiesInSheet(nRow, nColumn) ? OutputMessage::OutsideSheet
                                                        : OutputMessage::TextTooLong);
    return false;
  }
  pSheet->xml.WriteCell(nRow, nColumn, sText);
  if (bReadBack_) pSheet->kept.Write(nRow, nColumn, sText);
  return true;
}

bool clsXlsxWorkbook::ReadCell(int nSheet, int64_t nRow, int nColumn, std::string& sText, Failure& failure) {
  Sheet* const pSheet = FindSheetByNumber(nSheet);
  if (pSheet == nullptr || !LiesInSheet(nRow, nColumn)) {
    failure = CellFailure(nSheet, nRow, nColumn,
                          pSheet == nullptr ? OutputMessage::NoSuchSheet : OutputMessage::OutsideSheet);
    return false;
  }
  sText.clear();
  std::string_view sKept;
  if (bReadBack_) {
    if (pSheet->kept.Read(nRow, nColumn, sKept)) sText = sKept;
    return true;
  }
  const CellRange& used = pSheet->xml.UsedRange();
  if (nRow < used.nTop || nRow > used.nBottom || nColumn < used.nLeft || nColumn > used.nRight) return true;
  failure = CellFailure(nSheet, nRow, nColumn, OutputMessage::NotKeptForReading);
  return false;
}

bool clsXlsxWorkbook::SetSheetName(int nSheet, std::string_view sName, Failure& failure) {
  std::optional<OutputMessage> refusal = OutputMessage::NoSuchSheet;
  if (FindSheetByNumber(nSheet) != nullptr) refusal = RefusalOfSheetName(sName, names_, nSheet);
  if (refusal) {
    failure = OutputFailure(sName, *refusal);
    return false;
  }
  names_[static_cast<size_t>(nSheet - 1)] = sName;
  cells_.SetSheetNames(names_);
  return true;
}

std::string clsXlsxWorkbook::SheetName(int nSheet) const {
  return nSheet >= 1 && nSheet <= SheetCount() ? names_[static_cast<size_t>(nSheet - 1)] : std::string();
}

bool clsXlsxWorkbook::ClearContents(int nSheet, const CellRange& range, Failure& failure) {
  Sheet* const pSheet = FindSheetByNumber(nSheet);
  if (pSheet == nullptr) {
    failure = OutputFailure("ClearContents", OutputMessage::NoSuchSheet);
    return false;
  }
  const CellRange used = pSheet->xml.UsedRange();
  if (used.Empty() || range.Empty()) return true;
  const CellRange common = {std::max(range.nTop, used.nTop), std::max(range.nLeft, used.nLeft),
                            std::min(range.nBottom, used.nBottom), std::min(range.nRight, used.nRight)};
  if (common.nTop == used.nTop && common.nLeft == used.nLeft && common.nBottom == used.nBottom &&
      common.nRight == used.nRight) {
    pSheet->xml.Clear();
    pSheet->kept.Clear();
    return true;
  }
  for (int64_t nRow = common.nTop; nRow <= common.nBottom; ++nRow)
    for (int64_t nColumn = common.nLeft; nColumn <= common.nRight; ++nColumn)
      if (!WriteCell(nSheet, nRow, static_cast<int>(nColumn), {}, failure)) return false;
  return true;
}

bool clsXlsxWorkbook::ActivateSheet(std::string_view sName) {
  const auto it = std::find_if(names_.begin(), names_.end(), [sName](const auto& s) { return EqualNoCase(s, sName); });
  return ActivateSheet(static_cast<int>(it - names_.begin()) + 1);
}

bool clsXlsxWorkbook::ActivateSheet(int nSheet) {
  if (FindSheetByNumber(nSheet) == nullptr) return false;
  nActive_ = nSheet;
  return true;
}

bool clsXlsxWorkbook::SaveAs(std::string_view sPath, int32_t lFormat, Failure& failure) {
  if (lFormat != kFormatXlsx) {
    failure = OutputFailure(sPath, OutputMessage::OtherFormat);
    return false;
  }
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
  for (int i = 1; i <= SheetCount(); ++i)
    if (!FindSheetByNumber(i)->xml.Save(zip, SheetPartName(i), i == nActive_, failure)) return false;
  // Late cells may have brought formats and formulas of their own.
  zip.Add("xl/workbook.xml", WorkbookPart(names_, nActive_, cells_.HasFormulas()));
  zip.Add("xl/styles.xml", StylesPart(sFont_, cells_.Formats()));
  zip.Finish();
  return true;
}

}  // namespace quillon
