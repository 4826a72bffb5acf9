#include "frmMainMDI.h"

#include <algorithm>

#include "modFormTranslation.h"
#include "modSettings.h"
#include "modWindowPlacement.h"

namespace quillon {

namespace {

constexpr std::string_view kSection = "frmMainMDI";
constexpr int kPanels = 6;

}  // namespace

frmMainMDI::frmMainMDI() : clsForm("frmMainMDI") {
  sCaption = "Quillon - Text to Excel/CSV File Conversion";
  for (const char* const pBar : {"sbMain", "sbCurrentFile"}) {
    for (int i = 1; i <= kPanels; ++i) Add(ControlKind::Panel, pBar, {}, i);
  }
  bFirstTimeUser = StoreGet("Settings", "bFirstTimeUser", "TRUE") != "FALSE";
}

void frmMainMDI::MDIForm_Load(clsScreen& screen) {
  TranslateForm(*this, screen);
}

void frmMainMDI::ReadIniFile() {
  ReadPlacement(kSection, placement);
}

void frmMainMDI::SaveIniFile(bool bUnattended) {
  if (!bUnattended) SavePlacement(kSection, placement);
}

void frmMainMDI::MDIForm_Resize() {
  if (placement.lWindowState != 0) return;
  placement.Width = std::max(placement.Width, kMinWidth);
  placement.Height = std::max(placement.Height, kMinHeight);
}

void frmMainMDI::NoteFirstStartEnded() {
  bFirstTimeUser = false;
  StoreSet("Settings", "bFirstTimeUser", "FALSE");
}

}  // namespace quillon
