#pragma once
// The slash switches. The command line is one text: a switch is "/", one letter and a value that runs up to the next
// "/".

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

#include "clsConversionOptions.h"
#include "clsHost.h"

namespace quillon {

/// Fills the record from the switches, left to right; unknown letters and values that an option refuses are passed
/// over. True: the job is to be run unattended now (gbCommandLineMode is True then, as for all but an empty text).
/// False for an empty text, for "/!" (bOpenConversionJobOnly is set) and for "/?", which opens the command-line page of
/// the help.
bool ParseCommandLine(std::string_view sCommandLine, clsConversionOptions& options, clsHost& host);

/// Whether a switch has this letter, in either case.
bool IsSwitchLetter(char cLetter);

/// Whether ParseCommandLine would answer True, asked before anything is set up.
bool RunsUnattended(std::string_view sCommandLine);
/// Whether it would come to "/!".
bool OpensJobInWindow(std::string_view sCommandLine);

/// Value of the lIndex-th field (from 1), trimmed, without its letter. sLetter gets the field's first character,
/// trimmed; it stays as it was for a field without any character. "" for an index that no field has.
std::string GetArgument(int16_t lIndex, std::string_view sText, std::string_view sDelimiter, std::string& sLetter);
/// Number of delimiter characters plus one.
int16_t CountOccurrences(std::string_view sText, std::string_view sDelimiter);

/// The path with [Y] [M] [D] [YMD] [MDY] [H] [I] [S] [HIS] replaced by the moment's parts.
std::string ExpandDateTimeStamps(std::string_view sPath, std::time_t moment);

/// The log rule: makes the parent folder of the record's sLogFile and expands the stamps in its path.
void ApplyLogRule(clsConversionOptions& options, clsHost& host);

/// One line for each switch, for a reader at a terminal.
std::string SwitchList();
/// Host path of the help page about the command line.
std::string CommandLineHelpPage();

}  // namespace quillon
