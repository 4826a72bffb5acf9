#pragma once
// A forward scanner of XML parts that keeps the bytes of each token as they stand, so that what isn't changed can be
// copied unchanged.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "modXmlTag.h"

namespace quillon {

/// Namespaces that matter in a workbook, transitional and strict forms taken as one.
enum class XmlSpace : uint8_t { None, Main, Relations, Other };

enum class XmlToken : uint8_t {
  StartTag,
  EmptyTag,
  EndTag,
  Text,   ///< Between two tags, or a CDATA section
  Other,  ///< Declaration, comment, processing instruction
  End,    ///< The document is complete
  Failed  ///< Not well-formed, cut short, a document type, an unknown entity, over a limit; nothing follows
};

/// Scans a UTF-8 document in blocks: memory is one block or the longest token, whatever the document's size. Depth and
/// token length are bounded; a document type and entities beyond the five are refused.
class clsXmlScanner {
 public:
  /// Fills the buffer; returns the bytes given, 0 at the end, below 0 on failure.
  using Source = std::function<int64_t(char*, size_t)>;
  static constexpr int kMaxDepth = 256;
  static constexpr size_t kMaxTokenBytes = size_t{16} << 20;

  explicit clsXmlScanner(Source source);
  /// Scans bytes in memory, which must outlive the scanner.
  explicit clsXmlScanner(std::string_view sBytes);

  /// The next token; views of the one before end here.
  XmlToken Next();
  XmlToken Token() const { return token_; }
  /// The token's bytes.
  std::string_view Raw() const { return sRaw_; }
  /// Where the token starts in the document.
  uint64_t Offset() const { return nOffset_; }

  /// Of a tag: local name, prefix, namespace.
  std::string_view LocalName() const { return sName_.substr(nLocal_); }
  std::string_view Prefix() const { return sName_.substr(0, nLocal_ == 0 ? 0 : nLocal_ - 1); }
  XmlSpace Space() const { return SpaceOf(Prefix()); }
  bool IsMain(std::string_view sLocal) const { return LocalName() == sLocal && Space() == XmlSpace::Main; }
  bool IsOpening() const { return token_ == XmlToken::StartTag || token_ == XmlToken::EmptyTag; }
  /// Open elements, the token's own included; 1 is the root.
  int Depth() const { return nTokenDepth_; }
  /// Local name of the innermost open element.
  std::string_view Parent() const;

  /// Raw value of the tag's attribute with this qualified name.
  std::optional<std::string_view> Attribute(std::string_view sName) const;
  /// The same, entities undone; "" if absent.
  std::string AttributeText(std::string_view sName) const;
  /// Attribute of the relationships' namespace, whatever its prefix.
  std::string RelationAttribute(std::string_view sLocal) const;
  /// Of a Text token: its characters, entities undone, appended.
  void AppendText(std::string& sOut) const;

  /// From the start tag of an element without a prefix that holds "<v>", a text without entities, "</v>" and nothing
  /// else, as nearly all cells do: passes on to its end tag and gives the text. Nothing, and no step taken, if it is
  /// any other or isn't at hand as a whole. Views of the start tag stay as they are.
  std::optional<std::string_view> TakePlainValue();
  /// From a start tag: passes over all up to its end tag. False on failure.
  bool SkipElement();

 private:
  struct Declaration {
    std::string sPrefix;
    XmlSpace space;
    int nDepth;
  };

  bool Fill();
  bool Ensure(size_t nBytes);
  bool EndsWith(size_t nFrom, std::string_view sMark, size_t& nEnd);
  XmlToken Fail();
  XmlToken Take(XmlToken token, size_t nBytes);
  XmlToken ScanText();
  XmlToken ScanMarkup();
  XmlToken ScanTag();
  XmlToken ScanEndTag();
  bool ReadTag();
  bool CheckAttributes();
  void Declare(std::string_view sName, std::string_view sValue);
  XmlSpace SpaceOf(std::string_view sPrefix) const { return sPrefix.empty() ? plainSpace_ : SpaceOfPrefix(sPrefix); }
  XmlSpace SpaceOfPrefix(std::string_view sPrefix) const;
  void Leave();

  Source source_;
  std::vector<char> buffer_;
  std::string_view window_;  ///< Bytes read and not yet taken
  bool bSourceEnded_ = false;
  bool bReadFailed_ =
      false;  ///< Wrong checksum at the end of a part, perhaps: the document fails at its end at the latest
  uint64_t nOffset_ = 0;

  XmlToken token_ = XmlToken::Other;
  std::string_view sRaw_;
  XmlTag tag_;  ///< The last start tag
  std::string_view sName_;
  size_t nLocal_ = 0;
  int nDepth_ = 0;
  int nTokenDepth_ = 0;
  bool bRootSeen_ = false;
  std::string sOpenNames_;
  std::vector<size_t> openStarts_;
  std::vector<Declaration> declarations_;
  XmlSpace plainSpace_ = XmlSpace::None;  ///< Of names without a prefix
};

}  // namespace quillon
