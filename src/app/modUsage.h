#pragma once
// What is answered to a command line that can't be understood.

#include <CLI/CLI.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// The known word that a mistyped one is nearest to, within two slips; "" if none is near.
std::string NearestWord(std::string_view sWord, const std::vector<std::string>& known);

/// The first word names no command: says so, with what may have been meant. Returns the exit status.
int AnswerNoCommand(const CLI::App& app, const std::string& sWord);
/// Prints the help or version that was asked for, or says what is wrong. Returns the exit status.
int AnswerParseError(const CLI::App& app, const CLI::ParseError& refused, const std::vector<std::string>& words);

/// A use of a command that its options alone don't show to be wrong. Returns the exit status.
int AnswerWrongUse(const std::string& sText, const std::string& sCommand);

/// The help with no line of more than 80 characters: what is longer goes on under its own beginning.
std::string WrappedHelp(std::string_view sText);
/// False, told on standard error, if it could not be written whole.
bool PrintToStandardOutput(std::string_view sText);

}  // namespace quillon
