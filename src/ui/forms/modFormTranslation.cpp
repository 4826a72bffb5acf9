#include "modFormTranslation.h"

#include "modTranslator.h"

namespace quillon {

namespace {

constexpr int32_t kJapanese = 1041;
constexpr std::string_view kExempt = "TranslateFalse";

bool HasTranslatedCaption(const clsControl& control) {
  switch (control.kind) {
    case ControlKind::Menu:
      return control.sCaption != "-" && control.sTag != kExempt;
    case ControlKind::CommandButton:
    case ControlKind::ToolButton:
      return true;
    case ControlKind::Label:
    case ControlKind::CheckBox:
    case ControlKind::Frame:
    case ControlKind::OptionButton:
      return control.sTag != kExempt;
    default:
      return false;
  }
}

bool HasTranslatedText(const clsControl& control) {
  return (control.kind == ControlKind::TextBox && control.sTag != kExempt) || control.kind == ControlKind::Panel;
}

/// The font that the language forces; empty where the toolkit's own serves.
std::string FontOfLanguage(clsScreen& screen) {
  if (!gsLanguageFont.empty()) return gsLanguageFont;
  const bool bJapanese = gsLanguage != "English" && giUserLcid == kJapanese;
  return bJapanese && screen.FontInstalled("MS UI Gothic") ? "MS UI Gothic" : "";
}

}  // namespace

void TranslateForm(clsForm& form, clsScreen& screen) {
  const std::string sFont = FontOfLanguage(screen);
  form.sCaption = Translate(form.sCaption);
  for (const auto& pControl : form.Controls()) {
    if (HasTranslatedCaption(*pControl)) pControl->sCaption = Translate(pControl->sCaption);
    if (HasTranslatedText(*pControl)) pControl->sText = Translate(pControl->sText);
    if (pControl->kind == ControlKind::TabStrip) {
      for (std::string& sTab : pControl->items) sTab = Translate(sTab);
    }
    pControl->sToolTip = Translate(pControl->sToolTip);
    pControl->sFontName = sFont;
  }
}

}  // namespace quillon
