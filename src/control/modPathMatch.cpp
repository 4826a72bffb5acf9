#include "modPathMatch.h"

#include "modText.h"

namespace quillon {

namespace {

std::u32string Folded(std::string_view sText) {
  std::u32string folded;
  folded.reserve(sText.size());
  for (size_t pos = 0; pos < sText.size();) folded.push_back(NextFolded(sText, pos));
  return folded;
}

std::u32string FoldedMask(std::string_view sMask) {
  std::u32string mask;
  for (const char32_t ch : Folded(sMask)) {
    if (ch != U'*' || mask.empty() || mask.back() != U'*') mask.push_back(ch);
  }
  return mask;
}

// Only the last "*" is ever tried again: what an earlier one took can't make a later part match that doesn't already.
bool MatchesMask(const std::u32string& name, const std::u32string& mask) {
  constexpr size_t kNone = std::u32string::npos;
  size_t in_name = 0, in_mask = 0, star = kNone, taken = 0;
  while (in_name < name.size()) {
    if (in_mask < mask.size() && mask[in_mask] == U'*') {
      star = in_mask++;
      taken = in_name;
    } else if (in_mask < mask.size() && (mask[in_mask] == U'?' || mask[in_mask] == name[in_name])) {
      ++in_name;
      ++in_mask;
    } else if (star != kNone) {
      in_mask = star + 1;
      in_name = ++taken;
    } else {
      return false;
    }
  }
  while (in_mask < mask.size() && mask[in_mask] == U'*') ++in_mask;
  return in_mask == mask.size();
}

}  // namespace

clsPathMatch::clsPathMatch(std::string_view sMasks) {
  for (size_t start = 0; start <= sMasks.size();) {
    const size_t end = std::min(sMasks.find(';', start), sMasks.size());
    const std::string_view mask = TrimLeftBlanks(sMasks.substr(start, end - start));
    if (mask == "*" || mask == "*.*") bAll_ = true;
    masks_.push_back(FoldedMask(mask));
    start = end + 1;
  }
}

bool clsPathMatch::Matches(std::string_view sName) const {
  if (bAll_) return true;
  const std::u32string name = Folded(sName);
  for (const std::u32string& mask : masks_) {
    if (MatchesMask(name, mask)) return true;
  }
  return false;
}

}  // namespace quillon
