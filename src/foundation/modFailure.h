#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace quillon {

/// Reason of a failed operation on files: the system's error number and a text that names the path.
struct Failure {
  int nError = 0;     ///< errno, or -1 where the system gave none
  std::string sText;  ///< "/out/a.csv: No space left on device"

  bool Failed() const { return nError != 0; }
};

/// A failure from an error number, with the system's own words for it.
Failure SystemFailure(std::string_view sPath, int nError);
/// A failure of our own making: "path: text".
Failure OwnFailure(std::string_view sPath, std::string_view sText);

/// A failure that no rule of a run handles: it ends the process with one line on standard error (what() is that line)
/// and exit status 1, and the log tells it. Thrown where a job or recipe holds what the program can't go on with;
/// caught where a run, or a file of a long-option run, ends, and in the desktop program's outermost handler.
class UnhandledFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace quillon
