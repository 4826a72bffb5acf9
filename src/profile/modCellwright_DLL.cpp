#include "modCellwright_DLL.h"

#include <algorithm>
#include <cstring>

#include "modFixedWidthAttributes.h"
#include "modText.h"

namespace quillon {

namespace {

std::string Text(const char* s) {
  return s != nullptr ? s : "";
}

constexpr int32_t kDone = 0;

/// Sets something of a column.
template <typename Change>
int32_t ChangeColumn(int32_t lColumn, Change change) {
  CellwrightColumn* const pColumn = Cellwright().Column(lColumn);
  if (pColumn == nullptr) {
    return static_cast<int32_t>(Cellwright().Fail(EngineResult::ColumnNumber, std::to_string(lColumn)));
  }
  change(*pColumn);
  return kDone;
}

/// The one character of a string; 0 if there is none.
unsigned char CharacterOf(const char* s) {
  return s != nullptr ? static_cast<unsigned char>(*s) : '\0';
}

/// Byte position of a character's first byte at or before nByte.
size_t CharacterStart(std::string_view sText, size_t nByte) {
  while (nByte > 0 && nByte < sText.size() && (static_cast<unsigned char>(sText[nByte]) & 0xC0) == 0x80) --nByte;
  return nByte;
}

}  // namespace

clsCellwright& Cellwright() {
  static clsCellwright engine;
  return engine;
}

const ProfileAccount& LastTally() {
  return Cellwright().LastTally();
}

void ResetProfileGlobals() {
  Cellwright().Change() = {};
  lMostColumnsAssigned = 0;
}

int32_t OptLeaveLeadingZeroesIntact(int16_t bOn) {
  Cellwright().Change().bAllText = bOn != 0;
  return kDone;
}

int32_t OptSheetsSet(const char* sSheet) {
  Cellwright().Change().sSheet = Text(sSheet);
  return kDone;
}

int32_t OptInputFixedWidthCharacterCountSet(int32_t lColumn, int32_t lWidth) {
  return ChangeColumn(lColumn, [&](CellwrightColumn& column) { column.lCount = lWidth; });
}

int32_t OptOutputFileTXTUseSpecifiedColumnWidthsSet(int32_t lColumn, int32_t lWidth) {
  return ChangeColumn(lColumn, [&](CellwrightColumn& column) { column.lOutputWidth = lWidth; });
}

int32_t OptFixedWidthPadCharacter(int32_t lColumn, const char* sCharacter) {
  return ChangeColumn(lColumn, [&](CellwrightColumn& column) { column.pad = CharacterOf(sCharacter); });
}

int32_t OptFixedWidthJustification(int32_t lColumn, int32_t lSide) {
  return ChangeColumn(lColumn, [&](CellwrightColumn& column) { column.lSide = lSide; });
}

int32_t OptFixedWidthColumnOrder(int16_t iColumn, int16_t iPosition) {
  return ChangeColumn(iColumn, [&](CellwrightColumn& column) { column.lOrder = iPosition; });
}

int32_t OptInputFixedWidthPadCharacter(int16_t iColumn, const char* sCharacter) {
  return ChangeColumn(iColumn, [&](CellwrightColumn& column) { column.inputPad = CharacterOf(sCharacter); });
}

int32_t OptInputFixedWidthJustification(int16_t iColumn, int16_t iSide) {
  return ChangeColumn(iColumn, [&](CellwrightColumn& column) { column.lInputSide = iSide; });
}

int32_t OptXLSRangeSet(const char* sCell) {
  Cellwright().Change().sStartCell = Text(sCell);
  StartCell ignored;
  if (ParseStartCell(Text(sCell), ignored)) return kDone;
  return static_cast<int32_t>(Cellwright().Fail(EngineResult::StartCell, "[" + Text(sCell) + "]"));
}

int32_t OptDelimiterUsedSet(int32_t lCode) {
  Cellwright().Change().lSeparator = lCode;
  return kDone;
}

int32_t OptInputFileSet(const char* sPath) {
  Cellwright().Change().sInputFile = Text(sPath);
  return kDone;
}

int32_t OptInputFileTypeSet(int32_t lType) {
  Cellwright().Change().lInputType = lType;
  return kDone;
}

int32_t OptOutputFileTypeSet(int32_t lType) {
  Cellwright().Change().lOutputType = lType;
  return kDone;
}

int32_t OptOutputFileSet(const char* sPath) {
  Cellwright().Change().sOutputFile = Text(sPath);
  return kDone;
}

int32_t OptUseDoubleQuotesSet(int32_t lMode) {
  Cellwright().Change().lUseDoubleQuotes = lMode;
  return kDone;
}

int32_t ConvertFile() {
  return static_cast<int32_t>(Cellwright().ConvertFile());
}

int32_t GetErrorString(int32_t, char* pBuffer, int32_t lBufferSize) {
  if (pBuffer == nullptr || lBufferSize < 1) return static_cast<int32_t>(EngineResult::OutputUnwritable);
  constexpr std::string_view kLeftOut = "...";
  std::string sText = Cellwright().LastError();
  const auto nRoom = static_cast<size_t>(lBufferSize) - 1;
  if (sText.size() > nRoom && nRoom > 2 * kLeftOut.size()) {
    // A long path stands in the middle; the words before it and the reason behind it are what the reader needs.
    const size_t nHead = CharacterStart(sText, (nRoom - kLeftOut.size()) / 2);
    size_t nTail = sText.size() - (nRoom - kLeftOut.size() - nHead);
    while (nTail < sText.size() && CharacterStart(sText, nTail) != nTail) ++nTail;
    sText = sText.substr(0, nHead) + std::string(kLeftOut) + sText.substr(nTail);
  }
  sText.resize(std::min(sText.size(), nRoom));
  std::memcpy(pBuffer, sText.c_str(), sText.size() + 1);
  return kDone;
}

}  // namespace quillon
