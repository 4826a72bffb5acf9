#include "clsRecipeLook.h"

#include <algorithm>

#include "clsRecipeCut.h"
#include "clsTidyLook.h"
#include "modCutPicture.h"
#include "modPreviewText.h"
#include "modShortTable.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

/// Lines that are worth seeing: the report's beginning, the current table from a little above its top, and a little
/// around its bottom. Ascending and apart.
std::vector<LineRange> RangesToShow(const ReportPreview& preview) {
  constexpr int64_t kAround = 4;
  std::vector<LineRange> wanted{{1, clsRecipeCut::kLines}};
  const auto around = [&](int64_t lFrom, int64_t lTo) {
    if (lFrom > 0) wanted.push_back({std::max<int64_t>(1, lFrom - kAround), lTo + kAround});
  };
  if (preview.lFirstLine > 0) {
    around(preview.lFirstLine, preview.lFirstLine + clsRecipeCut::kLines);
    around(preview.lLastLine, preview.lLastLine);
  }
  around(preview.start.lLine, preview.start.lLine);
  around(preview.end.lLine, preview.end.lLine);
  std::sort(wanted.begin(), wanted.end(), [](const LineRange& a, const LineRange& b) { return a.lFirst < b.lFirst; });
  std::vector<LineRange> ranges;
  for (const LineRange& range : wanted) {
    if (!ranges.empty() && range.lFirst <= ranges.back().lLast + 1) {
      ranges.back().lLast = std::max(ranges.back().lLast, range.lLast);
    } else {
      ranges.push_back(range);
    }
  }
  return ranges;
}

std::string Number(int64_t lNumber) {
  return std::to_string(lNumber);
}

}  // namespace

std::vector<CutField> FieldsOf(const ReportPreview& preview) {
  std::vector<CutField> fields;
  for (const PreviewColumn& column : preview.columns) fields.push_back({column.lStart, column.lEnd});
  return fields;
}

clsRecipeLook::clsRecipeLook(const PreviewRequest& request, std::string_view sRecipe) : request_(request) {
  recipe_.OpenMemory(sRecipe, {false, &clsCodePage::Utf8()});
  picture_.sInput = request.sInput;
  picture_.rules = {.bGaps = true, .bEmpty = true, .lNarrowest = 2};
}

CutPicture clsRecipeLook::Look() {
  if (!IsOneInput(request_.sInput, picture_)) return std::move(picture_);
  if (clsTidyLook(request_, recipe_).Look(picture_)) return std::move(picture_);
  current_ = PreviewByRecipe(request_, recipe_);
  if (!ReadLines()) return std::move(picture_);
  DrawTable(current_);
  picture_.titles = ColumnTitles(current_);
  // What couldn't be worked out must not be drawn over.
  const bool bUndrawn =
      current_.lTable <= current_.lTables && ReadShortTable(recipe_, current_.lTable).sTemplate.empty();
  if (!current_.columns.empty() || bUndrawn) picture_.nCurrent = 0;
  picture_.lTableFrom = current_.lFirstLine;
  picture_.lTableTo = current_.lLastLine;
  DrawNeighbours();
  DrawKey(current_.start);
  DrawKey(current_.end);
  NoteBounds();
  NoteLosses();
  picture_.cells = std::move(current_.rows);
  for (PreviewRow& row : picture_.cells) row.sText.clear();
  return std::move(picture_);
}

bool clsRecipeLook::ReadLines() {
  return DrawStretches(ReadStretches(request_, RangesToShow(current_), clsRecipeCut::kCharacters), picture_);
}

CutLine* clsRecipeLook::LineAt(int64_t lLine) {
  const auto found = std::lower_bound(picture_.lines.begin(), picture_.lines.end(), lLine,
                                      [](const CutLine& line, int64_t l) { return line.lLine < l; });
  return found == picture_.lines.end() || found->lLine != lLine ? nullptr : &*found;
}

void clsRecipeLook::DrawTable(const ReportPreview& preview) {
  const int nTable = static_cast<int>(picture_.tables.size());
  DrawnTable& table = picture_.tables.emplace_back();
  table.lNumber = preview.lTable;
  table.fields = FieldsOf(preview);
  for (const PreviewColumn& column : preview.columns) table.letters.push_back(column.sLetters);
  for (const PreviewRow& row : preview.rows) {
    CutLine* const pLine = LineAt(row.lLine);
    if (pLine == nullptr || pLine->nTable >= 0) continue;
    pLine->nTable = nTable;
    pLine->sMarks = LossMarks(row, preview.columns);
  }
  // Rows that are in the table and weren't kept.
  if (!preview.bMore || preview.rows.empty()) return;
  for (CutLine& line : picture_.lines) {
    const bool bInside = line.lLine > preview.rows.back().lLine && line.lLine <= preview.lLastLine;
    if (bInside && line.nTable < 0) line.nTable = nTable;
  }
}

/// The tables before and behind the current one in the recipe, where they lie in the report's beginning.
void clsRecipeLook::DrawNeighbours() {
  PreviewRequest request = request_;
  request.text.lMostBytes = clsRecipeCut::kBeginning;
  request.bFindEnd = false;
  const int32_t lFirst = std::max(1, request_.lTable - clsRecipeCut::kNeighbours);
  const int32_t lLast = std::min(current_.lTables, request_.lTable + clsRecipeCut::kNeighbours);
  for (request.lTable = lFirst; request.lTable <= lLast; ++request.lTable) {
    if (request.lTable == request_.lTable) continue;
    const ReportPreview preview = PreviewByRecipe(request, recipe_);
    if (!preview.rows.empty()) DrawTable(preview);
  }
}

void clsRecipeLook::DrawKey(const PreviewKey& key) {
  CutLine* const pLine = key.lLine > 0 ? LineAt(key.lLine) : nullptr;
  if (pLine == nullptr) return;
  const size_t nAt = pLine->sText.find(key.sText);
  if (nAt == std::string::npos) return;  // It holds a tab, or stands behind what is shown.
  pLine->lKeyAt = static_cast<int32_t>(CharCount(std::string_view(pLine->sText).substr(0, nAt))) + 1;
  pLine->lKeyLength = static_cast<int32_t>(CharCount(key.sText));
}

void clsRecipeLook::Note(std::string sText, bool bWarning) {
  picture_.notes.push_back({std::move(sText), bWarning});
}

void clsRecipeLook::NoteBounds() {
  std::string sTable = Translate("Table") + " " + Number(current_.lTable) + "/" + Number(current_.lTables);
  if (current_.lFirstLine > 0) {
    sTable += "; " + Translate("Lines:") + " " + Number(current_.lFirstLine) + "-";
    sTable += current_.lLastLine > 0 ? Number(current_.lLastLine) : "...";
  }
  if (current_.lTables == 0) return Note(Translate("The recipe has no table yet; Add Table... writes one."));
  Note(std::move(sTable));
  if (!current_.sFault.empty()) Note(current_.sFault, true);
  for (const PreviewKey* const pKey : {&current_.start, &current_.end}) {
    picture_.bSearchedShort = picture_.bSearchedShort || pKey->place == KeyPlace::NotReached;
    if (pKey->place != KeyPlace::Missing && pKey->place != KeyPlace::NotReached) continue;
    const bool bStart = pKey == &current_.start;
    Note((bStart ? "ReadStartLine" : "ReadEndLine") + std::string(" \"") + ShownText(pKey->sText) +
             "\": " + (pKey->place == KeyPlace::Missing ? Translate("Not found") : Translate("Not found so far")),
         true);
  }
  if (picture_.bSearchedShort) {
    Note(Translate("Megabytes searched so far:") + " " + Number(request_.text.lMostBytes >> 20), true);
  }
}

void clsRecipeLook::NoteLosses() {
  if (!current_.rows.empty()) picture_.notes.push_back(LossNote(current_));
}

}  // namespace quillon
