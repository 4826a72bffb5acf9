#include "clsFoundCut.h"

#include <algorithm>

#include "frmFindTables.h"
#include "frmMain.h"
#include "modColumnLetters.h"
#include "modCutPicture.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kCharacters = 2000;  ///< Of a line that are shown

/// The report's beginning and the beginning of the table.
std::vector<LineRange> RangesToShow(const ListedTable& table) {
  constexpr int64_t kAbove = 8;
  const int64_t lFirst = std::max<int64_t>(1, table.parts.front().lFirst - kAbove);
  if (lFirst <= clsFoundCut::kLines) return {{1, lFirst + clsFoundCut::kLines}};
  return {{1, clsFoundCut::kLines}, {lFirst, lFirst + clsFoundCut::kLines}};
}

std::string CellOf(const std::string& sLine, const CutField& field) {
  const size_t nFrom = ByteOffset(sLine, static_cast<size_t>(field.lStart));
  const size_t nTo = ByteOffset(sLine, static_cast<size_t>(field.lEnd) + 1);
  return std::string(TrimBlanks(std::string_view(sLine).substr(nFrom, nTo - nFrom)));
}

}  // namespace

CutPicture clsFoundCut::Look(const CutProposal*) {
  const PreviewRequest request = form_.Owner().Report();
  CutPicture picture;
  picture.sInput = request.sInput;
  const ListedTable& table = form_.Tables()[form_.Selected()];
  if (!DrawStretches(ReadStretches(request, RangesToShow(table), kCharacters), picture)) return picture;
  DrawTables(picture);
  CutCells(picture);
  return picture;
}

/// The ticked ones and the one that is looked at.
void clsFoundCut::DrawTables(CutPicture& picture) const {
  for (size_t n = 0; n < form_.Tables().size(); ++n) {
    if (!form_.IsTicked(n) && n != form_.Selected()) continue;
    const ListedTable& table = form_.Tables()[n];
    const int nTable = static_cast<int>(picture.tables.size());
    CutTable& drawn = picture.tables.emplace_back();
    drawn.lNumber = static_cast<int32_t>(n) + 1;
    drawn.fields = table.fields;
    for (size_t i = 0; i < table.fields.size(); ++i) drawn.letters.push_back(ColumnLetters(static_cast<int>(i) + 1));
    auto itLine = picture.lines.begin();
    for (const LineRange& part : table.parts) {
      itLine = std::lower_bound(itLine, picture.lines.end(), part.lFirst,
                                [](const CutLine& line, int64_t l) { return line.lLine < l; });
      for (; itLine != picture.lines.end() && itLine->lLine <= part.lLast; ++itLine) itLine->nTable = nTable;
    }
  }
}

void clsFoundCut::CutCells(CutPicture& picture) const {
  const auto number = static_cast<int32_t>(form_.Selected()) + 1;
  const auto found = std::find_if(picture.tables.begin(), picture.tables.end(),
                                  [&](const CutTable& table) { return table.lNumber == number; });
  picture.titles = found->letters;
  const auto nTable = static_cast<int>(found - picture.tables.begin());
  picture.nShown = nTable;
  for (const CutLine& line : picture.lines) {
    if (line.nTable != nTable) continue;
    PreviewRow& row = picture.cells.emplace_back();
    row.lLine = line.lLine;
    for (const CutField& field : found->fields) row.cells.push_back(CellOf(line.sText, field));
  }
}

void clsFoundCut::Choose(int32_t lNumber) {
  form_.Select(static_cast<size_t>(lNumber) - 1);
}

}  // namespace quillon
