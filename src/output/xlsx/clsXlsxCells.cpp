#include "clsXlsxCells.h"

#include <algorithm>
#include <cstring>

#include "modColumnLetters.h"
#include "modFormula.h"
#include "modSettledCell.h"

namespace quillon {

namespace {

template <size_t N>
char* PutLiteral(char* p, const char (&literal)[N]) {
  std::memcpy(p, literal, N - 1);
  return p + N - 1;
}

char* PutPiece(char* p, const XmlPiece& piece) {
  std::memcpy(p, piece.bytes.data(), piece.bytes.size());
  return p + piece.nLength;
}

char* PutDigits(char* p, std::string_view sDigits) {
  const size_t n = sDigits.size();
  if (n >= 8 && n <= 16) {
    // Two overlapping words are cheaper than a call for a length that isn't known.
    std::memcpy(p, sDigits.data(), 8);
    std::memcpy(p + n - 8, sDigits.data() + n - 8, 8);
  } else if (n >= 4 && n < 8) {
    std::memcpy(p, sDigits.data(), 4);
    std::memcpy(p + n - 4, sDigits.data() + n - 4, 4);
  } else {
    std::memcpy(p, sDigits.data(), n);
  }
  return p + n;
}

}  // namespace

XmlPiece::XmlPiece(std::string_view sPiece) : nLength(static_cast<uint8_t>(sPiece.size())) {
  sPiece.copy(bytes.data(), bytes.size());
}

const XmlPiece& clsXlsxCells::ColumnPiece(int nColumn) {
  const auto nIndex = static_cast<size_t>(nColumn);
  while (columns_.size() <= nIndex) columns_.emplace_back("<c r=\"" + ColumnLetters(static_cast<int>(columns_.size())));
  return columns_[nIndex];
}

const XmlPiece& clsXlsxCells::StylePiece(int nStyle) {
  const auto nIndex = static_cast<size_t>(nStyle);
  while (styles_.size() <= nIndex) {
    const auto nNext = static_cast<uint32_t>(styles_.size());
    const bool bOwn = nNext == 0 || !styleOf_;
    numbers_.push_back(bOwn ? nNext : styleOf_(formats_.Codes()[nNext]));
    const uint32_t nNumber = numbers_.back();
    styles_.emplace_back(nNumber == 0 ? std::string("\"><v>") : "\" s=\"" + std::to_string(nNumber) + "\"><v>");
  }
  return styles_[nIndex];
}

const std::string* clsXlsxCells::CodeOfStyle(size_t nStyle) const {
  const auto found = std::find(numbers_.begin(), numbers_.end(), nStyle);
  const auto nIndex = static_cast<size_t>(found - numbers_.begin());
  return found == numbers_.end() ? nullptr : &formats_.Codes()[nIndex];
}

bool clsXlsxCells::MayBeFormula(std::string_view sFormula) const {
  return sFormula.find('!') == std::string_view::npos || FormulaSheetsExist(sFormula, sheetNames_);
}

char* clsXlsxCells::PutText(char* p, std::string_view sText, int nStyle) {
  if (nStyle > 0) {
    const XmlPiece& style = StylePiece(nStyle);
    p = std::copy_n(style.bytes.data(), style.nLength - std::string_view("\"><v>").size(), p);
  }
  p = NeedsSpacePreserved(sText) ? PutLiteral(p, "\" t=\"inlineStr\"><is><t xml:space=\"preserve\">")
                                 : PutLiteral(p, "\" t=\"inlineStr\"><is><t>");
  p = PutXmlText(p, sText);
  return PutLiteral(p, "</t></is></c>");
}

char* clsXlsxCells::Put(char* p, const XmlPiece& row, int nColumn, std::string_view sText, const ColumnRule& rule,
                        TypedCell& cell) {
  cell = TypeCell(sText, typing_, rule, sScratch_);
  nRefused_ += cell.bRefusedFormula ? 1 : 0;
  if (cell.kind == CellKind::Empty) return p;
  p = PutPiece(PutPiece(p, ColumnPiece(nColumn)), row);
  switch (cell.kind) {
    case CellKind::Number:
    case CellKind::Date: {
      const int nStyle = formats_.IndexOf(cell.sFormat);
      if (nStyle < 0) break;
      p = PutDigits(PutPiece(p, StylePiece(nStyle)), cell.sDigits);
      return PutLiteral(p, "</v></c>");
    }
    case CellKind::Boolean:
      p = PutLiteral(p, "\" t=\"b\"><v>");
      *p++ = cell.nValue == 1 ? '1' : '0';
      return PutLiteral(p, "</v></c>");
    case CellKind::Formula:
      if (!MayBeFormula(cell.sText)) break;
      bFormulas_ = true;
      p = PutXmlText(PutLiteral(p, "\"><f>"), cell.sText);
      return PutLiteral(p, "</f></c>");
    case CellKind::Empty:
    case CellKind::Text:
      break;
  }
  if (cell.kind == CellKind::Text)
    return PutText(p, cell.sText, cell.sFormat.empty() ? 0 : formats_.IndexOf(cell.sFormat));
  cell.kind = CellKind::Text;
  return PutText(p, ShownOf(sText), 0);
}

}  // namespace quillon
