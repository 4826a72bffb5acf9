#include "modSettledCell.h"

namespace quillon {

std::string StoredForm(const SettledCell& cell) {
  std::string sStored{kSettledMark, static_cast<char>(cell.kind)};
  sStored.append(cell.sDigits).push_back(kSettledMark);
  sStored.append(cell.sFormat).push_back(kSettledMark);
  return sStored.append(cell.sShown);
}

SettledCell SettledOf(std::string_view sStored) {
  SettledCell cell{SettledCell::Kind::Text, sStored, {}, {}};
  const size_t nFormat = sStored.find(kSettledMark, 2);
  const size_t nShown = nFormat == std::string_view::npos ? nFormat : sStored.find(kSettledMark, nFormat + 1);
  if (nShown == std::string_view::npos) return cell;
  cell.kind = static_cast<SettledCell::Kind>(sStored[1]);
  cell.sDigits = sStored.substr(2, nFormat - 2);
  cell.sFormat = sStored.substr(nFormat + 1, nShown - nFormat - 1);
  cell.sShown = sStored.substr(nShown + 1);
  return cell;
}

}  // namespace quillon
