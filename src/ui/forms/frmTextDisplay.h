#pragma once

#include <string>

#include "clsForm.h"
#include "clsScreen.h"

namespace quillon {

/// A small viewer of a text file's lines, in a fixed-pitch font.
class frmTextDisplay : public clsForm {
 public:
  static constexpr double kBelowMain = 400, kRightOfMain = 200;  ///< Twips from the main form's corner

  frmTextDisplay(clsHost& host, clsScreen& screen, std::string sFile);
  /// Loads the lines; a missing file gives a warning box and an empty list.
  void Form_Load();

 private:
  clsHost& host_;
  clsScreen& screen_;
  std::string sFile_;
};

/// The banner at the start.
class frmPleaseWait : public clsForm {
 public:
  frmPleaseWait();
  void Form_Load(clsScreen& screen);
  /// Product, version and maker.
  void ShowStart();
};

}  // namespace quillon
