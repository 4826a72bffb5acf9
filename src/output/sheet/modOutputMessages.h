#pragma once
// Every reason that the workbook side gives, with what to do about it, in one table.

#include <cstdint>
#include <string_view>

#include "modFailure.h"

namespace quillon {

enum class OutputMessage {
  IsFolder,
  NoFolder,
  NotWritable,
  OpenElsewhere,
  NoWorkbookName,
  EmptyFile,
  NotAWorkbook,
  IsXlsxNotXls,
  IsXlsNotXlsx,
  Encrypted,
  Damaged,
  TooLarge,
  OutsideSheet,
  TextTooLong,
  NoSuchSheet,
  BadSheetName,
  SheetNameTaken,
  OtherFormat,
  NotKeptForReading,
  PartOfArray,
  ChangedMeanwhile,
  OldVersion,
  ReportChanged,
  WouldOverwrite,
  FileIsThere,
  BackupFailed,
};

/// The English text, which is also its key in the phrase table.
std::string_view OutputMessageText(OutputMessage message);
/// "place: text", translated; the place is a path or a cell ("Sheet 1, row 3, column 300").
Failure OutputFailure(std::string_view sPlace, OutputMessage message);
Failure CellFailure(int nSheet, int64_t nRow, int nColumn, OutputMessage message);

}  // namespace quillon
