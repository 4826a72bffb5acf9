#pragma once
// What a run reports: one table of code and words, and how they are put together.

#include <cstdint>
#include <string>
#include <string_view>

#include "clsHost.h"

namespace quillon {

/// Codes of the run itself.
enum RunCode : int32_t {
  kNoInputFile = -1,
  kOutputNeedsWildcard = -2,
  kOutputHasWildcard = -3,
  kOutputType = -4,
  kNoJobFile = -100,
  kNoLogFolder = -101,
  kProfileNotFound = -201,
  kProfileFormat = -202,
  kProfileGeneral = -203,
  kProfileEngine = -204,
  kNoFileList = -1001,
  kOutputIsInput = -1002,
  kNotEnoughMemory = -1003,
  kOutputTwice = -1004,
  kRunEnded = -1005,
  kLogIsFileOfRun = -1006,
  kNoExportSpecs = -2001,
  kRecipeRunNoInput = -2002,
  kRecipeRunNoRecipe = -2003,
  kTabsInFile = -2004,
};

/// For want of memory outside of a file's conversion, where nothing can be looked up any more.
inline constexpr const char* kNoMemoryText = "Error [-1003] Not enough memory";

/// The entry of a code: "Error [-1] Invalid Input File Specified", its message and its third line, all translated.
/// sSubject is the path or word that the message names ("" if it names none).
ReportEntry RunEntry(RunCode code, std::string_view sSubject = {});

}  // namespace quillon
