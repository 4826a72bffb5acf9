#include "modSheetValues.h"

#include <charconv>

#include "clsSheetCursor.h"
#include "modXmlReading.h"

namespace quillon {

namespace {

/// Collects the text of a string item: its runs joined, phonetic hints left out. Ends at the item's end tag.
bool ReadStringItem(clsXmlScanner& scanner, std::string& sText) {
  if (scanner.Token() == XmlToken::EmptyTag) return true;
  const int nDepth = scanner.Depth();
  while (scanner.Next() != XmlToken::EndTag || scanner.Depth() != nDepth) {
    if (scanner.Token() == XmlToken::Failed) return false;
    if (scanner.Token() == XmlToken::StartTag && scanner.LocalName() == "rPh" && !scanner.SkipElement()) return false;
    if (scanner.Token() == XmlToken::Text && scanner.Parent() == "t") scanner.AppendText(sText);
  }
  return true;
}

/// Reads the children of a cell and gives its shown text.
class clsCellReader {
 public:
  clsCellReader(const clsSharedStrings& strings, const clsXlsxStyles& styles, const ShownValueOptions& options)
      : strings_(strings), styles_(styles), options_(options) {}

  bool Read(clsXmlScanner& scanner, uint32_t nStyle, std::string& sShown) {
    sShown.clear();
    sType_ = scanner.Attribute("t").value_or("n");
    if (scanner.Token() == XmlToken::EmptyTag) return true;
    const int nDepth = scanner.Depth();
    sValue_.clear();
    sInline_.clear();
    while (scanner.Next() != XmlToken::EndTag || scanner.Depth() != nDepth) {
      if (scanner.Token() == XmlToken::Failed) return false;
      if (scanner.Token() == XmlToken::Text && scanner.Depth() == nDepth + 1 && scanner.Parent() == "v")
        scanner.AppendText(sValue_);
      if (scanner.Token() == XmlToken::StartTag && scanner.IsMain("is") && !ReadStringItem(scanner, sInline_))
        return false;
    }
    Show(nStyle, sShown);
    return true;
  }

 private:
  void Show(uint32_t nStyle, std::string& sShown) const {
    if (sType_ == "inlineStr") {
      sShown = DecodeCellText(sInline_);
    } else if (sType_ == "s") {
      if (const auto nIndex = ParseIndex(sValue_)) sShown = strings_.At(*nIndex);
    } else if (sType_ == "str") {
      sShown = DecodeCellText(sValue_);
    } else if (sType_ == "b") {
      sShown = sValue_.empty() ? "" : sValue_ == "0" || sValue_ == "false" ? "FALSE" : "TRUE";
    } else if (double nValue = 0; sType_ == "n" && ScanNumber(nValue)) {
      sShown = ShownNumber(nValue, styles_.KindOf(nStyle), options_);
    } else {
      sShown = sValue_;
    }
  }
  bool ScanNumber(double& nValue) const {
    const auto [pEnd, error] = std::from_chars(sValue_.data(), sValue_.data() + sValue_.size(), nValue);
    return error == std::errc() && pEnd == sValue_.data() + sValue_.size();
  }

  const clsSharedStrings& strings_;
  const clsXlsxStyles& styles_;
  ShownValueOptions options_;
  std::string sType_, sValue_, sInline_;
};

}  // namespace

bool clsSharedStrings::Load(clsXmlScanner& scanner) {
  std::string sText;
  while (scanner.Next() != XmlToken::End) {
    if (scanner.Token() == XmlToken::Failed || sBytes_.size() > kMaxBytes) return false;
    if (!scanner.IsOpening() || scanner.Depth() != 2 || !scanner.IsMain("si")) continue;
    sText.clear();
    if (!ReadStringItem(scanner, sText)) return false;
    sBytes_ += DecodeCellText(sText);
    ends_.push_back(sBytes_.size());
  }
  return true;
}

std::string_view clsSharedStrings::At(size_t nIndex) const {
  if (nIndex >= ends_.size()) return {};
  const size_t nStart = nIndex == 0 ? 0 : ends_[nIndex - 1];
  return std::string_view(sBytes_).substr(nStart, ends_[nIndex] - nStart);
}

bool ReadSheetValues(clsXmlScanner& scanner, const clsSharedStrings& strings, const clsXlsxStyles& styles,
                     const ShownValueOptions& options, clsCellStore& store) {
  clsSheetCursor cursor;
  clsCellReader reader(strings, styles, options);
  std::string sShown;
  while (scanner.Next() != XmlToken::End) {
    if (scanner.Token() == XmlToken::Failed) return false;
    const auto event = cursor.Look(scanner);
    if (event == clsSheetCursor::Event::Damaged) return false;
    if (event != clsSheetCursor::Event::Cell) continue;
    if (!reader.Read(scanner, cursor.Style(), sShown)) return false;
    if (!sShown.empty()) store.Write(cursor.Row(), cursor.Column(), sShown);
    if (store.Bytes() > clsSharedStrings::kMaxBytes) return false;
  }
  return true;
}

}  // namespace quillon
