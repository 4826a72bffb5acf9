#include "clsXmlScanner.h"

#include <algorithm>
#include <cstring>

#include "modText.h"
#include "modXmlReading.h"

namespace quillon {

namespace {

constexpr size_t kBlock = size_t{256} << 10;
constexpr size_t kMaxDeclarations = 1000;  ///< Of name spaces; each name is looked up in all of them

bool IsXmlBlank(char ch) {
  return ch == ' ' || ch == '\t' || ch == '\n' || ch == '\r';
}
bool IsBlankText(std::string_view sText) {
  return std::all_of(sText.begin(), sText.end(), IsXmlBlank);
}
bool IsNameEnd(char ch) {
  return IsXmlBlank(ch) || ch == '/' || ch == '>' || ch == '=';
}

/// One attribute of a tag, with its place in it.
struct AttributeSpan {
  size_t nStart = 0;  ///< Of the name
  size_t nValue = 0;  ///< Of the value, behind its quote
  size_t nEnd = 0;    ///< Behind the closing quote
  std::string_view sName, sValue;
};

/// Walks the attributes of a tag.
class clsAttributes {
 public:
  explicit clsAttributes(std::string_view sTag) : sTag_(sTag) {
    while (nPos_ < sTag_.size() && !IsNameEnd(sTag_[nPos_])) ++nPos_;
  }
  /// False at the end of the tag and where it is malformed (see Malformed).
  bool Next(AttributeSpan& span) {
    const size_t nBefore = nPos_;
    while (nPos_ < sTag_.size() && IsXmlBlank(sTag_[nPos_])) ++nPos_;
    if (sTag_.substr(nPos_) == ">" || sTag_.substr(nPos_) == "/>") return false;
    span.nStart = nPos_;
    while (nPos_ < sTag_.size() && !IsNameEnd(sTag_[nPos_])) ++nPos_;
    span.sName = sTag_.substr(span.nStart, nPos_ - span.nStart);
    while (nPos_ < sTag_.size() && IsXmlBlank(sTag_[nPos_])) ++nPos_;
    bMalformed_ = span.nStart == nBefore || span.sName.empty() || nPos_ >= sTag_.size() || sTag_[nPos_++] != '=';
    while (nPos_ < sTag_.size() && IsXmlBlank(sTag_[nPos_])) ++nPos_;
    bMalformed_ = bMalformed_ || nPos_ >= sTag_.size() || (sTag_[nPos_] != '"' && sTag_[nPos_] != '\'');
    if (bMalformed_) return false;
    span.nValue = nPos_ + 1;
    const size_t nClose = sTag_.find(sTag_[nPos_], span.nValue);
    bMalformed_ = nClose == std::string_view::npos;
    if (bMalformed_) return false;
    span.sValue = sTag_.substr(span.nValue, nClose - span.nValue);
    nPos_ = span.nEnd = nClose + 1;
    return true;
  }
  bool Malformed() const { return bMalformed_; }

 private:
  std::string_view sTag_;
  size_t nPos_ = 1;
  bool bMalformed_ = false;
};

std::optional<AttributeSpan> FindAttribute(std::string_view sTag, std::string_view sName) {
  clsAttributes attributes(sTag);
  for (AttributeSpan span; attributes.Next(span);)
    if (span.sName == sName) return span;
  return std::nullopt;
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
  while (!declarations_.empty() && declarations_.back().nDepth >= nDepth_) declarations_.pop_back();
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

bool clsXmlScanner::TagEnd(size_t& nBytes) {
  char chQuote = 0;
  for (size_t i = 1;; ++i) {
    if (i >= window_.size() && !Fill()) return false;
    const char ch = window_[i];
    if (chQuote != 0) {
      if (ch == chQuote) chQuote = 0;
    } else if (ch == '"' || ch == '\'') {
      chQuote = ch;
    } else if (ch == '>') {
      nBytes = i + 1;
      return true;
    }
    if (ch == '<') return false;
  }
}

XmlToken clsXmlScanner::ScanTag() {
  size_t nBytes = 0;
  if (!TagEnd(nBytes)) return Fail();
  if (window_[1] == '/') return ScanEndTag(nBytes);
  const bool bEmpty = window_[nBytes - 2] == '/';
  if (Take(bEmpty ? XmlToken::EmptyTag : XmlToken::StartTag, nBytes) == XmlToken::Failed) return token_;
  size_t nNameEnd = 1;
  while (!IsNameEnd(sRaw_[nNameEnd])) ++nNameEnd;
  sName_ = sRaw_.substr(1, nNameEnd - 1);
  if (sName_.empty() || (nDepth_ == 0 && bRootSeen_) || nDepth_ >= kMaxDepth) return Fail();
  nLocal_ = sName_.find(':') + 1;
  bRootSeen_ = true;
  nTokenDepth_ = ++nDepth_;
  openStarts_.push_back(sOpenNames_.size());
  sOpenNames_ += sName_;
  return CheckAttributes() ? token_ : Fail();
}

XmlToken clsXmlScanner::ScanEndTag(size_t nBytes) {
  if (Take(XmlToken::EndTag, nBytes) == XmlToken::Failed) return token_;
  size_t nNameEnd = 2;
  while (!IsNameEnd(sRaw_[nNameEnd])) ++nNameEnd;
  sName_ = sRaw_.substr(2, nNameEnd - 2);
  nLocal_ = sName_.find(':') + 1;
  const bool bClean = IsBlankText(sRaw_.substr(nNameEnd, nBytes - 1 - nNameEnd));
  if (nDepth_ == 0 || !bClean || std::string_view(sOpenNames_).substr(openStarts_.back()) != sName_) return Fail();
  nTokenDepth_ = nDepth_;
  return token_;
}

bool clsXmlScanner::CheckAttributes() {
  if (sRaw_.find('&') != std::string_view::npos && !EntitiesAreKnown(sRaw_)) return false;
  clsAttributes attributes(sRaw_);
  for (AttributeSpan span; attributes.Next(span);)
    if (span.sName.starts_with("xmlns")) Declare(span.sName, span.sValue);
  return !attributes.Malformed() && declarations_.size() <= kMaxDeclarations;
}

void clsXmlScanner::Declare(std::string_view sName, std::string_view sValue) {
  sName.remove_prefix(5);
  if (!sName.empty() && sName[0] != ':') return;
  declarations_.push_back({std::string(sName.empty() ? sName : sName.substr(1)), SpaceOfUri(sValue), nDepth_});
}

XmlSpace clsXmlScanner::SpaceOf(std::string_view sPrefix) const {
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
  const auto span = FindAttribute(sRaw_, sName);
  return span ? std::optional(span->sValue) : std::nullopt;
}

std::string clsXmlScanner::AttributeText(std::string_view sName) const {
  std::string sText;
  AppendUnescaped(Attribute(sName).value_or(std::string_view()), sText);
  return sText;
}

std::string clsXmlScanner::RelationAttribute(std::string_view sLocal) const {
  clsAttributes attributes(sRaw_);
  for (AttributeSpan span; attributes.Next(span);) {
    const size_t nColon = span.sName.find(':');
    if (nColon == std::string_view::npos || span.sName.substr(nColon + 1) != sLocal) continue;
    if (SpaceOf(span.sName.substr(0, nColon)) != XmlSpace::Relations) continue;
    std::string sText;
    AppendUnescaped(span.sValue, sText);
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

bool clsXmlScanner::SkipElement() {
  if (token_ != XmlToken::StartTag) return token_ == XmlToken::EmptyTag;
  const int nDepth = nTokenDepth_;
  while (Next() != XmlToken::Failed)
    if (token_ == XmlToken::EndTag && nTokenDepth_ == nDepth) return true;
  return false;
}

std::string WithAttribute(std::string_view sTag, std::string_view sName, std::string_view sEscaped) {
  if (const auto span = FindAttribute(sTag, sName)) {
    const std::string sValue =
        sTag[span->nValue - 1] == '\'' ? ReplaceAll(sEscaped, "'", "&apos;") : std::string(sEscaped);
    return std::string(sTag.substr(0, span->nValue)) + sValue + std::string(sTag.substr(span->nEnd - 1));
  }
  size_t nEnd = sTag.size() - (sTag.ends_with("/>") ? 2 : 1);
  while (IsXmlBlank(sTag[nEnd - 1])) --nEnd;
  return std::string(sTag.substr(0, nEnd)) + " " + std::string(sName) + "=\"" + std::string(sEscaped) + "\"" +
         std::string(sTag.substr(nEnd));
}

std::string WithoutAttribute(std::string_view sTag, std::string_view sName) {
  const auto span = FindAttribute(sTag, sName);
  if (!span) return std::string(sTag);
  size_t nStart = span->nStart;
  while (IsXmlBlank(sTag[nStart - 1])) --nStart;
  return std::string(sTag.substr(0, nStart)) + std::string(sTag.substr(span->nEnd));
}

std::string AsStartTag(std::string_view sTag) {
  if (!sTag.ends_with("/>")) return std::string(sTag);
  return std::string(sTag.substr(0, sTag.size() - 2)) + ">";
}

}  // namespace quillon
