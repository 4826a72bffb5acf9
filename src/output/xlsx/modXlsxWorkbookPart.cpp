#include "modXlsxWorkbookPart.h"

#include <algorithm>
#include <array>
#include <utility>

#include "clsSheetCursor.h"
#include "clsXmlCopier.h"
#include "modColumnLetters.h"
#include "modOutputMessages.h"
#include "modText.h"
#include "modXlsxAddedSheets.h"
#include "modXmlReading.h"
#include "modXmlText.h"

namespace quillon {

namespace {

constexpr size_t kMaxSheets = 10000;

// What stands before "calcPr" in a workbook part.
constexpr std::array<std::string_view, 9> kBeforeCalculation = {
    "fileVersion", "fileSharing",    "workbookPr",         "workbookProtection", "bookViews",
    "sheets",      "functionGroups", "externalReferences", "definedNames"};

bool IsTrue(std::string_view sValue) {
  return sValue == "1" || sValue == "true";
}

const Relationship* FindById(const std::vector<Relationship>& relationships, std::string_view sId) {
  const auto found = std::find_if(relationships.begin(), relationships.end(),
                                  [&](const Relationship& relationship) { return relationship.sId == sId; });
  return found == relationships.end() ? nullptr : &*found;
}

void TakeSheet(const clsXmlScanner& scanner, const clsXlsxPackage& package, WorkbookPart& workbook) {
  WorkbookSheet& sheet = workbook.sheets.emplace_back();
  sheet.sName = scanner.AttributeText("name");
  const Relationship* const pTarget = FindById(workbook.relationships, scanner.RelationAttribute("id"));
  if (pTarget == nullptr || pTarget->bExternal || !package.Find(pTarget->sTarget)) return;
  sheet.sPart = pTarget->sTarget;
  sheet.bWorksheet = pTarget->sType == "worksheet";
}

/// Finds the part, with its bytes and relationships.
bool LoadWorkbookPart(const clsXlsxPackage& package, WorkbookPart& workbook, Failure& failure) {
  std::vector<Relationship> roots;
  if (!package.ReadRelationships("", roots, failure)) return false;
  for (const Relationship& root : roots)
    if (root.sType == "officeDocument" && !root.bExternal && workbook.sName.empty()) workbook.sName = root.sTarget;
  const auto nPart = package.Find(workbook.sName);
  if (!nPart || !package.Find("[Content_Types].xml")) {
    failure = OutputFailure(package.Path(), OutputMessage::NotAWorkbook);
    return false;
  }
  workbook.nPart = *nPart;
  return package.ReadAll(*nPart, workbook.sBytes, failure) &&
         package.ReadRelationships(workbook.sName, workbook.relationships, failure);
}

/// Takes what is known of an element from its start tag.
void TakeElement(const clsXmlScanner& scanner, const clsXlsxPackage& package, bool& bViewSeen, WorkbookPart& workbook) {
  if (scanner.Depth() == 2 && scanner.IsMain("workbookPr"))
    workbook.b1904 = IsTrue(scanner.Attribute("date1904").value_or("0"));
  if (scanner.Depth() == 2 && scanner.IsMain("calcPr")) workbook.bHasCalculation = true;
  if (scanner.Depth() == 3 && scanner.IsMain("sheet")) TakeSheet(scanner, package, workbook);
  if (scanner.Depth() != 3 || !scanner.IsMain("workbookView") || std::exchange(bViewSeen, true)) return;
  workbook.nActive = ParseIndex(scanner.Attribute("activeTab").value_or("0")).value_or(0);
  workbook.bHidden = scanner.Attribute("visibility").value_or("visible") != "visible";
}

/// What a name stands for, by where the data of its sheet stands now. Only one range with its sheet follows.
std::string FollowedName(const std::string& sName, const WorkbookPartEdit& edit) {
  const size_t nMark = sName.rfind('!');
  if (nMark == std::string::npos) return sName;
  std::string sSheet = sName.substr(0, nMark);
  if (sSheet.size() > 1 && sSheet.front() == '\'' && sSheet.back() == '\'')
    sSheet = ReplaceAll(std::string_view(sSheet).substr(1, sSheet.size() - 2), "''", "'");
  const auto range = ParseCellRange(ReplaceAll(std::string_view(sName).substr(nMark + 1), "$", ""));
  for (const auto& [sOf, move] : edit.moves) {
    const auto followed = range && EqualNoCase(sOf, sSheet) ? Followed(*range, move) : std::nullopt;
    if (!followed) continue;
    std::string sText = sName.substr(0, nMark + 1);
    for (const auto& [nColumn, nRow] :
         {std::pair(followed->nLeft, followed->nTop), {followed->nRight, followed->nBottom}})
      sText +=
          (sText.back() == '!' ? "$" : ":$") + ColumnLetters(static_cast<int>(nColumn)) + "$" + std::to_string(nRow);
    return sText;
  }
  return sName;
}

/// Copies the part's tokens, changed by the edit.
class clsWorkbookEditor {
 public:
  clsWorkbookEditor(const WorkbookPart& workbook, const WorkbookPartEdit& edit, const FormulaRenames& renames)
      : scanner_(workbook.sBytes),
        copier_(scanner_, renames, [this](std::string_view sBytes) { sOut_ += sBytes; }),
        workbook_(workbook),
        edit_(edit),
        renames_(renames),
        bCalculationDue_(edit.bRecalculate && !workbook.bHasCalculation) {}

  std::string Run() {
    while (scanner_.Next() != XmlToken::End && scanner_.Token() != XmlToken::Failed) Step();
    copier_.Flush();
    return std::move(sOut_);
  }

 private:
  void Step() {
    const bool bEnd = scanner_.Token() == XmlToken::EndTag;
    if (bEnd && scanner_.Depth() == 2 && scanner_.IsMain("sheets")) PutAddedSheets();
    const bool bBehind = scanner_.IsOpening() && scanner_.Depth() == 2 && scanner_.Space() == XmlSpace::Main &&
                         std::find(kBeforeCalculation.begin(), kBeforeCalculation.end(), scanner_.LocalName()) ==
                             kBeforeCalculation.end();
    if (bCalculationDue_ && (bBehind || (bEnd && scanner_.Depth() == 1))) PutCalculation();
    if (scanner_.IsOpening() && scanner_.Depth() == 3 && scanner_.IsMain("sheet")) return StepSheet();
    if (scanner_.IsOpening() && scanner_.Depth() == 3 && scanner_.IsMain("workbookView") && !bViewSeen_)
      return StepView();
    if (!edit_.moves.empty() && scanner_.Token() == XmlToken::Text && scanner_.Parent() == "definedName" && StepName())
      return;
    if (edit_.bRecalculate && scanner_.IsOpening() && scanner_.Depth() == 2 && scanner_.IsMain("calcPr"))
      return copier_.Put(WithAttribute(scanner_.Raw(), "fullCalcOnLoad", "1"));
    copier_.CopyToken();
  }
  void PutCalculation() {
    bCalculationDue_ = false;
    copier_.Put("<" + std::string(scanner_.Prefix()) + (scanner_.Prefix().empty() ? "" : ":") +
                "calcPr fullCalcOnLoad=\"1\"/>");
  }
  void PutAddedSheets() {
    for (const WorkbookSheet& sheet : workbook_.sheets)
      if (sheet.bAdded) copier_.Put(AddedSheetTag(sSheetTag_, sheet, ++nMaxSheetId_));
  }
  /// False for a name that stands for what it did.
  bool StepName() {
    std::string sName, sEscaped;
    scanner_.AppendText(sName);
    const std::string sFollowed = FollowedName(sName, edit_);
    if (sFollowed == sName) return false;
    AppendEscaped(RenamedFormula(sFollowed, renames_), sEscaped);
    copier_.Put(sEscaped);
    return true;
  }
  void StepSheet() {
    const size_t nSheet = nSheet_++;
    sSheetTag_ = scanner_.Raw();
    if (scanner_.Token() == XmlToken::StartTag) sSheetTag_.insert(sSheetTag_.size() - 1, "/");
    nMaxSheetId_ = std::max(nMaxSheetId_, ParseIndex(scanner_.Attribute("sheetId").value_or("")).value_or(0));
    if (nSheet >= edit_.names.size() || edit_.names[nSheet] == workbook_.sheets[nSheet].sName)
      return copier_.CopyToken();
    std::string sName;
    AppendXmlAttribute(sName, edit_.names[nSheet]);
    copier_.Put(WithAttribute(scanner_.Raw(), "name", sName));
  }
  void StepView() {
    bViewSeen_ = true;
    if (edit_.nActive == workbook_.nActive && !workbook_.bHidden) return copier_.CopyToken();
    std::string sTag(scanner_.Raw());
    if (workbook_.bHidden) sTag = WithAttribute(sTag, "visibility", "visible");
    if (edit_.nActive != workbook_.nActive) sTag = WithAttribute(sTag, "activeTab", std::to_string(edit_.nActive));
    copier_.Put(sTag);
  }

  clsXmlScanner scanner_;
  std::string sOut_;
  clsXmlCopier copier_;
  const WorkbookPart& workbook_;
  const WorkbookPartEdit& edit_;
  const FormulaRenames& renames_;
  bool bCalculationDue_;
  bool bViewSeen_ = false;
  size_t nSheet_ = 0;
  std::string sSheetTag_;
  uint32_t nMaxSheetId_ = 0;
};

}  // namespace

std::string WorkbookPart::TargetOf(std::string_view sType) const {
  for (const Relationship& relationship : relationships)
    if (relationship.sType == sType && !relationship.bExternal) return relationship.sTarget;
  return {};
}

bool ReadWorkbookPart(const clsXlsxPackage& package, WorkbookPart& workbook, Failure& failure) {
  if (!LoadWorkbookPart(package, workbook, failure)) return false;
  clsXmlScanner scanner(workbook.sBytes);
  bool bViewSeen = false;
  while (scanner.Next() != XmlToken::End) {
    const bool bOther = scanner.Token() != XmlToken::Failed && scanner.Depth() == 1 && scanner.IsOpening() &&
                        !scanner.IsMain("workbook");
    if (scanner.Token() == XmlToken::Failed || bOther || workbook.sheets.size() > kMaxSheets) {
      failure = bOther ? OutputFailure(package.Path(), OutputMessage::NotAWorkbook) : package.Damaged(workbook.sName);
      return false;
    }
    if (scanner.IsOpening()) TakeElement(scanner, package, bViewSeen, workbook);
  }
  if (workbook.nActive >= workbook.sheets.size()) workbook.nActive = 0;
  if (workbook.sheets.empty()) failure = package.Damaged(workbook.sName);
  return !failure.Failed();
}

std::string EditedWorkbookPart(const WorkbookPart& workbook, const WorkbookPartEdit& edit,
                               const FormulaRenames& renames) {
  return clsWorkbookEditor(workbook, edit, renames).Run();
}

std::string WithoutElements(std::string_view sBytes, const std::function<bool(const clsXmlScanner&)>& bDrop) {
  clsXmlScanner scanner(sBytes);
  std::string sOut;
  while (scanner.Next() != XmlToken::End && scanner.Token() != XmlToken::Failed) {
    if (scanner.IsOpening() && scanner.Depth() == 2 && bDrop(scanner)) {
      if (!scanner.SkipElement()) break;
    } else {
      sOut += scanner.Raw();
    }
  }
  return sOut;
}

}  // namespace quillon
