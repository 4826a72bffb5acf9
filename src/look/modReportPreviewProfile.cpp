// PreviewByProfile of modReportPreview: the cut of a profile.

#include <algorithm>

#include "clsRow.h"
#include "clsRowCutter.h"
#include "clsRowMeasure.h"
#include "modColumnLetters.h"
#include "modProfileFile.h"
#include "modReportPreview.h"
#include "modSettings.h"
#include "modTranslator.h"

namespace quillon {

namespace {

/// The columns that a run would give the engine. False with the fault.
bool ReadColumns(std::string_view sProfile, std::vector<ProfileColumn>& columns, std::string& sFault) {
  clsLineReader reader;
  Failure failure;
  const std::string sFound = FindProfile(sProfile);
  if (!reader.Open(sFound.empty() ? ProfilePath(sProfile) : sFound, {.bUnix = false, .pCodePage = SystemCodePage()},
                   failure)) {
    sFault = failure.sText;
    return false;
  }
  ProfileFault fault;
  for (ProfileColumn column; ReadProfileColumn(reader, column, fault);) columns.push_back(column);
  sFault = fault.Text(sProfile);
  return sFault.empty();
}

std::vector<CellwrightColumn> EngineColumns(const ProfileCut& cut) {
  std::vector<CellwrightColumn> columns;
  for (const ProfileColumn& column : cut.columns) {
    CellwrightColumn& given = columns.emplace_back();
    given.lCount = column.bRemove && column.lWidth > 0 ? -column.lWidth : column.lWidth;
    if (cut.bTrim) given.inputPad = static_cast<unsigned char>(column.lPadCharacter);
    if (cut.bTrim) given.lInputSide = column.lJustification == 1 ? 2 : 1;
    given.lOrder = column.lPosition == -1 ? static_cast<int32_t>(columns.size()) : column.lPosition;
  }
  return columns;
}

void TakeColumns(const CutPlan& plan, ReportPreview& preview) {
  constexpr int64_t kWidest = 1 << 20;
  const size_t nColumns = plan.edges.size() - 1;
  if (nColumns == 0) {  // A line is one column.
    preview.sRuler = "|";
    preview.columns = {{1, static_cast<int32_t>(kWidest), "A", {}}};
    return;
  }
  preview.columns.resize(nColumns);
  for (size_t i = 0; i < nColumns; ++i) {
    PreviewColumn& column = preview.columns[i];
    column.lStart = static_cast<int32_t>(std::min(plan.edges[i], kWidest)) + 1;
    column.lEnd = static_cast<int32_t>(std::min(plan.edges[i + 1], kWidest));
    preview.sRuler += "|" + std::string(static_cast<size_t>(std::max(0, column.lEnd - column.lStart)), '.');
  }
  for (size_t j = 0; j < plan.columns.size(); ++j) {
    const size_t nInput = plan.columns[j].nInput;
    if (nInput >= nColumns) continue;
    PreviewColumn& column = preview.columns[nInput];
    column.sLetters = ColumnLetters(static_cast<int>(j) + 1);
    for (int32_t l = column.lStart; l < column.lEnd; ++l) preview.sRuler[static_cast<size_t>(l)] = '-';
  }
}

}  // namespace

ReportPreview PreviewByProfile(const PreviewRequest& request, std::string_view sProfile) {
  ReportPreview preview;
  ProfileCut cut;
  return ReadColumns(sProfile, cut.columns, preview.sFault) ? PreviewByColumns(request, cut) : preview;
}

ReportPreview PreviewByColumns(const PreviewRequest& request, const ProfileCut& cut) {
  ReportPreview preview;
  clsLineReader reader;
  Failure failure;
  if (!reader.Open(request.sInput, request.text, failure)) {
    preview.sFault = failure.sText;
    return preview;
  }
  const CutPlan plan = MakeCutPlan(EngineColumns(cut), cut.start.nColumn, reader.CodePage());
  TakeColumns(plan, preview);
  clsRowCutter cutter(plan, reader.CodePage());
  clsRowMeasure measure(preview.columns, clsCutMeasure::Touching::IsNone);
  preview.lTable = preview.lTables = 1;
  preview.lFirstLine = cut.start.nRow;
  reader.SkipRows(cut.start.nRow - 1);
  PreviewRow taken;
  for (std::string_view sRow; reader.ReadRow(sRow);) {
    preview.bMore = reader.RowNumber() - cut.start.nRow >= request.lRows;
    if (preview.bMore && !request.bWholeTable) break;
    taken.lLine = reader.RowNumber();
    taken.sText = reader.CodePage().ToUtf8(sRow);
    taken.cells.clear();
    measure.Measure(taken, preview);
    cutter.Cut(sRow);
    for (const std::string_view sField : cutter.Fields()) taken.cells.push_back(reader.CodePage().ToUtf8(sField));
    if (!preview.bMore) preview.rows.push_back(taken);
  }
  measure.Finish(preview);
  if (reader.LastFailure().Failed()) preview.sFault = reader.LastFailure().sText;
  if (reader.AtEnd()) preview.lLastLine = reader.RowNumber();
  return preview;
}

}  // namespace quillon
