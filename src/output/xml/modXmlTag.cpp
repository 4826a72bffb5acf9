#include "modXmlTag.h"

#include <algorithm>
#include <optional>

#include "modText.h"

namespace quillon {

namespace {

bool IsNameEnd(char ch) {
  return IsXmlBlank(ch) || ch == '/' || ch == '>' || ch == '=' || ch == '<';
}

/// Walks the bytes of a tag; none of its steps goes beyond them.
class TagWalk {
 public:
  explicit TagWalk(std::string_view sBytes) : sBytes_(sBytes) {}
  bool AtEnd() const { return nPos_ >= sBytes_.size(); }
  char Here() const { return sBytes_[nPos_]; }
  size_t Pos() const { return nPos_; }
  void Step() { ++nPos_; }
  void SkipBlanks() {
    while (!AtEnd() && IsXmlBlank(Here())) ++nPos_;
  }
  std::string_view TakeName() {
    const size_t nStart = nPos_;
    while (!AtEnd() && !IsNameEnd(Here())) ++nPos_;
    return sBytes_.substr(nStart, nPos_ - nStart);
  }
  /// Up to the quote, or to what a value can't hold.
  std::string_view TakeValue(char chQuote, bool& bEntities) {
    const size_t nStart = nPos_;
    for (; !AtEnd() && Here() != chQuote && Here() != '<'; ++nPos_) bEntities |= Here() == '&';
    return sBytes_.substr(nStart, nPos_ - nStart);
  }

 private:
  std::string_view sBytes_;
  size_t nPos_ = 1;
};

XmlTagKind ReadAttribute(TagWalk& walk, XmlTag& tag) {
  const auto lacks = [&walk](char ch) { return walk.AtEnd() || walk.Here() != ch; };
  const auto kind = [&walk] { return walk.AtEnd() ? XmlTagKind::CutOff : XmlTagKind::Malformed; };
  const std::string_view sName = walk.TakeName();
  walk.SkipBlanks();
  if (sName.empty() || lacks('=')) return kind();
  walk.Step();
  walk.SkipBlanks();
  if (lacks('"') && lacks('\'')) return kind();
  const char chQuote = walk.Here();
  walk.Step();
  const std::string_view sValue = walk.TakeValue(chQuote, tag.bEntities);
  if (lacks(chQuote)) return kind();
  walk.Step();
  tag.attributes.push_back({sName, sValue});
  return XmlTagKind::Whole;
}

/// A tag may have very many.
bool AnyTwice(const std::vector<XmlAttribute>& attributes) {
  constexpr size_t kFew = 16;
  if (attributes.size() > kFew) {
    std::vector<std::string_view> names;
    for (const XmlAttribute& attribute : attributes) names.push_back(attribute.sName);
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) != names.end();
  }
  for (size_t i = 1; i < attributes.size(); ++i)
    for (size_t j = 0; j < i; ++j)
      if (attributes[i].sName == attributes[j].sName) return true;
  return false;
}

std::optional<XmlAttribute> FindAttribute(std::string_view sTag, std::string_view sName) {
  XmlTag tag;
  ReadXmlTag(sTag, tag);
  const auto found = std::find_if(tag.attributes.begin(), tag.attributes.end(),
                                  [sName](const XmlAttribute& attribute) { return attribute.sName == sName; });
  return found == tag.attributes.end() ? std::nullopt : std::optional(*found);
}

size_t PlaceIn(std::string_view sTag, std::string_view sPiece) {
  return static_cast<size_t>(sPiece.data() - sTag.data());
}

}  // namespace

XmlTagKind ReadXmlTag(std::string_view sBytes, XmlTag& tag) {
  tag.attributes.clear();
  tag.bEntities = false;
  TagWalk walk(sBytes);
  tag.sName = walk.TakeName();
  for (;;) {
    const size_t nBefore = walk.Pos();
    walk.SkipBlanks();
    if (walk.AtEnd()) return XmlTagKind::CutOff;
    tag.bEmpty = walk.Here() == '/';
    if (tag.bEmpty) walk.Step();
    if (walk.AtEnd()) return XmlTagKind::CutOff;
    if (walk.Here() == '>') break;
    if (tag.bEmpty || walk.Pos() == nBefore) return XmlTagKind::Malformed;
    const XmlTagKind kind = ReadAttribute(walk, tag);
    if (kind != XmlTagKind::Whole) return kind;
  }
  tag.sBytes = sBytes.substr(0, walk.Pos() + 1);
  return AnyTwice(tag.attributes) ? XmlTagKind::Malformed : XmlTagKind::Whole;
}

std::string WithAttribute(std::string_view sTag, std::string_view sName, std::string_view sEscaped) {
  if (const auto found = FindAttribute(sTag, sName)) {
    const size_t nValue = PlaceIn(sTag, found->sValue);
    const std::string sValue = sTag[nValue - 1] == '\'' ? ReplaceAll(sEscaped, "'", "&apos;") : std::string(sEscaped);
    return std::string(sTag.substr(0, nValue)) + sValue + std::string(sTag.substr(nValue + found->sValue.size()));
  }
  size_t nEnd = sTag.size() - (sTag.ends_with("/>") ? 2 : 1);
  while (IsXmlBlank(sTag[nEnd - 1])) --nEnd;
  return std::string(sTag.substr(0, nEnd)) + " " + std::string(sName) + "=\"" + std::string(sEscaped) + "\"" +
         std::string(sTag.substr(nEnd));
}

std::string WithoutAttribute(std::string_view sTag, std::string_view sName) {
  const auto found = FindAttribute(sTag, sName);
  if (!found) return std::string(sTag);
  size_t nStart = PlaceIn(sTag, found->sName);
  while (IsXmlBlank(sTag[nStart - 1])) --nStart;
  return std::string(sTag.substr(0, nStart)) +
         std::string(sTag.substr(PlaceIn(sTag, found->sValue) + found->sValue.size() + 1));
}

std::string AsStartTag(std::string_view sTag) {
  if (!sTag.ends_with("/>")) return std::string(sTag);
  return std::string(sTag.substr(0, sTag.size() - 2)) + ">";
}

}  // namespace quillon
