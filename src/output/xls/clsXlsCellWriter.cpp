#include "clsXlsCellWriter.h"

#include <array>
#include <charconv>

#include "modSettledCell.h"
#include "modShownByCode.h"
#include "modText.h"
#include "modXlsFormula.h"

namespace quillon {

namespace {

constexpr std::string_view kTruthFormat = "\"TRUE\";\"TRUE\";\"FALSE\"";

double NumberOf(const TypedCell& cell) {
  double nValue = cell.nValue;
  if (cell.sDigits.empty()) return nValue;
  // Whole numbers and powers of ten up to these are exact, and so is one division of the two.
  constexpr std::array<double, 16> kPowers = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                              1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  int64_t nWhole = 0;
  size_t nBehindPoint = 0, nDigits = 0;
  bool bPoint = false;
  const bool bMinus = cell.sDigits.front() == '-';
  for (const char ch : cell.sDigits.substr(bMinus ? 1 : 0)) {
    if (ch == '.' && !bPoint) {
      bPoint = true;
    } else if (IsAsciiDigit(ch) && ++nDigits < kPowers.size()) {
      nWhole = nWhole * 10 + (ch - '0');
      if (bPoint) ++nBehindPoint;
    } else {
      std::from_chars(cell.sDigits.data(), cell.sDigits.data() + cell.sDigits.size(), nValue);
      return nValue;
    }
  }
  nValue = static_cast<double>(nWhole) / kPowers[nBehindPoint];
  return bMinus ? -nValue : nValue;
}

/// Whether a text is likely to stay one, by its first character; a guess costs only time.
bool LooksLikeText(std::string_view sText) {
  const size_t nFirst = sText.find_first_not_of(' ');
  return nFirst != std::string_view::npos && (sText[nFirst] >= 'A' || sText[nFirst] == '0' || sText[nFirst] < 0);
}

/// A format that is there already stays; a value that it would show as another is text.
bool ShowsRightly(const TypedCell& cell, FormatKind kind) {
  if (cell.kind == CellKind::Date) return kind == FormatKind::Date || kind == FormatKind::DateTime;
  // 7 in a cell of per cents would be told as 700%.
  if (kind == FormatKind::Percent) return cell.sFormat.find('%') != std::string_view::npos;
  return kind == FormatKind::Number;
}

}  // namespace

void clsXlsCellWriter::Expect(std::span<const StoredCell> cells, std::vector<uint32_t>& hashes) const {
  hashes.clear();
  for (const StoredCell& cell : cells)
    if (LooksLikeText(cell.sText)) hashes.push_back(strings_.Expect(ShownOf(cell.sText)));
}

void clsXlsCellWriter::ExpectEntries(std::span<const uint32_t> hashes) const {
  for (const uint32_t nHash : hashes) strings_.ExpectEntry(nHash);
}

void clsXlsCellWriter::Write(clsXlsCellTable& table, unsigned nColumn, std::string_view sText, const ColumnRule& rule,
                             const XlsOldCell& old) {
  const uint16_t nXf = old.nXf;
  const bool bExists = old.bExists;
  bValueDecides_ = old.bValueDecides;
  sShown_ = ShownOf(sText);
  const TypedCell cell = TypeCell(sText, options_, rule, sScratch_);
  if (cell.bRefusedFormula) ++nRefused_;
  if (cell.kind == CellKind::Empty) {
    if (bExists || nXf != xls::kDefaultXf) table.AddBlank(nColumn, nXf);
    return;
  }
  if (cell.kind == CellKind::Text)
    return WriteText(table, nColumn, cell.sText, cell.sFormat.empty() ? nXf : formats_.Heading(nXf));
  if (formats_.KindToKeep(nXf) == FormatKind::Text || !WriteTyped(table, nColumn, cell, nXf))
    WriteText(table, nColumn, ShownOf(sText), nXf);
}

void clsXlsCellWriter::WriteText(clsXlsCellTable& table, unsigned nColumn, std::string_view sText, uint16_t nXf) {
  table.AddLabelSst(nColumn, formats_.Plain(nXf), nFirstString_ + strings_.Add(sText));
}

bool clsXlsCellWriter::WriteTyped(clsXlsCellTable& table, unsigned nColumn, const TypedCell& cell, uint16_t nXf) {
  switch (cell.kind) {
    case CellKind::Boolean:
      return WriteBool(table, nColumn, cell.nValue != 0, formats_.Plain(nXf));
    case CellKind::Formula:
      sTokens_.clear();
      if (!AppendXlsFormula(cell.sText, sTokens_)) return false;
      table.AddFormula(nColumn, formats_.Plain(nXf), sTokens_);
      return true;
    default:
      return WriteNumber(table, nColumn, cell, nXf);
  }
}

/// A truth value by itself shows as 1 or 0 in some programs, whatever its format. The result of a formula shows by the
/// format everywhere, and is a truth value where it is read.
bool clsXlsCellWriter::WriteBool(clsXlsCellTable& table, unsigned nColumn, bool bValue, uint16_t nXf) {
  const bool bPlain = formats_.KindOf(nXf) == FormatKind::General;
  const int nFormatted = bPlain ? formats_.WithNumberFormat(nXf, kTruthFormat) : nXf;
  sTokens_.clear();
  if (!AppendXlsFormula(bValue ? "TRUE()" : "FALSE()", sTokens_)) return false;
  table.AddTruth(nColumn, nFormatted < 0 ? nXf : static_cast<uint16_t>(nFormatted), bValue, sTokens_);
  return true;
}

bool clsXlsCellWriter::WriteNumber(clsXlsCellTable& table, unsigned nColumn, const TypedCell& cell, uint16_t nXf) {
  double nValue = NumberOf(cell);
  const FormatKind kind = formats_.KindToKeep(nXf);
  if (kind == FormatKind::General) {
    const int nFormatted = formats_.WithNumberFormat(nXf, cell.sFormat);
    if (nFormatted < 0) return false;
    nXf = static_cast<uint16_t>(nFormatted);
  } else if (bValueDecides_) {
    const std::string_view sOld = formats_.CodeOf(nXf);
    if (sOld != cell.sFormat && !ShowsTheSame(cell.sDigits, sOld, sShown_)) {
      const int nFormatted = formats_.WithNumberFormat(nXf, cell.sFormat.empty() ? "General" : cell.sFormat);
      if (nFormatted < 0) return false;
      nXf = static_cast<uint16_t>(nFormatted);
      ++nReformatted_;
    }
  } else if (!ShowsRightly(cell, kind)) {
    return false;
  }
  if (cell.kind == CellKind::Date && b1904_) {
    if (nValue < kDaysTo1904) return false;
    nValue -= kDaysTo1904;
  }
  table.AddNumber(nColumn, nXf, nValue);
  return true;
}

}  // namespace quillon
