#include "frmTextDisplay.h"

#include <utility>

#include "clsLineReader.h"
#include "modFiles.h"
#include "modFormTranslation.h"
#include "modTranslator.h"
#include "modVersion.h"

namespace quillon {

frmTextDisplay::frmTextDisplay(clsHost& host, clsScreen& screen, std::string sFile)
    : clsForm("frmTextDisplay"), host_(host), screen_(screen), sFile_(std::move(sFile)) {
  sCaption = "QLN Text Editor";
  Add(ControlKind::ListBox, "lstData");
  Add(ControlKind::CommandButton, "cmdClose", "&Close");
  OnClick("cmdClose", [this] { Unloaded(); });
}

void frmTextDisplay::Form_Load() {
  TranslateForm(*this, screen_);
  if (!FileExists(sFile_)) {
    host_.ShowMessage(Translate("Help file ") + sFile_ + Translate(" does not exist!"), sCaption, MessageIcon::Warning,
                      MessageButtons::Ok);
    return;
  }
  TextFileOptions options;
  options.pCodePage = nullptr;
  Failure ignored;
  ReadAllRows(sFile_, options, Get("lstData").items, ignored);
}

frmPleaseWait::frmPleaseWait() : clsForm("frmPleaseWait") {
  Add(ControlKind::Label, "lblHeader", "Please wait while updating.");
  Add(ControlKind::Label, "lblLine1");
  Add(ControlKind::Label, "lblLine2");
}

void frmPleaseWait::Form_Load(clsScreen& screen) {
  TranslateForm(*this, screen);
}

void frmPleaseWait::ShowStart() {
  Get("lblHeader").sCaption = Translate("Quillon");
  Get("lblLine1").sCaption = "V" + std::string(VersionText);
  Get("lblLine2").sCaption = "Brindlemark, Inc.";
}

}  // namespace quillon
