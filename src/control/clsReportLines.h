#pragma once

#include <cstdint>
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
  std::string sText;          ///< UTF-8 as the file has it: what key texts are looked for in
  std::u32string characters;  ///< Tabs expanded, blanks at the end dropped
  std::vector<LineToken> tokens;
  bool bRule = false;       ///< Only strokes such as ----- or =====
  bool bFurniture = false;  ///< Comes again and again but for its figures, as headings of pages do
  bool bBinary = false;     ///< Holds control characters that no report has
  int32_t lFigures = 0;     ///< Tokens that are figures
  bool IsBlank() const { return tokens.empty(); }
};

/// The lines of a report, as many as a person would look through to find its tables.
class clsReportLines {
 public:
  static constexpr size_t kMostBytes = size_t{8} << 20;
  static constexpr size_t kMostLines = 100000;

  /// False with the reason if the file can't be read.
  bool Read(std::string_view sInput, const TextFileOptions& options, int32_t lTabSize, Failure& failure);
  const std::vector<ReportLine>& Lines() const { return lines_; }
  /// False if the report goes on behind the lines.
  bool IsWhole() const { return bWhole_; }
  /// True if no line before this one (index) holds the text, and this one does.
  bool IsFirstWith(std::string_view sText, size_t nLine) const;

 private:
  void FindFurniture();

  std::vector<ReportLine> lines_;
  std::string sAll_;             ///< All texts, each ended by LF
  std::vector<size_t> offsets_;  ///< Where each line starts in it
  bool bWhole_ = true;
};

}  // namespace quillon
