#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "clsPrivateFolder.h"
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
  clsSectionFile recipe;

  /// Copies standard input, if that is the report, and sees whether it is there. False: said.
  bool TakeInput();
  /// Reads the recipe, or makes it from the marks of the input. False: said.
  bool OpenRecipe();
  /// The recipe's name for a person, or the report's where its marks are the recipe.
  const std::string& RecipeName() const { return request_.bMarkup ? request_.sInput : request_.sRecipe; }

  /// "quillon: text" on standard error.
  static void Say(std::string_view sText);
  /// Adds a line to what goes to standard output.
  void Print(std::string_view sLine);
  void PrintText(std::string_view sText) { sOut_ += sText; }
  /// Puts all that was printed on standard output. False, said, if it couldn't be.
  bool Flush();

 private:
  bool OpenMarks();

  const LookRequest& request_;
  clsPrivateFolder privateFolder_;
  std::string sOut_;
};

}  // namespace quillon
