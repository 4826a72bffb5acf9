#pragma once
// Records of a workbook stream (BIFF8): two bytes of number, two of length, then the data. Data beyond kMaxRecordData
// goes on in CONTINUE records.

#include <cstdint>
#include <string>
#include <string_view>

#include "modXlsBytes.h"

namespace quillon {

/// Numbers of the records that are spoken of by name.
namespace xls {
enum RecordId : uint16_t {
  kEof = 0x0A,
  kCalcCount = 0x0C,
  kCalcMode = 0x0D,
  kPrecision = 0x0E,
  kRefMode = 0x0F,
  kDelta = 0x10,
  kIteration = 0x11,
  kProtect = 0x12,
  kPassword = 0x13,
  kHeader = 0x14,
  kFooter = 0x15,
  kWinProtect = 0x19,
  kSelection = 0x1D,
  kDateMode = 0x22,
  kPrintHeaders = 0x2A,
  kPrintGridlines = 0x2B,
  kFilePass = 0x2F,
  kFont = 0x31,
  kContinue = 0x3C,
  kWindow1 = 0x3D,
  kPane = 0x41,
  kBackup = 0x40,
  kCodePage = 0x42,
  kDconRef = 0x51,
  kDefColWidth = 0x55,
  kWriteAccess = 0x5C,
  kUncalced = 0x5E,
  kSaveRecalc = 0x5F,
  kColInfo = 0x7D,
  kGuts = 0x80,
  kWsBool = 0x81,
  kGridSet = 0x82,
  kHCenter = 0x83,
  kVCenter = 0x84,
  kBoundSheet = 0x85,
  kCountry = 0x8C,
  kHideObj = 0x8D,
  kSetup = 0xA1,
  kMulRk = 0xBD,
  kMulBlank = 0xBE,
  kMms = 0xC1,
  kRString = 0xD6,
  kDbCell = 0xD7,
  kBookBool = 0xDA,
  kXf = 0xE0,
  kInterfaceHdr = 0xE1,
  kInterfaceEnd = 0xE2,
  kSst = 0xFC,
  kLabelSst = 0xFD,
  kExtSst = 0xFF,
  kTabId = 0x13D,
  kUsesElfs = 0x160,
  kMergedCells = 0xE5,
  kName = 0x18,
  kExternSheet = 0x17,
  kDsf = 0x161,
  kSupBook = 0x1AE,
  kProt4Rev = 0x1AF,
  kProt4RevPass = 0x1BC,
  kRefreshAll = 0x1B7,
  kRecalcId = 0x1C1,
  kDimensions = 0x200,
  kBlank = 0x201,
  kNumber = 0x203,
  kLabel = 0x204,
  kBoolErr = 0x205,
  kFormula = 0x06,
  kString = 0x207,
  kRow = 0x208,
  kIndex = 0x20B,
  kArray = 0x221,
  kDefaultRowHeight = 0x225,
  kTable = 0x236,
  kWindow2 = 0x23E,
  kRk = 0x27E,
  kStyle = 0x293,
  kFormat = 0x41E,
  kShrFmla = 0x4BC,
  kBof = 0x809,
  kXfCrc = 0x87C,
  kXfExt = 0x87D,
};
constexpr size_t kMaxRecordData = 8224;
constexpr uint16_t kBiff8 = 0x0600;
constexpr uint16_t kGlobals = 0x0005;  ///< Kinds of substream, as BOF names them
constexpr uint16_t kWorksheet = 0x0010;
constexpr uint16_t kDefaultXf = 15;
constexpr std::string_view kOwnName = "Quillon";                  ///< Who wrote the file, as WRITEACCESS has it
constexpr std::string_view kNoResult("\3\0\0\0\0\0\xFF\xFF", 8);  ///< In FORMULA, in place of a result
constexpr uint16_t kGeneralFormat = 0;
constexpr uint16_t kTextFormat = 49;
}  // namespace xls

/// A record where it lies: its number, the offset of its header in the stream, its data.
struct XlsRecord {
  uint16_t nId = 0;
  size_t nOffset = 0;
  std::string_view sData;

  size_t End() const { return nOffset + 4 + sData.size(); }
};

/// Walks over the records of a stream. A record that reaches beyond the stream ends the walk with Broken().
class clsXlsRecordReader {
 public:
  clsXlsRecordReader(std::string_view sStream, size_t nOffset) : sStream_(sStream), nNext_(nOffset) {}

  bool Next(XlsRecord& record) {
    if (nNext_ > sStream_.size() || sStream_.size() - nNext_ < 4) return Stop();
    const size_t nLength = GetU16(sStream_, nNext_ + 2);
    if (nLength > sStream_.size() - nNext_ - 4) return Stop();
    record = {GetU16(sStream_, nNext_), nNext_, sStream_.substr(nNext_ + 4, nLength)};
    nNext_ = record.End();
    return true;
  }
  /// True if the walk ended inside a record; the end of the bytes between records is no fault of the record.
  bool Broken() const { return bBroken_; }

 private:
  bool Stop() {
    bBroken_ = nNext_ != sStream_.size();
    return false;
  }

  std::string_view sStream_;
  size_t nNext_;
  bool bBroken_ = false;
};

inline void PutRecord(std::string& sOut, uint16_t nId, std::string_view sData) {
  PutU16(sOut, nId);
  PutU16(sOut, static_cast<uint16_t>(sData.size()));
  sOut.append(sData);
}

}  // namespace quillon
