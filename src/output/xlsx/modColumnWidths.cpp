#include "modColumnWidths.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "clsSheetCursor.h"

namespace quillon {

namespace {

constexpr double kMargin = 0.625;
constexpr size_t kDefaultChars = 8;

/// A width of our making, or one that another program has saved of ours, is nobody's choice.
bool IsUsersOwn(const clsXmlScanner& scanner, double nWidth) {
  const std::string_view sCustom = scanner.Attribute("customWidth").value_or("0");
  return (sCustom == "1" || sCustom == "true") && std::abs(nWidth - std::floor(nWidth) - kMargin) > 0.02;
}

}  // namespace

std::string ColumnWidthText(size_t nChars) {
  return std::to_string(std::max(nChars, kDefaultChars)) + ".625";
}

/// The entry for a part of its columns.
std::string clsColumnWidths::Entry(std::string_view sTag, size_t nFirst, size_t nLast) const {
  return WithAttribute(WithAttribute(sTag, "min", std::to_string(nFirst)), "max", std::to_string(nLast));
}

void clsColumnWidths::AppendMissing(const std::string& sPrefix, size_t nBefore, std::string& sOut) {
  for (; nNext_ < nBefore && nNext_ <= longest_.size(); ++nNext_) {
    if (longest_[nNext_ - 1] <= kDefaultChars && !(bAnew_ && longest_[nNext_ - 1] > 0)) continue;
    const std::string sNumber = std::to_string(nNext_);
    sOut += "<" + sPrefix + "col min=\"" + sNumber + "\" max=\"" + sNumber + "\" width=\"" +
            ColumnWidthText(longest_[nNext_ - 1]) + "\" customWidth=\"1\"/>";
  }
  nNext_ = std::max(nNext_, nBefore);
}

bool clsColumnWidths::Rewrite(clsXmlScanner& scanner, std::string& sOut) {
  const std::string sPrefix = std::string(scanner.Prefix()) + (scanner.Prefix().empty() ? "" : ":");
  sOut += AsStartTag(scanner.Raw());
  while (scanner.Token() != XmlToken::EmptyTag || scanner.Depth() != 2) {
    if (scanner.Next() == XmlToken::Failed) return false;
    if (scanner.Token() == XmlToken::EndTag && scanner.Depth() == 2) break;
    const size_t nFirst = ParseIndex(scanner.Attribute("min").value_or("")).value_or(0);
    const size_t nLast = ParseIndex(scanner.Attribute("max").value_or("")).value_or(0);
    if (!scanner.IsOpening() || !scanner.IsMain("col") || nFirst == 0 || nLast < nFirst) {
      sOut += scanner.Raw();
      continue;
    }
    AppendMissing(sPrefix, nFirst, sOut);
    const double nWidth = std::strtod(std::string(scanner.Attribute("width").value_or("0")).c_str(), nullptr);
    const bool bOwn = IsUsersOwn(scanner, nWidth);
    size_t nSame = nFirst;  // First column of a run that stays as it is
    for (size_t n = nFirst; n <= nLast && n <= longest_.size(); ++n) {
      const size_t nChars = longest_[n - 1];
      const double nHeld = nWidth - kMargin;
      const bool bChange =
          nChars > 0 &&
          (bAnew_ ? std::abs(static_cast<double>(std::max(nChars, kDefaultChars)) - nHeld) > 0.01
                  : !bOwn && static_cast<double>(nChars) > std::max(nHeld, 0.0) + 0.01 && nChars > kDefaultChars);
      if (!bChange) continue;
      if (nSame < n) sOut += Entry(scanner.Raw(), nSame, n - 1);
      const std::string sEntry = WithAttribute(Entry(scanner.Raw(), n, n), "width", ColumnWidthText(nChars));
      sOut += WithAttribute(sEntry, "customWidth", "1");
      nSame = n + 1;
    }
    if (nSame == nFirst)
      sOut += scanner.Raw();
    else if (nSame <= nLast)
      sOut += Entry(scanner.Raw(), nSame, nLast);
    nNext_ = std::max(nNext_, nLast + 1);
  }
  AppendMissing(sPrefix, longest_.size() + 1, sOut);
  sOut += "</" + sPrefix + "cols>";
  return true;
}

std::string clsColumnWidths::NewList(const std::string& sPrefix) const {
  std::string sEntries;
  clsColumnWidths(longest_, bAnew_).AppendMissing(sPrefix, longest_.size() + 1, sEntries);
  return sEntries.empty() ? sEntries : "<" + sPrefix + "cols>" + sEntries + "</" + sPrefix + "cols>";
}

}  // namespace quillon
