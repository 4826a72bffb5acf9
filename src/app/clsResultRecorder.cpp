#include "clsResultRecorder.h"

#include <algorithm>
#include <utility>

#include "clsFingerprint.h"
#include "clsOutputFile.h"
#include "modConvertCommand.h"
#include "modFiles.h"
#include "modOptionTable.h"
#include "modProfileFile.h"
#include "modStrings.h"
#include "modText.h"
#include "modVersion.h"

namespace quillon {

std::string MakingOf(const ConvertRequest& request) {
  constexpr size_t kLargest = size_t{64} << 20;
  clsFingerprint making;
  making.Add(VersionText);
  for (const std::string& sFile :
       {request.sRecipe, request.sSpecification,
        request.sProfile.empty() ? std::string() : FindProfile(ProfileFor(request.sProfile))}) {
    std::string sBytes;
    Failure ignored;  // What can't be read fails the run itself.
    if (!sFile.empty()) ReadWholeFile(sFile, sBytes, kLargest, ignored);
    making.Add(sFile.empty() ? 0 : 1).Add(sBytes);
  }
  for (const Option& option : OptionTable()) {
    if (option.bShapesOutput) making.Add(UpperText(OptionValueText(option, request.options)));
  }
  return making.Text();
}

void clsResultRecorder::RemoveLeftover(const std::vector<PlannedFile>& files) {
  note_.Open(request_.sReport);
  if (!list_.IsLeftAlone()) return;
  for (const PlannedFile* const pFile : note_.LeftBehind(files)) {
    if (!list_.TellsOf(pFile->sOutput)) DeleteFileForced(pFile->sOutput);
  }
}

bool clsResultRecorder::Start(const std::vector<PlannedFile>& files) {
  if (request_.sReport.empty()) return true;
  Failure failure;
  if (!list_.Open(request_.sReport, failure) || (request_.bSkipDone && !list_.Read(failure))) {
    run_.Say(failure.sText + "; the result list can't be kept there, so nothing was converted");
    return false;
  }
  RemoveLeftover(files);
  list_.Share();
  bOpen_ = true;
  sMadeBy_ = MakingOf(request_);
  const auto& given = request_.given;  // Who names a tab stop needs no hint at tabs.
  bNoTabWarning_ = std::find(given.begin(), given.end(), "tab-size") != given.end();
  return true;
}

void clsResultRecorder::DropDone(std::vector<PlannedFile>& files) {
  pFiles_ = &files;
  if (!bOpen_ || !request_.bSkipDone) return;
  std::erase_if(files, [this](const PlannedFile& file) {
    const bool bDone = list_.IsDone(file, sMadeBy_);
    if (bDone) run_.Skip(file);
    return bDone;
  });
}

RunExtras clsResultRecorder::Joined(RunExtras extras) {
  extras.fileBegins = [this, before = std::move(extras.fileBegins)](size_t nFile, size_t nFiles,
                                                                    const std::string& sInput) {
    before(nFile, nFiles, sInput);
    if (bOpen_) FileBegins((*pFiles_)[nFile - 1]);
  };
  extras.fileDone = [this, before = std::move(extras.fileDone)](const FileOutcome& outcome) {
    before(outcome);
    if (bOpen_ && outcome.status != FileStatus::Stopped) FileDone(outcome);
  };
  return extras;
}

// A line has to tell the same of a file in whatever run it is converted, so what is said once a run is said of each.
void clsResultRecorder::FileBegins(const PlannedFile& file) {
  run_.log.ForgetWhatIsSaidOnce();
  run_.fields.bWarnedAboutTabsInFile = bNoTabWarning_;
  if (bShared_) return;
  Take(file);
  note_.Begin({file.sOutput});
}

void clsResultRecorder::Take(const PlannedFile& file) {
  if (!bOpen_) return;
  state_ = StateOfFile(file.sInput);
  lBegan_ = run_.host.TickMilliseconds();
}

void clsResultRecorder::Begins(size_t nFrom, size_t nEnd) {
  if (!bOpen_) return;
  std::vector<std::string> outputs;
  for (size_t i = nFrom; i < nEnd; ++i) outputs.push_back((*pFiles_)[i].sOutput);
  note_.Begin(outputs);
}

ResultLine clsResultRecorder::LineOf(const FileOutcome& outcome) {
  constexpr double kMillisecond = 0.001;
  ResultLine line;
  line.sInput = run_.Shown(outcome.sInput);
  line.sOutput = run_.Shown(outcome.sOutput);
  line.bDone = outcome.status == FileStatus::Converted;
  const FileAccount& account = outcome.account;
  line.proof = account.proof;
  for (const TableAccount& table : account.tables) {
    line.lRows += table.lRows;
    line.proof.loss.Add(table.loss);
  }
  line.lLinesRead = account.lLinesRead;
  line.lLinesInTables = account.lLinesInTables;
  line.bLinesByKind =
      std::any_of(account.proof.lines.begin(), account.proof.lines.end(), [](int64_t n) { return n > 0; });
  line.lCharactersLost = account.lCharactersLost;
  line.lCellsFailed = account.lCellsFailed;
  for (const FileReason& reason : outcome.reasons) {
    auto& texts = reason.type == EntryType::Error ? line.errors : line.warnings;
    texts.push_back({reason.lCode, run_.Said(reason)});
  }
  line.dSeconds = static_cast<double>(run_.host.TickMilliseconds() - lBegan_) * kMillisecond;
  line.state = state_;
  if (outcome.account.bOutputWritten) line.lOutputBytes = FileSizeOf(outcome.sOutput);
  line.sMadeBy = sMadeBy_;
  return line;
}

void clsResultRecorder::FileDone(const FileOutcome& outcome) {
  Failure failure;
  const std::string sLine = sLine_.empty() ? LineText(outcome) : std::exchange(sLine_, {});
  const bool bWritten = list_.Write(sLine, failure);
  note_.End(outcome.sOutput);
  if (bWritten) return;
  if (std::exchange(bFailed_, true)) return;
  run_.Say(failure.sText + "; the result list has gaps");
  run_.FailBeside();
}

}  // namespace quillon
