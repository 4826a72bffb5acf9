#include "modWatchCommand.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

#include "clsDropFolder.h"
#include "clsLongRun.h"
#include "clsResultRecorder.h"
#include "modExcelLink.h"
#include "modFiles.h"
#include "modFrontDoor.h"
#include "modJobCommand.h"
#include "modPacked.h"
#include "modPaths.h"
#include "modRunMessages.h"
#include "modSystemIo.h"

namespace quillon {

namespace {

/// SIGTERM and SIGINT wait while a file is converted and are read between files.
class clsEndSignals {
 public:
  clsEndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    sigprocmask(SIG_BLOCK, &signals, &before_);
    nHandle_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
  }
  clsEndSignals(const clsEndSignals&) = delete;
  clsEndSignals& operator=(const clsEndSignals&) = delete;
  ~clsEndSignals() {
    if (nHandle_ >= 0) CloseHandle(nHandle_);
    sigprocmask(SIG_SETMASK, &before_, nullptr);
  }

  bool CameIn() {
    signalfd_siginfo info{};
    bEnd_ = bEnd_ || read(nHandle_, &info, sizeof info) > 0;
    return bEnd_;
  }
  /// Until a signal, an event of the other handle, or the time has passed.
  void Wait(int nEvents, int nMilliseconds) const {
    std::array<pollfd, 2> handles{pollfd{nHandle_, POLLIN, 0}, pollfd{nEvents, POLLIN, 0}};
    poll(handles.data(), nEvents >= 0 ? 2 : 1, nMilliseconds);
  }

 private:
  sigset_t before_{};
  int nHandle_ = -1;
  bool bEnd_ = false;
};

ConvertRequest RequestOf(const clsConversionOptions& options, const std::string& sList) {
  ConvertRequest request;
  request.options = options;
  const bool bProfile = options.lConversionMethod == kMethodProfile;
  if (bProfile) request.sProfile = options.sFixedWidthProfile;
  if (options.lConversionMethod == kMethodRecipe) request.sRecipe = options.sRecipeFile;
  request.sReport = sList;
  request.bSkipDone = true;
  return request;
}

/// The files of one watched folder, one after another.
class clsWatch {
 public:
  clsWatch(clsLongRun& run, clsDropFolder& folder, const std::string& sList)
      : run_(run),
        folder_(folder),
        request_(RequestOf(gConversionOptions, sList)),
        recorder_(request_, run),
        extras_(recorder_.Joined(ExtrasOf(run))),
        conversion_(run.host, gConversionOptions, run.log, run.fields, nullptr, extras_) {
    const std::string sFolder = ParentFolderOfPath(gConversionOptions.sOutputFile);
    sOutputFolder_ = sFolder.empty() ? folder_.DoneFolder() : WithSeparator(ExpandedPath(sFolder));
    sEnding_ = "." + ExtensionOfPath(gConversionOptions.sOutputFile);
  }

  bool Start() { return recorder_.Start({}); }

  void Convert(const std::string& sName) {
    const std::string sInput = folder_.TakenPath(sName);
    const std::string sOutput = sOutputFolder_ + BaseNameOfReport(sName) + sEnding_;
    files_.assign(1, {sInput, sOutput, FileSizeOf(sInput)});
    recorder_.DropDone(files_);
    bool bDone = files_.empty();  // A process before this one finished it.
    if (!bDone) {
      MakeFolderPath(sOutputFolder_);
      gConversionOptions.sInputFile = sInput;
      gConversionOptions.sOutputFile = sOutput;
      run_.log.LogClear(false);
      extras_.fileBegins(1, 1, sInput);
      bDone = conversion_.ConvertFile().status == FileStatus::Converted;
    }
    if (folder_.PutAway(sName, bDone)) return;
    run_.Say(SystemFailure(sInput, errno).sText);
    run_.FailBeside();
  }

 private:
  static RunExtras ExtrasOf(clsLongRun& run) {
    RunExtras extras = run.Extras();
    extras.bTouchSettings = false;
    return extras;
  }

  clsLongRun& run_;
  clsDropFolder& folder_;
  ConvertRequest request_;
  clsResultRecorder recorder_;
  RunExtras extras_;
  clsConversionRun conversion_;
  std::vector<PlannedFile> files_;
  std::string sOutputFolder_, sEnding_;
};

void Watch(clsWatch& watch, clsDropFolder& folder, clsEndSignals& signals) {
  constexpr int kTickMilliseconds = 500;
  constexpr int kIdleMilliseconds = 5000;
  for (const std::string& sName : folder.Taken()) {
    if (!signals.CameIn()) watch.Convert(sName);
  }
  while (!signals.CameIn()) {
    for (const std::string& sName : folder.Ready()) {
      if (signals.CameIn()) return;
      const std::string sTaken = folder.Take(sName);
      if (!sTaken.empty()) watch.Convert(sTaken);
    }
    const bool bQuick = folder.IsPending() || folder.EventHandle() < 0;
    signals.Wait(folder.EventHandle(), bQuick ? kTickMilliseconds : kIdleMilliseconds);
  }
}

int Refuse(clsLongRun& run, const std::string& sWhy) {
  run.Say(sWhy);
  return run.Refused();
}

int RunWatch(const WatchRequest& request, clsLongRun& run) {
  clsEndSignals signals;
  if (!IsFile(ExpandedPath(request.sJobFile))) {
    run.host.Report(RunEntry(kNoJobFile, ExpandedPath(request.sJobFile)));
    return run.Refused();
  }
  if (!run.CheckLog() || !IsJob(ExpandedPath(request.sJobFile), run)) return run.Refused();
  gConversionOptions.OpenConversionJob(ExpandedPath(request.sJobFile));
  gConversionOptions.bVerbose = false;
  ExpandFolderTokens(gConversionOptions.sRecipeFile);
  if (OutputFormatOfPath(gConversionOptions.sOutputFile) == 0) {
    return Refuse(run, request.sJobFile + ": sOutputFile names no .csv, .xlsx or .xls file");
  }
  const std::string sFolder = HostPath(ExpandedPath(request.sFolder));
  const std::string sOutputs = ParentFolderOfPath(gConversionOptions.sOutputFile);
  if (!FolderExists(sFolder)) return Refuse(run, request.sFolder + ": no such folder");
  if (!sOutputs.empty() && IsSameFile(ExpandedPath(sOutputs), sFolder)) {
    return Refuse(run, request.sFolder + ": the job writes its outputs into the folder that is watched");
  }
  clsDropFolder folder;
  Failure failure;
  constexpr double kMilliseconds = 1000;
  const std::chrono::milliseconds settle(static_cast<int64_t>(request.dSettle * kMilliseconds));
  if (!folder.Open(sFolder, settle, failure)) return Refuse(run, failure.sText);
  clsWatch watch(run, folder,
                 request.sList.empty() ? folder.DoneFolder() + "results.jsonl" : AbsolutePath(request.sList));
  if (!watch.Start()) return run.Refused();
  Watch(watch, folder, signals);
  // To be told to end is how a watch ends.
  const int nStatus = run.Finish();
  return nStatus == kExitSomeFailed ? kExitDone : nStatus;
}

}  // namespace

int WatchCommand(const WatchRequest& request, const TalkRequest& talk) {
  clsLongRun run(talk);
  return run.Guarded([&] { return RunWatch(request, run); });
}

}  // namespace quillon
