#include "modExcelLink.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <string>
#include <utility>

#include "clsFailedWorkbook.h"
#include "clsTargetedWorkbook.h"
#include "clsXlsWorkbook.h"
#include "clsXlsxEditor.h"
#include "clsXlsxWorkbook.h"
#include "modNumbers.h"
#include "modOutputMessages.h"
#include "modPaths.h"
#include "modText.h"

namespace quillon {

namespace {

enum class FileContent { Nothing, Xlsx, Xls, Other };

std::unique_ptr<clsWorkbook> Refused(Failure failure) {
  return std::make_unique<clsFailedWorkbook>(std::move(failure));
}

/// By the first bytes: a zip package, a compound file or anything else.
FileContent ContentOf(const std::string& sHostPath, Failure& failure) {
  std::FILE* file = std::fopen(sHostPath.c_str(), "rb");
  if (file == nullptr) {
    failure = SystemFailure(sHostPath, errno);
    return FileContent::Other;
  }
  std::array<char, 8> head{};
  const size_t nRead = std::fread(head.data(), 1, head.size(), file);
  std::fclose(file);
  const std::string_view sHead(head.data(), nRead);
  if (sHead.empty()) return FileContent::Nothing;
  if (sHead.starts_with("PK\3\4")) return FileContent::Xlsx;
  if (sHead == "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1") return FileContent::Xls;
  return FileContent::Other;
}

/// The file by which a spreadsheet program says that it has this one open; "" if there is none.
std::string LockFileOf(const std::string& sHostPath) {
  const size_t nName = BehindLastSeparator(sHostPath);
  const std::string sFolder = sHostPath.substr(0, nName), sName = sHostPath.substr(nName);
  for (const std::string& sLock : {sFolder + ".~lock." + sName + "#", sFolder + "~$" + sName})
    if (access(sLock.c_str(), F_OK) == 0) return sLock;
  return {};
}

std::unique_ptr<clsWorkbook> OpenExisting(const std::string& sHostPath, int32_t lFormat,
                                          const WorkbookOptions& options) {
  Failure failure;
  if (const std::string sLock = LockFileOf(sHostPath); !sLock.empty())
    return Refused(OutputFailure(sLock, OutputMessage::OpenElsewhere));
  const FileContent content = ContentOf(sHostPath, failure);
  if (failure.Failed()) return Refused(std::move(failure));
  if (content == FileContent::Nothing) return Refused(OutputFailure(sHostPath, OutputMessage::EmptyFile));
  if (content == FileContent::Other) return Refused(OutputFailure(sHostPath, OutputMessage::NotAWorkbook));
  if (content == FileContent::Xlsx && lFormat != kFormatXlsx)
    return Refused(OutputFailure(sHostPath, OutputMessage::IsXlsxNotXls));
  if (content == FileContent::Xls && lFormat != kFormatXls)
    return Refused(OutputFailure(sHostPath, OutputMessage::IsXlsNotXlsx));
  auto workbook = content == FileContent::Xlsx ? OpenXlsxWorkbook(sHostPath, options, failure)
                                               : OpenXlsWorkbook(sHostPath, options, failure);
  return workbook != nullptr ? std::move(workbook) : Refused(std::move(failure));
}

/// By name, then by number; one that isn't there is made. 0 with the reason.
int MainSheet(clsWorkbook& workbook, std::string_view sSheet, Failure& failure) {
  const int nSheets = workbook.SheetCount();
  const bool bNamed = [&] {
    for (int n = 1; n <= nSheets; ++n)
      if (EqualNoCase(workbook.SheetName(n), sSheet)) return true;
    return false;
  }();
  const auto lNumber = ParseWholeNumber(sSheet);
  if (!bNamed && lNumber && *lNumber >= 1 && *lNumber <= nSheets) return *lNumber;
  if (bNamed || workbook.IsExisting()) return workbook.SheetNamed(sSheet, failure);
  return workbook.SetSheetName(1, sSheet, failure) ? 1 : 0;
}

/// The workbook as the options want it.
std::unique_ptr<clsWorkbook> Targeted(std::unique_ptr<clsWorkbook> workbook, const WorkbookOptions& options) {
  if (workbook->WhyRefused().Failed()) return workbook;
  Failure failure;
  int nMain = 1;
  if (!options.sSheet.empty()) nMain = MainSheet(*workbook, options.sSheet, failure);
  if (nMain == 0) return Refused(std::move(failure));
  if (options.bNoOverwrite && workbook->ContentOf(nMain).nFilled > 0)
    return Refused(OutputFailure(workbook->SheetName(nMain), OutputMessage::WouldOverwrite));
  if (nMain != 1 && !workbook->IsExisting()) workbook->ActivateSheet(nMain);
  const bool bNamed = !options.sSheet.empty();
  if (!bNamed && !options.bBackup) return workbook;
  return std::make_unique<clsTargetedWorkbook>(std::move(workbook), nMain, bNamed, options.bBackup);
}

/// A new workbook, which takes the place of a file that is there.
std::unique_ptr<clsWorkbook> NewInPlaceOf(const std::string& sHostPath, bool bExists, int32_t lFormat,
                                          const WorkbookOptions& options) {
  if (bExists && options.bNoOverwrite) return Refused(OutputFailure(sHostPath, OutputMessage::FileIsThere));
  if (const std::string sLock = LockFileOf(sHostPath); bExists && !sLock.empty())
    return Refused(OutputFailure(sLock, OutputMessage::OpenElsewhere));
  return Targeted(NewExcelWorkbook(lFormat, options), options);
}

/// A file that replaces another is made beside it first.
bool FolderTakesFiles(const std::string& sHostPath, Failure& failure) {
  const std::string sFolder = sHostPath.substr(0, BehindLastSeparator(sHostPath));
  const char* const folder = sFolder.empty() ? "." : sFolder.c_str();
  if (access(folder, F_OK) != 0) {
    failure = OutputFailure(sHostPath, OutputMessage::NoFolder);
  } else if (access(folder, W_OK | X_OK) != 0) {
    failure = SystemFailure(sHostPath, errno);
  }
  return !failure.Failed();
}

/// The kinds of a workbook's name; a name with neither has none.
int32_t WorkbookFormatOfPath(std::string_view sPath) {
  const std::string sUpper = UpperText(sPath);
  if (sUpper.find(".XLSX") != std::string::npos) return kFormatXlsx;
  return sUpper.find(".XLS") != std::string::npos ? kFormatXls : kFormatNone;
}

}  // namespace

bool IsExcelRunning() {
  return false;
}

std::unique_ptr<clsWorkbook> OpenExcelWorkbook(std::string_view sPath, const WorkbookOptions& options) {
  const std::string sHostPath = HostPath(sPath);
  const int32_t lFormat = WorkbookFormatOfPath(sPath);
  if (lFormat == kFormatNone) return Refused(OutputFailure(sPath, OutputMessage::NoWorkbookName));
  Failure failure;
  struct stat status {};
  const bool bExists = stat(sHostPath.c_str(), &status) == 0;
  if (!bExists && errno != ENOENT && errno != ENOTDIR) return Refused(SystemFailure(sPath, errno));
  if (bExists && S_ISDIR(status.st_mode)) return Refused(OutputFailure(sPath, OutputMessage::IsFolder));
  if (bExists && access(sHostPath.c_str(), W_OK) != 0) return Refused(OutputFailure(sPath, OutputMessage::NotWritable));
  // A pipe or device is written straight and holds nothing to change.
  if (bExists && !S_ISREG(status.st_mode)) return NewExcelWorkbook(lFormat, options);
  if (!FolderTakesFiles(sHostPath, failure)) return Refused(std::move(failure));
  if (!bExists || options.bReplace) return NewInPlaceOf(sHostPath, bExists, lFormat, options);
  return Targeted(OpenExisting(sHostPath, lFormat, options), options);
}

std::unique_ptr<clsWorkbook> NewExcelWorkbook(int32_t lFormat, const WorkbookOptions& options) {
  if (lFormat == kFormatXls) return NewXlsWorkbook(options);
  if (lFormat == kFormatXlsx) return std::make_unique<clsXlsxWorkbook>(options);
  return Refused(OutputFailure(std::to_string(lFormat), OutputMessage::OtherFormat));
}

bool SaveExcelWorkbookAs(clsWorkbook& workbook, std::string_view sPath, int32_t lFormat, Failure& failure) {
  return workbook.SaveAs(sPath, lFormat, failure);
}

void CloseExcelWorkbook(std::unique_ptr<clsWorkbook>& workbook) {
  workbook.reset();
}

int32_t OutputFormatOfPath(std::string_view sPath) {
  if (UpperText(sPath).find(".CSV") != std::string::npos) return kFormatCsv;
  return WorkbookFormatOfPath(sPath);
}

bool ActivateWorksheet(clsWorkbook& workbook, std::string_view sSheet) {
  if (sSheet.empty()) return false;
  if (ActivateWorksheetByName(workbook, sSheet)) return true;
  const auto lNumber = ParseWholeNumber(sSheet);
  return lNumber && ActivateWorksheetByNumber(workbook, *lNumber);
}

bool ActivateWorksheetByName(clsWorkbook& workbook, std::string_view sName) {
  return workbook.ActivateSheet(sName);
}

bool ActivateWorksheetByNumber(clsWorkbook& workbook, int nSheet) {
  return workbook.ActivateSheet(nSheet);
}

}  // namespace quillon
