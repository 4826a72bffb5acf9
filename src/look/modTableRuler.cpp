// RulerOfBlocks of modTableBlocks.

#include <algorithm>
#include <span>
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
  clsRuler(const clsReportLines& report, std::span<const TableBlock> parts) : report_(report), parts_(parts) {
    for (const TableBlock& part : parts) nRows_ += part.rows.size();
    TakeSample();
    CountCaptionCuts();
  }

  std::string Text() {
    FindFields();
    for (Field& field : fields_) Look(field);
    MergeFields();
    return fields_.size() < 2 ? std::string() : Draw();
  }

 private:
  static constexpr int32_t kRoomForText = 20;
  static constexpr size_t kSample = 2000;    ///< Rows whose texts are looked at; all of them tell where columns may end
  static constexpr size_t kFewRows = 3;      ///< Fewer rows than that have too many blank columns by chance
  static constexpr int32_t kWidest = 32767;  ///< Characters of a ruler

  void TakeSample() {
    const size_t nStep = 1 + (nRows_ - 1) / kSample;
    size_t nRow = 0;
    for (const TableBlock& part : parts_) {
      for (const size_t nLine : part.rows) {
        if (nRow++ % nStep == 0) sample_.push_back(report_.Characters(nLine));
      }
    }
  }

  /// How many of the lines between the rows would be cut behind each character.
  void CountCaptionCuts() {
    for (const TableBlock& part : parts_) {
      auto itRow = part.rows.begin();
      for (size_t nLine = part.nFirst; nLine <= part.nLast; ++nLine) {
        lWidest_ = std::max(lWidest_, report_.Lines()[nLine].lWidth);
        if (itRow != part.rows.end() && *itRow == nLine) {
          ++itRow;
          continue;
        }
        for (const LineToken& token : report_.Lines()[nLine].tokens) {
          if (cuts_.size() <= static_cast<size_t>(token.lEnd)) cuts_.resize(static_cast<size_t>(token.lEnd) + 1);
          for (int32_t l = token.lStart; l < token.lEnd; ++l) ++cuts_[static_cast<size_t>(l)];
        }
      }
    }
    lWidest_ = std::min(lWidest_, kWidest);
  }

  void Occupy(std::vector<bool>& occupied, const ReportLine& line) const {
    if (line.IsBlank()) return;
    if (occupied.size() <= static_cast<size_t>(line.tokens.back().lEnd)) {
      occupied.resize(static_cast<size_t>(line.tokens.back().lEnd) + 1);
    }
    for (size_t i = 0; i < line.tokens.size(); ++i) {
      const LineToken& token = line.tokens[i];
      const bool bJoins =
          nRows_ < kFewRows && i + 1 < line.tokens.size() && line.tokens[i + 1].lStart == token.lEnd + 2;
      std::fill(occupied.begin() + token.lStart - 1, occupied.begin() + token.lEnd + (bJoins ? 1 : 0), true);
    }
  }

  /// The columns that the analyser finds between the first character of any row and the last.
  void FindFields() {
    clsTableParser parser;
    std::vector<bool>& occupied = parser.ColumnOccupied;
    for (const TableBlock& part : parts_) {
      for (const size_t nRow : part.rows) Occupy(occupied, report_.Lines()[nRow]);
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

  /// The text of a row in a field, without the blanks behind it.
  static std::u32string_view TextIn(const std::u32string& characters, const Field& field) {
    const auto nFrom = static_cast<size_t>(field.lStart) - 1;
    if (nFrom >= characters.size()) return {};
    std::u32string_view text = std::u32string_view(characters).substr(nFrom, static_cast<size_t>(field.lEnd) - nFrom);
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
    for (const std::u32string& characters : sample_) {
      const std::u32string_view text = TextIn(characters, field);
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
    for (const std::u32string& characters : sample_) {
      if (TextIn(characters, left).find_first_not_of(U' ') == std::u32string_view::npos ||
          TextIn(characters, right).empty()) {
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
      const bool bJoins = !merged.empty() && Joins(merged.back(), field);
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

  bool Joins(const Field& left, const Field& right) const {
    if ((left.bSignsOnly && right.IsFigures()) || (left.IsFigures() && right.bMarksOnly)) return true;
    if (IsRunningText(left, right)) return true;
    return !left.IsFigures() && !right.IsFigures() && CutsAt(Boundary(left, right)) > 0;
  }

  int32_t CutsAt(int32_t lBoundary) const {
    const auto nBoundary = static_cast<size_t>(lBoundary);
    return nBoundary < cuts_.size() ? cuts_[nBoundary] : 0;
  }

  /// The blank of the ruler stands at one of the blank columns between two fields: where a longer text or a larger
  /// number leaves it, but not inside a caption if another place is free.
  int32_t Boundary(const Field& left, const Field& right) const {
    const int32_t lFirst = left.lEnd + 1;
    const int32_t lLast = right.lStart - 1;
    int32_t lWanted = lLast;
    if (right.GrowsLeft()) lWanted = left.GrowsLeft() ? lFirst : lFirst + (lLast - lFirst) / 2;
    for (int32_t lAway = 0; lAway <= lLast - lFirst; ++lAway) {
      if (lWanted + lAway <= lLast && CutsAt(lWanted + lAway) == 0) return lWanted + lAway;
      if (lWanted - lAway >= lFirst && CutsAt(lWanted - lAway) == 0) return lWanted - lAway;
    }
    return lWanted;
  }

  std::string Draw() const {
    const Field& last = fields_.back();
    // What stands in front of the first field belongs to it, and a text at the end gets room to grow.
    const int32_t lWidth = std::max(last.lEnd + (last.IsFigures() ? 1 : kRoomForText), lWidest_);
    std::string sRuler(static_cast<size_t>(lWidth), '-');
    for (size_t i = 1; i < fields_.size(); ++i) {
      sRuler[static_cast<size_t>(Boundary(fields_[i - 1], fields_[i])) - 1] = ' ';
    }
    return sRuler;
  }

  const clsReportLines& report_;
  std::span<const TableBlock> parts_;
  size_t nRows_ = 0;
  std::vector<std::u32string> sample_;
  std::vector<int32_t> cuts_;  ///< By character, from 1
  int32_t lWidest_ = 0;
  std::vector<Field> fields_;
};

}  // namespace

std::string RulerOfBlocks(const clsReportLines& report, std::span<const TableBlock> parts) {
  return clsRuler(report, parts).Text();
}

int32_t ColumnsOfRuler(std::string_view sRuler) {
  return sRuler.empty() ? 0 : static_cast<int32_t>(std::count(sRuler.begin(), sRuler.end(), ' ')) + 1;
}

}  // namespace quillon
