#pragma once
// The start tag of an element: its attributes where they stand, and changed.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// As it stands in the tag.
struct XmlAttribute {
  std::string_view sName, sValue;
};

struct XmlTag {
  std::string_view sBytes;  ///< Up to its ">"
  std::string_view sName;
  bool bEmpty = false;     ///< Ends with "/>"
  bool bEntities = false;  ///< There is an "&" in it
  std::vector<XmlAttribute> attributes;
};

enum class XmlTagKind : uint8_t { Whole, CutOff, Malformed };

constexpr bool IsXmlBlank(char ch) {
  return ch == ' ' || ch == '\t' || ch == '\n' || ch == '\r';
}

/// Takes the tag at the bytes' start. One with the same attribute twice is malformed.
XmlTagKind ReadXmlTag(std::string_view sBytes, XmlTag& tag);

/// The tag with the attribute set to the value (escaped already), added at its end if it was absent.
std::string WithAttribute(std::string_view sTag, std::string_view sName, std::string_view sEscaped);
/// The tag without the attribute.
std::string WithoutAttribute(std::string_view sTag, std::string_view sName);
/// "<a/>" as "<a>".
std::string AsStartTag(std::string_view sTag);

}  // namespace quillon
