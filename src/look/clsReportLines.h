#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "clsLineReader.h"

namespace quillon {

/// A stretch of characters without a blank. Columns count from 1.
struct LineToken {
  int32_t lStart, lEnd;
  bool bFigure;  ///< Digits, and no more letters than digits
};

/// A line of a report, looked at for its shape.
struct ReportLine {
  std::string_view sText;             ///< UTF-8 as the file has it: what key texts are looked for in
  std::span<const LineToken> tokens;  ///< Of the line with its tabs expanded, no further than kWidest
  int32_t lFigures = 0;               ///< Tokens that are figures
  int32_t lWidth = 0;                 ///< Characters up to the last one that is no blank
  bool bRule = false;                 ///< Only strokes such as ----- or =====
  bool bFurniture = false;            ///< Comes again and again but for its figures, as headings of pages do
  bool bBinary = false;               ///< Holds control characters that no report has
  bool IsBlank() const { return tokens.empty(); }
};

/// True if the text holds control characters other than tabs, page feeds and the marks of printers.
bool IsBinaryText(std::string_view sText);

/// The lines of a report, as far as its tables are looked for.
class clsReportLines {
 public:
  static constexpr size_t kMostBytes = size_t{128} << 20;
  static constexpr size_t kMostLines = 4000000;
  static constexpr int32_t kWidest = 4096;  ///< Characters of a line that are looked at

  clsReportLines() = default;
  clsReportLines(const clsReportLines&) = delete;
  clsReportLines& operator=(const clsReportLines&) = delete;

  /// To be called once. False with the reason if the file can't be read.
  bool Read(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize, Failure& failure);
  const std::vector<ReportLine>& Lines() const { return lines_; }
  /// The characters of a line (index), tabs expanded, blanks at the end dropped.
  std::u32string Characters(size_t nLine) const;
  /// The line with its figures and its blanks made alike.
  std::string Pattern(size_t nLine) const;
  /// False if the report goes on behind the lines.
  bool IsWhole() const { return bWhole_; }
  size_t Bytes() const { return sAll_.size(); }
  /// True if no line before this one (index) holds the text, and this one does.
  bool IsFirstWith(std::string_view sText, size_t nLine) const;

 private:
  void AddLine(std::string_view sText);
  void FindTokens(ReportLine& line);
  void Settle();
  void FindFurniture();

  int32_t lTabSize_ = 0;
  std::vector<ReportLine> lines_;
  std::vector<LineToken> tokens_;  ///< Of all lines
  std::string sAll_;               ///< All texts, each ended by LF
  std::vector<size_t> patterns_;   ///< A hash of each line's pattern, until its furniture is found
  std::u32string characters_;      ///< Of the line at hand, kept for its memory
  bool bWhole_ = true;
};

}  // namespace quillon
