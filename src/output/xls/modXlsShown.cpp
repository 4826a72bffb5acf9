#include "modXlsShown.h"

#include "clsXlsStringTable.h"
#include "modShownNumber.h"
#include "modXlsFormula.h"
#include "modXlsText.h"

namespace quillon {

namespace {

std::string ShownNumberOf(double nValue, const XlsCell& cell, clsXlsGlobals& globals, bool bDayFirst) {
  return ShownNumber(nValue, globals.Formats().KindOf(cell.nXf), {.bDayFirst = bDayFirst, .b1904 = globals.Is1904()});
}

std::string ShownBoolOrError(unsigned nValue, bool bError) {
  if (bError) return std::string(XlsErrorWord(nValue));
  return nValue != 0 ? "TRUE" : "FALSE";
}

/// The text of a formula's result stands in a record behind the formula.
std::string StringResult(std::string_view sStream, const XlsCell& cell) {
  std::string sText;
  clsXlsRecordReader reader(sStream.substr(0, cell.nEnd), cell.nOffset);
  XlsRecord record;
  while (reader.Next(record))
    if (record.nId == xls::kString) ReadXlsString(sStream, record.nOffset + 4, record.End(), sText);
  return sText;
}

}  // namespace

std::string ShownXlsCell(std::string_view sStream, const XlsCell& cell, clsXlsGlobals& globals, bool bDayFirst) {
  const std::string_view sData = sStream.substr(cell.nOffset + 4, cell.nEnd - cell.nOffset - 4);
  std::string sText;
  switch (cell.nId) {
    case xls::kRk:
      return ShownNumberOf(NumberOfRk(GetU32(sData, 6)), cell, globals, bDayFirst);
    case xls::kMulRk: {
      const size_t nItem = cell.Column() - GetU16(sData, 2);
      return ShownNumberOf(NumberOfRk(GetU32(sData, 6 + 6 * nItem)), cell, globals, bDayFirst);
    }
    case xls::kNumber:
      return ShownNumberOf(GetF64(sData, 6), cell, globals, bDayFirst);
    case xls::kLabelSst:
      return globals.Strings().Text(GetU32(sData, 6));
    case xls::kLabel:
    case xls::kRString:
      GetXlsString(sData, 6, 2, sText);
      return sText;
    case xls::kBoolErr:
      return ShownBoolOrError(GetU8(sData, 6), GetU8(sData, 7) != 0);
    case xls::kFormula:
      if (GetU16(sData, 12) != 0xFFFF) return ShownNumberOf(GetF64(sData, 6), cell, globals, bDayFirst);
      if (GetU8(sData, 6) == 0) return StringResult(sStream, cell);
      if (GetU8(sData, 6) == 3) return {};
      return ShownBoolOrError(GetU8(sData, 8), GetU8(sData, 6) == 2);
    default:
      return {};
  }
}

}  // namespace quillon
