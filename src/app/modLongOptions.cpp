#include "modLongOptions.h"

#include <CLI/CLI.hpp>
#include <array>

#include "clsCodePage.h"
#include "clsEbcdicPage.h"
#include "modConvertCommand.h"
#include "modFrontDoor.h"
#include "modInputChoices.h"
#include "modJobCommand.h"
#include "modLookCommands.h"
#include "modNumbers.h"
#include "modOptionTable.h"
#include "modText.h"
#include "modUsage.h"
#include "modVersion.h"
#include "modWatchCommand.h"

namespace quillon {

namespace {

constexpr const char* kConvertExamples =
    "Examples:\n"
    "  quillon convert ledger.txt -o ledger.xlsx --recipe ledger.rcp\n"
    "  quillon convert 'in/*.txt' -r -o 'out/*.csv' --profile Default-Profile\n"
    "  quillon convert marked.txt -o marked.csv --markup --delimiter tab\n"
    "  spool | quillon convert - -o - --recipe ledger.rcp > ledger.csv\n"
    "  quillon convert --specification year.rcp -o year.xlsx --all-periods\n"
    "  quillon convert 'in/*.txt' -o 'out/*.csv' --recipe ledger.rcp \\\n"
    "      --shard 2/8 --report 2.jsonl --skip-done\n"
    "\n"
    "With several inputs OUTPUT holds a \"*\", which stands for each input's name;\n"
    "subfolders of a pattern are mirrored under OUTPUT's folder. Hidden files are no\n"
    "inputs of a folder. Exit status: 0 all done, 1 something could not be converted,\n"
    "2 wrong use, 70 unexpected failure, 130 or 143 interrupted.";

constexpr const char* kJobExamples =
    "Examples:\n"
    "  quillon job month-end.QLN\n"
    "  quillon job month-end.QLN --log 'month-end [YMD].log' --quiet";

constexpr const char* kWatchExamples =
    "Examples:\n"
    "  quillon watch /srv/spool --job /srv/jobs/stock.QLN\n"
    "\n"
    "The job's method and options convert each file that is dropped into FOLDER; its\n"
    "output lies in the folder of the job's sOutputFile, else in FOLDER/done, where\n"
    "the file goes too, or to FOLDER/failed. SIGTERM ends the watch behind the file\n"
    "in hand. Exit status: 0 ended, 1 the job holds a number that is none, 2 wrong\n"
    "use, 70 unexpected failure.";

constexpr const char* kPreviewExamples =
    "Examples:\n"
    "  quillon preview ledger.txt --recipe ledger.rcp\n"
    "  quillon preview ledger.txt --recipe ledger.rcp --table 2 --rows 5\n"
    "  quillon preview staff.txt --profile Default-Profile\n"
    "\n"
    "Below a line that loses something stand ^ under the last character before a cut\n"
    "and ! under what no column takes. Exit status: 0 shown, 1 the table or the\n"
    "report isn't there, 2 wrong use.";

constexpr const char* kCheckExamples =
    "Examples:\n"
    "  quillon check ledger.txt --recipe ledger.rcp\n"
    "  quillon check ledger.txt --recipe ledger.rcp && \\\n"
    "      quillon convert ledger.txt -o ledger.csv --recipe ledger.rcp\n"
    "\n"
    "Exit status: 0 every table is there and nothing of it is lost, 1 something is\n"
    "missing or lost, 2 wrong use.";

constexpr const char* kSuggestExamples =
    "Examples:\n"
    "  quillon suggest ledger.txt -o ledger.rcp\n"
    "  quillon suggest ledger.txt --tables 1,3 --headings none > ledger.rcp\n"
    "\n"
    "The recipe converts as it stands; look at it with preview and check. A file that\n"
    "suggest did not write is replaced with --force alone. Exit status: 0 a table was\n"
    "found, 1 none was, 2 wrong use, 3 with --strict if lines like rows are left.";

constexpr const char* kMainExamples =
    "Slash switches work as well (list: quillon '/?'):\n"
    "  quillon '/IC:\\in\\a.txt /OC:\\out\\a.xlsx /RC:\\r\\a.rcp'\n"
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
  const bool bPage = clsCodePage::Find(sValue) != nullptr || clsEbcdicPage::Find(sValue) != nullptr;
  if (EqualNoCase(sValue, "auto") || bPage) return {};
  return "no such code page: " + sValue + " (auto, UTF-8, windows-1252, cp437, cp850, ISO-8859-1 ...)";
}

void AddTalkOptions(CLI::App& command, TalkRequest& talk) {
  command.add_option("--log", talk.sLog, "Write the run log to this file; [YMD], [HIS] ... become date and time")
      ->type_name("FILE");
  command.add_flag("-q,--quiet", talk.bQuiet, "Print errors only");
  command.add_flag("-v,--verbose", talk.bVerbose, "Account for every file and table");
}

void AddStrictOptions(CLI::App& command, JobRequest& request) {
  command.add_flag("--strict", request.bStrict, "A file that loses something, or whose totals disagree, fails");
  command.add_flag("--keep", request.bKeep, "With --strict: write the output of such a file all the same");
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

std::string SetQuote(const std::string& sValue, int32_t& lQuote) {
  constexpr std::array<std::string_view, 3> kWords{"never", "sometimes", "always"};
  for (size_t i = 0; i < kWords.size(); ++i) {
    const std::string sNumber = std::to_string(i);
    if (!EqualNoCase(sValue, kWords[i]) && sValue != sNumber) continue;
    lQuote = static_cast<int32_t>(i);
    return {};
  }
  return "never, sometimes or always is wanted";
}

void AddNumber(CLI::App& command, const std::string& sName, const std::string& sHelp, const Option& option,
               int32_t& lNumber) {
  const std::string sType(option.sLongType);
  if (option.longValue == LongValue::Number) {
    command.add_option(sName, lNumber, sHelp)
        ->type_name(sType)
        ->check(CLI::Range(0, option.lMost).description(""))
        ->capture_default_str();
    return;
  }
  const auto set = option.longValue == LongValue::Quote ? SetQuote : SetDelimiter;
  const auto take = [sName, set, &lNumber](const std::string& sValue) {
    const std::string wrong = set(sValue, lNumber);
    if (!wrong.empty()) throw CLI::ValidationError(sName, wrong);
  };
  command.add_option_function<std::string>(sName, take, sHelp)->type_name(sType);
}

/// The long option of a row of the table, which sets the row's member.
void AddOption(CLI::App& command, const Option& option, clsConversionOptions& options) {
  const std::string sName =
      (option.cShort != '\0' ? std::string("-") + option.cShort + "," : "") + "--" + std::string(option.sLong);
  const std::string sHelp(option.sLongHelp);
  if (const auto* truth = std::get_if<OptionTruth>(&option.field)) {
    bool& bValue = options.**truth;
    command.add_flag_callback(
        sName, [&bValue, bTurned = !bValue] { bValue = bTurned; }, sHelp);
  } else if (const auto* number = std::get_if<OptionNumber>(&option.field)) {
    AddNumber(command, sName, sHelp, option, options.**number);
  } else if (const auto* text = std::get_if<OptionText>(&option.field)) {
    CLI::Option* const added =
        command.add_option(sName, options.**text, sHelp)->type_name(std::string(option.sLongType));
    if (option.longValue == LongValue::Encoding) {
      added->check(CLI::Validator(CheckEncoding, ""))->default_str("auto");
    } else if (option.longValue == LongValue::InputChoice || option.longValue == LongValue::OutputChoice) {
      const auto check = [sMember = option.sName](const std::string& s) { return WhyNoInputChoice(sMember, s); };
      added->check(CLI::Validator(check, ""));
    }
  }
}

/// How a report is read.
void AddReadingOptions(CLI::App& command, clsConversionOptions& options) {
  for (const Option& option : OptionTable()) {
    const bool bReading = option.longValue == LongValue::InputChoice || option.longValue == LongValue::Encoding ||
                          option.sLong == "record-length" || option.sLong == "tab-size" || option.sLong == "unix";
    if (bReading) AddOption(command, option, options);
  }
}

CLI::App* AddLookCommand(CLI::App& app, const std::string& sName, const std::string& sWhat, LookRequest& request,
                         const char* sExamples) {
  CLI::App* const command = app.add_subcommand(sName, sWhat);
  command->add_option("INPUT", request.sInput, "The report, or - for standard input")->type_name(" ");
  command->footer(sExamples);
  return command;
}

void AddSpecification(CLI::Option_group& method, LookRequest& request) {
  method
      .add_option("--specification", request.sSpecification, "This long-form recipe; INPUT stands for its first file")
      ->type_name("FILE");
}

CLI::App* AddPreview(CLI::App& app, LookRequest& request) {
  CLI::App* const command =
      AddLookCommand(app, "preview", "Show how a table is cut: lines, ruler and cells", request, kPreviewExamples);
  auto* const method = command->add_option_group("Method", "One of these says how the tables are found and cut");
  method->add_option("--recipe", request.sRecipe, "This recipe file")->type_name("FILE");
  method->add_flag("--markup", request.bMarkup, "The marks in the report");
  method->add_option("--profile", request.sProfile, "This profile (name or file)")->type_name("NAME");
  AddSpecification(*method, request);
  method->require_option(1);
  command->add_option("--table", request.lTable, "Which table of the recipe")
      ->check(CLI::Range(1, 100000).description(""))
      ->type_name("N")
      ->capture_default_str();
  command->add_option("--rows", request.lRows, "How many rows are shown")
      ->check(CLI::Range(1, 100000).description(""))
      ->type_name("N")
      ->capture_default_str();
  AddReadingOptions(*command, request.options);
  return command;
}

CLI::App* AddCheck(CLI::App& app, LookRequest& request) {
  CLI::App* const command = AddLookCommand(app, "check", "Say what a recipe finds in a report, and what it would lose",
                                           request, kCheckExamples);
  auto* const method = command->add_option_group("Method", "One of these says how the tables are found and cut");
  method->add_option("--recipe", request.sRecipe, "This recipe file")->type_name("FILE");
  method->add_flag("--markup", request.bMarkup, "The marks in the report");
  AddSpecification(*method, request);
  method->require_option(1);
  command->add_option("--html", request.sHtml, "Show the report, line by line, in this page for a browser")
      ->type_name("FILE");
  command->add_flag("--lines", request.bLines, "All shapes of lines that are in no table, and all printed totals");
  AddReadingOptions(*command, request.options);
  return command;
}

CLI::App* AddSuggest(CLI::App& app, LookRequest& request) {
  CLI::App* const command = AddLookCommand(app, "suggest", "Find the tables of a report and write a recipe for them",
                                           request, kSuggestExamples);
  command->get_option("INPUT")->required();
  command->add_option("-o,--output", request.sOutput, "The recipe file; standard output if not given")
      ->type_name("FILE");
  command
      ->add_option("--tables", request.tables,
                   "Numbers of the tables that are wanted; else those that leave little doubt")
      ->delimiter(',')
      ->check(CLI::Range(1, 100000).description(""))
      ->type_name("N,...");
  command
      ->add_option("--headings", request.sHeadings, "Headings of groups as columns: all, none, or those that hold TEXT")
      ->type_name("TEXT")
      ->capture_default_str();
  command->add_flag("--strict", request.bStrict, "Exit status 3 if lines that look like rows are left");
  command->add_flag("--today", request.bToday, "Sections between key texts, without names, types or headings");
  command->add_flag("--force", request.bForce, "Replace a file that suggest did not write");
  AddReadingOptions(*command, request.options);
  return command;
}

CLI::App* AddWatch(CLI::App& app, WatchRequest& request) {
  CLI::App* const command = app.add_subcommand("watch", "Convert what is dropped into a folder, until told to end");
  command->add_option("FOLDER", request.sFolder, "The watched folder")->required()->type_name(" ");
  command->add_option("--job", request.sJobFile, "The job file (.QLN)")->required()->type_name("FILE");
  command->add_option("--report", request.sList, "Result list; FOLDER/done/results.jsonl if not given")
      ->type_name("FILE");
  command->add_option("--settle", request.dSettle, "Seconds without a change after which a file is taken")
      ->check(CLI::Range(0.0, 86400.0).description(""))
      ->type_name("N")
      ->capture_default_str();
  command->footer(kWatchExamples);
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
  for (const Option& option : OptionTable()) {
    if (!option.sLong.empty()) AddOption(command, option, request.options);
  }
  AddFleetOptions(command, request);
}

bool IsCommand(const CLI::App& app, const std::string& sName) {
  return !app.get_subcommands([&sName](const CLI::App* const pCommand) { return pCommand->get_name() == sName; })
              .empty();
}

/// The option of a method whose name is empty; "" if there is none.
std::string EmptyMethod(const CLI::App& command) {
  for (const std::string sOption : {"--recipe", "--profile", "--specification"}) {
    const CLI::Option* const pOption = command.get_option_no_throw(sOption);
    if (pOption != nullptr && pOption->count() > 0 && pOption->results().front().empty()) return sOption;
  }
  return {};
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
  ConvertRequest convert_request;
  JobRequest job_request;
  TalkRequest talk;
  CLI::App* const convert = app.add_subcommand("convert", "Convert reports by a recipe, a profile or marks");
  AddConvertOptions(*convert, convert_request);
  AddTalkOptions(*convert, talk);
  convert->footer(kConvertExamples);
  CLI::App* const job = app.add_subcommand("job", "Run a conversion job file (.QLN)");
  job->add_option("FILE", job_request.sJobFile, "The job file")->required()->type_name(" ");
  AddStrictOptions(*job, job_request);
  AddTalkOptions(*job, talk);
  job->footer(kJobExamples);
  WatchRequest watch_request;
  CLI::App* const watch = AddWatch(app, watch_request);
  AddTalkOptions(*watch, talk);
  LookRequest look;
  const CLI::App* const preview = AddPreview(app, look);
  const CLI::App* const check = AddCheck(app, look);
  const CLI::App* const suggest = AddSuggest(app, look);

  const std::string command = argc > 1 ? argv[1] : "";
  if (!command.starts_with('-') && !IsCommand(app, command)) return AnswerNoCommand(app, command);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& refused) {
    return AnswerParseError(app, refused, {argv + 1, argv + argc});
  }
  if (job->parsed()) return JobCommand(job_request, talk);
  if (watch->parsed()) return WatchCommand(watch_request, talk);
  for (const CLI::App* const pLook : {preview, check}) {
    const std::string sOption = EmptyMethod(*pLook);
    if (!sOption.empty()) return AnswerWrongUse("the name behind " + sOption + " is empty", pLook->get_name());
  }
  if (preview->parsed()) return PreviewCommand(look);
  if (check->parsed()) return CheckCommand(look);
  if (suggest->parsed()) return SuggestCommand(look);
  convert_request.given = GivenOptions(*convert);
  return ConvertCommand(convert_request, talk);
}

}  // namespace quillon
