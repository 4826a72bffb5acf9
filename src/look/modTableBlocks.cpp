#include "modTableBlocks.h"

#include <algorithm>
#include <unordered_map>

namespace quillon {

namespace {

constexpr size_t kMostCaptions = 3;  ///< Lines between two rows of a table
constexpr size_t kFewestRows = 3;
constexpr size_t kHighestHeading = 6;  ///< Lines above the first row

/// Where the tokens of the rows of a block begin and end, and how many rows have one there.
class clsShape {
 public:
  void Add(const ReportLine& line) {
    ++lRows_;
    for (const LineToken& token : line.tokens) {
      Count(starts_, token.lStart);
      Count(ends_, token.lEnd);
    }
  }
  /// True if enough of the line stands under what is there: its figures for the most part, and a second token or, with
  /// all of its figures, an end that half of the rows have.
  bool Fits(const ReportLine& line) const {
    if (line.lFigures == 0 || line.tokens.size() < 2) return false;
    int32_t lFigures = 0;
    int32_t lAll = 0;
    bool bCommonEnd = false;
    for (const LineToken& token : line.tokens) {
      if (!IsHere(starts_, token.lStart, kShare) && !IsHere(ends_, token.lEnd, kShare)) continue;
      ++lAll;
      lFigures += token.bFigure ? 1 : 0;
      bCommonEnd = bCommonEnd || (token.bFigure && IsHere(ends_, token.lEnd, 2));
    }
    if (lFigures == 0 || 2 * lFigures < line.lFigures) return false;
    return lAll >= 2 || (bCommonEnd && lFigures == line.lFigures);
  }

 private:
  using Counts = std::vector<int32_t>;
  static void Count(Counts& counts, int32_t lColumn) {
    const auto nColumn = static_cast<size_t>(lColumn);
    if (counts.size() <= nColumn) counts.resize(nColumn + 1);
    ++counts[nColumn];
  }
  static constexpr int32_t kShare = 8;
  /// True if one row of lShare has something at the column.
  bool IsHere(const Counts& counts, int32_t lColumn, int32_t lShare) const {
    const auto nColumn = static_cast<size_t>(lColumn);
    return nColumn < counts.size() && counts[nColumn] > 0 && counts[nColumn] * lShare >= lRows_;
  }
  Counts starts_, ends_;
  int32_t lRows_ = 0;
};

bool EndsBlock(const ReportLine& line) {
  return line.IsBlank() || line.bRule || line.bBinary;
}

/// The next line from nFrom that may be the next row; nEnd if what lies between can't belong to a table.
size_t NextRow(const std::vector<ReportLine>& lines, size_t nFrom, const clsShape& shape) {
  for (size_t i = nFrom; i < lines.size() && i <= nFrom + kMostCaptions; ++i) {
    if (EndsBlock(lines[i])) break;
    if (shape.Fits(lines[i])) return i;
    if (lines[i].bFurniture) break;
  }
  return lines.size();
}

/// How many of the rows have a figure over each character.
std::vector<int32_t> FigureCounts(const std::vector<ReportLine>& lines, const std::vector<size_t>& rows) {
  std::vector<int32_t> counts;
  for (const size_t nRow : rows) {
    if (lines[nRow].IsBlank()) continue;
    counts.resize(std::max(counts.size(), static_cast<size_t>(lines[nRow].tokens.back().lEnd)));
    for (const LineToken& token : lines[nRow].tokens) {
      if (!token.bFigure) continue;
      for (int32_t l = token.lStart; l <= token.lEnd; ++l) ++counts[static_cast<size_t>(l) - 1];
    }
  }
  return counts;
}

/// A caption's words stand where hardly a row has a figure.
bool IsCaption(const ReportLine& line, const std::vector<int32_t>& figures, size_t nRows) {
  constexpr size_t kHardly = 16;
  const auto nEnd = std::min(static_cast<size_t>(line.tokens.back().lEnd), figures.size());
  for (auto i = static_cast<size_t>(line.tokens.front().lStart) - 1; i < nEnd; ++i) {
    if (static_cast<size_t>(figures[i]) * kHardly > nRows) return false;
  }
  return static_cast<size_t>(line.tokens.back().lEnd) <= figures.size();
}

/// Columns in which at least half of the rows have figures.
int32_t FigureColumns(const std::vector<int32_t>& figures, size_t nRows) {
  int32_t lColumns = 0;
  bool bInside = false;
  for (const int32_t lCount : figures) {
    const bool bFigures = 2 * static_cast<size_t>(lCount) >= nRows;
    lColumns += bFigures && !bInside ? 1 : 0;
    bInside = bFigures;
  }
  return lColumns;
}

/// The figures of a column taken to be as wide as it is: headings stand over the blanks in front of small numbers, too.
std::vector<int32_t> WidenFigures(std::vector<int32_t> figures, std::string_view sRuler, size_t nRows) {
  figures.resize(std::max(figures.size(), sRuler.size()));
  for (size_t nFrom = 0; nFrom < sRuler.size();) {
    const size_t nEnd = std::min(sRuler.find(' ', nFrom), sRuler.size());
    const auto itFrom = figures.begin() + static_cast<ptrdiff_t>(nFrom);
    const auto itEnd = figures.begin() + static_cast<ptrdiff_t>(nEnd);
    const bool bFigures = itFrom != itEnd && 2 * static_cast<size_t>(*std::max_element(itFrom, itEnd)) >= nRows;
    std::fill(itFrom, itEnd, bFigures ? static_cast<int32_t>(nRows) : 0);
    nFrom = nEnd + 1;
  }
  return figures;
}

/// What of a line stands where at least half of the rows have figures. Words one blank apart count as one.
struct OverFigures {
  int32_t lWords = 0, lFigures = 0;
};
OverFigures CountOverFigures(const ReportLine& line, const std::vector<int32_t>& figures, size_t nRows) {
  OverFigures over;
  int32_t lWordEnd = -2;  // of no word: none can start two characters behind it
  for (const LineToken& token : line.tokens) {
    int32_t lMost = 0;
    for (int32_t l = token.lStart; l <= token.lEnd && static_cast<size_t>(l) <= figures.size(); ++l) {
      lMost = std::max(lMost, figures[static_cast<size_t>(l) - 1]);
    }
    if (2 * static_cast<size_t>(lMost) < nRows) continue;
    if (token.bFigure) ++over.lFigures;
    if (!token.bFigure && token.lStart != lWordEnd + 2) ++over.lWords;
    if (!token.bFigure) lWordEnd = token.lEnd;
  }
  return over;
}

/// A heading has words where the rows have figures, more often than not.
bool IsHeading(const ReportLine& line, const std::vector<int32_t>& figures, size_t nRows) {
  const OverFigures over = CountOverFigures(line, figures, nRows);
  return over.lWords > over.lFigures;
}

/// Takes headings off the top of the block, and off its end what has nothing where the rows have their figures.
void DropHeadings(const std::vector<ReportLine>& lines, TableBlock& block) {
  const std::vector<int32_t> figures = FigureCounts(lines, block.rows);
  const size_t nRows = block.rows.size();
  size_t nTop = 0;
  while (nRows - nTop >= kFewestRows && IsHeading(lines[block.rows[nTop]], figures, nRows)) ++nTop;
  block.rows.erase(block.rows.begin(), block.rows.begin() + static_cast<ptrdiff_t>(nTop));
  const bool bHasFigures = FigureColumns(figures, nRows) > 0;
  while (bHasFigures && block.rows.size() >= kFewestRows) {
    if (CountOverFigures(lines[block.rows.back()], figures, nRows).lFigures > 0) break;
    block.rows.pop_back();
  }
}

bool EndsInColon(const ReportLine& line) {
  const size_t nLast = line.sText.find_last_not_of(' ');
  return nLast != std::string_view::npos && line.sText[nLast] == ':';
}

/// Captions above the first row belong to the table; a title is told from them by having no colon.
size_t FirstLine(const std::vector<ReportLine>& lines, const TableBlock& block, size_t nAfter,
                 const std::vector<int32_t>& figures) {
  size_t nFirst = block.rows.front();
  while (nFirst > nAfter && block.rows.front() - nFirst < kMostCaptions) {
    const ReportLine& above = lines[nFirst - 1];
    if (EndsBlock(above) || above.bFurniture || !EndsInColon(above) || !IsCaption(above, figures, block.rows.size()))
      break;
    --nFirst;
  }
  return nFirst;
}

/// Parts of a block between lines that are neither rows nor captions of it.
void AddParts(const std::vector<ReportLine>& lines, const TableBlock& block, size_t nAfter,
              std::vector<TableBlock>& blocks) {
  const std::vector<int32_t> figures = FigureCounts(lines, block.rows);
  TableBlock part;
  const auto close = [&] {
    if (part.rows.size() >= kFewestRows) {
      part.nFirst = FirstLine(lines, part, nAfter, figures);
      part.nLast = part.rows.back();
      nAfter = part.nLast + 1;
      blocks.push_back(part);
    }
    part = {};
  };
  for (const size_t nRow : block.rows) {
    for (size_t i = part.rows.empty() ? nRow : part.rows.back() + 1; i < nRow; ++i) {
      if (IsCaption(lines[i], figures, block.rows.size())) continue;
      close();
      break;
    }
    part.rows.push_back(nRow);
  }
  close();
}

/// Stretches of a line between gaps of two blanks or more.
std::vector<LineToken> FieldsOf(const ReportLine& line) {
  std::vector<LineToken> fields;
  for (const LineToken& token : line.tokens) {
    if (!fields.empty() && token.lStart == fields.back().lEnd + 2) {
      fields.back().lEnd = token.lEnd;
      fields.back().bFigure = fields.back().bFigure && token.bFigure;
    } else {
      fields.push_back(token);
    }
  }
  return fields;
}

/// The words above a line up to a blank line or a rule, if there is no figure among them.
std::vector<LineToken> WordsAbove(const std::vector<ReportLine>& lines, size_t nLine, size_t nAfter) {
  std::vector<LineToken> words;
  for (size_t n = nLine; n > nAfter && nLine - n < kHighestHeading; --n) {
    const ReportLine& line = lines[n - 1];
    if (EndsBlock(line)) {
      if (!words.empty()) break;
      continue;
    }
    if (line.lFigures > 0) return {};
    words.insert(words.end(), line.tokens.begin(), line.tokens.end());
  }
  return words;
}

/// One or two lines from nFirst on that stand alone under a heading with a word over most of their fields.
bool FewRowsUnderHeading(const std::vector<ReportLine>& lines, size_t nFirst, size_t nAfter, TableBlock& block) {
  constexpr int32_t kFewestFigures = 3;
  constexpr size_t kFewestFields = 4;
  size_t nEnd = nFirst;
  while (nEnd < lines.size() && nEnd - nFirst < kFewestRows && !EndsBlock(lines[nEnd]) &&
         lines[nEnd].lFigures >= kFewestFigures) {
    ++nEnd;
  }
  const size_t nRows = nEnd - nFirst;
  if (nRows == 0 || nRows >= kFewestRows || (nEnd < lines.size() && !EndsBlock(lines[nEnd]))) return false;
  const std::vector<LineToken> fields = FieldsOf(lines[nFirst]);
  const std::vector<LineToken> words = WordsAbove(lines, nFirst, nAfter);
  if (fields.size() < kFewestFields || words.size() < kFewestFields) return false;
  const auto nUnder = static_cast<size_t>(std::count_if(fields.begin(), fields.end(), [&](const LineToken& field) {
    return std::any_of(words.begin(), words.end(), [&](const LineToken& word) {
      return word.lStart <= field.lEnd + 1 && field.lStart <= word.lEnd + 1;
    });
  }));
  if (4 * nUnder < 3 * fields.size()) return false;
  block.nFirst = nFirst;
  block.nLast = nEnd - 1;
  block.rows.clear();
  for (size_t n = nFirst; n < nEnd; ++n) block.rows.push_back(n);
  return true;
}

}  // namespace

std::vector<TableBlock> FindTableBlocks(const clsReportLines& report) {
  const std::vector<ReportLine>& lines = report.Lines();
  std::vector<TableBlock> blocks;
  size_t nAfter = 0;
  for (size_t i = 0; i < lines.size();) {
    TableBlock block;
    if (!EndsBlock(lines[i]) && lines[i].lFigures > 0 && lines[i].tokens.size() >= 2) {
      clsShape shape;
      for (size_t nRow = i; nRow < lines.size(); nRow = NextRow(lines, nRow + 1, shape)) {
        shape.Add(lines[nRow]);
        block.rows.push_back(nRow);
      }
    }
    if (block.rows.size() < kFewestRows) {
      if (FewRowsUnderHeading(lines, i, nAfter, block)) {
        blocks.push_back(block);
        nAfter = i = block.nLast + 1;
      } else {
        ++i;
      }
      continue;
    }
    DropHeadings(lines, block);
    i = block.rows.back() + 1;
    AddParts(lines, block, nAfter, blocks);
    nAfter = i;
  }
  return blocks;
}

std::string HeadingOfBlock(const clsReportLines& report, const TableBlock& block, std::string_view sRuler,
                           size_t nAfter) {
  const std::vector<ReportLine>& lines = report.Lines();
  const size_t nRows = block.rows.size();
  const std::vector<int32_t> figures = WidenFigures(FigureCounts(lines, block.rows), sRuler, nRows);
  const int32_t lFewest = FigureColumns(figures, nRows) > 1 ? 2 : 1;  // one word may be that of a title
  std::string sHeading;
  for (size_t n = block.nFirst; n > nAfter && block.nFirst - n < kHighestHeading; --n) {
    const ReportLine& line = lines[n - 1];
    const OverFigures over = CountOverFigures(line, figures, nRows);
    if (!line.bRule && over.lWords >= lFewest && over.lWords > over.lFigures) {
      sHeading += report.Pattern(n - 1) + "\n";
    } else if (!sHeading.empty()) {
      break;
    }
  }
  return sHeading;
}

bool HasShapeOf(const clsReportLines& report, const TableBlock& block, const TableBlock& other) {
  constexpr size_t kLook = 100;  ///< Rows that tell enough of a shape
  clsShape shape;
  for (size_t i = 0; i < std::min(block.rows.size(), kLook); ++i) shape.Add(report.Lines()[block.rows[i]]);
  const size_t nLook = std::min(other.rows.size(), kLook);
  size_t nFit = 0;
  for (size_t i = 0; i < nLook; ++i) nFit += shape.Fits(report.Lines()[other.rows[i]]) ? 1U : 0U;
  return 4 * nFit >= 3 * nLook;
}

}  // namespace quillon
