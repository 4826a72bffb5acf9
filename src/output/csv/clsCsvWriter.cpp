#include "clsCsvWriter.h"

#include <algorithm>

#include "modText.h"

namespace quillon {

bool NeedsQuotes(const CsvRules& rules, std::string_view sValue) {
  switch (rules.quoting) {
    case CsvQuoting::Never:
      return false;
    case CsvQuoting::Always:
      return true;
    case CsvQuoting::Sometimes:
      break;
  }
  // One look through the value for each of the few bytes: find_first_of looks through those for each byte of the value.
  const auto holds = [sValue](char c) { return sValue.find(c) != std::string_view::npos; };
  if (std::any_of(rules.sQuoteOn.begin(), rules.sQuoteOn.end(), holds)) return true;
  if (!rules.bQuoteSeparator) return false;
  return rules.sSeparator.size() == 1 ? holds(rules.sSeparator.front())
                                      : sValue.find(rules.sSeparator) != std::string_view::npos;
}

namespace {

char* PutDoubled(char* pOut, std::string_view sValue) {
  for (const char c : sValue) {
    if (c == '"') *pOut++ = '"';
    *pOut++ = c;
  }
  return pOut;
}

}  // namespace

char* PutQuoted(char* pOut, std::string_view sValue) {
  *pOut++ = '"';
  pOut = PutDoubled(pOut, sValue);
  *pOut++ = '"';
  return pOut;
}

void clsCsvWriter::Field(std::string_view sValue, bool bCalm) {
  if (!bFirst_) file_.Write(rules_.sSeparator);
  bFirst_ = bFirst_ && rules_.bJoinEmpty && sValue.empty();
  if (rules_.bTrim) sValue = TrimBlanks(sValue);
  const std::string_view sCalm = bCalm ? "'" : "";
  if (rules_.quoting == CsvQuoting::Never || (!bCalm && !NeedsQuotes(rules_, sValue))) {
    file_.Write(sCalm);
    return file_.Write(sValue);
  }
  constexpr size_t kPiece = 4096;
  file_.Write("\"");
  file_.Write(sCalm);
  while (!sValue.empty()) {
    const std::string_view sPiece = sValue.substr(0, kPiece);
    char* const pOut = file_.Reserve(2 * kPiece);
    file_.Used(static_cast<size_t>(PutDoubled(pOut, sPiece) - pOut));
    sValue.remove_prefix(sPiece.size());
  }
  file_.Write("\"");
}

}  // namespace quillon
