#include "modProfileFile.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "modFiles.h"
#include "modNumbers.h"
#include "modPaths.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

/// The part of the text before the next sEnd; moves the text behind it. Nothing is left of an empty text.
std::optional<std::string_view> NextPiece(std::optional<std::string_view>& sText, char end) {
  if (!sText) return std::nullopt;
  const std::string_view sAll = *sText;
  const size_t nEnd = sAll.find(end);
  if (nEnd == std::string_view::npos) {
    sText.reset();
    return sAll;
  }
  sText = sAll.substr(nEnd + 1);
  return sAll.substr(0, nEnd);
}

std::string Quoted(std::string_view sField) {
  constexpr size_t kMostShown = 40;
  const std::string_view sShown = MidChars(sField, 1, kMostShown);
  return " [" + std::string(sShown) + (sShown.size() < sField.size() ? "...] " : "] ");
}

/// A numeric field as a 32-bit integer, fallback where it isn't numeric; False if it is too large.
bool ReadInteger(std::string_view sField, std::string_view sName, int32_t lFallback, int32_t& lValue,
                 ProfileFault& fault) {
  lValue = lFallback;
  if (!IsNumericText(sField)) return true;
  const std::optional<int32_t> parsed = ParseWholeNumber(sField);
  if (parsed) lValue = *parsed;
  if (!parsed)
    fault.sExpected = Translate(sName) + Quoted(sField) + Translate("is too large for a whole number of 32 bits");
  return parsed.has_value();
}

bool ReadWidth(std::string_view sField, int32_t& lWidth, ProfileFault& fault) {
  const int32_t lFallback = sField.find('-') != std::string_view::npos ? -1 : 1;
  if (!ReadInteger(sField, "Width", lFallback, lWidth, fault)) return false;
  if (lWidth == 0) lWidth = -1;
  return true;
}

bool ReadPad(std::string_view sField, int32_t& lPad, ProfileFault& fault) {
  const size_t nOpen = sField.find('[');
  const std::string_view sBehind = nOpen == std::string_view::npos ? "" : sField.substr(nOpen + 1);
  if (sBehind.empty() || sBehind.front() == '[') {
    fault.sExpected =
        Translate("Pad character") + Quoted(sField) + Translate("lacks a code in brackets, as in [32] Space");
    return false;
  }
  const std::string_view sCode = sBehind.substr(0, sBehind.find_first_of("[]"));
  if (!ReadInteger(sCode, "Pad character", 32, lPad, fault)) return false;
  if (lPad < 1 || lPad > 255) lPad = 32;
  return true;
}

}  // namespace

std::string ProfileFault::Text(std::string_view sProfile) const {
  std::string sText;
  if (nLine > 0) sText = Translate("Line") + " " + std::to_string(nLine) + " " + Translate("of profile");
  if (nLine > 0) sText += " [" + std::string(sProfile) + "]: ";
  return sText + sExpected;
}

bool DecipherLineOfFixedWidthProfile(std::string_view sLine, ProfileColumn& column, ProfileFault& fault) {
  constexpr size_t kFields = 6;
  std::string_view fields[kFields];
  std::optional<std::string_view> sRest;
  if (!sLine.empty()) sRest = sLine;
  for (size_t i = 0; i < kFields; ++i) {
    const auto sField = NextPiece(sRest, '\t');
    if (!sField) {
      fault.sExpected = Translate(
                            "six fields with tabs between them are expected (number, width, pad, align, remove, "
                            "position), found") +
                        " " + std::to_string(i);
      return false;
    }
    fields[i] = *sField;
  }
  if (!ReadWidth(fields[1], column.lWidth, fault) || !ReadPad(fields[2], column.lPadCharacter, fault)) return false;
  column.lJustification = FindNoCase(fields[3], "Left") != std::string_view::npos ? 1 : 2;
  column.bRemove = FindNoCase(fields[4], "Y") != std::string_view::npos;
  return ReadInteger(fields[5], "Position", -1, column.lPosition, fault);
}

bool ReadProfileColumn(clsLineReader& reader, ProfileColumn& column, ProfileFault& fault) {
  constexpr int32_t kMost = std::numeric_limits<int16_t>::max();
  constexpr int32_t kLeast = std::numeric_limits<int16_t>::min();
  column = {};
  std::string_view sRow;
  if (!reader.ReadRow(sRow)) {
    fault.sExpected = reader.LastFailure().sText;
    return false;
  }
  fault.nLine = reader.RowNumber();
  if (!DecipherLineOfFixedWidthProfile(reader.CodePage().ToUtf8(sRow), column, fault)) return false;
  if (fault.nLine > kMost) {
    fault.sExpected = Translate("a profile has at most 32767 lines");
    return false;
  }
  if (column.lPosition == -1) column.lPosition = static_cast<int32_t>(fault.nLine);
  if (column.lPosition > kMost || column.lPosition < kLeast) {
    fault.sExpected = Translate("Position") + " [" + std::to_string(column.lPosition) + "] " +
                      Translate("is outside -32768 to 32767");
    return false;
  }
  fault.nLine = 0;
  return true;
}

bool IsFromOldProfile(std::string_view sLine) {
  return std::count(sLine.begin(), sLine.end(), '\t') < 7;
}

std::string ProfilePath(std::string_view sName) {
  return JoinPath(JoinPath(gsDataFolder, "Profiles"), std::string(sName) + ".txt");
}

std::string FindProfile(std::string_view sProfile) {
  if (IsFile(sProfile)) return std::string(sProfile);
  std::string sPath = JoinPath(JoinPath(gsDataFolder, "Profiles"), sProfile);
  if (!UpperText(TrimBlanks(sProfile)).ends_with(".TXT")) sPath += ".TXT";
  return IsFile(sPath) ? sPath : std::string();
}

}  // namespace quillon
