#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsForm.h"
#include "clsScreen.h"
#include "modRecipeText.h"

namespace quillon {

class frmMain;

/// A recipe as it is saved: in the page of the settings, or as UTF-8 with a BOM where that can't hold it.
std::string BytesOfRecipe(std::string_view sText);

/// The recipe editor: a plain text editor for short recipes with a dialog that writes a table section. It edits text
/// and never parses the recipe.
class frmExportBuilder : public clsForm {
 public:
  static constexpr double kMinWidth = 6585;  ///< Twips

  explicit frmExportBuilder(frmMain& owner);

  std::string ExportSpecs;   ///< Text as last taken from or put into the editor
  int32_t TableCounter = 0;  ///< Number of the last table
  bool bDirty = false;
  std::string sLastRecipeFileName;
  WindowPlacement placement;
  size_t nCaret = 0;  ///< Bytes of the text in front of the caret, as the view saw it last

  void Form_Load();
  void CloseRequested() override { cmdClose_Click(); }
  bool KeyPressed(std::string_view sKey) override;
  /// Code 11 closes.
  void KeyReleased(int32_t lKeyCode) override;
  void LoadRecipeIntoEditor(std::string_view sFileName);
  void ReadIniFile();
  void SaveIniFile();
  /// The text of the editor is this now.
  void SetEditorText(std::string_view sText);
  /// Edits of the text that are no typing of the user's, each upon the text that the one before it left.
  void EditText(const std::vector<TextEdit>& edits);
  /// Puts the caret behind so many bytes of the text.
  void MoveCaret(size_t nPlace);
  /// Title, with the caret on the last character and that one selected.
  void RefreshTitle();
  frmMain& Owner() { return oOwner_; }

 private:
  void cmdNew_Click();
  void cmdLoadFile_Click();
  bool Save();
  void cmdSaveAs_Click();
  void cmdAddTable_Click();
  void cmdFindTables_Click();
  void cmdClose_Click();
  void CloseForm();
  std::string StartPath(FileQuestion& question) const;

  frmMain& oOwner_;
};

/// The Table Builder: writes one table section.
class frmTableBuilder : public clsForm {
 public:
  explicit frmTableBuilder(frmExportBuilder& editor);

  std::string ParsingString;
  int32_t FieldCount = 0;

  void Form_Load();
  void ShowFieldCount();
  frmExportBuilder& Editor() { return editor_; }

 private:
  void CheckText(std::string_view sControl, std::string_view sMessage, std::string_view sRestored);
  void CheckNumber(std::string_view sControl, std::string_view sMessage);
  void CheckTableNumber();
  void cmdOK_Click();
  void cmdAddColumn_Click();
  void Warn(std::string_view sMessage);

  frmExportBuilder& editor_;
};

/// Adds one field to the template.
class frmAddField : public clsForm {
 public:
  explicit frmAddField(frmTableBuilder& builder);

  int32_t FieldType = 1;  ///< 1 single column, 2 multi-column
  int32_t FieldWidth = 10;

  void Form_Load();

 private:
  void cmdOK_Click();

  frmTableBuilder& builder_;
};

}  // namespace quillon
