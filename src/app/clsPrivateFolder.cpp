#include "clsPrivateFolder.h"

#include <cstdlib>
#include <filesystem>

namespace quillon {

clsPrivateFolder::~clsPrivateFolder() {
  std::error_code ignored;
  if (!sFolder_.empty()) std::filesystem::remove_all(sFolder_, ignored);
}

std::string clsPrivateFolder::PathOf(std::string_view sName) {
  if (sFolder_.empty()) {
    std::error_code error;
    std::string folder = (std::filesystem::temp_directory_path(error) / "quillon-XXXXXX").string();
    if (error || mkdtemp(folder.data()) == nullptr) return {};
    sFolder_ = folder;
  }
  return sFolder_ + "/" + std::string(sName);
}

}  // namespace quillon
