// Jobs of the main form: opening, saving, the recent ones.

#include "frmMain.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modRecipeGlobals.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr size_t kShortestJobPath = 2;

bool IsJobPath(std::string_view sJob) {
  return !sJob.empty() && sJob != "*";
}

}  // namespace

void frmMain::ConversionJobOpen(std::string sFile) {
  CheckToSaveFileBeforeErasing();
  // The run works on the one record. A section that failed leaves the flag up until a run ends well.
  if (gbProcessing || bRunning_) {
    if (!bRunning_) {
      host_.SetStatusPanel(StatusBar::Main, 3,
                           Translate("The last run failed. Let a run end well before you open a job."));
    }
    return;
  }
  sFile = sFile.empty() ? AskForJob() : ExpandedPath(sFile);
  if (sFile.empty()) return;
  // One that can't be read leaves all as it was: the job before may still be saved, and must not be over this one.
  clsConversionOptions opened = options_;
  opened.OpenConversionJob(sFile);
  sJobFile = sFile;
  options_ = std::move(opened);
  mruFileOpen.AddUniqueItemToCollection(sJobFile);
  FillMenuFromMRU();
  sCaption = FileNameOfPath(sJobFile);
  SetGUIFromOptions();
  UpdateFileControls();
  log_.LogClear(false);
  log_.LogAddText(Translate("QLN File Opened Successfully"));
  ShowNotes();
  bAskToSaveBMKFileBeforeExit = false;
}

std::string frmMain::AskForJob() {
  FileQuestion question;
  question.sTitle = Translate("Open Conversion Job");
  question.filters = FiltersOf("*.QLN|*.QLN");
  const bool bAtJob = !bFirstJobDialog_ && CharCount(sJobFile) >= kShortestJobPath;
  bFirstJobDialog_ = false;
  return PickFile(screen_, question, bAtJob ? sJobFile : AppDataFolder());
}

void frmMain::ShowNotes() {
  if (TrimBlanks(options_.sReadMe).empty()) return;
  log_.LogAddText(Translate(" ----------- QLN File Notes ------------------START") + "\r\n" + options_.sReadMe +
                  "\r\n" + options_.sReadMe2 + "\r\n" + Translate(" ----------- QLN File Notes ------------------END"));
}

void frmMain::TellNotSaved() {
  host_.ShowMessage(Translate("Unable to create file. Try a different folder such as 'My Documents'"), sCaption,
                    MessageIcon::Warning, MessageButtons::Ok);
}

/// A run may have the record in hand, with the names of its file in it.
bool frmMain::WriteJob() {
  const clsConversionOptions before = options_;
  GetOptionsFromGUI();
  const bool bSaved = options_.SaveConversionJob(sJobFile);
  if (bRunning_) options_ = before;
  return bSaved;
}

void frmMain::ConversionJobSave() {
  if (!IsJobPath(sJobFile)) return ConversionJobSaveAs();
  if (!WriteJob()) TellNotSaved();
  bAskToSaveBMKFileBeforeExit = false;
}

void frmMain::ConversionJobSaveAs() {
  FileQuestion question;
  question.sTitle = Translate("Save");
  question.bSave = question.bAsksToReplace = true;
  question.filters = FiltersOf(Translate("QLN Conversion Job (*.QLN)|*.QLN"));
  const std::string sChosen =
      PickFile(screen_, question, CharCount(sJobFile) >= kShortestJobPath ? sJobFile : std::string());
  if (sChosen.empty()) return;
  // The place that is tested is that of the job as it stood before the dialog.
  if (!IsFolderWriteable(sJobFile)) return TellNotSaved();
  sJobFile = sChosen;
  if (WriteJob()) {
    sCaption = FileNameOfPath(sJobFile);
    mruFileOpen.AddUniqueItemToCollection(sJobFile);
    FillMenuFromMRU();
  } else {
    TellNotSaved();
  }
  bAskToSaveBMKFileBeforeExit = false;
}

void frmMain::CheckToSaveFileBeforeErasing() {
  if (gbCommandLineMode || !bAskToSaveBMKFileBeforeExit || !IsJobPath(sJobFile)) return;
  const MessageAnswer answer =
      host_.ShowMessage(Translate("Changes have been made to this Conversion Job. Would you like to save it now?"),
                        Translate("Save"), MessageIcon::Question, MessageButtons::YesNo);
  if (answer == MessageAnswer::Yes) ConversionJobSave();
}

void frmMain::OpenRecentJob(int nIndex) {
  const std::string sJob = mruFileOpen.FromNewest(nIndex);
  if (FileExists(sJob)) return ConversionJobOpen(sJob);
  host_.ShowMessage(sJob + " " + Translate("does not exist."), sCaption, MessageIcon::Warning, MessageButtons::Ok);
}

}  // namespace quillon
