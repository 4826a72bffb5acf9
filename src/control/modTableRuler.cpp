// RulerOfBlock of modTableBlocks.

#include <algorithm>
#include <string_view>

#include "clsQuietHost.h"
#include "clsTableParser.h"
#include "modTableBlocks.h"

namespace quillon {

namespace {

/// A column of a block: the characters that its rows occupy, from 1, and what they hold.
struct Field {
  int32_t lStart = 0, lEnd = 0;
  size_t nFilled = 0;      ///< Rows that have something in it
  size_t nFigures = 0;     ///< Rows whose text in it is a figure
  size_t nAtStart = 0;     ///< Rows whose text begins at its first character
  bool bSignsOnly = true;  ///< Nothing but a currency sign or the like
  bool bMarksOnly = true;  ///< Nothing but what stands behind an amount

  bool IsFigures() const { return 2 * nFigures > nFilled; }
  /// Right-justified figures want the blanks in front of them.
  bool GrowsLeft() const { return IsFigures() && nAtStart < nFilled; }
};

class clsRuler {
 public:
  clsRuler(const std::vector<ReportLine>& lines, const TableBlock& block) : lines_(lines), block_(block) {}

  std::string Text() {
    FindFields();
    for (Field& field : fields_) Look(field);
    MergeFields();
    return fields_.size() < 2 ? std::string() : Draw();
  }

 private:
  static constexpr int32_t kRoomForText = 20;

  /// The columns that the analyser finds between the first character of any row and the last.
  void FindFields() {
    clsTableParser parser;
    std::vector<bool>& occupied = parser.ColumnOccupied;
    for (const size_t nRow : block_.rows) {
      if (occupied.size() <= lines_[nRow].characters.size()) occupied.resize(lines_[nRow].characters.size() + 1);
      for (const LineToken& token : lines_[nRow].tokens) {
        std::fill(occupied.begin() + token.lStart - 1, occupied.begin() + token.lEnd, true);
      }
    }
    parser.TableWidth = static_cast<int32_t>(occupied.size());
    const auto nMargin = static_cast<size_t>(std::find(occupied.begin(), occupied.end(), true) - occupied.begin());
    clsQuietHost host;
    const std::string sTemplate =
        parser.VariableToFixedTemplate(host, std::string(nMargin, ' ') + std::string(occupied.size() - nMargin, '='));
    std::vector<int32_t> starts;
    std::vector<int32_t> ends;
    std::vector<std::string> ops;
    clsTableParser::analyze_template(host, sTemplate, starts, ends, ops);
    for (size_t i = 0; i < starts.size(); ++i) {
      Field field;
      field.lStart = starts[i];
      field.lEnd = std::min(ends[i], parser.TableWidth);
      const auto used = [&](int32_t l) { return occupied[static_cast<size_t>(l) - 1]; };
      while (field.lEnd > field.lStart && !used(field.lEnd)) --field.lEnd;
      while (field.lStart < field.lEnd && !used(field.lStart)) ++field.lStart;
      if (used(field.lStart)) fields_.push_back(field);
    }
  }

  /// The text of a row in a field, without the blanks around it.
  static std::u32string_view TextIn(const ReportLine& line, const Field& field) {
    const auto nFrom = static_cast<size_t>(field.lStart) - 1;
    if (nFrom >= line.characters.size()) return {};
    std::u32string_view text =
        std::u32string_view(line.characters).substr(nFrom, static_cast<size_t>(field.lEnd) - nFrom);
    while (!text.empty() && text.back() <= U' ') text.remove_suffix(1);
    return text;
  }

  static bool IsFigure(std::u32string_view text) {
    size_t nDigits = 0;
    size_t nOthers = 0;
    for (const char32_t ch : text) {
      if (ch >= U'0' && ch <= U'9') ++nDigits;
      if ((ch >= U'A' && ch <= U'Z') || (ch >= U'a' && ch <= U'z') || ch >= 0xC0) ++nOthers;
    }
    return nDigits > 0 && nDigits >= nOthers;
  }

  void Look(Field& field) const {
    constexpr std::u32string_view kSigns = U"$\u20AC\u00A3\u00A5+-(*";
    constexpr std::u32string_view kMarks = U"%)-*";
    for (const size_t nRow : block_.rows) {
      const std::u32string_view text = TextIn(lines_[nRow], field);
      const size_t nBegin = text.find_first_not_of(U' ');
      if (nBegin == std::u32string_view::npos) continue;
      const std::u32string_view value = text.substr(nBegin);
      ++field.nFilled;
      field.nAtStart += nBegin == 0 ? 1U : 0U;
      field.nFigures += IsFigure(value) ? 1U : 0U;
      field.bSignsOnly = field.bSignsOnly && value.find_first_not_of(kSigns) == std::u32string_view::npos;
      field.bMarksOnly = field.bMarksOnly && value.find_first_not_of(kMarks) == std::u32string_view::npos;
    }
  }

  /// Words of a running text, one blank apart in most rows: a column of blanks between them came about by chance.
  bool IsRunningText(const Field& left, const Field& right) const {
    if (left.IsFigures() || right.IsFigures() || right.lStart - left.lEnd != 2) return false;
    size_t nBoth = 0;
    size_t nTouch = 0;
    for (const size_t nRow : block_.rows) {
      const std::u32string& characters = lines_[nRow].characters;
      if (TextIn(lines_[nRow], left).find_first_not_of(U' ') == std::u32string_view::npos ||
          TextIn(lines_[nRow], right).empty()) {
        continue;
      }
      ++nBoth;
      const auto nLeft = static_cast<size_t>(left.lEnd) - 1;
      if (nLeft + 2 < characters.size() && characters[nLeft] > U' ' && characters[nLeft + 2] > U' ') ++nTouch;
    }
    return 2 * nTouch > nBoth;
  }

  void MergeFields() {
    std::vector<Field> merged;
    for (const Field& field : fields_) {
      const bool bJoins =
          !merged.empty() && ((merged.back().bSignsOnly && field.IsFigures()) ||
                              (merged.back().IsFigures() && field.bMarksOnly) || IsRunningText(merged.back(), field));
      if (!bJoins) {
        merged.push_back(field);
        continue;
      }
      Field joined;
      joined.lStart = merged.back().lStart;
      joined.lEnd = field.lEnd;
      Look(joined);
      merged.back() = joined;
    }
    fields_ = std::move(merged);
  }

  /// The blank of the ruler stands at one of the blank columns between two fields.
  static int32_t Boundary(const Field& left, const Field& right) {
    const int32_t lFirst = left.lEnd + 1;
    const int32_t lLast = right.lStart - 1;
    if (!right.GrowsLeft()) return lLast;
    return left.GrowsLeft() ? lFirst : lFirst + (lLast - lFirst) / 2;
  }

  std::string Draw() const {
    const Field& last = fields_.back();
    // What stands in front of the first field belongs to it, and a text at the end gets room to grow.
    std::string sRuler(static_cast<size_t>(last.lEnd + (last.IsFigures() ? 1 : kRoomForText)), '-');
    for (size_t i = 1; i < fields_.size(); ++i) {
      sRuler[static_cast<size_t>(Boundary(fields_[i - 1], fields_[i])) - 1] = ' ';
    }
    return sRuler;
  }

  const std::vector<ReportLine>& lines_;
  const TableBlock& block_;
  std::vector<Field> fields_;
};

}  // namespace

std::string RulerOfBlock(const clsReportLines& report, const TableBlock& block) {
  return clsRuler(report.Lines(), block).Text();
}

}  // namespace quillon
