#include "modUsage.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <sstream>

#include "modFiles.h"
#include "modFrontDoor.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kWidth = 80;
constexpr size_t kHelpColumn = 30;

/// Insertions, deletions and changes of a character, an exchange of two neighbours one slip.
size_t Slips(std::string_view a, std::string_view b) {
  std::vector<size_t> before, last(b.size() + 1), row(b.size() + 1);
  std::iota(last.begin(), last.end(), size_t{0});
  for (size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0U : 1U)});
      const bool bSwapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (bSwapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    before = std::exchange(last, row);
  }
  return last[b.size()];
}

/// One line, with the place where more stands: the command's help, or the program's.
int Refuse(const std::string& sText, const std::string& sCommand = {}) {
  const std::string sHelp = "quillon " + (sCommand.empty() ? sCommand : sCommand + " ") + "--help";
  std::fputs(("quillon: " + WithoutControls(sText) + " (see " + sHelp + ")\n").c_str(), stderr);
  return kExitWrongUse;
}

std::vector<std::string> CommandNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* const pCommand : app.get_subcommands({})) names.push_back(pCommand->get_name());
  return names;
}

std::string Meant(const std::string& sNearest) {
  return sNearest.empty() ? std::string() : "; did you mean " + sNearest + "?";
}

/// The options of a command and of its groups, with their dashes; in values those that take one.
void CollectOptions(const CLI::App& command, std::vector<std::string>& names, std::vector<std::string>& values) {
  for (const CLI::Option* const pOption : command.get_options()) {
    std::vector<std::string> own;
    for (const std::string& sName : pOption->get_lnames()) own.push_back("--" + sName);
    for (const std::string& sName : pOption->get_snames()) own.push_back("-" + sName);
    names.insert(names.end(), own.begin(), own.end());
    if (pOption->get_items_expected_max() > 0) values.insert(values.end(), own.begin(), own.end());
  }
  for (const CLI::App* const pGroup : command.get_subcommands({})) {
    if (pGroup->get_name().empty()) CollectOptions(*pGroup, names, values);
  }
}

/// The first word that should be an option and is none; "" if all are known.
std::string UnknownOption(const CLI::App& command, const std::vector<std::string>& words, std::string& sNearest) {
  std::vector<std::string> names, values;
  CollectOptions(command, names, values);
  const auto is_in = [](const std::vector<std::string>& list, const std::string& sWord) {
    return std::find(list.begin(), list.end(), sWord) != list.end();
  };
  for (size_t i = 0; i < words.size() && words[i] != "--"; ++i) {
    const std::string sWord = words[i].substr(0, words[i].find('='));
    if (is_in(values, sWord) && words[i].find('=') == std::string::npos) ++i;
    if (sWord.size() < 2 || sWord.front() != '-' || is_in(names, sWord)) continue;
    const bool bLong = sWord[1] == '-';
    if (!bLong && is_in(names, sWord.substr(0, 2))) continue;  // Short options in one word.
    sNearest = NearestWord(bLong ? sWord : "-" + sWord, names);
    if (sWord == "-V") sNearest = "--version";
    return sWord;
  }
  return {};
}

}  // namespace

std::string NearestWord(std::string_view sWord, const std::vector<std::string>& known) {
  constexpr size_t kMostSlips = 2;
  std::string sNearest;
  size_t nFewest = kMostSlips + 1;
  for (const std::string& sKnown : known) {
    const size_t nSlips = Slips(sWord, sKnown);
    if (nSlips < nFewest && nSlips * 2 < sKnown.size()) {
      nFewest = nSlips;
      sNearest = sKnown;
    }
  }
  return sNearest;
}

int AnswerNoCommand(const CLI::App& app, const std::string& sWord) {
  const std::vector<std::string> names = CommandNames(app);
  if (TrimBlanks(sWord).empty())
    return Refuse("no command is given; one of " + CLI::detail::join(names, ", ") + " is wanted");
  if (IsFile(sWord)) {
    return Refuse(sWord + " is no command; to convert this file: quillon convert " + sWord +
                  " -o OUTPUT --recipe RECIPE (suggest writes a recipe)");
  }
  return Refuse(sWord + " is no command" + Meant(sWord == "help" ? "--help" : NearestWord(sWord, names)));
}

int AnswerParseError(const CLI::App& app, const CLI::ParseError& refused, const std::vector<std::string>& words) {
  std::ostringstream out, err;
  const int nStatus = app.exit(refused, out, err);
  if (nStatus == 0) return PrintToStandardOutput(WrappedHelp(out.str())) ? kExitDone : kExitSomeFailed;
  std::string sNearest;
  for (const CLI::App* const pCommand : app.get_subcommands({})) {
    if (words.empty() || pCommand->get_name() != words.front()) continue;
    const std::string sUnknown = UnknownOption(*pCommand, {words.begin() + 1, words.end()}, sNearest);
    if (!sUnknown.empty()) {
      return Refuse(sUnknown + " is no option of quillon " + words.front() + Meant(sNearest), words.front());
    }
    return Refuse(refused.what(), words.front());
  }
  const std::string sUnknown = UnknownOption(app, {words.begin(), words.begin() + (words.empty() ? 0 : 1)}, sNearest);
  if (!sUnknown.empty()) return Refuse(sUnknown + " is no option of quillon" + Meant(sNearest));
  return Refuse(refused.what());
}

int AnswerWrongUse(const std::string& sText, const std::string& sCommand) {
  return Refuse(sText, sCommand);
}

std::string WrappedHelp(std::string_view sText) {
  std::string sOut;
  while (!sText.empty()) {
    const size_t nEnd = std::min(sText.find('\n'), sText.size());
    std::string sLine(sText.substr(0, nEnd));
    sText.remove_prefix(std::min(nEnd + 1, sText.size()));
    const size_t nLead = std::min(sLine.find_first_not_of(' '), sLine.size());
    const size_t nColumn = kHelpColumn + nLead - 2;  // Groups stand further in.
    const bool bOption = (nLead == 2 || nLead == 4) && sLine.size() > nColumn && sLine[nColumn - 1] == ' ';
    const size_t nIndent = bOption ? nColumn : nLead;
    while (sLine.size() > kWidth) {
      const size_t nBlank = sLine.rfind(' ', kWidth);
      if (nBlank == std::string::npos || nBlank <= nIndent) break;
      sOut.append(TrimRightBlanks(sLine.substr(0, nBlank))).append("\n");
      sLine = std::string(nIndent, ' ') + std::string(TrimLeftBlanks(sLine.substr(nBlank)));
    }
    sOut.append(sLine).append("\n");
  }
  return sOut;
}

bool PrintToStandardOutput(std::string_view sText) {
  const bool bDone = std::fwrite(sText.data(), 1, sText.size(), stdout) == sText.size() && std::fflush(stdout) == 0;
  if (!bDone) std::fputs("quillon: standard output can't be written\n", stderr);
  return bDone;
}

}  // namespace quillon
