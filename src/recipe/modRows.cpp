#include "modRows.h"

#include "modNumbers.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

bool ReadNextRow(clsLineReader* filehandle, bool bUnix, std::string_view& sRow) {
  sRow = {};
  if (filehandle == nullptr || filehandle->ReadRow(sRow)) return true;
  sRow = {};
  return bUnix && !filehandle->LastFailure().Failed();
}

bool AppendExpanded(std::string_view sBytes, int32_t tab_size, bool bUtf8, std::string& sOut) {
  int64_t nStop = 1;
  int64_t nLength = 0;  // characters written
  for (;;) {
    const size_t nTab = sBytes.find('\t');
    const std::string_view sPiece = sBytes.substr(0, nTab);
    sOut.append(sPiece);
    if (nTab == std::string_view::npos) return sOut.size() <= clsLineReader::kMaxRowBytes;
    sBytes.remove_prefix(nTab + 1);
    nLength += static_cast<int64_t>(bUtf8 ? CharCount(sPiece) : sPiece.size());
    nStop += tab_size;
    if (nLength >= nStop) nStop += ((nLength - nStop) / tab_size + 1) * tab_size;
    const auto nBlanks = static_cast<size_t>(nStop - nLength - 1);
    if (sOut.size() + nBlanks > clsLineReader::kMaxRowBytes) return false;
    sOut.append(nBlanks, ' ');
    nLength = nStop - 1;
  }
}

std::string ExpandTabs(std::string_view text, int32_t tab_size) {
  std::string sOut;
  if (tab_size >= 1) AppendExpanded(text, tab_size, true, sOut);
  return sOut;
}

void file_read(clsHost& host, std::vector<std::string>& lines, std::string_view file_name,
               const TextFileOptions& options, int16_t start_line, int16_t line_count) {
  if (start_line < 1) {
    host.ShowMessage(Translate(" invalid start_line in utilities.file_read!"), "Quillon", MessageIcon::Critical,
                     MessageButtons::Ok);
    return;
  }
  clsLineReader reader;
  Failure ignored;
  if (!reader.Open(file_name, options, ignored)) return;
  std::string_view sRow;
  reader.SkipRows(start_line - 1);
  for (int16_t i = 0; i < line_count && ReadNextRow(&reader, options.bUnix, sRow); ++i) {
    const auto nIndex = static_cast<size_t>(i);
    if (nIndex >= lines.size()) lines.resize(nIndex + 1);
    lines[nIndex] = reader.CodePage().ToUtf8(sRow);
  }
}

std::string RoundByDataFormat(std::string sNumber, std::string_view sWriteDataFormat) {
  if (sWriteDataFormat == "NearestDollar") return FormatGrouped(sNumber, 0);
  if (sWriteDataFormat == "NearestCent") return FormatGrouped(sNumber, 2);
  return sNumber;
}

}  // namespace quillon
