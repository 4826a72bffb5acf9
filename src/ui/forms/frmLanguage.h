#pragma once

#include <string>

#include "clsForm.h"
#include "clsScreen.h"

namespace quillon {

/// The chooser of the language and its font. Both results are empty if it was cancelled.
class frmLanguage : public clsForm {
 public:
  frmLanguage(clsHost& host, clsScreen& screen);
  std::string sChosenLanguage, sChosenFont;

  void Form_Load();
  /// "English" first, then the languages that have a file; the current one is selected.
  void FillLanguageList();
  bool KeyPressed(std::string_view sKey) override;
  void CloseRequested() override { Cancel(); }
  /// A double click on the list.
  void List1_DblClick() { Done(); }

 private:
  void Done();
  void Cancel();
  void EditLanguageFile();
  void SelectFont();

  clsHost& host_;
  clsScreen& screen_;
};

/// Shows the chooser. True if something changed; bTellUser: it shows at the next start, else it is taken over at once.
bool ChooseLanguage(clsHost& host, clsScreen& screen, bool bTellUser);

}  // namespace quillon
