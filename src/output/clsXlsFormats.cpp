#include "clsXlsFormats.h"

#include <array>

#include "modXlsText.h"

namespace quillon {

namespace {

constexpr size_t kMaxXfs = 4000;  // the format allows 4050
constexpr size_t kMaxFormatId = 382;

/// Number formats that every reader knows by number, alike in all languages.
constexpr auto kBuiltIn = std::to_array<std::pair<std::string_view, uint16_t>>({{"0", 1},
                                                                                {"0.00", 2},
                                                                                {"#,##0", 3},
                                                                                {"#,##0.00", 4},
                                                                                {"0%", 9},
                                                                                {"0.00%", 10},
                                                                                {"0.00E+00", 11},
                                                                                {"m/d/yyyy", 14},
                                                                                {"d-mmm-yy", 15},
                                                                                {"d-mmm", 16},
                                                                                {"mmm-yy", 17},
                                                                                {"h:mm AM/PM", 18},
                                                                                {"h:mm:ss AM/PM", 19},
                                                                                {"h:mm", 20},
                                                                                {"h:mm:ss", 21},
                                                                                {"m/d/yyyy h:mm", 22},
                                                                                {"mm:ss", 45},
                                                                                {"[h]:mm:ss", 46},
                                                                                {"@", 49}});

/// Those among them that look the same wherever the file is opened.
bool IsFixedBuiltIn(uint16_t nId) {
  return nId <= 11 || nId == xls::kTextFormat;
}

}  // namespace

void clsXlsFormats::AddExistingFormat(std::string_view sRecordData) {
  const uint16_t nId = GetU16(sRecordData, 0);
  std::string sCode;
  if (!GetXlsString(sRecordData, 2, 2, sCode)) return;
  if (nId >= nNextId_ && nId < 0xFFFF) nNextId_ = static_cast<uint16_t>(nId + 1);
  ids_.emplace(sCode, nId);
  codes_[nId] = std::move(sCode);
}

std::string_view clsXlsFormats::FormatCodeOf(uint16_t nXf) const {
  const uint16_t nId = NumberFormatOf(nXf);
  if (const auto found = codes_.find(nId); found != codes_.end())
    return found->second == "General" ? std::string_view{} : std::string_view(found->second);
  for (const auto& [sCode, nKnown] : kBuiltIn)
    if (nKnown == nId) return sCode;
  return {};
}

int clsXlsFormats::FormatId(std::string_view sCode) {
  if (const auto found = ids_.find(sCode); found != ids_.end()) return found->second;
  for (const auto& [sKnown, nId] : kBuiltIn)
    if (sKnown == sCode && IsFixedBuiltIn(nId)) return nId;
  if (nNextId_ > kMaxFormatId) return -1;
  std::string sData;
  PutU16(sData, nNextId_);
  PutXlsString(sData, sCode, 2);
  PutRecord(sAddedFormats_, xls::kFormat, sData);
  ids_.emplace(sCode, nNextId_);
  codes_[nNextId_] = sCode;
  return nNextId_++;
}

int clsXlsFormats::WithNumberFormat(uint16_t nXf, std::string_view sCode) {
  if (bHasLast_ && nXf == nLastXf_ && sCode == sLastCode_) return nLastResult_;
  bHasLast_ = true;
  nLastXf_ = nXf;
  sLastCode_ = sCode;
  nLastResult_ = Make(nXf, FormatId(sCode));
  return nLastResult_;
}

int clsXlsFormats::Make(uint16_t nXf, int nFormat) {
  if (nFormat < 0 || nXf >= xfs_.size()) return -1;
  const auto nFormatId = static_cast<uint16_t>(nFormat);
  if (const auto found = made_.find({nXf, nFormatId}); found != made_.end()) return found->second;
  if (xfs_.size() >= kMaxXfs) return -1;
  constexpr unsigned kOwnNumberFormat = 0x04;
  const auto nResult = static_cast<uint16_t>(xfs_.size());
  std::string sXf = xfs_[nXf];
  SetAt(sXf, 2, nFormatId);
  SetAt(sXf, 9, static_cast<uint8_t>(GetU8(sXf, 9) | kOwnNumberFormat));
  PutRecord(sAddedXfs_, xls::kXf, sXf);
  xfs_.push_back(std::move(sXf));
  made_[{nXf, nFormatId}] = nResult;
  models_.emplace_back(nResult, nXf);
  return nResult;
}

std::string clsXlsFormats::AddedExtensions() const {
  constexpr size_t kXfIndex = 14;
  std::string sOut;
  for (const auto& [nXf, nModel] : models_) {
    for (std::string sData : extensions_) {
      if (GetU16(sData, kXfIndex) != nModel) continue;
      SetAt(sData, kXfIndex, nXf);
      PutRecord(sOut, xls::kXfExt, sData);
    }
  }
  return sOut;
}

uint32_t clsXlsFormats::XfChecksum(size_t nCount) const {
  constexpr uint32_t kPolynomial = 0xAF;
  uint32_t nCrc = 0;
  for (size_t i = 0; i < nCount && i < xfs_.size(); ++i) {
    for (const char ch : xfs_[i]) {
      nCrc ^= uint32_t{static_cast<unsigned char>(ch)} << 24;
      for (int nBit = 0; nBit < 8; ++nBit) nCrc = (nCrc << 1) ^ ((nCrc & 0x80000000U) != 0 ? kPolynomial : 0);
    }
  }
  return nCrc;
}

}  // namespace quillon
