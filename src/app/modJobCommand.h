#pragma once

#include "modLongOptions.h"

namespace quillon {

/// `quillon job`: the run of a job file as /J makes it, with messages, accounting and an exit status.
int JobCommand(const JobRequest& request, const TalkRequest& talk);

}  // namespace quillon
