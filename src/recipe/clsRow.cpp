#include "clsRow.h"

#include <algorithm>

#include "clsUtf8Walk.h"
#include "modRows.h"
#include "modText.h"

namespace quillon {

void clsRow::SetView(std::string_view sBytes, const clsCodePage& page, bool bBlankBehind, size_t nRoomBehind) {
  sBytes_ = sBytes;
  nRoomBehind_ = nRoomBehind;
  pPage_ = &page;
  bBlankBehind_ = bBlankBehind;
  bByteChars_ = page.IsSingleByte() || IsAscii(sBytes);
  if (bByteChars_) return;
  checkpoints_.assign(1, 0);
  cursor_ = {};
}

void clsRow::SetText(std::string_view sUtf8) {
  sOwn_ = sUtf8;
  SetView(sOwn_, clsCodePage::Utf8(), false);
}

bool clsRow::Expand(int32_t tab_size) {
  if (sBytes_.find('\t') == std::string_view::npos) return true;
  // The blank behind comes before the expansion: a closing tab is followed by it, not swallowed.
  if (bBlankBehind_) Own();
  sNext_.clear();
  if (!AppendExpanded(sBytes_, tab_size, !bByteChars_, sNext_)) return false;
  sOwn_.swap(sNext_);
  const size_t nBytes = sOwn_.size();
  sOwn_.append(kRoomBehind, '\0');
  SetView(std::string_view(sOwn_).substr(0, nBytes), *pPage_, false, kRoomBehind);
  return true;
}

void clsRow::Own() {
  sNext_.assign(sBytes_).append(bBlankBehind_ ? 1 : 0, ' ');
  sOwn_.swap(sNext_);
  sBytes_ = sOwn_;
  nRoomBehind_ = 0;
  bBlankBehind_ = false;
  // A search that ended at the old end took it for the character that it was after.
  checkpoints_.assign(1, 0);
  cursor_ = {};
}

std::string_view clsRow::Field(int64_t nStart, int64_t nEnd) {
  if (nStart < 1 || nEnd < nStart) return {};
  const size_t nFrom = OffsetOf(nStart);
  const size_t nTo = OffsetOf(nEnd + 1);
  if (!bBlankBehind_ || nTo < sBytes_.size()) return sBytes_.substr(nFrom, nTo - nFrom);
  Own();
  const size_t nOwnFrom = OffsetOf(nStart);
  return sBytes_.substr(nOwnFrom, OffsetOf(nEnd + 1) - nOwnFrom);
}

/// Byte offset of a character; the row's size behind its end.
size_t clsRow::OffsetOf(int64_t nCharacter) {
  const size_t nSize = sBytes_.size();
  if (nCharacter > static_cast<int64_t>(nSize)) return nSize;
  if (bByteChars_) return static_cast<size_t>(nCharacter) - 1;
  // Columns mostly ascend: on from where the last one ended.
  if (cursor_.nCharacter <= nCharacter && nCharacter - cursor_.nCharacter <= kCheckpoint) return Pass(nCharacter);
  const auto nWanted = static_cast<size_t>((nCharacter - 1) / kCheckpoint);
  while (checkpoints_.size() <= nWanted && checkpoints_.back() < nSize) {
    cursor_ = {static_cast<int64_t>(checkpoints_.size() - 1) * kCheckpoint + 1, checkpoints_.back()};
    checkpoints_.push_back(static_cast<uint32_t>(Pass(cursor_.nCharacter + kCheckpoint)));
  }
  if (checkpoints_.size() <= nWanted) return nSize;
  cursor_ = {static_cast<int64_t>(nWanted) * kCheckpoint + 1, checkpoints_[nWanted]};
  return Pass(nCharacter);
}

/// Moves the cursor on to the character, or to the end.
size_t clsRow::Pass(int64_t nCharacter) {
  const auto nFurther = static_cast<size_t>(nCharacter - cursor_.nCharacter);
  cursor_ = {nCharacter, cursor_.nOffset + ByteOffset(sBytes_.substr(cursor_.nOffset), nFurther + 1)};
  return cursor_.nOffset;
}

std::string clsRow::Text() const {
  std::string sText = pPage_->ToUtf8(sBytes_);
  if (bBlankBehind_) sText += ' ';
  return sText;
}

}  // namespace quillon
