#include "clsPrinterCodes.h"

#include <algorithm>
#include <utility>

#include "modNumbers.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr char kEscape = '\x1B';
constexpr char kBackspace = '\b';
constexpr int64_t kMostColumns = 32760;
constexpr size_t kMostCells = size_t{1} << 20;
constexpr size_t kMostSequence = 64;

bool IsBetween(char c, char first, char last) {
  return c >= first && c <= last;
}

/// A control character that text has none of. Tabs and the old mark at a file's end are text.
bool IsCode(char c) {
  return (static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r' && c != '\x1A') || c == '\x7F';
}

/// A line that can be copied: form feeds stand at its beginning alone, and nothing is printed over it.
bool IsClean(std::string_view sLine) {
  while (sLine.starts_with('\f')) sLine.remove_prefix(1);
  return std::none_of(sLine.begin(), sLine.end(), [](char c) { return IsCode(c) || c == '\r'; });
}

int64_t ValueOf(std::string_view sDigits, int64_t nDefault) {
  const size_t nFirst = sDigits.find_first_of("0123456789");
  if (nFirst == std::string_view::npos) return nDefault;
  const std::string_view sNumber = sDigits.substr(nFirst, sDigits.find_first_not_of("0123456789", nFirst) - nFirst);
  return ParseWholeNumber(sNumber).value_or(0);
}

size_t BytesOfCharacter(char c) {
  const auto lead = static_cast<unsigned char>(c);
  return lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
}

}  // namespace

bool HasPrinterCodes(std::string_view sText) {
  for (size_t n = 0; n + 1 < sText.size(); ++n) {
    const char next = sText[n + 1];
    if (sText[n] == kBackspace && n > 0 && next > ' ' && sText[n - 1] > ' ') return true;
    if (sText[n] == kEscape && (IsBetween(next, '%', '*') || IsBetween(next, '0', '_'))) return true;
  }
  return false;
}

void clsPrinterCodes::Take(std::string_view sBlock, std::string& sOut) {
  while (!sBlock.empty()) {
    const bool bAtStart = state_ == State::Text && line_.empty() && sPartial_.empty() && nColumn_ == 0 && !bJob_;
    const size_t nEnd = bAtStart ? sBlock.find('\n') : std::string_view::npos;
    std::string_view sLine = sBlock.substr(0, nEnd);
    while (sLine.ends_with('\r')) sLine.remove_suffix(1);
    if (nEnd != std::string_view::npos && IsClean(sLine)) {
      sOut.append(sFeeds_).append(sLine).append("\n");
      sFeeds_.clear();
      sBlock.remove_prefix(nEnd + 1);
      continue;
    }
    // Byte by byte to the end of this line.
    size_t n = 0;
    while (n < sBlock.size()) {
      const char c = sBlock[n++];
      Step(c, sOut);
      if (c == '\n' && state_ == State::Text) break;
    }
    sBlock.remove_prefix(n);
  }
}

void clsPrinterCodes::End(std::string& sOut) {
  if (!line_.empty() || !sPartial_.empty() || !sFeeds_.empty()) EndLine(sOut, "");
}

void clsPrinterCodes::Step(char c, std::string& sOut) {
  switch (state_) {
    case State::Text:
      return StepText(c, sOut);
    case State::Escape:
      return StepEscape(c);
    case State::Ansi:
      return StepAnsi(c);
    case State::Pcl:
      return StepPcl(c);
    case State::Data:
      if (--nData_ <= 0) state_ = State::Text;
  }
}

void clsPrinterCodes::StepText(char c, std::string& sOut) {
  if (c == '\n') {
    EndLine(sOut, "\n");
  } else if (c == '\r') {
    nColumn_ = 0;
  } else if (IsCode(c)) {
    StepControl(c, sOut);
  } else {
    Put(c);
  }
}

void clsPrinterCodes::StepControl(char c, std::string& sOut) {
  ++lSequences_;
  if (c == kEscape) {
    state_ = State::Escape;
    sSequence_.clear();
  } else if (c == kBackspace) {
    nColumn_ -= nColumn_ > 0 ? 1 : 0;
  } else if (c == '\f' || c == '\v') {
    if (!line_.empty()) EndLine(sOut, "\n");
    if (c == '\f') sFeeds_ += c;
  }
}

void clsPrinterCodes::StepEscape(char c) {
  sSequence_ = c;
  if (c == '[') {
    state_ = State::Ansi;
    sSequence_.clear();
  } else if (IsBetween(c, '!', '/')) {
    state_ = State::Pcl;
  } else {
    state_ = State::Text;  // A letter or digit is all of it.
  }
}

void clsPrinterCodes::StepAnsi(char c) {
  if (!IsBetween(c, '@', '~')) {
    sSequence_ += c;
    if (sSequence_.size() > kMostSequence) state_ = State::Text;
    return;
  }
  state_ = State::Text;
  const auto nHere = static_cast<int64_t>(nColumn_);
  const int64_t nValue = ValueOf(sSequence_, 1);
  if (c == 'C') MoveTo(nHere + nValue);
  if (c == 'D') MoveTo(nHere - nValue);
  if (c == 'G') MoveTo(nValue - 1);
}

void clsPrinterCodes::StepPcl(char c) {
  if (sSequence_.size() == 1 && IsBetween(c, '`', '~')) {
    sSequence_ += c;  // the letter of the group
  } else if (IsBetween(c, '`', '~') || IsBetween(c, '@', '^')) {
    EndPcl(c);
  } else {
    sSequence_ += c;
    if (sSequence_.size() > kMostSequence) state_ = State::Text;
  }
}

/// One parameter ends; a small letter says that another of the same group follows.
void clsPrinterCodes::EndPcl(char c) {
  const std::string sGroup = sSequence_.substr(0, 2);
  const std::string sValue = sSequence_.substr(std::min<size_t>(2, sSequence_.size()));
  const char kind = IsBetween(c, '`', '~') ? static_cast<char>(c - 'a' + 'A') : c;
  state_ = kind == c ? State::Text : State::Pcl;
  if (sGroup == "&a" && kind == 'C') {
    const bool bOnward = sValue.find_first_of("+-") != std::string::npos;
    const int64_t nValue = ValueOf(sValue, 0) * (sValue.find('-') != std::string::npos ? -1 : 1);
    MoveTo(bOnward ? static_cast<int64_t>(nColumn_) + nValue : nValue);
  }
  const bool bData = kind == 'W' || (sGroup == "&p" && kind == 'X') || (sGroup == "*b" && kind == 'V');
  if (bData) nData_ = ValueOf(sValue, 0);
  if (bData && nData_ > 0) state_ = State::Data;
  if (sGroup == "%-") bJob_ = true;
  sSequence_ = sGroup;
}

void clsPrinterCodes::Put(char c) {
  const bool bGoesOn = (static_cast<unsigned char>(c) & 0xC0U) == 0x80;
  if (!bUtf8_ || static_cast<unsigned char>(c) < 0x80 || (sPartial_.empty() && bGoesOn)) {
    if (!sPartial_.empty()) PutCell(std::exchange(sPartial_, {}));
    return PutCell(std::string(1, c));
  }
  if (!bGoesOn && !sPartial_.empty()) PutCell(std::exchange(sPartial_, {}));
  sPartial_ += c;
  if (sPartial_.size() >= BytesOfCharacter(sPartial_.front())) PutCell(std::exchange(sPartial_, {}));
}

void clsPrinterCodes::PutCell(std::string sCell) {
  const size_t nAt = nColumn_++;
  if (nAt >= kMostCells) sFault_ = Translate("a line with codes of printers is too long");
  if (nAt >= kMostCells) return;
  if (line_.size() <= nAt) line_.resize(nAt + 1, " ");
  std::string& sThere = line_[nAt];
  if (sThere == " " || (sThere == "_" && sCell != " ")) {
    sThere = std::move(sCell);
  } else if (sCell != " " && sCell != "_" && sCell != sThere) {
    if (over_.size() <= nAt) over_.resize(nAt + 1, " ");
    over_[nAt] = std::move(sCell);
    ++lStruck_;
  }
}

void clsPrinterCodes::MoveTo(int64_t nColumn) {
  nColumn_ = static_cast<size_t>(std::clamp<int64_t>(nColumn, 0, kMostColumns));
}

void clsPrinterCodes::EndLine(std::string& sOut, std::string_view sEnd) {
  if (!sPartial_.empty()) PutCell(std::exchange(sPartial_, {}));
  std::string sLine;
  for (const std::string& sCell : line_) sLine += sCell;
  bJob_ = bJob_ && (sLine.empty() || sLine.starts_with("@PJL"));
  if (!bJob_) {
    sOut.append(sFeeds_).append(sLine).append(sEnd);
    sFeeds_.clear();
    for (const std::string& sCell : over_) sOut += sCell;
    if (!over_.empty()) sOut.append(sEnd);
  }
  line_.clear();
  over_.clear();
  nColumn_ = 0;
}

std::vector<std::string> clsPrinterCodes::Notes() const {
  std::vector<std::string> notes;
  if (lSequences_ > 0) notes.push_back(Translate("codes of printers taken out:") + " " + std::to_string(lSequences_));
  if (lStruck_ > 0) {
    notes.push_back(Translate("characters printed over others that stand on lines of their own:") + " " +
                    std::to_string(lStruck_));
  }
  return notes;
}

}  // namespace quillon
