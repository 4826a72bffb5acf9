#pragma once

#include "clsForm.h"

namespace quillon {

class frmMain;

/// The options dialog: copies the main form's fields in on load and out on Apply, with no check at all.
class frmQLNOptions : public clsForm {
 public:
  explicit frmQLNOptions(frmMain& owner);
  void Form_Load();
  bool KeyPressed(std::string_view sKey) override;

 private:
  void MakeInputTab();
  void MakeOutputTab();
  void ShowTab();
  void cmdApply_Click();
  void MarkJobChanged();

  frmMain& oOwner_;
};

}  // namespace quillon
