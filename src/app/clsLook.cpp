#include "clsLook.h"

#include <cstdio>

#include "MainModule.h"
#include "clsOutputFile.h"
#include "clsQuietHost.h"
#include "clsRecipe.h"
#include "modConversionRun.h"
#include "modFiles.h"
#include "modFrontDoor.h"
#include "modInputChoices.h"
#include "modRecipeKind.h"
#include "modReportPage.h"
#include "modReportText.h"
#include "modSettings.h"
#include "modShortTable.h"
#include "modStandardStreams.h"
#include "modSystemIo.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

clsLook::clsLook(const LookRequest& request) : request_(request) {
  ResetConversionOptions();
  SetPathsForReading();
  clsQuietHost host;
  // A language is used if the desktop program chose one; none is chosen here.
  if (!GetLanguage().empty()) InitializeTranslator(host, {});
  gbCommandLineMode = true;
  clsConversionOptions options = request.options;
  TakePageOfCall(options, request.sRecipe);
  preview.sInput = request.sInput;
  preview.text = {.bUnix = request.options.bUnix, .pCodePage = SystemCodePage(), .bReport = true};
  ReportInput().bFindKinds = true;
  ApplyInputChoices(options);
  preview.lTabSize = request.options.lTabSize;
  preview.lTable = request.lTable;
  preview.lRows = request.lRows;
}

clsLook::~clsLook() {
  for (const std::string& sNote : ReportNotes(preview.sInput)) {
    Say("note: " + WithoutControls(request_.sInput) + ": " + sNote);
  }
  ResetReportInput();
  ResetTranslator();
}

bool clsLook::Refuse(std::string_view sText, int nStatus) {
  Say(sText);
  nRefused_ = nStatus;
  return false;
}

/// The file is a long-form recipe.
bool clsLook::IsSpecification() {
  const std::string& sName = request_.sSpecification;
  if (FolderExists(sName)) return Refuse(sName + ": this is a folder; name a long-form recipe in it", kExitWrongUse);
  clsSectionFile file;
  Failure failure;
  if (!file.Open(sName, {preview.text.bUnix, preview.text.pCodePage}, failure)) {
    return Refuse(failure.sText, kExitSomeFailed);
  }
  const std::string sWrong = WrongKindOfRecipe(file, sName, true);
  return sWrong.empty() || Refuse(sWrong, kExitSomeFailed);
}

bool clsLook::OpenSpecification() {
  if (!IsSpecification()) return false;
  clsQuietHost host;
  RecipeOptions options;
  options.text = preview.text;
  options.bSayMore = true;
  FileAccount account;
  RecipeContext context{host, options, longRecipe_, gLineProcessor(), account};
  Failure failure;
  try {
    longRecipe_.LoadFromFile(context, request_.sSpecification);
  } catch (const UnhandledFailure& unhandled) {
    return Refuse(unhandled.what(), kExitSomeFailed);
  }
  if (!host.Fault().empty()) return Refuse(request_.sSpecification + ": " + host.Fault(), kExitSomeFailed);
  if (!recipe.Open(longRecipe_.ExportSpecFileName, options.RecipeText(), failure)) {
    return Refuse(failure.sText, kExitSomeFailed);
  }
  if (preview.sInput.empty()) preview.sInput = ExpandedPath(longRecipe_.InputFileNameOf(longRecipe_.InputFileFirst));
  return true;
}

bool clsLook::TakeInput() {
  Failure failure;
  if (!request_.sSpecification.empty() && !OpenSpecification()) return false;
  if (preview.sInput == "-") {
    if (privateFolder_.PathOf("").empty()) return Refuse(clsPrivateFolder::kNoPlace, kExitSomeFailed);
    preview.sInput = privateFolder_.InputFile();
    return StandardInputToFile(preview.sInput, failure) || Refuse(failure.sText, kExitSomeFailed);
  }
  if (preview.sInput.empty()) return Refuse("INPUT is missing: name the report, or - (see --help)", kExitWrongUse);
  if (FolderExists(preview.sInput)) {
    return Refuse(preview.sInput + ": this is a folder; name a report in it", kExitWrongUse);
  }
  int64_t nBytes = 0;
  const int nHandle = OpenOrdinaryFile(preview.sInput, nBytes, failure);
  if (nHandle < 0) return Refuse(failure.sText, kExitSomeFailed);
  CloseHandle(nHandle);
  return true;
}

bool clsLook::OpenMarks() {
  clsQuietHost host;
  RecipeOptions options;
  options.text = preview.text;
  FileAccount account;
  clsRecipe marked;
  RecipeContext context{host, options, marked, gLineProcessor(), account};
  const std::string sFile = privateFolder_.PathOf("marks.rcp");
  marked.ExportSpecs.FileCreateShort(context, preview.sInput, sFile);
  Failure failure;
  marksDropped_ = account.leftOut;
  if (!host.Fault().empty()) return Refuse(host.Fault(), kExitSomeFailed);
  if (!recipe.Open(sFile, options.OwnText(), failure)) return Refuse(failure.sText, kExitSomeFailed);
  if (CountShortTables(recipe) > 0) return true;
  SayHints();
  return Refuse(request_.sInput + ": no table is marked in this report", kExitSomeFailed);
}

bool clsLook::OpenRecipe() {
  if (request_.bMarkup) return OpenMarks();
  if (Specs() != nullptr) return true;
  if (FolderExists(request_.sRecipe)) {
    return Refuse(request_.sRecipe + ": this is a folder; name a recipe in it", kExitWrongUse);
  }
  Failure failure;
  // A recipe beside a report of a named page is UTF-8 if it looks so, else of the same page.
  std::string sBytes;
  TextFileOptions text = preview.text;
  if (!ReadWholeFile(request_.sRecipe, sBytes, clsSectionFile::kMaxBytes, failure)) {
    return Refuse(failure.sText, kExitSomeFailed);
  }
  if (&DetectCodePage(sBytes) == &clsCodePage::Utf8()) text.pCodePage = &clsCodePage::Utf8();
  if (text.pCodePage == nullptr) text.pCodePage = &clsCodePage::Windows1252();
  if (!recipe.OpenMemory(sBytes, text)) return Refuse(request_.sRecipe + ": too large for a recipe", kExitSomeFailed);
  const std::string sWrong = WrongKindOfRecipe(recipe, request_.sRecipe, false);
  return sWrong.empty() || Refuse(sWrong, kExitSomeFailed);
}

bool clsLook::SayHints() {
  const bool bShort = !request_.bMarkup && Specs() == nullptr;
  const std::vector<std::string> hints = bShort ? RecipeHints(recipe) : marksDropped_;
  for (const std::string& sHint : hints) Say(RecipeName() + ": " + sHint);
  return !hints.empty();
}

void clsLook::Say(std::string_view sText) {
  std::fputs(("quillon: " + WithoutControls(sText, "\n") + "\n").c_str(), stderr);
}

void clsLook::Print(std::string_view sLine) {
  sOut_.append(TrimRightBlanks(sLine)).append("\n");
}

bool clsLook::Flush() {
  const bool bDone = std::fwrite(sOut_.data(), 1, sOut_.size(), stdout) == sOut_.size() && std::fflush(stdout) == 0;
  if (!bDone) Say("standard output can't be written");
  sOut_.clear();
  return bDone;
}

}  // namespace quillon
