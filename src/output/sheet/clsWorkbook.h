#pragma once
// The sheet that the engine writes to, whatever file lies behind it.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "modFailure.h"

namespace quillon {

/// Excel's file format numbers.
enum OutputFormat : int32_t {
  kFormatNone = 0,
  kFormatCsv = 6,
  kFormatCsvUtf8 = 23,
  kFormatXlsx = 51,
  kFormatXls = -4143
};

/// Largest sheets: XLSX; an XLS sheet has 65,536 x 256.
constexpr int64_t kMaxSheetRows = 1048576;
constexpr int kMaxSheetColumns = 16384;
constexpr int64_t kMaxXlsRows = 65536;
constexpr int kMaxXlsColumns = 256;
constexpr size_t kMaxCellChars = 32767;

/// Rows and columns from 1, both ends included.
struct CellRange {
  int64_t nTop = 1, nLeft = 1, nBottom = 0, nRight = 0;
  bool Empty() const { return nBottom < nTop || nRight < nLeft; }
};

/// Which part of a date such as 1/2/24 is which: as the column's own dates tell, else as is usual by the user's locale;
/// or always the one.
enum class DateOrder : uint8_t { ByColumn, MonthFirst, DayFirst, YearFirst };

/// How texts become typed cells on saving.
struct CellTypingOptions {
  bool bAllText = false;           ///< Every cell holds its text (Profile method with bTreatDataAsText)
  bool bDropLeadingZeros = false;  ///< 007 is 7 (Profile method without it)
  bool bDayFirst = false;          ///< 31.12.24 rather than 12/31/24 by the user's locale
  DateOrder order = DateOrder::ByColumn;
};

/// How a workbook is opened or made.
struct WorkbookOptions {
  CellTypingOptions typing;
  /// Cells will be read back during the run (a consolidation), so written texts must stay at hand.
  bool bReadBack = false;
  /// The sheet that goes by number 1 in this run, by name or number; one that isn't there is made behind the others,
  /// in a new workbook the first sheet gets the name. "" is the first.
  std::string sSheet = {};
  bool bReplace = false;      ///< A new workbook takes the place of one that is there
  bool bNoOverwrite = false;  ///< A sheet 1 that holds something fails every write
  bool bBackup = false;       ///< The file as it was stays beside the new one, as NAME~
};

/// What a sheet of an existing file held when it was opened.
struct SheetContent {
  CellRange used;         ///< All its cells, empty ones with a format included
  int64_t nFilled = 0;    ///< Cells with a value or formula
  int64_t nFormulas = 0;  ///< Of these
};

/// A cell whose kind the caller has settled: the rule of modCellTyping isn't asked.
struct SettledCell {
  enum class Kind : char {
    Text = 'T',     ///< Its text, as it is
    Number = 'N',   ///< sDigits in the format sFormat; a date is the number of its day (SerialOfDate)
    Heading = 'H',  ///< Its text, in bold where the workbook is new
  };
  Kind kind = Kind::Text;
  std::string_view sShown;   ///< The text: what a reader of the sheet sees, and what ReadCell gives back
  std::string_view sDigits;  ///< "-1234.50"; a text that is no such number makes the cell a text
  std::string_view sFormat;  ///< Number format code, "" for General
};

/// A workbook of at least two sheets (an existing one may have fewer: then sheet 2 fails). Sheets count from 1 in
/// workbook order, rows and columns from 1. Texts are UTF-8 and are kept as written until saving, when each is typed by
/// the rule of modCellTyping. All operations that can fail say so by a Failure whose text is for the user.
///
/// Cells usually come row by row, which is what a new file streams; cells in any other order are right too, if slower.
class clsWorkbook {
 public:
  clsWorkbook() = default;
  clsWorkbook(const clsWorkbook&) = delete;
  clsWorkbook& operator=(const clsWorkbook&) = delete;
  virtual ~clsWorkbook() = default;

  /// sheets(n).cells(row, column).Value = text. Fails outside the sheet, for a text over kMaxCellChars (UTF-16 units),
  /// for a sheet that isn't there and for a workbook that could not be read.
  virtual bool WriteCell(int nSheet, int64_t nRow, int nColumn, std::string_view sText, Failure& failure) = 0;
  /// The same for a cell that is settled. Those who keep no kinds keep its text.
  virtual bool WriteSettled(int nSheet, int64_t nRow, int nColumn, const SettledCell& cell, Failure& failure) {
    return WriteCell(nSheet, nRow, nColumn, cell.sShown, failure);
  }
  /// The text as written in this run, or the shown value of a cell of an existing file; "" for an empty cell.
  virtual bool ReadCell(int nSheet, int64_t nRow, int nColumn, std::string& sText, Failure& failure) = 0;

  virtual int SheetCount() const = 0;
  /// The name that a spreadsheet would refuse (over 31 characters, []:*?/\, empty, taken) fails.
  virtual bool SetSheetName(int nSheet, std::string_view sName, Failure& failure) = 0;
  virtual std::string SheetName(int nSheet) const = 0;
  /// The sheet of that name in any case; one that isn't there is made behind the others. 0 with the reason for a name
  /// that a spreadsheet would refuse.
  virtual int SheetNamed(std::string_view sName, Failure& failure) = 0;
  /// Cells written below all others of the sheet from here on are another table's: a table's columns are typed each as
  /// a whole.
  virtual void BeginTable(int /*nSheet*/) {}
  /// In a new workbook the rows down to this one stay in sight, and its cells get a filter over the rows below. An
  /// existing one keeps what its user has made of it.
  virtual void SetHeadingRow(int /*nSheet*/, int64_t /*nRow*/) {}
  /// Font of cells with no format of their own; a new workbook is made with it, an existing one keeps its own.
  virtual void SetStandardFont(std::string_view sName) = 0;
  /// Used range of the active sheet; nothing on failure.
  virtual std::optional<CellRange> ActiveUsedRange() = 0;
  /// Empties the cells, formats kept.
  virtual bool ClearContents(int nSheet, const CellRange& range, Failure& failure) = 0;
  /// Of a sheet that was there when the file was opened; nothing of any other.
  virtual SheetContent ContentOf(int /*nSheet*/) { return {}; }
  /// True for a file that was there and is changed in place.
  virtual bool IsExisting() const { return false; }
  /// Why it could not be opened, if so: then every operation fails with that.
  virtual Failure WhyRefused() const { return {}; }
  virtual bool ActivateSheet(std::string_view sName) = 0;
  virtual bool ActivateSheet(int nSheet) = 0;

  /// Writes the file in the manner of clsOutputFile. Format kFormatXlsx or kFormatXls.
  virtual bool SaveAs(std::string_view sPath, int32_t lFormat, Failure& failure) = 0;
  /// Cells that were written as text because a formula in them reaches outside the workbook.
  virtual int64_t RefusedFormulas() const = 0;
  /// What the user should know of the file as it was saved, in his language.
  virtual std::vector<std::string> Notes() const { return {}; }
};

}  // namespace quillon
