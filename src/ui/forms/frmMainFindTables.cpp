// From a report that nobody has described yet to a job that converts it.

#include "clsOutputFile.h"
#include "frmExportBuilder.h"
#include "frmFindTables.h"
#include "frmMain.h"
#include "frmWorking.h"
#include "modFileListing.h"
#include "modFiles.h"
#include "modInputChoices.h"
#include "modPaths.h"
#include "modRecipeInput.h"
#include "modStrings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr int kMethodOfRecipes = 1;

/// Beside the report, or among the user's documents where nothing can be written there.
std::string FolderForResults(const std::string& sReport) {
  const std::string sBeside = FolderOfPath(sReport);
  return IsFolderWriteable(sReport) ? sBeside : WithSeparator(ExpandedPath("%MYDOCUMENTS%"));
}

/// The recipe with the code page of its reports, where one is chosen.
std::string WithPage(std::string_view sRecipe, std::string_view sPage) {
  constexpr std::string_view kBefore = "FileFormat=1.0\r\n";
  std::string sText(sRecipe);
  const size_t nAt = sText.find(kBefore);
  if (!sPage.empty() && nAt != std::string::npos)
    sText.insert(nAt + kBefore.size(), "CodePage=" + std::string(sPage) + "\r\n");
  return sText;
}

}  // namespace

PreviewRequest frmMain::Report() const {
  PreviewRequest request;
  request.sInput = ExpandedPath(Get("cbInputFile").sText);
  if (HasWildcards(request.sInput)) request.sInput = FirstMatch(request.sInput);
  request.text = {.bUnix = bUnix, .pCodePage = ReportPage(), .bReport = true};
  request.lTabSize = lTabSize;
  clsConversionOptions choices = options_;
  choices.sCodePage = NameOfPage();
  // A mistake in the recipe's key is told when it runs.
  if (Get("rbConversionMethod", kMethodRecipe).bChecked)
    TakeInputOfRecipe(choices, ExpandedPath(Get("cbRecipeFile").sText));
  ApplyInputChoices(choices);
  return request;
}

/// A drawing asks again at each change, so the folder is searched once for a pattern.
std::string frmMain::FirstMatch(const std::string& sPattern) const {
  const bool bSubfolders = Get("cbDoSubfolders").bChecked;
  const std::string sAsked = (bSubfolders ? "/S " : "") + sPattern;
  if (firstMatch_.first == sAsked && IsFile(firstMatch_.second)) return firstMatch_.second;
  std::vector<std::string> files;
  std::string sIgnored;
  bool bDone = false;
  BuildFileListing(sPattern, bSubfolders, files, sIgnored, true, bDone);
  firstMatch_ = {sAsked, files.empty() ? sPattern : files.front()};
  return firstMatch_.second;
}

std::string frmMain::ProposedOutput() const {
  const std::string& sInput = Get("cbInputFile").sText;
  if (HasWildcards(sInput) || !IsFile(ExpandedPath(sInput))) return {};
  const bool bBeside = IsFolderWriteable(ExpandedPath(sInput));
  const std::string sFolder = bBeside ? FolderOfPath(sInput) : FolderForResults(ExpandedPath(sInput));
  return sFolder + BaseNameOfPath(sInput) + ".xlsx";
}

void frmMain::ProposeOutput() {
  const std::string sProposed = ProposedOutput();
  if (sProposed.empty()) return;
  SetComboText("cbOutputFile", sProposed);
}

std::string frmMain::AskForTables() {
  frmFindTables dialog(*this);
  std::string sFault;
  bool bFound = false;
  const std::string sReport = Report().sInput;
  frmWorking working(*this, Translate("Looking for tables in") + " " + sReport.substr(BehindLastSeparator(sReport)));
  if (!working.Run([&] { bFound = dialog.Form_Load(sFault, working); })) return {};
  if (!bFound) {
    host_.ShowMessage(sFault, sCaption, MessageIcon::Information, MessageButtons::Ok);
    return {};
  }
  screen_.ShowModal(dialog);
  return ReplaceAll(dialog.sRecipe, "\n", "\r\n");
}

void frmMain::cmdFindTables_Click() {
  const std::string sFound = AskForTables();
  if (sFound.empty()) return;
  const std::string sRecipe = WriteFoundRecipe(sFound);
  if (sRecipe.empty()) return;
  if (!Get("rbConversionMethod", kMethodOfRecipes).bChecked) JobChanged();
  ShowMethod(kMethodOfRecipes);
  SetComboText("cbRecipeFile", sRecipe);
  // What stands there for another report isn't meant for this one.
  const bool bTheirs = sOutputOf_ != Get("cbInputFile").sText;
  if (bTheirs || TrimBlanks(Get("cbOutputFile").sText).empty()) ProposeOutput();
  Focus("cbOutputFile");
}

/// The path of the recipe, which is the report's name; "" if it can't be written. A recipe of that name that says
/// something else is only replaced if the user says so, and else left for a name with a number.
std::string frmMain::WriteFoundRecipe(const std::string& sText) {
  const std::string sReport = ExpandedPath(Get("cbInputFile").sText);
  const std::string sStem = FolderForResults(sReport) + BaseNameOfPath(sReport);
  const std::string sBytes = BytesOfRecipe(WithPage(sText, sCodePage));
  std::string sPath = sStem + ".rcp";
  std::string sThere;
  Failure failure;
  const auto same = [&] { return ReadWholeFile(sPath, sThere, sBytes.size() + 1, failure) && sThere == sBytes; };
  if (FileExists(sPath) && !same() &&
      host_.ShowMessage(Translate("Overwrite existing file: ") + sPath, sCaption, MessageIcon::Question,
                        MessageButtons::NoYes) != MessageAnswer::Yes) {
    for (int n = 2; FileExists(sPath) && !same(); ++n) sPath = sStem + "-" + std::to_string(n) + ".rcp";
  }
  if (FileExists(sPath) && same()) return sPath;
  failure = {};
  if (WriteWholeFile(sPath, sBytes, failure)) return sPath;
  host_.ShowMessage(failure.sText, sCaption, MessageIcon::Warning, MessageButtons::Ok);
  return {};
}

}  // namespace quillon
