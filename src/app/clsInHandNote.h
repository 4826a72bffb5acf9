#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "modConversionRun.h"

namespace quillon {

/// The output that a run with a result list is about to make where there was none, noted in a file beside the list for
/// as long as the list doesn't tell of it. If the run is killed between the two, the next one takes the output away and
/// makes it again: a workbook that exists would be edited, which gives the same cells in other bytes.
class clsInHandNote {
 public:
  clsInHandNote() = default;
  clsInHandNote(const clsInHandNote&) = delete;
  clsInHandNote& operator=(const clsInHandNote&) = delete;
  ~clsInHandNote();

  /// Takes the note of a list, FILE.now. Without effect where that can't be made or another process has it.
  void Open(const std::string& sListFile);
  /// The output that a killed run noted, if it is one of the files, is there, and was written within a minute of the
  /// note, so that nobody else has touched it since; else null.
  const PlannedFile* LeftBehind(const std::vector<PlannedFile>& files) const;
  /// Notes the output unless it exists.
  void Begin(const std::string& sOutput);
  /// The list tells of it now.
  void End();

 private:
  void Note(std::string_view sText);

  int nHandle_ = -1;
  std::string sFile_;
  bool bEmpty_ = true;
};

}  // namespace quillon
