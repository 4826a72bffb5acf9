#include "clsXmlScanner.h"

#include <algorithm>
#include <cstring>

#include "modText.h"
#include "modXmlReading.h"

namespace quillon {

namespace {

constexpr size_t kBlock = size_t{256} << 10;
constexpr size_t kMaxDeclarations = 1000;  ///< Of name spaces; each name is looked up in all of them

bool IsBlankText(std::string_view sText) {
  return std::all_of(sText.begin(), sText.end(), IsXmlBlank);
}
XmlSpace SpaceOfUri(std::string_view sUri) {
  if (sUri == "http://schemas.openxmlformats.org/spreadsheetml/2006/main" ||
      sUri == "http://purl.oclc.org/ooxml/spreadsheetml/main")
    return XmlSpace::Main;
  if (sUri == "http://schemas.openxmlformats.org/officeDocument/2006/relationships" ||
      sUri == "http://purl.oclc.org/ooxml/officeDocument/relationships")
    return XmlSpace::Relations;
  return XmlSpace::Other;
}

}  // namespace

clsXmlScanner::clsXmlScanner(Source source) : source_(std::move(source)) {}

clsXmlScanner::clsXmlScanner(std::string_view sBytes) : window_(sBytes), bSourceEnded_(true) {}

bool clsXmlScanner::Fill() {
  if (bSourceEnded_ || window_.size() > kMaxTokenBytes) return false;
  const size_t nUsed = window_.size();
  if (buffer_.size() < nUsed + kBlock) {
    std::vector<char> larger(std::max(kBlock * 2, nUsed * 2 + kBlock));
    std::copy(window_.begin(), window_.end(), larger.begin());
    buffer_.swap(larger);
  } else {
    std::memmove(buffer_.data(), window_.data(), nUsed);
  }
  const int64_t nRead = source_(buffer_.data() + nUsed, buffer_.size() - nUsed);
  window_ = std::string_view(buffer_.data(), nUsed + static_cast<size_t>(std::max<int64_t>(nRead, 0)));
  if (nRead <= 0) bSourceEnded_ = true;
  bReadFailed_ = bReadFailed_ || nRead < 0;
  return nRead > 0;
}

bool clsXmlScanner::Ensure(size_t nBytes) {
  while (window_.size() < nBytes)
    if (!Fill()) return false;
  return true;
}

/// Looks for the mark from nFrom on; nEnd is behind it.
bool clsXmlScanner::EndsWith(size_t nFrom, std::string_view sMark, size_t& nEnd) {
  for (;;) {
    const size_t nFound = window_.find(sMark, nFrom);
    if (nFound != std::string_view::npos) {
      nEnd = nFound + sMark.size();
      return true;
    }
    if (window_.size() > sMark.size()) nFrom = std::max(nFrom, window_.size() - sMark.size());
    if (!Fill()) return false;
  }
}

XmlToken clsXmlScanner::Fail() {
  sRaw_ = sName_ = {};
  nLocal_ = 0;
  return token_ = XmlToken::Failed;
}

XmlToken clsXmlScanner::Take(XmlToken token, size_t nBytes) {
  if (nBytes > kMaxTokenBytes) return Fail();
  sRaw_ = window_.substr(0, nBytes);
  window_.remove_prefix(nBytes);
  return token_ = token;
}

void clsXmlScanner::Leave() {
  if (!declarations_.empty() && declarations_.back().nDepth >= nDepth_) {
    while (!declarations_.empty() && declarations_.back().nDepth >= nDepth_) declarations_.pop_back();
    plainSpace_ = SpaceOfPrefix({});
  }
  --nDepth_;
  sOpenNames_.resize(openStarts_.back());
  openStarts_.pop_back();
}

XmlToken clsXmlScanner::Next() {
  if (token_ == XmlToken::Failed || token_ == XmlToken::End) return token_;
  nOffset_ += sRaw_.size();
  if (token_ == XmlToken::EmptyTag || token_ == XmlToken::EndTag) Leave();
  nTokenDepth_ = nDepth_;
  sName_ = {};
  nLocal_ = 0;
  if (nOffset_ == 0 && Ensure(3) && window_.starts_with(kUtf8Bom)) return Take(XmlToken::Other, 3);
  if (!Ensure(1)) {
    if (bReadFailed_ || nDepth_ > 0 || !bRootSeen_) return Fail();
    sRaw_ = {};
    return token_ = XmlToken::End;
  }
  return window_[0] == '<' ? ScanMarkup() : ScanText();
}

XmlToken clsXmlScanner::ScanText() {
  size_t nEnd = 0;
  if (EndsWith(0, "<", nEnd)) {
    --nEnd;
  } else {
    nEnd = window_.size();
    if (!bSourceEnded_) return Fail();
  }
  if (bReadFailed_) return Fail();
  if (Take(XmlToken::Text, nEnd) == XmlToken::Failed) return token_;
  if (nDepth_ == 0 && !IsBlankText(sRaw_)) return Fail();
  return EntitiesAreKnown(sRaw_) ? token_ : Fail();
}

XmlToken clsXmlScanner::ScanMarkup() {
  size_t nEnd = 0;
  Ensure(9);
  if (window_.starts_with("<!--")) return EndsWith(4, "-->", nEnd) ? Take(XmlToken::Other, nEnd) : Fail();
  if (window_.starts_with("<![CDATA["))
    return nDepth_ > 0 && EndsWith(9, "]]>", nEnd) ? Take(XmlToken::Text, nEnd) : Fail();
  if (window_.starts_with("<?")) {
    if (!EndsWith(2, "?>", nEnd)) return Fail();
    if (Take(XmlToken::Other, nEnd) == XmlToken::Failed) return token_;
    const size_t nEncoding = sRaw_.starts_with("<?xml ") ? sRaw_.find("encoding=") : std::string_view::npos;
    if (nEncoding == std::string_view::npos) return token_;
    const std::string_view sName = sRaw_.substr(nEncoding + 10);
    return EqualNoCase(sName.substr(0, 5), "utf-8") || EqualNoCase(sName.substr(0, 8), "us-ascii") ? token_ : Fail();
  }
  if (window_.starts_with("<!")) return Fail();
  return ScanTag();
}

/// Reads on until the tag is whole. What was read of a cut one is read again: seldom, as a block holds many tags.
bool clsXmlScanner::ReadTag() {
  for (;;) {
    const XmlTagKind kind = ReadXmlTag(window_, tag_);
    if (kind != XmlTagKind::CutOff) return kind == XmlTagKind::Whole;
    if (!Fill()) return false;
  }
}

XmlToken clsXmlScanner::ScanTag() {
  if (window_.starts_with("</")) return ScanEndTag();
  if (!ReadTag()) return Fail();
  if (Take(tag_.bEmpty ? XmlToken::EmptyTag : XmlToken::StartTag, tag_.sBytes.size()) == XmlToken::Failed)
    return token_;
  sName_ = tag_.sName;
  if (sName_.empty() || (nDepth_ == 0 && bRootSeen_) || nDepth_ >= kMaxDepth) return Fail();
  nLocal_ = sName_.find(':') + 1;
  bRootSeen_ = true;
  nTokenDepth_ = ++nDepth_;
  openStarts_.push_back(sOpenNames_.size());
  sOpenNames_ += sName_;
  return CheckAttributes() ? token_ : Fail();
}

XmlToken clsXmlScanner::ScanEndTag() {
  if (nDepth_ == 0) return Fail();
  const std::string_view sOpen = std::string_view(sOpenNames_).substr(openStarts_.back());
  size_t nEnd = 0;
  if (!Ensure(sOpen.size() + 3) || window_.substr(2, sOpen.size()) != sOpen || !EndsWith(sOpen.size() + 2, ">", nEnd))
    return Fail();
  if (Take(XmlToken::EndTag, nEnd) == XmlToken::Failed) return token_;
  sName_ = sRaw_.substr(2, sOpen.size());
  nLocal_ = sName_.find(':') + 1;
  nTokenDepth_ = nDepth_;
  return IsBlankText(sRaw_.substr(2 + sOpen.size(), nEnd - 3 - sOpen.size())) ? token_ : Fail();
}

bool clsXmlScanner::CheckAttributes() {
  if (tag_.bEntities && !EntitiesAreKnown(sRaw_)) return false;
  for (const XmlAttribute& attribute : tag_.attributes)
    if (attribute.sName.starts_with("xmlns")) Declare(attribute.sName, attribute.sValue);
  return declarations_.size() <= kMaxDeclarations;
}

void clsXmlScanner::Declare(std::string_view sName, std::string_view sValue) {
  sName.remove_prefix(5);
  if (!sName.empty() && sName[0] != ':') return;
  declarations_.push_back({std::string(sName.empty() ? sName : sName.substr(1)), SpaceOfUri(sValue), nDepth_});
  plainSpace_ = SpaceOfPrefix({});
}

XmlSpace clsXmlScanner::SpaceOfPrefix(std::string_view sPrefix) const {
  for (auto declaration = declarations_.rbegin(); declaration != declarations_.rend(); ++declaration)
    if (declaration->sPrefix == sPrefix) return declaration->space;
  return XmlSpace::None;
}

std::string_view clsXmlScanner::Parent() const {
  if (openStarts_.empty()) return {};
  const std::string_view sName = std::string_view(sOpenNames_).substr(openStarts_.back());
  return sName.substr(sName.find(':') + 1);
}

std::optional<std::string_view> clsXmlScanner::Attribute(std::string_view sName) const {
  if (!IsOpening()) return std::nullopt;
  for (const XmlAttribute& attribute : tag_.attributes)
    if (attribute.sName == sName) return attribute.sValue;
  return std::nullopt;
}

std::string clsXmlScanner::AttributeText(std::string_view sName) const {
  std::string sText;
  AppendUnescaped(Attribute(sName).value_or(std::string_view()), sText);
  return sText;
}

std::string clsXmlScanner::RelationAttribute(std::string_view sLocal) const {
  if (!IsOpening()) return {};
  for (const auto& [sName, sValue] : tag_.attributes) {
    const size_t nColon = sName.find(':');
    if (nColon == std::string_view::npos || sName.substr(nColon + 1) != sLocal) continue;
    if (SpaceOf(sName.substr(0, nColon)) != XmlSpace::Relations) continue;
    std::string sText;
    AppendUnescaped(sValue, sText);
    return sText;
  }
  return {};
}

void clsXmlScanner::AppendText(std::string& sOut) const {
  if (sRaw_.starts_with("<![CDATA[")) {
    sOut += sRaw_.substr(9, sRaw_.size() - 12);
  } else {
    AppendUnescaped(sRaw_, sOut);
  }
}

std::optional<std::string_view> clsXmlScanner::TakePlainValue() {
  constexpr std::string_view kOpen = "<v>", kClose = "</v></";
  if (token_ != XmlToken::StartTag || nLocal_ != 0 || !window_.starts_with(kOpen)) return std::nullopt;
  const size_t nEnd = window_.find('<', kOpen.size());
  if (nEnd == std::string_view::npos) return std::nullopt;
  const std::string_view sText = window_.substr(kOpen.size(), nEnd - kOpen.size()), sRest = window_.substr(nEnd);
  const size_t nTag = kClose.size() - 2, nName = kClose.size() + sName_.size();
  if (sRest.size() <= nName || !sRest.starts_with(kClose) || sRest.substr(kClose.size(), sName_.size()) != sName_ ||
      sRest[nName] != '>' || sText.find('&') != std::string_view::npos)
    return std::nullopt;
  nOffset_ += sRaw_.size() + nEnd + nTag;
  window_.remove_prefix(nEnd + nTag);
  Take(XmlToken::EndTag, nName + 1 - nTag);
  sName_ = sRaw_.substr(2, sName_.size());
  return sText;
}

bool clsXmlScanner::SkipElement() {
  if (token_ != XmlToken::StartTag) return token_ == XmlToken::EmptyTag;
  const int nDepth = nTokenDepth_;
  while (Next() != XmlToken::Failed)
    if (token_ == XmlToken::EndTag && nTokenDepth_ == nDepth) return true;
  return false;
}

}  // namespace quillon
