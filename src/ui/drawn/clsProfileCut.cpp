#include "clsProfileCut.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "frmMain.h"
#include "frmSpecifyFixedWidthText.h"
#include "modCutPicture.h"
#include "modPaths.h"
#include "modPreviewText.h"
#include "modSettings.h"
#include "modTableKinds.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

/// The columns one behind the other; those that would end behind what a drawing reaches aren't among them.
std::vector<CutField> FieldsOf(const std::vector<ProfileColumn>& columns) {
  std::vector<CutField> fields;
  int64_t lEnd = 0;
  for (const ProfileColumn& column : columns) {
    const int64_t lStart = lEnd + 1;
    lEnd += std::abs(int64_t{column.lWidth});
    if (lEnd > kWidestCut) break;
    fields.push_back({static_cast<int32_t>(lStart), static_cast<int32_t>(lEnd)});
  }
  return fields;
}

/// The fields of a ruler whose blanks belong to the field in front of them, from the first character to the last of the
/// widest line.
std::vector<CutField> FieldsOfRuler(std::string_view sRuler, int32_t lWidest) {
  std::vector<CutField> fields;
  int32_t lStart = 1;
  for (size_t nBlank = sRuler.find(' '); nBlank != std::string_view::npos; nBlank = sRuler.find(' ', nBlank + 1)) {
    fields.push_back({lStart, static_cast<int32_t>(nBlank) + 1});
    lStart = fields.back().lEnd + 1;
  }
  fields.push_back({lStart, std::max(lStart, std::min(lWidest, kWidestCut))});
  return fields;
}

void DrawTable(const ReportPreview& preview, const std::vector<ProfileColumn>& columns, CutPicture& picture) {
  DrawnTable& table = picture.tables.emplace_back();
  table.fields = FieldsOf(columns);
  table.letters.resize(table.fields.size());
  for (size_t i = 0; i < std::min(table.letters.size(), preview.columns.size()); ++i) {
    table.letters[i] = preview.columns[i].sLetters;
  }
  // A first column that can't be drawn can't be changed here either.
  picture.nCurrent = table.fields.empty() && !columns.empty() ? -1 : 0;
  picture.lTableFrom = preview.lFirstLine;
  picture.lTableTo = std::numeric_limits<int64_t>::max();
  auto itRow = preview.rows.begin();
  for (CutLine& line : picture.lines) {
    if (line.lLine >= preview.lFirstLine) line.nTable = 0;
    while (itRow != preview.rows.end() && itRow->lLine < line.lLine) ++itRow;
    if (itRow == preview.rows.end() || itRow->lLine != line.lLine) continue;
    line.sMarks = LossMarks(*itRow, preview.columns);
  }
  if (table.fields.size() < columns.size()) {
    picture.notes.push_back(
        {Translate("Columns that end behind this character are not drawn:") + " " + std::to_string(kWidestCut), true});
  }
}

}  // namespace

PreviewRequest clsProfileCut::Request() const {
  const frmMain& main = form_.Owner();
  PreviewRequest request = main.Report();
  request.text.lMostBytes = kBytes;
  request.lTabSize = 0;  // a tab is one character of a profile's column
  request.lRows = std::clamp<int64_t>(kCells / std::max(1, form_.fgGrid.Rows()), 1, kLines);
  return request;
}

ProfileCut clsProfileCut::Cut(const CutProposal* pProposal) const {
  ProfileCut cut;
  cut.bTrim = form_.Owner().Trims();
  ParseStartCell(form_.Owner().sStartColRow, cut.start);
  if (pProposal == nullptr) {
    cut.columns = form_.Columns();
    return cut;
  }
  for (const CutField& field : pProposal->fields) {
    ProfileColumn& column = cut.columns.emplace_back();
    column.lWidth = field.lEnd - field.lStart + 1;
  }
  return cut;
}

PreviewRequest clsProfileCut::Report() {
  return form_.Owner().bIsUnicode ? PreviewRequest() : Request();
}

CutPicture clsProfileCut::Look(const CutProposal* pProposal) {
  const PreviewRequest request = Request();
  CutPicture picture;
  picture.sInput = request.sInput;
  if (!IsOneInput(request.sInput, picture)) return picture;
  if (form_.Owner().bIsUnicode) {
    picture.sFault = Translate("A file of UTF-16 text can't be shown here.");
    return picture;
  }
  if (!DrawStretches(ReadStretches(request, {{1, kLines}}, kCharacters), picture)) return picture;
  const ProfileCut cut = Cut(pProposal);
  ReportPreview preview = PreviewByColumns(request, cut);
  DrawTable(preview, cut.columns, picture);
  picture.titles = ColumnTitles(preview);
  if (!preview.sFault.empty()) picture.notes.push_back({preview.sFault, true});
  if (!preview.rows.empty()) picture.notes.push_back(LossNote(preview));
  picture.cells = std::move(preview.rows);
  for (PreviewRow& row : picture.cells) row.sText.clear();
  return picture;
}

void clsProfileCut::Change(const CutChange& change) {
  form_.ChangeFields(change);
}

/// Values that begin where their column does more often than not are aligned to the left.
void clsProfileCut::Take(const CutProposal& proposal) {
  std::vector<int32_t> lLeft(proposal.fields.size());
  PreviewRequest request = Request();
  const ReportPreview preview =
      PreviewByColumns(request, {.columns = Cut(&proposal).columns, .bTrim = false, .start = {}});
  for (const PreviewRow& row : preview.rows) {
    for (size_t i = 0; i < std::min(lLeft.size(), row.cells.size()); ++i) {
      const std::string_view sCell = row.cells[i];
      if (TrimBlanks(sCell).empty()) continue;
      lLeft[i] += sCell.front() == ' ' ? -1 : 1;
    }
  }
  std::vector<bool> left;
  for (const int32_t l : lLeft) left.push_back(l > 0);
  form_.TakeFields(proposal.fields, left);
}

std::vector<CutProposal> clsProfileCut::WorkOut(std::string& sFault) {
  PreviewRequest request = Request();
  clsReportLines report;
  Failure failure;
  if (!report.Read(request.sInput, request.text, 0, failure)) {
    sFault = failure.sText;
    return {};
  }
  int32_t lWidest = 0;
  TableBlock all;
  for (size_t n = 0; n < report.Lines().size(); ++n) {
    lWidest = std::max(lWidest, report.Lines()[n].lWidth);
    if (!report.Lines()[n].IsBlank()) all.rows.push_back(n);
    all.nLast = n;
  }
  std::vector<CutProposal> proposals;
  const auto add = [&](const std::string& sRuler, std::string sName) {
    if (sRuler.empty()) return;
    std::vector<CutField> fields = FieldsOfRuler(sRuler, lWidest);
    if (proposals.empty() || proposals.back().fields != fields)
      proposals.push_back({std::move(sName), std::move(fields)});
  };
  const std::vector<TableKind> kinds = FindTableKinds(report);
  const auto largest = std::max_element(kinds.begin(), kinds.end(),
                                        [](const TableKind& a, const TableKind& b) { return a.lRows < b.lRows; });
  if (largest != kinds.end()) add(largest->sRuler, Translate("Worked out from the rows of the largest table"));
  if (!all.rows.empty()) add(RulerOfBlocks(report, std::span(&all, 1)), Translate("Worked out from all lines"));
  if (proposals.empty()) sFault = Translate("No column of characters is blank in all lines.");
  return proposals;
}

}  // namespace quillon
