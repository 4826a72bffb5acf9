#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "clsXlsFormats.h"
#include "clsXlsStringTable.h"
#include "modDataMove.h"
#include "modOutputMessages.h"
#include "modXlsRecords.h"

namespace quillon {

/// A sheet as the globals name it.
struct XlsSheetEntry {
  std::string sName;
  size_t nOffset = 0;       ///< Of its BOF
  bool bWorksheet = false;  ///< Not a chart, a macro sheet or a module
};

/// The globals of an existing workbook: what the run needs of them, and the records with its changes. The stream must
/// outlive the object.
class clsXlsGlobals {
 public:
  /// False with the reason: no workbook of this version, encrypted, damaged.
  bool Parse(std::string_view sStream, OutputMessage& reason);

  size_t End() const { return nEnd_; }
  std::vector<XlsSheetEntry>& Sheets() { return sheets_; }
  const std::vector<XlsSheetEntry>& Sheets() const { return sheets_; }
  clsXlsFormats& Formats() { return formats_; }
  const clsXlsStringTable& Strings() const { return strings_; }
  /// See clsXlsStringTable::Drop; the stream is the one that was parsed.
  void DropStrings(const std::vector<bool>& kept, std::string& sStream) { strings_.Drop(kept, sStream); }
  /// Names that covered exactly the old data of a sheet, from 1, follow it.
  void FollowData(int nSheet, const DataMove& move) { moves_.emplace_back(nSheet, move); }
  bool Is1904() const { return b1904_; }
  int ActiveSheet() const { return nActive_; }  ///< From 1
  bool IsHidden() const { return bHidden_; }    ///< Its window is, and no sheet to be seen
  void SetActiveSheet(int nSheet) { nActive_ = nSheet; }
  /// Takes in a sheet behind the others, which gets its name by Rename.
  void AddSheet() { sheets_.push_back({{}, 0, true}); }
  /// How many sheets there were before any was added.
  size_t OldSheets() const { return oldNames_.size(); }
  /// Takes a new name for a sheet, from 1.
  void Rename(int nSheet, std::string_view sName);

  /// The records with the added formats and strings, the names as they are now and the mark for calculation. A
  /// hidden window is shown: who opens the output is to see it. The sheets' offsets are those of the old stream;
  /// boundSheets gets the place of each in the result.
  std::string Rebuild(const clsXlsStrings& added, std::vector<size_t>& boundSheets) const;

 private:
  bool Note(const XlsRecord& record, OutputMessage& reason);
  bool NoteSheet(const XlsRecord& record);
  void NoteWindow(const XlsRecord& record);
  void PutChanged(const XlsRecord& record, std::vector<size_t>& boundSheets, std::string& sOut) const;
  void PutBoundSheet(const XlsRecord& record, size_t nSheet, std::string& sOut) const;
  void PutTabIds(const XlsRecord& record, std::string& sOut) const;
  void PutXfCrc(const XlsRecord& record, std::string& sOut) const;
  void PutName(const XlsRecord& record, std::string& sOut) const;
  int SheetOfReference(unsigned nReference) const;
  void PutDconRef(const XlsRecord& record, std::string& sOut) const;

  std::string_view sStream_;
  size_t nEnd_ = 0;
  std::vector<XlsSheetEntry> sheets_;
  std::vector<std::string> oldNames_;
  clsXlsFormats formats_;
  clsXlsStringTable strings_;
  size_t nOldXfs_ = 0;
  size_t nSst_ = 0, nWindow1_ = 0;  ///< Offsets of those records, of the first window's; 0 for none
  size_t nFormatsEnd_ = 0, nXfsEnd_ = 0, nXfExtsEnd_ = 0;  ///< Behind the last record of the kind
  std::vector<std::pair<int, DataMove>> moves_;
  std::string_view sReferences_;  ///< Data of EXTERNSHEET
  unsigned nBooks_ = 0, nOwnBook_ = 0xFFFF;
  bool b1904_ = false;
  bool bHidden_ = false;
  int nActive_ = 1;
};

}  // namespace quillon
