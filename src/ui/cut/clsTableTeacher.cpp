#include "clsTableTeacher.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "clsTableShape.h"
#include "modColumnNames.h"
#include "modLineShape.h"
#include "modMendTables.h"
#include "modPointedText.h"
#include "modRowClusters.h"
#include "modRowKinds.h"
#include "modText.h"
#include "modTidyOfShape.h"
#include "modTranslator.h"

namespace quillon {

namespace {

std::vector<size_t> Joined(const std::vector<size_t>& a, const std::vector<size_t>& b) {
  std::vector<size_t> all;
  std::set_union(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(all));
  return all;
}

bool Holds(const std::vector<size_t>& lines, size_t nLine) {
  return std::binary_search(lines.begin(), lines.end(), nLine);
}

bool TellsRows(const TidyTable& table) {
  return !table.row.needs.empty() || !table.row.likes.empty();
}

}  // namespace

bool clsTableTeacher::IsLine(const PointedLine& line, std::string& sFault) const {
  const bool bThere = Index(line) < report_.Lines().size();
  if (!bThere) sFault = Translate("The report has no such line.");
  if (!bThere || !report_.Lines()[Index(line)].IsBlank()) return bThere;
  sFault = Translate("This line is blank.");
  return false;
}

std::string clsTableTeacher::KeyOf(size_t nLine) const {
  return LineShapeKey(Utf8Of(report_.Lines()[nLine].sText));
}

std::vector<size_t> clsTableTeacher::LinesLike(size_t nLine) const {
  const std::string sKey = KeyOf(nLine);
  std::vector<size_t> lines;
  for (size_t n = 0; n < report_.Lines().size(); ++n) {
    const SampleLine& line = report_.Lines()[n];
    if (!line.IsBlank() && !line.bDrawn && KeyOf(n) == sKey) lines.push_back(n);
  }
  return lines;
}

std::vector<size_t> clsTableTeacher::RowsNow() const {
  return TellsRows(table_) ? RowsTaken(report_, table_) : std::vector<size_t>();
}

/// Adds the lines with the same edges whose cells are what the columns of these rows hold. Totals have the edges of
/// rows; they come along only if one was pointed at.
std::vector<size_t> clsTableTeacher::Grown(std::vector<size_t> rows, size_t nLine) const {
  const bool bTotal = SaysTotal(report_.Lines()[nLine].sText);
  constexpr int32_t kRounds = 3;
  for (int32_t l = 0; l < kRounds; ++l) {
    clsEdges edges;
    for (const size_t n : rows) edges.Add(report_.Lines()[n]);
    std::vector<size_t> fitting;
    for (size_t n = 0; n < report_.Lines().size(); ++n) {
      const SampleLine& line = report_.Lines()[n];
      const bool bMay = !line.bDrawn && !line.IsBlank() && (bTotal || !SaysTotal(line.sText));
      if (bMay && edges.Fits(line)) fitting.push_back(n);
    }
    const clsTableShape shape(report_, rows);
    const std::vector<size_t> grown =
        Joined(rows, RowsOfKinds(report_, shape, KindsOfRows(report_, shape, rows), fitting));
    if (grown.size() == rows.size()) break;
    rows = grown;
  }
  return rows;
}

void clsTableTeacher::SetRow(const std::vector<size_t>& rows) {
  const std::vector<size_t> heading = HeadingLines(report_, clsTableShape(report_, rows), rows.front(), 0);
  const clsTableShape shape(report_, rows, heading);
  TidyPart part = TidyOfShape(report_, shape, rows);
  if (table_.row.ColumnNames().size() == part.ColumnCount()) part.names = table_.row.ColumnNames();
  if (std::all_of(part.names.begin(), part.names.end(), [](const std::string& s) { return s.empty(); })) {
    part.names.clear();
    for (const std::u32string& sName : NamesOfColumns(report_, shape, heading)) part.names.push_back(Utf8Of(sName));
  }
  table_.row = std::move(part);
  table_.sParsing.clear();
  table_.fills = FilledFromAbove(report_, shape, rows);
}

bool clsTableTeacher::Row(const PointedLine& line, std::string& sFault) {
  if (!IsLine(line, sFault)) return false;
  const size_t nLine = Index(line);
  const TidyTable before = table_;
  const std::vector<size_t> rows = Grown(Joined(RowsNow(), LinesLike(nLine)), nLine);
  SetRow(rows);
  // What the lines hold in common may be more than a line elsewhere has; the mended table takes them all.
  FoundTable found;
  found.tidy = table_;
  found.rows = rows;
  LineOwners owners{std::vector<uint32_t>(report_.Lines().size()), std::vector<bool>(report_.Lines().size()),
                    std::vector<bool>(report_.Lines().size())};
  for (const size_t n : rows) owners.tables[n] = 1;
  MendTable(report_, owners, 1, found);
  if (before.sStartLine.empty() && before.sEndLine.empty()) table_ = found.tidy;
  table_.row.needs = found.tidy.row.needs;
  if (Holds(RowsTaken(report_, table_), nLine)) return true;
  table_ = before;
  sFault = Translate("No columns were found that this line has in common with others like it.");
  return false;
}

std::vector<std::string> clsTableTeacher::NamesAbove(const std::vector<size_t>& lines) const {
  std::vector<std::string> names(table_.row.ColumnCount());
  const std::vector<TidyPlace>& places = table_.row.cut.places.front();
  for (const size_t n : lines) {
    for (const TextPiece& piece : PiecesOf(report_.Lines()[n].sText)) {
      for (const auto& [nColumn, sText] : PartsOver(piece, places)) {
        if (!names[nColumn].empty()) names[nColumn] += ' ';
        names[nColumn] += sText;
      }
    }
  }
  return names;
}

bool clsTableTeacher::Names(const PointedLine& line, std::string& sFault) {
  if (!IsLine(line, sFault)) return false;
  if (table_.row.cut.places.empty()) {
    sFault = Translate("Show first what the rows look like.");
    return false;
  }
  const size_t nLine = Index(line);
  std::vector<size_t> lines{nLine};
  const std::vector<size_t> rows = RowsNow();
  const auto below = std::upper_bound(rows.begin(), rows.end(), nLine);
  if (below != rows.end()) {
    const std::vector<size_t> block = HeadingLines(report_, clsTableShape(report_, rows), *below, 0);
    if (Holds(block, nLine)) lines = block;
  }
  table_.row.names = NamesAbove(lines);
  return true;
}

/// A text of the line that no row of another shape holds: the longest words without digits first.
std::optional<std::string> clsTableTeacher::TextOfOwn(size_t nLine) const {
  const std::string sKey = KeyOf(nLine);
  std::vector<size_t> others = RowsNow();
  std::erase_if(others, [&](size_t n) { return n == nLine || KeyOf(n) == sKey; });
  for (const std::u32string& sText : WordsOf(report_.Lines()[nLine].sText)) {
    const bool bShared = std::any_of(others.begin(), others.end(), [&](size_t n) {
      return report_.Lines()[n].sText.find(sText) != std::u32string_view::npos;
    });
    if (!bShared) return Utf8Of(sText);
  }
  return std::nullopt;
}

bool clsTableTeacher::LeaveOut(const PointedLine& line, std::string& sFault) {
  if (!IsLine(line, sFault)) return false;
  const std::u32string_view sLine = report_.Lines()[Index(line)].sText;
  const std::optional<std::string> sOwn =
      line.lFirst > 0 ? std::optional(Utf8Of(Characters(sLine, line.lFirst, line.lLast))) : TextOfOwn(Index(line));
  if (!sOwn || sOwn->empty()) {
    sFault = Translate("No words of this line tell it from the rows; drag over a text that does.");
    return false;
  }
  if (std::find(table_.drops.begin(), table_.drops.end(), *sOwn) == table_.drops.end()) table_.drops.push_back(*sOwn);
  return true;
}

std::string clsTableTeacher::FreeName(std::string sName) const {
  std::vector<std::string> taken = table_.row.ColumnNames();
  for (const TidyPart& heading : table_.headings) taken.insert(taken.end(), heading.names.begin(), heading.names.end());
  for (const TidyFurtherLine& line : table_.lines) {
    taken.insert(taken.end(), line.part.names.begin(), line.part.names.end());
  }
  std::string sFree = sName;
  for (int n = 2; std::find(taken.begin(), taken.end(), sFree) != taken.end(); ++n) {
    sFree = sName + " " + std::to_string(n);
  }
  return sFree;
}

/// A heading that most rows look like, too, is none.
bool clsTableTeacher::TakeHeading(TidyPart heading, std::string& sFault) {
  const std::vector<size_t> rows = RowsNow();
  TidyTable alone;
  alone.row.likes = heading.likes;
  alone.row.cut = heading.cut;
  const std::vector<size_t> taken = heading.likes.empty() ? std::vector<size_t>() : RowsTaken(report_, alone);
  const auto nBoth = std::count_if(taken.begin(), taken.end(), [&](size_t n) { return Holds(rows, n); });
  if (nBoth > 0 && static_cast<size_t>(nBoth) * 4 >= taken.size()) {
    sFault = Translate("Rows look like this line; choose a value with a label in front of it.");
    return false;
  }
  table_.headings.push_back(std::move(heading));
  return true;
}

bool clsTableTeacher::Heading(const PointedLine& line, std::string& sFault) {
  if (!IsLine(line, sFault)) return false;
  if (Holds(RowsNow(), Index(line))) {
    sFault = Translate("Rows look like this line; choose a value with a label in front of it.");
    return false;
  }
  const PointedValue value = ValueAt(report_.Lines()[Index(line)].sText, line.lFirst, line.lLast);
  TidyPart heading;
  if (!value.sLabel.empty()) {
    heading.texts = {Utf8Of(value.sLabel)};
  } else {
    heading.likes = {value.sLike};
  }
  if (value.sLabel.empty() || !value.bBehindLabel) heading.cut.places = {{{value.lFirst, value.lLast}}};
  heading.names = {FreeName(value.sLabel.empty() ? Translate("Heading") : Utf8Of(WithoutColon(value.sLabel)))};
  return TakeHeading(std::move(heading), sFault);
}

bool clsTableTeacher::Further(const PointedLine& line, std::string& sFault) {
  if (!IsLine(line, sFault)) return false;
  const size_t nLine = Index(line);
  const std::vector<size_t> rows = RowsNow();
  if (rows.empty() || rows.front() >= nLine || Holds(rows, nLine)) {
    sFault = Translate("A further line stands below a row and is none itself.");
    return false;
  }
  const std::u32string_view sLine = report_.Lines()[nLine].sText;
  TidyFurtherLine further;
  const PointedValue value = ValueAt(sLine, line.lFirst, line.lLast);
  if (!value.sLabel.empty() && value.sLabel.back() == U':' && value.bBehindLabel) {
    further.part.texts = {Utf8Of(value.sLabel)};
    further.part.names = {FreeName(Utf8Of(WithoutColon(value.sLabel)))};
  } else {
    further.part.likes = {PictureOf(sLine, static_cast<size_t>(report_.Lines()[nLine].marks.front().lStart) + 1)};
    further.part.cut.places = {PlacesOfPieces(sLine)};
    for (size_t i = 0; i < further.part.cut.places.front().size(); ++i) {
      further.part.names.push_back(FreeName(Translate("Line") + " " + std::to_string(table_.lines.size() + 2) +
                                            (i > 0 ? "." + std::to_string(i + 1) : "")));
    }
  }
  table_.lines.push_back(std::move(further));
  return true;
}

}  // namespace quillon
