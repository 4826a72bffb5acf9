// Runs of the main form, and the line that tells what one came to.

#include <algorithm>

#include "clsTidyReport.h"
#include "frmMain.h"
#include "frmProof.h"
#include "frmWorking.h"
#include "modFailure.h"
#include "modPaths.h"
#include "modProofList.h"
#include "modProveReport.h"
#include "modRecipeGlobals.h"
#include "modRunMessages.h"
#include "modSettings.h"
#include "modStrings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

std::string Counted(int64_t lCount, const std::string& sOne, const std::string& sMany) {
  return std::to_string(lCount) + " " + (lCount == 1 ? sOne : sMany);
}

}  // namespace

void frmMain::Go(int32_t& lResult) {
  if (bRunning_) return;
  if (TrimBlanks(Get("cbOutputFile").sText).empty()) ProposeOutput();
  if (!MayReplaceEachOther()) return;
  bRunning_ = true;
  struct Ended {
    bool& bFlag;
    ~Ended() { bFlag = false; }
  } ended{bRunning_};
  sOutputOf_ = Get("cbInputFile").sText;
  nFile_ = nFiles_ = 0;
  RunExtras extras;
  extras.fileBegins = [this](size_t nFile, size_t nFiles, const std::string&) {
    nFile_ = nFile;
    nFiles_ = nFiles;
  };
  extras.fileDone = [this](const FileOutcome& outcome) { AddToClosing(outcome); };
  closing_ = {};
  clsConversionRun run(host_, options_, log_, fields_, this, std::move(extras));
  try {
    run.Go(lResult);
  } catch (const OutputFolderTooLong& failure) {
    EndRun(failure, Translate("Choose an output folder with a shorter name, or save to the original folder."));
  } catch (const UnhandledFailure& failure) {
    EndRun(failure, {});
  }
  ShowClosing(run.WasStopped());
  if (onTrouble && (log_.lErrorCount > 0 || run.WasStopped())) onTrouble();
}

/// What no file could be blamed for ends the run, and the window goes on.
void frmMain::EndRun(const UnhandledFailure& failure, std::string_view sAdvice) {
  gbProcessing = gbPauseRequested = false;
  EnableForRun(true);
  ReportEntry entry = RunEntry(kRunEnded, failure.what());
  entry.sErr3 = sAdvice;
  host_.Report(entry);
  host_.SetStatusPanel(StatusBar::Main, 3, Translate("Conversion stopped"));
  UpdateFileControls();
}

void frmMain::ConversionJobPause() {
  if (gbProcessing) {
    gbPauseRequested = true;
  } else if (bRunning_) {
    host_.SetStatusPanel(StatusBar::Main, 3, Translate("This step can't be paused. Closing the window stops it."));
  }
}

void frmMain::AddToClosing(const FileOutcome& outcome) {
  const FileAccount& account = outcome.account;
  ++closing_.lFiles;
  if (!account.bOutputWritten) return;
  ++closing_.lWritten;
  const auto lines = [&](TidyLineKind kind) { return account.tidy.lines[static_cast<size_t>(kind)]; };
  closing_.lOutside += account.tidy.bRan ? lines(TidyLineKind::Outside) : account.lLinesRead - account.lLinesInTables;
  closing_.lLeftOut += lines(TidyLineKind::LeftOut);
  if (closing_.lFiles == 1) {
    closing_.proof = account.proof;
  } else {
    // Shapes and lines are those of one report.
    closing_.proof.Add(account.proof);
    closing_.proof.shapes.clear();
  }
  closing_.bProof = closing_.bProof || account.tidy.bRan;
  int64_t lRows = 0;
  for (const TableAccount& table : account.tables) {
    lRows += table.lRows;
    closing_.lTables += table.lRows > 0 ? 1 : 0;
    closing_.lColumns = std::max(closing_.lColumns, table.lColumns);
    closing_.lBehind += table.loss.lBehind;
  }
  closing_.lRows += account.tables.empty() ? account.lLinesInTables : lRows;
}

void frmMain::ShowClosing(bool bStopped) {
  sResult_ = Get("cbOutputFile").sText;
  const Closing& sum = closing_;
  std::string sText = bStopped ? Translate("Conversion stopped") + ": " : std::string();
  if (sum.lWritten == 0) {
    sText = bStopped ? Translate("Conversion stopped") : Translate("Nothing was converted; the log tells why.");
  } else {
    if (sum.lFiles > 1) sText += Counted(sum.lWritten, Translate("file"), Translate("files")) + ", ";
    if (sum.lTables > 0) sText += Counted(sum.lTables, Translate("table"), Translate("tables")) + ", ";
    sText += Counted(sum.lRows, Translate("row"), Translate("rows"));
    if (sum.lColumns > 0) sText += ", " + Counted(sum.lColumns, Translate("column"), Translate("columns"));
    const std::string sProof = ProofSentence(sum.proof);
    if (!sProof.empty()) sText += ", " + sProof;
    sText += " " + Translate("to") + " " + sResult_.substr(BehindLastSeparator(sResult_));
    const std::string sLoss = LossSentence(sum.proof);
    if (!sLoss.empty()) sText += "; " + sLoss;
    if (sum.lOutside > 0)
      sText += "; " + Translate("Lines outside of the tables:") + " " + std::to_string(sum.lOutside);
    if (sum.lLeftOut > 0) {
      sText += "; " + Translate("Lines left out of the tables:") + " " + std::to_string(sum.lLeftOut);
    }
    if (sum.lBehind > 0) {
      sText += "; " + Translate("Characters behind the last column:") + " " + std::to_string(sum.lBehind);
    }
  }
  Get("lblClosing").sCaption = sText;
  Get("lblClosing").bVisible = true;
  Get("cmdOpenResult").bVisible = sum.lWritten > 0 && !HasWildcards(sResult_);
  Get("cmdShowResult").bVisible = sum.lWritten > 0;
  // By tables that take blocks of lines it is worked out when it is asked for.
  const bool bBlocks = options_.lConversionMethod != kMethodProfile && sum.lFiles == 1;
  Get("cmdProof").bVisible = sum.lWritten > 0 && (sum.bProof || bBlocks);
}

std::string frmMain::RecipeOfRun(const PreviewRequest& report) const {
  if (options_.lConversionMethod == kMethodMarkup) return RecipeOfMarks(report);
  std::vector<std::string> rows;
  Failure failure;
  TextFileOptions text;
  text.pCodePage = SystemCodePage();
  std::string sText;
  if (!ReadAllRows(ExpandedPath(options_.sRecipeFile), text, rows, failure)) return sText;
  for (const std::string& sRow : rows) sText += sRow + "\n";
  return sText;
}

bool frmMain::Prove(const PreviewRequest& report, std::string_view sRecipe, ReportProof& proof) {
  std::string sFault;
  frmWorking working(*this, Translate("The report is read for its proof"));
  bool bProved = false;
  if (!working.Run([&] { bProved = ProveReport(report, sRecipe, proof, sFault); })) return false;
  if (!bProved) host_.ShowMessage(sFault, sCaption, MessageIcon::Warning, MessageButtons::Ok);
  return bProved;
}

void frmMain::cmdProof_Click() {
  PreviewRequest report = Report();
  const bool bOne = closing_.lFiles == 1 && Get("cbInputFile").sText == sOutputOf_;
  const std::string sRecipe = bOne ? RecipeOfRun(report) : std::string();
  if (!closing_.bProof && !Prove(report, sRecipe, closing_.proof)) return;
  closing_.bProof = true;
  if (sRecipe.empty()) report.sInput.clear();
  frmProof dialog(*this, closing_.proof, std::move(report), sRecipe);
  dialog.Form_Load();
  screen_.ShowModal(dialog);
}

}  // namespace quillon
