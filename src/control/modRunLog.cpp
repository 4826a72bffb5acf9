#include "modRunLog.h"

#include <array>
#include <utility>

#include "modFiles.h"
#include "modRecipeMessages.h"
#include "modSettings.h"
#include "modSystemIo.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

/// What an entry says behind its headline, as LF lines.
std::string TextOf(const ReportEntry& entry) {
  std::string sText = entry.sErr2.empty() ? entry.sErr1 : entry.sErr2;
  if (!entry.sErr3.empty()) sText.append("\n").append(entry.sErr3);
  return ReplaceAll(ReplaceAll(sText, "%lf%", "\n"), "\r\n", "\n");
}

}  // namespace

bool clsRunLog::Report(const ReportEntry& entry) {
  options_.lErr = entry.lErr;
  options_.sErr1 = entry.sErr1;
  options_.sErr2 = entry.sErr2;
  options_.sErr3 = entry.sErr3;
  const bool logged = LogAddEntry(entry.type, entry.bShowMessageBox);
  if (pOutcome_ == nullptr || entry.type == EntryType::Other) return logged;
  if (logged) {
    pOutcome_->reasons.push_back({entry.type, entry.lErr, TextOf(entry), {}, entry.sCause, true});
  } else if (!entry.sCause.empty() && !pOutcome_->TellsOf(entry.sCause)) {
    pOutcome_->reasons.push_back({entry.type, entry.lErr, entry.sCause, {}, entry.sCause, false});
  }
  return logged;
}

bool clsRunLog::AlreadyReported() {
  if (options_.lErr == kLeadingEqualSign) return std::exchange(bToldOfEqualSign_, true);
  if (options_.lErr == kCellsFailed) return std::exchange(bToldOfCells_, true);
  return false;
}

bool clsRunLog::LogAddEntry(EntryType type, bool bShowMessageBox) {
  if (AlreadyReported()) return false;
  if (type == EntryType::Warning) ++lWarningCount;
  if (type == EntryType::Error) {
    ++lErrorCount;
    if (!firstError_) firstError_ = {options_.lErr, options_.sErr1, options_.sErr2, options_.sErr3};
  }
  // With windows the reporter decides, unattended the job does.
  if (gbCommandLineMode ? options_.bVerbose : bShowMessageBox) ShowEntry();
  if (!options_.sErr1.empty()) LogAddEntryHelper("!!!!!!!!!! " + options_.sErr1);
  if (!options_.sErr2.empty()) LogAddEntryHelper(std::string(kLogIndent) + options_.sErr2);
  if (!options_.sErr3.empty()) LogAddEntryHelper(std::string(kLogIndent) + options_.sErr3);
  options_.sErr1.clear();
  options_.sErr2.clear();
  options_.sErr3.clear();
  return true;
}

void clsRunLog::ShowEntry() {
  std::string text = options_.sErr2;
  text.append(kLineEnd).append(kLineEnd).append(options_.sErr3);
  host_.ShowMessage(text, options_.sErr1, MessageIcon::Information, MessageButtons::Ok);
}

void clsRunLog::LogAddEntryHelper(std::string_view sAddString) {
  const size_t before = sText_.size();
  if (before > 0) sText_.append(kLineEnd);
  sText_.append(ReplaceAll(sAddString, "%lf%", kLineEnd));
  if (pView_ != nullptr) pView_->LogAppended(std::string_view(sText_).substr(before));
}

void clsRunLog::LogAddText(std::string_view sAddString) {
  LogAddEntryHelper(sAddString);
  if (options_.bVerbose && gbCommandLineMode) {
    host_.ShowMessage(sAddString, Translate("Command Line: Messages Enabled"), MessageIcon::Information,
                      MessageButtons::Ok);
  }
}

void clsRunLog::LogClear(bool bAddTimeStamp) {
  sText_ = bAddTimeStamp ? TranslateIfKnown(LogTimeStamp(host_.Now())) : std::string();
  ForgetWhatIsSaidOnce();
  firstError_.reset();
  options_.sErr1.clear();
  options_.sErr2.clear();
  options_.sErr3.clear();
  options_.lErr = 0;
  if (pView_ != nullptr) pView_->LogReplaced(sText_);
}

namespace {
constexpr std::string_view kStampBegins = "Quillon Log [";
}

bool MayBecomeLog(std::string_view sPath) {
  int64_t nBytes = 0;
  Failure ignored;  // What can't be read the writing tells of.
  const int nHandle = OpenOrdinaryFile(sPath, nBytes, ignored);
  if (nHandle < 0) return true;
  std::array<char, kStampBegins.size()> start{};
  const int64_t nGot = ReadHandleAt(nHandle, start.data(), start.size(), 0);
  CloseHandle(nHandle);
  const std::string_view sStart(start.data(), nGot > 0 ? static_cast<size_t>(nGot) : 0);
  // A run that was refused before it began leaves a log of a line end alone.
  return sStart == kStampBegins || sStart.find_first_not_of(kLineEnd) == std::string_view::npos;
}

std::string LogTimeStamp(std::time_t moment) {
  std::tm parts{};
  localtime_r(&moment, &parts);
  std::array<char, 128> stamp{};
// The locale's short form is wanted, whatever it makes of the year.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-y2k"
  const size_t length = std::strftime(stamp.data(), stamp.size(), "%x %X", &parts);
#pragma GCC diagnostic pop
  return std::string(kStampBegins) + std::string(stamp.data(), length) + "]";
}

}  // namespace quillon
