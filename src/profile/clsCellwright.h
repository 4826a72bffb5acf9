#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "clsCsvWriter.h"
#include "clsRowSink.h"
#include "clsWorkbook.h"
#include "modCellwrightMessages.h"
#include "modCutPlan.h"
#include "modFailure.h"
#include "modFileState.h"

namespace quillon {

/// What became of the characters of one conversion.
struct ProfileAccount {
  int64_t lRowsRead = 0;                   ///< Rows of the input
  int64_t lRowsWritten = 0;                ///< Rows of the output; the others stand above the start cell
  bool bGaveUp = false;                    ///< Whoever hears of what stands behind the columns didn't want the output
  int64_t lCellsFailed = 0;                ///< Cells that the sheet refused (the conversion fails at the first)
  int64_t lCharsLost = 0;                  ///< Characters that the output's code page lacks, now "?"
  int64_t lCharsReplaced = 0;              ///< Broken UTF-16 of the input, now U+FFFD
  std::vector<std::string> workbookNotes;  ///< What was done to a workbook that was there
  std::string sNote;  ///< What was taken instead of an option that could not be used; "" if nothing
};

/// Hears of the rows of a conversion that go on behind the last column.
class clsBehindListener {
 public:
  virtual ~clsBehindListener() = default;
  /// A row in bytes of the page; nWidth is where the last column ends, in characters.
  virtual void Row(int64_t lRow, std::string_view sRow, const clsCodePage& page, int64_t nWidth) = 0;
  /// All lRows rows came. False: the output is given up.
  virtual bool RowsEnd(int64_t lRows) = 0;
};

/// The conversion engine: fixed-width text in, CSV, XLS or XLSX out. It holds its options between conversions and never
/// resets them by itself. modCellwright_DLL is its face to the program.
class clsCellwright {
 public:
  static constexpr int32_t kInputBytes = 21, kInputUtf16 = 42;
  static constexpr int32_t kMostColumns = 32767;  ///< Column numbers are 16-bit in part of the interface

  struct Options {
    std::vector<CellwrightColumn> columns;
    std::string sSheet;
    std::string sStartCell = "A1";
    std::string sInputFile, sOutputFile;  ///< Path texts
    int32_t lInputType = kInputBytes;
    int32_t lOutputType = 0;
    int32_t lSeparator = 44;
    int32_t lUseDoubleQuotes = 1;
    bool bAllText = false;
    WorkbookOptions workbook;  ///< Not of it either: which sheet of a workbook, and what becomes of one that is there
    bool bClear = true;        ///< What stands on that sheet of an existing one is emptied first
    bool bSafeCsv = false;     ///< Not of the flat interface: CSV values that a spreadsheet would run are made harmless
  };

  const Options& Held() const { return options_; }
  Options& Change() { return options_; }
  /// Options of a column (from 1), made if it is new; null for a number outside 1 to kMostColumns.
  CellwrightColumn* Column(int32_t lColumn);

  /// Called every 1024 rows of a conversion with the row's number (from 1) and the bytes of the input done and in all.
  using Progress = std::function<void(int64_t lRow, int64_t lDone, int64_t lTotal)>;
  void TellProgress(Progress progress) { progress_ = std::move(progress); }
  /// Null: nobody. To be told before each conversion.
  void TellBehind(clsBehindListener* pListener) { pBehind_ = pListener; }
  /// Runs the conversion with the options as they stand. On any failure the output is as it was; so it is when
  /// RunEvents says that the work is to stop.
  EngineResult ConvertFile();
  /// Keeps a failure's text for GetErrorString.
  EngineResult Fail(EngineResult result, std::string_view sAbout);

  const std::string& LastError() const { return sError_; }
  const ProfileAccount& LastTally() const { return account_; }

 private:
  EngineResult Check();
  EngineResult FailOutput(const Failure& failure);
  template <typename Reader>
  EngineResult Convert(Reader& reader, const clsCodePage& page);
  template <typename Reader>
  EngineResult ToCsv(Reader& reader, const CutPlan& plan, const clsCodePage& page);
  EngineResult BeginSheet(clsWorkbook& workbook);
  template <typename Reader>
  EngineResult ToSheet(Reader& reader, const CutPlan& plan, const clsCodePage& page);
  template <typename Reader>
  bool PumpRows(Reader& reader, clsRowSink& sink, const CutPlan& plan, const clsCodePage& page);
  EngineResult FailRows(const Failure& failure);
  CsvRules RulesFor(const clsCodePage& pageOut) const;

  Options options_;
  StartCell start_;
  Progress progress_;
  clsBehindListener* pBehind_ = nullptr;
  FileState report_;      ///< Of the input before it was opened
  Failure inputFailure_;  ///< Why the input was not read to its end, or not as it stood
  ProfileAccount account_;
  std::string sError_;
};

}  // namespace quillon
