#include "modReportPreview.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <optional>

#include "clsLineProcessor.h"
#include "clsQuietHost.h"
#include "clsRecipe.h"
#include "clsRowMeasure.h"
#include "clsTableParser.h"
#include "modColumnLetters.h"
#include "modNumbers.h"
#include "modPaths.h"
#include "modRecipeKind.h"
#include "modRecipeMessages.h"
#include "modShortTable.h"
#include "modSystemIo.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr size_t kBeginningBytes = size_t{256} << 10;

/// The page of a report by its beginning, so that a long one needn't be read for it. Nothing: only the whole report
/// can tell.
std::optional<const clsCodePage*> PageByBeginning(const std::string& sInput) {
  const int nHandle = OpenHandle(HostPath(sInput), O_RDONLY | O_NONBLOCK);
  if (nHandle < 0) return std::nullopt;
  std::string sBytes(kBeginningBytes, '\0');
  const int64_t nGot = ReadHandleAt(nHandle, sBytes.data(), sBytes.size(), 0);
  close(nHandle);
  if (nGot < static_cast<int64_t>(kBeginningBytes)) return std::nullopt;
  const size_t nLastEnd = sBytes.rfind('\n');
  if (nLastEnd == std::string::npos) return std::nullopt;
  return &DetectCodePage(std::string_view(sBytes).substr(0, nLastEnd));
}

/// One look at one table.
class clsTableLook {
 public:
  clsTableLook(const PreviewRequest& request, clsSectionFile& recipe, const clsExportSpecs* pSpecs, int32_t lTables,
               const std::shared_ptr<clsReports>& pReports = std::make_shared<clsReports>())
      : request_(request), recipe_(recipe), pSpecs_(pSpecs) {
    options_.text = request.text;
    context_.emplace(RecipeContext{host_, options_, ownRecipe_, lineProcessor_, account_});
    context_->pReports = pReports;
    preview_.lTable = request.lTable;
    preview_.lTables = lTables;
  }

  ReportPreview Look() {
    if (!ReadKeys() || !Open() || !FindBounds()) {
      // A drawn ruler can be shown all the same.
      if (keys_.sTemplate.find('=') == std::string::npos && TrimBlanks(keys_.sTemplate) != "-") FindColumns();
    } else if (FindColumns()) {
      TakeRows();
    }
    if (preview_.sFault.empty() && Reader().LastFailure().Failed()) Fault(Reader().LastFailure().sText);
    return std::move(preview_);
  }

 private:
  bool Fault(std::string_view sText) {
    if (preview_.sFault.empty()) preview_.sFault = sText;
    return false;
  }

  bool FaultOf(const std::string& sText, std::string_view sKey) {
    return Fault(sText + " " + WhyMissing(recipe_, "Table " + std::to_string(request_.lTable), sKey));
  }

  bool ReadKeys() {
    if (request_.lTable < 1 || request_.lTable > preview_.lTables) {
      return Fault(Translate("The recipe has no table of this number"));
    }
    keys_ = ReadShortTable(recipe_, request_.lTable);
    const auto lStart = ParseWholeNumber(keys_.sStartOffset);
    const auto lEnd = ParseWholeNumber(keys_.sEndOffset);
    preview_.start = {keys_.sStartLine, lStart.value_or(0)};
    preview_.end = {keys_.sEndLine, lEnd.value_or(0)};
    if (!lStart || !lEnd) {
      return Fault(Translate("An offset is no whole number") + ": " +
                   (lStart ? "ReadEndLineOffset=" + keys_.sEndOffset : "ReadStartLineOffset=" + keys_.sStartOffset));
    }
    if (keys_.sStartLine.empty()) return FaultOf(Translate("Invalid ReadStartLine!"), "ReadStartLine");
    if (keys_.sEndLine.empty()) return FaultOf(Translate("Invalid ReadEndLine!"), "ReadEndLine");
    table_.ReadStartLine = keys_.sStartLine;
    table_.ReadStartLineOffset = *lStart;
    table_.ReadEndLine = keys_.sEndLine;
    table_.ReadEndLineOffset = *lEnd;
    return true;
  }

  bool Open() {
    if (!request_.bWholeTable && request_.text.pCodePage == nullptr && IsAscii(keys_.sStartLine + keys_.sEndLine)) {
      const auto page = PageByBeginning(request_.sInput);
      bByBeginning_ = page.has_value();
      if (page) options_.text.pCodePage = *page;
    }
    return OpenReport();
  }

  bool OpenReport() {
    Failure failure;
    return Report().Open(failure) || Fault(failure.sText);
  }
  clsReport& Report() { return context_->Report(request_.sInput); }
  clsLineReader& Reader() { return Report().Reader(); }

  bool FindStart() {
    PreviewKey& key = preview_.start;
    key.lLine = Report().LineOf(key.sText);
    key.place = key.lLine > 0 ? KeyPlace::Found : NotThere();
    // What is shown lies further down than what the page was found by.
    if (bByBeginning_ && Reader().BytesDone() > static_cast<int64_t>(2 * kBeginningBytes)) {
      bByBeginning_ = false;
      options_.text.pCodePage = nullptr;
      context_->pReports->Close();
      return OpenReport() && FindStart();
    }
    return !Reader().LastFailure().Failed();
  }

  KeyPlace NotThere() { return Reader().IsCutShort() ? KeyPlace::NotReached : KeyPlace::Missing; }

  /// The first line that holds the end's text, from the top; no further down than it matters.
  bool FindEnd() {
    PreviewKey& key = preview_.end;
    clsLineReader& reader = Reader();
    if (request_.bWholeTable || request_.bFindEnd || preview_.start.place != KeyPlace::Found) {
      key.lLine = Report().LineOf(key.sText);
      key.place = key.lLine > 0 ? KeyPlace::Found : NotThere();
      return !reader.LastFailure().Failed();
    }
    Report().SeekLine(1);
    const int64_t lLastShown = preview_.start.lLine + table_.ReadStartLineOffset + request_.lRows;
    const int64_t lLimit = std::max<int64_t>(lLastShown - table_.ReadEndLineOffset, preview_.start.lLine);
    const std::string sNeedle = reader.CodePage().FromUtf8(key.sText);
    key.place = NotThere();
    for (std::string_view sRow; reader.ReadRow(sRow);) {
      if (sRow.find(sNeedle) != std::string_view::npos) {
        key.lLine = reader.RowNumber();
        key.place = KeyPlace::Found;
        break;
      }
      if (reader.RowNumber() < lLimit) continue;
      if (!reader.AtEnd()) key.place = KeyPlace::FurtherDown;
      break;
    }
    return !reader.LastFailure().Failed();
  }

  bool FindBounds() {
    if (!FindStart() || !FindEnd()) return false;
    if (preview_.start.place == KeyPlace::Missing) return Fault(Translate("ReadStartLine is not in the report"));
    if (preview_.start.place == KeyPlace::NotReached) {
      return Fault(Translate("ReadStartLine is not in the part of the report that was searched"));
    }
    if (preview_.end.place == KeyPlace::Missing) return Fault(Translate("ReadEndLine is not in the report"));
    const int64_t lFirst = preview_.start.lLine + table_.ReadStartLineOffset;
    const int64_t lLast = preview_.end.place == KeyPlace::Found ? preview_.end.lLine + table_.ReadEndLineOffset
                                                                : std::numeric_limits<int64_t>::max();
    if (lLast < lFirst) return Fault(Translate("The table would end before it starts"));
    if (lFirst < 1) return Fault(Translate("The table would start above the report's first line"));
    preview_.lFirstLine = lFirst;
    if (preview_.end.place == KeyPlace::Found) preview_.lLastLine = lLast;
    lLastWanted_ = lLast;
    return true;
  }

  /// The columns of a specification, as they stand there, under a ruler that shows them.
  bool TakeColumns(const clsTable& table) {
    constexpr int32_t kWidest = 32767;
    for (const clsColumn& column : table.ColumnsCollection) {
      const int32_t lStart = column.ReadColumnStart, lEnd = std::min(column.ReadColumnEnd, kWidest);
      if (lStart < 1 || lStart > lEnd) {
        return Fault(Translate("ReadColumnStart is smaller than 1 or larger than ReadColumnEnd!"));
      }
      const auto nEnd = static_cast<size_t>(lEnd);
      if (preview_.sRuler.size() < nEnd) preview_.sRuler.resize(nEnd, ' ');
      for (auto i = static_cast<size_t>(lStart); i < nEnd || i == static_cast<size_t>(lStart); ++i) {
        preview_.sRuler[i - 1] = '-';
      }
      preview_.columns.push_back({lStart, lEnd, UpperText(column.WriteColumn), {}});
    }
    return !preview_.columns.empty() || Fault(Translate("Number of Columns must be > 0!"));
  }

  bool FindColumns() {
    if (pSpecs_ != nullptr) {
      const auto nTable = static_cast<size_t>(request_.lTable);
      return nTable <= pSpecs_->TablesCollection.size() && TakeColumns(pSpecs_->TablesCollection[nTable - 1]);
    }
    const auto missing = [&] {
      if (TrimBlanks(keys_.sTemplate).empty()) return FaultOf(Translate("Parsing gives no columns") + ".", "Parsing");
      return Fault(host_.Fault().empty() ? Translate("Parsing gives no columns") : host_.Fault());
    };
    std::string sTemplate = keys_.sTemplate;
    if (!FixTemplate(*context_, request_.sInput, request_.lTabSize, table_, sTemplate)) {
      if (host_.Fault().empty() && preview_.end.place == KeyPlace::NotReached) {
        return Fault(Translate("The table's end is not in the part of the report that was searched"));
      }
      return missing();
    }
    std::vector<int32_t> starts;
    std::vector<int32_t> ends;
    std::vector<std::string> ops;
    if (!clsTableParser::analyze_template(host_, sTemplate, starts, ends, ops)) return missing();
    preview_.sRuler = sTemplate;
    const int32_t lBase = AlphaToNum2(host_, keys_.sWriteColumn);
    for (size_t i = 0; i < starts.size(); ++i) {
      const int32_t lColumn = lBase + static_cast<int32_t>(i);
      preview_.columns.push_back({starts[i], ends[i], lBase < 1 ? "" : NumToAlpha2(host_, lColumn), {}});
    }
    if (lBase < 1) return Fault(Translate("WriteColumn is no column") + ": WriteColumn=" + keys_.sWriteColumn);
    const bool bWritable = std::all_of(preview_.columns.begin(), preview_.columns.end(),
                                       [](const PreviewColumn& column) { return IsColumnText(column.sLetters); });
    return bWritable || Fault(Translate("Write Column must be (A-Z)!"));
  }

  void TakeRows() {
    clsLineReader& reader = Reader();
    if (!Report().SeekLine(preview_.lFirstLine) || reader.AtEnd()) {
      Fault(Translate("The table starts behind the end of the report"));
      return;
    }
    clsRowMeasure measure(preview_.columns);
    clsRow& row = lineProcessor_.RowCollection[0];
    PreviewRow taken;
    for (int64_t lLine = preview_.lFirstLine; lLine <= lLastWanted_ && !reader.AtEnd(); ++lLine) {
      preview_.bMore = lLine - preview_.lFirstLine >= request_.lRows;
      if (preview_.bMore && !request_.bWholeTable) return measure.Finish(preview_);
      if (!lineProcessor_.ReadRowPeriod1Only(*context_, &reader, request_.lTabSize)) {
        if (!reader.LastFailure().Failed()) Fault(Translate("The tabs of a row make it too long"));
        break;
      }
      TakeRow(row, lLine, taken, measure);
    }
    measure.Finish(preview_);
    row.Clear();
    if (reader.IsCutShort() && reader.AtEnd() && reader.RowNumber() < lLastWanted_) preview_.bMore = true;
    if (preview_.lLastLine > 0 && !reader.IsCutShort())
      preview_.lLastLine = std::min(preview_.lLastLine, reader.RowNumber());
  }

  void TakeRow(clsRow& row, int64_t lLine, PreviewRow& taken, clsRowMeasure& measure) {
    taken.lLine = lLine;
    taken.sText = TrimRightBlanks(row.Text());
    taken.cells.clear();
    measure.Measure(taken, preview_);
    for (PreviewColumn& column : preview_.columns) {
      const std::string_view sField = row.Field(column.lStart, column.lEnd);
      const bool bKept = !preview_.bMore;
      if (!bKept && !request_.bWholeTable) continue;
      if (!bKept && IsAscii(sField)) {
        CountCell(sField, lLine, column.census);
        continue;
      }
      std::string sCell = row.Page().ToUtf8(sField);
      if (request_.bWholeTable) CountCell(sCell, lLine, column.census);
      if (bKept) taken.cells.push_back(std::move(sCell));
    }
    if (!preview_.bMore) preview_.rows.push_back(taken);
  }

  const PreviewRequest& request_;
  clsSectionFile& recipe_;
  const clsExportSpecs* pSpecs_;
  clsQuietHost host_;
  RecipeOptions options_;
  clsRecipe ownRecipe_;
  clsLineProcessor lineProcessor_;
  FileAccount account_;
  std::optional<RecipeContext> context_;
  ShortTable keys_;
  clsTable table_;
  bool bByBeginning_ = false;
  int64_t lLastWanted_ = 0;
  ReportPreview preview_;
};

}  // namespace

ReportPreview PreviewByRecipe(const PreviewRequest& request, clsSectionFile& recipe, const clsExportSpecs* pSpecs) {
  return clsTableLook(request, recipe, pSpecs, static_cast<int32_t>(CountShortTables(recipe))).Look();
}

clsRecipeCheck::clsRecipeCheck(const PreviewRequest& request, clsSectionFile& recipe, const clsExportSpecs* pSpecs)
    : request_(request),
      recipe_(recipe),
      pSpecs_(pSpecs),
      pReports_(std::make_shared<clsReports>()),
      lTables_(static_cast<int32_t>(CountShortTables(recipe))) {
  request_.bWholeTable = true;
  pReports_->Of(request_.sInput, request_.text).Expect(KeyTextsOf(recipe_, lTables_));
}

ReportPreview clsRecipeCheck::Look(int32_t lTable) {
  request_.lTable = lTable;
  return clsTableLook(request_, recipe_, pSpecs_, lTables_, pReports_).Look();
}

}  // namespace quillon
