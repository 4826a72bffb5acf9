#include "clsRecipe.h"

#include <chrono>
#include <string>
#include <utility>

#include "clsHeardHost.h"
#include "modCollections.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modRecipeMessages.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr std::string_view kFileType = "RECIPE";
constexpr std::string_view kOutputSection = "Output File";
constexpr std::string_view kInputSection = "Input Files";

/// The context with another host in front.
RecipeContext Through(clsHost& host, const RecipeContext& context) {
  RecipeContext through{host, context.options, context.recipe, context.lineProcessor, context.account};
  through.pReports = context.pReports;
  return through;
}

/// A file that was changed a moment ago may change once more without its time showing it.
bool IsSettled(const FileState& state) {
  using std::chrono::nanoseconds, std::chrono::seconds, std::chrono::milliseconds;
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return now - seconds(state.nSeconds) - nanoseconds(state.nNanoseconds) > milliseconds(100);
}

bool IsDataFormat(std::string_view sText) {
  return sText == "NearestDollar" || sText == "NearestCent";
}

}  // namespace

void clsRecipe::ResetRecipe() {
  OutputFileTitle.clear();
  OutputFileName.clear();
  InputFileFirst = InputFileLast = 1;
  ExportSpecFileName.clear();
  WriteDataFormat.clear();
  Sheet1Name.clear();
  Sheet2Name.clear();
  InputFileTitle.assign(kFileSlots, {});
  InputFileName.assign(kFileSlots, {});
}

const std::string& clsRecipe::InputFileNameOf(int32_t lSlot) const {
  static const std::string sNone;
  const bool bSlot = lSlot >= 1 && static_cast<size_t>(lSlot) <= InputFileName.size();
  return bSlot ? InputFileName[static_cast<size_t>(lSlot) - 1] : sNone;
}

void clsRecipe::LoadFromFileShort(RecipeContext& context, std::string_view short_recipe) {
  bTaken_ = TakeLoaded(context, short_recipe);
  if (bTaken_) return;
  loading_.emplace();
  loading_->sRecipe = short_recipe;
  loading_->state = FileState::Of(HostPath(short_recipe));
  loading_->pPage = context.options.pRecipePage;
  loading_->bUnix = context.options.text.bUnix;
  clsHeardHost host(context.host);
  RecipeContext heard = Through(host, context);
  const int64_t lAsked = context.pReports->Asked();
  LoadShort(heard, short_recipe, nullptr);
  // What was measured in a report holds for that one alone.
  if (host.Heard() || context.pReports->Asked() != lAsked) loading_.reset();
}

bool clsRecipe::TakeLoaded(const RecipeContext& context, std::string_view short_recipe) {
  if (!gbCommandLineMode || !loaded_ || loaded_->sRecipe != short_recipe) return false;
  const LoadedShort& loaded = *loaded_;
  if (loaded.pPage != context.options.pRecipePage || loaded.bUnix != context.options.text.bUnix) return false;
  if (!loaded.sSpecs.starts_with(gsAppDataFolder)) return false;  // Working files lie elsewhere now.
  if (FileState::Of(HostPath(short_recipe)) != loaded.state || !IsFile(loaded.sSpecs)) return false;
  ResetRecipe();
  InputFileName[0] = gsInputFile;
  ExportSpecFileName = loaded.sSpecs;
  specsFailure_ = {};
  ExportSpecs = loaded.specs;
  return true;
}

void clsRecipe::KeepLoaded(const RecipeContext& context) {
  loaded_ = std::exchange(loading_, std::nullopt);
  const bool bSettled = loaded_ && IsSettled(loaded_->state);
  if (!bSettled || specsFailure_.Failed() || context.account.failure.Failed() || gbAbandonOutput)
    return loaded_.reset();
  loaded_->sSpecs = ExportSpecFileName;
  loaded_->specs = ExportSpecs;
}

void clsRecipe::LoadFromMarks(RecipeContext& context) {
  clsWorkingFile recipe("_AutoRecipe", ".rcp");
  ExportSpecs.FileCreateShort(context, gsInputFile, recipe.PrivatePath());
  if (gbAbandonOutput) return;
  bTaken_ = false;
  loading_.reset();
  const OwnShortRecipe own{recipe.PublicPath(), context.options.OwnText()};
  LoadShort(context, recipe.PrivatePath(), &own);
  recipe.Publish();
}

void clsRecipe::LoadShort(RecipeContext& context, std::string_view short_recipe, const OwnShortRecipe* pOwn) {
  if (!IsFile(short_recipe)) {
    ReportRecipe(context.host, kShortRecipeUnreadable,
                 {pOwn != nullptr ? std::string_view(pOwn->sShownName) : short_recipe});
  }
  ResetRecipe();
  CollectionItemSet(context.host, InputFileName, 1, gsInputFile);
  ownSpecs_ = clsWorkingFile("_ExportSpecs", ".t2x");
  ExportSpecFileName = ownSpecs_.PublicPath();
  specsFailure_ =
      ExportSpecs.FileConvertShortToLong(context, short_recipe, ownSpecs_.PrivatePath(), InputFileNameOf(1), pOwn);
}

bool clsRecipe::ReadExportSpecs(RecipeContext& context) {
  if (bTaken_) return true;
  clsHeardHost host(context.host);
  RecipeContext heard = Through(host, context);
  if (!ReadSpecs(heard)) return false;
  if (host.Heard()) loading_.reset();
  KeepLoaded(context);
  return true;
}

bool clsRecipe::ReadSpecs(RecipeContext& context) {
  clsWorkingFile own = std::move(ownSpecs_);
  const bool bOwn = own.IsSet();
  const std::string sName = bOwn ? own.PrivatePath() : ExportSpecFileName;
  if (!IsFile(sName)) return false;
  clsSectionFile file;
  if (!file.Open(sName, bOwn ? context.options.OwnText() : context.options.RecipeText(),
                 bOwn ? specsFailure_ : context.account.failure)) {
    return !bOwn;
  }
  if (!ExportSpecs.ReadFromFile(context, file)) specsFailure_ = OwnFailure(sName, Translate("Incorrect file type!"));
  if (bOwn) own.Publish();
  return true;
}

void clsRecipe::ReadOutputKeys(clsSectionFile& file, std::string_view file_name) {
  const std::string sPlace = std::string(file_name) + ": [" + std::string(kOutputSection) + "]";
  const auto key = [&file](std::string_view sKey) { return ReadKeyFromFile(file, kOutputSection, sKey, {}); };
  OutputFileTitle = key("OutputFileTitle");
  OutputFileName = key("OutputFileName");
  InputFileFirst = RequiredWholeNumber(sPlace, "InputFileFirst", key("InputFileFirst"));
  InputFileLast = RequiredWholeNumber(sPlace, "InputFileLast", key("InputFileLast"));
  ExportSpecFileName = key("ExportSpecFileName");
  WriteDataFormat = key("WriteDataFormat");
  if (!IsDataFormat(WriteDataFormat)) WriteDataFormat.clear();
  Sheet1Name = key("Sheet1Name");
  Sheet2Name = key("Sheet2Name");
}

void clsRecipe::LoadFromFile(RecipeContext& context, std::string_view file_name) {
  const bool bExists = IsFile(file_name);
  clsSectionFile file;
  if (!bExists) {
    ReportRecipe(context.host, kNoRecipeFile, {file_name});
    ReportRecipe(context.host, kRecipeUnreadable, {file_name});
  } else {
    ResetRecipe();
    if (!file.Open(file_name, context.options.RecipeText(), context.account.failure)) return;
    if (CheckFileHeader(context.host, file, "QLN", kFileType, "1.1"))
      ReportRecipe(context.host, kRecipeHeader, {file_name});
  }
  ownSpecs_ = {};
  specsFailure_ = {};
  bTaken_ = false;
  loading_.reset();
  ReadOutputKeys(file, file_name);
  for (int32_t i = 1; i <= kFileSlots; ++i) {
    const auto input = [&](std::string_view sKey) {
      return ReadKeyFromFile(file, kInputSection, std::string(sKey) + std::to_string(i), {});
    };
    CollectionItemSet(context.host, InputFileTitle, i, input("Title"));
    CollectionItemSet(context.host, InputFileName, i, input("FileName"));
  }
  if (!ReadExportSpecs(context)) ReportRecipe(context.host, kNoSpecsFile, {ExportSpecFileName});
}

bool clsRecipe::SaveToFile(RecipeContext& context, std::string_view file_name, Failure& failure) {
  clsSectionWriter file(*context.options.OwnText().pCodePage);
  if (!file.Load(file_name, failure)) return false;
  file.Set("Header", "Product", "QLN");
  file.Set("Header", "FileType", kFileType);
  file.Set("Header", "FileFormat", "1.1");
  file.Set(kOutputSection, "OutputFileTitle", OutputFileTitle);
  file.Set(kOutputSection, "OutputFileName", OutputFileName);
  file.Set(kOutputSection, "InputFileFirst", InputFileFirst);
  file.Set(kOutputSection, "InputFileLast", InputFileLast);
  file.Set(kOutputSection, "ExportSpecFileName", ExportSpecFileName);
  file.Set(kOutputSection, "WriteDataFormat", WriteDataFormat);
  file.Set(kOutputSection, "Sheet1Name", Sheet1Name);
  file.Set(kOutputSection, "Sheet2Name", Sheet2Name);
  for (size_t i = 0; i < InputFileName.size(); ++i) {
    file.Set(kInputSection, "Title" + std::to_string(i + 1), InputFileTitle[i]);
    file.Set(kInputSection, "FileName" + std::to_string(i + 1), InputFileName[i]);
  }
  return file.Save(file_name, failure) && ExportSpecs.WriteToFile(context, ExportSpecFileName, failure);
}

}  // namespace quillon
