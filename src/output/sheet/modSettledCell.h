#pragma once
// Cells whose kind the caller has settled, in the form in which workbooks keep texts until they are typed: behind a
// byte that no UTF-8 text holds.

#include <string>
#include <string_view>

#include "clsWorkbook.h"

namespace quillon {

constexpr char kSettledMark = '\xFF';

inline bool IsSettled(std::string_view sStored) {
  return !sStored.empty() && sStored.front() == kSettledMark;
}
std::string StoredForm(const SettledCell& cell);
/// Of a stored text that is settled; one that is malformed is its own text.
SettledCell SettledOf(std::string_view sStored);
/// What the cell shows, settled or not.
inline std::string_view ShownOf(std::string_view sStored) {
  return IsSettled(sStored) ? SettledOf(sStored).sShown : sStored;
}

}  // namespace quillon
