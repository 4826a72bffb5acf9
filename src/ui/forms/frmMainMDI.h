#pragma once

#include "clsForm.h"
#include "clsScreen.h"

namespace quillon {

/// The frame around the main form: window placement and the two status bars, whose panels count from 1.
class frmMainMDI : public clsForm {
 public:
  static constexpr double kMinWidth = 6030, kMinHeight = 11000;  ///< Twips

  frmMainMDI();

  /// True on the first start of an installation, until that start has ended.
  bool bFirstTimeUser = false;
  WindowPlacement placement;  ///< What the view shows and keeps up to date

  void MDIForm_Load(clsScreen& screen);
  void ReadIniFile();
  /// Leaves the place of the normal state alone when the window isn't in it. bUnattended: writes nothing.
  void SaveIniFile(bool bUnattended);
  /// A window that is neither minimised nor maximised keeps a minimum size.
  void MDIForm_Resize();
  /// The first start has ended.
  void NoteFirstStartEnded();
};

}  // namespace quillon
