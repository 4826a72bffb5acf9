#include "clsProfileGrid.h"

#include <algorithm>

#include "clsLineReader.h"
#include "clsOutputFile.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modProfileFile.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

void clsProfileGrid::SetRows(int nRows) {
  rows_.resize(static_cast<size_t>(nRows));
  ++nRevision_;
}

void clsProfileGrid::RepeatRow(int nRow) {
  const auto row = rows_[static_cast<size_t>(nRow)];
  rows_.insert(rows_.begin() + nRow + 1, row);
  ++nRevision_;
}

void clsProfileGrid::RemoveRow(int nRow) {
  rows_.erase(rows_.begin() + nRow);
  ++nRevision_;
}

void clsProfileGrid::SetText(int nRow, Column column, std::string_view sText) {
  std::string& sCell = rows_[static_cast<size_t>(nRow)][column];
  if (sCell == sText) return;
  sCell = sText;
  ++nRevision_;
}

std::string clsProfileGrid::Line(int nRow) const {
  std::string sLine;
  for (int n = kNumber; n < kColumns; ++n) sLine.append(Text(nRow, static_cast<Column>(n))).append("\t");
  return sLine;
}

void clsProfileGrid::AddRow(std::string_view sTabbed) {
  ++nRevision_;
  auto& row = rows_.emplace_back();
  for (std::string& sText : row) {
    const size_t nTab = std::min(sTabbed.find('\t'), sTabbed.size());
    sText = sTabbed.substr(0, nTab);
    sTabbed.remove_prefix(std::min(nTab + 1, sTabbed.size()));
  }
}

namespace {

/// Always False.
bool TellUnread(const Failure& failure, clsHost& host) {
  host.ShowMessage(failure.sText, "Quillon", MessageIcon::Warning, MessageButtons::Ok);
  return false;
}

}  // namespace

bool OpenProfileFromDisk(std::string& sName, clsProfileGrid& grid, clsHost& host) {
  if (!IsFile(sName)) sName = ProfilePath(sName);
  grid.SetRows(0);
  clsLineReader reader;
  Failure failure;
  if (!reader.Open(sName, {.bUnix = false, .pCodePage = SystemCodePage()}, failure)) return TellUnread(failure, host);
  bool bOld = false;
  int nCounted = 0;
  for (std::string_view sRow; grid.Rows() <= clsProfileGrid::kMostRows && reader.ReadRow(sRow);) {
    if (reader.RowNumber() == 1) bOld = IsFromOldProfile(sRow);
    if (TrimBlanks(sRow).empty()) continue;
    std::string sLine = reader.CodePage().ToUtf8(sRow);
    ++nCounted;
    if (bOld) sLine = ReplaceAll(sLine, "\t\t", "\t") + "No\t" + std::to_string(nCounted);
    grid.AddRow("\t" + sLine);
    if (nCounted % 1000 == 0) host.LetEventsRun();
  }
  if (!reader.LastFailure().Failed()) return true;
  grid.SetRows(0);
  return TellUnread(reader.LastFailure(), host);
}

bool SaveProfileToDisk(std::string_view sName, const clsProfileGrid& grid, clsHost& host) {
  // A name with a separator would be no profile of the folder, and an empty one none of the list.
  const bool bNamed = !sName.empty() && !HasSeparator(sName);
  const std::string sPath = ProfilePath(sName);
  const std::string sFolder = JoinPath(gsDataFolder, "Profiles");
  if (!FolderExists(sFolder)) MakeFolderPath(sFolder);
  std::string sText;
  for (int nRow = 0; nRow < grid.Rows(); ++nRow) sText.append(grid.Line(nRow)).append("\r\n");
  const clsCodePage* const pPage = SystemCodePage();
  Failure failure;
  if (bNamed &&
      WriteWholeFile(sPath, (pPage != nullptr ? *pPage : clsCodePage::Windows1252()).FromUtf8(sText), failure)) {
    return true;
  }
  // Also where an older file of that name is still there: the user must learn that the edits are not in it.
  host.ShowMessage(Translate("Unable to create file. Try a different folder such as 'My Documents'"), "Quillon",
                   MessageIcon::None, MessageButtons::Ok);
  return false;
}

void CreateDefaultProfile(clsProfileGrid& grid) {
  grid.SetRows(0);
  int nColumn = 0;
  for (const int nWidth : {10, 12, 2, 15, 7}) {
    const std::string sNumber = std::to_string(++nColumn);
    grid.AddRow("\t" + sNumber + "\t" + std::to_string(nWidth) + "\t[32] Space\tRight\tNo\t" + sNumber);
  }
}

}  // namespace quillon
