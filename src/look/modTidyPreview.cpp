#include "modTidyPreview.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>

#include "clsLineProcessor.h"
#include "clsQuietHost.h"
#include "clsRecipe.h"
#include "clsTidyLines.h"
#include "modPreviewText.h"
#include "modText.h"
#include "modTidyRecipe.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr size_t kLinesAbove = 5;
constexpr size_t kWidestCell = 40;

/// Keeps the first records of one table and the lines around them.
class clsFirstRecords : public clsTidyListener {
 public:
  clsFirstRecords(TidyPreview& preview, int64_t lRows) : preview_(preview), lRows_(lRows) {}

  void TableStarts(size_t, const std::vector<TidyColumnInfo>& columns) override {
    for (const TidyColumnInfo& column : columns) preview_.names.push_back(column.sName);
    if (preview_.lines.size() > kLinesAbove) {
      preview_.lines.erase(preview_.lines.begin(), preview_.lines.end() - kLinesAbove);
    }
    bStarted_ = true;
  }

  void Record(const TidyRecord& record) override {
    if (IsDone()) return;
    preview_.recordLines.push_back(record.lLine);
    auto& cells = preview_.records.emplace_back();
    for (const TidyCell& cell : record.cells) cells.emplace_back(cell.sPlain);
  }

  void TableLine(size_t, int64_t lLine, std::string_view sLine, TidyLineKind kind) override {
    if (IsDone() && lLine > preview_.recordLines.back()) return;
    preview_.lines.push_back({lLine, kind, std::string(TrimRightBlanks(sLine))});
    if (!bStarted_ && preview_.lines.size() > 2 * kLinesAbove) {
      preview_.lines.erase(preview_.lines.begin(), preview_.lines.end() - kLinesAbove);
    }
  }

  bool IsDone() const { return static_cast<int64_t>(preview_.records.size()) >= lRows_; }

 private:
  TidyPreview& preview_;
  const int64_t lRows_;
  bool bStarted_ = false;
};

/// The table with its ruler measured. False: preview says why.
bool ReadTable(const PreviewRequest& request, clsSectionFile& recipe, TidyTable& table, TidyPreview& preview) {
  clsQuietHost host;
  RecipeOptions options;
  options.text = request.text;
  clsRecipe ownRecipe;
  clsLineProcessor lineProcessor;
  FileAccount account;
  RecipeContext context{host, options, ownRecipe, lineProcessor, account};
  TidyFault fault;
  if (clsTidyTables(recipe).Read(request.lTable, table, fault) && PlaceRuler(context, request.sInput, table, fault)) {
    return true;
  }
  preview.sFault = fault.IsSet()           ? fault.sText
                   : !host.Fault().empty() ? host.Fault()
                                           : Translate("Parsing gives no columns");
  return false;
}

std::string Padded(std::string_view sText, size_t nWidth) {
  const std::string sShown = ShownText(sText);
  const size_t nChars = CharCount(sShown);
  if (nChars > nWidth) return std::string(MidChars(sShown, 1, static_cast<int64_t>(nWidth) - 1)) + ">";
  return sShown + std::string(nWidth - nChars, ' ');
}

std::string RecordsText(const TidyPreview& preview) {
  std::vector<size_t> widths;
  for (size_t i = 0; i < preview.names.size(); ++i) {
    size_t nWidth = std::max<size_t>(CharCount(preview.names[i]), 1);
    for (const auto& cells : preview.records) nWidth = std::max(nWidth, CharCount(cells[i]));
    widths.push_back(std::min(nWidth, kWidestCell));
  }
  const auto line = [&](std::string_view sNumber, const std::vector<std::string>& cells) {
    std::string sLine = fmt::format("{:>8}  ", sNumber);
    for (size_t i = 0; i < cells.size(); ++i) sLine += Padded(cells[i], widths[i]) + "  ";
    return std::string(TrimRightBlanks(sLine)) + "\n";
  };
  std::string sText = line("line", preview.names);
  for (size_t i = 0; i < preview.records.size(); ++i) {
    sText += line(std::to_string(preview.recordLines[i]), preview.records[i]);
  }
  return sText;
}

}  // namespace

std::string_view TidyKindName(TidyLineKind kind) {
  constexpr std::array<std::string_view, kTidyLineKinds> kNames{"row",     "further",  "joined",  "heading", "total",
                                                                "dropped", "left out", "outside", ""};
  return kNames[static_cast<size_t>(kind)];
}

bool HasTidyTable(clsSectionFile& recipe, int32_t lTable) {
  return clsTidyTables(recipe).Has(lTable);
}

TidyPreview PreviewTidyTable(const PreviewRequest& request, clsSectionFile& recipe) {
  TidyPreview preview;
  std::vector<TidyTable> tables(1);
  clsLineReader reader;
  Failure failure;
  if (!ReadTable(request, recipe, tables[0], preview)) return preview;
  if (!reader.Open(request.sInput, request.text, failure)) {
    preview.sFault = failure.sText;
    return preview;
  }
  clsFirstRecords records(preview, request.lRows);
  clsTidyReport report(tables, records);
  clsTidyLines lines(reader, request.lTabSize);
  for (std::string_view sLine; !records.IsDone() && lines.Next(sLine);) report.Line(sLine);
  preview.bMore = records.IsDone() && !reader.AtEnd();
  if (!records.IsDone()) report.End();
  if (reader.LastFailure().Failed()) preview.sFault = reader.LastFailure().sText;
  if (preview.records.empty() && preview.sFault.empty()) {
    const TidyTableState& state = report.State(0);
    preview.sFault = state.bStarted ? std::string("No line of the report is a row")
                                    : Translate("ReadStartLine is not in the report");
  }
  return preview;
}

std::string TidyPreviewText(const TidyPreview& preview) {
  std::string sText;
  for (const TidyPreviewLine& line : preview.lines) {
    const std::string sLine = fmt::format("{:>8}  {:<9}{}", line.lLine, TidyKindName(line.kind), ShownText(line.sText));
    sText.append(TrimRightBlanks(sLine)).append("\n");
  }
  if (!preview.records.empty()) sText += "\n" + RecordsText(preview);
  if (preview.bMore) sText += "     ...\n";
  return sText;
}

}  // namespace quillon
