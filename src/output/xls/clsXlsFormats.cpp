#include "clsXlsFormats.h"

#include <algorithm>
#include <array>

#include "modText.h"
#include "modXlsText.h"

namespace quillon {

namespace {

constexpr size_t kMaxXfs = 4000;  // the format allows 4050
constexpr size_t kMaxFormatId = 382;

}  // namespace

void clsXlsFormats::AddExistingFormat(std::string_view sRecordData) {
  const uint16_t nId = GetU16(sRecordData, 0);
  std::string sCode;
  if (!GetXlsString(sRecordData, 2, 2, sCode)) return;
  if (nId >= nNextId_ && nId < 0xFFFF) nNextId_ = static_cast<uint16_t>(nId + 1);
  ids_.emplace(sCode, nId);
  codes_[nId] = std::move(sCode);
}

FormatKind clsXlsFormats::KindOf(uint16_t nXf) const {
  const uint16_t nId = NumberFormatOf(nXf);
  if (nId == xls::kGeneralFormat) return FormatKind::General;
  if (const auto found = codes_.find(nId); found != codes_.end()) return KindOfFormatCode(found->second);
  return KindOfBuiltInFormat(nId);
}

std::string_view clsXlsFormats::CodeOf(uint16_t nXf) const {
  const uint16_t nId = NumberFormatOf(nXf);
  const auto found = codes_.find(nId);
  return nId != xls::kGeneralFormat && found != codes_.end() ? std::string_view(found->second) : BuiltInFormatCode(nId);
}

uint16_t clsXlsFormats::DefaultXf() const {
  constexpr size_t kKind = 4;
  constexpr unsigned kIsStyle = 0x04;
  for (size_t i = xls::kDefaultXf; i < xfs_.size(); ++i)
    if ((GetU16(xfs_[i], kKind) & kIsStyle) == 0) return static_cast<uint16_t>(i);
  return xls::kDefaultXf;
}

int clsXlsFormats::FormatId(std::string_view sCode) {
  if (const auto found = ids_.find(sCode); found != ids_.end()) return found->second;
  if (const auto nId = BuiltInFormatId(sCode)) return *nId;
  if (nNextId_ > kMaxFormatId) return -1;
  std::string sData;
  PutU16(sData, nNextId_);
  PutXlsString(sData, sCode, 2);
  PutRecord(sAddedFormats_, xls::kFormat, sData);
  ids_.emplace(sCode, nNextId_);
  codes_[nNextId_] = sCode;
  return nNextId_++;
}

uint16_t clsXlsFormats::Plain(uint16_t nXf) {
  if (!bOwn_ || NumberFormatOf(nXf) == xls::kGeneralFormat) return nXf;
  const int nPlain = Make(nXf, xls::kGeneralFormat);
  return nPlain < 0 ? nXf : static_cast<uint16_t>(nPlain);
}

int clsXlsFormats::WithNumberFormat(uint16_t nXf, std::string_view sCode) {
  if (sCode.empty()) return Plain(nXf);
  const auto nFirst = static_cast<unsigned char>(sCode.front()), nLast = static_cast<unsigned char>(sCode.back());
  Answer& answer = recent_[(sCode.size() * 7 + nFirst * 3U + nLast + nXf) % recent_.size()];
  if (answer.nXf != nXf || answer.sCode != sCode) answer = {nXf, Make(nXf, FormatId(sCode)), std::string(sCode)};
  return answer.nResult;
}

int clsXlsFormats::Make(uint16_t nXf, int nFormat) {
  if (nFormat < 0 || nXf >= xfs_.size()) return -1;
  const auto nFormatId = static_cast<uint16_t>(nFormat);
  if (const auto found = made_.find({nXf, nFormatId}); found != made_.end()) return found->second;
  constexpr unsigned kOwnNumberFormat = 0x04;
  std::string sXf = xfs_[nXf];
  SetAt(sXf, 2, nFormatId);
  SetAt(sXf, 9, static_cast<uint8_t>(GetU8(sXf, 9) | kOwnNumberFormat));
  // Run after run into a file of our own would add the same ones again.
  const auto known = bOwn_ ? std::find(xfs_.begin(), xfs_.end(), sXf) : xfs_.end();
  if (known != xfs_.end()) return made_[{nXf, nFormatId}] = static_cast<uint16_t>(known - xfs_.begin());
  if (xfs_.size() >= kMaxXfs) return -1;
  return made_[{nXf, nFormatId}] = Add(std::move(sXf), nXf);
}

uint16_t clsXlsFormats::Add(std::string sXf, uint16_t nModel) {
  const auto nResult = static_cast<uint16_t>(xfs_.size());
  PutRecord(sAddedXfs_, xls::kXf, sXf);
  xfs_.push_back(std::move(sXf));
  models_.emplace_back(nResult, nModel);
  return nResult;
}

uint16_t clsXlsFormats::Heading(uint16_t nXf) {
  constexpr unsigned kOwnFont = 0x08;
  if (nHeadingFont_ == 0 || nHeadingXf_ != 0) return nHeadingFont_ == 0 ? nXf : nHeadingXf_;
  std::string sXf = xfs_[nXf];
  SetAt(sXf, 0, nHeadingFont_);
  SetAt(sXf, 9, static_cast<uint8_t>(GetU8(sXf, 9) | kOwnFont));
  return nHeadingXf_ = Add(std::move(sXf), nXf);
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
