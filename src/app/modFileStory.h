#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsHost.h"
#include "modFileOutcome.h"

namespace quillon {

/// What a conversion said to its host: an entry for the log, or a message.
struct HostEvent {
  bool bMessage = false;
  ReportEntry entry;  ///< sErr1 and sErr2 are title and text of a message
  MessageIcon icon = MessageIcon::None;
  MessageButtons buttons = MessageButtons::Ok;
};

/// One file of a batch, as the process that converted it tells it to the one that keeps log, list and closing line.
struct FileStory {
  uint64_t nFile = 0;  ///< In the list, from 0
  std::vector<HostEvent> events;
  FileOutcome outcome;             ///< Its reasons are those that no entry tells
  std::vector<std::string> notes;  ///< Of the report, for people
  std::string sListLine;           ///< For the result list, "" without one
};

std::string PackedStory(FileStory& story);
/// False if the bytes are no whole story, which is a new one then.
bool TakeStory(std::string_view sBytes, FileStory& story);

}  // namespace quillon
