#pragma once

#include <ctime>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "modConversionRun.h"

namespace quillon {

/// The outputs that a run with a result list is about to make where there were none, noted in a file beside the list
/// for as long as the list doesn't tell of them. If the run is killed between the two, the next one takes an output
/// away and makes it again: a workbook that exists would be edited, which gives the same cells in other bytes.
class clsInHandNote {
 public:
  clsInHandNote() = default;
  clsInHandNote(const clsInHandNote&) = delete;
  clsInHandNote& operator=(const clsInHandNote&) = delete;
  ~clsInHandNote();

  /// Takes the note of a list, FILE.now. Without effect where that can't be made or another process has it.
  void Open(const std::string& sListFile);
  /// The outputs that a killed run noted, if they are of these files, are there, and were written within a minute of
  /// their note, so that nobody else has touched them since.
  std::vector<const PlannedFile*> LeftBehind(const std::vector<PlannedFile>& files) const;
  /// Notes the outputs unless they exist.
  void Begin(const std::vector<std::string>& outputs);
  /// The list tells of it now. While others are in hand the file may tell of it a little longer.
  void End(const std::string& sOutput);

 private:
  void Write();

  int nHandle_ = -1;
  std::string sFile_;
  bool bEmpty_ = true;                         ///< The file
  std::map<std::string, std::time_t> inHand_;  ///< Absolute paths, and since when
};

}  // namespace quillon
