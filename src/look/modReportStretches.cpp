// ReadStretches of modReportPreview.

#include "clsReportLines.h"
#include "modReportPreview.h"
#include "modRows.h"
#include "modText.h"

namespace quillon {

namespace {

/// The row as it is shown, no more of it than that.
std::string ShownPart(std::string_view sRow, const clsCodePage& page, int32_t lTabSize, size_t nMostCharacters) {
  constexpr size_t kBytesOfCharacter = 4;
  std::string sText = page.ToUtf8(sRow.substr(0, nMostCharacters * kBytesOfCharacter));
  if (lTabSize > 0) sText = ExpandTabs(sText, lTabSize);
  sText.resize(ByteOffset(sText, nMostCharacters + 1));
  sText.resize(TrimRightBlanks(sText).size());
  return sText;
}

}  // namespace

ReportStretches ReadStretches(const PreviewRequest& request, const std::vector<LineRange>& ranges,
                              size_t nMostCharacters) {
  ReportStretches stretches;
  clsLineReader reader;
  Failure failure;
  if (!reader.Open(request.sInput, request.text, failure)) {
    stretches.sFault = failure.sText;
    return stretches;
  }
  for (const LineRange& range : ranges) {
    reader.SkipRows(range.lFirst - 1 - reader.RowNumber());
    std::string_view sRow;
    while (reader.RowNumber() < range.lLast && reader.ReadRow(sRow)) {
      PreviewRow& row = stretches.rows.emplace_back();
      row.lLine = reader.RowNumber();
      row.sText = ShownPart(sRow, reader.CodePage(), request.lTabSize, nMostCharacters);
      stretches.bBinary = stretches.bBinary || IsBinaryText(row.sText);
    }
  }
  if (reader.LastFailure().Failed()) stretches.sFault = reader.LastFailure().sText;
  stretches.bMore = reader.IsCutShort() || !reader.AtEnd();
  return stretches;
}

}  // namespace quillon
