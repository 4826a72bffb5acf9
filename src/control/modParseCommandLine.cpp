#include "modParseCommandLine.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "modFiles.h"
#include "modNumbers.h"
#include "modPaths.h"
#include "modSettings.h"
#include "modStrings.h"
#include "modText.h"

namespace quillon {

namespace {

struct Field {
  std::string_view sLetter;  ///< Trimmed
  std::string_view sValue;   ///< Trimmed
  bool bEmpty = false;       ///< No character at all between two delimiters
};

/// sText must end in the blank that closes the last field.
std::vector<Field> SplitFields(std::string_view sText, char cDelimiter) {
  std::vector<Field> fields;
  for (size_t start = 0; start < sText.size();) {
    const size_t end = std::min(sText.find(cDelimiter, start), sText.size());
    const std::string_view field = sText.substr(start, end - start);
    if (field.empty()) {
      fields.push_back({{}, {}, true});
    } else {
      const size_t letter = Utf8CharBytes(field, 0);
      fields.push_back({TrimBlanks(field.substr(0, letter)), TrimBlanks(field.substr(letter)), false});
    }
    start = end + 1;
  }
  return fields;
}

std::string TakenAsItStands(std::string_view sValue) {
  return RemoveDoubleQuotes(sValue);
}

std::string PathBehind(std::string_view sFolder, std::string_view sValue) {
  const std::string path = ExpandedPath(sValue);
  return HasSeparator(path) ? TakenAsItStands(path) : JoinPath(sFolder, path);
}

std::string InputPath(std::string_view sValue) {
  return PathBehind(ProgramFolder(), sValue);
}
std::string OutputPath(std::string_view sValue) {
  return PathBehind(gsAppDataFolder, sValue);
}
/// A name alone is looked for in the current folder first.
std::string JobPath(std::string_view sValue) {
  const std::string path = ExpandedPath(sValue);
  if (HasSeparator(path)) return TakenAsItStands(path);
  const std::string name = RemoveDoubleQuotes(TrimBlanks(path));
  const std::string here = name.empty() ? std::string() : AbsolutePath(name);
  return FileExists(here) ? here : JoinPath(ProgramFolder(), name);
}

void SetNumber(int32_t& lOption, std::string_view sValue) {
  if (const auto value = ParseWholeNumber(sValue)) lOption = *value;
}

enum class Next { GoOn, RunNot };

struct Call {
  clsConversionOptions& options;
  clsHost& host;
  std::string_view sValue;
};

struct Switch {
  char cLetter;
  Next (*act)(const Call&);
  std::string_view sUsage;
};

template <bool clsConversionOptions::*Field, bool Value>
Next SetTruth(const Call& call) {
  call.options.*Field = Value;
  return Next::GoOn;
}

template <int32_t clsConversionOptions::*Field>
Next SetWhole(const Call& call) {
  SetNumber(call.options.*Field, call.sValue);
  return Next::GoOn;
}

template <std::string clsConversionOptions::*Field, std::string (*Rule)(std::string_view)>
Next SetText(const Call& call) {
  call.options.*Field = Rule(call.sValue);
  return Next::GoOn;
}

Next SetLog(const Call& call) {
  call.options.sLogFile = OutputPath(call.sValue);
  ApplyLogRule(call.options, call.host);
  return Next::GoOn;
}

Next SetProfile(const Call& call) {
  call.options.lConversionMethod = kMethodProfile;
  call.options.sFixedWidthProfile = RemoveDoubleQuotes(call.sValue);
  return Next::GoOn;
}

Next SetRecipe(const Call& call) {
  call.options.lConversionMethod = kMethodRecipe;
  call.options.sRecipeFile = InputPath(call.sValue);
  return Next::GoOn;
}

Next OpenJobOnly(const Call& call) {
  call.options.bOpenConversionJobOnly = true;
  call.options.sCLBatchJobFile = JobPath(call.sValue);
  return Next::RunNot;
}

Next ShowHelp(const Call& call) {
  call.host.OpenPath(CommandLineHelpPage(), OpenVerb::Open);
  return Next::RunNot;
}

using O = clsConversionOptions;
constexpr std::array<Switch, 21> kSwitches{{
    {'C', SetTruth<&O::bClearOutputFileBeforeProcessing, false>,
     "/C        don't clear the sheet of an existing workbook"},
    {'G', SetTruth<&O::bSaveInOriginalFolder, true>, "/G        write each output beside its input"},
    {'I', SetText<&O::sInputFile, InputPath>, "/IPATH    input file, or a wildcard over many"},
    {'L', SetLog, "/LPATH    log file; [Y] [M] [D] [YMD] [MDY] [H] [I] [S] [HIS] become date and time"},
    {'O', SetText<&O::sOutputFile, OutputPath>, "/OPATH    output file: .CSV, .XLS or .XLSX; with a * for many"},
    {'P', SetProfile, "/PNAME    Profile method, with this profile"},
    {'R', SetRecipe, "/RPATH    Recipe method, with this recipe"},
    {'S', SetTruth<&O::bDoSubfolders, true>, "/S        subfolders too"},
    {'D', SetWhole<&O::lDelimitationCharacter>,
     "/DCODE    separator of CSV by character code: 44 comma, 9 tab, 124 bar"},
    {'W', SetText<&O::sSheetTarget, RemoveDoubleQuotes>, "/WSHEET   sheet by name or number"},
    {'Z', SetText<&O::sStartColRow, RemoveDoubleQuotes>, "/ZCELL    first cell, as A1 (Profile method)"},
    {'E', SetWhole<&O::lUseDoubleQuotes>, "/EMODE    quotes: 0 never, 1 sometimes, 2 always (Profile method)"},
    {'Y', SetTruth<&O::bTreatDataAsText, true>, "/Y        leave values as text (Profile method)"},
    {'U', SetTruth<&O::bIsUnicode, true>, "/U        the input is UTF-16 (Profile method)"},
    {'M', SetTruth<&O::bTrimInputTextFilesPadCharacter, false>, "/M        keep pad characters (Profile method)"},
    {'V', SetTruth<&O::bVerbose, true>, "/V        show messages"},
    {'T', SetWhole<&O::lTabSize>, "/TSIZE    tab stop of the input"},
    {'A', SetTruth<&O::bUnix, true>, "/A        the input has Unix line ends"},
    {'J', SetText<&O::sCLBatchJobFile, JobPath>, "/JPATH    run this conversion job"},
    {'!', OpenJobOnly, "/!PATH    open this conversion job in the window"},
    {'?', ShowHelp, "/?        this list, and the page about it"},
}};

/// The first "!" or "?", which ends the parse; "" if there is neither.
std::string EndingSwitch(std::string_view sCommandLine) {
  const std::string text = std::string(sCommandLine) + ' ';
  const std::vector<Field> fields = SplitFields(text, '/');
  const auto found = std::find_if(fields.begin() + 1, fields.end(),
                                  [](const Field& field) { return field.sLetter == "!" || field.sLetter == "?"; });
  return found == fields.end() ? std::string() : std::string(found->sLetter);
}

}  // namespace

bool ParseCommandLine(std::string_view sCommandLine, clsConversionOptions& options, clsHost& host) {
  gbCommandLineMode = !sCommandLine.empty();
  if (sCommandLine.empty()) return false;

  const std::string text = std::string(sCommandLine) + ' ';
  const std::vector<Field> fields = SplitFields(text, '/');
  std::string letter;
  for (size_t index = 1; index < fields.size(); ++index) {
    // Two "/" in a row: the letter of the switch before acts again, with an empty value.
    if (!fields[index].bEmpty) letter = UpperText(fields[index].sLetter);
    const auto found = std::find_if(kSwitches.begin(), kSwitches.end(), [&letter](const Switch& entry) {
      return letter.size() == 1 && letter.front() == entry.cLetter;
    });
    if (found == kSwitches.end()) continue;
    if (found->act({options, host, fields[index].sValue}) == Next::RunNot) return false;
  }
  return true;
}

bool RunsUnattended(std::string_view sCommandLine) {
  return !sCommandLine.empty() && EndingSwitch(sCommandLine).empty();
}

bool OpensJobInWindow(std::string_view sCommandLine) {
  return EndingSwitch(sCommandLine) == "!";
}

std::string GetArgument(int16_t lIndex, std::string_view sText, std::string_view sDelimiter, std::string& sLetter) {
  if (lIndex < 1 || sDelimiter.empty()) return {};
  const std::string text = std::string(sText) + ' ';
  const std::vector<Field> fields = SplitFields(text, sDelimiter.front());
  const size_t index = static_cast<size_t>(lIndex) - 1;
  if (index >= fields.size()) return {};
  if (!fields[index].bEmpty) sLetter = fields[index].sLetter;
  return std::string(fields[index].sValue);
}

int16_t CountOccurrences(std::string_view sText, std::string_view sDelimiter) {
  if (sDelimiter.empty()) return 1;
  const auto count = std::count(sText.begin(), sText.end(), sDelimiter.front());
  constexpr std::ptrdiff_t kLargest = std::numeric_limits<int16_t>::max() - 1;
  return static_cast<int16_t>(std::min<std::ptrdiff_t>(count, kLargest) + 1);
}

std::string ExpandDateTimeStamps(std::string_view sPath, std::time_t moment) {
  return sPath.empty() ? std::string() : ExpandDateStamps(sPath, moment);
}

void ApplyLogRule(clsConversionOptions& options, clsHost& host) {
  MakeFolderPath(ParentFolderOfPath(options.sLogFile));
  options.sLogFile = ExpandDateTimeStamps(options.sLogFile, host.Now());
}

std::string SwitchList() {
  std::string list;
  for (const Switch& entry : kSwitches) list.append(entry.sUsage).append("\n");
  return list;
}

std::string CommandLineHelpPage() {
  return ShippedPath("Help/command-line.html");
}

}  // namespace quillon
