#include "frmFindTables.h"

#include <algorithm>

#include "frmMain.h"
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

bool frmFindTables::Form_Load(std::string& sFault) {
  TranslateForm(*this, oOwner_.Screen());
  if (!finder_.Find(oOwner_.Report(), sFault)) return false;
  const std::vector<ListedTable>& tables = Tables();
  const auto doubtful = [](const ListedTable& table) { return table.bDoubtful; };
  const bool bAll = std::all_of(tables.begin(), tables.end(), doubtful);
  for (const ListedTable& table : tables) ticked_.push_back(bAll || !table.bDoubtful);
  std::string& sFound = Get("lblFound").sCaption;
  sFound = Translate("Tick the tables that you want. Each is drawn over the report below.");
  if (!finder_.IsWhole()) sFound += " " + Translate("Only the beginning of the report was looked at.");
  return true;
}

void frmFindTables::Tick(size_t nTable, bool bOn) {
  ticked_[nTable] = bOn;
  Get("cmdOK").bEnabled = std::find(ticked_.begin(), ticked_.end(), true) != ticked_.end();
  Refresh();
}

void frmFindTables::Select(size_t nTable) {
  nSelected_ = nTable;
  Refresh();
}

void frmFindTables::cmdOK_Click() {
  sRecipe = finder_.Recipe(ticked_);
  Unloaded();
}

bool frmFindTables::KeyPressed(std::string_view sKey) {
  constexpr int kRecipeTopic = 13;
  if (sKey == "F1") OpenHelpTopic(oOwner_.Host(), kRecipeTopic);
  return sKey == "F1";
}

}  // namespace quillon
