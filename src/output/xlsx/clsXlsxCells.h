#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "clsNumberFormats.h"
#include "modCellTyping.h"
#include "modXmlText.h"

namespace quillon {

/// A short piece of XML that is copied whole and taken by its length: one store instead of a loop.
struct XmlPiece {
  std::array<char, 24> bytes{};
  uint8_t nLength = 0;

  XmlPiece() = default;
  explicit XmlPiece(std::string_view sPiece);
};

/// Turns texts into the <c> elements of new sheets. One for all sheets of a workbook: number formats are its styles.
/// Texts stand in their cells: a table of shared ones was measured to be no faster, and with the quick deflate that we
/// use it made the ledger's file 4 % larger.
class clsXlsxCells {
 public:
  explicit clsXlsxCells(const CellTypingOptions& typing) : typing_(typing) {}

  /// Room that Put may touch for a text of nBytes.
  static constexpr size_t Room(size_t nBytes) { return nBytes * kXmlBytesPerByte + 160; }
  /// Writes the cell's element at p by the column's rule and gives the end; p itself for a text that leaves the cell
  /// empty. typed is what the text is taken for; views of it are valid until the next call.
  char* Put(char* p, const XmlPiece& row, int nColumn, std::string_view sText, const ColumnRule& rule,
            TypedCell& typed);

  /// For cells that go into a workbook with styles of its own: gives the style of a number format's code.
  void SetStyles(std::function<uint32_t(const std::string& sCode)> styleOf) { styleOf_ = std::move(styleOf); }
  /// The code that a written cell's style stands for; null for none.
  const std::string* CodeOfStyle(size_t nStyle) const;

  /// Names by which formulas may speak of sheets.
  void SetSheetNames(std::span<const std::string> names) { sheetNames_.assign(names.begin(), names.end()); }
  const clsNumberFormats& Formats() const { return formats_; }
  bool HasFormulas() const { return bFormulas_; }
  int64_t RefusedFormulas() const { return nRefused_; }

 private:
  const XmlPiece& ColumnPiece(int nColumn);
  const XmlPiece& StylePiece(int nStyle);
  char* PutText(char* p, std::string_view sText, int nStyle);
  bool MayBeFormula(std::string_view sFormula) const;

  CellTypingOptions typing_;
  clsNumberFormats formats_;
  std::vector<std::string> sheetNames_;
  std::vector<XmlPiece> columns_;  ///< <c r="AB
  std::vector<XmlPiece> styles_;   ///< " s="2"><v>
  std::function<uint32_t(const std::string& sCode)> styleOf_;
  std::vector<uint32_t> numbers_;  ///< Of the styles, where others give them
  std::string sScratch_;
  bool bFormulas_ = false;
  int64_t nRefused_ = 0;
};

}  // namespace quillon
