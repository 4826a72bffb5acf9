#pragma once

#include "modLongOptions.h"

namespace quillon {

/// `quillon convert`: fills the job record from the options, plans the files and runs them. Returns the exit status.
int ConvertCommand(const ConvertRequest& request, const TalkRequest& talk);

}  // namespace quillon
