#include "modFixedWidthAttributes.h"

#include <algorithm>
#include <limits>

#include "clsLineReader.h"
#include "modCellwright_DLL.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

int32_t lMostColumnsAssigned = 0;

namespace {

/// The path that a profile's text means: its own, or that of the name in the profiles' folder. "" if there is none.
std::string FindProfile(std::string_view sProfile) {
  if (IsFile(sProfile)) return std::string(sProfile);
  std::string sPath = JoinPath(JoinPath(gsDataFolder, "Profiles"), sProfile);
  if (!UpperText(TrimBlanks(sProfile)).ends_with(".TXT")) sPath += ".TXT";
  return IsFile(sPath) ? sPath : std::string();
}

void SetWidth(bool bInputSide, int32_t lColumn, int32_t lWidth) {
  if (bInputSide) {
    OptInputFixedWidthCharacterCountSet(lColumn, lWidth);
  } else {
    OptOutputFileTXTUseSpecifiedColumnWidthsSet(lColumn, lWidth);
  }
}

/// Columns and positions are 16-bit in part of the engine's interface; a larger one is a fault of the profile.
bool FitsInterface(int32_t lColumn, int32_t lPosition, ProfileFault& fault) {
  constexpr int32_t kMost = std::numeric_limits<int16_t>::max();
  constexpr int32_t kLeast = std::numeric_limits<int16_t>::min();
  if (lColumn > kMost) {
    fault.sExpected = Translate("a profile has at most 32767 lines");
  } else if (lPosition > kMost || lPosition < kLeast) {
    fault.sExpected =
        Translate("Position") + " [" + std::to_string(lPosition) + "] " + Translate("is outside -32768 to 32767");
  }
  return fault.sExpected.empty();
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
  for (std::string_view sRow; reader.ReadRow(sRow);) {
    ProfileColumn column;
    const bool bRead = DecipherLineOfFixedWidthProfile(reader.CodePage().ToUtf8(sRow), column, fault);
    if (bRead && column.lPosition == -1) column.lPosition = lCount + 1;
    if (!bRead || !FitsInterface(lCount + 1, column.lPosition, fault)) {
      fault.nLine = reader.RowNumber();
      break;
    }
    GiveColumn(++lCount, column, bInputSide, bTrimInputTextFilesPadCharacter);
    if (lCount % 1000 == 0) host.LetEventsRun();
  }
  if (reader.LastFailure().Failed()) fault.sExpected = reader.LastFailure().sText;
  const bool bDone = fault.sExpected.empty();
  for (int32_t lColumn = lCount + 1; bDone && lColumn <= lMostColumnsAssigned; ++lColumn) {
    SetWidth(bInputSide, lColumn, -1);
  }
  // Also for a bad profile: the columns that it gave must not survive into the next one.
  lMostColumnsAssigned = std::max(lMostColumnsAssigned, lCount);
  return bDone ? kProfileDone : kProfileBad;
}

}  // namespace quillon
