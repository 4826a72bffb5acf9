#include "clsXlsxMerger.h"

#include <isa-l/igzip_lib.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <limits>
#include <memory>

#include "clsDeflater.h"
#include "clsSpool.h"
#include "clsXlsxCells.h"
#include "modColumnTyping.h"
#include "modShownByCode.h"
#include "modXmlReading.h"

namespace quillon {

namespace {

constexpr size_t kPieceBytes = size_t{64} << 10;
constexpr int kBehindAllColumns = std::numeric_limits<int>::max();

/// Gives the bytes of a deflated spool piece by piece.
class SpoolInflater {
 public:
  explicit SpoolInflater(clsSpool& spool) : spool_(spool) { isal_inflate_init(state_.get()); }

  /// Appends the next piece; False at the end.
  bool Append(std::string& sOut) {
    Refill();
    // Output may be waiting when all input is taken.
    if (state_->avail_in == 0 && !bFilled_) return false;
    const size_t nBefore = sOut.size();
    sOut.resize(nBefore + kPieceBytes);
    state_->next_out = reinterpret_cast<uint8_t*>(sOut.data() + nBefore);
    state_->avail_out = kPieceBytes;
    const int nStatus = isal_inflate(state_.get());
    sOut.resize(nBefore + kPieceBytes - state_->avail_out);
    bFilled_ = state_->avail_out == 0;
    bDamaged_ = nStatus < 0;
    return !bDamaged_;
  }
  bool Damaged() const { return bDamaged_; }

 private:
  void Refill() {
    if (state_->avail_in > 0) return;
    const size_t nRead = spool_.ReadAt(nOffset_, in_.data(), in_.size());
    nOffset_ += static_cast<int64_t>(nRead);
    state_->next_in = reinterpret_cast<uint8_t*>(in_.data());
    state_->avail_in = static_cast<uint32_t>(nRead);
  }

  clsSpool& spool_;
  std::unique_ptr<inflate_state> state_ = std::make_unique<inflate_state>();
  std::array<char, kPieceBytes> in_{};
  int64_t nOffset_ = 0;
  bool bFilled_ = false;
  bool bDamaged_ = false;
};

/// Length of the first whole element piece: <row ...>, </row> or a cell with all in it; 0 if it is cut off.
size_t ElementLength(std::string_view sXml) {
  const std::string_view sEnd = sXml.starts_with("<c ") ? "</c>" : ">";
  const size_t nEnd = sXml.size() < 3 ? std::string_view::npos : sXml.find(sEnd);
  return nEnd == std::string_view::npos ? 0 : nEnd + sEnd.size();
}

int ColumnOfCell(std::string_view sCell) {
  int nColumn = 0;
  for (size_t i = sCell.find('"') + 1; sCell[i] >= 'A' && sCell[i] <= 'Z'; ++i)
    nColumn = nColumn * 26 + (sCell[i] - 'A' + 1);
  return nColumn;
}

}  // namespace

bool clsXlsxMerger::Merge(clsSpool& rows, Failure& failure) {
  SpoolInflater inflater(rows);
  std::string sWindow;
  while (inflater.Append(sWindow)) {
    size_t nPos = 0;
    while (const size_t nLength = ElementLength(std::string_view(sWindow).substr(nPos))) {
      TakeElement(std::string_view(sWindow).substr(nPos, nLength));
      nPos += nLength;
    }
    sWindow.erase(0, nPos);
  }
  failure = rows.LastFailure();
  if (!failure.Failed() && (inflater.Damaged() || !sWindow.empty())) failure = SystemFailure("temporary file", EIO);
  if (failure.Failed()) return false;
  EmitRowsBefore(late_.LastRow() + 1);
  out_.Write(sOut_);
  return true;
}

void clsXlsxMerger::TakeElement(std::string_view sElement) {
  if (sElement.starts_with("<c ")) return TakeCell(sElement);
  if (sElement.starts_with("<row")) return BeginRow(sElement);
  EndRow();
}

void clsXlsxMerger::BeginRow(std::string_view sElement) {
  const char* const pNumber = sElement.data() + sElement.find('"') + 1;
  int64_t nRow = 0;
  std::from_chars(pNumber, sElement.data() + sElement.size(), nRow);
  EmitRowsBefore(nRow);
  nRow_ = nRow;
  late_.Row(nRow_, rowCells_);
  nNextCell_ = 0;
  nNextLate_ = nRow_ + 1;
  Emit(sElement);
}

void clsXlsxMerger::TakeCell(std::string_view sElement) {
  const int nColumn = ColumnOfCell(sElement);
  EmitCellsBefore(nColumn);
  const bool bReplaced = nNextCell_ < rowCells_.size() && rowCells_[nNextCell_].nColumn == nColumn;
  if (bReplaced) return;
  if (typing_.RuleOf(nRow_, nColumn) == typing_.Alone() || !ShownText(sElement, sShown_)) return Emit(sElement);
  EmitCell(nColumn, sShown_);
}

bool clsXlsxMerger::ShownText(std::string_view sElement, std::string& sText) const {
  constexpr std::string_view kStyle = "\" s=\"", kNumber = "\"><v>", kText = "\" t=\"inlineStr\"><is><t";
  const size_t nPlace = sElement.find('"') + 1;
  std::string_view sRest = sElement.substr(sElement.find('"', nPlace));
  size_t nStyle = 0;
  if (sRest.starts_with(kStyle)) {
    std::from_chars(sRest.data() + kStyle.size(), sRest.data() + sRest.size(), nStyle);
    sRest.remove_prefix(sRest.find('"', kStyle.size()));
  }
  sText.clear();
  if (sRest.starts_with(kText) && nStyle == 0) {
    sRest.remove_prefix(sRest.find('>', kText.size()) + 1);
    AppendUnescaped(sRest.substr(0, sRest.find('<')), sText);
    sText = DecodeCellText(sText);
    const size_t nFirst = sText.find_first_not_of(' ');
    return nFirst != std::string::npos && sText[nFirst] <= '9';
  }
  const std::string* const pCode = cells_.CodeOfStyle(nStyle);
  if (!sRest.starts_with(kNumber) || pCode == nullptr) return false;
  sRest.remove_prefix(kNumber.size());
  return AppendShownByCode(sRest.substr(0, sRest.find('<')), *pCode, sText);
}

void clsXlsxMerger::EndRow() {
  EmitCellsBefore(kBehindAllColumns);
  Emit("</row>");
}

void clsXlsxMerger::EmitRowsBefore(int64_t nRow) {
  for (; nNextLate_ < nRow && nNextLate_ <= late_.LastRow(); ++nNextLate_) {
    late_.Row(nNextLate_, rowCells_);
    if (rowCells_.empty()) continue;
    nRow_ = nNextLate_;
    nNextCell_ = 0;
    Emit("<row r=\"" + std::to_string(nRow_) + "\">");
    EndRow();
  }
}

void clsXlsxMerger::EmitCellsBefore(int nColumn) {
  for (; nNextCell_ < rowCells_.size() && rowCells_[nNextCell_].nColumn < nColumn; ++nNextCell_)
    EmitCell(rowCells_[nNextCell_].nColumn, rowCells_[nNextCell_].sText);
}

void clsXlsxMerger::EmitCell(int nColumn, std::string_view sText) {
  const size_t nBefore = sOut_.size();
  sOut_.resize(nBefore + clsXlsxCells::Room(sText.size()));
  TypedCell typed;
  const char* const pEnd = cells_.Put(sOut_.data() + nBefore, XmlPiece(std::to_string(nRow_)), nColumn, sText,
                                      typing_.RuleOf(nRow_, nColumn), typed);
  sOut_.resize(static_cast<size_t>(pEnd - sOut_.data()));
}

void clsXlsxMerger::Emit(std::string_view sXml) {
  sOut_.append(sXml);
  if (sOut_.size() < kPieceBytes) return;
  out_.Write(sOut_);
  sOut_.clear();
}

}  // namespace quillon
