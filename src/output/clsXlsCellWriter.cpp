#include "clsXlsCellWriter.h"

#include <charconv>

#include "modXlsFormula.h"

namespace quillon {

namespace {

double NumberOf(const TypedCell& cell) {
  double nValue = cell.nValue;
  if (!cell.sDigits.empty()) std::from_chars(cell.sDigits.data(), cell.sDigits.data() + cell.sDigits.size(), nValue);
  return nValue;
}

}  // namespace

void clsXlsCellWriter::Write(clsXlsCellTable& table, unsigned nColumn, std::string_view sText, uint16_t nXf) {
  const TypedCell cell = TypeCell(sText, options_, sScratch_);
  if (cell.bRefusedFormula) ++nRefused_;
  if (cell.kind == CellKind::Empty) {
    if (nXf != xls::kDefaultXf) table.AddBlank(nColumn, nXf);
    return;
  }
  if (cell.kind == CellKind::Text) return WriteText(table, nColumn, cell.sText, nXf);
  const bool bTextCell = formats_.NumberFormatOf(nXf) == xls::kTextFormat;
  if (bTextCell || !WriteTyped(table, nColumn, cell, nXf)) WriteText(table, nColumn, sText, nXf);
}

void clsXlsCellWriter::WriteText(clsXlsCellTable& table, unsigned nColumn, std::string_view sText, uint16_t nXf) {
  table.AddLabelSst(nColumn, nXf, nFirstString_ + strings_.Add(sText));
}

bool clsXlsCellWriter::WriteTyped(clsXlsCellTable& table, unsigned nColumn, const TypedCell& cell, uint16_t nXf) {
  switch (cell.kind) {
    case CellKind::Boolean:
      table.AddBoolErr(nColumn, nXf, cell.nValue != 0 ? 1 : 0, false);
      return true;
    case CellKind::Error: {
      const int nCode = XlsErrorCode(cell.sText);
      if (nCode >= 0) table.AddBoolErr(nColumn, nXf, static_cast<unsigned>(nCode), true);
      return nCode >= 0;
    }
    case CellKind::Formula:
      sTokens_.clear();
      if (!AppendXlsFormula(cell.sText, sTokens_)) return false;
      table.AddFormula(nColumn, nXf, sTokens_);
      return true;
    default:
      return WriteNumber(table, nColumn, cell, nXf);
  }
}

bool clsXlsCellWriter::WriteNumber(clsXlsCellTable& table, unsigned nColumn, const TypedCell& cell, uint16_t nXf) {
  double nValue = NumberOf(cell);
  if (cell.kind == CellKind::Date && b1904_) {
    if (nValue < kDaysTo1904) return false;
    nValue -= kDaysTo1904;
  }
  if (!cell.sFormat.empty() && formats_.NumberFormatOf(nXf) == xls::kGeneralFormat) {
    const int nFormatted = formats_.WithNumberFormat(nXf, cell.sFormat);
    if (nFormatted < 0) return false;
    nXf = static_cast<uint16_t>(nFormatted);
  }
  table.AddNumber(nColumn, nXf, nValue);
  return true;
}

}  // namespace quillon
