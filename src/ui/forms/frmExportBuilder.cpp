#include "frmExportBuilder.h"

#include <algorithm>

#include "clsOutputFile.h"
#include "frmMain.h"
#include "modFiles.h"
#include "modFormTranslation.h"
#include "modHelp.h"
#include "modPaths.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"
#include "modWindowPlacement.h"

namespace quillon {

namespace {

constexpr std::string_view kSection = "frmExportBuilder";
constexpr int kRecipeTopic = 13;

bool IsTableHead(std::string_view sRow) {
  return sRow.find("[Table ") != std::string_view::npos && sRow.find("Col") == std::string_view::npos;
}

int32_t CountTables(std::string_view sRecipe) {
  int32_t lTables = 0;
  for (size_t nFrom = 0; nFrom < sRecipe.size();) {
    const size_t nEnd = std::min(sRecipe.find('\n', nFrom), sRecipe.size());
    lTables += IsTableHead(sRecipe.substr(nFrom, nEnd - nFrom)) ? 1 : 0;
    nFrom = nEnd + 1;
  }
  return lTables;
}

}  // namespace

std::string BytesOfRecipe(std::string_view sText) {
  const clsCodePage* const pPage = SystemCodePage();
  const clsCodePage& page = pPage != nullptr ? *pPage : clsCodePage::Windows1252();
  if (!page.CanEncode(sText)) return std::string(kUtf8Bom).append(sText);
  std::string sBytes = page.FromUtf8(sText);
  // Found by content, they would read as another text.
  const bool bMisread = pPage == nullptr && sBytes != sText && &DetectCodePage(sBytes) == &clsCodePage::Utf8();
  return bMisread ? std::string(kUtf8Bom).append(sText) : sBytes;
}

frmExportBuilder::frmExportBuilder(frmMain& owner) : clsForm("frmExportBuilder"), oOwner_(owner) {
  sCaption = "Recipe Editor";
  clsControl& editor = Add(ControlKind::TextBox, "txtFileEditor");
  editor.sTag = "TranslateFalse";
  Add(ControlKind::Frame, "frameButtons");
  struct Row {
    const char *pName, *pCaption;
  };
  for (const Row& row : {Row{"cmdNew", "New..."}, Row{"cmdLoadFile", "Open File..."}, Row{"cmdSave", "Save"},
                         Row{"cmdSaveAs", "Save As..."}, Row{"cmdSaveAndClose", "&Save and Close"},
                         Row{"cmdAddTable", "Add Table..."}, Row{"cmdFindTables", "Find &Tables.."},
                         Row{"cmdClose", "&Close"}, Row{"cmdCancel", "Cancel"}, Row{"cmdHelp", "Help..."}}) {
    Add(ControlKind::CommandButton, row.pName, row.pCaption);
  }
  Add(ControlKind::Panel, "StatusBar1", {}, 1);
  OnChange("txtFileEditor", [this] { bDirty = true; });
  OnClick("cmdNew", [this] { cmdNew_Click(); });
  OnClick("cmdLoadFile", [this] { cmdLoadFile_Click(); });
  OnClick("cmdSave", [this] { Save(); });
  OnClick("cmdSaveAs", [this] { cmdSaveAs_Click(); });
  OnClick("cmdSaveAndClose", [this] {
    if (Save()) CloseForm();
  });
  OnClick("cmdAddTable", [this] { cmdAddTable_Click(); });
  OnClick("cmdFindTables", [this] { cmdFindTables_Click(); });
  OnClick("cmdClose", [this] { cmdClose_Click(); });
  OnClick("cmdCancel", [this] { CloseForm(); });
  OnClick("cmdHelp", [this] { OpenHelpTopic(oOwner_.Host(), kRecipeTopic); });
}

void frmExportBuilder::Form_Load() {
  TranslateForm(*this, oOwner_.Screen());
  ReadIniFile();
  if (TableCounter == 0 || TrimBlanks(ExportSpecs).empty()) {
    cmdNew_Click();
  } else {
    SetEditorText(ExportSpecs);
  }
  RefreshTitle();
  bDirty = false;
}

void frmExportBuilder::ReadIniFile() {
  constexpr double kBesideMain = 200;
  const WindowPlacement main = oOwner_.Screen().MainPlacement();
  placement = {0, main.Left + kBesideMain, main.Top + kBesideMain, 11940, 6675};
  ReadPlacement(kSection, placement);
}

void frmExportBuilder::SaveIniFile() {
  SavePlacement(kSection, placement);
}

void frmExportBuilder::SetEditorText(std::string_view sText) {
  clsControl& editor = Get("txtFileEditor");
  if (editor.sText != sText) bDirty = true;
  editor.sText = sText;
}

void frmExportBuilder::EditText(const std::vector<TextEdit>& edits) {
  for (const TextEdit& edit : edits) {
    if (nCaret >= edit.nFrom + edit.nLength) nCaret += edit.sNew.size() - edit.nLength;
    SetEditorText(edit.Applied(Get("txtFileEditor").sText));
  }
  Refresh();
}

void frmExportBuilder::MoveCaret(size_t nPlace) {
  clsControl& editor = Get("txtFileEditor");
  nCaret = std::min(nPlace, editor.sText.size());
  editor.lSelStart = static_cast<int64_t>(CharCount(std::string_view(editor.sText).substr(0, nCaret)));
  editor.lSelLength = 0;
  Refresh();
}

void frmExportBuilder::RefreshTitle() {
  sCaption = Translate("Recipe Editor - Tables = ") + std::to_string(TableCounter);
  clsControl& editor = Get("txtFileEditor");
  const auto nChars = static_cast<int64_t>(CharCount(editor.sText));
  editor.lSelStart = nChars > 0 ? nChars - 1 : 0;
  editor.lSelLength = nChars > 0 ? 1 : 0;
}

void frmExportBuilder::cmdNew_Click() {
  ExportSpecs = "[Header]\r\nProduct=QLN-B\r\nFileType=RECIPE\r\nFileFormat=1.0\r\n";
  SetEditorText(ExportSpecs);
  RefreshTitle();
}

void frmExportBuilder::LoadRecipeIntoEditor(std::string_view sFileName) {
  const std::string sPath = ExpandedPath(sFileName);
  TextFileOptions options;
  options.pCodePage = SystemCodePage();
  std::vector<std::string> rows;
  Failure failure;
  if (IsFile(sPath) && !ReadAllRows(sPath, options, rows, failure)) {
    oOwner_.Host().ShowMessage(failure.sText, sCaption, MessageIcon::Warning, MessageButtons::Ok);
  } else if (IsFile(sPath)) {
    ExportSpecs.clear();
    TableCounter = 0;
    for (const std::string& sRow : rows) {
      if (!ExportSpecs.empty() || &sRow != &rows.front()) ExportSpecs += "\r\n";
      ExportSpecs += sRow;
      TableCounter += IsTableHead(sRow) ? 1 : 0;
    }
    SetEditorText(ExportSpecs + "\r\n");
    RefreshTitle();
    Get("txtFileEditor").lSelStart = Get("txtFileEditor").lSelLength = 0;
    bDirty = false;
  }
  sLastRecipeFileName = sFileName;
  Get("StatusBar1", 1).sText = sPath;
  Refresh();
}

std::string frmExportBuilder::StartPath(FileQuestion& question) const {
  if (!sLastRecipeFileName.empty()) return sLastRecipeFileName;
  question.sFileName = oOwner_.Options().sRecipeFile;
  return gsAppDataFolder;
}

void frmExportBuilder::cmdLoadFile_Click() {
  FileQuestion question;
  question.sTitle = Translate("Select Recipe File");
  question.filters = FiltersOf(Translate("Recipe Files") + " (*.rcp)|*.rcp|" + Translate("All Files (*.*)|*.*"));
  const std::string sChosen = PickFile(oOwner_.Screen(), question, StartPath(question));
  // A cancelled dialog gives an empty name: the text stays, the names of the file go.
  LoadRecipeIntoEditor(sChosen);
}

bool frmExportBuilder::Save() {
  ExportSpecs = Get("txtFileEditor").sText;
  Failure failure;
  const std::string sPath = ExpandedPath(sLastRecipeFileName);
  const std::string sBytes = BytesOfRecipe(ExportSpecs);
  if (sPath.empty()) {
    failure = OwnFailure(Translate("Save"), Translate("The recipe has no file name yet; use Save As."));
  } else if (WriteWholeFile(sPath, sBytes, failure)) {
    bDirty = false;
    return true;
  }
  oOwner_.Host().ShowMessage(failure.sText, sCaption, MessageIcon::Warning, MessageButtons::Ok);
  return false;
}

void frmExportBuilder::cmdSaveAs_Click() {
  FileQuestion question;
  question.sTitle = Translate("Save Recipe File As");
  question.filters = FiltersOf(Translate("Recipe Files") + " (*.rcp)|*.rcp");
  question.bSave = true;
  const std::string sChosen = PickFile(oOwner_.Screen(), question, StartPath(question));
  if (sChosen.empty()) return;
  bool bWrite = true;
  if (FileExists(sChosen)) {
    bWrite = oOwner_.Host().ShowMessage(Translate("Overwrite existing file: ") + sChosen, sCaption,
                                        MessageIcon::Question, MessageButtons::NoYes) == MessageAnswer::Yes;
  }
  sLastRecipeFileName = sChosen;
  if (bWrite) {
    // What could not be written is still asked about on closing.
    if (!Save()) return;
    Get("StatusBar1", 1).sText = sChosen;
  }
  bDirty = false;
}

void frmExportBuilder::cmdAddTable_Click() {
  frmTableBuilder builder(*this);
  builder.Form_Load();
  oOwner_.Screen().ShowModal(builder);
  RefreshTitle();
}

/// The recipe of the tables that were found takes the place of the text; one undo of the editor takes it back.
void frmExportBuilder::cmdFindTables_Click() {
  const std::string sFound = oOwner_.AskForTables();
  if (sFound.empty()) return;
  const std::string& sNow = Get("txtFileEditor").sText;
  nCaret = 0;
  EditText({{0, sNow.size(), sFound}});
  TableCounter = CountTables(sFound);
  RefreshTitle();
  MoveCaret(PlaceOfTable(sFound, 1).value_or(0));
}

void frmExportBuilder::cmdClose_Click() {
  if (bDirty) {
    const MessageAnswer answer =
        oOwner_.Host().ShowMessage(Translate("You've edited the file, do you want to save your changes?"), sCaption,
                                   MessageIcon::Question, MessageButtons::YesNo);
    if (answer == MessageAnswer::Yes && !Save()) return;
  }
  CloseForm();
}

void frmExportBuilder::CloseForm() {
  SaveIniFile();
  Unloaded();
}

void frmExportBuilder::KeyReleased(int32_t lKeyCode) {
  constexpr int32_t kClose = 11;
  if (lKeyCode == kClose) cmdClose_Click();
}

bool frmExportBuilder::KeyPressed(std::string_view sKey) {
  if (sKey == "F1") OpenHelpTopic(oOwner_.Host(), kRecipeTopic);
  return sKey == "F1";
}

}  // namespace quillon
