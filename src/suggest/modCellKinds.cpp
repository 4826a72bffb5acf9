#include "modCellKinds.h"

#include <algorithm>
#include <array>

#include "modLineMarks.h"

namespace quillon {

namespace {

void TakeSigns(std::u32string_view& sText) {
  constexpr std::u32string_view kInFront = U"+-(<";
  while (!sText.empty() && (IsCurrencyPlace(sText.front()) ||
                            kInFront.find(sText.front()) != std::u32string_view::npos || IsBlankPlace(sText.front()))) {
    sText.remove_prefix(1);
  }
  constexpr std::u32string_view kBehind = U"-)%*>";
  for (const std::u32string_view sWord : {std::u32string_view(U"CR"), std::u32string_view(U"DR")}) {
    if (sText.size() > sWord.size() && sText.ends_with(sWord)) sText.remove_suffix(sWord.size());
  }
  while (!sText.empty() && (IsCurrencyPlace(sText.back()) || IsBlankPlace(sText.back()) ||
                            kBehind.find(sText.back()) != std::u32string_view::npos)) {
    sText.remove_suffix(1);
  }
}

/// "E+08" at the end of 1.1348E+08; Fortran has a D there.
bool IsExponent(std::u32string_view sText) {
  if (sText.size() < 2 || std::u32string_view(U"EeDd").find(sText.front()) == std::u32string_view::npos) return false;
  sText.remove_prefix(1);
  if (sText.front() == U'+' || sText.front() == U'-') sText.remove_prefix(1);
  constexpr size_t kLongest = 3;
  return !sText.empty() && sText.size() <= kLongest && std::all_of(sText.begin(), sText.end(), IsDigitPlace);
}

/// Groups of three behind each comma, if there are several; one comma may be a decimal one.
bool CommasFit(std::u32string_view sText) {
  size_t nCommas = 0;
  size_t nDigits = 0;
  bool bThrees = true;
  for (const char32_t ch : sText) {
    if (ch == U',') {
      bThrees = bThrees && (nCommas == 0 ? nDigits >= 1 && nDigits <= 3 : nDigits == 3);
      ++nCommas;
      nDigits = 0;
    } else if (ch == U'.') {
      break;
    } else {
      ++nDigits;
    }
  }
  bThrees = bThrees && (nCommas == 0 || nDigits == 3);
  return nCommas == 0 || bThrees || (nCommas == 1 && nDigits > 0 && sText.find(U'.') == std::u32string_view::npos);
}

/// "1 234 567,89": groups of three digits parted by blanks, and decimals, so that it is no list of codes.
bool HasBlankGroups(std::u32string_view sText) {
  constexpr size_t kGroup = 3;
  size_t nGroups = 0;
  size_t nDigits = 0;
  for (size_t i = 0; i < sText.size(); ++i) {
    if (IsDigitPlace(sText[i])) {
      ++nDigits;
      continue;
    }
    if (nDigits == 0 || nDigits > kGroup || (nGroups > 0 && nDigits != kGroup)) return false;
    if (sText[i] == U'.' || sText[i] == U',') {
      const std::u32string_view sRest = sText.substr(i + 1);
      return nGroups > 0 && !sRest.empty() && std::all_of(sRest.begin(), sRest.end(), IsDigitPlace);
    }
    if (!IsBlankPlace(sText[i])) return false;
    ++nGroups;
    nDigits = 0;
  }
  return false;
}

}  // namespace

bool IsNumberText(std::u32string_view sText) {
  TakeSigns(sText);
  if (HasBlankGroups(sText)) return true;
  size_t nDigits = 0;
  size_t nPoints = 0;
  size_t i = 0;
  for (; i < sText.size(); ++i) {
    if (IsDigitPlace(sText[i])) {
      ++nDigits;
    } else if (sText[i] == U'.') {
      ++nPoints;
    } else if (sText[i] != U',') {
      break;
    }
  }
  if (nDigits == 0 || nPoints > 1 || !CommasFit(sText.substr(0, i))) return false;
  return i == sText.size() || IsExponent(sText.substr(i));
}

void clsDecimalSigns::Add(std::u32string_view sNumber) {
  constexpr size_t kGroup = 3;
  const size_t nComma = sNumber.rfind(U',');
  const size_t nPoint = sNumber.rfind(U'.');
  const bool bComma = nComma != std::u32string_view::npos;
  const bool bPoint = nPoint != std::u32string_view::npos;
  if (!bComma && !bPoint) return;
  const size_t nSign = !bPoint || (bComma && nComma > nPoint) ? nComma : nPoint;
  size_t nDecimals = 0;
  while (nSign + nDecimals + 1 < sNumber.size() && IsDigitPlace(sNumber[nSign + nDecimals + 1])) ++nDecimals;
  size_t nWhole = 0;
  while (nWhole < nSign && IsDigitPlace(sNumber[nSign - nWhole - 1])) ++nWhole;
  const bool bZero = nWhole == 1 && sNumber[nSign - 1] == U'0' && !(bComma && bPoint);
  // 5.100 and 5,100 tell nothing.
  if (nDecimals == kGroup && nWhole <= kGroup && !bZero && !(bComma && bPoint)) return;
  if (nSign == nPoint) {
    ++nPoints_;
  } else if (nDecimals > 0) {
    ++nCommas_;
    bSure_ = bSure_ || (bPoint && nWhole == kGroup) || (bZero && nDecimals == kGroup);
  }
}

namespace {

struct DateForm {
  std::string_view sForm;
  std::u32string_view sPicture;  ///< 9 digit, A letter, others themselves
};

/// The likelier reading comes first where two have one picture.
constexpr std::array<DateForm, 16> kForms{{
    {"MM/DD/YY", U"99/99/99"},
    {"DD/MM/YY", U"99/99/99"},
    {"YY/MM/DD", U"99/99/99"},
    {"MM/DD/YYYY", U"99/99/9999"},
    {"DD/MM/YYYY", U"99/99/9999"},
    {"YYYY/MM/DD", U"9999/99/99"},
    {"DD.MM.YY", U"99.99.99"},
    {"DD.MM.YYYY", U"99.99.9999"},
    {"MM-DD-YY", U"99-99-99"},
    {"DD-MM-YY", U"99-99-99"},
    {"MM-DD-YYYY", U"99-99-9999"},
    {"DD-MM-YYYY", U"99-99-9999"},
    {"YYYY-MM-DD", U"9999-99-99"},
    {"DD-MMM-YY", U"99-AAA-99"},
    {"YY-MMM-DD", U"99-AAA-99"},
    {"DD-MMM-YYYY", U"99-AAA-9999"},
}};
constexpr std::string_view kPlainForm = "YYYYMMDD";
constexpr uint32_t kPlainBit = 1U << kForms.size();

bool IsMonthName(std::u32string_view sText) {
  constexpr std::u32string_view kMonths = U"janfebmaraprmayjunjulaugsepoctnovdec";
  std::u32string sLow(sText);
  for (char32_t& ch : sLow) ch |= 0x20U;
  for (size_t i = 0; i < kMonths.size(); i += 3) {
    if (kMonths.substr(i, 3) == sLow) return true;
  }
  return false;
}

int32_t NumberAt(std::u32string_view sText) {
  int32_t l = 0;
  for (const char32_t ch : sText) l = l * 10 + static_cast<int32_t>(ch - U'0');
  return l;
}

bool PictureFits(std::u32string_view sText, std::u32string_view sPicture) {
  if (sText.size() != sPicture.size()) return false;
  for (size_t i = 0; i < sText.size(); ++i) {
    const bool bFits = sPicture[i] == U'9'   ? IsDigitPlace(sText[i])
                       : sPicture[i] == U'A' ? IsLetterPlace(sText[i])
                                             : sText[i] == sPicture[i];
    if (!bFits) return false;
  }
  return true;
}

/// Whether month and day of a text that has the picture are ones.
bool PartsFit(std::u32string_view sText, std::string_view sForm) {
  constexpr int32_t kMonths = 12;
  constexpr int32_t kDays = 31;
  const size_t nMonth = sForm.find("MM");
  const size_t nDay = sForm.find("DD");
  const bool bName = sForm.find("MMM") != std::string_view::npos;
  const int32_t lDay = NumberAt(sText.substr(nDay, 2));
  if (lDay < 1 || lDay > kDays) return false;
  if (bName) return IsMonthName(sText.substr(nMonth, 3));
  const int32_t lMonth = NumberAt(sText.substr(nMonth, 2));
  return lMonth >= 1 && lMonth <= kMonths;
}

uint32_t FormsOf(std::u32string_view sCell) {
  constexpr int32_t kFirstYear = 1800;
  constexpr int32_t kLastYear = 2199;
  uint32_t lForms = 0;
  for (size_t i = 0; i < kForms.size(); ++i) {
    if (PictureFits(sCell, kForms[i].sPicture) && PartsFit(sCell, kForms[i].sForm)) lForms |= 1U << i;
  }
  if (PictureFits(sCell, U"99999999") && PartsFit(sCell, kPlainForm)) {
    const int32_t lYear = NumberAt(sCell.substr(0, 4));
    if (lYear >= kFirstYear && lYear <= kLastYear) lForms |= kPlainBit;
  }
  return lForms;
}

}  // namespace

void clsDateForms::Add(std::u32string_view sCell) {
  constexpr size_t kMost = 100;
  lLeft_ &= FormsOf(sCell);
  bAny_ = true;
  if (lLeft_ == 0 || sCell.size() < 2) return;
  if (first_.size() < kMost) first_.emplace(sCell.substr(0, 2));
  if (last_.size() < kMost) last_.emplace(sCell.substr(sCell.size() - 2));
}

std::string_view clsDateForms::Form() const {
  if (!bAny_ || lLeft_ == 0) return {};
  // Years change less than days do.
  const bool bYearFirst = first_.size() < last_.size();
  for (const bool bSecondChoice : {false, true}) {
    for (size_t i = 0; i < kForms.size(); ++i) {
      const bool bShortYear =
          kForms[i].sPicture.size() < 10 && kForms[i].sPicture.find(U"AAA") != std::u32string_view::npos;
      const bool bWanted = !bShortYear || bSecondChoice || kForms[i].sForm.starts_with("YY") == bYearFirst;
      if ((lLeft_ >> i & 1U) != 0 && bWanted) return kForms[i].sForm;
    }
  }
  return (lLeft_ & kPlainBit) != 0 ? kPlainForm : std::string_view{};
}

bool IsDateText(std::u32string_view sCell) {
  return (FormsOf(sCell) & ~kPlainBit) != 0;
}

FieldKind KindOfCell(std::u32string_view sCell) {
  if (sCell.empty()) return FieldKind::Blank;
  if (std::all_of(sCell.begin(), sCell.end(), IsDigitPlace)) return FieldKind::Digits;
  if (IsNumberText(sCell)) return FieldKind::Number;
  if (IsDateText(sCell)) return FieldKind::Date;
  return IsLetterPlace(sCell.front()) ? FieldKind::Letters : FieldKind::Any;
}

}  // namespace quillon
