#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "clsConversionOptions.h"
#include "clsForm.h"
#include "clsIniFile.h"
#include "clsMRU.h"
#include "clsScreen.h"
#include "modConversionRun.h"
#include "modReportPreview.h"
#include "modRunLog.h"

namespace quillon {

/// The main form: the three steps of a conversion, its menus, toolbar and log. The controls only feed the job record at
/// the moment of Convert. All collaborators outlive the form.
class frmMain : public clsForm, public clsRunWindow {
 public:
  frmMain(clsHost& host, clsScreen& screen, clsConversionOptions& options, clsRunLog& log, clsRunFields& fields);

  // Fields kept beside the controls. The settings keep them, the options dialog changes them, a run takes them.
  bool bClearOutputFileBeforeProcessing = false;
  std::string sSheetTarget = "1";
  int32_t lDelimitationCharacter = 44;
  int32_t lConversionMethod = 0;
  bool bUnix = false;
  bool bTrimFields = false;  ///< Of recipes and marks; kept in jobs alone
  int32_t lTabSize = 8;
  std::string sStartColRow = "A1";
  bool bTreatDataAsText = false;
  int32_t lUseDoubleQuotes = 1;
  bool bIsUnicode = false;
  bool bShowAdvancedOptions_Profile_Editor = false;
  std::string sCodePage;  ///< Of the reports: a name or "auto"; empty: that of the settings. Kept in jobs alone
  std::string sActiveFixedWidthProfile;
  std::string sJobFile = "*";  ///< Path of the open job; "*" when there is none
  bool bAskToSaveBMKFileBeforeExit = false;
  int32_t lLoadDemo = 0;                 ///< Example to load, 1 to 4; 0 none
  int32_t lLastOptionsTabDisplayed = 0;  ///< Within a process only
  clsMRU mruInputFile, mruOutputFile, mruRecipeFile, mruFileOpen;
  std::function<void()> onExit;      ///< Closes frmMainMDI
  std::function<void()> onTrouble;   ///< A run or its check failed or was stopped: the log tells
  std::function<void()> onMaximise;  ///< A fresh form asks for a maximised window

  /// bFirstTimeUser: opens the first example and the guide, then clears it. Throws UnhandledFailure for a number in the
  /// settings that leaves 32 bits.
  void Form_Load(bool& bFirstTimeUser);
  /// During a run: asks it to stop and waits. Otherwise asks about a changed job and saves the settings.
  void Form_Unload();
  bool KeyPressed(std::string_view sKey) override;

  void Go(int32_t& lResult);
  void ConversionJobPause();
  bool IsRunning() const { return bRunning_; }
  /// Place of the run's file in its batch, from 1, and their number; 0 before the first.
  size_t FileInHand() const { return nFile_; }
  size_t Files() const { return nFiles_; }

  void ConversionJobOpen(std::string sFile);
  void ConversionJobSave();
  void ConversionJobSaveAs();
  void CheckToSaveFileBeforeErasing();

  void SetGUIFromOptions();
  void GetOptionsFromGUI() override;
  void UpdateFileControls() override;
  void FocusOutputButtons() override;
  void DisableGUIForRunning() override { EnableForRun(false); }
  void EnableGUIForRunning() override { EnableForRun(true); }
  void UpdateMRUs() override;
  void SetBusyPointer(bool bBusy) override {
    bBusyPointer = bBusy;
    Refresh();
  }
  const std::string& Caption() const override { return sCaption; }
  bool bBusyPointer = false;

  void ReadIniFile();
  void SaveIniFile();
  void ConfigureQLNOptions();
  void mnuGettingStarted_Click();
  /// Fills a drop-down list with the profiles of the data folder, as BuildListValidProfiles does.
  void FillProfileList(clsControl& combo, std::string_view sSelect);
  /// Opens a file, explores a folder, or says that there is neither.
  void LaunchFile(std::string_view sFileToLaunch);
  bool Trims() const { return fields_.bTrimInputTextFilesPadCharacter; }
  void SetTrims(bool bTrims) { fields_.bTrimInputTextFilesPadCharacter = bTrims; }

  /// How the report is read; null: by its content.
  const clsCodePage* ReportPage() const;
  /// As the job names it, or its recipe; "" if neither does.
  std::string NameOfPage() const;
  /// The report of step 1, to be looked at: of a pattern the first file that it names.
  PreviewRequest Report() const;
  /// Lets the user choose among the tables of the report. Their recipe, with CR LF; "" if there is none.
  std::string AskForTables();
  /// The proof of a report by a recipe (UTF-8) that has other tables than tidy ones. False if the user stopped it, or
  /// the reason was told.
  bool Prove(const PreviewRequest& report, std::string_view sRecipe, ReportProof& proof);
  /// A workbook beside the report, or among the user's documents; "" without one report that is there.
  std::string ProposedOutput() const;
  /// The options that the three steps don't show and that aren't at their default, for a line of the window; "": none.
  std::string OptionsInForce() const;

  clsHost& Host() { return host_; }
  clsScreen& Screen() { return screen_; }
  const clsConversionOptions& Options() const { return options_; }

 private:
  std::vector<IniEntry> Settings();
  void MakeControls();
  void MakeMenus();
  void WireSteps();
  void WireButtons();
  void WireMenus();
  void JobChanged();
  void SetComboText(std::string_view sControl, std::string_view sText);
  void ShowMethod(int32_t lIndex);
  /// Fills the window's own list. A job may name its profile in other letters than the file has: it must not lose it.
  void ShowProfile(std::string_view sProfile);
  void FillComboFromMRU(std::string_view sControl, const clsMRU& list);
  void FillMenuFromMRU();
  void OpenRecentJob(int nIndex);
  void EnableForRun(bool bEnabled);
  std::string AskForJob();
  void ShowNotes();
  void TellNotSaved();
  bool WriteJob();  ///< False if it can't be saved
  void EnableButtonsWithTargets();
  void AddToClosing(const FileOutcome& outcome);
  void ShowClosing(bool bStopped);
  void EndRun(const UnhandledFailure& failure, std::string_view sAdvice);
  void ShowCodePage();
  void ShowOptionsInForce();
  std::string OutputOf(const std::string& sInput) const;
  void ShowOutputPath();
  bool MayReplaceEachOther();

  void cmdFindTables_Click();
  std::string WriteFoundRecipe(const std::string& sText);
  void ProposeOutput();
  std::string FirstMatch(const std::string& sPattern) const;
  void cbCodePage_Click();
  void cmdClearOptions_Click();
  void cmdProof_Click();
  std::string RecipeOfRun(const PreviewRequest& report) const;
  void cmdInputBrowse_Click();
  void cmdSelectInputFolder_Click();
  void cmdOutputBrowse_Click();
  void cmdSelectOutputFolder_Click();
  void cmdRecipeBrowse_Click();
  void cmdEditProfile_Click();
  void cmdEditRecipe_Click();
  void ExploreFolderOf(std::string_view sControl);

  clsHost& host_;
  clsScreen& screen_;
  clsConversionOptions& options_;
  clsRunLog& log_;
  clsRunFields& fields_;
  /// A setting as it was loaded: the value that would be saved for it, and what the file had.
  struct LoadedSetting {
    std::string sShown, sInFile;
  };
  std::vector<LoadedSetting> asRead_;
  mutable std::pair<std::string, std::string> firstMatch_;  ///< A pattern, and the first file that it names
  std::string sOutputOf_;                                   ///< The input that the output was chosen for
  std::vector<std::string> pages_;                          ///< Of the items of cbCodePage
  bool bRunning_ = false;
  /// Sums over the files of the run, for the closing line.
  struct Closing {
    int64_t lFiles = 0, lTables = 0, lRows = 0, lOutside = 0, lLeftOut = 0, lBehind = 0;
    int32_t lColumns = 0;
    int64_t lWritten = 0;
    ReportProof proof;
    bool bProof = false;  ///< Some lines were told apart
  } closing_;
  std::string sResult_;  ///< What the run wrote: its file, or the pattern of its files
  size_t nFile_ = 0, nFiles_ = 0;
  bool bFirstJobDialog_ = true;
  std::string sLastRecipeText_;  ///< Of the recipe editor, between two openings
  int32_t lLastTableCounter_ = 0;
};

}  // namespace quillon
