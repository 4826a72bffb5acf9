#pragma once

#include "modLongOptions.h"

namespace quillon {

/// What `quillon watch` was asked for.
struct WatchRequest {
  std::string sFolder;
  std::string sJobFile;
  std::string sList;   ///< Result list; "" is "results.jsonl" in the folder's "done"
  double dSettle = 2;  ///< Seconds without a change after which a file is taken
};

/// `quillon watch`: converts what is dropped into a folder by a job's method and options until it is told to end, which
/// it does behind the file in hand. A result line stands in the list before a file leaves ".taken", so a process that
/// takes up where a killed one ended converts nothing a second time that was finished.
int WatchCommand(const WatchRequest& request, const TalkRequest& talk);

}  // namespace quillon
