#include "modFailure.h"

#include <system_error>

namespace quillon {

Failure SystemFailure(std::string_view sPath, int nError) {
  return {nError == 0 ? -1 : nError, std::string(sPath) + ": " + std::generic_category().message(nError)};
}

Failure OwnFailure(std::string_view sPath, std::string_view sText) {
  return {-1, std::string(sPath) + ": " + std::string(sText)};
}

}  // namespace quillon
