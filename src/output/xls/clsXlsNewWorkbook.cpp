#include "clsXlsNewWorkbook.h"

#include <algorithm>
#include <deque>

#include "clsXlsStringTable.h"
#include "clsXlsWorkbook.h"
#include "modCompoundFile.h"
#include "modEventLoop.h"
#include "modOutputMessages.h"
#include "modSettledCell.h"
#include "modText.h"
#include "modXlsLayout.h"
#include "modXlsText.h"

namespace quillon {

namespace {

constexpr size_t kMinWidth = 8, kMaxWidth = 60;
constexpr size_t kMaxStream = 0x7FFF0000;

size_t WidthOf(std::string_view sText) {
  const std::string_view sShown = TrimBlanks(sText.substr(0, kMaxWidth * 4));
  return std::min(IsAscii(sShown) ? sShown.size() : CharCount(sShown), kMaxWidth);
}

}  // namespace

void ClearWritten(clsCellStore& cells, const CellRange& range) {
  std::vector<StoredCell> row;
  const int64_t nBottom = std::min(range.nBottom, cells.LastRow());
  for (int64_t nRow = std::max<int64_t>(range.nTop, 1); nRow <= nBottom; ++nRow) {
    cells.Row(nRow, row);
    for (const StoredCell& cell : std::vector<StoredCell>(row))
      if (cell.nColumn >= range.nLeft && cell.nColumn <= range.nRight) cells.Write(nRow, cell.nColumn, {});
  }
}

clsXlsNewWorkbook::clsXlsNewWorkbook(const WorkbookOptions& options)
    : clsSheetBook(options, {kMaxXlsRows, kMaxXlsColumns, kFormatXls}) {
  for (const char* const pName : {"Sheet1", "Sheet2"}) {
    clsXlsNewWorkbook::AddSheet();
    names_.emplace_back(pName);
  }
}

void clsXlsNewWorkbook::SetHeadingRow(int nSheet, int64_t nRow) {
  if (HasSheet(nSheet)) At(nSheet).nHeadingRow = nRow;
}

bool clsXlsNewWorkbook::PutText(int nSheet, int64_t nRow, int nColumn, std::string_view sStored, Failure&) {
  Sheet& sheet = At(nSheet);
  sheet.cells.Write(nRow, nColumn, sStored);
  uint8_t& nWidth = sheet.widths[static_cast<size_t>(nColumn) - 1];
  if (sStored.size() > nWidth) nWidth = std::max(nWidth, static_cast<uint8_t>(WidthOf(ShownOf(sStored))));
  return true;
}

bool clsXlsNewWorkbook::GetText(int nSheet, int64_t nRow, int nColumn, std::string& sStored, Failure&) {
  std::string_view sWritten;
  if (At(nSheet).cells.Read(nRow, nColumn, sWritten)) sStored = sWritten;
  return true;
}

bool clsXlsNewWorkbook::ClearContents(int nSheet, const CellRange& range, Failure& failure) {
  if (!CheckSheet(nSheet, failure)) return false;
  ClearWritten(At(nSheet).cells, range);
  return true;
}

void FillXlsTable(clsCellStore& cells, clsSheetTyping& typing, uint16_t nXf, clsXlsCellWriter& writer,
                  clsXlsCellTable& table) {
  // A row is announced to the string table two rows before it is written, and once more one row before.
  constexpr size_t kAhead = 3;
  std::array<std::vector<StoredCell>, kAhead> rows;
  std::array<std::vector<uint32_t>, kAhead> hashes;
  typing.NoteAll(cells);
  typing.Decide();
  table.Reserve(cells.Bytes() * 2);
  const int64_t nLast = cells.LastRow();
  for (int64_t nRead = 1; nRead <= nLast + 2; ++nRead) {
    RunEvents();
    const auto nSlot = static_cast<size_t>(nRead);
    cells.Row(nRead, rows[nSlot % kAhead]);
    writer.Expect(rows[nSlot % kAhead], hashes[nSlot % kAhead]);
    writer.ExpectEntries(hashes[(nSlot + 2) % kAhead]);
    const std::vector<StoredCell>& row = rows[(nSlot + 1) % kAhead];
    if (row.empty()) continue;
    table.StartRow(static_cast<uint32_t>(nRead - 3));
    for (const StoredCell& cell : row)
      writer.Write(table, static_cast<unsigned>(cell.nColumn - 1), cell.sText, typing.RuleOf(nRead - 2, cell.nColumn),
                   {nXf, false, false});
  }
  table.Finish();
}

std::string clsXlsNewWorkbook::MakeGlobals(const clsXlsFormats& formats, const clsXlsStrings& strings,
                                           size_t& nBoundSheets) const {
  std::string sGlobals;
  PutGlobalsHead(sGlobals, sFont_, SheetCount(), nActive_ - 1, formats);
  nBoundSheets = sGlobals.size();
  for (const std::string& sName : names_) PutBoundSheet(sGlobals, sName);
  PutRecord(sGlobals, xls::kCountry, std::string_view("\1\0\1\0", 4));
  clsXlsStringTable().Write(strings, 0, sGlobals);
  PutEof(sGlobals);
  return sGlobals;
}

/// The sheets' records but for their cell tables, and all pieces of the stream in order.
struct clsXlsNewWorkbook::Layout {
  struct SheetParts {
    XlsSheetHead head;
    std::string sIndex, sTail;
  };
  std::deque<SheetParts> sheets;  ///< Their pieces are spoken of where they lie
  std::vector<std::string_view> pieces;
  size_t nBytes = 0;

  void Add(std::string_view sPiece) {
    pieces.push_back(sPiece);
    nBytes += sPiece.size();
  }
};

/// Lays a sheet's records out behind what is there.
void clsXlsNewWorkbook::LayOut(int nSheet, const clsXlsCellTable& table, Layout& layout) {
  std::array<uint8_t, 256> widths = At(nSheet).widths;
  for (uint8_t& nWidth : widths)
    if (nWidth <= kMinWidth) nWidth = 0;
  Layout::SheetParts& parts = layout.sheets.emplace_back();
  parts.head = MakeSheetHead(widths, table.FirstRow(), table.RowsEnd(), table.FirstColumn(), table.ColumnsEnd());
  const size_t nRest = layout.nBytes + parts.head.sBof.size() + table.IndexBytes();
  parts.sIndex = table.Index(nRest + parts.head.sRest.size(), nRest + parts.head.nDefColWidth);
  parts.sTail = MakeSheetTail(nActive_ == nSheet, At(nSheet).nHeadingRow);
  const std::array<std::string_view, 5> pieces = {parts.head.sBof, parts.sIndex, parts.head.sRest, table.Bytes(),
                                                  parts.sTail};
  for (const std::string_view sPiece : pieces) layout.Add(sPiece);
}

bool clsXlsNewWorkbook::Save(std::string_view sPath, Failure& failure) {
  clsXlsStrings strings;
  clsXlsFormats formats;
  AddStandardXfs(formats);
  formats.SetHeadingFont(kXlsHeadingFont);
  clsXlsCellWriter writer(strings, formats, options_.typing);
  std::vector<clsXlsCellTable> tables(sheets_.size());
  size_t nBytes = 0;
  for (const auto& sheet : sheets_) nBytes += sheet->cells.Bytes();
  strings.Reserve(nBytes);
  for (size_t i = 0; i < tables.size(); ++i)
    FillXlsTable(sheets_[i]->cells, sheets_[i]->typing, xls::kDefaultXf, writer, tables[i]);
  nRefused_ = writer.RefusedFormulas();
  for (const auto& sheet : sheets_) bOrderTaken_ |= sheet->typing.OrderIsOpen();

  size_t nBoundSheet = 0;
  std::string sGlobals = MakeGlobals(formats, strings, nBoundSheet);
  Layout layout;
  layout.Add(sGlobals);
  for (int nSheet = 1; nSheet <= SheetCount(); ++nSheet) {
    SetAt(sGlobals, nBoundSheet + 4, static_cast<uint32_t>(layout.nBytes));
    nBoundSheet += size_t{4} + GetU16(sGlobals, nBoundSheet + 2);
    LayOut(nSheet, tables[static_cast<size_t>(nSheet) - 1], layout);
  }
  if (layout.nBytes > kMaxStream) {
    failure = OutputFailure(sPath, OutputMessage::TooLarge);
    return false;
  }
  return SaveCompoundFile(sPath, nullptr, "Workbook", layout.pieces, failure);
}

std::unique_ptr<clsWorkbook> NewXlsWorkbook(const WorkbookOptions& options) {
  return std::make_unique<clsXlsNewWorkbook>(options);
}

}  // namespace quillon
