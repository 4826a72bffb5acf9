#pragma once
// The options of a conversion, one row each. Slash switches, long options, job file, the notes on what has no effect
// and the fingerprint of a result list walk this table, so that an option stands in none of them by itself.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "clsConversionOptions.h"

namespace quillon {

using OptionText = std::string clsConversionOptions::*;
using OptionNumber = int32_t clsConversionOptions::*;
using OptionTruth = bool clsConversionOptions::*;

/// What a slash switch does with its value. A switch of a truth has none: it turns the default of a new record over.
enum class SwitchValue {
  AsItIs,       ///< Quotes removed; a number by its whole value
  InputPath,    ///< A name alone lies in the program's folder
  OutputPath,   ///< A name alone lies in the data folder
  LogPath,      ///< The same; its folder is made and stamps are expanded
  JobPath,      ///< A name alone is looked for in the current folder, then in the program's
  OpensWindow,  ///< The same; ends the parse: the job is opened, not run
  Help,         ///< Ends the parse; no option
};

/// Which conversions look at an option.
enum class Serves {
  All,
  Search,     ///< Inputs that are searched
  EachInput,  ///< Conversions with an output for each input
  Recipe,
  Profile,
  RecipeAndMarkup,
  Csv,
  ProfileCsv,
  Workbook,
  Specification,
};

/// How a long option's value is checked and read. A flag turns the default over.
enum class LongValue { Flag, Text, Number, Delimiter, Quote, Encoding, InputChoice, OutputChoice };

struct Option {
  /// Name of the member, and its key in a job file.
  std::string_view sName;
  std::variant<std::monostate, OptionText, OptionNumber, OptionTruth> field{};
  bool bInJob = false;
  bool bInJobIfSet = false;       ///< A job file keeps it where it isn't that of a new record
  std::string_view sIfMissing{};  ///< Value of a job file without the key; a new record's stands at the member
  bool bShapesOutput = false;     ///< Other values may make other outputs of the same recipe
  Serves serves = Serves::All;
  char cSwitch = '\0';
  SwitchValue value = SwitchValue::AsItIs;
  int32_t lMethod = -1;            ///< The method that the switch chooses
  std::string_view sSwitchHelp{};  ///< "PATH    what it is", behind the letter
  std::string_view sLong{};        ///< "tab-size", or "recursive" with its letter in cShort
  char cShort = '\0';
  LongValue longValue = LongValue::Flag;
  int32_t lMost = 1000;  ///< Of Number
  std::string_view sLongType{};
  std::string_view sLongHelp{};
};

/// In the order of a job file's keys, what stands in none behind them.
std::span<const Option> OptionTable();

/// What a run is, as far as options may have no effect in it.
struct OptionUse {
  int32_t lMethod = kMethodRecipe;
  bool bToCsv = false;
  bool bToWorkbook = false;
  bool bSpecification = false;
  std::string_view sNothingSearched;  ///< Why no input is searched; "" if one is
  std::string_view sOneOutput;        ///< Why there is no output for each input; "" if there is
};
/// Why the option does nothing in such a run; "" if it does.
std::string_view WhyIgnored(const Option& option, const OptionUse& use);

/// The member's value: a text as it is, a number in digits, TRUE or FALSE.
std::string OptionValueText(const Option& option, const clsConversionOptions& options);
/// Whether the value is neither that of a new record nor that of a job file without the key.
bool IsOptionSet(const Option& option, const clsConversionOptions& options);

}  // namespace quillon
