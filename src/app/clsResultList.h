#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "modConversionRun.h"
#include "modFailure.h"

namespace quillon {

/// What tells whether a file has changed: its size and the time of its last change, "seconds.nanoseconds".
struct ListedState {
  int64_t lBytes = 0;
  std::string sModified;
};
/// Nothing if the file can't be looked at.
std::optional<ListedState> StateOfFile(std::string_view sPath);

/// Something that was said of a file, with its code (0 if it has none).
struct ResultText {
  int32_t lCode = 0;
  std::string sText;
};

/// What became of one input: one line of a result list.
struct ResultLine {
  std::string sInput, sOutput;
  bool bDone = false;
  int64_t lRows = 0;
  int64_t lLinesRead = 0, lLinesInTables = 0;
  ReportProof proof;  ///< Lines by kind, where they are known; what is lost; printed totals
  bool bLinesByKind = false;
  int64_t lCharactersLost = 0;  ///< That the output's code page lacks
  int64_t lCellsFailed = 0;
  std::vector<ResultText> warnings, errors;
  double dSeconds = 0;
  std::optional<ListedState> state;  ///< Of the input, before it was read
  int64_t lOutputBytes = -1;         ///< -1 if there is no output
  std::string sMadeBy;               ///< Fingerprint of recipe or profile, options and program
};

/// A file of result lines, JSON objects of one line each. Lines are only ever added, each by one call to the system, so
/// that several processes on one machine may share a list and a killed one leaves one torn line at most.
class clsResultList {
 public:
  clsResultList() = default;
  clsResultList(const clsResultList&) = delete;
  clsResultList& operator=(const clsResultList&) = delete;
  ~clsResultList();

  /// Opens the list, which is made if it doesn't exist; its folder is not. False with the reason.
  bool Open(const std::string& sFile, Failure& failure);
  /// True if an earlier run kept this list and no process does now, which holds until Share is called.
  bool IsLeftAlone() const { return bExisted_ && bAlone_; }
  /// Lets other processes of this list in.
  void Share();
  /// Learns what the list tells. Lines that are no result lines (a torn one) are passed over, the last one about an
  /// output counts. False with the reason.
  bool Read(Failure& failure);
  /// Whether the last line about the output, of those that were read, says that it was made.
  bool TellsOf(std::string_view sOutput) const;
  /// Whether the output was made of this input as it is now, in the same way, and is there as it was left.
  bool IsDone(const PlannedFile& file, std::string_view sMadeBy) const;
  /// A line as ResultLineText gives it.
  bool Write(std::string_view sLine, Failure& failure);

 private:
  void Learn(const std::string& sLine);
  /// Whether the file ends within a line.
  bool IsTorn() const;

  int nHandle_ = -1;
  std::string sFile_;
  bool bExisted_ = false, bAlone_ = false;
  std::unordered_map<uint64_t, uint64_t> known_;  ///< By output: input, states and way of its making
};

/// A line as it stands in the list, without its end. A text that isn't valid UTF-8 gets U+FFFD for each bad byte and,
/// if it is a path, a second key with all bytes in hexadecimal digits: input_hex, output_hex.
std::string ResultLineText(const ResultLine& line);

}  // namespace quillon
