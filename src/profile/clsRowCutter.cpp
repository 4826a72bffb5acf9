#include "clsRowCutter.h"

#include <algorithm>

#include "clsUtf8Walk.h"
#include "modBlankBlocks.h"
#include "modText.h"

namespace quillon {

std::string_view TrimPad(std::string_view sValue, TrimSide side, std::string_view sPad) {
  if (sPad.size() == 1) {
    const char cPad = sPad.front();
    while (side == TrimSide::Left && !sValue.empty() && sValue.front() == cPad) sValue.remove_prefix(1);
    while (side == TrimSide::Right && !sValue.empty() && sValue.back() == cPad) sValue.remove_suffix(1);
  } else if (side == TrimSide::Left) {
    while (sValue.starts_with(sPad)) sValue.remove_prefix(sPad.size());
  } else if (side == TrimSide::Right) {
    while (sValue.ends_with(sPad)) sValue.remove_suffix(sPad.size());
  }
  return sValue;
}

clsRowCutter::clsRowCutter(const CutPlan& plan, const clsCodePage& page)
    : plan_(plan),
      page_(page),
      bBytes_(page.IsSingleByte()),
      fields_(plan.columns.size()),
      offsets_(plan.edges.size()) {}

void clsRowCutter::Cut(std::string_view sRow, bool bRoom) {
  bRoom_ = bRoom;
  bAscii_ = !bBytes_ && IsAscii(sRow);
  if (bBytes_ || bAscii_) {
    CutBytes(sRow);
  } else {
    CutChars(sRow);
  }
}

void clsRowCutter::CutBytes(std::string_view sRow) {
  const auto nRow = static_cast<int64_t>(sRow.size());
  for (size_t i = 0; i < fields_.size(); ++i) {
    const PlanColumn& column = plan_.columns[i];
    const int64_t nStart = std::min(column.nStart, nRow);
    const int64_t nCount = std::min(column.nCount, nRow - nStart);
    const std::string_view sField = sRow.substr(static_cast<size_t>(nStart), static_cast<size_t>(nCount));
    if (bRoom_ && column.sPad.size() == 1) {
      fields_[i] =
          TrimByteInBlocks(sField, column.sPad.front(), column.side == TrimSide::Left, column.side == TrimSide::Right);
    } else {
      fields_[i] = TrimPad(sField, column.side, column.sPad);
    }
  }
}

void clsRowCutter::CutChars(std::string_view sRow) {
  clsUtf8Walk walk(sRow);
  for (size_t i = 0; i < plan_.edges.size(); ++i) offsets_[i] = walk.To(plan_.edges[i]);
  for (size_t i = 0; i < fields_.size(); ++i) {
    const PlanColumn& column = plan_.columns[i];
    const size_t nStart = offsets_[column.nInput];
    fields_[i] = TrimPad(sRow.substr(nStart, offsets_[column.nInput + 1] - nStart), column.side, column.sPad);
  }
}

}  // namespace quillon
