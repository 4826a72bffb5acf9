#include "clsKnownPaths.h"

#include <algorithm>
#include <array>

namespace quillon {

namespace {

struct Known {
  int nAlive = 0;
  std::array<std::string, 6> paths;  ///< Input, recipe, specification, output, and two more
  size_t nNext = 0;
};

Known& TheKnown() {
  static Known known;
  return known;
}

}  // namespace

clsKnownPaths::clsKnownPaths() {
  ++TheKnown().nAlive;
}

clsKnownPaths::~clsKnownPaths() {
  Known& known = TheKnown();
  if (--known.nAlive > 0) return;
  for (std::string& sPath : known.paths) sPath.clear();
}

bool clsKnownPaths::Knows(std::string_view sHostPath) {
  const Known& known = TheKnown();
  return known.nAlive > 0 && std::find(known.paths.begin(), known.paths.end(), sHostPath) != known.paths.end();
}

void clsKnownPaths::Note(const std::string& sHostPath) {
  Known& known = TheKnown();
  if (known.nAlive == 0) return;
  known.paths[known.nNext] = sHostPath;
  known.nNext = (known.nNext + 1) % known.paths.size();
}

}  // namespace quillon
