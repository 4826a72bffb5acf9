#include "clsXlsxSheet.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "clsSheetCursor.h"
#include "clsXlsxMerger.h"
#include "clsZipWriter.h"
#include "modColumnWidths.h"
#include "modSettledCell.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kXmlBytes = size_t{1} << 20;
constexpr size_t kDrainBytes = size_t{192} << 10;
static_assert(clsXlsxCells::Room(3 * kMaxCellChars) < kXmlBytes);

constexpr size_t kMaxWidth = clsSheetTyping::kMaxWidth;

constexpr std::string_view kTail =
    "<pageMargins left=\"0.7\" right=\"0.7\" top=\"0.75\" bottom=\"0.75\" "
    "header=\"0.3\" footer=\"0.3\"/></worksheet>";

char* PutLiteral(char* p, std::string_view sPiece) {
  std::memcpy(p, sPiece.data(), sPiece.size());
  return p + sPiece.size();
}

}  // namespace

void clsXlsxSheet::WriteCell(int64_t nRow, int nColumn, std::string_view sText) {
  bFinished_ = false;
  if (nRow > nRow_ && !bClosed_) BeginRow(nRow);
  const bool bCurrent = nRow == nRow_ && !bClosed_;
  if (bCurrent && kXmlBytes - nUsed_ < clsXlsxCells::Room(sText.size())) Drain();
  const bool bAscends = rowCells_.empty() || rowCells_.back().nColumn < nColumn;
  if (!bCurrent || (bRowDrained_ && !bAscends)) {
    late_.Write(nRow, nColumn, sText);
    return NoteCell(nRow, nColumn, sText, TrimBlanks(sText).empty() ? CellKind::Empty : CellKind::Text);
  }
  char* p = xml_.get() + nUsed_;
  if (!bRowOpen_) {
    p = PutLiteral(p, "<row r=\"");
    std::memcpy(p, rowDigits_.bytes.data(), 8);
    p = PutLiteral(p + rowDigits_.nLength, "\">");
    bRowOpen_ = true;
  }
  const auto nStart = static_cast<uint32_t>(p - xml_.get());
  TypedCell typed;
  p = cells_.Put(p, rowDigits_, nColumn, sText, typing_.Alone(), typed);
  nUsed_ = static_cast<size_t>(p - xml_.get());
  rowCells_.push_back({nColumn, nStart, static_cast<uint32_t>(nUsed_)});
  bRowOrdered_ = bRowOrdered_ && bAscends;
  typing_.Note(nRow, nColumn, typed, sText);
  NoteCell(nRow, nColumn, sText, typed.kind);
}

void clsXlsxSheet::NoteCell(int64_t nRow, int nColumn, std::string_view sText, CellKind kind) {
  if (kind == CellKind::Empty) return;
  if (used_.Empty()) used_ = {nRow, nColumn, nRow, nColumn};
  used_.nTop = std::min(used_.nTop, nRow);
  used_.nBottom = std::max(used_.nBottom, nRow);
  used_.nLeft = std::min<int64_t>(used_.nLeft, nColumn);
  used_.nRight = std::max<int64_t>(used_.nRight, nColumn);
  if (kind != CellKind::Formula) NoteWidth(nColumn, ShownOf(sText), kind == CellKind::Text);
}

void clsXlsxSheet::NoteWidth(int nColumn, std::string_view sText, bool bText) {
  const auto nIndex = static_cast<size_t>(nColumn - 1);
  if (widths_.size() <= nIndex) widths_.resize(nIndex + 1);
  const size_t nKnown = widths_[nIndex];
  if (sText.size() <= nKnown || nKnown == kMaxWidth) return;
  // Most numbers stand at the right end of their field: a blank just before the known width says that they fit.
  if (!bText && sText.back() != ' ' && sText[sText.size() - nKnown - 1] == ' ') return;
  const size_t nChars = bText ? CharCount(sText) : TrimBlanks(sText).size();
  widths_[nIndex] = static_cast<uint8_t>(std::clamp(nChars, nKnown, kMaxWidth));
}

void clsXlsxSheet::BeginRow(int64_t nRow) {
  EndRow();
  if (!xml_) {
    xml_ = std::make_unique_for_overwrite<char[]>(kXmlBytes);
    body_ = std::make_unique<clsSpool>();
    deflater_ = std::make_unique<clsDeflater>(*body_);
  }
  if (nUsed_ > kDrainBytes) Drain();
  nRow_ = nRow;
  bRowDrained_ = false;
  rowDigits_ = {};
  const auto result = std::to_chars(rowDigits_.bytes.data(), rowDigits_.bytes.data() + 8, nRow);
  rowDigits_.nLength = static_cast<uint8_t>(result.ptr - rowDigits_.bytes.data());
}

void clsXlsxSheet::EndRow() {
  if (bRowOpen_) {
    if (!bRowOrdered_) OrderRow();
    if (kXmlBytes - nUsed_ < 16) Drain();
    nUsed_ = static_cast<size_t>(PutLiteral(xml_.get() + nUsed_, "</row>") - xml_.get());
  }
  bRowOpen_ = false;
  bRowOrdered_ = true;
  rowCells_.clear();
}

void clsXlsxSheet::OrderRow() {
  std::stable_sort(rowCells_.begin(), rowCells_.end(),
                   [](const RowCell& a, const RowCell& b) { return a.nColumn < b.nColumn; });
  uint32_t nStart = static_cast<uint32_t>(nUsed_);
  for (const RowCell& cell : rowCells_) nStart = std::min(nStart, cell.nStart);
  std::string sOrdered;
  sOrdered.reserve(nUsed_ - nStart);
  for (size_t i = 0; i < rowCells_.size(); ++i) {
    // Of a cell written twice the last text holds.
    if (i + 1 < rowCells_.size() && rowCells_[i + 1].nColumn == rowCells_[i].nColumn) continue;
    sOrdered.append(xml_.get() + rowCells_[i].nStart, rowCells_[i].nEnd - rowCells_[i].nStart);
  }
  sOrdered.copy(xml_.get() + nStart, sOrdered.size());
  nUsed_ = nStart + sOrdered.size();
}

/// Within a row only one that fills the buffer comes here: what is out of order then is out of reach.
void clsXlsxSheet::Drain() {
  if (bRowOpen_) {
    if (!bRowOrdered_) OrderRow();
    const int nLast = rowCells_.empty() ? 0 : rowCells_.back().nColumn;
    rowCells_.assign(1, {nLast, 0, 0});
    bRowOrdered_ = true;
    bRowDrained_ = true;
  }
  deflater_->Write({xml_.get(), nUsed_});
  nUsed_ = 0;
}

void clsXlsxSheet::Clear() {
  deflater_.reset();
  body_.reset();
  xml_.reset();
  nBodyCrc_ = 0;
  nBodySize_ = nRow_ = 0;
  nUsed_ = 0;
  bClosed_ = bRowOpen_ = bRowDrained_ = bFinished_ = false;
  bRowOrdered_ = true;
  rowCells_.clear();
  late_.Clear();
  typing_.Clear();
  used_ = {};
  nHeadingRow_ = 0;
  widths_.clear();
}

void clsXlsxSheet::CloseBody() {
  if (bClosed_) return;
  EndRow();
  if (!body_) body_ = std::make_unique<clsSpool>();
  if (deflater_) {
    Drain();
    deflater_->Close(false);
    nBodyCrc_ = deflater_->Crc();
    nBodySize_ = deflater_->Size();
    deflater_.reset();
  }
  xml_.reset();
  bClosed_ = true;
}

/// Late cells, and those of a kind that their column as a whole isn't.
bool clsXlsxSheet::MergeRest(Failure& failure) {
  typing_.NoteAll(late_);
  if (!typing_.Decide() && late_.Empty()) return true;
  auto merged = std::make_unique<clsSpool>();
  clsDeflater deflater(*merged);
  clsXlsxMerger merger(cells_, late_, typing_, deflater);
  if (!merger.Merge(*body_, failure)) return false;
  deflater.Close(false);
  nBodyCrc_ = deflater.Crc();
  nBodySize_ = deflater.Size();
  body_ = std::move(merged);
  late_.Clear();
  return true;
}

std::string clsXlsxSheet::Head(bool bActive) const {
  const CellRange range = used_.Empty() ? CellRange{1, 1, 1, 1} : used_;
  std::string sHead =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"><dimension ref=\"" +
      CellRangeText(range) + "\"/><sheetViews><sheetView ";
  if (bActive) sHead += "tabSelected=\"1\" ";
  sHead += "workbookViewId=\"0\"";
  if (nHeadingRow_ > 0) {
    const std::string sRows = std::to_string(nHeadingRow_), sBelow = "A" + std::to_string(nHeadingRow_ + 1);
    sHead += "><pane ySplit=\"" + sRows + "\" topLeftCell=\"" + sBelow +
             "\" activePane=\"bottomLeft\" state=\"frozen\"/><selection pane=\"bottomLeft\" activeCell=\"" + sBelow +
             "\" sqref=\"" + sBelow + "\"/></sheetView";
  } else {
    sHead += "/";
  }
  sHead += "></sheetViews><sheetFormatPr defaultRowHeight=\"13.5\"/>";
  std::string sColumns;
  for (size_t i = 0; i < widths_.size(); ++i) {
    if (widths_[i] == 0) continue;
    const std::string sNumber = std::to_string(i + 1);
    sColumns += "<col min=\"" + sNumber + "\" max=\"" + sNumber + "\" width=\"" + ColumnWidthText(widths_[i]) +
                "\" customWidth=\"1\"/>";
  }
  if (!sColumns.empty()) sHead += "<cols>" + sColumns + "</cols>";
  return sHead + "<sheetData>";
}

std::string clsXlsxSheet::Tail() const {
  std::string sTail = "</sheetData>";
  if (nHeadingRow_ > 0 && nHeadingRow_ < used_.nBottom)
    sTail += "<autoFilter ref=\"" + CellRangeText({nHeadingRow_, used_.nLeft, used_.nBottom, used_.nRight}) + "\"/>";
  return sTail.append(kTail);
}

bool clsXlsxSheet::Finish(Failure& failure) {
  if (bFinished_) return true;
  CloseBody();
  return bFinished_ = MergeRest(failure);
}

bool clsXlsxSheet::Save(clsZipWriter& zip, std::string_view sPartName, bool bActive, Failure& failure) {
  if (!Finish(failure)) return false;
  clsSpool headSpool, tailSpool;
  clsDeflater head(headSpool), tail(tailSpool);
  head.Write(Head(bActive));
  head.Close(false);
  tail.Write(Tail());
  tail.Close(true);
  ZipPart part;
  part.sName = sPartName;
  part.nCrc = CombineCrc(CombineCrc(head.Crc(), nBodyCrc_, nBodySize_), tail.Crc(), tail.Size());
  part.nSize = head.Size() + nBodySize_ + tail.Size();
  return zip.AddSpooled(std::move(part), {&headSpool, body_.get(), &tailSpool}, failure);
}

}  // namespace quillon
