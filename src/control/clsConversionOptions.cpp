#include "clsConversionOptions.h"

#include <array>
#include <limits>
#include <variant>
#include <vector>

#include "clsIniFile.h"
#include "modFailure.h"
#include "modNumbers.h"
#include "modSettings.h"
#include "modText.h"

namespace quillon {

clsConversionOptions gConversionOptions;

void ResetConversionOptions() {
  gConversionOptions = clsConversionOptions();
}

namespace {

using Options = clsConversionOptions;
using TextField = std::string Options::*;
using NumberField = int32_t Options::*;
using TruthField = bool Options::*;

struct JobKey {
  std::string_view sKey;
  std::variant<TextField, NumberField, TruthField> field;
  std::string_view sDefault;
};

constexpr std::string_view kInfo =
    "This is a 'Quillon' Conversion Job file. Use me as a batch file to convert TXT to CSV/Excel";
constexpr std::string_view kShowStatusMessages = "bShowStatusMessages";

// In the order in which they are written.
constexpr std::array<JobKey, 18> kJobKeys{{
    {"sInputFile", &Options::sInputFile, ""},
    {"sOutputFile", &Options::sOutputFile, ""},
    {"sRecipeFile", &Options::sRecipeFile, ""},
    {"lConversionMethod", &Options::lConversionMethod, "0"},
    {"bDoSubfolders", &Options::bDoSubfolders, "FALSE"},
    {"bSaveInOriginalFolder", &Options::bSaveInOriginalFolder, "FALSE"},
    {"bClearOutputFileBeforeProcessing", &Options::bClearOutputFileBeforeProcessing, "FALSE"},
    {"sSheetTarget", &Options::sSheetTarget, "1"},
    {"lDelimitationCharacter", &Options::lDelimitationCharacter, "44"},
    {"lTabSize", &Options::lTabSize, "8"},
    {"bUnix", &Options::bUnix, "FALSE"},
    {"sStartColRow", &Options::sStartColRow, "A1"},
    {"bTreatDataAsText", &Options::bTreatDataAsText, "FALSE"},
    {"lUseDoubleQuotes", &Options::lUseDoubleQuotes, "1"},
    {"bIsUnicode", &Options::bIsUnicode, "FALSE"},
    {"bTrimInputTextFilesPadCharacter", &Options::bTrimInputTextFilesPadCharacter, "TRUE"},
    {"sFixedWidthProfile", &Options::sFixedWidthProfile, "Default-Profile"},
    {kShowStatusMessages, &Options::bVerbose, "FALSE"},
}};
// Reading takes bUnix before lTabSize and the profile before the trim switch, so that a bad number leaves the same
// members filled as it always did.
constexpr std::array<size_t, kJobKeys.size()> kReadOrder{0, 1, 2, 3, 4, 5, 6, 7, 8, 10, 9, 11, 12, 13, 14, 16, 15, 17};

constexpr std::array<std::string_view, 4> kNoteKeys{"INFO", "ReadMe", "ReadMe2", "ReadMeCommandLine"};

int32_t JobNumber(std::string_view sFile, std::string_view sKey, std::string_view sValue) {
  if (const auto value = ParseWholeNumber(sValue)) return *value;
  throw UnhandledFailure(std::string(sFile) + ": " + std::string(sKey) + "=" + std::string(sValue) +
                         " is not a whole number; correct this key of the conversion job.");
}

}  // namespace

void clsConversionOptions::OpenConversionJob(std::string_view sFile) {
  clsIniFile ini(JobCodePage());
  Failure ignored;  // A file that can't be read gives the defaults, as a missing one does.
  ini.Load(sFile, ignored);
  if (bOpenConversionJobOnly || !gbCommandLineMode) {
    sReadMe = ini.Get(kJobSection, "ReadMe", "");
    sReadMe2 = ini.Get(kJobSection, "ReadMe2", "");
  } else {
    sReadMeCommandLine = ini.Get(kJobSection, "ReadMeCommandLine", "");
  }
  for (const size_t place : kReadOrder) {
    const JobKey& key = kJobKeys[place];
    const std::string value = ini.Get(kJobSection, key.sKey, key.sDefault);
    if (const auto* text = std::get_if<TextField>(&key.field)) {
      this->** text = value;
    } else if (const auto* number = std::get_if<NumberField>(&key.field)) {
      this->** number = JobNumber(sFile, key.sKey, value);
    } else if (key.sKey == kShowStatusMessages) {
      bVerbose = UpperText(value) != "FALSE";
    } else {
      this->*std::get<TruthField>(key.field) = UpperText(value) == "TRUE";
    }
  }
}

bool clsConversionOptions::SaveConversionJob(std::string_view sFile) const {
  std::vector<IniEntry> entries;
  entries.reserve(kJobKeys.size() + 1);
  const auto add = [&entries](std::string_view sKey, std::string_view sValue) {
    entries.push_back({std::string(kJobSection), std::string(sKey), std::string(sValue)});
  };
  add(kNoteKeys[0], kInfo);
  for (const JobKey& key : kJobKeys) {
    if (key.sKey == kShowStatusMessages) {
      add(key.sKey, "FALSE");  // A saved job never asks for messages; only a hand edit does.
    } else if (const auto* text = std::get_if<TextField>(&key.field)) {
      add(key.sKey, this->**text);
    } else if (const auto* number = std::get_if<NumberField>(&key.field)) {
      add(key.sKey, std::to_string(this->**number));
    } else {
      add(key.sKey, this->*std::get<TruthField>(key.field) ? "TRUE" : "FALSE");
    }
  }
  return WritePrivateProfileStrings(sFile, entries, JobCodePage());
}

const clsCodePage* JobCodePage() {
  const clsCodePage* const page = SystemCodePage();
  return page == &clsCodePage::Windows1252() ? nullptr : page;
}

bool IsJobKey(std::string_view sKey) {
  for (const JobKey& key : kJobKeys) {
    if (EqualNoCase(key.sKey, sKey)) return true;
  }
  for (const std::string_view note : kNoteKeys) {
    if (EqualNoCase(note, sKey)) return true;
  }
  return false;
}

}  // namespace quillon
