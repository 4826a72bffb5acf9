#pragma once
// How one file of a run ended: the one place where that is kept. Log, messages, closing line, result list and exit
// status only show it.

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "clsHost.h"
#include "modFailure.h"
#include "modProofModel.h"

namespace quillon {

class clsCodePage;

/// What became of the lines of one table.
struct TableAccount {
  int32_t lTable = 0;
  int64_t lFirstLine = 0, lLastLine = 0;  ///< Lines of the report, from 1; 0 if not found
  int64_t lRows = 0;
  int32_t lColumns = 0;
  CharacterLoss loss;  ///< What the columns leave of the rows
  int64_t lCellsFailed = 0;
};

/// What tidy tables made of the lines of a report.
struct TidyAccount {
  bool bRan = false;
  std::array<int64_t, 9> lines{};  ///< By TidyLineKind
  int64_t lRecords = 0;
  int64_t lMisfits = 0;  ///< Cells of number and date columns that stayed text
};

/// What became of each line of an input file. Counts alone decide nothing; FileOutcome::status does.
struct FileAccount {
  int64_t lLinesRead = 0;       ///< All lines of the file
  int64_t lLinesInTables = 0;   ///< Distinct lines that are in at least one table
  int64_t lCharactersLost = 0;  ///< Characters that the output's code page lacks
  int64_t lFormulasRefused = 0;
  int64_t lCellsFailed = 0;  ///< Cell writes that failed, of all sections
  int64_t lEqualSigns = 0;   ///< Fields that begin with "="
  bool bOutputWritten = false;
  const clsCodePage* pCodePage = nullptr;  ///< Of the report, once it was read
  /// Why the output was not written or the report not read to its end.
  Failure failure;
  /// Why the walk of sections ended where no report tells it; "" if it did not.
  std::string sWalkEnded;
  /// What wrote nothing where no report tells it, table by table.
  std::vector<std::string> leftOut;
  std::vector<std::string> namesRefused;   ///< Names of the recipe that no sheet got, each with the reason
  std::vector<std::string> workbookNotes;  ///< What was done to a workbook that was there
  std::vector<TableAccount> tables;
  TidyAccount tidy;
  /// Of tidy tables, and with bStrict of all: lines, characters of tidy rows, printed totals.
  ReportProof proof;
  std::string sStrict;  ///< Why a strict run takes the file for a failed one
};

enum class FileStatus {
  Converted,  ///< The whole file, and its output is written
  Failed,     ///< Something of it is missing; the reasons say what
  Stopped,    ///< The run was interrupted or given up in it
  Skipped,    ///< An earlier run had converted it
};

/// Something that was wrong with a file, or may be.
struct FileReason {
  EntryType type = EntryType::Error;
  int32_t lCode = 0;   ///< 0: none
  std::string sText;   ///< Lines parted by LF
  std::string sPlace;  ///< The file that the text speaks of, where the text doesn't name it
  std::string
      sCause;  ///< The system's failure that the text tells of, if it does: "/out/a.csv: No space left on device"
  bool bLogged = false;  ///< An entry of the run log tells it
};

struct FileOutcome {
  std::string sInput, sOutput;
  FileStatus status = FileStatus::Failed;
  int32_t lResult = 0;  ///< The code that stopped it, or 0
  std::vector<FileReason> reasons;
  FileAccount account;

  bool HasErrors() const {
    return std::any_of(reasons.begin(), reasons.end(),
                       [](const FileReason& reason) { return reason.type == EntryType::Error; });
  }
  bool HasLogged() const {
    return std::any_of(reasons.begin(), reasons.end(), [](const FileReason& reason) { return reason.bLogged; });
  }
  /// True if a reason tells of the system's failure.
  bool TellsOf(std::string_view sCause) const {
    return std::any_of(reasons.begin(), reasons.end(),
                       [sCause](const FileReason& reason) { return reason.sCause == sCause; });
  }
  /// Makes it a failed one for a reason without a code.
  void Fail(std::string sText, std::string sPlace = {}) {
    status = FileStatus::Failed;
    reasons.push_back({EntryType::Error, 0, std::move(sText), std::move(sPlace), {}, false});
  }
};

}  // namespace quillon
