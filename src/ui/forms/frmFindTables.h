#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsForm.h"
#include "clsTableFinder.h"

namespace quillon {

class frmMain;
class frmWorking;

/// What tables a report has: a list to tick and name, drawn over the report. OK leaves the recipe of the chosen ones.
class frmFindTables : public clsForm {
 public:
  explicit frmFindTables(frmMain& owner);

  /// Looks through the main window's report. False with the reason if there is nothing to show.
  bool Form_Load(std::string& sFault, frmWorking& working);

  const clsTableFinder& Finder() const { return finder_; }
  const std::vector<ListedTable>& Tables() const { return finder_.Tables(); }
  void Tick(size_t nTable, bool bOn);
  void TickHeading(size_t nTable, size_t nHeading, bool bOn);
  void NameTable(size_t nTable, std::string_view sName);
  void NameColumn(size_t nTable, size_t nColumn, std::string_view sName);
  /// The table that the list stands on and the drawing shows the cells of.
  size_t Selected() const { return nSelected_; }
  void Select(size_t nTable);

  /// UTF-8 with LF; "" if the dialog was cancelled.
  std::string sRecipe;
  frmMain& Owner() const { return oOwner_; }
  bool KeyPressed(std::string_view sKey) override;

 private:
  std::string FoundText() const;
  void cmdOK_Click();

  frmMain& oOwner_;
  clsTableFinder finder_;
  size_t nSelected_ = 0;
};

}  // namespace quillon
