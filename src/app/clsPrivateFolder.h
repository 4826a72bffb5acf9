#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// A folder for this process alone, made at the first use and removed with all that is in it.
class clsPrivateFolder {
 public:
  clsPrivateFolder() = default;
  clsPrivateFolder(const clsPrivateFolder&) = delete;
  clsPrivateFolder& operator=(const clsPrivateFolder&) = delete;
  ~clsPrivateFolder();

  /// Host path of a name in the folder; "" if the folder can't be made.
  std::string PathOf(std::string_view sName);
  /// Names of the files that stand in for the standard streams; "" before the folder is made.
  std::string InputFile() const { return sFolder_.empty() ? "" : sFolder_ + "/standard-input"; }
  std::string OutputFile() const { return sFolder_.empty() ? "" : sFolder_ + "/standard-output.csv"; }

 private:
  std::string sFolder_;
};

}  // namespace quillon
