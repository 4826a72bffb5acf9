// The two dialogs of the recipe editor that write a table section and its ruler.

#include <algorithm>
#include <cmath>

#include "frmExportBuilder.h"
#include "frmMain.h"
#include "modFormTranslation.h"
#include "modNumbers.h"
#include "modStrings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

frmTableBuilder::frmTableBuilder(frmExportBuilder& editor) : clsForm("frmTableBuilder"), editor_(editor) {
  Add(ControlKind::Label, "lblTableNumber", "Table Number");
  Add(ControlKind::TextBox, "txtTableNumber");
  Add(ControlKind::Frame, "frameTop", "Top Boundry");
  Add(ControlKind::Label, "lblReadStartLine", "Text Near Top of Table");
  Add(ControlKind::TextBox, "txtReadStartLine").sText = "KEY TEXT AT TOP";
  Add(ControlKind::Label, "lblReadStartLineOffset", "Line Offset");
  Add(ControlKind::TextBox, "txtReadStartLineOffset");
  Add(ControlKind::Frame, "frameBottom", "Bottom Boundry");
  Add(ControlKind::Label, "lblReadEndLine", "Text Near Bottom of Table");
  Add(ControlKind::TextBox, "txtReadEndLine").sText = "KEY TEXT AT BOTTOM";
  Add(ControlKind::Label, "lblReadEndLineOffset", "Line Offset");
  Add(ControlKind::TextBox, "txtReadEndLineOffset");
  for (const char* const pName : {"txtReadStartLineOffset", "txtReadEndLineOffset"}) {
    Get(pName).sText = "0";
    Get(pName).sTag = "TranslateFalse";
  }
  Add(ControlKind::Label, "lblColumnFields", "Column Fields");
  Add(ControlKind::Label, "lblFields", "0").sTag = "TranslateFalse";
  Add(ControlKind::CommandButton, "cmdAddColumn", "Add Column Field...");
  Add(ControlKind::CommandButton, "cmdOK", "OK");
  Add(ControlKind::CommandButton, "cmdCancel", "Cancel");
  OnLostFocus("txtReadStartLine",
              [this] { CheckText("txtReadStartLine", "Top Key Text should not be a blank!", "KEY TEXT AT TOP"); });
  OnLostFocus("txtReadEndLine",
              [this] { CheckText("txtReadEndLine", "Bottom Key Text should not be a blank!", "KEY TEXT AT BOTTOM"); });
  OnLostFocus("txtReadStartLineOffset",
              [this] { CheckNumber("txtReadStartLineOffset", "Top Line offset must be a number"); });
  OnLostFocus("txtReadEndLineOffset",
              [this] { CheckNumber("txtReadEndLineOffset", "Bottom Line offset must be a number"); });
  OnLostFocus("txtTableNumber", [this] { CheckTableNumber(); });
  OnClick("cmdAddColumn", [this] { cmdAddColumn_Click(); });
  OnClick("cmdOK", [this] { cmdOK_Click(); });
  OnClick("cmdCancel", [this] { Unloaded(); });
}

void frmTableBuilder::Form_Load() {
  TranslateForm(*this, editor_.Owner().Screen());
  const std::string sNumber = std::to_string(editor_.TableCounter + 1);
  sCaption = Translate("Add Table ") + sNumber;
  Get("txtTableNumber").sText = sNumber;
  editor_.ExportSpecs = editor_.Get("txtFileEditor").sText;
  ParsingString.clear();
  FieldCount = 0;
  ShowFieldCount();
}

void frmTableBuilder::ShowFieldCount() {
  Get("lblFields").sCaption = std::to_string(FieldCount);
}

void frmTableBuilder::Warn(std::string_view sMessage) {
  editor_.Owner().Host().ShowMessage(Translate(sMessage), sCaption, MessageIcon::Warning, MessageButtons::Ok);
}

void frmTableBuilder::CheckText(std::string_view sControl, std::string_view sMessage, std::string_view sRestored) {
  if (!TrimBlanks(Get(sControl).sText).empty()) return;
  Warn(sMessage);
  Get(sControl).sText = sRestored;
}

void frmTableBuilder::CheckNumber(std::string_view sControl, std::string_view sMessage) {
  if (IsNumericText(Get(sControl).sText)) return;
  Warn(sMessage);
  Get(sControl).sText = "0";
}

void frmTableBuilder::CheckTableNumber() {
  clsControl& number = Get("txtTableNumber");
  if (LeadingNumber(number.sText) <= 0) {
    Warn("Table Number must be a number larger than 0");
    number.sText = std::to_string(editor_.TableCounter + 1);
  }
  sCaption = Translate("Add Table ") + number.sText;
}

void frmTableBuilder::cmdOK_Click() {
  const auto field = [this](std::string_view sControl) { return std::string(TrimBlanks(Get(sControl).sText)); };
  ++editor_.TableCounter;
  std::string& sText = editor_.ExportSpecs;
  sText += "\r\n[Table " + field("txtTableNumber") + "]\r\n";
  sText += "ReadStartLine=" + field("txtReadStartLine") + "\r\n";
  sText += "ReadStartLineOffset=" + field("txtReadStartLineOffset") + "\r\n";
  sText += "ReadEndLine=" + field("txtReadEndLine") + "\r\n";
  sText += "ReadEndLineOffset=" + field("txtReadEndLineOffset") + "\r\n";
  // The last field closes on its last character instead of a blank.
  if (ParsingString.size() > 1 && ParsingString.back() == ' ')
    ParsingString.back() = ParsingString[ParsingString.size() - 2];
  if (FieldCount == 0) ParsingString = "-";
  sText += "Parsing=" + ParsingString + "\r\nWriteColumn=A\r\n";
  editor_.SetEditorText(sText);
  editor_.TableCounter = ParseWholeNumber(ShortestDouble(LeadingNumber(field("txtTableNumber")))).value_or(0);
  Unloaded();
}

void frmTableBuilder::cmdAddColumn_Click() {
  frmAddField dialog(*this);
  dialog.Form_Load();
  editor_.Owner().Screen().ShowModal(dialog);
}

frmAddField::frmAddField(frmTableBuilder& builder) : clsForm("frmAddField"), builder_(builder) {
  Add(ControlKind::Label, "lblFieldWidth", "Field Width:");
  Add(ControlKind::TextBox, "txtFieldWidth");
  Add(ControlKind::Label, "lblCharacters", "Characters");
  Add(ControlKind::OptionButton, "obSingleDataField", "Single Column Field  -------- ").bChecked = true;
  Add(ControlKind::OptionButton, "Option1", "Multi-Column Field  =====");
  Add(ControlKind::CommandButton, "cmdOK", "OK");
  Add(ControlKind::CommandButton, "cmdCancel", "Cancel");
  OnClick("obSingleDataField", [this] {
    FieldType = 1;
    Get("Option1").bChecked = false;
  });
  OnClick("Option1", [this] {
    FieldType = 2;
    Get("obSingleDataField").bChecked = false;
  });
  OnClick("cmdOK", [this] { cmdOK_Click(); });
  OnClick("cmdCancel", [this] { Unloaded(); });
}

void frmAddField::Form_Load() {
  TranslateForm(*this, builder_.Editor().Owner().Screen());
  sCaption = Translate("Add Column Field ") + std::to_string(builder_.FieldCount + 1);
  clsControl& width = Get("txtFieldWidth");
  width.sText = std::to_string(FieldWidth);
  width.lSelStart = 0;
  width.lSelLength = static_cast<int64_t>(width.sText.size());
}

void frmAddField::cmdOK_Click() {
  constexpr int32_t kWidest = 32767;  // No row of a report is wider than what a cell can hold
  const double nWidth = std::nearbyint(LeadingNumber(Get("txtFieldWidth").sText));
  if (nWidth < 1) return;
  FieldWidth = static_cast<int32_t>(std::min(nWidth, static_cast<double>(kWidest)));
  AppendRepeated(builder_.ParsingString, Get("obSingleDataField").bChecked ? "-" : "=", FieldWidth - 1);
  builder_.ParsingString += ' ';
  // A field of width 1 adds a blank and isn't counted.
  if (FieldWidth > 1) ++builder_.FieldCount;
  builder_.ShowFieldCount();
  Unloaded();
}

}  // namespace quillon
