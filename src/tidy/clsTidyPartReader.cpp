#include "clsTidyPartReader.h"

#include <algorithm>

namespace quillon {

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
  for (const std::string& sText : part_.texts) {
    const size_t nPos = sLine.find(sText);
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
