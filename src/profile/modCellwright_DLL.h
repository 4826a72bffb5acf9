#pragma once
// The flat interface of the conversion engine: options one at a time, then ConvertFile once per input file.
//
// A "long" is int32_t, an "integer" int16_t, a boolean an int16_t of -1 or 0. Strings end in NUL; single characters are
// bytes of the system's code page, paths, cell references and sheet names UTF-8. Null counts as "". Every function
// returns 0 or a code of modCellwrightMessages. Columns count from 1. All calls come from the one thread.

#include <cstdint>

#include "clsCellwright.h"

namespace quillon {

int32_t OptLeaveLeadingZeroesIntact(int16_t bOn);  ///< Each spreadsheet cell holds its text as text
int32_t OptSheetsSet(const char* sSheet);          ///< Name of the sheet that is written
int32_t OptInputFixedWidthCharacterCountSet(int32_t lColumn, int32_t lWidth);          ///< Negative: cut but left out
int32_t OptOutputFileTXTUseSpecifiedColumnWidthsSet(int32_t lColumn, int32_t lWidth);  ///< Held, without effect
int32_t OptFixedWidthPadCharacter(int32_t lColumn, const char* sCharacter);            ///< Held, without effect
int32_t OptFixedWidthJustification(int32_t lColumn, int32_t lSide);                    ///< Held, without effect
int32_t OptFixedWidthColumnOrder(int16_t iColumn, int16_t iPosition);                  ///< Place in the output
int32_t OptInputFixedWidthPadCharacter(int16_t iColumn, const char* sCharacter);  ///< Trimmed; code 255 trims nothing
int32_t OptInputFixedWidthJustification(int16_t iColumn, int16_t iSide);  ///< Trimmed from 1 the left, 2 the right
int32_t OptXLSRangeSet(const char* sCell);   ///< First cell to gather; what is no cell reference means A1
int32_t OptDelimiterUsedSet(int32_t lCode);  ///< Separator of CSV, 1 to 255; else a comma
int32_t OptInputFileSet(const char* sPath);
int32_t OptInputFileTypeSet(int32_t lType);   ///< 21 text in the system's code page, 42 UTF-16
int32_t OptOutputFileTypeSet(int32_t lType);  ///< 6 CSV, 23 CSV in UTF-8, 51 XLSX, -4143 XLS
int32_t OptOutputFileSet(const char* sPath);
int32_t OptUseDoubleQuotesSet(int32_t lMode);  ///< 0 never, 2 always, else sometimes
int32_t ConvertFile();                         ///< 0 written, 6 refused by attributes, negative any other failure
/// Copies the text of the last failure, whatever the code, in UTF-8, with a NUL. A text that is too long loses its
/// middle.
int32_t GetErrorString(int32_t lCode, char* pBuffer, int32_t lBufferSize);

/// The engine behind the functions: one for the process, as its options outlive a conversion.
clsCellwright& Cellwright();
/// The account of the last ConvertFile.
const ProfileAccount& LastTally();
/// Puts the engine's options and lMostColumnsAssigned back to their start values.
void ResetProfileGlobals();

}  // namespace quillon
