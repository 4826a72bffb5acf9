#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// A folder for this process alone, made at the first use and removed with all that is in it; what killed runs left of
/// theirs goes when the next is made.
class clsPrivateFolder {
 public:
  static constexpr std::string_view kNoPlace =
      "no folder for temporary files can be made; set TMPDIR to one that can be written";

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
  int nLock_ = -1;  ///< Held while the folder is in use
};

}  // namespace quillon
