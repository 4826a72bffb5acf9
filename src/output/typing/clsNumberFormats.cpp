#include "clsNumberFormats.h"

#include <algorithm>

namespace quillon {

int clsNumberFormats::Find(std::string_view sCode) {
  const auto it = std::find(codes_.begin(), codes_.end(), sCode);
  if (it != codes_.end()) return static_cast<int>(it - codes_.begin());
  if (codes_.size() > kMaxFormats) return -1;
  codes_.emplace_back(sCode);
  return static_cast<int>(codes_.size()) - 1;
}

}  // namespace quillon
