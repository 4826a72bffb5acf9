#include "modFixedWidthAttributes.h"

#include <algorithm>

#include "modCellwright_DLL.h"
#include "modSettings.h"

namespace quillon {

int32_t lMostColumnsAssigned = 0;

namespace {

void SetWidth(bool bInputSide, int32_t lColumn, int32_t lWidth) {
  if (bInputSide) {
    OptInputFixedWidthCharacterCountSet(lColumn, lWidth);
  } else {
    OptOutputFileTXTUseSpecifiedColumnWidthsSet(lColumn, lWidth);
  }
}

void GiveColumn(int32_t lColumn, const ProfileColumn& column, bool bInputSide, bool bTrim) {
  const char pad[2] = {static_cast<char>(column.lPadCharacter), '\0'};
  const char none[2] = {static_cast<char>(CellwrightColumn::kNoPad), '\0'};
  const auto iColumn = static_cast<int16_t>(lColumn);
  SetWidth(bInputSide, lColumn, column.bRemove && column.lWidth > 0 ? -column.lWidth : column.lWidth);
  OptFixedWidthPadCharacter(lColumn, pad);
  OptFixedWidthJustification(lColumn, column.lJustification);
  OptFixedWidthColumnOrder(iColumn, static_cast<int16_t>(column.lPosition));
  OptInputFixedWidthPadCharacter(iColumn, bTrim ? pad : none);
  if (bTrim) OptInputFixedWidthJustification(iColumn, column.lJustification == 1 ? 2 : 1);
}

}  // namespace

int32_t AssignFixedWidthAttributes(std::string_view sProfile, bool bInputSide, bool bTrimInputTextFilesPadCharacter,
                                   clsHost& host, ProfileFault& fault) {
  fault = {};
  const std::string sPath = FindProfile(sProfile);
  if (sPath.empty()) return kProfileMissing;
  clsLineReader reader;
  Failure failure;
  if (!reader.Open(sPath, {.bUnix = false, .pCodePage = SystemCodePage()}, failure)) {
    fault.sExpected = failure.sText;
    return kProfileBad;
  }
  int32_t lCount = 0;
  for (ProfileColumn column; ReadProfileColumn(reader, column, fault);) {
    GiveColumn(++lCount, column, bInputSide, bTrimInputTextFilesPadCharacter);
    if (lCount % 1000 == 0) host.LetEventsRun();
  }
  const bool bDone = fault.sExpected.empty();
  for (int32_t lColumn = lCount + 1; bDone && lColumn <= lMostColumnsAssigned; ++lColumn) {
    SetWidth(bInputSide, lColumn, -1);
  }
  // Also for a bad profile: the columns that it gave must not survive into the next one.
  lMostColumnsAssigned = std::max(lMostColumnsAssigned, lCount);
  return bDone ? kProfileDone : kProfileBad;
}

}  // namespace quillon
