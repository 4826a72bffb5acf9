#include "modOutputMessages.h"

#include <array>
#include <string>
#include <utility>

#include "modTranslator.h"

namespace quillon {

namespace {

using enum OutputMessage;

constexpr std::array kTexts = std::to_array<std::pair<OutputMessage, std::string_view>>({
    {IsFolder, "The output is a folder. Give the name of a file."},
    {NoFolder, "The output's folder does not exist and could not be made."},
    {NotWritable, "The output cannot be written. Close it elsewhere or change its permissions."},
    {OpenElsewhere,
     "The workbook is open in another program, whose lock file this is. Close it there. If no program has it open, "
     "delete the lock file."},
    {NoWorkbookName, "The name ends in neither .XLS nor .XLSX."},
    {EmptyFile, "The existing file is empty and no workbook. Delete it or choose another name."},
    {NotAWorkbook,
     "The existing file is no workbook of the kind that its name says. Delete it or choose another name."},
    {IsXlsxNotXls, "The existing file is an .XLSX workbook with the name of an .XLS one. Rename it."},
    {IsXlsNotXlsx,
     "The existing file is an .XLS workbook or an encrypted one with the name of an .XLSX one. Rename it, or save it "
     "without a password."},
    {Encrypted, "The existing workbook is encrypted. Save it without a password."},
    {Damaged, "The existing workbook is damaged. Repair it in a spreadsheet or choose another name."},
    {TooLarge, "The existing workbook is larger than can be changed safely. Choose another name."},
    {OutsideSheet, "The cell lies outside the sheet."},
    {TextTooLong, "The text is longer than the 32767 characters of a cell."},
    {NoSuchSheet, "The workbook has no such sheet."},
    {BadSheetName, "A sheet name has 1 to 31 characters and none of []:*?/\\."},
    {SheetNameTaken, "Another sheet has this name."},
    {OtherFormat, "The workbook cannot be saved in this format."},
    {NotKeptForReading, "The cell is written already and was not kept for reading."},
    {PartOfArray, "A part of an array formula cannot be changed. Clear the whole array or choose another place."},
    {ChangedMeanwhile, "Another program has changed the workbook during the run. Run again."},
    {OldVersion, "The existing workbook is of a version before 97. Save it in the form of 97 or later."},
    {ReportChanged, "The report was changed while it was read. Convert it when it is complete."},
    {WouldOverwrite, "The sheet holds something, and nothing is to be overwritten. Choose another sheet or file."},
    {FileIsThere, "The file is there already, and nothing is to be overwritten. Choose another file."},
    {BackupFailed, "The file as it was could not be kept beside the new one, so it stays as it is."},
});

constexpr bool InOrder() {
  for (size_t i = 0; i < kTexts.size(); ++i)
    if (static_cast<size_t>(kTexts[i].first) != i) return false;
  return true;
}
static_assert(InOrder());

}  // namespace

std::string_view OutputMessageText(OutputMessage message) {
  return kTexts[static_cast<size_t>(message)].second;
}

Failure OutputFailure(std::string_view sPlace, OutputMessage message) {
  return OwnFailure(sPlace, Translate(OutputMessageText(message)));
}

Failure CellFailure(int nSheet, int64_t nRow, int nColumn, OutputMessage message) {
  return OutputFailure(Translate("Sheet") + " " + std::to_string(nSheet) + ", " + Translate("row") + " " +
                           std::to_string(nRow) + ", " + Translate("column") + " " + std::to_string(nColumn),
                       message);
}

}  // namespace quillon
