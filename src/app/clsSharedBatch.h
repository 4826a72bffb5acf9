#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "clsLongRun.h"
#include "clsResultRecorder.h"
#include "clsWorkers.h"
#include "modLongOptions.h"

namespace quillon {

/// Converts a batch in several processes and says of it, file by file in the order of the list, what one process would
/// have said: one log, one result list, one closing line.
class clsSharedBatch : public clsOtherConverters {
 public:
  /// All outlive the object.
  clsSharedBatch(const ConvertRequest& request, clsLongRun& run, clsResultRecorder& recorder, const RunExtras& extras)
      : request_(request), run_(run), recorder_(recorder), extras_(extras) {}

  /// How many processes share these files; below 2 none is started. False as well if none can be had.
  bool Start(const std::vector<PlannedFile>& files);

  bool Wait(size_t nFile) override;
  void Tell(FileOutcome& outcome) override;

 private:
  size_t WantedWorkers(const std::vector<PlannedFile>& files) const;
  void Replay(const HostEvent& event);

  const ConvertRequest& request_;
  clsLongRun& run_;
  clsResultRecorder& recorder_;
  const RunExtras& extras_;
  const std::vector<PlannedFile>* pFiles_ = nullptr;
  std::optional<clsWorkers> workers_;
  FileStory story_;
};

}  // namespace quillon
