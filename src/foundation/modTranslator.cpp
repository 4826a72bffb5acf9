#include "modTranslator.h"

namespace quillon {

std::string Translate(std::string_view sKey) {
  return std::string(sKey);
}

}  // namespace quillon
