#pragma once

#include <string>

#include "modFailure.h"

namespace quillon {

/// Copies standard input to a new file, which a conversion can read more than once. False with the reason.
bool StandardInputToFile(const std::string& sFile, Failure& failure);
/// Copies a file to standard output. False with the reason.
bool FileToStandardOutput(const std::string& sFile, Failure& failure);

}  // namespace quillon
