#include "clsReportPass.h"

#include <algorithm>
#include <chrono>

#include "clsSectionFile.h"
#include "clsTidyLines.h"
#include "clsTidyReport.h"
#include "modShortTable.h"
#include "modTidyTablesOf.h"

namespace quillon {

struct clsReportPass::Reading {
  Reading(std::vector<TidyTable> ofRecipe, int32_t lTabSize, clsReportPass& pass)
      : tables(std::move(ofRecipe)),
        proof(tables, {.nAgreeing = 10000, .nDisagreeing = 1000}),
        report(tables, pass),
        lines(reader, lTabSize) {}

  std::vector<TidyTable> tables;
  clsReportProof proof;
  clsLineReader reader;
  clsTidyReport report;
  clsTidyLines lines;
};

clsReportPass::clsReportPass() = default;
clsReportPass::~clsReportPass() = default;

bool clsReportPass::Begin(const PreviewRequest& request, std::string_view sRecipe) {
  lines_.clear();
  proof_ = {};
  bDone_ = false;
  clsSectionFile recipe;
  recipe.OpenMemory(sRecipe, {.bUnix = false, .pCodePage = &clsCodePage::Utf8()});
  PreviewRequest whole = request;
  whole.text.lMostBytes = 0;
  std::vector<TidyTable> tables;
  std::string sFault;
  const bool bTidy = ReadTidyTablesOf(request, recipe, tables, sFault) && sFault.empty();
  if (!bTidy || tables.size() != static_cast<size_t>(CountShortTables(recipe))) return false;
  reading_ = std::make_unique<Reading>(std::move(tables), request.lTabSize, *this);
  Failure failure;
  return reading_->reader.Open(whole.sInput, whole.text, failure);
}

bool clsReportPass::Step(int nMilliseconds) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + std::chrono::milliseconds(nMilliseconds);
  constexpr int kLinesAtOnce = 500;
  while (!bDone_ && Clock::now() < end) {
    std::string_view sLine;
    for (int n = 0; n < kLinesAtOnce && !bDone_; ++n) {
      reading_->lines.Next(sLine) ? reading_->report.Line(sLine) : Finish();
    }
  }
  return bDone_;
}

void clsReportPass::Finish() {
  reading_->report.End();
  for (size_t i = 0; i < reading_->tables.size(); ++i) reading_->proof.AddLeft(reading_->report.State(i).left);
  // Of a report that can't be read to its end nothing is proved.
  if (!reading_->reader.LastFailure().Failed()) proof_ = reading_->proof.Finish();
  bDone_ = true;
}

void clsReportPass::TableStarts(size_t nTable, const std::vector<TidyColumnInfo>& columns) {
  reading_->proof.TableStarts(nTable, columns);
}

void clsReportPass::Row(const TidyRecord& row) {
  reading_->proof.Row(row);
}

void clsReportPass::HeadingChanges(size_t nTable, size_t nHeading, int64_t lLine) {
  reading_->proof.HeadingChanges(nTable, nHeading, lLine);
}

void clsReportPass::Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) {
  reading_->proof.Line(lLine, sLine, kind, nTable);
  constexpr size_t kMostTables = 255;
  lines_.push_back({kind, static_cast<uint8_t>(std::min(nTable, kMostTables))});
}

}  // namespace quillon
