#pragma once

#include "clsForm.h"

namespace quillon {

class frmMain;

/// The guide: loads one of the four examples, opens their folders, or a chapter of the manual. The result is the main
/// form's lLoadDemo.
class frmGettingStarted : public clsForm {
 public:
  explicit frmGettingStarted(frmMain& owner);
  void Form_Load();
  bool KeyPressed(std::string_view sKey) override;
  void CloseRequested() override { CloseWith(0); }
  void LaunchFolder(std::string_view sFolderToLaunch);

 private:
  void MakeControls();
  void CloseWith(int32_t lDemo);

  frmMain& oOwner_;
};

}  // namespace quillon
