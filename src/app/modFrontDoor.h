#pragma once

namespace quillon {

/// Exit statuses of the program. An interrupted run ends with 128 and the signal's number.
enum ExitStatus : int {
  kExitDone = 0,
  kExitSomeFailed = 1,  ///< Something could not be converted; the rest was
  kExitWrongUse = 2,
  kExitIncomplete = 3,  ///< A suggestion leaves lines that look like rows, and that was to be told (--strict)
  kExitUnexpected = 70,
  kExitInterrupted = 128,
};

/// The whole program behind main. Three ways lead on: slash switches (the first argument begins with "/" and is
/// no file's path; all arguments joined by blanks are then the one command text), the
/// long-option commands, and the desktop program, which takes this one's place when there is no argument.
int FrontDoor(int argc, char** argv);

}  // namespace quillon
