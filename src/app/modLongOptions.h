#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "clsConversionOptions.h"
#include "modShard.h"

namespace quillon {

/// What `quillon convert` was asked for.
struct ConvertRequest {
  std::vector<std::string> inputs;  ///< Files, patterns, folders, or "-"
  std::string sOutput;
  std::string sRecipe, sProfile, sSpecification;
  bool bMarkup = false;
  clsConversionOptions options;  ///< What the rows of the option table say
  std::optional<Shard> shard;
  std::string sReport;
  bool bSkipDone = false;
  std::vector<std::string> given;  ///< Long names of the options that stood on the command line
};

/// What `quillon job` was asked for.
struct JobRequest {
  std::string sJobFile;
  bool bStrict = false, bKeep = false;
};

/// What `quillon preview`, `check` and `suggest` were asked for.
struct LookRequest {
  std::string sInput;
  std::string sRecipe, sProfile, sSpecification;
  int32_t lTable = 1;
  int64_t lRows = 20;
  clsConversionOptions options;  ///< How the report is read
  bool bMarkup = false;          ///< By the marks in the report
  bool bForce = false;           ///< suggest may replace what it did not write
  std::string sOutput;           ///< Of suggest; "" is standard output
  std::vector<int32_t> tables;   ///< Of suggest; none: those that leave little doubt
  std::string sHeadings = "all";
  bool bToday = false;
  bool bStrict = false;
  std::string sHtml;    ///< Of check: the page; "" for none
  bool bLines = false;  ///< Of check: all shapes of lines and all totals
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
