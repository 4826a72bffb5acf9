#pragma once

#include <cstdint>
#include <string>

namespace quillon {

/// Where a record of a report ends.
enum class RecordForm {
  Auto,    ///< Found by content in EBCDIC files and by the length where one is given; else lines
  Lines,   ///< Line ends: LF, in EBCDIC NEL or LF
  Fixed,   ///< A length that all have
  Rdw,     ///< Four bytes in front of each tell its length
  Blocks,  ///< The same in blocks, which begin with four bytes of that kind
};

/// What the first column of a record says to the printer.
enum class CarriageControl {
  Unsaid,   ///< As Auto in EBCDIC files, else None
  None,     ///< It is text
  Asa,      ///< Blank, 0, - , + and 1, before the line is printed
  Machine,  ///< Codes of one byte, most of them after the line was printed
  Auto,     ///< Found by content
};

/// Backspaces, and escape sequences of printers and terminals.
enum class PrinterCodes { Off, On, Auto };

/// Pages of a PDF to read, from 1; 0 is the first, and the last.
struct PdfPages {
  int32_t lFirst = 0;
  int32_t lLast = 0;

  bool operator==(const PdfPages&) const = default;
};

/// How the lines of a report lie in its bytes, once it is unpacked. The defaults read a file as it stands, but for
/// what would be noise as text: compressed files and PDF.
struct InputOptions {
  /// UTF-16 is found by its BOM, EBCDIC by its bytes.
  bool bFindKinds = false;
  /// Name of an EBCDIC page, as clsEbcdicPage::Find takes it; "" is another page, or none said.
  std::string sEbcdicPage = {};
  RecordForm records = RecordForm::Auto;
  int32_t lRecordLength = 0;  ///< Of Fixed; 0: found by content in EBCDIC files
  CarriageControl carriageControl = CarriageControl::Unsaid;
  PrinterCodes printerCodes = PrinterCodes::Off;
  PdfPages pages = {};  ///< Of a PDF

  bool operator==(const InputOptions&) const = default;
};

}  // namespace quillon
