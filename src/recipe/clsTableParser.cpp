#include "clsTableParser.h"

#include <algorithm>
#include <limits>

#include "clsRowShape.h"
#include "modEventLoop.h"
#include "modRecipeMessages.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

// Numbers of the platform's failures that the operations here can meet by themselves.
constexpr int32_t kOverflow = 6;
constexpr int32_t kOutOfStringSpace = 14;
constexpr int64_t kMaxShort = std::numeric_limits<int16_t>::max();
constexpr int64_t kMaxLong = std::numeric_limits<int32_t>::max();

/// Reports a number that a whole number up to lLimit (or down to its negative counterpart) can't hold.
bool Overflows(clsHost& host, int64_t lValue, int64_t lLimit) {
  if (lValue >= -lLimit - 1 && lValue <= lLimit) return false;
  ReportTrappedFailure(host, kOverflow, Translate("Overflow"));
  return true;
}

/// A run of a template, length at least 1: its last character says whether it ends a field.
std::string MakeTemplateRun(int32_t length, char fill, char closing) {
  return std::string(static_cast<size_t>(length) - 1, fill) + closing;
}

std::u32string Characters(std::string_view sText) {
  std::u32string out;
  out.reserve(sText.size());
  for (size_t i = 0; i < sText.size();) out += DecodeUtf8(sText, i);
  return out;
}

std::string Text(std::u32string_view characters) {
  std::string sOut;
  sOut.reserve(characters.size());
  for (const char32_t ch : characters) AppendUtf8(ch, sOut);
  return sOut;
}

struct Fields {
  std::vector<int32_t> starts, ends;
  std::vector<std::string> ops;
};

enum class Verdict { Fields, None, Unexpected };

Verdict ScanFields(std::u32string_view characters, Fields& fields) {
  const auto lLength = static_cast<int32_t>(characters.size());
  bool bInField = false;
  for (int32_t i = 1; i <= lLength; ++i) {
    const char32_t ch = characters[static_cast<size_t>(i) - 1];
    if (!bInField && ch != U' ') {
      if (fields.starts.size() == clsTableParser::kMaxFields) return Verdict::Unexpected;
      fields.starts.push_back(i);
      fields.ops.emplace_back(ch == U'+' ? "Sum" : "");
      bInField = true;
    } else if (bInField && (ch == U' ' || i == lLength)) {
      fields.ends.push_back(i);
      bInField = ch != U' ';
    }
  }
  // A field of one character in the last position was begun and not ended.
  if (fields.starts.size() == fields.ends.size() + 1) fields.ends.push_back(lLength);
  return fields.starts.empty() ? Verdict::None : Verdict::Fields;
}

bool ScanOrReport(clsHost& host, std::u32string_view characters, Fields& fields) {
  const Verdict verdict = ScanFields(characters, fields);
  if (verdict == Verdict::Fields) return true;
  if (verdict == Verdict::Unexpected) ReportRecipe(host, kTemplateAnalyzer);
  fields = {};
  return false;
}

/// A report that can't be read, or not to its end: what is known of its rows would make a wrong cut of them.
void ReportUnread(RecipeContext& context, const Failure& failure) {
  if (IsStopped(failure)) return;
  ReportTrappedFailure(context.host, failure.nError, failure.sText);
  context.account.failure = failure;
}

}  // namespace

bool clsTableParser::analyze_template(clsHost& host, std::string_view sTemplate, std::vector<int32_t>& colStart,
                                      std::vector<int32_t>& colEnd, std::vector<std::string>& colOp) {
  Fields fields;
  const bool bFound = ScanOrReport(host, Characters(sTemplate), fields);
  colStart = std::move(fields.starts);
  colEnd = std::move(fields.ends);
  colOp = std::move(fields.ops);
  return bFound;
}

void clsTableParser::ResetParser() {
  *this = clsTableParser();
}

void clsTableParser::FindTableMarkers(clsReport& report, std::string_view topMarker, std::string_view botMarker,
                                      int64_t& top, int64_t& bot) {
  const int64_t lTop = report.LineOf(std::string(topMarker));
  if (lTop < 1) return;
  top = lTop;
  // One line can be both.
  if (topMarker.find(botMarker) != std::string_view::npos) bot = top;
  const int64_t lBottom = report.LineBehind(std::string(botMarker), lTop);
  if (lBottom >= 1) bot = lBottom;
}

void clsTableParser::ReadFromFile(RecipeContext& context, std::string_view text_file, std::string_view topMarker,
                                  int32_t topOffset, std::string_view botMarker, int32_t botOffset, int32_t tab_size) {
  ResetParser();
  if (!LocateMarkers(context, text_file, topMarker, botMarker) || !LocateRows(context, topOffset, botOffset)) return;
  if (DataTopLoc < 1) {
    context.host.ShowMessage(Translate(" invalid start_line in utilities.file_read!"), "Quillon", MessageIcon::Critical,
                             MessageButtons::Ok);
    return;
  }
  ReadRows(context, text_file, tab_size);
}

bool clsTableParser::LocateMarkers(RecipeContext& context, std::string_view text_file, std::string_view topMarker,
                                   std::string_view botMarker) {
  clsReport& report = context.Report(std::string(text_file));
  Failure failure;
  int64_t lTop = 0;
  int64_t lBottom = 0;
  if (report.Open(failure)) {
    FindTableMarkers(report, topMarker, botMarker, lTop, lBottom);
    failure = report.Reader().LastFailure();
  }
  if (failure.Failed()) {
    ReportUnread(context, failure);
    return false;
  }
  if (lTop < 1 || lBottom < lTop || Overflows(context.host, lBottom, kMaxLong)) return false;
  MarkerTopLoc = static_cast<int32_t>(lTop);
  MarkerBotLoc = static_cast<int32_t>(lBottom);
  return true;
}

bool clsTableParser::LocateRows(RecipeContext& context, int32_t topOffset, int32_t botOffset) {
  const auto overflows = [&](int64_t lValue, int64_t lLimit) { return Overflows(context.host, lValue, lLimit); };
  const int64_t lTop = int64_t{MarkerTopLoc} + topOffset;
  const int64_t lBottom = int64_t{MarkerBotLoc} + botOffset;
  if (overflows(lTop, kMaxLong) || overflows(lBottom, kMaxLong)) return false;
  DataTopLoc = static_cast<int32_t>(lTop);
  DataBotLoc = static_cast<int32_t>(lBottom);
  const int64_t lRows = lBottom - lTop + 1;
  if (lRows > kMaxRows) {
    ReportRecipe(context.host, kTemplateRows);
    ResetParser();
    return false;
  }
  return !overflows(lTop, kMaxShort) && !overflows(lRows, kMaxShort);
}

void clsTableParser::ReadRows(RecipeContext& context, std::string_view text_file, int32_t tab_size) {
  clsReport& report = context.Report(std::string(text_file));
  Failure failure;
  if (!report.Open(failure)) return ReportUnread(context, failure);
  report.SeekLine(DataTopLoc);
  clsLineReader& reader = report.Reader();
  clsRowShape shape(reader.CodePage(), tab_size);
  std::string_view sRow;
  for (int64_t lLine = DataTopLoc; lLine <= DataBotLoc && reader.ReadRow(sRow); ++lLine) {
    if (shape.Add(sRow)) continue;
    return ReportTrappedFailure(context.host, kOutOfStringSpace, Translate("Out of string space"));
  }
  if (reader.LastFailure().Failed()) return ReportUnread(context, reader.LastFailure());
  TableWidth = static_cast<int32_t>(shape.Width());
  ColumnOccupied = std::move(shape).Occupied();
}

bool clsTableParser::Piece::IsColumnBlank(int32_t column) const {
  const auto lTableWidth = static_cast<int64_t>(occupied.size());
  const int64_t lLength = std::clamp<int64_t>(lTableWidth - lFrom + 1, 0, lWidth);
  if (column > lLength) return true;
  const int64_t lColumn = bReversed ? lFrom + lLength - column : int64_t{lFrom} + column - 1;
  return !occupied[static_cast<size_t>(lColumn) - 1];
}

/// The next run of occupied columns with the one blank column that ends it, or the next run of blank columns.
clsTableParser::Block clsTableParser::FindNextBlock(const Piece& piece, int32_t start) {
  Block block{piece.lWidth, false};
  bool bOccupiedSeen = false;
  bool bBlankSeen = false;
  for (int32_t column = start; column <= piece.lWidth; ++column) {
    const bool bBlank = piece.IsColumnBlank(column);
    if (bBlank && bOccupiedSeen) return {column, false};
    if (!bBlank && bBlankSeen) return block;
    if (bBlank) {
      block = {column, true};
      bBlankSeen = true;
    } else {
      bOccupiedSeen = true;
    }
  }
  block.bBlank = false;
  return block;
}

std::string clsTableParser::BuildTemplateFromRows(const Piece& piece) const {
  std::string sOut;
  for (int32_t lDone = 0; lDone < piece.lWidth;) {
    const Block block = FindNextBlock(piece, lDone + 1);
    sOut += MakeTemplateRun(block.lEnd - lDone, '-', OptionNoSpaceColumns && block.bBlank ? '-' : ' ');
    lDone = block.lEnd;
  }
  return sOut;
}

/// The ruler of the table columns lStart to lEnd. Left-justified text owns the blanks behind it: seen from its right
/// end, that is the rule for numbers, which own those in front.
std::string clsTableParser::FixedSegment(int32_t lStart, int32_t lEnd, bool bLeft) const {
  std::string sSegment = BuildTemplateFromRows({ColumnOccupied, lStart, lEnd - lStart + 1, bLeft});
  if (!bLeft) return sSegment;
  std::reverse(sSegment.begin(), sSegment.end());
  if (sSegment.size() < 2 || sSegment.front() != ' ') return sSegment;
  // The blank that closes each block stands on its left now; it moves to the right of the block before.
  return "-" + sSegment.substr(1, sSegment.size() - 2) + " ";
}

std::string clsTableParser::VariableToFixedTemplate(clsHost& host, std::string_view sTemplate) const {
  const std::u32string characters = Characters(sTemplate);
  Fields fields;
  if (!ScanOrReport(host, characters, fields)) return {};
  std::string sOut;
  int32_t lDone = 0;
  for (size_t i = 0; i < fields.starts.size(); ++i) {
    const int32_t lStart = fields.starts[i];
    const int32_t lEnd = fields.ends[i];
    const std::u32string_view segment =
        std::u32string_view(characters).substr(static_cast<size_t>(lDone), static_cast<size_t>(lEnd - lDone));
    if (segment.find(U'=') == std::u32string_view::npos) {
      sOut += Text(segment);
    } else {
      sOut.append(static_cast<size_t>(lStart - lDone - 1), ' ');
      sOut += FixedSegment(lStart, lEnd, segment.find(U'R') == std::u32string_view::npos);
    }
    lDone = lEnd;
  }
  return sOut;
}

}  // namespace quillon
