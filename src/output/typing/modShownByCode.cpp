#include "modShownByCode.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <vector>

#include "modFormatKinds.h"

namespace quillon {

namespace {

constexpr size_t kMostDigits = 40;

/// A number as digits with the point's place, its sign and power of ten taken in.
struct Decimal {
  std::string sDigits;  ///< No zeros in front
  int nPoint = 0;       ///< Digits in front of it; may lie outside
  bool bMinus = false;
  bool IsZero() const { return sDigits.empty(); }
};

bool ReadDecimal(std::string_view sText, Decimal& number) {
  number.bMinus = sText.starts_with('-');
  if (number.bMinus) sText.remove_prefix(1);
  const size_t nExponent = std::min(sText.find_first_of("eE"), sText.size());
  bool bPoint = false;
  for (const char ch : sText.substr(0, nExponent)) {
    if (ch == '.' && !bPoint) {
      bPoint = true;
    } else if (ch < '0' || ch > '9' || number.sDigits.size() > kMostDigits) {
      return false;
    } else {
      if (!bPoint) ++number.nPoint;
      number.sDigits.push_back(ch);
    }
  }
  if (nExponent < sText.size()) {
    int nPower = 0;
    std::string_view sPower = sText.substr(nExponent + 1);
    if (sPower.starts_with('+')) sPower.remove_prefix(1);
    const auto [pBehind, error] = std::from_chars(sPower.data(), sPower.data() + sPower.size(), nPower);
    if (error != std::errc{} || pBehind != sPower.data() + sPower.size() || std::abs(nPower) > 400) return false;
    number.nPoint += nPower;
  }
  const size_t nFirst = std::min(number.sDigits.find_first_not_of('0'), number.sDigits.size());
  number.sDigits.erase(0, nFirst);
  number.nPoint = number.sDigits.empty() ? 0 : number.nPoint - static_cast<int>(nFirst);
  return true;
}

/// Digits of the number with so many decimals, rounded half away from zero; no zero in front of the whole part.
std::string Rounded(const Decimal& number, int nDecimals) {
  const int nKept = number.nPoint + nDecimals;
  if (nKept < 0) return std::string(static_cast<size_t>(nDecimals), '0');
  std::string sAll = number.sDigits;
  if (number.nPoint < 0) sAll.insert(0, static_cast<size_t>(-number.nPoint), '0');
  const auto nLength = static_cast<size_t>(std::max(number.nPoint, 0) + nDecimals);
  const bool bUp = sAll.size() > nLength && sAll[nLength] >= '5';
  sAll.resize(nLength, '0');
  if (!bUp) return sAll;
  for (size_t i = sAll.size(); i-- > 0;) {
    if (sAll[i]++ != '9') return sAll;
    sAll[i] = '0';
  }
  return "1" + sAll;
}

/// A section of a code, taken apart: literals around the figures.
struct Section {
  std::string sBefore, sBehind;
  int nLeast = 0, nDecimals = 0, nOptional = 0;  ///< Digits that always show; behind the point; of these "#" at the end
  bool bFigures = false, bPoint = false, bGrouped = false, bGeneral = false, bText = false;
  bool bExponent = false, bExponentPlus = false;
  int nExponentDigits = 0, nPercents = 0, nWhole = 0;
};

/// One character of a code, or what stands for a literal; False for what isn't known.
class clsCodeReader {
 public:
  explicit clsCodeReader(std::string_view sCode) : sCode_(sCode) {}
  bool AtEnd() const { return nPos_ >= sCode_.size(); }
  char Peek() const { return sCode_[nPos_]; }
  bool Take(std::string_view sMark) {
    if (!sCode_.substr(nPos_).starts_with(sMark)) return false;
    nPos_ += sMark.size();
    return true;
  }
  char Next() { return sCode_[nPos_++]; }
  /// A quoted, escaped or bracketed piece whose first character is at hand.
  bool Literal(std::string& sOut) {
    const char ch = Next();
    if (ch == '\\' || ch == '_') {
      if (AtEnd()) return false;
      const char chNext = Next();
      sOut.push_back(ch == '_' ? ' ' : chNext);
      return true;
    }
    const size_t nEnd = sCode_.find(ch == '"' ? '"' : ']', nPos_);
    if (nEnd == std::string_view::npos) return false;
    std::string_view sInner = sCode_.substr(nPos_, nEnd - nPos_);
    nPos_ = nEnd + 1;
    if (ch == '"') return sOut.append(sInner), true;
    if (sInner.starts_with('$')) return sOut.append(sInner.substr(1, sInner.find('-') - 1)), true;
    constexpr std::array<std::string_view, 8> kColours = {"Black",   "Blue", "Cyan",  "Green",
                                                          "Magenta", "Red",  "White", "Yellow"};
    return std::find(kColours.begin(), kColours.end(), sInner) != kColours.end();
  }

 private:
  std::string_view sCode_;
  size_t nPos_ = 0;
};

bool IsQuoting(char ch) {
  return ch == '"' || ch == '\\' || ch == '_' || ch == '[';
}

/// A placeholder of the figures.
bool TakeFigure(char ch, Section& section) {
  section.bFigures = true;
  if (ch == '.') {
    if (section.bPoint) return false;
    section.bPoint = true;
  } else if (section.bPoint) {
    ++section.nDecimals;
    section.nOptional = ch == '#' ? section.nOptional + 1 : 0;
  } else {
    ++section.nWhole;
    if (ch == '0') ++section.nLeast;
  }
  return true;
}

bool TakeExponent(clsCodeReader& reader, Section& section) {
  section.bExponent = true;
  section.bExponentPlus = reader.Take("+");
  if (!section.bExponentPlus && !reader.Take("-")) return false;
  while (!reader.AtEnd() && reader.Peek() == '0') {
    reader.Next();
    ++section.nExponentDigits;
  }
  return section.nExponentDigits > 0 && section.nWhole == 1 && section.nLeast == 1 && !section.bGrouped;
}

bool ReadSection(std::string_view sCode, Section& section) {
  clsCodeReader reader(sCode);
  while (!reader.AtEnd()) {
    std::string& sSide = section.bFigures || section.bGeneral || section.bText ? section.sBehind : section.sBefore;
    if (IsQuoting(reader.Peek())) {
      if (!reader.Literal(sSide)) return false;
      continue;
    }
    if (reader.Take("General")) {
      section.bGeneral = true;
      continue;
    }
    const char ch = reader.Next();
    const bool bEnded = !section.sBehind.empty() || section.bExponent;
    if (ch == '0' || ch == '#' || ch == '.') {
      if (bEnded || !TakeFigure(ch, section)) return false;
    } else if (ch == ',') {
      // Behind the figures it scales them.
      if (section.bPoint || !section.bFigures || reader.AtEnd() || (reader.Peek() != '0' && reader.Peek() != '#'))
        return false;
      section.bGrouped = true;
    } else if (ch == 'E') {
      if (!TakeExponent(reader, section)) return false;
    } else if (ch == '%') {
      ++section.nPercents;
      sSide.push_back(ch);
    } else if (ch == '@') {
      section.bText = true;
    } else if (std::string_view("$-+/(): !^&'~{}<>=").find(ch) != std::string_view::npos ||
               (static_cast<unsigned char>(ch) & 0x80) != 0) {
      sSide.push_back(ch);
    } else {
      return false;
    }
  }
  return true;
}

std::string Grouped(std::string sWhole) {
  for (size_t i = sWhole.size(); i > 3; i -= 3) sWhole.insert(i - 3, ",");
  return sWhole;
}

void AppendFixed(const Decimal& number, const Section& section, std::string& sOut) {
  std::string sDigits = Rounded(number, section.nDecimals);
  const size_t nWhole = sDigits.size() - static_cast<size_t>(section.nDecimals);
  std::string sWhole = sDigits.substr(0, nWhole), sDecimals = sDigits.substr(nWhole);
  if (sWhole.size() < static_cast<size_t>(section.nLeast))
    sWhole.insert(0, static_cast<size_t>(section.nLeast) - sWhole.size(), '0');
  for (int i = 0; i < section.nOptional && sDecimals.ends_with('0'); ++i) sDecimals.pop_back();
  sOut.append(section.bGrouped ? Grouped(std::move(sWhole)) : sWhole);
  if (section.bPoint) sOut.append(".").append(sDecimals);
}

void AppendWithExponent(Decimal number, const Section& section, std::string& sOut) {
  int nPower = number.IsZero() ? 0 : number.nPoint - 1;
  number.nPoint = number.IsZero() ? 0 : 1;
  std::string sDigits = Rounded(number, section.nDecimals);
  if (number.IsZero()) sDigits.insert(0, "0");
  if (sDigits.size() > static_cast<size_t>(section.nDecimals) + 1) {
    sDigits.pop_back();
    ++nPower;
  }
  sOut.append(sDigits, 0, 1);
  if (section.bPoint) sOut.append(".").append(sDigits, 1);
  std::string sPower = std::to_string(std::abs(nPower));
  if (sPower.size() < static_cast<size_t>(section.nExponentDigits))
    sPower.insert(0, static_cast<size_t>(section.nExponentDigits) - sPower.size(), '0');
  sOut.append("E").append(nPower < 0 ? "-" : section.bExponentPlus ? "+" : "").append(sPower);
}

/// Eleven digits at most; a longer number shows by the width of its cell.
bool AppendGeneral(const Decimal& number, std::string& sOut) {
  const int nDecimals = std::max(0, static_cast<int>(number.sDigits.size()) - number.nPoint);
  if (std::max(number.nPoint, 1) + nDecimals > 11) return false;
  std::string sDigits = Rounded(number, nDecimals);
  std::string sWhole = sDigits.substr(0, sDigits.size() - static_cast<size_t>(nDecimals));
  std::string sDecimals = sDigits.substr(sWhole.size());
  while (sDecimals.ends_with('0')) sDecimals.pop_back();
  sOut.append(sWhole.empty() ? "0" : sWhole);
  if (!sDecimals.empty()) sOut.append(".").append(sDecimals);
  return true;
}

std::vector<std::string_view> Sections(std::string_view sCode) {
  std::vector<std::string_view> sections;
  size_t nStart = 0;
  for (size_t i = 0; i < sCode.size(); ++i) {
    if (sCode[i] == '"' || sCode[i] == '[') {
      i = std::min(sCode.find(sCode[i] == '"' ? '"' : ']', i + 1), sCode.size());
    } else if (sCode[i] == '\\' || sCode[i] == '_') {
      ++i;
    } else if (sCode[i] == ';') {
      sections.push_back(sCode.substr(nStart, i - nStart));
      nStart = i + 1;
    }
  }
  sections.push_back(sCode.substr(std::min(nStart, sCode.size())));
  return sections;
}

bool AppendNumber(Decimal number, std::string_view sCode, std::string& sOut) {
  const std::vector<std::string_view> sections = Sections(sCode);
  size_t nSection = 0;
  bool bMinus = number.bMinus && !number.IsZero();
  if (number.IsZero() && sections.size() > 2) nSection = 2;
  if (bMinus && sections.size() > 1) {
    nSection = 1;
    bMinus = false;
  }
  Section section;
  if (!ReadSection(sections[nSection], section)) return false;
  for (int i = 0; i < section.nPercents && !number.IsZero(); ++i) number.nPoint += 2;
  std::string sFigures;
  if (section.bGeneral || section.bText) {
    if (section.bFigures || !AppendGeneral(number, sFigures)) return false;
  } else if (section.bExponent) {
    AppendWithExponent(number, section, sFigures);
  } else if (section.bFigures) {
    AppendFixed(number, section, sFigures);
  }
  // What is rounded to nothing shows no sign.
  if (bMinus && sFigures.find_first_of("123456789") != std::string::npos) sOut.push_back('-');
  sOut.append(section.sBefore).append(sFigures).append(section.sBehind);
  return true;
}

/// Two digits, or as many as there are.
void AppendPart(unsigned nValue, bool bTwo, std::string& sOut) {
  if (bTwo && nValue < 10) sOut.push_back('0');
  sOut += std::to_string(nValue);
}

struct Moment {
  std::chrono::year_month_day date;
  unsigned nHour = 0, nMinute = 0, nSecond = 0;
};

/// A run of one letter of a date code.
bool AppendDateRun(char ch, size_t nRun, bool bMinutes, const Moment& moment, std::string& sOut) {
  constexpr std::array<std::string_view, 12> kMonths = {"January",   "February", "March",    "April",
                                                        "May",       "June",     "July",     "August",
                                                        "September", "October",  "November", "December"};
  const auto nMonth = static_cast<unsigned>(moment.date.month());
  const auto nYear = static_cast<unsigned>(static_cast<int>(moment.date.year()));
  if (ch == 'y') {
    AppendPart(nRun > 2 ? nYear : nYear % 100, true, sOut);
  } else if (ch == 'm' && !bMinutes && nRun > 2) {
    if (nRun > 4) return false;
    sOut += kMonths[nMonth - 1].substr(0, nRun == 3 ? 3 : std::string_view::npos);
  } else if (nRun > 2) {
    return false;
  } else {
    AppendPart(ch == 'd'   ? static_cast<unsigned>(moment.date.day())
               : ch == 'h' ? moment.nHour
               : ch == 's' ? moment.nSecond
               : bMinutes  ? moment.nMinute
                           : nMonth,
               nRun == 2, sOut);
  }
  return true;
}

bool AppendDate(double nValue, std::string_view sCode, std::string& sOut) {
  if (!(nValue >= 61 && nValue < 2958466)) return false;
  const auto nSeconds = static_cast<int64_t>(std::llround(nValue * 86400));
  const auto nOfDay = static_cast<unsigned>(nSeconds % 86400);
  using namespace std::chrono;
  const Moment moment{sys_days(year{1899} / 12 / 30) + days(nSeconds / 86400), nOfDay / 3600, nOfDay / 60 % 60,
                      nOfDay % 60};
  clsCodeReader reader(Sections(sCode).front());
  char chLast = '\0';
  std::string sShown;
  while (!reader.AtEnd()) {
    if (IsQuoting(reader.Peek())) {
      if (!reader.Literal(sShown)) return false;
      continue;
    }
    char ch = reader.Next();
    if (std::string_view("ymdhsYMDHS").find(ch) != std::string_view::npos) {
      ch = static_cast<char>(ch | 0x20);
      size_t nRun = 1;
      for (; !reader.AtEnd() && (reader.Peek() | 0x20) == ch; ++nRun) reader.Next();
      const bool bMinutes = ch == 'm' && chLast == 'h';
      if (!AppendDateRun(ch, nRun, bMinutes, moment, sShown)) return false;
      chLast = ch;
    } else if (std::string_view("/-. :,").find(ch) != std::string_view::npos) {
      sShown.push_back(ch);
    } else {
      return false;
    }
  }
  sOut.append(sShown);
  return true;
}

}  // namespace

bool AppendShownByCode(std::string_view sDigits, std::string_view sCode, std::string& sOut) {
  Decimal number;
  if (!ReadDecimal(sDigits, number)) return false;
  if (sCode.empty()) sCode = "General";
  switch (KindOfFormatCode(sCode)) {
    case FormatKind::Date:
    case FormatKind::DateTime: {
      double nValue = 0;
      std::from_chars(sDigits.data(), sDigits.data() + sDigits.size(), nValue);
      return AppendDate(nValue, sCode, sOut);
    }
    case FormatKind::Time:
      return false;
    default:
      return AppendNumber(std::move(number), sCode, sOut);
  }
}

bool ShowsTheSame(std::string_view sDigits, std::string_view sCode, std::string_view sText) {
  std::string sShown, sWanted(sText);
  if (sCode.empty() || !AppendShownByCode(sDigits, sCode, sShown)) return false;
  std::erase(sShown, ' ');
  std::erase(sWanted, ' ');
  return sShown == sWanted;
}

}  // namespace quillon
