#include "modParseCommandLine.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "modFiles.h"
#include "modNumbers.h"
#include "modOptionTable.h"
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

std::string SwitchText(SwitchValue value, std::string_view sValue) {
  switch (value) {
    case SwitchValue::InputPath:
      return InputPath(sValue);
    case SwitchValue::OutputPath:
    case SwitchValue::LogPath:
      return OutputPath(sValue);
    case SwitchValue::JobPath:
    case SwitchValue::OpensWindow:
      return JobPath(sValue);
    default:
      return RemoveDoubleQuotes(sValue);
  }
}

/// Null if no switch has this letter, an upper-case one.
const Option* OptionOfSwitch(char cLetter) {
  const std::span<const Option> options = OptionTable();
  const auto found = std::find_if(options.begin(), options.end(),
                                  [cLetter](const Option& option) { return option.cSwitch == cLetter; });
  return found == options.end() || cLetter == '\0' ? nullptr : &*found;
}

void SetBySwitch(const Option& option, std::string_view sValue, clsConversionOptions& options, clsHost& host) {
  static const clsConversionOptions kNew;
  if (const auto* text = std::get_if<OptionText>(&option.field)) options.** text = SwitchText(option.value, sValue);
  if (const auto* number = std::get_if<OptionNumber>(&option.field)) SetNumber(options.**number, sValue);
  if (const auto* truth = std::get_if<OptionTruth>(&option.field)) options.** truth = !(kNew.**truth);
  if (option.lMethod >= 0) options.lConversionMethod = option.lMethod;
  if (option.value == SwitchValue::LogPath) ApplyLogRule(options, host);
  if (option.value == SwitchValue::OpensWindow) options.bOpenConversionJobOnly = true;
  if (option.value == SwitchValue::Help) host.OpenPath(CommandLineHelpPage(), OpenVerb::Open);
}

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
    const Option* const found = letter.size() == 1 ? OptionOfSwitch(letter.front()) : nullptr;
    if (found == nullptr) continue;
    SetBySwitch(*found, fields[index].sValue, options, host);
    if (found->value == SwitchValue::OpensWindow || found->value == SwitchValue::Help) return false;
  }
  return true;
}

bool IsSwitchLetter(char cLetter) {
  return OptionOfSwitch(UpperText(std::string_view(&cLetter, 1)).front()) != nullptr;
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
  for (const Option& option : OptionTable()) {
    if (option.cSwitch != '\0') list.append("/").append(1, option.cSwitch).append(option.sSwitchHelp).append("\n");
  }
  return list;
}

std::string CommandLineHelpPage() {
  return ShippedPath("Help/command-line.html");
}

}  // namespace quillon
