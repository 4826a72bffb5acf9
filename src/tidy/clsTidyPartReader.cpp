#include "clsTidyPartReader.h"

#include <algorithm>

namespace quillon {

namespace {

/// How often reports hold a byte, roughly.
int Commonness(char c) {
  if (std::string_view(" .,-_=*").find(c) != std::string_view::npos) return 3;
  if (IsAsciiDigit(c)) return 2;
  return IsAsciiLetter(c) ? 1 : 0;
}

size_t RareByteOf(std::string_view sText) {
  const auto rare =
      std::min_element(sText.begin(), sText.end(), [](char a, char b) { return Commonness(a) < Commonness(b); });
  return static_cast<size_t>(rare - sText.begin());
}

/// By a byte that most lines without the text don't hold either.
size_t FindByByte(std::string_view sLine, std::string_view sText, size_t nRare) {
  for (size_t nAt = nRare; nAt < sLine.size(); ++nAt) {
    nAt = sLine.find(sText[nRare], nAt);
    if (nAt == std::string_view::npos) break;
    if (sLine.substr(nAt - nRare).starts_with(sText)) return nAt - nRare;
  }
  return std::string_view::npos;
}

}  // namespace

clsTidyPartReader::clsTidyPartReader(const TidyPart& part, bool bLeads)
    : part_(part), bLeads_(bLeads), matcher_(part), cutter_(part) {
  for (const std::string& sText : part.texts) rareBytes_.push_back(RareByteOf(sText));
}

std::string_view WithoutLeader(std::string_view sValue) {
  for (;;) {
    sValue = TrimRightBlanks(sValue);
    if (sValue.ends_with(':')) {
      sValue.remove_suffix(1);
    } else if (sValue.ends_with("..")) {
      while (sValue.ends_with('.')) sValue.remove_suffix(1);
    } else {
      return sValue;
    }
  }
}

bool clsTidyPartReader::FindText(std::string_view sLine, size_t& nBehind) const {
  for (size_t i = 0; i < part_.texts.size(); ++i) {
    const std::string& sText = part_.texts[i];
    const size_t nPos = FindByByte(sLine, sText, rareBytes_[i]);
    if (nPos == std::string_view::npos) continue;
    nBehind = nPos + sText.size();
    return true;
  }
  return false;
}

/// Up to the text that ends it, or to two blanks.
std::string_view clsTidyPartReader::ValueBehind(std::string_view sRest) const {
  sRest = TrimLeftBlanks(sRest);
  size_t nEnd = part_.sBefore.empty() ? std::string_view::npos : sRest.find(part_.sBefore);
  if (nEnd == std::string_view::npos) nEnd = sRest.find("  ");
  return sRest.substr(0, nEnd);
}

void clsTidyPartReader::Cut(const clsTidyLine& line) {
  const bool bPlaced = !part_.cut.places.empty() || cutter_.IsSplit();
  size_t nBehind = 0;
  cells_.resize(bPlaced ? cutter_.Groups() : 1);
  if (!bPlaced && FindText(line.Text(), nBehind)) {
    cells_[0].assign(cutter_.Columns(), {});
    cells_[0][0] = ValueBehind(line.Text().substr(nBehind));
  } else {
    for (size_t nGroup = 0; nGroup < cells_.size(); ++nGroup) cutter_.Cut(line, nGroup, cells_[nGroup]);
    if (!part_.sBefore.empty()) {
      for (std::string_view& sCell : cells_[0]) sCell = sCell.substr(0, sCell.find(part_.sBefore));
    }
  }
  if (!bLeads_) return;
  for (auto& cells : cells_) {
    for (std::string_view& sCell : cells) sCell = WithoutLeader(sCell);
  }
}

bool clsTidyPartReader::Reads(const clsTidyLine& line) {
  size_t nBehind = 0;
  if (!part_.texts.empty() && !FindText(line.Text(), nBehind)) return false;
  if (!matcher_.FitsPicture(line)) return false;
  Cut(line);
  return matcher_.FitsNeeds(cells_[0]);
}

bool clsTidyPartReader::HasValue() const {
  return std::any_of(cells_[0].begin(), cells_[0].end(), [](std::string_view sCell) { return !sCell.empty(); });
}

}  // namespace quillon
