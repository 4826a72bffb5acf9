#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "clsSheetMerger.h"
#include "clsSpool.h"
#include "clsXlsxPackage.h"
#include "clsXlsxSheet.h"
#include "clsXlsxStyles.h"
#include "modFileState.h"
#include "modSheetValues.h"
#include "modXlsxWorkbookPart.h"

namespace quillon {

class clsDeflater;
class clsOutputFile;

/// A sheet that the run has touched or looked into.
struct XlsxSheet {
  explicit XlsxSheet(const CellTypingOptions& options) : edit(options) {}
  Failure failure;  ///< Set: the sheet is damaged
  SheetFacts facts;
  bool bScanned = false;  ///< The facts are known
  SheetEdit edit;
  std::unique_ptr<clsCellStore> pShown;  ///< Values as shown, once one was read
  /// Of our own work and emptied as a whole: it is written as a new one is, and nothing of the old one is looked at.
  std::unique_ptr<clsXlsxSheet> pAnew;
  bool Touched() const { return pAnew != nullptr || edit.Touched(); }
};

/// An existing workbook and what the run does to it.
struct XlsxBook {
  clsXlsxPackage package;
  FileState state;
  WorkbookPart workbook;
  WorkbookPartEdit edit;
  clsXlsxStyles styles;
  CellTypingOptions typing;
  std::vector<std::unique_ptr<XlsxSheet>> sheets;  ///< By workbook order; null: not looked into
};

/// Writes the changed package. Steps: rename columns of tables, merge the touched sheets, follow renames in all other
/// parts, change the parts that list others, then write part by part in the old order.
class clsXlsxSaver {
 public:
  explicit clsXlsxSaver(XlsxBook& book) : book_(book) {}
  bool Save(std::string_view sPath, Failure& failure);
  int64_t RefusedFormulas() const { return nRefused_; }
  int64_t Reformatted() const { return nReformatted_; }
  int64_t BehindTables() const { return nBehindTables_; }  ///< Rows that no table could take in

 private:
  /// A part that differs from the old one.
  struct NewPart {
    clsSpool spool;
    uint32_t nCrc = 0;
    int64_t nSize = 0;
  };

  bool Changed() const;
  bool PrepareEdits(Failure& failure);
  bool PrepareSheet(size_t nSheet, Failure& failure);
  void FollowData(XlsxSheet& sheet, const std::string& sName);
  bool TakeFromRows(XlsxSheet& sheet, const WorkbookSheet& entry, Failure& failure);
  bool TakeContent(clsXmlScanner& scanner, SheetEdit& edit, int64_t nRow, int nColumn);
  bool TakeFormulasOf(size_t nSheet);
  bool DropStrings(Failure& failure);
  bool NoteKeptStrings();
  XlsxSheet* AnewOfPart(size_t nPart) const;
  bool MergeSheets(Failure& failure);
  bool MergeSheet(XlsxSheet& sheet, const WorkbookSheet& entry, clsCellWriter& writer, Failure& failure);
  bool FollowRenames(Failure& failure);
  bool FollowRenamesIn(size_t nPart, Failure& failure);
  bool ChangeLists(Failure& failure);
  bool NameAddedSheets(Failure& failure);
  bool DropCalculationChain(Failure& failure);
  bool ChangePart(size_t nPart, const std::function<std::string(std::string_view)>& change, Failure& failure);
  bool DropFromPart(size_t nPart, const std::function<bool(const clsXmlScanner&)>& bDrop, Failure& failure);
  bool SetPart(size_t nPart, std::string_view sBytes, Failure& failure);
  bool MakePart(size_t nPart, Failure& failure, const std::function<bool(clsDeflater&)>& fill);
  bool WritePackage(std::string_view sPath, Failure& failure);
  bool CopyPacked(size_t nPart, clsOutputFile& file, Failure& failure);
  std::vector<size_t> PartOrder() const;
  const std::string& PartName(size_t nPart) const {
    const size_t nOld = book_.package.Parts().size();
    return nPart < nOld ? book_.package.Parts()[nPart].sName : added_[nPart - nOld];
  }

  XlsxBook& book_;
  FormulaRenames renames_;
  std::map<size_t, std::string> tables_;  ///< Parts of tables with new headings
  std::map<size_t, std::unique_ptr<NewPart>> newParts_;
  std::map<size_t, std::string> lists_;  ///< Changed parts that list others
  std::vector<std::string> added_;       ///< Names of parts behind those of the package
  std::optional<size_t> nDropped_;
  bool bFormulasChanged_ = false;
  int64_t nRefused_ = 0, nReformatted_ = 0, nBehindTables_ = 0;
  StringUse strings_;
  std::optional<clsSharedStrings> oldStrings_;  ///< Once a text of a totals row was asked for
};

}  // namespace quillon
