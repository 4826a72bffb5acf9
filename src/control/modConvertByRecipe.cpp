// One input file by the Recipe or Markup method.

#include "clsExportSpecs.h"
#include "clsIniFile.h"
#include "clsLineProcessor.h"
#include "clsRecipe.h"
#include "clsSectionFile.h"
#include "modCellTyping.h"
#include "modCollections.h"
#include "modConversionRun.h"
#include "modExcelLink.h"
#include "modExportRun.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modRecipeMessages.h"
#include "modSettings.h"
#include "modShortTable.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

/// What a large report will be searched for, so that its first pass finds it, and whether it is to be measured before
/// its rows are read. The recipe is read anew when it is loaded.
void PrepareReport(const RecipeContext& context, bool bMarks) {
  constexpr int64_t kLarge = int64_t{256} << 10;
  if (FileSizeOf(gsInputFile) < kLarge) return;
  clsReport& report = context.Report(gsInputFile);
  clsSectionFile recipe;
  Failure ignored;
  if (bMarks) return report.KeepBeginning();
  if (!recipe.Open(gsRecipeFile, context.options.RecipeText(), ignored)) return;
  std::vector<std::string> texts;
  bool bMeasured = false;
  for (std::string_view sLine; recipe.ReadLine(sLine);) {
    const size_t nEqual = sLine.find('=');
    if (nEqual == std::string_view::npos) continue;
    const std::string_view sKey = TrimBlanks(sLine.substr(0, nEqual));
    const std::string_view sValue = TrimBlanks(sLine.substr(nEqual + 1));
    if (EqualNoCase(sKey, "ReadStartLine") || EqualNoCase(sKey, "ReadEndLine")) texts.emplace_back(sValue);
    bMeasured = bMeasured || (EqualNoCase(sKey, "Parsing") && IsOpenTemplate(sValue));
  }
  report.LookOutFor(texts);
  if (bMeasured) report.KeepBeginning();
}

bool FileHasTabs(clsReport& report) {
  Failure ignored;  // The engine reports what it can't read.
  return report.Open(ignored) && report.HasTab();
}

}  // namespace

void clsConversionRun::ConvertByRecipe(int32_t& lResult) {
  gsInputFile = options_.sInputFile;
  gsOutputFile = options_.sOutputFile;
  gsRecipeFile = options_.sRecipeFile;
  glTabSize = options_.lTabSize;
  const int32_t format = OutputFormatOfPath(gsOutputFile);
  if (!RecipeRunCanStart(lResult)) return;

  const RecipeOptions recipe_options = MakeRecipeOptions();
  RecipeContext context{host_, recipe_options, gRecipe(), gLineProcessor(), outcome_.account};
  context.Watch(gsInputFile);
  PrepareReport(context, options_.lConversionMethod == kMethodMarkup);
  WarnIfTabsInFile(context);
  lResult = LoadSpecs(context);
  if (lResult != 0 || gbAbandonOutput) return;
  if (IsExcelRunning() && format != kFormatCsv) {
    host_.Report({options_.lErr, Translate("Warning"),
                  Translate("Microsoft Excel is already open. Please close it then retry."), "", EntryType::Error,
                  true});
    return;
  }
  RunSpecs(context, format);
  if (pWindow_ != nullptr) pWindow_->UpdateMRUs();
}

void clsConversionRun::RunSpecs(RecipeContext& context, int32_t lFormat) {
  const FileAccount& account = outcome_.account;
  bool given_up = false;
  if (extras_.fileDone && !options_.bKeep) {
    context.givesUp = [&] {
      return given_up = outcome_.HasErrors() || !account.sWalkEnded.empty() || !account.leftOut.empty() ||
                        account.lCellsFailed > 0 || context.recipe.ExportSpecs.SectionSequenceCollection.empty();
    };
  }
  RunRecipe(context, lFormat);
  // A recipe that is none, or a report without marks: its output is empty, and the engine has no word for that.
  const bool nothing_told = account.tables.empty() && (account.lLinesRead > 0 || given_up) &&
                            !account.failure.Failed() && context.recipe.ExportSpecs.SectionSequenceCollection.empty();
  if (nothing_told && !outcome_.HasErrors()) {
    outcome_.Fail("no table is told for it, so no line of it was written", outcome_.sInput);
  }
  if (given_up) {
    AddUntold();
    outcome_.Fail("not written, as something of it would be missing; --keep writes what there is", outcome_.sOutput);
  }
}

int32_t clsConversionRun::LoadSpecs(RecipeContext& context) {
  if (options_.lConversionMethod == kMethodMarkup) {
    context.recipe.LoadFromMarks(context);
  } else {
    context.recipe.LoadFromFileShort(context, gsRecipeFile);
  }
  if (gbAbandonOutput) return 0;  // what is missing now was only not made
  if (context.account.failure.Failed()) return RefuseUnread();
  if (context.recipe.ReadExportSpecs(context)) return 0;
  // What the recipe held before would make another file's table, or none, of this one.
  const int32_t lResult = Refuse(kNoExportSpecs, context.recipe.ExportSpecFileName);
  context.account.failure = context.recipe.SpecsFailure();
  return lResult;
}

const FileOutcome& clsConversionRun::ConvertByLongRecipe(std::string_view sOutputFile,
                                                         const std::vector<std::string>& inputs) {
  return Convert([&](int32_t& lResult) { RunLongRecipe(sOutputFile, inputs, lResult); });
}

void clsConversionRun::RunLongRecipe(std::string_view sOutputFile, const std::vector<std::string>& inputs,
                                     int32_t& lResult) {
  const clsEventLoop loop = TakeEventLoop();
  gsRecipeFile = options_.sRecipeFile;
  glTabSize = options_.lTabSize;
  const RecipeOptions recipe_options = MakeRecipeOptions();
  RecipeContext context{host_, recipe_options, gRecipe(), gLineProcessor(), outcome_.account};
  context.recipe.LoadFromFile(context, gsRecipeFile);
  if (context.account.failure.Failed()) {
    lResult = RefuseUnread();
    return;
  }
  // A box has told which key it was; without an error the output would be emptied and the run call itself done.
  if (context.recipe.SpecsFailure().Failed()) ReportRecipe(host_, kRecipeHeader, {context.recipe.ExportSpecFileName});
  NameLongRun(context.recipe, sOutputFile, inputs);
  // A section that could not be read is reported and the others run; with no section there is nothing to run.
  const bool bRuns = !outcome_.HasErrors() || !context.recipe.ExportSpecs.SectionSequenceCollection.empty();
  lResult = bRuns ? CheckOutputType() : outcome_.reasons.back().lCode;
  if (lResult == 0) lResult = CheckPeriodReports(context.recipe);
  for (const std::string& input : context.recipe.InputFileName) {
    if (!input.empty()) context.Watch(input);
    if (lResult == 0 && IsSameFile(input, gsOutputFile)) lResult = Refuse(kOutputIsInput, gsOutputFile);
  }
  if (lResult != 0) return;
  MakeFolderPath(ParentFolderOfPath(gsOutputFile));
  RunSpecs(context, OutputFormatOfPath(gsOutputFile));
}

/// The recipe's own files, those of the call in the place of its first ones.
void clsConversionRun::NameLongRun(clsRecipe& recipe, std::string_view sOutputFile,
                                   const std::vector<std::string>& inputs) {
  for (std::string& sInput : recipe.InputFileName) ExpandFolderTokens(sInput);
  for (size_t i = 0; i < inputs.size(); ++i) {
    CollectionItemSet(host_, recipe.InputFileName, static_cast<int>(i) + 1, inputs[i]);
  }
  gsOutputFile = sOutputFile.empty() ? ExpandedPath(recipe.OutputFileName) : std::string(sOutputFile);
  gsInputFile = recipe.InputFileNameOf(1);
  options_.sInputFile = outcome_.sInput = gsInputFile;
  options_.sOutputFile = outcome_.sOutput = gsOutputFile;
}

// A report that isn't there would leave an output without its rows in the place of a good one.
int32_t clsConversionRun::CheckPeriodReports(const clsRecipe& recipe) {
  if (recipe.ExportSpecs.TablesCollection.empty()) return 0;
  for (int32_t lSlot = 1; lSlot <= clsRecipe::kFileSlots; ++lSlot) {
    const bool bRead = options_.bAllPeriods ? lSlot >= recipe.InputFileFirst && lSlot <= recipe.InputFileLast
                                            : lSlot == 1 || lSlot == recipe.InputFileFirst;
    const std::string& sName = recipe.InputFileNameOf(lSlot);
    if (!bRead || IsFile(sName)) continue;
    return Refuse(kRecipeRunNoInput, sName.empty() ? "FileName" + std::to_string(lSlot) : sName);
  }
  return 0;
}

// With a recipe or report that is there and can't be read the run would write an empty output over a good one.
int32_t clsConversionRun::RefuseUnread() {
  if (!outcome_.HasErrors()) ReportRecipe(host_, kShortRecipeUnreadable, {outcome_.account.failure.sText});
  return outcome_.reasons.back().lCode;
}

bool clsConversionRun::RecipeRunCanStart(int32_t& lResult) {
  if (!IsFile(gsInputFile)) {
    lResult = Refuse(kRecipeRunNoInput, gsInputFile);
    return false;
  }
  if (options_.lConversionMethod == kMethodRecipe && !IsFile(gsRecipeFile)) {
    lResult = Refuse(kRecipeRunNoRecipe, gsRecipeFile);
    return false;
  }
  return true;
}

WorkbookOptions clsConversionRun::MakeWorkbookOptions() const {
  WorkbookOptions workbook;
  if (extras_.bSheetTarget && options_.sSheetTarget != "1") workbook.sSheet = TrimBlanks(options_.sSheetTarget);
  workbook.bReplace = options_.bReplaceWorkbook;
  workbook.bNoOverwrite = options_.bNoOverwrite;
  workbook.bBackup = options_.bBackup;
  workbook.typing.order = DateOrderOf(options_.sDateOrder).value_or(DateOrder::ByColumn);
  return workbook;
}

RecipeOptions clsConversionRun::MakeRecipeOptions() const {
  RecipeOptions recipe_options;
  recipe_options.text.bUnix = options_.bUnix;
  recipe_options.text.pCodePage = SystemCodePage();
  recipe_options.text.bReport = true;
  recipe_options.pRecipePage = extras_.recipePage.value_or(SystemCodePage());
  recipe_options.lDelimitationCharacter = options_.lDelimitationCharacter;
  recipe_options.bClearOutputFileBeforeProcessing = options_.bClearOutputFileBeforeProcessing;
  recipe_options.bSayMore = extras_.bSayMore;
  recipe_options.workbook = MakeWorkbookOptions();
  recipe_options.bTrimFields = options_.bTrimFields;
  recipe_options.bSafeCsv = options_.bSafeCsv;
  recipe_options.bAllPeriods = options_.bAllPeriods;
  recipe_options.bStrict = options_.bStrict;
  recipe_options.bKeep = options_.bKeep;
  recipe_options.lTotalTimeStart = fields_.lTotalTimeStart;
  if (pWindow_ != nullptr) recipe_options.sFormCaption = pWindow_->Caption();
  return recipe_options;
}

void clsConversionRun::WarnIfTabsInFile(const RecipeContext& context) {
  if (fields_.bWarnedAboutTabsInFile) return;  // Asked first: a long file isn't read for nothing.
  if (FileHasTabs(context.Report(gsInputFile))) WarnAboutTabsInFile();
}

void clsConversionRun::WarnAboutTabsInFile() {
  if (fields_.bWarnedAboutTabsInFile) return;
  fields_.bWarnedAboutTabsInFile = true;
  host_.Report(RunEntry(kTabsInFile));
  if (extras_.bTouchSettings) {
    WritePrivateProfileString(gsSettingsFile, "General", "bWarnedAboutTabsInFile", "TRUE");
  } else if (extras_.tabsTold) {
    extras_.tabsTold();
  }
}

}  // namespace quillon
