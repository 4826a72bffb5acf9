#include "clsConversionOptions.h"

#include <algorithm>
#include <array>
#include <vector>

#include "clsIniFile.h"
#include "modFailure.h"
#include "modInputChoices.h"
#include "modNumbers.h"
#include "modOptionTable.h"
#include "modSettings.h"
#include "modText.h"

namespace quillon {

clsConversionOptions gConversionOptions;

void ResetConversionOptions() {
  gConversionOptions = clsConversionOptions();
}

namespace {

constexpr std::string_view kInfo =
    "This is a 'Quillon' Conversion Job file. Use me as a batch file to convert TXT to CSV/Excel";
constexpr std::string_view kShowStatusMessages = "bShowStatusMessages";

/// The options that a job file may keep, in the order in which they are written.
std::vector<const Option*> JobOptions() {
  std::vector<const Option*> rows;
  for (const Option& option : OptionTable()) {
    if (option.bInJob || option.bInJobIfSet) rows.push_back(&option);
  }
  return rows;
}

/// Reading takes bUnix before lTabSize and the profile before the trim switch, so that a bad number leaves the same
/// members filled as it always did.
std::vector<const Option*> JobOptionsToRead() {
  std::vector<const Option*> rows = JobOptions();
  for (const std::string_view later : {"lTabSize", "bTrimInputTextFilesPadCharacter"}) {
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const Option* p) { return p->sName == later; });
    std::iter_swap(row, row + 1);
  }
  return rows;
}

constexpr std::array<std::string_view, 4> kNoteKeys{"INFO", "ReadMe", "ReadMe2", "ReadMeCommandLine"};

int32_t JobNumber(std::string_view sFile, std::string_view sKey, std::string_view sValue) {
  if (const auto value = ParseWholeNumber(sValue)) return *value;
  throw UnhandledFailure(std::string(sFile) + ": " + std::string(sKey) + "=" + std::string(sValue) +
                         " is not a whole number; correct this key of the conversion job.");
}

std::string JobText(std::string_view sFile, const Option& option, const std::string& sValue) {
  const std::string sWrong = WhyNoInputChoice(option.sName, sValue);
  if (sWrong.empty()) return sValue;
  throw UnhandledFailure(std::string(sFile) + ": " + std::string(option.sName) + "=" + sValue + ": " + sWrong +
                         "; correct this key of the conversion job.");
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
  for (const Option* const pRow : JobOptionsToRead()) {
    const std::string value = ini.Get(kJobSection, pRow->sName, pRow->sIfMissing);
    if (const auto* text = std::get_if<OptionText>(&pRow->field)) {
      this->** text = JobText(sFile, *pRow, value);
    } else if (const auto* number = std::get_if<OptionNumber>(&pRow->field)) {
      this->** number = JobNumber(sFile, pRow->sName, value);
    } else if (pRow->sName == kShowStatusMessages) {
      bVerbose = UpperText(value) != "FALSE";
    } else {
      this->*std::get<OptionTruth>(pRow->field) = UpperText(value) == "TRUE";
    }
  }
}

bool clsConversionOptions::SaveConversionJob(std::string_view sFile) const {
  std::vector<IniEntry> entries;
  const auto add = [&entries](std::string_view sKey, std::string_view sValue) {
    entries.push_back({std::string(kJobSection), std::string(sKey), std::string(sValue)});
  };
  add(kNoteKeys[0], kInfo);
  for (const Option* const pRow : JobOptions()) {
    // Jobs that say nothing of it stay as they were before there was this key.
    const bool bUnsaid = pRow->bInJobIfSet && !IsOptionSet(*pRow, *this);
    if (bUnsaid && GetPrivateProfileString(sFile, kJobSection, pRow->sName, "").empty()) continue;
    // A saved job never asks for messages; only a hand edit does.
    add(pRow->sName, pRow->sName == kShowStatusMessages ? "FALSE" : OptionValueText(*pRow, *this));
  }
  return WritePrivateProfileStrings(sFile, entries, JobCodePage());
}

const clsCodePage* JobCodePage() {
  const clsCodePage* const page = SystemCodePage();
  return page == &clsCodePage::Windows1252() ? nullptr : page;
}

bool IsJobKey(std::string_view sKey) {
  for (const Option* const pRow : JobOptions()) {
    if (EqualNoCase(pRow->sName, sKey)) return true;
  }
  for (const std::string_view note : kNoteKeys) {
    if (EqualNoCase(note, sKey)) return true;
  }
  return false;
}

}  // namespace quillon
