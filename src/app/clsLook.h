#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "clsPrivateFolder.h"
#include "clsRecipe.h"
#include "clsSectionFile.h"
#include "modLongOptions.h"
#include "modPreviewText.h"
#include "modReportPreview.h"

namespace quillon {

/// What the commands that only look at a report share: the process set up, the input, lines for standard output.
class clsLook {
 public:
  explicit clsLook(const LookRequest& request);
  ~clsLook();
  clsLook(const clsLook&) = delete;
  clsLook& operator=(const clsLook&) = delete;

  PreviewRequest preview;  ///< Filled from the command line
  clsSectionFile recipe;   ///< Of a long-form recipe: its specification

  /// Copies standard input, if that is the report, and sees whether it can be read. False: said.
  bool TakeInput();
  /// Reads the recipe, or makes it from the marks of the input. False: said.
  bool OpenRecipe();
  /// What a long-form recipe says; null for others.
  const clsExportSpecs* Specs() const { return request_.sSpecification.empty() ? nullptr : &longRecipe_.ExportSpecs; }
  /// Of what was refused: wrong use for a name that is empty or a folder's, else something that isn't there.
  int Refused() const { return nRefused_; }
  /// The recipe's name for a person, or the report's where its marks are the recipe.
  const std::string& RecipeName() const {
    if (request_.bMarkup) return request_.sInput;
    return request_.sSpecification.empty() ? request_.sRecipe : request_.sSpecification;
  }

  /// Says what of the recipe's sections is not read as it looks. True if there was something.
  bool SayHints();

  /// "quillon: text" on standard error.
  static void Say(std::string_view sText);
  /// Adds a line to what goes to standard output.
  void Print(std::string_view sLine);
  void PrintText(std::string_view sText) { sOut_ += sText; }
  /// Puts all that was printed on standard output. False, said, if it couldn't be.
  bool Flush();

 private:
  bool OpenMarks();
  bool OpenSpecification();
  bool IsSpecification();
  bool Refuse(std::string_view sText, int nStatus);

  const LookRequest& request_;
  clsPrivateFolder privateFolder_;
  clsRecipe longRecipe_;
  std::vector<std::string> marksDropped_;
  std::string sOut_;
  int nRefused_ = 1;
};

}  // namespace quillon
