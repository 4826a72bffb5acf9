#include "modRunMessages.h"

#include <sys/stat.h>

#include <array>
#include <cassert>
#include <cerrno>
#include <cstring>

#include "modPaths.h"
#include "modReport.h"
#include "modRunLog.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

/// How the subject stands with its text.
enum class With {
  Nothing,    ///< The text alone
  Missing,    ///< Text, the subject on a line of its own, "does not exist." on another
  Bracketed,  ///< Text [subject]
  Behind,     ///< Text and subject
  SubjectOnly,
};

struct RunMessage {
  RunCode code;
  EntryType type;
  std::string_view sHeadline;  ///< Behind "Error [code] "; "" if the message proper says all
  std::string_view sText;
  With with;
};

constexpr std::string_view kBadInput = "Invalid Input File Specified";
constexpr std::string_view kBadOutput = "Invalid Output File Specified";
constexpr std::string_view kBadProfile = "Invalid Profile Specified";

constexpr std::array<RunMessage, 20> kMessages{{
    {kNoInputFile, EntryType::Error, kBadInput, "Input File", With::Missing},
    {kOutputNeedsWildcard, EntryType::Error, kBadOutput,
     "Output file must have wild card (*) since Input file has a wildcard.", With::Nothing},
    {kOutputHasWildcard, EntryType::Error, kBadOutput,
     "Output file cannot have a wildcard (*) in it unless the Input file does also.", With::Nothing},
    {kOutputType, EntryType::Error, kBadOutput, "Output File must be of type CSV, XLS, or XLSX.", With::Nothing},
    {kNoJobFile, EntryType::Error, "Invalid Conversion Job File Specified", "Conversion Job File", With::Missing},
    {kNoLogFolder, EntryType::Error, "", "Unable to create/access log file folder.", With::Nothing},
    {kProfileNotFound, EntryType::Error, kBadProfile, "Could not find specified profile", With::Bracketed},
    {kProfileFormat, EntryType::Error, kBadProfile,
     "Profile format is not correct. Please check that the it is not corrupt.", With::Bracketed},
    {kProfileGeneral, EntryType::Error, "", "General error: Check for read only attributes on Output file",
     With::Nothing},
    {kProfileEngine, EntryType::Error, "", "", With::SubjectOnly},
    {kNoFileList, EntryType::Warning, "", "Unable to create file list", With::Nothing},
    {kOutputIsInput, EntryType::Error, kBadOutput, "The output file is the input file itself: ", With::Behind},
    {kNotEnoughMemory, EntryType::Error, "", "Not enough memory to convert: ", With::Behind},
    {kOutputTwice, EntryType::Warning, "", "The output of another file of this run is replaced: ", With::Behind},
    {kRunEnded, EntryType::Error, "", "The run was ended: ", With::Behind},
    {kLogIsFileOfRun, EntryType::Error, "Invalid Log File Specified",
     "The log would replace a file of this run: ", With::Behind},
    {kNoExportSpecs, EntryType::Warning, "", "Cannot find Export Specs file: ", With::Behind},
    {kRecipeRunNoInput, EntryType::Error, kBadInput, "Input File", With::Missing},
    {kRecipeRunNoRecipe, EntryType::Error, "Invalid Recipe File Specified", "Recipe File", With::Missing},
    {kTabsInFile, EntryType::Warning, "", "NOTE: The text in the Input File contains tab characters.", With::Nothing},
}};

const RunMessage& MessageOf(RunCode code) {
  for (const RunMessage& message : kMessages) {
    if (message.code == code) return message;
  }
  assert(false);
  return kMessages.front();
}

std::string Join(std::string_view sText, With with, std::string_view sSubject) {
  const std::string subject(sSubject);
  const std::string text = with == With::SubjectOnly ? std::string() : Translate(sText);
  switch (with) {
    case With::Nothing:
      return text;
    case With::Missing: {
      const std::string below = std::string(kLineEnd) + std::string(kLogIndent);
      return text + below + subject + below + Translate("does not exist.");
    }
    case With::Bracketed:
      return text + " [" + subject + "]";
    case With::Behind:
    case With::SubjectOnly:
      return text + subject;
  }
  return text;
}

std::string FirstLine(const RunMessage& message) {
  if (message.code == kTabsInFile) return CodeLine(message.type, message.code) + " ";
  if (message.code == kOutputTwice) return CodeLine(message.type, message.code);
  // Counted as a warning, it calls itself an error; so does the list that can't be made.
  std::string line = CodeLine(EntryType::Error, message.code);
  if (message.code == kProfileGeneral || message.code == kProfileEngine) line = Translate("Error");
  if (!message.sHeadline.empty()) line += " " + Translate(message.sHeadline);
  return line;
}

/// "" for a path that names nothing at all.
std::string WhyNotThere(std::string_view sPath) {
  struct stat about {};
  if (stat(HostPath(sPath).c_str(), &about) == 0) {
    return S_ISDIR(about.st_mode) ? Translate("It is a folder: name a file in it.") : std::string();
  }
  if (errno == ENOENT) return {};
  return Translate("It could not be looked at: ") + std::strerror(errno);
}

std::string ThirdLine(RunCode code, std::string_view sSubject) {
  switch (code) {
    case kNoInputFile:
    case kNoJobFile:
    case kRecipeRunNoInput:
    case kRecipeRunNoRecipe:
      return WhyNotThere(sSubject);
    case kOutputHasWildcard:
      return Translate("To fix this: Remove asterisk from output file or add a wildcard (? or *) to the input file.");
    case kOutputNeedsWildcard:
      return Translate("To fix this: Add a wild card to the output file. For example: C:\\Output\\*.CSV");
    case kOutputType:
      return Translate("To fix this: Change the output file extension from: ") + std::string(sSubject) + " " +
             Translate("to: CSV, XLS, or XLSX");
    case kNoLogFolder:  // No line end before the last words.
      return Translate("Log Folder") + std::string(kLineEnd) + std::string(kLogIndent) + std::string(sSubject) +
             std::string(kLogIndent) + Translate("does not exist.");
    case kOutputIsInput:
      return Translate("To fix this: Change the output file.");
    case kLogIsFileOfRun:
      return Translate("To fix this: Choose another log file.");
    case kOutputTwice:
      return Translate("To fix this: Convert files of the same name apart, or rename one of them.");
    case kTabsInFile:
      return Translate("To specify the tab stop, change the options.");
    default:
      return {};
  }
}

}  // namespace

ReportEntry RunEntry(RunCode code, std::string_view sSubject) {
  const RunMessage& message = MessageOf(code);
  const std::string subject = WithoutControls(sSubject);
  return {code, FirstLine(message), Join(message.sText, message.with, subject), ThirdLine(code, sSubject), message.type,
          true};
}

}  // namespace quillon
