#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace quillon {

/// A fresh folder that goes with the object, with all that is in it.
class clsTempFolder {
 public:
  clsTempFolder() {
    std::string sTemplate = (std::filesystem::temp_directory_path() / "quillon-test-XXXXXX").string();
    if (mkdtemp(sTemplate.data()) != nullptr) path_ = sTemplate;
  }
  clsTempFolder(const clsTempFolder&) = delete;
  clsTempFolder& operator=(const clsTempFolder&) = delete;
  ~clsTempFolder() {
    std::error_code ignored;
    if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
  }

  std::string Path(std::string_view sName = {}) const {
    return (sName.empty() ? path_ : path_ / std::string(sName)).string();
  }
  std::string Write(std::string_view sName, std::string_view sBytes) const {
    const std::filesystem::path file = path_ / std::string(sName);
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary).write(sBytes.data(), static_cast<std::streamsize>(sBytes.size()));
    return file.string();
  }
  std::string Read(std::string_view sName) const {
    std::ifstream in(path_ / std::string(sName), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  bool Has(std::string_view sName) const { return std::filesystem::exists(path_ / std::string(sName)); }

 private:
  std::filesystem::path path_;
};

}  // namespace quillon
