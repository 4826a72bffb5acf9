// Cells a second into a new .xlsx workbook, ours and libxlsxwriter's in constant-memory mode, and the largest resident
// size of the process, the ledger's text included. The peer gets its amounts as numbers with one format; ours types
// them.
//
//   xlsx_speed ours|readback|peer|typing [rows [columns [file]]]

#include <sys/resource.h>
#include <xlsxwriter.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "clsLedger.h"
#include "modCellTyping.h"
#include "modExcelLink.h"
#include "modText.h"

namespace {

using namespace quillon;

bool WriteOurs(const clsLedger& ledger, int64_t nRows, int nColumns, const std::string& sPath, bool bReadBack) {
  WorkbookOptions options;
  options.bReadBack = bReadBack;
  auto workbook = NewExcelWorkbook(kFormatXlsx, options);
  Failure failure;
  for (int64_t nRow = 0; nRow < nRows; ++nRow)
    for (int nColumn = 0; nColumn < nColumns; ++nColumn)
      if (!workbook->WriteCell(1, nRow + 1, nColumn + 1,
                               ledger.Cell(nRow % ledger.Rows(), static_cast<size_t>(nColumn) % 10), failure))
        return false;
  return workbook->SaveAs(sPath, kFormatXlsx, failure);
}

bool WritePeer(const clsLedger& ledger, int64_t nRows, int nColumns, const std::string& sPath) {
  lxw_workbook_options options{};
  options.constant_memory = LXW_TRUE;
  lxw_workbook* const workbook = workbook_new_opt(sPath.c_str(), &options);
  lxw_worksheet* const sheet = workbook_add_worksheet(workbook, nullptr);
  lxw_format* const amount = workbook_add_format(workbook);
  format_set_num_format(amount, "#,##0.00");
  std::string sDigits;
  for (int64_t nRow = 0; nRow < nRows; ++nRow) {
    for (int nColumn = 0; nColumn < nColumns; ++nColumn) {
      const auto nField = static_cast<size_t>(nColumn) % 10;
      const std::string_view sCell = TrimBlanks(ledger.Cell(nRow % ledger.Rows(), nField));
      if (sCell.empty()) continue;
      sDigits.clear();
      for (const char ch : sCell)
        if (ch != ',' || !clsLedger::kFields[nField].bNumber) sDigits.push_back(ch);
      const auto nPeerRow = static_cast<lxw_row_t>(nRow);
      const auto nPeerColumn = static_cast<lxw_col_t>(nColumn);
      if (clsLedger::kFields[nField].bNumber) {
        worksheet_write_number(sheet, nPeerRow, nPeerColumn, std::strtod(sDigits.c_str(), nullptr), amount);
      } else {
        worksheet_write_string(sheet, nPeerRow, nPeerColumn, sDigits.c_str(), nullptr);
      }
    }
  }
  return workbook_close(workbook) == LXW_NO_ERROR;
}

bool TypeAll(const clsLedger& ledger, int64_t nRows, int nColumns) {
  std::string sScratch;
  size_t nSum = 0;
  for (int64_t nRow = 0; nRow < nRows; ++nRow)
    for (int nColumn = 0; nColumn < nColumns; ++nColumn)
      nSum +=
          TypeCell(ledger.Cell(nRow % ledger.Rows(), static_cast<size_t>(nColumn) % 10), {}, sScratch).sDigits.size();
  return nSum > 0;
}

double CpuSeconds(const rusage& usage) {
  const auto Seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
  };
  return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string sMode = argc > 1 ? argv[1] : "ours";
  const int64_t nRows = argc > 2 ? std::atoll(argv[2]) : 400000;
  const int nColumns = argc > 3 ? std::atoi(argv[3]) : 10;
  const std::string sPath = argc > 4 ? argv[4] : (std::filesystem::temp_directory_path() / "xlsx_speed.xlsx").string();
  // A part of the rows, again and again, keeps the text out of the measured memory.
  const clsLedger ledger(std::min<int64_t>(nRows, 400000));
  rusage before{};
  getrusage(RUSAGE_SELF, &before);
  const auto start = std::chrono::steady_clock::now();
  const bool bDone = sMode == "peer"     ? WritePeer(ledger, nRows, nColumns, sPath)
                     : sMode == "typing" ? TypeAll(ledger, nRows, nColumns)
                                         : WriteOurs(ledger, nRows, nColumns, sPath, sMode == "readback");
  const double nSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  rusage after{};
  getrusage(RUSAGE_SELF, &after);
  const double nCpu = CpuSeconds(after) - CpuSeconds(before);
  std::error_code ignored;
  const double nMillions = static_cast<double>(nRows) * nColumns / 1e6;
  std::cout << sMode << ": " << nMillions / nCpu << " M cells per CPU second, " << nMillions / nSeconds
            << " by the clock"
            << ", file " << std::filesystem::file_size(sPath, ignored) << " bytes, resident " << after.ru_maxrss / 1024
            << " MB of which the text is " << ledger.Text().size() / (1 << 20) << " MB\n";
  return bDone ? 0 : 1;
}
