#include "modPreviewText.h"

#include <fmt/format.h>

#include <algorithm>

#include "modNumbers.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kMargin = 8;  ///< Characters of the line number and the blanks behind it

std::string Numbered(int64_t lLine, std::string_view sText) {
  return fmt::format("{:>6}  {}", lLine, sText);
}

std::string KeyText(std::string_view sName, const PreviewKey& key) {
  std::string sText = fmt::format("{} \"{}\" ", sName, ShownText(key.sText));
  if (key.place == KeyPlace::Found) sText += fmt::format("on line {}", key.lLine);
  if (key.place == KeyPlace::Missing) sText += "not found";
  if (key.place == KeyPlace::NotLookedFor) sText += "not looked for";
  if (key.place == KeyPlace::NotReached) sText += "not in the part that was searched";
  if (key.place == KeyPlace::FurtherDown) sText += "not on a line that is shown";
  if (key.lOffset != 0) sText += fmt::format(", offset {}", key.lOffset);
  return sText;
}

std::string CellText(const std::string& sCell) {
  return ShownText(TrimBlanks(sCell));
}

class clsPreviewWriter {
 public:
  explicit clsPreviewWriter(const ReportPreview& preview) : preview_(preview) {}

  std::string Text() {
    Bounds();
    if (preview_.rows.empty()) return std::move(sOut_);
    Lines();
    Cells();
    Sum();
    return std::move(sOut_);
  }
  std::string BoundsText() {
    Bounds();
    return std::move(sOut_);
  }

 private:
  void Print(std::string_view sLine) { sOut_.append(TrimRightBlanks(sLine)).append("\n"); }

  void Bounds() {
    if (preview_.start.sText.empty() && preview_.end.sText.empty()) return;
    Print(fmt::format("Table {} of {}", preview_.lTable, preview_.lTables));
    if (!preview_.start.sText.empty()) Print("  " + KeyText("ReadStartLine", preview_.start));
    if (!preview_.end.sText.empty()) Print("  " + KeyText("ReadEndLine", preview_.end));
    if (!preview_.rows.empty()) Print("");
  }

  void Lines() {
    Print(std::string(kMargin, ' ') + preview_.sRuler);
    for (const PreviewRow& row : preview_.rows) {
      Print(Numbered(row.lLine, ShownText(row.sText)));
      const std::string sMarks = LossMarks(row, preview_.columns);
      if (!sMarks.empty()) Print(std::string(kMargin, ' ') + sMarks);
    }
    if (preview_.bMore) Print(std::string(kMargin, ' ') + "...");
  }

  void Cells() {
    const std::vector<std::string> letters = ColumnTitles(preview_);
    std::vector<size_t> widths;
    for (const std::string& sLetters : letters) widths.push_back(sLetters.size());
    for (const PreviewRow& row : preview_.rows) {
      widths.resize(std::max(widths.size(), row.cells.size()));
      for (size_t i = 0; i < row.cells.size(); ++i) widths[i] = std::max(widths[i], CharCount(CellText(row.cells[i])));
    }
    const auto line = [&](const std::vector<std::string>& cells) {
      std::string sLine;
      for (size_t i = 0; i < cells.size(); ++i) {
        const std::string sCell = CellText(cells[i]);
        sLine += (i > 0 ? " | " : "") + sCell + std::string(widths[i] - CharCount(sCell), ' ');
      }
      return sLine;
    };
    Print("");
    Print(std::string(kMargin, ' ') + line(letters));
    for (const PreviewRow& row : preview_.rows) Print(Numbered(row.lLine, line(row.cells)));
  }

  void Sum() {
    Print("");
    Print(fmt::format("{} shown: {} left out, {} of them behind the last column; {} cut",
                      CountedText(preview_.lRows, "row", "rows"),
                      CountedText(preview_.lLeftOut, "character", "characters"), preview_.lBehind,
                      CountedText(preview_.lCuts, "value", "values")));
  }

  const ReportPreview& preview_;
  std::string sOut_;
};

}  // namespace

std::string PreviewText(const ReportPreview& preview) {
  return clsPreviewWriter(preview).Text();
}

std::string BoundsText(const ReportPreview& preview) {
  return clsPreviewWriter(preview).BoundsText();
}

std::vector<std::string> ColumnTitles(const ReportPreview& preview) {
  std::vector<std::string> letters;
  for (const PreviewColumn& column : preview.columns) {
    if (!column.sLetters.empty()) letters.push_back(column.sLetters);
  }
  std::sort(letters.begin(), letters.end(), [](const std::string& a, const std::string& b) {
    return a.size() != b.size() ? a.size() < b.size() : a < b;
  });
  return letters;
}

std::string ShownText(std::string_view sText) {
  constexpr size_t kMostBytes = 16384;  // a report without line ends is one line
  std::string sOut;
  for (size_t i = 0; i < sText.size() && sOut.size() < kMostBytes;) {
    const char32_t ch = DecodeUtf8(sText, i);
    const bool bControl = ch < 0x20 || (ch >= 0x7F && ch < 0xA0);
    AppendUtf8(bControl ? U'.' : ch, sOut);
  }
  return sOut;
}

}  // namespace quillon
