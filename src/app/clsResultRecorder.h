#pragma once

#include <string>
#include <utility>
#include <vector>

#include "clsInHandNote.h"
#include "clsLongRun.h"
#include "clsResultList.h"
#include "modLongOptions.h"

namespace quillon {

/// Keeps the result list of one run: what was said of a file goes into its line, which is written as the file ends. An
/// interrupted file gets none.
class clsResultRecorder {
 public:
  clsResultRecorder(const ConvertRequest& request, clsLongRun& run) : request_(request), run_(run) {}
  clsResultRecorder(const clsResultRecorder&) = delete;
  clsResultRecorder& operator=(const clsResultRecorder&) = delete;

  /// Opens the list and, with --skip-done, reads it. An output that a killed run of the same list finished without
  /// telling of it is removed. False: said.
  bool Start(const std::vector<PlannedFile>& files);
  /// Takes the files out that the list shows as done. What stays is converted; it outlives this object's use.
  void DropDone(std::vector<PlannedFile>& files);
  /// The extras with the recorder's own share; they are called while this object lives.
  RunExtras Joined(RunExtras extras);

  /// Other processes convert the files: their lines come by SetLine, and those that they get now by Begins.
  void SharesBatch() { bShared_ = true; }
  /// Files that are in hand from now on, the end behind the last.
  void Begins(size_t nFrom, size_t nEnd);
  /// The line of the file that is told next; "" where it is to be made here.
  void SetLine(std::string sLine) { sLine_ = std::move(sLine); }
  /// In such a process: a file is about to be converted, and its line when it is.
  void Take(const PlannedFile& file);
  /// Whether no file gets the hint at tabs, if the run as it began gave none. A list's lines tell it of each file.
  bool NoTabWarning(bool bRunGaveNone) const { return bOpen_ ? bNoTabWarning_ : bRunGaveNone; }
  std::string LineText(const FileOutcome& outcome) { return bOpen_ ? ResultLineText(LineOf(outcome)) : std::string(); }

 private:
  void RemoveLeftover(const std::vector<PlannedFile>& files);
  void FileBegins(const PlannedFile& file);
  void FileDone(const FileOutcome& outcome);
  ResultLine LineOf(const FileOutcome& outcome);

  const ConvertRequest& request_;
  clsLongRun& run_;
  clsResultList list_;
  clsInHandNote note_;
  const std::vector<PlannedFile>* pFiles_ = nullptr;  ///< What is converted
  bool bOpen_ = false, bFailed_ = false;
  bool bNoTabWarning_ = false;
  bool bShared_ = false;
  std::string sLine_;
  std::string sMadeBy_;
  std::optional<ListedState> state_;
  int64_t lBegan_ = 0;
};

/// Fingerprint of all that an output depends on beside its input: the program's version, the method, the content of the
/// recipe or profile, the options.
std::string MakingOf(const ConvertRequest& request);

}  // namespace quillon
