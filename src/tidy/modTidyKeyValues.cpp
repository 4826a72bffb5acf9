#include "modTidyKeyValues.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "modNumbers.h"
#include "modText.h"
#include "modTidyFailures.h"
#include "modTidyText.h"

namespace quillon {

namespace {

constexpr int32_t kLastPlace = 32767;
constexpr size_t kMostPicture = 10000;
constexpr size_t kMostNeeds = 200000;

bool Bad(TidyValueFault& fault, std::string sWhat, int32_t lCode = kTidyBadValue) {
  fault = {lCode, std::move(sWhat), {}};
  return false;
}

std::string Quoted(std::string_view sText) {
  return "`" + std::string(sText) + "`";
}

/// "`numbr` is no kind; did you mean `number`?"
bool NoWord(TidyValueFault& fault, std::string_view sWord, std::string_view sIsNo,
            std::span<const std::string_view> words) {
  std::string sWhat = Quoted(sWord) + " is no " + std::string(sIsNo);
  if (const std::string_view sNearest = NearestWord(sWord, words); !sNearest.empty()) {
    sWhat += "; did you mean " + Quoted(sNearest) + "?";
  } else {
    sWhat += "; there are";
    for (const std::string_view sOther : words) sWhat += " " + std::string(sOther);
  }
  return Bad(fault, std::move(sWhat));
}

std::optional<int32_t> PlaceNumber(std::string_view s) {
  int32_t lNumber = 0;
  const auto [pEnd, error] = std::from_chars(s.data(), s.data() + s.size(), lNumber);
  if (error != std::errc() || pEnd != s.data() + s.size() || lNumber < 1 || lNumber > kLastPlace) return std::nullopt;
  return lNumber;
}

/// "4", "6-9", "14-".
bool ParsePlace(std::string_view s, TidyPlace& place) {
  const size_t nDash = s.find('-');
  const auto start = PlaceNumber(s.substr(0, nDash));
  if (!start) return false;
  place = {*start, *start};
  if (nDash == std::string_view::npos) return true;
  place.nEnd = 0;
  if (nDash + 1 == s.size()) return true;
  const auto end = PlaceNumber(s.substr(nDash + 1));
  if (!end || *end < *start) return false;
  place.nEnd = *end;
  return true;
}

/// The next word, up to a blank; the text goes on behind it.
std::string_view TakeWord(std::string_view& s) {
  s = TrimLeftBlanks(s);
  const size_t nEnd = std::min(s.find(' '), s.size());
  const std::string_view sWord = s.substr(0, nEnd);
  s.remove_prefix(nEnd);
  return sWord;
}

/// Column letters in front of a kind: "A", "C-E", "A C". What isn't one begins the rest.
bool TakeColumns(std::string_view& s, std::vector<TidyColumn>& columns, TidyValueFault& fault) {
  for (;;) {
    std::string_view sRest = s;
    const std::string_view sWord = TakeWord(sRest);
    const size_t nDash = sWord.find('-');
    const auto first = TidyColumnOf(sWord.substr(0, nDash));
    if (!first) return true;
    const auto last = nDash == std::string_view::npos ? first : TidyColumnOf(sWord.substr(nDash + 1));
    if (!last || *last < *first) return Bad(fault, Quoted(sWord) + " are no columns; write them as C-E");
    if (*last >= kMaxTidyColumns) {
      fault = {kTidyTooMuch, std::string(sWord), std::to_string(kMaxTidyColumns) + " columns"};
      return false;
    }
    for (TidyColumn column = *first; column <= *last; ++column) columns.push_back(column);
    s = sRest;
  }
}

constexpr std::array<std::string_view, 6> kKinds{"number", "digits", "date", "letters", "any", "blank"};

bool ParseKind(std::string_view s, TidyKindOrText& kind, TidyValueFault& fault) {
  if (s.size() >= 2 && s.front() == '"' && s.back() == '"') {
    kind = {TidyKind::Holds, TidyUnescaped(s.substr(1, s.size() - 2))};
    return true;
  }
  const auto* const found = std::find(kKinds.begin(), kKinds.end(), s);
  if (found == kKinds.end()) return NoWord(fault, s, "kind, nor a text in quotes", kKinds);
  kind = {static_cast<TidyKind>(found - kKinds.begin()), {}};
  return true;
}

constexpr std::array<std::string_view, 5> kTypes{"auto", "text", "number", "date", "skip"};

bool ParseNumberType(std::string_view s, TidyTyping& typing, TidyValueFault& fault) {
  while (!TrimBlanks(s).empty()) {
    const std::string_view sWord = TakeWord(s);
    if (sWord == "comma") {
      typing.bComma = true;
      continue;
    }
    const bool bPower = sWord.size() > 2 && sWord.size() < 12 && sWord.starts_with("/1") &&
                        sWord.find_first_not_of('0', 2) == std::string_view::npos;
    if (!bPower) return Bad(fault, Quoted(sWord) + " is nothing that a number has; there are comma and /10, /100 ...");
    typing.nImplied = static_cast<int>(sWord.size()) - 2;
  }
  return true;
}

bool ParseType(std::string_view s, TidyTyping& typing, TidyValueFault& fault) {
  const std::string_view sWord = TakeWord(s);
  const auto* const found = std::find(kTypes.begin(), kTypes.end(), sWord);
  if (found == kTypes.end()) return NoWord(fault, sWord, "type", kTypes);
  typing.type = static_cast<TidyType>(found - kTypes.begin());
  const std::string_view sRest = TrimBlanks(s);
  if (typing.type == TidyType::Number) return ParseNumberType(sRest, typing, fault);
  if (typing.type != TidyType::Date) return sRest.empty() || Bad(fault, Quoted(sRest) + " says nothing there");
  for (const char ch : {'D', 'M', 'Y'}) {
    if (sRest.find(ch) != std::string_view::npos) continue;
    return Bad(fault, "a date asks for its form with day, month and year, as in date DD.MM.YYYY");
  }
  typing.sDateForm = TidyUnescaped(sRest);
  return true;
}

/// Rules between commas. A date's form may hold one as well ("date MMM DD, YYYY"): no rule begins behind it then.
std::vector<std::string_view> TypeRules(std::string_view sValue) {
  std::vector<std::string_view> rules;
  bool bDate = false;
  for (const std::string_view sPiece : TidyPieces(sValue, ',')) {
    const bool bForm = sPiece.find_first_not_of("DMYHNS:.,/- ") == std::string_view::npos;
    if (bDate && bForm && !sPiece.empty()) {
      const char* const pFrom = rules.back().data();
      rules.back() = {pFrom, static_cast<size_t>(sPiece.data() + sPiece.size() - pFrom)};
      continue;
    }
    rules.push_back(sPiece);
    bDate = sPiece.find("date ") != std::string_view::npos;
  }
  return rules;
}

}  // namespace

bool ParseTidyPlaces(std::string_view sValue, TidyCut& cut, TidyValueFault& fault) {
  cut.places.assign(1, {});
  size_t nPlaces = 0;
  for (std::string_view s = TrimBlanks(sValue); !s.empty(); s = TrimLeftBlanks(s)) {
    if (s.front() == '|') {
      cut.places.emplace_back();
      s.remove_prefix(1);
      continue;
    }
    const size_t nEnd = std::min(s.find_first_of(" |,"), s.size());
    TidyPlace place;
    if (!ParsePlace(s.substr(0, nEnd), place)) return Bad(fault, Quoted(s.substr(0, nEnd)), kTidyBadPlace);
    cut.places.back().push_back(place);
    if (++nPlaces > kMaxTidyColumns) {
      fault = {kTidyTooMuch, std::to_string(nPlaces) + " places", std::to_string(kMaxTidyColumns)};
      return false;
    }
    s.remove_prefix(nEnd < s.size() && s[nEnd] == ',' ? nEnd + 1 : nEnd);
  }
  for (const auto& group : cut.places) {
    if (group.empty()) return Bad(fault, "there is no place; write them as 1-5 7-22 24-");
    if (group.size() > cut.places.front().size()) {
      return Bad(fault, "a further record of the line has more columns than the first one");
    }
  }
  return true;
}

bool ParseTidySplit(std::string_view sValue, TidyCut& cut, TidyValueFault& fault) {
  const std::string_view s = TrimBlanks(sValue);
  cut.split = s == "blanks" ? TidySplit::AtBlanks : s == "gaps" ? TidySplit::AtGaps : TidySplit::AtText;
  if (cut.split == TidySplit::AtText) cut.sSplit = TidyUnescaped(s);
  return !s.empty() || Bad(fault, "there is nothing to split at; write a text, blanks or gaps");
}

bool ParseTidyNames(std::string_view sValue, std::vector<std::string>& names, TidyValueFault& fault) {
  size_t nFrom = 0;
  while (nFrom <= sValue.size()) {
    const size_t nBar = std::min(sValue.find('|', nFrom), sValue.size());
    names.push_back(TidyUnescaped(TrimBlanks(sValue.substr(nFrom, nBar - nFrom))));
    nFrom = nBar + 1;
    if (names.size() <= kMaxTidyColumns) continue;
    fault = {kTidyTooMuch, std::to_string(names.size()) + " names", std::to_string(kMaxTidyColumns)};
    return false;
  }
  return true;
}

bool ParseTidyColumns(std::string_view sValue, std::vector<TidyColumn>& columns, TidyValueFault& fault) {
  std::string sText(sValue);
  std::replace(sText.begin(), sText.end(), ',', ' ');
  std::string_view s = sText;
  if (!TakeColumns(s, columns, fault)) return false;
  const std::string_view sRest = TrimBlanks(s);
  return (sRest.empty() && !columns.empty()) || Bad(fault, Quoted(sRest) + " is no column; write them as A C-E");
}

bool ParseTidyNeeds(std::string_view sValue, std::vector<TidyNeed>& needs, TidyValueFault& fault) {
  for (std::string_view sNeed : TidyPieces(sValue, ',')) {
    TidyNeed need;
    std::vector<TidyColumn> columns;
    if (!TakeColumns(sNeed, columns, fault)) return false;
    if (columns.empty()) columns.push_back(kEveryTidyColumn);
    for (const std::string_view sKind : TidyPieces(sNeed, '|')) {
      if (!ParseKind(sKind, need.alternatives.emplace_back(), fault)) return false;
    }
    for (const TidyColumn column : columns) {
      need.column = column;
      needs.push_back(need);
    }
    if (needs.size() > kMostNeeds) return Bad(fault, "these are more needs than a table may have");
  }
  return true;
}

bool ParseTidyTypes(std::string_view sValue, std::vector<TidyTyping>& types, TidyTyping& others,
                    TidyValueFault& fault) {
  std::vector<std::pair<std::vector<TidyColumn>, TidyTyping>> rules;
  TidyColumn last = 0;
  for (std::string_view sRule : TypeRules(sValue)) {
    auto& [columns, typing] = rules.emplace_back();
    if (!TakeColumns(sRule, columns, fault) || !ParseType(sRule, typing, fault)) return false;
    if (columns.empty()) others = typing;
    for (const TidyColumn column : columns) last = std::max(last, column + 1);
  }
  types.assign(last, others);
  for (const auto& [columns, typing] : rules) {
    for (const TidyColumn column : columns) types[column] = typing;
  }
  return true;
}

bool ParseTidyPictures(std::string_view sValue, std::vector<std::string>& likes, TidyValueFault& fault) {
  // A bar behind a backslash is one of the picture.
  std::string sPicture;
  const auto take = [&] {
    const std::string_view sTrimmed = TrimBlanks(sPicture);
    if (!sTrimmed.empty()) likes.emplace_back(sTrimmed);
    sPicture.clear();
  };
  for (size_t i = 0; i < sValue.size(); ++i) {
    if (sValue[i] == '|') {
      take();
      continue;
    }
    const bool bEscape = sValue[i] == '\\' && i + 1 < sValue.size();
    const std::string sCharacter = TidyUnescaped(sValue.substr(i, 4));
    if (bEscape && sValue[i + 1] == 'x' && sCharacter.size() <= 2 && sCharacter[0] != '\\') {
      sPicture.append("\\").append(sCharacter);
      i += 3;
      continue;
    }
    sPicture.push_back(sValue[i]);
    if (bEscape) sPicture.push_back(sValue[++i]);
  }
  take();
  for (const std::string& sLike : likes) {
    if (sLike.size() <= kMostPicture) continue;
    fault = {kTidyTooMuch, std::to_string(sLike.size()) + " characters", std::to_string(kMostPicture)};
    return false;
  }
  return !likes.empty() || Bad(fault, "there is no picture");
}

bool ParseTidyYesNo(std::string_view sValue, bool& bYes, TidyValueFault& fault) {
  constexpr std::array<std::string_view, 2> kAnswers{"yes", "no"};
  bYes = sValue == kAnswers[0];
  return bYes || sValue == kAnswers[1] || NoWord(fault, sValue, "answer", kAnswers);
}

bool ParseTidyJoin(std::string_view sValue, TidyTable& table, TidyValueFault& fault) {
  constexpr std::array<std::string_view, 2> kWays{"up", "down"};
  std::string_view s = sValue;
  const std::string_view sWay = TakeWord(s);
  if (sWay != kWays[0] && sWay != kWays[1]) return NoWord(fault, sWay, "way to join", kWays);
  table.join = sWay == kWays[0] ? TidyJoin::Up : TidyJoin::Down;
  s = TrimBlanks(s);
  if (s.empty()) return true;
  if (table.join == TidyJoin::Down) return Bad(fault, "Join=down takes no column");
  const auto column = TidyColumnOf(s);
  if (!column) return Bad(fault, Quoted(s) + " is no column; write it as in Join=up E");
  table.joinColumn = *column;
  return true;
}

bool ParseTidyLevels(std::string_view sValue, TidyTable& table, TidyValueFault& fault) {
  std::string_view s = sValue;
  const std::string_view sColumn = TakeWord(s);
  const auto column = TidyColumnOf(sColumn);
  if (!column) return Bad(fault, Quoted(sColumn) + " is no column; write it as in Levels=A Section|Group");
  table.levelColumn = *column;
  std::string_view sRest = s;
  if (TakeWord(sRest) == "rows") {
    table.bLevelRows = true;
    s = sRest;
  }
  if (!ParseTidyNames(TrimBlanks(s), table.levelNames, fault)) return false;
  return !TrimBlanks(s).empty() || Bad(fault, "the levels have no names; write it as in Levels=A Section|Group");
}

bool ParseTidySheet(std::string_view sValue, std::string& sSheet, TidyValueFault& fault) {
  sSheet = TidyUnescaped(sValue);
  constexpr size_t kMostName = 31;
  const bool bBad = sSheet.empty() || Utf16Count(sSheet) > kMostName ||
                    sSheet.find_first_of("[]:*?/\\\"<>|") != std::string::npos || sSheet.front() == '\'' ||
                    sSheet.back() == '\'' || sSheet.front() == '.';
  return !bBad || Bad(fault, Quoted(sSheet) + " can be no sheet's and no file's name");
}

bool ParseTidyNumber(std::string_view sValue, int32_t& lNumber, TidyValueFault& fault) {
  const auto number = ParseWholeNumber(sValue);
  if (!number) return Bad(fault, Quoted(sValue) + " is no whole number");
  lNumber = *number;
  return true;
}

}  // namespace quillon
