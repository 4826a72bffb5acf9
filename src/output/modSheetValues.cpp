#include "modSheetValues.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

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

/// "12/31/2024" of a day number of the 1900 system. Its day 60, which never was, is told as 1 March.
std::string DateText(int64_t nDay, bool bDayFirst) {
  using namespace std::chrono;
  const year_month_day date(sys_days(year{1899} / 12 / 30) + days(nDay < 60 ? nDay + 1 : nDay));
  const auto nMonth = static_cast<unsigned>(date.month()), nDayOfMonth = static_cast<unsigned>(date.day());
  std::array<char, 32> text{};
  const int nLength = std::snprintf(text.data(), text.size(), "%02u/%02u/%04d", bDayFirst ? nDayOfMonth : nMonth,
                                    bDayFirst ? nMonth : nDayOfMonth, static_cast<int>(date.year()));
  return {text.data(), static_cast<size_t>(nLength)};
}

std::string TimeText(int64_t nSeconds) {
  std::array<char, 32> text{};
  const int nLength = std::snprintf(text.data(), text.size(), "%02d:%02d:%02d", static_cast<int>(nSeconds / 3600),
                                    static_cast<int>(nSeconds / 60 % 60), static_cast<int>(nSeconds % 60));
  return {text.data(), static_cast<size_t>(nLength)};
}

/// Fifteen digits, as a spreadsheet shows a number in a cell that is wide enough.
std::string PlainNumber(double nValue) {
  std::array<char, 64> text{};
  const double nSize = std::fabs(nValue);
  const bool bFixed = nSize == 0 || (nSize >= 1e-9 && nSize < 1e15);
  int nDecimals = 14;
  if (bFixed && nSize > 0) nDecimals = std::max(0, 14 - static_cast<int>(std::floor(std::log10(nSize))));
  const auto result =
      bFixed ? std::to_chars(text.data(), text.data() + text.size(), nValue, std::chars_format::fixed,
                             nSize == 0 ? 0 : nDecimals)
             : std::to_chars(text.data(), text.data() + text.size(), nValue, std::chars_format::scientific, 14);
  std::string sText(text.data(), result.ptr);
  const size_t nExponent = sText.find('e');
  std::string sExponent = nExponent == std::string::npos ? "" : "E" + sText.substr(nExponent + 1);
  if (nExponent != std::string::npos) sText.resize(nExponent);
  if (sText.find('.') != std::string::npos) {
    while (sText.back() == '0') sText.pop_back();
    if (sText.back() == '.') sText.pop_back();
  }
  return (sText == "-0" ? "0" : sText) + sExponent;
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

std::string ShownNumber(double nValue, FormatKind kind, const ShownValueOptions& options) {
  const bool bDated = kind == FormatKind::Date || kind == FormatKind::Time || kind == FormatKind::DateTime;
  const double nSerial = nValue + (options.b1904 ? 1462 : 0);
  constexpr double kLastDay = 2958466;  // Behind 9999-12-31
  if (!bDated || !(nValue >= 0 && nSerial < kLastDay)) return PlainNumber(nValue);
  const auto nTotal = static_cast<int64_t>(std::llround(nSerial * 86400));
  const int64_t nDay = nTotal / 86400, nSeconds = nTotal % 86400;
  if (kind == FormatKind::Time && nValue < 1) return TimeText(nSeconds);
  std::string sText = DateText(nDay, options.bDayFirst);
  return nSeconds == 0 ? sText : sText + " " + TimeText(nSeconds);
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
