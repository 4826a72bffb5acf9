#include "modOptionTable.h"

#include <array>

namespace quillon {

namespace {

using O = clsConversionOptions;

constexpr std::array kOptions = std::to_array<Option>({
    {.sName = "sInputFile",
     .field = &O::sInputFile,
     .bInJob = true,
     .cSwitch = 'I',
     .value = SwitchValue::InputPath,
     .sSwitchHelp = "PATH    input file, or a wildcard over many"},
    {.sName = "sOutputFile",
     .field = &O::sOutputFile,
     .bInJob = true,
     .cSwitch = 'O',
     .value = SwitchValue::OutputPath,
     .sSwitchHelp = "PATH    output file: .CSV, .XLS or .XLSX; with a * for many"},
    {.sName = "sRecipeFile",
     .field = &O::sRecipeFile,
     .bInJob = true,
     .serves = Serves::Recipe,
     .cSwitch = 'R',
     .value = SwitchValue::InputPath,
     .lMethod = kMethodRecipe,
     .sSwitchHelp = "PATH    Recipe method, with this recipe"},
    {.sName = "lConversionMethod",
     .field = &O::lConversionMethod,
     .bInJob = true,
     .sIfMissing = "0",
     .bShapesOutput = true},
    {.sName = "bDoSubfolders",
     .field = &O::bDoSubfolders,
     .bInJob = true,
     .sIfMissing = "FALSE",
     .serves = Serves::Search,
     .cSwitch = 'S',
     .sSwitchHelp = "        subfolders too",
     .sLong = "recursive",
     .cShort = 'r',
     .sLongHelp = "Patterns and folders reach into subfolders"},
    {.sName = "bSaveInOriginalFolder",
     .field = &O::bSaveInOriginalFolder,
     .bInJob = true,
     .sIfMissing = "FALSE",
     .serves = Serves::EachInput,
     .cSwitch = 'G',
     .sSwitchHelp = "        write each output beside its input",
     .sLong = "beside-input",
     .sLongHelp = "Write each output beside its input"},
    {.sName = "bClearOutputFileBeforeProcessing",
     .field = &O::bClearOutputFileBeforeProcessing,
     .bInJob = true,
     .sIfMissing = "FALSE",
     .bShapesOutput = true,
     .serves = Serves::RecipeWorkbook,
     .cSwitch = 'C',
     .sSwitchHelp = "        don't clear the sheet of an existing workbook",
     .sLong = "no-clear",
     .sLongHelp = "Keep what the sheet of an existing workbook holds"},
    {.sName = "sSheetTarget",
     .field = &O::sSheetTarget,
     .bInJob = true,
     .sIfMissing = "1",
     .serves = Serves::None,
     .cSwitch = 'W',
     .sSwitchHelp = "SHEET   sheet by name or number"},
    {.sName = "lDelimitationCharacter",
     .field = &O::lDelimitationCharacter,
     .bInJob = true,
     .sIfMissing = "44",
     .bShapesOutput = true,
     .serves = Serves::Csv,
     .cSwitch = 'D',
     .sSwitchHelp = "CODE    separator of CSV by character code: 44 comma, 9 tab, 124 bar",
     .sLong = "delimiter",
     .longValue = LongValue::Delimiter,
     .sLongType = "CHAR",
     .sLongHelp = "Separator of CSV: a character, comma, tab, bar, semicolon, or a code"},
    {.sName = "lTabSize",
     .field = &O::lTabSize,
     .bInJob = true,
     .sIfMissing = "8",
     .bShapesOutput = true,
     .serves = Serves::RecipeAndMarkup,
     .cSwitch = 'T',
     .sSwitchHelp = "SIZE    tab stop of the input",
     .sLong = "tab-size",
     .longValue = LongValue::Number,
     .sLongType = "N",
     .sLongHelp = "Tab stop of the input; 0 leaves tabs alone"},
    {.sName = "bUnix",
     .field = &O::bUnix,
     .bInJob = true,
     .sIfMissing = "FALSE",
     .bShapesOutput = true,
     .serves = Serves::RecipeAndMarkup,
     .cSwitch = 'A',
     .sSwitchHelp = "        the input has Unix line ends",
     .sLong = "unix",
     .sLongHelp = "Unix line ends: every CR is dropped"},
    {.sName = "sStartColRow",
     .field = &O::sStartColRow,
     .bInJob = true,
     .sIfMissing = "A1",
     .bShapesOutput = true,
     .serves = Serves::Profile,
     .cSwitch = 'Z',
     .sSwitchHelp = "CELL    first cell, as A1 (Profile method)",
     .sLong = "start-cell",
     .longValue = LongValue::Text,
     .sLongType = "CELL",
     .sLongHelp = "Profile method: first cell to gather, such as B4"},
    {.sName = "bTreatDataAsText",
     .field = &O::bTreatDataAsText,
     .bInJob = true,
     .sIfMissing = "FALSE",
     .bShapesOutput = true,
     .serves = Serves::Profile,
     .cSwitch = 'Y',
     .sSwitchHelp = "        leave values as text (Profile method)",
     .sLong = "as-text",
     .sLongHelp = "Profile method: leave values as text, leading zeros intact"},
    {.sName = "lUseDoubleQuotes",
     .field = &O::lUseDoubleQuotes,
     .bInJob = true,
     .sIfMissing = "1",
     .bShapesOutput = true,
     .serves = Serves::ProfileCsv,
     .cSwitch = 'E',
     .sSwitchHelp = "MODE    quotes: 0 never, 1 sometimes, 2 always (Profile method)",
     .sLong = "quote",
     .longValue = LongValue::Quote,
     .sLongType = "WORD",
     .sLongHelp = "Quotes of CSV by the Profile method: never, sometimes, always"},
    {.sName = "bIsUnicode",
     .field = &O::bIsUnicode,
     .bInJob = true,
     .sIfMissing = "FALSE",
     .bShapesOutput = true,
     .serves = Serves::Profile,
     .cSwitch = 'U',
     .sSwitchHelp = "        the input is UTF-16 (Profile method)",
     .sLong = "utf16",
     .sLongHelp = "Profile method: the input is UTF-16"},
    {.sName = "bTrimInputTextFilesPadCharacter",
     .field = &O::bTrimInputTextFilesPadCharacter,
     .bInJob = true,
     .sIfMissing = "TRUE",
     .bShapesOutput = true,
     .serves = Serves::Profile,
     .cSwitch = 'M',
     .sSwitchHelp = "        keep pad characters (Profile method)",
     .sLong = "keep-pad",
     .sLongHelp = "Profile method: keep the pad characters"},
    {.sName = "sFixedWidthProfile",
     .field = &O::sFixedWidthProfile,
     .bInJob = true,
     .sIfMissing = "Default-Profile",
     .cSwitch = 'P',
     .lMethod = kMethodProfile,
     .sSwitchHelp = "NAME    Profile method, with this profile"},
    {.sName = "bShowStatusMessages",
     .field = &O::bVerbose,
     .bInJob = true,
     .sIfMissing = "FALSE",
     .cSwitch = 'V',
     .sSwitchHelp = "        show messages"},
    {.sName = "sCodePage", .field = &O::sCodePage, .bInJobIfSet = true, .bShapesOutput = true},
    {.sName = "bTrimFields",
     .field = &O::bTrimFields,
     .bShapesOutput = true,
     .serves = Serves::RecipeAndMarkup,
     .sLong = "trim",
     .sLongHelp = "Recipe and Markup: drop the blanks around fields"},
    {.sName = "bSafeCsv",
     .field = &O::bSafeCsv,
     .bShapesOutput = true,
     .serves = Serves::Csv,
     .sLong = "safe-csv",
     .sLongHelp = "Make values harmless that a spreadsheet would run as formulas"},
    {.sName = "bAllPeriods",
     .field = &O::bAllPeriods,
     .bShapesOutput = true,
     .serves = Serves::Specification,
     .sLong = "all-periods",
     .sLongHelp = "With --specification: the rows of every period's file"},
    {.sName = "sEncoding",
     .field = &O::sEncoding,
     .bShapesOutput = true,
     .sLong = "encoding",
     .longValue = LongValue::Encoding,
     .sLongType = "NAME",
     .sLongHelp = "Code page of the input; auto looks at the text"},
    {.sName = "sRecords",
     .field = &O::sRecords,
     .bInJobIfSet = true,
     .sIfMissing = "auto",
     .bShapesOutput = true,
     .sLong = "records",
     .longValue = LongValue::InputChoice,
     .sLongType = "FORM",
     .sLongHelp = "Where the input's lines end: lines, fixed, rdw, blocks; auto looks"},
    {.sName = "lRecordLength",
     .field = &O::lRecordLength,
     .bInJobIfSet = true,
     .sIfMissing = "0",
     .bShapesOutput = true,
     .sLong = "record-length",
     .longValue = LongValue::Number,
     .lMost = 32760,
     .sLongType = "N",
     .sLongHelp = "Length of the input's lines, which have no ends; 0 is unsaid"},
    {.sName = "sCarriageControl",
     .field = &O::sCarriageControl,
     .bInJobIfSet = true,
     .bShapesOutput = true,
     .sLong = "carriage-control",
     .longValue = LongValue::InputChoice,
     .sLongType = "KIND",
     .sLongHelp = "First column of the input: none, asa, machine; auto looks"},
    {.sName = "sPrinterCodes",
     .field = &O::sPrinterCodes,
     .bInJobIfSet = true,
     .sIfMissing = "off",
     .bShapesOutput = true,
     .sLong = "printer-codes",
     .longValue = LongValue::InputChoice,
     .sLongType = "WORD",
     .sLongHelp = "Take out overstrikes and escape sequences: off, on; auto looks"},
    {.sName = "sPages",
     .field = &O::sPages,
     .bInJobIfSet = true,
     .bShapesOutput = true,
     .sLong = "pages",
     .longValue = LongValue::InputChoice,
     .sLongType = "N-M",
     .sLongHelp = "Pages of a PDF, such as 2-5"},
    {.sName = "sLogFile",
     .field = &O::sLogFile,
     .cSwitch = 'L',
     .value = SwitchValue::LogPath,
     .sSwitchHelp = "PATH    log file; [Y] [M] [D] [YMD] [MDY] [H] [I] [S] [HIS] become date and time"},
    {.sName = "sCLBatchJobFile",
     .field = &O::sCLBatchJobFile,
     .cSwitch = 'J',
     .value = SwitchValue::JobPath,
     .sSwitchHelp = "PATH    run this conversion job"},
    {.sName = "bOpenConversionJobOnly",
     .field = &O::sCLBatchJobFile,
     .cSwitch = '!',
     .value = SwitchValue::OpensWindow,
     .sSwitchHelp = "PATH    open this conversion job in the window"},
    {.sName = "Help",
     .cSwitch = '?',
     .value = SwitchValue::Help,
     .sSwitchHelp = "        this list, and the page about it"},
});

}  // namespace

std::span<const Option> OptionTable() {
  return kOptions;
}

std::string_view WhyIgnored(const Option& option, const OptionUse& use) {
  const bool profile = use.lMethod == kMethodProfile;
  const auto unless = [](bool bServes, std::string_view sWhy) { return bServes ? std::string_view() : sWhy; };
  switch (option.serves) {
    case Serves::All:
      return {};
    case Serves::None:
      return "no conversion reads it";
    case Serves::Search:
      return use.sNothingSearched;
    case Serves::EachInput:
      return use.sOneOutput;
    case Serves::Recipe:
      return unless(use.lMethod == kMethodRecipe, "it serves the Recipe method");
    case Serves::Profile:
      return unless(profile, "it serves the Profile method");
    case Serves::RecipeAndMarkup:
      return unless(!profile, "it serves the Recipe and Markup methods");
    case Serves::Csv:
      return unless(!use.bToWorkbook, "it serves CSV output");
    case Serves::ProfileCsv:
      return unless(profile && !use.bToWorkbook, "it serves CSV output of the Profile method");
    case Serves::RecipeWorkbook:
      return unless(!profile && !use.bToCsv, "it serves workbooks of the Recipe and Markup methods");
    case Serves::Specification:
      return unless(use.bSpecification, "it goes with --specification");
  }
  return {};
}

std::string OptionValueText(const Option& option, const clsConversionOptions& options) {
  if (const auto* text = std::get_if<OptionText>(&option.field)) return options.**text;
  if (const auto* number = std::get_if<OptionNumber>(&option.field)) return std::to_string(options.**number);
  if (const auto* truth = std::get_if<OptionTruth>(&option.field)) return options.**truth ? "TRUE" : "FALSE";
  return {};
}

bool IsOptionSet(const Option& option, const clsConversionOptions& options) {
  static const clsConversionOptions kNew;
  const std::string value = OptionValueText(option, options);
  return value != OptionValueText(option, kNew) && value != option.sIfMissing;
}

}  // namespace quillon
