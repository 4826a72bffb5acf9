#include "clsXlsxStyles.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "clsXmlScanner.h"
#include "modText.h"
#include "modXmlText.h"

namespace quillon {

namespace {

// A spreadsheet holds no more cell formats than these.
constexpr size_t kMaxFormats = 64000;
constexpr size_t kMaxCodes = 200;

uint32_t NumberOf(std::string_view sText) {
  uint32_t nValue = 0;
  std::from_chars(sText.data(), sText.data() + sText.size(), nValue);
  return nValue;
}

}  // namespace

bool clsXlsxStyles::Load(std::string sBytes) {
  sBytes_ = std::move(sBytes);
  clsXmlScanner scanner(sBytes_);
  while (scanner.Next() != XmlToken::End) {
    if (scanner.Token() == XmlToken::Failed) return false;
    if (Place* const pPlace = PlaceOf(scanner); pPlace != nullptr) {
      if (!NotePlace(scanner, *pPlace)) return false;
    } else if (scanner.IsOpening() && scanner.Depth() == 3 && scanner.IsMain("numFmt") && codesPlace_.bOpen) {
      TakeCode(scanner);
    } else if (scanner.IsOpening() && scanner.Depth() == 3 && scanner.IsMain("xf") && formatsPlace_.bOpen) {
      const auto nStart = static_cast<size_t>(scanner.Offset());
      const uint32_t nId = NumberOf(scanner.AttributeText("numFmtId"));
      if (!scanner.SkipElement()) return false;
      const auto nBehind = static_cast<size_t>(scanner.Offset()) + scanner.Raw().size();
      if (!TakeFormat(sBytes_.substr(nStart, nBehind - nStart), nId)) return false;
    }
  }
  return root_.bFound && !root_.bEmpty;
}

/// What the tag in hand begins or ends; null for all else.
clsXlsxStyles::Place* clsXlsxStyles::PlaceOf(const clsXmlScanner& scanner) {
  if (!scanner.IsOpening() && scanner.Token() != XmlToken::EndTag) return nullptr;
  if (scanner.Depth() == 1 && scanner.IsMain("styleSheet")) return &root_;
  if (scanner.Depth() == 2 && scanner.IsMain("numFmts")) return &codesPlace_;
  return scanner.Depth() == 2 && scanner.IsMain("cellXfs") ? &formatsPlace_ : nullptr;
}

/// False for a list given twice, or codes behind the formats: a spreadsheet would have to repair it.
bool clsXlsxStyles::NotePlace(const clsXmlScanner& scanner, Place& place) {
  const auto nStart = static_cast<size_t>(scanner.Offset());
  const size_t nEnd = nStart + scanner.Raw().size();
  if (scanner.Token() == XmlToken::EndTag) {
    place.nClose = nStart;
    place.bOpen = false;
  } else if (place.bFound || (&place == &codesPlace_ && formatsPlace_.bFound)) {
    return false;
  } else {
    const bool bEmpty = scanner.Token() == XmlToken::EmptyTag;
    place = {nStart, nEnd, nEnd, true, bEmpty, 0, !bEmpty};
  }
  if (&place == &root_) sPrefix_ = scanner.Prefix();
  return true;
}

void clsXlsxStyles::TakeCode(const clsXmlScanner& scanner) {
  const uint32_t nId = NumberOf(scanner.AttributeText("numFmtId"));
  std::string sCode = scanner.AttributeText("formatCode");
  idOfCode_.emplace(sCode, nId);
  codes_.insert_or_assign(nId, std::move(sCode));
  if (nId < UINT32_MAX / 2) nNextId_ = std::max(nNextId_, nId + 1);
  ++codesPlace_.nItems;
}

bool clsXlsxStyles::TakeFormat(std::string sXf, uint32_t nFormatId) {
  if (formats_.size() >= kMaxFormats * 2) return false;
  const auto code = codes_.find(nFormatId);
  kinds_.push_back(code == codes_.end() ? KindOfBuiltInFormat(nFormatId) : KindOfFormatCode(code->second));
  codeIds_.push_back(nFormatId);
  indexOfFormat_.emplace(sXf, static_cast<uint32_t>(formats_.size()));
  formats_.push_back(std::move(sXf));
  ++formatsPlace_.nItems;
  return true;
}

std::string_view clsXlsxStyles::CodeOf(uint32_t nFormat) const {
  if (nFormat >= codeIds_.size()) return {};
  const auto code = codes_.find(codeIds_[nFormat]);
  if (code != codes_.end()) return code->second;
  for (const auto& [sCode, nId] : idOfCode_)
    if (nId == codeIds_[nFormat]) return sCode;
  return BuiltInFormatCode(codeIds_[nFormat]);
}

uint32_t clsXlsxStyles::Heading() const {
  for (size_t i = 0; i < formats_.size(); ++i)
    if (formats_[i].find("fontId=\"1\"") != std::string::npos) return static_cast<uint32_t>(i);
  return 0;
}

uint32_t clsXlsxStyles::FormatId(std::string_view sCode) {
  if (const auto nId = BuiltInFormatId(sCode); nId && !codes_.contains(*nId)) return *nId;
  const auto [entry, bNew] = idOfCode_.try_emplace(std::string(sCode), nNextId_);
  if (!bNew) return entry->second;
  sNewCodes_ += '<' + (sPrefix_.empty() ? "" : sPrefix_ + ":") + "numFmt numFmtId=\"" + std::to_string(nNextId_) +
                "\" formatCode=\"";
  AppendXmlAttribute(sNewCodes_, sCode);
  sNewCodes_ += "\"/>";
  ++nNewCodes_;
  return nNextId_++;
}

uint32_t clsXlsxStyles::Plain(uint32_t nFormat) {
  if (!bOwn_ || nFormat >= kinds_.size() || kinds_[nFormat] == FormatKind::General) return nFormat;
  const int64_t nPlain = Derive(nFormat, "General");
  return nPlain < 0 ? nFormat : static_cast<uint32_t>(nPlain);
}

int64_t clsXlsxStyles::Derive(uint32_t nFormat, std::string_view sCode) {
  if (nFormat >= formats_.size()) return -1;
  const auto [entry, bNew] = derived_.try_emplace(std::to_string(nFormat) + ' ' + std::string(sCode), -1);
  if (!bNew) return entry->second;
  if (formats_.size() >= kMaxFormats || nNewCodes_ >= kMaxCodes) return -1;
  const uint32_t nId = FormatId(sCode);
  const std::string& sXf = formats_[nFormat];
  clsXmlScanner scanner(sXf);
  scanner.Next();
  const size_t nTag = scanner.Raw().size();  // A value may hold a ">".
  std::string sNew = WithAttribute(std::string_view(sXf).substr(0, nTag), "numFmtId", std::to_string(nId));
  sNew = WithAttribute(sNew, "applyNumberFormat", "1") + sXf.substr(nTag);
  const auto known = indexOfFormat_.find(sNew);
  if (known != indexOfFormat_.end()) return entry->second = known->second;
  entry->second = static_cast<int64_t>(formats_.size());
  indexOfFormat_.emplace(sNew, static_cast<uint32_t>(formats_.size()));
  kinds_.push_back(KindOfFormatCode(sCode));
  codeIds_.push_back(nId);
  newFormats_.push_back(sNew);
  formats_.push_back(std::move(sNew));
  return entry->second;
}

void clsXlsxStyles::AppendList(const Place& place, size_t nNew, std::string_view sNew, std::string& sOut) const {
  const std::string_view sBytes = sBytes_;
  const std::string_view sTag = sBytes.substr(place.nStart, place.nEnd - place.nStart);
  sOut += AsStartTag(WithAttribute(sTag, "count", std::to_string(place.nItems + nNew)));
  sOut += sBytes.substr(place.nEnd, place.nClose - place.nEnd);
  sOut += sNew;
  if (!place.bEmpty) return;
  const size_t nName = sTag.find_first_of(" \t\r\n/>");
  sOut += "</" + std::string(sTag.substr(1, nName - 1)) + ">";
}

std::string clsXlsxStyles::Bytes() const {
  const std::string_view sBytes = sBytes_;
  std::string sOut(sBytes.substr(0, codesPlace_.bFound ? codesPlace_.nStart : root_.nEnd));
  size_t nDone = sOut.size();
  if (nNewCodes_ > 0 && codesPlace_.bFound) {
    AppendList(codesPlace_, nNewCodes_, sNewCodes_, sOut);
    nDone = codesPlace_.nClose;
  } else if (nNewCodes_ > 0) {
    const std::string sName = (sPrefix_.empty() ? "" : sPrefix_ + ":") + "numFmts";
    sOut += "<" + sName + " count=\"" + std::to_string(nNewCodes_) + "\">" + sNewCodes_ + "</" + sName + ">";
  }
  sOut += sBytes.substr(nDone, formatsPlace_.nStart - nDone);
  std::string sNew;
  for (const std::string& sXf : newFormats_) sNew += sXf;
  AppendList(formatsPlace_, newFormats_.size(), sNew, sOut);
  sOut += sBytes.substr(formatsPlace_.nClose);
  return sOut;
}

}  // namespace quillon
