#include "clsTidyLines.h"

#include "modText.h"

namespace quillon {

bool clsTidyLines::Next(std::string_view& sLine) {
  if (!reader_.ReadRow(sLine)) return false;
  const bool bTab = lTabSize_ > 0 && reader_.RowMayHaveTab() && sLine.find('\t') != std::string_view::npos;
  if (reader_.CodePage().IsSingleByte() && !IsAscii(sLine)) {
    sText_.clear();
    reader_.CodePage().Decode(sLine, sText_);
    sLine = sText_;
  }
  if (!bTab) return true;
  Expand(sLine);
  sLine = sExpanded_;
  return true;
}

void clsTidyLines::Expand(std::string_view sLine) {
  const auto nStop = static_cast<size_t>(lTabSize_);
  sExpanded_.clear();
  size_t nColumn = 0;
  for (size_t i = 0; i < sLine.size();) {
    if (sLine[i] == '\t' && sExpanded_.size() < clsLineReader::kMaxRowBytes) {
      const size_t nBlanks = nStop - nColumn % nStop;
      sExpanded_.append(nBlanks, ' ');
      nColumn += nBlanks;
      ++i;
      continue;
    }
    const size_t nBytes = Utf8CharBytes(sLine, i);
    sExpanded_.append(sLine.substr(i, nBytes));
    i += nBytes;
    ++nColumn;
  }
}

}  // namespace quillon
