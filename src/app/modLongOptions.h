#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "modShard.h"

namespace quillon {

/// What is said behind the name of a report that would be read as gibberish.
constexpr const char* kUtf16Note = " begins as UTF-16 text does, which the Profile method alone reads, with --utf16";

/// What `quillon convert` was asked for.
struct ConvertRequest {
  std::vector<std::string> inputs;  ///< Files, patterns, folders, or "-"
  std::string sOutput;
  std::string sRecipe, sProfile, sSpecification;
  bool bMarkup = false;
  bool bRecursive = false;
  bool bBesideInput = false;
  bool bNoClear = false;
  int32_t lDelimiter = 44;
  int32_t lQuote = 1;
  int32_t lTabSize = 8;
  bool bUnix = false;
  std::string sEncoding = "auto";
  std::string sStartCell = "A1";
  bool bAsText = false;
  bool bKeepPad = false;
  bool bUtf16 = false;
  bool bTrim = false;
  bool bSafeCsv = false;
  bool bAllPeriods = false;
  std::optional<Shard> shard;
  std::string sReport;
  bool bSkipDone = false;
  std::vector<std::string> given;  ///< Long names of the options that stood on the command line
};

/// What `quillon job` was asked for.
struct JobRequest {
  std::string sJobFile;
};

/// What `quillon preview`, `check` and `suggest` were asked for.
struct LookRequest {
  std::string sInput;
  std::string sRecipe, sProfile;
  int32_t lTable = 1;
  int64_t lRows = 20;
  int32_t lTabSize = 8;
  bool bUnix = false;
  std::string sEncoding = "auto";
  std::string sOutput;  ///< Of suggest; "" is standard output
};

/// What both converting commands have.
struct TalkRequest {
  std::string sLog;
  bool bQuiet = false;
  bool bVerbose = false;
};

/// Parses the long options and runs the command. Returns the exit status.
int RunLongOptions(int argc, char** argv);

}  // namespace quillon
