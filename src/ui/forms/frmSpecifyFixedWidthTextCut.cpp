// The profile editor's rows as a drawing changes them.

#include <algorithm>

#include "frmSpecifyFixedWidthText.h"
#include "modNumbers.h"

namespace quillon {

using Grid = clsProfileGrid;

std::vector<ProfileColumn> frmSpecifyFixedWidthText::Columns() const {
  std::vector<ProfileColumn> columns(static_cast<size_t>(fgGrid.Rows()));
  for (int n = 0; n < fgGrid.Rows(); ++n) {
    ProfileColumn column;
    ProfileFault fault;
    if (DecipherLineOfFixedWidthProfile(fgGrid.Line(n), column, fault)) columns[static_cast<size_t>(n)] = column;
  }
  return columns;
}

double frmSpecifyFixedWidthText::PositionOf(int nRow) const {
  return NumericValue(fgGrid.Text(nRow, Grid::kPosition)).value_or(nRow + 1);
}

/// Makes room for a column in the output, or closes the gap of one that went.
void frmSpecifyFixedWidthText::ChangePositions(double nFrom, int nBy) {
  for (int n = 0; n < fgGrid.Rows(); ++n) {
    const double nPosition = PositionOf(n);
    if (nPosition >= nFrom) fgGrid.SetText(n, Grid::kPosition, ShortestDouble(nPosition + nBy));
  }
}

/// A width that leaves a column out of the output keeps its sign.
void frmSpecifyFixedWidthText::SetFieldWidth(int nRow, const CutField& field) {
  const std::string& sNow = fgGrid.Text(nRow, Grid::kWidth);
  const bool bNegative = NumericValue(sNow).value_or(0) < 0;
  fgGrid.SetText(nRow, Grid::kWidth, (bNegative ? "-" : "") + std::to_string(field.lEnd - field.lStart + 1));
}

void frmSpecifyFixedWidthText::InsertRowBehind(int nRow, bool bInPlace) {
  const double nPosition = bInPlace ? PositionOf(nRow) + 1 : fgGrid.Rows() + 1;
  if (bInPlace) ChangePositions(nPosition, 1);
  fgGrid.RepeatRow(nRow);
  fgGrid.SetText(nRow + 1, Grid::kPosition, ShortestDouble(nPosition));
}

void frmSpecifyFixedWidthText::RemoveRow(int nRow) {
  const double nPosition = PositionOf(nRow);
  fgGrid.RemoveRow(nRow);
  ChangePositions(nPosition, -1);
}

void frmSpecifyFixedWidthText::ChangeFields(const CutChange& change) {
  const int nField = static_cast<int>(change.nField);
  const bool bGrows = change.step == CutStep::Split || change.step == CutStep::Insert;
  if (fgGrid.Rows() == 0) return TakeFields(change.fields, {});
  if (bGrows && fgGrid.Rows() > Grid::kMostRows) return;
  int nCurrent = nRow_;  // where the row that is current now will be
  if (bGrows && nField < nCurrent) ++nCurrent;
  if (change.step == CutStep::Merge && nField < nCurrent) --nCurrent;
  if (change.step == CutStep::Split) InsertRowBehind(nField, true);
  if (change.step == CutStep::Insert) InsertRowBehind(nField - 1, nField < fgGrid.Rows());
  if (change.step == CutStep::Merge) RemoveRow(nField + 1);
  if (change.step == CutStep::Remove) RemoveRow(nField);
  const size_t nEnd = std::min(change.nField + 2, change.fields.size());
  const bool bRemoved = change.step == CutStep::Remove;
  for (size_t n = change.nField; n < nEnd && !bRemoved; ++n) SetFieldWidth(static_cast<int>(n), change.fields[n]);
  if (change.step != CutStep::Resize) CountRows();
  // A row whose selection would set its width back isn't selected.
  nRow_ = std::clamp(nCurrent, 0, fgGrid.Rows() - 1);
  const int nChanged = std::min(nField, fgGrid.Rows() - 1);
  if (HasShownWidth(nChanged)) nRow_ = nChanged;
  if (HasShownWidth(nRow_)) SelectRow(nRow_);
  Get("txtColumnWidth").sText = fgGrid.Text(nRow_, Grid::kWidth);
  Refresh();
}

void frmSpecifyFixedWidthText::TakeFields(const std::vector<CutField>& fields, const std::vector<bool>& left) {
  fgGrid.SetRows(0);
  for (size_t n = 0; n < std::min(fields.size(), static_cast<size_t>(Grid::kMostRows)); ++n) {
    const std::string sNumber = std::to_string(n + 1);
    fgGrid.AddRow("\t" + sNumber + "\t" + std::to_string(fields[n].lEnd - fields[n].lStart + 1) + "\t[32] Space\t" +
                  (n < left.size() && left[n] ? "Left" : "Right") + "\tNo\t" + sNumber);
  }
  nTopRow_ = 0;
  CountRows();
  SelectRow(0);
  Refresh();
}

bool frmSpecifyFixedWidthText::HasShownWidth(int nRow) const {
  const double nWidth = NumericValue(fgGrid.Text(nRow, Grid::kWidth)).value_or(0);
  return nWidth >= 1 && nWidth <= kMaxShownWidth;
}

void frmSpecifyFixedWidthText::CountRows() {
  for (int n = 0; n < fgGrid.Rows(); ++n) fgGrid.SetText(n, Grid::kNumber, std::to_string(n + 1));
  PositionDropDownListBoxPopulate();
  PositionCollectionCreateViaGui(true);
  Get("txtNumOfColumns").sText = std::to_string(fgGrid.Rows());
}

}  // namespace quillon
