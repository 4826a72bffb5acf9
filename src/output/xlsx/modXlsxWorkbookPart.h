#pragma once
// The workbook part of an existing package and the parts that list others: read, and changed in place.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "clsXlsxPackage.h"
#include "modDataMove.h"
#include "modFormulaText.h"

namespace quillon {

/// A sheet in workbook order, whatever its kind.
struct WorkbookSheet {
  std::string sName;
  std::string sPart;        ///< "" if the package lacks it
  bool bWorksheet = false;  ///< It has cells
  bool bAdded = false;      ///< Not in the file yet
  std::string sRelation;    ///< Of an added one
};

struct WorkbookPart {
  size_t nPart = 0;
  std::string sName;
  std::string sBytes;
  std::vector<WorkbookSheet> sheets;
  size_t nActive = 0;    ///< From 0
  bool bHidden = false;  ///< Its window is, and no sheet to be seen
  bool b1904 = false;
  bool bHasCalculation = false;  ///< There is a "calcPr"
  std::vector<Relationship> relationships;
  /// The first target of that kind, "" if there is none.
  std::string TargetOf(std::string_view sType) const;
};

bool ReadWorkbookPart(const clsXlsxPackage& package, WorkbookPart& workbook, Failure& failure);

struct WorkbookPartEdit {
  std::vector<std::string> names;  ///< Of all sheets
  size_t nActive = 0;
  /// Data of sheets, each by its name in the file: names that covered exactly that follow it.
  std::vector<std::pair<std::string, DataMove>> moves;
  bool bRecalculate = false;  ///< Results kept in cells are out of date
};
/// The part's bytes by the edit. A hidden window is shown: who opens the output is to see it.
std::string EditedWorkbookPart(const WorkbookPart& workbook, const WorkbookPartEdit& edit,
                               const FormulaRenames& renames);

/// The part without the elements right below its root that the question is answered yes for.
std::string WithoutElements(std::string_view sBytes, const std::function<bool(const clsXmlScanner&)>& bDrop);

}  // namespace quillon
