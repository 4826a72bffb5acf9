#include "frmFindTables.h"

#include <utility>

#include "frmMain.h"
#include "frmWorking.h"
#include "modFormTranslation.h"
#include "modHelp.h"
#include "modTranslator.h"

namespace quillon {

frmFindTables::frmFindTables(frmMain& owner) : clsForm("frmFindTables"), oOwner_(owner) {
  sCaption = "Find Tables";
  Add(ControlKind::Label, "lblFound");
  Get("lblFound").sTag = "TranslateFalse";
  Add(ControlKind::CommandButton, "cmdOK", "OK");
  Add(ControlKind::CommandButton, "cmdCancel", "Cancel");
  OnClick("cmdOK", [this] { cmdOK_Click(); });
  OnClick("cmdCancel", [this] { Unloaded(); });
}

bool frmFindTables::Form_Load(std::string& sFault, frmWorking& working) {
  TranslateForm(*this, oOwner_.Screen());
  const auto progress = [&](int64_t lDone, int64_t lTotal) { working.Progress(lDone, lTotal); };
  if (!finder_.Find(oOwner_.Report(), sFault, progress)) return false;
  Get("lblFound").sCaption = FoundText();
  Get("cmdOK").bEnabled = finder_.AnyTicked();
  return true;
}

std::string frmFindTables::FoundText() const {
  std::string sFound = Translate("Tick the tables that you want. Each is drawn over the report below.");
  if (!finder_.IsWhole()) {
    sFound += " " + Translate("Tables were looked for in the first part of the report, and counted in all of it.");
  }
  if (finder_.LooksIncomplete()) sFound += "\n" + Translate("It looks incomplete; the list below says where.");
  return sFound;
}

void frmFindTables::Tick(size_t nTable, bool bOn) {
  finder_.Tick(nTable, bOn);
  Get("cmdOK").bEnabled = finder_.AnyTicked();
  Refresh();
}

void frmFindTables::TickHeading(size_t nTable, size_t nHeading, bool bOn) {
  finder_.TickHeading(nTable, nHeading, bOn);
  Refresh();
}

void frmFindTables::NameTable(size_t nTable, std::string_view sName) {
  finder_.NameTable(nTable, sName);
  Refresh();
}

void frmFindTables::NameColumn(size_t nTable, size_t nColumn, std::string_view sName) {
  finder_.NameColumn(nTable, nColumn, sName);
  Refresh();
}

void frmFindTables::Select(size_t nTable) {
  if (std::exchange(nSelected_, nTable) != nTable) Refresh();
}

void frmFindTables::cmdOK_Click() {
  std::string sFault;
  frmWorking working(oOwner_, Translate("Counting rows"));
  const auto progress = [&](int64_t lDone, int64_t lTotal) { working.Progress(lDone, lTotal); };
  std::string sMade;
  if (!working.Run([&] { sMade = finder_.Recipe(sFault, progress); })) return;
  sRecipe = std::move(sMade);
  if (!sFault.empty()) {
    oOwner_.Host().ShowMessage(sFault, sCaption, MessageIcon::Warning, MessageButtons::Ok);
    return;
  }
  Unloaded();
}

bool frmFindTables::KeyPressed(std::string_view sKey) {
  constexpr int kRecipeTopic = 13;
  if (sKey == "F1") OpenHelpTopic(oOwner_.Host(), kRecipeTopic);
  return sKey == "F1";
}

}  // namespace quillon
