#include "clsLongRun.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <new>

#include "MainModule.h"
#include "clsIniFile.h"
#include "clsOutputFile.h"
#include "modFiles.h"
#include "modFrontDoor.h"
#include "modNumbers.h"
#include "modParseCommandLine.h"
#include "modPaths.h"
#include "modProofText.h"
#include "modReportText.h"
#include "modSettings.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

std::string Counted(int64_t lCount, std::string_view sOne, std::string_view sMany) {
  return fmt::format("{} {}", lCount, lCount == 1 ? sOne : sMany);
}

/// What the account of lines, characters and totals has beyond what each closing line tells.
std::string ProofText(const ReportProof& proof) {
  ReportProof other = proof;
  other.loss.lBehind = 0;
  const bool lines = std::any_of(proof.lines.begin(), proof.lines.end(), [](int64_t n) { return n > 0; });
  std::string text;
  for (const std::string& part :
       {lines ? LineKindsText(proof.lines) : std::string(), LossText(other), DoubtText(other), TotalsText(proof)}) {
    if (!part.empty()) text += part + "; ";
  }
  return text;
}

}  // namespace

void RunTotals::Add(const FileOutcome& outcome) {
  if (outcome.status == FileStatus::Skipped) ++lFilesSkipped;
  if (outcome.status == FileStatus::Failed) ++lFilesFailed;
  if (outcome.status == FileStatus::Converted) ++lFilesConverted;
  const FileAccount& account = outcome.account;
  lTables += static_cast<int64_t>(account.tables.size());
  lLinesRead += account.lLinesRead;
  lLinesInTables += account.lLinesInTables;
  lCellsFailed += account.lCellsFailed;
  lCharactersLost += account.lCharactersLost;
  lFormulasRefused += account.lFormulasRefused;
  proof.Add(account.proof);
  for (const TableAccount& table : account.tables) proof.loss.Add(table.loss);
}

clsLongRun::clsLongRun(const TalkRequest& talk)
    : host(talk.bQuiet ? clsConsoleHost::Voice::ErrorsOnly : clsConsoleHost::Voice::AllEntries),
      log(host, gConversionOptions),
      reportNotes(ReportNotes),
      talk_(talk) {
  host.AttachLog(log);
  ResetConversionOptions();
  SetPathsForReading();
  // The engine's work files need a place even where there is no home, or one that only can be read.
  if (access(HostPath(gsAppDataFolder).c_str(), W_OK) != 0) gsAppDataFolder = privateFolder.PathOf("");
  // A language is used if the desktop program chose one; none is chosen here.
  if (!GetLanguage().empty()) InitializeTranslator(host, {});
  gbCommandLineMode = true;
  ReportInput().bFindKinds = true;
  if (!talk.sLog.empty()) {
    gConversionOptions.sLogFile = ExpandDateTimeStamps(AbsolutePath(ExpandedPath(talk.sLog)), host.Now());
    MakeFolderPath(ParentFolderOfPath(gConversionOptions.sLogFile));
  }
  TakeUpTabHint();
  lStart_ = host.TickMilliseconds();
  CatchInterrupts();
  if (!talk.bQuiet) host.StartProgress();
}

clsLongRun::~clsLongRun() {
  host.StopProgress();
  ResetReportInput();
  ResetTranslator();
}

/// The hint comes once in the life of an installation, whichever program gives it; the settings stay as they are.
void clsLongRun::TakeUpTabHint() {
  if (access(HostPath(gsDataFolder).c_str(), W_OK) == 0) sTabsTold_ = gsDataFolder + "/_TabsTold";
  fields.bWarnedAboutTabsInFile =
      (!sTabsTold_.empty() && IsFile(sTabsTold_)) ||
      EqualNoCase(GetPrivateProfileString(gsSettingsFile, "General", "bWarnedAboutTabsInFile", "FALSE"), "TRUE");
  if (fields.bWarnedAboutTabsInFile) host.PrintNoTabHint();
}

void clsLongRun::TabsTold() {
  if (talk_.bQuiet) return;  // Nobody has seen it.
  host.PrintNoTabHint();
  Failure ignored;  // It comes once more then.
  if (!sTabsTold_.empty()) WriteWholeFile(sTabsTold_, "", ignored);
}

RunExtras clsLongRun::Extras() {
  RunExtras extras;
  extras.bTouchSettings = false;
  extras.tabsTold = [this] { TabsTold(); };
  extras.bSayMore = true;
  extras.bSheetTarget = true;
  extras.fileBegins = [this](size_t nFile, size_t nFiles, const std::string& sInput) {
    host.SetFilePlace(nFile, nFiles, Printed(sInput));
  };
  extras.fileDone = [this](const FileOutcome& outcome) { FileDone(outcome); };
  return extras;
}

void clsLongRun::Say(std::string_view sText) {
  host.Say("quillon: " + std::string(sText));
  log.LogAddEntryHelper(std::string(kLogIndent) + std::string(sText));
}

void clsLongRun::Note(std::string_view sText) {
  const std::string note = "note: " + std::string(sText);
  if (!talk_.bQuiet) host.Say("quillon: " + note);
  log.LogAddEntryHelper(std::string(kLogIndent) + note);
}

void clsLongRun::NoteIgnored(std::string_view sName, std::string_view sWhy) {
  if (!sWhy.empty()) Note(std::string(sName) + " has no effect here: " + std::string(sWhy));
}

std::string clsLongRun::Shown(const std::string& sPath) {
  if (sPath == privateFolder.InputFile()) return "standard input";
  return sPath == privateFolder.OutputFile() ? "standard output" : sPath;
}

std::string clsLongRun::Printed(const std::string& sPath) {
  return WithoutControls(Shown(sPath));
}

std::string clsLongRun::Said(const FileReason& reason) {
  return reason.sPlace.empty() ? reason.sText : Printed(reason.sPlace) + ": " + reason.sText;
}

void clsLongRun::Skip(const PlannedFile& file) {
  FileOutcome outcome;
  outcome.sInput = file.sInput;
  outcome.sOutput = file.sOutput;
  outcome.status = FileStatus::Skipped;
  totals.Add(outcome);
}

void clsLongRun::FileDone(const FileOutcome& outcome) {
  if (outcome.status == FileStatus::Stopped) return;
  totals.Add(outcome);
  for (const FileReason& reason : outcome.reasons) {
    if (reason.bLogged) continue;
    Say(Said(reason));
  }
  if (outcome.account.bOutputWritten) {
    for (const std::string& sName : outcome.account.namesRefused) Note(sName);
    for (const std::string& sNote : outcome.account.workbookNotes) Note(Printed(outcome.sOutput) + ": " + sNote);
  }
  for (const std::string& sNote : reportNotes(outcome.sInput)) Note(Printed(outcome.sInput) + ": " + sNote);
  if (talk_.bVerbose) SayAccount(outcome);
}

void clsLongRun::SayAccount(const FileOutcome& outcome) {
  const FileAccount& account = outcome.account;
  const bool bConverted = outcome.status == FileStatus::Converted;
  host.Say(fmt::format("{} -> {}: {}; {} read, {} in tables, {} outside", Printed(outcome.sInput),
                       Printed(outcome.sOutput), bConverted ? "converted" : "not converted",
                       Counted(account.lLinesRead, "line", "lines"), account.lLinesInTables,
                       account.lLinesRead - account.lLinesInTables));
  for (const TableAccount& table : account.tables) {
    host.Say(fmt::format(
        "    table {}: lines {} to {}, {}, {}, {} behind the last column, {} failed", table.lTable, table.lFirstLine,
        table.lLastLine, Counted(table.lRows, "row", "rows"), Counted(table.lColumns, "column", "columns"),
        Counted(table.loss.lBehind, "character", "characters"), Counted(table.lCellsFailed, "cell", "cells")));
  }
}

std::string clsLongRun::ClosingLine() {
  constexpr double kMillisecond = 0.001;
  const std::string skipped =
      totals.lFilesSkipped > 0 ? fmt::format(", {} done before", totals.lFilesSkipped) : std::string();
  std::string line = fmt::format(
      "{} converted, {} failed{}; {}; {} read, {} in tables, {} outside; {} behind the last column; {} failed; ",
      Counted(totals.lFilesConverted, "file", "files"), totals.lFilesFailed, skipped,
      Counted(totals.lTables, "table", "tables"), Counted(totals.lLinesRead, "line", "lines"), totals.lLinesInTables,
      totals.lLinesRead - totals.lLinesInTables, Counted(totals.proof.loss.lBehind, "character", "characters"),
      Counted(totals.lCellsFailed, "cell", "cells"));
  line += ProofText(totals.proof);
  if (totals.lCharactersLost > 0) {
    line += Counted(totals.lCharactersLost, "character", "characters") + " that the output's code page lacks; ";
  }
  if (totals.lFormulasRefused > 0) {
    line += Counted(totals.lFormulasRefused, "formula", "formulas") + " written as text; ";
  }
  const auto elapsed = static_cast<double>(host.TickMilliseconds() - lStart_);
  return line + FormatOneDecimal(elapsed * kMillisecond) + " seconds";
}

bool clsLongRun::CheckLog() {
  std::string& sLog = gConversionOptions.sLogFile;
  if (sLog.empty() || MayBecomeLog(sLog)) return true;
  Say(WithoutControls(sLog) + ": this file is no log of an earlier run and stays as it is; choose another log");
  sLog.clear();
  return false;
}

/// The name may have become that of an output or of the result list meanwhile.
void clsLongRun::WriteLog() {
  if (!CheckLog()) return FailBeside();
  if (gConversionOptions.sLogFile.empty()) return;
  Failure failure;
  if (WriteLogFile(gConversionOptions, log, failure)) return;
  Say(failure.sText);
  FailBeside();
}

int clsLongRun::Guarded(const std::function<int()>& body) {
  try {
    return body();
  } catch (const UnhandledFailure& failure) {
    Say(failure.what());
    ++totals.lFilesFailed;
    return Finish();
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& failure) {
    host.StopProgress();
    Say(std::string("unexpected failure: ") + failure.what());
    WriteLog();
    return kExitUnexpected;
  }
}

int clsLongRun::Finish() {
  host.StopProgress();
  const int signal = InterruptSignal();
  if (signal != 0) {
    Say("interrupted; what was not complete is not written");
  }
  const std::string closing = ClosingLine();
  log.LogAddEntryHelper(closing);
  if (!talk_.bQuiet) host.Say("quillon: " + closing);
  WriteLog();
  if (signal != 0) return kExitInterrupted + signal;
  const bool whole = !bFailedBeside_ && totals.lFilesFailed == 0;
  return whole ? kExitDone : kExitSomeFailed;
}

int clsLongRun::Refused() {
  host.StopProgress();
  log.LogAddEntryHelper("Refused: nothing was converted.");
  WriteLog();
  return InterruptSignal() != 0 ? kExitInterrupted + InterruptSignal() : kExitWrongUse;
}

}  // namespace quillon
