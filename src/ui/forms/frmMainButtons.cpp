// The buttons of the main form that ask for files and folders or open an editor.

#include <array>
#include <utility>

#include "frmExportBuilder.h"
#include "frmMain.h"
#include "frmSpecifyFixedWidthText.h"
#include "modPaths.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

void frmMain::cmdInputBrowse_Click() {
  FileQuestion question;
  question.sTitle = Translate("Select Text File to Convert");
  question.filters = FiltersOf(Translate("Text (ASCII) Files") + " (*.txt)|*.txt|" + Translate("All Files (*.*)|*.*"));
  const std::string& sNow = Get("cbInputFile").sText;
  const std::string sChosen = PickFile(screen_, question, sNow.empty() ? gsAppDataFolder : sNow);
  if (!sChosen.empty()) SetComboText("cbInputFile", sChosen);
}

void frmMain::cmdSelectInputFolder_Click() {
  const std::string sChosen = PickFolder(screen_, Get("cbInputFile").sText);
  if (!sChosen.empty()) SetComboText("cbInputFile", JoinPath(sChosen, "*.TXT"));
}

void frmMain::cmdOutputBrowse_Click() {
  FileQuestion question;
  question.sTitle = Translate("Select Output File");
  question.bMayBeNew = true;
  question.filters = FiltersOf(Translate("Comma Delimited") + " (*.csv)|*.csv|" + Translate("Excel Files") +
                               " (*.xls;*.xlsx)|*.xls;*.xlsx|" + Translate("XLSX") + " (*.xlsx)|*.xlsx|" +
                               Translate("XLS") + " (*.xls)|*.xls|" + Translate("All Files (*.*)|*.*"));
  const std::string sExtension = UpperText(ExtensionOfPath(Get("cbOutputFile").sText));
  constexpr std::array<std::pair<std::string_view, int>, 4> kFirst{{{"CSV", 1}, {"XLS", 4}, {"XLSX", 3}, {"TXT", 5}}};
  for (const auto& [sKnown, lIndex] : kFirst) {
    if (sExtension == sKnown) question.lFilterIndex = lIndex;
  }
  const std::string sChosen = PickFile(screen_, question, Get("cbOutputFile").sText);
  if (!sChosen.empty()) SetComboText("cbOutputFile", sChosen);
}

void frmMain::cmdSelectOutputFolder_Click() {
  const std::string sOld = Get("cbOutputFile").sText;
  const std::string sChosen = PickFolder(screen_, sOld);
  if (!sChosen.empty()) SetComboText("cbOutputFile", JoinPath(sChosen, "*." + ExtensionOfPath(sOld)));
}

void frmMain::cmdRecipeBrowse_Click() {
  FileQuestion question;
  question.sTitle = Translate("Select Recipe File");
  question.filters = FiltersOf(Translate("Recipe Files") + " (*.rcp)|*.rcp|" + Translate("All Files (*.*)|*.*"));
  const std::string& sNow = Get("cbRecipeFile").sText;
  const std::string sChosen = PickFile(screen_, question, sNow.empty() ? gsAppDataFolder : sNow);
  if (!sChosen.empty()) SetComboText("cbRecipeFile", sChosen);
}

// Cancel clears the mark of a changed job, even one set before the editor was opened.
void frmMain::cmdEditProfile_Click() {
  frmSpecifyFixedWidthText editor(*this);
  editor.bSaved = bAskToSaveBMKFileBeforeExit;
  sActiveFixedWidthProfile = Get("cbFixedWidthProfileList").sText;
  editor.Form_Load();
  screen_.ShowModal(editor);
  ShowProfile(sActiveFixedWidthProfile);
  bAskToSaveBMKFileBeforeExit = editor.bSaved;
}

void frmMain::cmdEditRecipe_Click() {
  frmExportBuilder editor(*this);
  // Text and count live on between two openings of the editor.
  editor.ExportSpecs = sLastRecipeText_;
  editor.TableCounter = lLastTableCounter_;
  editor.Form_Load();
  editor.LoadRecipeIntoEditor(Get("cbRecipeFile").sText);
  screen_.ShowModal(editor);
  sLastRecipeText_ = editor.ExportSpecs;
  lLastTableCounter_ = editor.TableCounter;
  SetComboText("cbRecipeFile", editor.sLastRecipeFileName);
}

}  // namespace quillon
