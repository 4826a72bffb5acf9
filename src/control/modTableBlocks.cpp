#include "modTableBlocks.h"

#include <algorithm>
#include <unordered_map>

namespace quillon {

namespace {

constexpr size_t kMostCaptions = 3;  ///< Lines between two rows of a table
constexpr size_t kFewestRows = 3;

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
  for (const size_t nRow : rows) counts.resize(std::max(counts.size(), lines[nRow].characters.size()));
  for (const size_t nRow : rows) {
    for (const LineToken& token : lines[nRow].tokens) {
      if (!token.bFigure) continue;
      for (int32_t l = token.lStart; l <= token.lEnd; ++l) ++counts[static_cast<size_t>(l) - 1];
    }
  }
  return counts;
}

/// A caption's words stand where no row has a figure.
bool IsCaption(const ReportLine& line, const std::vector<int32_t>& figures) {
  const auto nEnd = std::min(static_cast<size_t>(line.tokens.back().lEnd), figures.size());
  for (auto i = static_cast<size_t>(line.tokens.front().lStart) - 1; i < nEnd; ++i) {
    if (figures[i] > 0) return false;
  }
  return static_cast<size_t>(line.tokens.back().lEnd) <= figures.size();
}

/// A heading has words where the rows have figures, more often than not.
bool IsHeading(const ReportLine& line, const std::vector<int32_t>& figures, size_t nRows) {
  int32_t lWords = 0;
  int32_t lFigures = 0;
  for (const LineToken& token : line.tokens) {
    int32_t lMost = 0;
    for (int32_t l = token.lStart; l <= token.lEnd && static_cast<size_t>(l) <= figures.size(); ++l) {
      lMost = std::max(lMost, figures[static_cast<size_t>(l) - 1]);
    }
    if (2 * static_cast<size_t>(lMost) < nRows) continue;
    ++(token.bFigure ? lFigures : lWords);
  }
  return lWords > lFigures;
}

/// Takes headings off the top of the block.
void DropHeadings(const std::vector<ReportLine>& lines, TableBlock& block) {
  const std::vector<int32_t> figures = FigureCounts(lines, block.rows);
  const size_t nRows = block.rows.size();
  while (block.rows.size() >= kFewestRows && IsHeading(lines[block.rows.front()], figures, nRows)) {
    block.rows.erase(block.rows.begin());
  }
}

bool EndsInColon(const ReportLine& line) {
  return !line.characters.empty() && line.characters.back() == U':';
}

/// Captions above the first row belong to the table; a title is told from them by having no colon.
size_t FirstLine(const std::vector<ReportLine>& lines, const TableBlock& block, size_t nAfter,
                 const std::vector<int32_t>& figures) {
  size_t nFirst = block.rows.front();
  while (nFirst > nAfter && block.rows.front() - nFirst < kMostCaptions) {
    const ReportLine& above = lines[nFirst - 1];
    if (EndsBlock(above) || above.bFurniture || !EndsInColon(above) || !IsCaption(above, figures)) break;
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
      if (IsCaption(lines[i], figures)) continue;
      close();
      break;
    }
    part.rows.push_back(nRow);
  }
  close();
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
      ++i;
      continue;
    }
    i = block.rows.back() + 1;
    DropHeadings(lines, block);
    AddParts(lines, block, nAfter, blocks);
    nAfter = i;
  }
  return blocks;
}

}  // namespace quillon
