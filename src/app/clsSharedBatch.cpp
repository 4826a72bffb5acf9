#include "clsSharedBatch.h"

#include <sched.h>

#include <algorithm>
#include <utility>

#include "clsWorkerHost.h"
#include "modLinkThreads.h"
#include "modReportText.h"
#include "modRunMessages.h"
#include "modSettings.h"

namespace quillon {

namespace {

/// Processors that this process may use.
size_t Cores() {
  cpu_set_t set;
  CPU_ZERO(&set);
  return sched_getaffinity(0, sizeof(set), &set) == 0 ? static_cast<size_t>(CPU_COUNT(&set)) : 1;
}

/// What a worker converts with: a run of its own on the record of the process that it is a copy of.
class clsConverter {
 public:
  clsConverter(const std::vector<PlannedFile>& files, const clsRunFields& fields, clsResultRecorder& recorder,
               const RunExtras& extras)
      : files_(files),
        recorder_(recorder),
        sSharedFolder_(gsAppDataFolder),
        bNoTabWarning_(recorder.NoTabWarning(fields.bWarnedAboutTabsInFile)),
        fields_(fields),
        log_(host_, gConversionOptions),
        run_(host_, gConversionOptions, log_, fields_, nullptr, ExtrasOf(extras)) {
    host_.AttachLog(log_);
    log_.LogClear(false);
    PackOnSecondThread(false);  // The other processors have files of their own.
  }

  /// False if it was interrupted.
  bool Convert(size_t nFile, FileStory& story) {
    pStory_ = &story;
    // A story tells the same of a file whatever this process converted before it.
    log_.LogClear(false);
    fields_.bWarnedAboutTabsInFile = bNoTabWarning_;
    // Working files are this process's own, but for those of the last file, which stay for the user.
    const std::string sOwn = folder_.PathOf("");
    gsAppDataFolder = sOwn.empty() || nFile + 1 == files_.size() ? sSharedFolder_ : sOwn;
    recorder_.Take(files_[nFile]);
    run_.ConvertPlanned(files_[nFile]);
    story.events = host_.TakeEvents();
    return story.outcome.status != FileStatus::Stopped;
  }

 private:
  RunExtras ExtrasOf(RunExtras extras) {
    extras.fileBegins = nullptr;
    extras.fileDone = [this](const FileOutcome& outcome) { Keep(outcome); };
    return extras;
  }

  void Keep(const FileOutcome& outcome) {
    pStory_->outcome = outcome;
    pStory_->notes = ReportNotes(outcome.sInput);
    if (outcome.status != FileStatus::Stopped) pStory_->sListLine = recorder_.LineText(outcome);
    // Those of entries come again where the entries are reported.
    std::erase_if(pStory_->outcome.reasons,
                  [](const FileReason& reason) { return reason.bLogged || reason.lCode != 0; });
  }

  const std::vector<PlannedFile>& files_;
  clsResultRecorder& recorder_;
  const std::string sSharedFolder_;
  const bool bNoTabWarning_;
  clsPrivateFolder folder_;
  clsRunFields fields_;
  clsWorkerHost host_;
  clsRunLog log_;
  clsConversionRun run_;
  FileStory* pStory_ = nullptr;
};

}  // namespace

size_t clsSharedBatch::WantedWorkers(const std::vector<PlannedFile>& files) const {
  constexpr size_t kFewFiles = 8;
  // Smaller files cost more in the file system, which processes wait for one after the other, than in converting.
  constexpr int64_t kWorthSharing = int64_t{64} << 10;
  const auto nJobs = static_cast<size_t>(request_.options.lJobs);
  if (nJobs > 0) return std::min(nJobs, files.size());
  // A shard is one of several processes already.
  if (files.size() < kFewFiles || request_.shard) return 1;
  int64_t lBytes = 0;
  for (const PlannedFile& file : files) lBytes += std::max<int64_t>(file.lBytes, 0);
  return lBytes / static_cast<int64_t>(files.size()) < kWorthSharing ? 1 : Cores();
}

bool clsSharedBatch::Start(const std::vector<PlannedFile>& files) {
  const size_t nWorkers = WantedWorkers(files);
  if (nWorkers < 2) return false;
  pFiles_ = &files;
  clsWorkers::Calls calls;
  calls.makeConverter = [this] {
    const auto pConverter = std::make_shared<clsConverter>(*pFiles_, run_.fields, recorder_, extras_);
    return [pConverter](size_t nFile, FileStory& story) { return pConverter->Convert(nFile, story); };
  };
  calls.begins = [this](const clsWorkers::Part& part) { recorder_.Begins(part.nFrom, part.nEnd); };
  calls.waits = [this] { run_.host.ShowProgress({}); };
  workers_.emplace(files, std::move(calls));
  if (!workers_->Start(nWorkers)) return false;
  recorder_.SharesBatch();
  run_.reportNotes = [this](const std::string&) { return story_.notes; };
  return true;
}

bool clsSharedBatch::Wait(size_t nFile) {
  story_ = {};
  const clsWorkers::Got got = workers_->Wait(nFile, story_);
  if (got == clsWorkers::Got::Died) {
    const PlannedFile& file = (*pFiles_)[nFile];
    story_.outcome.sInput = file.sInput;
    story_.outcome.sOutput = file.sOutput;
    HostEvent event;
    event.entry =
        RunEntry(kRunEnded, "signal " + std::to_string(workers_->DeathSignal()) + " to the process that converted it");
    story_.events.push_back(std::move(event));
  }
  return got != clsWorkers::Got::Nothing;
}

void clsSharedBatch::Replay(const HostEvent& event) {
  const ReportEntry& entry = event.entry;
  if (event.bMessage) {
    run_.host.ShowMessage(entry.sErr2, entry.sErr1, event.icon, event.buttons);
  } else if (entry.lErr != kTabsInFile || !std::exchange(run_.fields.bWarnedAboutTabsInFile, true)) {
    run_.host.Report(entry);
  }
}

void clsSharedBatch::Tell(FileOutcome& outcome) {
  FileOutcome told = std::move(story_.outcome);
  std::vector<FileReason> reasons = std::exchange(told.reasons, {});
  outcome = std::move(told);
  for (const HostEvent& event : story_.events) Replay(event);
  outcome.reasons.insert(outcome.reasons.end(), reasons.begin(), reasons.end());
  recorder_.SetLine(std::move(story_.sListLine));
}

}  // namespace quillon
