#pragma once

#include "modLongOptions.h"

namespace quillon {

class clsLongRun;

/// Says what keeps a file that is there from being a job: it would be run as one that names no input.
bool IsJob(const std::string& sJobFile, clsLongRun& run);

/// `quillon job`: the run of a job file as /J makes it, with messages, accounting and an exit status.
int JobCommand(const JobRequest& request, const TalkRequest& talk);

}  // namespace quillon
