#include "modLongOptions.h"

#include <CLI/CLI.hpp>

#include "clsCodePage.h"
#include "modConvertCommand.h"
#include "modFrontDoor.h"
#include "modJobCommand.h"
#include "modLookCommands.h"
#include "modNumbers.h"
#include "modText.h"
#include "modVersion.h"

namespace quillon {

namespace {

constexpr const char* kConvertExamples =
    "Examples:\n"
    "  quillon convert ledger.txt -o ledger.xlsx --recipe ledger.rcp\n"
    "  quillon convert 'in/*.txt' -r -o 'out/*.csv' --profile Default-Profile\n"
    "  quillon convert marked.txt -o marked.csv --markup --delimiter tab\n"
    "  spool | quillon convert - -o - --recipe ledger.rcp > ledger.csv\n"
    "  quillon convert --specification year.rcp -o year.xlsx --all-periods\n"
    "  quillon convert 'in/*.txt' -o 'out/*.csv' --recipe ledger.rcp --shard 2/8 --report 2.jsonl --skip-done\n"
    "\n"
    "With several inputs OUTPUT holds a \"*\", which stands for each input's name; subfolders of a pattern are\n"
    "mirrored under OUTPUT's folder. Exit status: 0 all done, 1 something could not be converted, 2 wrong use,\n"
    "70 unexpected failure, 130 or 143 interrupted.";

constexpr const char* kJobExamples =
    "Examples:\n"
    "  quillon job month-end.QLN\n"
    "  quillon job month-end.QLN --log 'month-end [YMD].log' --quiet";

constexpr const char* kPreviewExamples =
    "Examples:\n"
    "  quillon preview ledger.txt --recipe ledger.rcp\n"
    "  quillon preview ledger.txt --recipe ledger.rcp --table 2 --rows 5\n"
    "  quillon preview staff.txt --profile Default-Profile\n"
    "\n"
    "Below a line that loses something stand ^ under the last character before a cut and ! under what no column\n"
    "takes. Exit status: 0 shown, 1 the table or the report isn't there, 2 wrong use.";

constexpr const char* kCheckExamples =
    "Examples:\n"
    "  quillon check ledger.txt --recipe ledger.rcp\n"
    "  quillon check ledger.txt --recipe ledger.rcp && quillon convert ledger.txt -o ledger.csv --recipe ledger.rcp\n"
    "\n"
    "Exit status: 0 every table is there and nothing of it is lost, 1 something is missing or lost, 2 wrong use.";

constexpr const char* kSuggestExamples =
    "Examples:\n"
    "  quillon suggest ledger.txt -o ledger.rcp\n"
    "  quillon suggest ledger.txt > ledger.rcp\n"
    "\n"
    "The recipe converts as it stands; look at it with preview and check. Exit status: 0 a table was found, 1 none\n"
    "was, 2 wrong use.";

constexpr const char* kMainExamples =
    "Slash switches work as well: quillon '/IC:\\in\\a.txt /OC:\\out\\a.xlsx /RC:\\r\\a.rcp' (list: quillon '/?').\n"
    "With no argument the desktop program opens.\n"
    "\n"
    "Examples:\n"
    "  quillon convert ledger.txt -o ledger.xlsx --recipe ledger.rcp\n"
    "  quillon convert --help";

std::string SetDelimiter(const std::string& sValue, int32_t& lDelimiter) {
  static const std::map<std::string, int32_t> kNames{{"comma", 44}, {"tab", 9},    {"\\t", 9},
                                                     {"bar", 124},  {"pipe", 124}, {"semicolon", 59}};
  const auto named = kNames.find(sValue);
  const auto number = ParseWholeNumber(sValue);
  constexpr int32_t kLargest = 255;
  if (named != kNames.end()) {
    lDelimiter = named->second;
  } else if (sValue.size() == 1 && (sValue[0] < '0' || sValue[0] > '9')) {
    lDelimiter = static_cast<unsigned char>(sValue[0]);
  } else if (number && *number >= 1 && *number <= kLargest) {
    lDelimiter = *number;
  } else {
    return "a character, comma, tab, bar, semicolon, or a character code from 1 to 255 is wanted";
  }
  return {};
}

std::string CheckEncoding(const std::string& sValue) {
  if (EqualNoCase(sValue, "auto") || clsCodePage::Find(sValue) != nullptr) return {};
  return "no such code page: " + sValue + " (auto, UTF-8, windows-1252, cp437, cp850, ISO-8859-1 ...)";
}

void AddTalkOptions(CLI::App& command, TalkRequest& talk) {
  command.add_option("--log", talk.sLog, "Write the run log to this file; [YMD], [HIS] ... become date and time")
      ->type_name("FILE");
  command.add_flag("-q,--quiet", talk.bQuiet, "Print errors only");
  command.add_flag("-v,--verbose", talk.bVerbose, "Account for every file and table");
}

void AddMethodOptions(CLI::App& command, ConvertRequest& request) {
  auto* const method = command.add_option_group("Method", "One of these says how the tables are found and cut");
  method->add_option("--recipe", request.sRecipe, "Recipe method, by this recipe file")->type_name("FILE");
  method->add_flag("--markup", request.bMarkup, "Markup method: the marks stand in the input");
  method->add_option("--profile", request.sProfile, "Profile method, by this profile (name or file)")
      ->type_name("NAME");
  method
      ->add_option("--specification", request.sSpecification,
                   "A long-form recipe, which names its inputs and output itself")
      ->type_name("FILE");
  method->require_option(1);
}

void AddReadingOptions(CLI::App& command, int32_t& lTabSize, bool& bUnix, std::string& sEncoding) {
  command.add_option("--tab-size", lTabSize, "Tab stop of the input; 0 leaves tabs alone")
      ->check(CLI::Range(0, 1000).description(""))
      ->type_name("N")
      ->capture_default_str();
  command.add_flag("--unix", bUnix, "Unix line ends: every CR is dropped");
  command.add_option("--encoding", sEncoding, "Code page of the input; auto looks at the text")
      ->check(CLI::Validator(CheckEncoding, ""))
      ->type_name("NAME")
      ->capture_default_str();
}

CLI::App* AddLookCommand(CLI::App& app, const std::string& sName, const std::string& sWhat, LookRequest& request,
                         const char* sExamples) {
  CLI::App* const command = app.add_subcommand(sName, sWhat);
  command->add_option("INPUT", request.sInput, "The report, or - for standard input")->required()->type_name(" ");
  command->footer(sExamples);
  return command;
}

CLI::App* AddPreview(CLI::App& app, LookRequest& request) {
  CLI::App* const command =
      AddLookCommand(app, "preview", "Show how a table is cut: lines, ruler and cells", request, kPreviewExamples);
  auto* const method = command->add_option_group("Method", "One of these says how the tables are found and cut");
  method->add_option("--recipe", request.sRecipe, "This recipe file")->type_name("FILE");
  method->add_option("--profile", request.sProfile, "This profile (name or file)")->type_name("NAME");
  method->require_option(1);
  command->add_option("--table", request.lTable, "Which table of the recipe")
      ->check(CLI::PositiveNumber.description(""))
      ->type_name("N")
      ->capture_default_str();
  command->add_option("--rows", request.lRows, "How many rows are shown")
      ->check(CLI::Range(1, 100000).description(""))
      ->type_name("N")
      ->capture_default_str();
  AddReadingOptions(*command, request.lTabSize, request.bUnix, request.sEncoding);
  return command;
}

CLI::App* AddCheck(CLI::App& app, LookRequest& request) {
  CLI::App* const command = AddLookCommand(app, "check", "Say what a recipe finds in a report, and what it would lose",
                                           request, kCheckExamples);
  command->add_option("--recipe", request.sRecipe, "The recipe file")->required()->type_name("FILE");
  AddReadingOptions(*command, request.lTabSize, request.bUnix, request.sEncoding);
  return command;
}

CLI::App* AddSuggest(CLI::App& app, LookRequest& request) {
  CLI::App* const command = AddLookCommand(app, "suggest", "Find the tables of a report and write a recipe for them",
                                           request, kSuggestExamples);
  command->add_option("-o,--output", request.sOutput, "The recipe file; standard output if not given")
      ->type_name("FILE");
  AddReadingOptions(*command, request.lTabSize, request.bUnix, request.sEncoding);
  return command;
}

void AddFleetOptions(CLI::App& command, ConvertRequest& request) {
  command
      .add_option_function<std::string>(
          "--shard",
          [&request](const std::string& sValue) {
            request.shard = ParseShard(sValue);
            if (!request.shard) throw CLI::ValidationError("--shard", "I/N is wanted, with I from 1 to N, such as 2/8");
          },
          "Convert the I-th of N parts of the inputs, even by size")
      ->type_name("I/N");
  command.add_option("--report", request.sReport, "Add a line of JSON to this file as each input ends")
      ->type_name("FILE");
  command.add_flag("--skip-done", request.bSkipDone, "Leave out what --report's file shows as done and still is");
}

void AddConvertOptions(CLI::App& command, ConvertRequest& request) {
  command.add_option("INPUT", request.inputs, "Files, quoted patterns, folders, or - for standard input")
      ->type_name(" ");
  command
      .add_option("-o,--output", request.sOutput,
                  "Output file: .csv, .xlsx or .xls; with a * for many; - for CSV on standard output")
      ->type_name("OUTPUT");
  AddMethodOptions(command, request);
  command.add_flag("-r,--recursive", request.bRecursive, "Patterns and folders reach into subfolders");
  command.add_flag("--beside-input", request.bBesideInput, "Write each output beside its input");
  command.add_flag("--no-clear", request.bNoClear, "Keep what the sheet of an existing workbook holds");
  command
      .add_option_function<std::string>(
          "--delimiter",
          [&request](const std::string& sValue) {
            const std::string wrong = SetDelimiter(sValue, request.lDelimiter);
            if (!wrong.empty()) throw CLI::ValidationError("--delimiter", wrong);
          },
          "Separator of CSV: a character, comma, tab, bar, semicolon, or a code")
      ->type_name("CHAR");
  command.add_option("--quote", request.lQuote, "Quotes of CSV by the Profile method: never, sometimes, always")
      ->transform(CLI::CheckedTransformer(std::map<std::string, int32_t>{{"never", 0}, {"sometimes", 1}, {"always", 2}},
                                          CLI::ignore_case)
                      .description(""))
      ->type_name("WORD");
  AddReadingOptions(command, request.lTabSize, request.bUnix, request.sEncoding);
  command.add_flag("--utf16", request.bUtf16, "Profile method: the input is UTF-16");
  command.add_option("--start-cell", request.sStartCell, "Profile method: first cell to gather, such as B4")
      ->type_name("CELL");
  command.add_flag("--as-text", request.bAsText, "Profile method: leave values as text, leading zeros intact");
  command.add_flag("--keep-pad", request.bKeepPad, "Profile method: keep the pad characters");
  command.add_flag("--trim", request.bTrim, "Recipe and Markup: drop the blanks around fields");
  command.add_flag("--safe-csv", request.bSafeCsv, "Make values harmless that a spreadsheet would run as formulas");
  command.add_flag("--all-periods", request.bAllPeriods, "With --specification: the rows of every period's file");
  AddFleetOptions(command, request);
}

bool IsCommand(const CLI::App& app, const std::string& sName) {
  return !app.get_subcommands([&sName](const CLI::App* const pCommand) { return pCommand->get_name() == sName; })
              .empty();
}

std::vector<std::string> GivenOptions(const CLI::App& command) {
  std::vector<std::string> given;
  for (const CLI::Option* const option : command.get_options()) {
    if (option->count() > 0 && !option->get_lnames().empty()) given.push_back(option->get_lnames().front());
  }
  return given;
}

}  // namespace

int RunLongOptions(int argc, char** argv) {
  CLI::App app("Turns printed-report text into CSV, XLS and XLSX.", "quillon");
  app.set_version_flag("--version", "quillon " + std::string(VersionText));
  app.footer(kMainExamples);
  app.require_subcommand(1);
  app.failure_message([](const CLI::App* pApp, const CLI::Error& refused) {
    return "quillon: " + CLI::FailureMessage::simple(pApp, refused);
  });

  ConvertRequest convert_request;
  JobRequest job_request;
  TalkRequest talk;
  CLI::App* const convert = app.add_subcommand("convert", "Convert reports by a recipe, a profile or marks");
  AddConvertOptions(*convert, convert_request);
  AddTalkOptions(*convert, talk);
  convert->footer(kConvertExamples);
  CLI::App* const job = app.add_subcommand("job", "Run a conversion job file (.QLN)");
  job->add_option("FILE", job_request.sJobFile, "The job file")->required()->type_name(" ");
  AddTalkOptions(*job, talk);
  job->footer(kJobExamples);
  LookRequest look;
  const CLI::App* const preview = AddPreview(app, look);
  const CLI::App* const check = AddCheck(app, look);
  const CLI::App* const suggest = AddSuggest(app, look);

  const std::string command = argc > 1 ? argv[1] : "";
  if (!command.empty() && command.front() != '-' && !IsCommand(app, command)) {
    std::fputs(("quillon: " + command + " is no command\nRun with --help for more information.\n").c_str(), stderr);
    return kExitWrongUse;
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& refused) {
    return app.exit(refused) == 0 ? kExitDone : kExitWrongUse;
  }
  if (job->parsed()) return JobCommand(job_request, talk);
  if (preview->parsed()) return PreviewCommand(look);
  if (check->parsed()) return CheckCommand(look);
  if (suggest->parsed()) return SuggestCommand(look);
  convert_request.given = GivenOptions(*convert);
  return ConvertCommand(convert_request, talk);
}

}  // namespace quillon
