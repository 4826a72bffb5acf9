#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clsExportSpecs.h"
#include "clsWorkingFile.h"

namespace quillon {

/// The current recipe: how one report (short form) or up to twelve of them (long form) become a sheet.
///
/// A conversion calls LoadFromFileShort or LoadFromMarks, then ReadExportSpecs, then RunRecipe.
class clsRecipe {
 public:
  static constexpr int32_t kFileSlots = 12;

  std::string OutputFileTitle;
  std::string OutputFileName;
  int32_t InputFileFirst = 1;  ///< First file slot of the period range
  int32_t InputFileLast = 1;   ///< Last file slot of the period range
  std::string ExportSpecFileName;
  std::string WriteDataFormat;  ///< "NearestCent", "NearestDollar" or empty
  std::string Sheet1Name;
  std::string Sheet2Name;
  std::vector<std::string> InputFileTitle;  ///< Always twelve
  std::vector<std::string> InputFileName;   ///< Always twelve
  clsExportSpecs ExportSpecs;

  clsRecipe() { ResetRecipe(); }
  /// All but ExportSpecs as at construction.
  void ResetRecipe();
  /// The file name of a slot from 1; "" outside the twelve.
  const std::string& InputFileNameOf(int32_t lSlot) const;

  /// Makes the export specification for the file named by gsInputFile, by the short recipe. Reports -5500 and goes on.
  /// The specification isn't read back: ReadExportSpecs does that. In an unattended batch a recipe that says all by
  /// itself, and gave no cause to say anything, is made one of once: the file that it left stays as it is.
  void LoadFromFileShort(RecipeContext& context, std::string_view short_recipe);
  /// The same by the marks in gsInputFile itself, through _AutoRecipe.rcp in gsAppDataFolder. A run that
  /// is given up meanwhile leaves nothing.
  void LoadFromMarks(RecipeContext& context);
  /// Reads the export specification that was loaded last and puts it to its public name. False if there is no such
  /// file; ExportSpecs then keeps its content.
  bool ReadExportSpecs(RecipeContext& context);
  /// Why the specification loaded last is not there or was not taken.
  const Failure& SpecsFailure() const { return specsFailure_; }

  /// The long form, with its export specification. Reports -5501 to -5504. A number that is none throws
  /// UnhandledFailure.
  void LoadFromFile(RecipeContext& context, std::string_view file_name);
  /// Sets the keys of the long form in the file, and those of the export specification in its. False with the reason.
  bool SaveToFile(RecipeContext& context, std::string_view file_name, Failure& failure);

 private:
  /// What a short recipe came to, for the next file of a batch.
  struct LoadedShort {
    std::string sRecipe, sSpecs;
    FileState state;
    const clsCodePage* pPage;
    bool bUnix;
    clsExportSpecs specs;
  };
  void LoadShort(RecipeContext& context, std::string_view short_recipe, const OwnShortRecipe* pOwn);
  bool TakeLoaded(const RecipeContext& context, std::string_view short_recipe);
  void KeepLoaded(const RecipeContext& context);
  bool ReadSpecs(RecipeContext& context);
  void ReadOutputKeys(clsSectionFile& file, std::string_view file_name);

  Failure specsFailure_;
  clsWorkingFile ownSpecs_;  ///< The specification of a short recipe until it is read
  std::optional<LoadedShort> loading_, loaded_;
  bool bTaken_ = false;  ///< ExportSpecs is that of loaded_
};

}  // namespace quillon
