#include "modColumnNames.h"

#include <algorithm>
#include <set>

#include "modRowKinds.h"

namespace quillon {

namespace {

constexpr size_t kMostLines = 3;
constexpr size_t kMostPassed = 7;  ///< Blank and drawn lines between the names and the first row

/// A stretch of a heading's line.
struct Piece {
  int32_t lFirst = 0, lLast = 0;
};

/// Words, or stretches parted by two blanks.
std::vector<Piece> PiecesOf(const SampleLine& line, int32_t lGap) {
  std::vector<Piece> pieces;
  for (const LineMark& mark : line.marks) {
    if (pieces.empty() || mark.lStart - pieces.back().lLast > lGap) pieces.push_back({mark.lStart, mark.lEnd});
    pieces.back().lLast = mark.lEnd;
  }
  return pieces;
}

int32_t Overlap(const Piece& piece, const ShapeColumn& column) {
  return std::min(piece.lLast, column.lLast) - std::max(piece.lFirst, column.lFirst) + 1;
}

/// The column that a piece stands over, or is nearest to.
size_t ColumnOf(const Piece& piece, const std::vector<ShapeColumn>& columns) {
  size_t nBest = 0;
  int32_t lMost = Overlap(piece, columns.front());
  for (size_t i = 1; i < columns.size(); ++i) {
    const int32_t lOverlap = Overlap(piece, columns[i]);
    if (lOverlap <= lMost) continue;
    lMost = lOverlap;
    nBest = i;
  }
  return nBest;
}

size_t ColumnsUnder(const std::vector<Piece>& pieces, const std::vector<ShapeColumn>& columns) {
  std::vector<bool> under(columns.size());
  constexpr int32_t kNear = -2;
  for (const Piece& piece : pieces) {
    const size_t n = ColumnOf(piece, columns);
    if (Overlap(piece, columns[n]) >= kNear) under[n] = true;
  }
  return static_cast<size_t>(std::count(under.begin(), under.end(), true));
}

std::u32string_view TextOf(const SampleLine& line, const Piece& piece) {
  return line.sText.substr(static_cast<size_t>(piece.lFirst), static_cast<size_t>(piece.lLast - piece.lFirst) + 1);
}

/// As many pieces as columns, each over or beside its own.
bool StandInOrder(const std::vector<Piece>& pieces, const std::vector<ShapeColumn>& columns) {
  if (pieces.size() != columns.size()) return false;
  constexpr int32_t kNear = -1;
  for (size_t i = 0; i < pieces.size(); ++i) {
    if (Overlap(pieces[i], columns[i]) < kNear) return false;
  }
  return true;
}

/// Words of a line with one blank between them are names of columns only if they stand at the edges of columns.
bool StandAtEdges(const std::vector<Piece>& words, const std::vector<ShapeColumn>& columns) {
  if (StandInOrder(words, columns)) return true;
  size_t nAtEdge = 0;
  for (const Piece& word : words) {
    nAtEdge += std::any_of(columns.begin(), columns.end(),
                           [&](const ShapeColumn& column) {
                             return word.lFirst == column.lFirst || word.lLast == column.lLast;
                           })
                   ? 1U
                   : 0U;
  }
  return nAtEdge * 5 >= words.size() * 3 && nAtEdge * 2 >= columns.size();
}

/// A digit, but for a year: those are names of columns as well.
bool HoldsFigure(std::u32string_view sWord) {
  const bool bYear = sWord.size() == 4 && (sWord.starts_with(U"19") || sWord.starts_with(U"20")) &&
                     std::all_of(sWord.begin(), sWord.end(), IsDigitPlace);
  return !bYear && std::any_of(sWord.begin(), sWord.end(), IsDigitPlace);
}

/// "Warehouse NO:  905  Sales", "BRANCH: Paint   HEAD: Frank Meyer": some pieces end in a colon or hold one, others are
/// their values.
bool HasLabels(const SampleLine& line) {
  const std::vector<Piece> pieces = PiecesOf(line, 2);
  size_t nLabels = 0;
  size_t nWithValue = 0;
  for (const Piece& piece : pieces) {
    const std::u32string_view sPiece = TextOf(line, piece);
    nLabels += sPiece.size() > 1 && sPiece.back() == U':' ? 1U : 0U;
    nWithValue += sPiece.find(U": ", 1) != std::u32string_view::npos ? 1U : 0U;
  }
  if (nWithValue > 1 || nWithValue * 2 > pieces.size()) return true;
  return nLabels > 0 && nLabels * 2 <= pieces.size() + 1 && nLabels < pieces.size();
}

/// 31-60 days.
bool IsRange(std::u32string_view sWord) {
  constexpr size_t kMost = 3;
  const size_t nDash = sWord.find(U'-');
  if (nDash == std::u32string_view::npos || nDash == 0 || nDash > kMost || sWord.size() - nDash > kMost + 1)
    return false;
  return std::count_if(sWord.begin(), sWord.end(), IsDigitPlace) + 1 == static_cast<ptrdiff_t>(sWord.size());
}

/// "EC= .0768  QR= 2.5564", "Faktura nr: F 1234": labels with their values.
bool HasValues(const SampleLine& line) {
  if (HasLabels(line)) return true;
  size_t nLabels = 0;
  size_t nFigures = 0;
  for (size_t i = 0; i + 1 < line.marks.size(); ++i) {
    const char32_t ch = line.sText[static_cast<size_t>(line.marks[i].lEnd)];
    const bool bNear = line.marks[i + 1].lStart - line.marks[i].lEnd <= 2;
    nLabels += (ch == U':' && bNear && line.marks[i].lEnd > line.marks[i].lStart) || ch == U'=' ? 1U : 0U;
  }
  for (const LineMark& mark : line.marks) {
    const std::u32string_view sWord = TextOf(line, {mark.lStart, mark.lEnd});
    if (IsDateText(sWord)) return true;
    nFigures += HoldsFigure(sWord) && !IsRange(sWord) ? 1U : 0U;
  }
  return nLabels * 3 > line.marks.size() || (nLabels > 0 && line.marks.size() < 6) || nFigures * 3 > line.marks.size();
}

/// Figures over more columns of figures than words: a row of another kind.
bool HasFiguresOverFigures(const SampleLine& line, const std::vector<ShapeColumn>& columns) {
  size_t nFigures = 0;
  size_t nWords = 0;
  for (const LineMark& mark : line.marks) {
    const Piece word{mark.lStart, mark.lEnd};
    const ShapeColumn& column = columns[ColumnOf(word, columns)];
    if (!column.bFigures || Overlap(word, column) <= 0) continue;
    (HoldsFigure(TextOf(line, word)) ? nFigures : nWords) += 1;
  }
  return nFigures > 0 && nFigures >= nWords;
}

/// <S>, <C>: what tells a program where columns begin.
bool IsTag(std::u32string_view sWord) {
  constexpr size_t kLongest = 4;
  return sWord.size() >= 3 && sWord.size() <= kLongest && sWord.front() == U'<' && sWord.back() == U'>';
}

bool AreTags(const SampleLine& line) {
  return !line.marks.empty() && std::all_of(line.marks.begin(), line.marks.end(), [&](const LineMark& mark) {
    return IsTag(TextOf(line, {mark.lStart, mark.lEnd}));
  });
}

/// Names that stand at no places: as many as columns, with one blank between them.
bool AreNamesInOrder(const SampleLine& line, const std::vector<ShapeColumn>& columns) {
  constexpr size_t kFewest = 3;
  const std::vector<Piece> words = PiecesOf(line, 1);
  std::set<std::u32string_view> different;
  for (const Piece& word : words) different.insert(TextOf(line, word));
  return words.size() >= kFewest && words.size() == line.marks.size() && words.size() == columns.size() &&
         different.size() == words.size() && PiecesOf(line, 2).size() == 1 &&
         std::all_of(words.begin(), words.end(), [&](const Piece& word) {
           const std::u32string_view sWord = TextOf(line, word);
           return IsLetterPlace(sWord.front()) && !HoldsFigure(sWord) && sWord.back() != U':';
         });
}

bool MayBeHeading(const SampleLine& line, const clsTableShape& shape) {
  if (line.bDrawn || line.marks.empty()) return false;
  const auto nNumbers = static_cast<size_t>(std::count_if(
      line.marks.begin(), line.marks.end(), [](const LineMark& mark) { return mark.kind == MarkKind::Number; }));
  const bool bLetter = std::any_of(line.sText.begin(), line.sText.end(), IsLetterPlace);
  if (!bLetter || nNumbers * 2 > line.marks.size() || HasFiguresOverFigures(line, shape.Columns())) return false;
  // OVER 90 and TOTAL may be names; an amount is none.
  const bool bAmount = std::any_of(line.marks.begin(), line.marks.end(), [](const LineMark& mark) {
    constexpr int32_t kShort = 3;
    return mark.kind == MarkKind::Number && mark.lEnd - mark.lStart >= kShort;
  });
  if (HasValues(line) || (bAmount && SaysTotal(line.sText)) || (nNumbers > 0 && SaysPage(line.sText))) return false;
  const std::vector<Piece> words = PiecesOf(line, 1);
  const std::vector<Piece> pieces = PiecesOf(line, 2);
  if ((pieces.size() < 2 || pieces.size() * 2 < std::min(words.size(), shape.Columns().size())) &&
      !StandAtEdges(words, shape.Columns())) {
    return false;
  }
  const size_t nUnder = ColumnsUnder(words, shape.Columns());
  return nUnder >= 2 && nUnder * 3 >= shape.Columns().size();
}

bool MayGoAbove(const SampleLine& line) {
  if (line.bDrawn || line.marks.empty()) return false;
  const auto nNumbers = static_cast<size_t>(std::count_if(
      line.marks.begin(), line.marks.end(), [](const LineMark& mark) { return mark.kind == MarkKind::Number; }));
  return nNumbers == 0 && PiecesOf(line, 2).size() >= 2 && !HasValues(line);
}

}  // namespace

std::vector<size_t> HeadingLines(const clsReportSample& report, const clsTableShape& shape, size_t nRow,
                                 size_t nAfter) {
  const std::vector<SampleLine>& lines = report.Lines();
  std::vector<size_t> found;
  size_t nPassed = 0;
  for (size_t n = nRow; n > nAfter && found.size() < kMostLines; --n) {
    const SampleLine& line = lines[n - 1];
    if (line.IsBlank() || line.bDrawn || AreTags(line)) {
      if (!found.empty() || ++nPassed > kMostPassed) break;
      continue;
    }
    if (found.empty() && lines[n].bDrawn && AreNamesInOrder(line, shape.Columns())) return {n - 1};
    if (!MayBeHeading(line, shape) && !(MayGoAbove(line) && !found.empty())) {
      // Names may stand above a short line, such as a unit or the title of the first group.
      const bool bTitle = n == nRow && n > 1 && (lines[n - 2].IsBlank() || lines[n - 2].bDrawn);
      if (found.empty() && ++nPassed <= kMostPassed && (line.marks.size() <= 4 || HasValues(line) || bTitle)) continue;
      break;
    }
    found.insert(found.begin(), n - 1);
  }
  // Names too wide for one line go on in the next one.
  if (found.size() == 1 && found.front() + 1 < nRow) {
    const SampleLine& next = lines[found.front() + 1];
    const size_t nPieces = PiecesOf(lines[found.front()], 2).size() + PiecesOf(next, 2).size();
    if (!next.IsBlank() && !next.bDrawn && nPieces == shape.Columns().size()) found.push_back(found.front() + 1);
  }
  return found;
}

namespace {

void AddTo(std::u32string& sName, std::u32string_view sPiece) {
  while (!sPiece.empty() && (sPiece.front() == U':' || sPiece.front() == U'|')) sPiece = TrimPlaces(sPiece.substr(1));
  while (!sPiece.empty() && (sPiece.back() == U':' || sPiece.back() == U'|' || sPiece.back() == U',')) {
    sPiece = TrimPlaces(sPiece.substr(0, sPiece.size() - 1));
  }
  // A time or strokes in the line of the names are none.
  const bool bSays = std::any_of(sPiece.begin(), sPiece.end(), [](char32_t ch) {
    return IsLetterPlace(ch) || std::u32string_view(U"%#$&@").find(ch) != std::u32string_view::npos;
  });
  const bool bPlain = std::all_of(sPiece.begin(), sPiece.end(), IsDigitPlace);
  if (sPiece.empty() || !(bSays || bPlain)) return;
  if (!sName.empty()) sName += U' ';
  sName += sPiece;
}

void AddLine(const SampleLine& line, const std::vector<ShapeColumn>& columns, std::vector<std::u32string>& names) {
  if (AreNamesInOrder(line, columns)) {
    for (size_t i = 0; i < line.marks.size(); ++i) {
      AddTo(names[i], TextOf(line, {line.marks[i].lStart, line.marks[i].lEnd}));
    }
    return;
  }
  for (const int32_t lGap : {2, 1}) {
    const std::vector<Piece> pieces = PiecesOf(line, lGap);
    if (!StandInOrder(pieces, columns)) continue;
    for (size_t i = 0; i < pieces.size(); ++i) AddTo(names[i], TextOf(line, pieces[i]));
    return;
  }
  for (const Piece& piece : PiecesOf(line, 2)) {
    const size_t nColumn = ColumnOf(piece, columns);
    size_t nOver = 0;
    for (const ShapeColumn& column : columns) nOver += Overlap(piece, column) > 0 ? 1U : 0U;
    if (nOver <= 1) {
      AddTo(names[nColumn], TextOf(line, piece));
      continue;
    }
    for (const LineMark& mark : line.marks) {
      if (mark.lStart < piece.lFirst || mark.lEnd > piece.lLast) continue;
      const Piece word{mark.lStart, mark.lEnd};
      AddTo(names[ColumnOf(word, columns)], TextOf(line, word));
    }
  }
}

}  // namespace

std::vector<std::u32string> NamesOfColumns(const clsReportSample& report, const clsTableShape& shape,
                                           const std::vector<size_t>& headingLines) {
  std::vector<std::u32string> names(shape.Columns().size());
  for (const size_t n : headingLines) AddLine(report.Lines()[n], shape.Columns(), names);
  const bool bAll = std::none_of(names.begin(), names.end(), [](const std::u32string& sName) { return sName.empty(); });
  if (bAll || headingLines.size() != 2) return names;
  // As many pieces in two lines as there are columns: the first line was too short for all.
  std::vector<std::u32string> inOrder;
  for (const size_t n : headingLines) {
    for (const Piece& piece : PiecesOf(report.Lines()[n], 2))
      AddTo(inOrder.emplace_back(), TextOf(report.Lines()[n], piece));
  }
  return inOrder.size() == names.size() ? inOrder : names;
}

}  // namespace quillon
