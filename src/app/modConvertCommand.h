#pragma once

#include "modLongOptions.h"

namespace quillon {

/// `quillon convert`: fills the job record from the options, plans the files and runs them. Returns the exit status.
int ConvertCommand(const ConvertRequest& request, const TalkRequest& talk);

/// A profile that the user's folder lacks may be one that is shipped: its path then, else the name as it is.
std::string ProfileFor(const std::string& sName);

}  // namespace quillon
