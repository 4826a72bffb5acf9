#include "clsRowFields.h"

#include <algorithm>

#include "clsRecipe.h"
#include "clsUtf8Walk.h"
#include "modColumnLetters.h"
#include "modText.h"

namespace quillon {

namespace {

bool IsTwoLetters(std::string_view sLetters) {
  return (sLetters.size() == 1 || sLetters.size() == 2) &&
         std::all_of(sLetters.begin(), sLetters.end(), [](char c) { return IsAsciiLetter(c); });
}

/// Whether the column's own operations would give the characters of the row alone, and no message.
bool IsPlainCut(const clsColumn& column, const clsRecipe& recipe) {
  if (!IsTwoLetters(column.WriteColumn)) return false;
  const std::string sOperator = UpperText(TrimBlanks(column.PeriodOperator));
  if (sOperator == "FIRST") return recipe.InputFileFirst == 1;
  return recipe.InputFileLast == 1 && (sOperator.empty() || sOperator == "LAST" || sOperator == "AVG");
}

}  // namespace

clsRowFields::clsRowFields(RecipeContext& context, std::span<clsColumn> columns, bool bQuick)
    : context_(context), columns_(columns), bQuick_(bQuick) {
  for (const clsColumn& column : columns) {
    bQuick_ = bQuick_ && IsPlainCut(column, context.recipe);
    cuts_.push_back({static_cast<size_t>(std::max(column.ReadColumnStart, 1)) - 1,
                     static_cast<size_t>(std::max(column.ReadColumnEnd, 1))});
  }
  FindEdges();
  if (!bQuick_) return;
  fields_.resize(columns.size());
  for (const clsColumn& column : columns) sheetColumns_.push_back(AlphaToNum2(context.host, column.WriteColumn));
}

void clsRowFields::FindEdges() {
  for (const Place& cut : cuts_) {
    edges_.push_back(cut.nFrom);
    edges_.push_back(cut.nEnd);
  }
  std::sort(edges_.begin(), edges_.end());
  edges_.erase(std::unique(edges_.begin(), edges_.end()), edges_.end());
  offsets_.resize(edges_.size());
  const auto index = [this](size_t nEdge) {
    return static_cast<size_t>(std::lower_bound(edges_.begin(), edges_.end(), nEdge) - edges_.begin());
  };
  for (const Place& cut : cuts_) edgesOfCuts_.push_back({index(cut.nFrom), index(cut.nEnd)});
}

bool clsRowFields::Cut(clsRow& row) {
  if (!bQuick_) return CutByColumns();
  pPage_ = &row.Page();
  bAscii_ = row.BytesAreCharacters() && !pPage_->IsSingleByte();
  bRoom_ = row.RoomBehind() >= SinkRow::kRoom;
  bWithBlank_ = false;
  if (row.BytesAreCharacters()) {
    CutBytes(row);
  } else {
    CutCharacters(row);
  }
  return true;
}

bool clsRowFields::CutByColumns() {
  taken_.resize(columns_.size());
  fields_.clear();
  sheetColumns_.clear();
  for (size_t i = 0; i < columns_.size(); ++i) {
    if (!columns_[i].TakeField(context_, taken_[i])) return false;
    sheetColumns_.push_back(AlphaToNum2(context_.host, columns_[i].WriteColumn));
    fields_.push_back(taken_[i]);
  }
  return true;
}

/// The row as it is with the blank that closes it, which few fields reach.
std::string_view clsRowFields::WithBlankBehind(std::string_view sRow) {
  if (!bWithBlank_) sWithBlank_.assign(sRow).append(1, ' ').append(SinkRow::kRoom, '\0');
  bWithBlank_ = true;
  return {sWithBlank_.data(), sRow.size() + 1};
}

/// The fields of a row whose bytes are its characters.
void clsRowFields::CutBytes(const clsRow& row) {
  const std::string_view s = row.Bytes();
  for (size_t i = 0; i < cuts_.size(); ++i) {
    const Place& cut = cuts_[i];
    if (cut.nEnd <= s.size()) {
      fields_[i] = {s.data() + cut.nFrom, cut.nEnd - cut.nFrom};
      continue;
    }
    const bool bBlankBehind = row.HasBlankBehind() && cut.nFrom <= s.size();
    const std::string_view sFrom = bBlankBehind ? WithBlankBehind(s) : s;
    fields_[i] = cut.nFrom < sFrom.size() ? sFrom.substr(cut.nFrom, cut.nEnd - cut.nFrom) : std::string_view{};
  }
}

/// The fields of a UTF-8 row: one walk through it finds the bytes of all cuts.
void clsRowFields::CutCharacters(const clsRow& row) {
  const std::string_view s = row.Bytes();
  clsUtf8Walk walk(s);
  for (size_t i = 0; i < edges_.size(); ++i) offsets_[i] = walk.To(static_cast<int64_t>(edges_[i]));
  // Where the walk came to the row's end, it knows how many characters there are.
  const bool bToEnd = row.HasBlankBehind() && !offsets_.empty() && offsets_.back() == s.size();
  const auto nCharacters = static_cast<size_t>(walk.Passed());
  for (size_t i = 0; i < cuts_.size(); ++i) {
    const size_t nFrom = offsets_[edgesOfCuts_[i].nFrom];
    const bool bBlankBehind = bToEnd && cuts_[i].nEnd > nCharacters && cuts_[i].nFrom <= nCharacters;
    fields_[i] =
        bBlankBehind ? WithBlankBehind(s).substr(nFrom) : s.substr(nFrom, offsets_[edgesOfCuts_[i].nEnd] - nFrom);
  }
}

}  // namespace quillon
