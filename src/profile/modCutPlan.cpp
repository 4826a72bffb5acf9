#include "modCutPlan.h"

#include <algorithm>
#include <cstdlib>

#include "modCharacterList.h"
#include "modText.h"

namespace quillon {

namespace {

/// The pad character in the rows' encoding; "" if the page has no such character, so that nothing is trimmed.
std::string PadText(unsigned char pad, const clsCodePage& page) {
  const clsCodePage& codes = CharacterCodePage();
  const std::string sUtf8 = codes.ToUtf8(std::string(1, static_cast<char>(pad)));
  if (!page.IsSingleByte()) return sUtf8;
  return page.CanEncode(sUtf8) ? page.FromUtf8(sUtf8) : std::string();
}

TrimSide SideOf(const CellwrightColumn& column) {
  if (column.inputPad == CellwrightColumn::kNoPad) return TrimSide::None;
  if (column.lInputSide == 1) return TrimSide::Left;
  return column.lInputSide == 2 ? TrimSide::Right : TrimSide::None;
}

}  // namespace

bool ParseStartCell(std::string_view sText, StartCell& cell) {
  cell = {};
  constexpr int32_t kLastColumn = 16384;
  constexpr int64_t kLastRow = std::numeric_limits<int32_t>::max();
  sText = TrimBlanks(sText);
  const auto take = [&](std::string_view sFrom, auto step) {
    if (sText.starts_with('$')) sText.remove_prefix(1);
    size_t n = 0;
    for (; n < sText.size() && sFrom.find(sText[n]) != std::string_view::npos; ++n) {
      if (!step(sText[n])) return false;
    }
    sText.remove_prefix(n);
    return n > 0;
  };
  int32_t nColumn = 0;
  int64_t nRow = 0;
  const bool bOk = take("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz",
                        [&](char c) {
                          nColumn = nColumn * 26 + (c | 0x20) - 'a' + 1;
                          return nColumn <= kLastColumn;
                        }) &&
                   take("0123456789",
                        [&](char c) {
                          nRow = nRow * 10 + (c - '0');
                          return nRow <= kLastRow;
                        }) &&
                   sText.empty() && nRow > 0;
  if (bOk) cell = {nRow, nColumn};
  return bOk;
}

CutPlan MakeCutPlan(std::span<const CellwrightColumn> columns, int32_t nFirstColumn, const clsCodePage& page) {
  CutPlan plan;
  while (!columns.empty() && (columns.back().lCount == -1 || columns.back().lCount == 0)) {
    columns = columns.first(columns.size() - 1);
  }
  if (columns.empty() || columns.front().lCount == 0) {
    if (nFirstColumn == 1) plan.columns.push_back({.nCount = CutPlan::kWholeLine, .sPad = {}});
    plan.edges.push_back(CutPlan::kWholeLine);
    return plan;
  }
  std::vector<std::pair<int32_t, size_t>> order;
  for (size_t i = 0; i < columns.size(); ++i) {
    const CellwrightColumn& column = columns[i];
    plan.edges.push_back(plan.edges.back() + std::abs(int64_t{column.lCount}));
    if (column.lCount <= 0 || static_cast<int64_t>(i) + 1 < nFirstColumn) continue;
    order.emplace_back(column.lOrder != CellwrightColumn::kNoOrder ? column.lOrder : static_cast<int32_t>(i) + 1, i);
  }
  std::stable_sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (const auto& [lOrder, i] : order) {
    const TrimSide side = SideOf(columns[i]);
    std::string sPad = side == TrimSide::None ? std::string() : PadText(columns[i].inputPad, page);
    plan.columns.push_back(
        {i, plan.edges[i], columns[i].lCount, sPad.empty() ? TrimSide::None : side, std::move(sPad)});
  }
  return plan;
}

}  // namespace quillon
