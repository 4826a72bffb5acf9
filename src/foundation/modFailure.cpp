#include "modFailure.h"

#include <system_error>

#include "modText.h"

namespace quillon {

Failure SystemFailure(std::string_view sPath, int nError) {
  return {nError == 0 ? -1 : nError, WithoutControls(sPath) + ": " + std::generic_category().message(nError)};
}

Failure OwnFailure(std::string_view sPath, std::string_view sText) {
  return {-1, WithoutControls(sPath) + ": " + std::string(sText)};
}

}  // namespace quillon
