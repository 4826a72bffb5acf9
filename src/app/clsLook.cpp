#include "clsLook.h"

#include <cstdio>

#include "MainModule.h"
#include "clsOutputFile.h"
#include "clsQuietHost.h"
#include "clsRecipe.h"
#include "modConversionRun.h"
#include "modFiles.h"
#include "modInputChoices.h"
#include "modReportText.h"
#include "modSettings.h"
#include "modStandardStreams.h"
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
  OverrideSystemCodePage(clsCodePage::Find(request.options.sEncoding), EqualNoCase(request.options.sEncoding, "auto"));
  preview.sInput = request.sInput;
  preview.text = {.bUnix = request.options.bUnix, .pCodePage = SystemCodePage(), .bReport = true};
  ReportInput().bFindKinds = true;
  ApplyInputChoices(request.options);
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

bool clsLook::TakeInput() {
  if (preview.sInput == "-") {
    Failure failure;
    privateFolder_.PathOf("");
    preview.sInput = privateFolder_.InputFile();
    if (StandardInputToFile(preview.sInput, failure)) return true;
    Say(failure.sText);
    return false;
  }
  if (!IsFile(preview.sInput)) {
    Say(preview.sInput + (FolderExists(preview.sInput) ? ": this is a folder; name a report" : ": no such file"));
    return false;
  }
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
  if (host.Fault().empty() && recipe.Open(sFile, options.OwnText(), failure)) return true;
  Say(host.Fault().empty() ? failure.sText : host.Fault());
  return false;
}

bool clsLook::OpenRecipe() {
  if (request_.bMarkup) return OpenMarks();
  Failure failure;
  // A recipe beside a report of a named page is UTF-8 if it looks so, else of the same page.
  std::string sBytes;
  TextFileOptions text = preview.text;
  if (!ReadWholeFile(request_.sRecipe, sBytes, clsSectionFile::kMaxBytes, failure)) {
    Say(failure.sText);
    return false;
  }
  if (&DetectCodePage(sBytes) == &clsCodePage::Utf8()) text.pCodePage = &clsCodePage::Utf8();
  if (text.pCodePage == nullptr) text.pCodePage = &clsCodePage::Windows1252();
  if (recipe.OpenMemory(sBytes, text)) return true;
  Say(request_.sRecipe + ": too large for a recipe");
  return false;
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
