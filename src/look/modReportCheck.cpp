#include "modReportCheck.h"

#include <algorithm>

#include "clsLineProcessor.h"
#include "clsQuietHost.h"
#include "clsRecipe.h"
#include "clsTidyLines.h"
#include "modShortTable.h"
#include "modText.h"
#include "modTidyKeys.h"
#include "modTidyRecipe.h"

namespace quillon {

namespace {

/// One check of one report.
class clsReportLook {
 public:
  clsReportLook(const PreviewRequest& request, clsSectionFile& recipe) : request_(request), recipe_(recipe) {
    options_.text = request.text;
  }

  ReportCheck Check(const std::vector<ReportPreview>& cutTables, clsLineFollower* pFollower) {
    if (!ReadTables() || !Open()) return std::move(check_);
    clsMixedProof proof(check_.tables, CutsOf(cutTables), {.nAgreeing = 10000, .nDisagreeing = 1000}, pFollower);
    if (proof.MustLearn() && !Learn(proof)) return std::move(check_);
    clsTidyReport report(check_.tables, proof);
    const bool bTidy = !check_.tables.empty();
    const bool bRead =
        EachLine([&](int64_t lLine, std::string_view sLine) { bTidy ? report.Line(sLine) : proof.Line(lLine, sLine); });
    if (bTidy) report.End();
    for (size_t i = 0; i < check_.tables.size(); ++i) {
      check_.states.push_back(report.State(i));
      proof.AddLeft(check_.states.back().left);
    }
    if (bRead) check_.proof = proof.Finish();
    return std::move(check_);
  }

 private:
  bool Fault(std::string_view sText) {
    check_.sFault = sText;
    return false;
  }

  bool ReadTables() {
    const clsTidyTables tidy(recipe_);
    TidyFault fault;
    const auto lTables = static_cast<int32_t>(CountShortTables(recipe_));
    if (tidy.Any() && !tidy.Check(lTables, fault)) return Fault(fault.sText);
    FileAccount account;
    clsRecipe ownRecipe;
    clsLineProcessor lineProcessor;
    RecipeContext context{host_, options_, ownRecipe, lineProcessor, account};
    for (int32_t lTable = 1; lTable <= lTables; ++lTable) {
      if (!tidy.Has(lTable)) continue;
      TidyTable& table = check_.tables.emplace_back();
      if (!tidy.Read(lTable, table, fault)) return Fault(fault.sText);
      if (!table.sParsing.empty() && !PlaceRuler(context, request_.sInput, table, fault)) {
        return Fault(fault.IsSet() ? fault.sText : host_.Fault());
      }
    }
    return true;
  }

  bool Open() {
    Failure failure;
    if (!reader_.Open(request_.sInput, options_.text, failure)) return Fault(failure.sText);
    // The page is found out once.
    options_.text.pCodePage = &reader_.CodePage();
    return true;
  }

  template <typename TakeLine>
  bool EachLine(TakeLine takeLine) {
    clsTidyLines lines(reader_, request_.lTabSize);
    for (std::string_view sLine; lines.Next(sLine);) takeLine(reader_.RowNumber(), sLine);
    return !reader_.LastFailure().Failed() || Fault(reader_.LastFailure().sText);
  }

  bool Learn(clsMixedProof& proof) {
    const bool bRead = EachLine([&](int64_t lLine, std::string_view sLine) { proof.Learn(lLine, sLine); });
    proof.LearnedAll();
    return bRead && Open();
  }

  const PreviewRequest& request_;
  clsSectionFile& recipe_;
  clsQuietHost host_;
  RecipeOptions options_;
  clsLineReader reader_;
  ReportCheck check_;
};

}  // namespace

bool ReportCheck::AllValuesFit() const {
  return std::all_of(states.begin(), states.end(), [](const TidyTableState& state) { return state.lMisfits == 0; });
}

bool ReportCheck::IsWhole() const {
  return sFault.empty() && proof.lLikeRows == 0 && proof.lMeantLikeRows == 0 && proof.lFigureLines == 0 &&
         proof.pages.lPages == 0 && !proof.loss.Any() && proof.lTotalsDisagree == 0 && AllValuesFit();
}

ReportCheck CheckReport(const PreviewRequest& request, clsSectionFile& recipe,
                        const std::vector<ReportPreview>& cutTables, clsLineFollower* pFollower) {
  return clsReportLook(request, recipe).Check(cutTables, pFollower);
}

std::vector<CutTable> CutsOf(const std::vector<ReportPreview>& previews) {
  std::vector<CutTable> cuts;
  for (const ReportPreview& preview : previews) {
    CutTable& cut = cuts.emplace_back();
    cut.lNumber = preview.lTable;
    if (preview.lFirstLine < 1 || preview.lRows < 1) continue;
    cut.lFirstLine = preview.lFirstLine;
    cut.lLastLine = preview.lFirstLine + preview.lRows - 1;
    for (const PreviewColumn& column : preview.columns) {
      cut.places.push_back({column.lStart, column.lEnd});
      cut.names.push_back(column.sLetters);
    }
  }
  return cuts;
}

std::set<int32_t> TidyTablesIn(clsSectionFile& recipe) {
  return TidyTablesOf(SectionsOf(recipe));
}

}  // namespace quillon
