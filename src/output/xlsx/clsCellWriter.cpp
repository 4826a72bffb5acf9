#include "clsCellWriter.h"

#include <algorithm>

#include "modColumnLetters.h"
#include "modFormula.h"
#include "modNumbers.h"
#include "modSettledCell.h"
#include "modShownByCode.h"
#include "modXmlText.h"

namespace quillon {

namespace {

constexpr double kDaysTo1904 = 1462;

void OpenCell(const clsCellWriter::Cell& cell, uint32_t nStyle, std::string_view sType, std::string& sOut) {
  sOut += '<';
  sOut += cell.sPrefix;
  sOut += "c r=\"";
  sOut += ColumnLetters(cell.nColumn);
  sOut += std::to_string(cell.nRow);
  if (nStyle != 0) {
    sOut += "\" s=\"";
    sOut += std::to_string(nStyle);
  }
  if (!sType.empty()) {
    sOut += "\" t=\"";
    sOut += sType;
  }
  sOut += "\">";
}

void CloseCell(const clsCellWriter::Cell& cell, std::string& sOut) {
  sOut += cell.sChildren;
  sOut += "</";
  sOut += cell.sPrefix;
  sOut += "c>";
}

void AppendElement(std::string_view sPrefix, std::string_view sName, std::string_view sContent, std::string& sOut) {
  sOut += '<';
  sOut += sPrefix;
  sOut += sName;
  sOut += '>';
  AppendXmlText(sOut, sContent);
  sOut += "</";
  sOut += sPrefix;
  sOut += sName;
  sOut += '>';
}

bool HasControls(std::string_view sText) {
  return std::any_of(sText.begin(), sText.end(), [](char ch) { return static_cast<unsigned char>(ch) < 0x20; });
}

}  // namespace

void clsCellWriter::AppendEmpty(const Cell& cell, std::string& sOut) {
  OpenCell(cell, cell.nStyle, {}, sOut);
  if (!cell.sChildren.empty()) return CloseCell(cell, sOut);
  sOut.back() = '/';
  sOut += '>';
}

void clsCellWriter::AppendFormula(const Cell& cell, std::string_view sFormula, std::string& sOut) {
  OpenCell(cell, cell.nStyle, {}, sOut);
  AppendElement(cell.sPrefix, "f", sFormula, sOut);
  CloseCell(cell, sOut);
}

bool clsCellWriter::LeavesEmpty(std::string_view sText) const {
  return sText.empty() || (!typing_.bAllText && sText.find_first_not_of(' ') == std::string_view::npos);
}

void clsCellWriter::Append(const Cell& cell, std::string_view sText, bool bStaysText, const ColumnRule& rule,
                           std::string& sOut) {
  if (!bStaysText && LeavesEmpty(sText)) return AppendEmpty(cell, sOut);
  TypedCell typed;
  if (!bStaysText) typed = TypeCell(sText, typing_, rule, sScratch_);
  if (typed.bRefusedFormula) ++nRefused_;
  uint32_t nStyle = cell.nStyle;
  sShown_ = ShownOf(sText);
  const bool bFits = Fits(typed, cell, nStyle);
  if (!bFits || (typed.kind != CellKind::Number && typed.kind != CellKind::Date)) nStyle = styles_.Plain(cell.nStyle);
  if (bFits) {
    if (typed.kind == CellKind::Formula) ++nFormulas_;
    OpenCell(cell, nStyle, typed.kind == CellKind::Boolean ? "b" : "", sOut);
    AppendValue(typed, cell.sPrefix, sOut);
    return CloseCell(cell, sOut);
  }
  sText = typed.kind == CellKind::Text ? typed.sText : ShownOf(sText);
  OpenCell(cell, nStyle, "inlineStr", sOut);
  sOut += '<';
  sOut += cell.sPrefix;
  sOut += "is><";
  sOut += cell.sPrefix;
  sOut += NeedsSpacePreserved(sText) ? "t xml:space=\"preserve\">" : "t>";
  AppendXmlText(sOut, sText);
  sOut += "</";
  sOut += cell.sPrefix;
  sOut += "t></";
  sOut += cell.sPrefix;
  sOut += "is>";
  CloseCell(cell, sOut);
}

void clsCellWriter::AppendValue(const TypedCell& typed, std::string_view sPrefix, std::string& sOut) {
  switch (typed.kind) {
    case CellKind::Formula:
      return AppendElement(sPrefix, "f", typed.sText, sOut);
    case CellKind::Boolean:
      return AppendElement(sPrefix, "v", typed.nValue != 0 ? "1" : "0", sOut);
    default:
      return AppendElement(sPrefix, "v", typed.sDigits.empty() ? ShortestDouble(typed.nValue) : typed.sDigits, sOut);
  }
}

/// True if the cell takes the typed value, in the style that results; else it takes the text.
bool clsCellWriter::Fits(TypedCell& typed, const Cell& cell, uint32_t& nStyle) {
  const FormatKind kind = styles_.KindToKeep(nStyle);
  if (kind == FormatKind::Text) return false;
  switch (typed.kind) {
    case CellKind::Number:
    case CellKind::Date:
      if (cell.bValueDecides && kind != FormatKind::General) return TakesFormatOfValue(typed, nStyle);
      return typed.kind == CellKind::Number ? NumberFits(typed, nStyle) : DateFits(typed, nStyle);
    case CellKind::Boolean:
      return true;
    case CellKind::Formula:
      return !HasControls(typed.sText) && FormulaSheetsExist(typed.sText, sheets_);
    default:
      return false;
  }
}

/// A format that shows the value as the report did stays.
bool clsCellWriter::TakesFormatOfValue(TypedCell& typed, uint32_t& nStyle) {
  const std::string_view sOld = styles_.CodeOf(nStyle);
  if (sOld != typed.sFormat && !ShowsTheSame(typed.sDigits, sOld, sShown_)) {
    const int64_t nDerived = styles_.Derive(nStyle, typed.sFormat.empty() ? "General" : typed.sFormat);
    if (nDerived < 0) return false;
    nStyle = static_cast<uint32_t>(nDerived);
    ++nReformatted_;
  }
  return typed.kind != CellKind::Date || CountFrom1904(typed);
}

bool clsCellWriter::NumberFits(const TypedCell& typed, uint32_t& nStyle) const {
  switch (styles_.KindToKeep(nStyle)) {
    case FormatKind::General: {
      const int64_t nDerived = typed.sFormat.empty() ? styles_.Plain(nStyle) : styles_.Derive(nStyle, typed.sFormat);
      if (nDerived < 0) return false;
      nStyle = static_cast<uint32_t>(nDerived);
      return true;
    }
    case FormatKind::Number:
      return true;
    // 7 in a cell of per cents would be told as 700%.
    case FormatKind::Percent:
      return typed.sFormat.find('%') != std::string_view::npos;
    default:
      return false;
  }
}

bool clsCellWriter::DateFits(TypedCell& typed, uint32_t& nStyle) const {
  const FormatKind kind = styles_.KindToKeep(nStyle);
  if (kind == FormatKind::General) {
    const int64_t nDerived = styles_.Derive(nStyle, typed.sFormat);
    if (nDerived < 0) return false;
    nStyle = static_cast<uint32_t>(nDerived);
  } else if (kind != FormatKind::DateTime && kind != FormatKind::Date) {
    return false;
  }
  return CountFrom1904(typed);
}

bool clsCellWriter::CountFrom1904(TypedCell& typed) const {
  if (!b1904_) return true;
  if (typed.nValue < kDaysTo1904) return false;
  typed.nValue -= kDaysTo1904;
  typed.sDigits = {};
  return true;
}

}  // namespace quillon
