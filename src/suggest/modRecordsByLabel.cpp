#include "modRecordsByLabel.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "modLabelOrder.h"
#include "modTidyOfShape.h"

namespace quillon {

namespace {

constexpr size_t kLongestLabel = 40;

bool IsLeader(char32_t ch) {
  return ch == U'.' || IsBlankPlace(ch) || ch == U':' || ch == U'=';
}

/// Where the label that begins at nFrom ends: behind its colon, equals sign or dots. None if there is no label.
std::optional<size_t> LabelEnd(std::u32string_view sText, size_t nFrom) {
  if (nFrom >= sText.size() || !IsLetterPlace(sText[nFrom])) return std::nullopt;
  size_t nDots = 0;
  size_t nBlanks = 0;
  for (size_t i = nFrom; i < sText.size() && i < nFrom + kLongestLabel; ++i) {
    const char32_t ch = sText[i];
    const bool bLast = i + 1 == sText.size() || IsBlankPlace(sText[i + 1]);
    if (ch == U':' || (ch == U'=' && i > 0 && IsBlankPlace(sText[i - 1]))) {
      if (bLast) return i + 1;
      if (ch == U'=') return std::nullopt;
    }
    constexpr size_t kFewestDots = 3;
    if (nDots >= kFewestDots && ch != U'.' && !IsBlankPlace(ch)) return i;
    // Behind a gap nothing but the mark itself may come.
    if (nBlanks > 1 && ch != U':' && ch != U'=' && ch != U'.' && !IsBlankPlace(ch)) return std::nullopt;
    nDots = ch == U'.' ? nDots + 1 : (IsBlankPlace(ch) ? nDots : 0);
    nBlanks = IsBlankPlace(ch) ? nBlanks + 1 : 0;
  }
  return std::nullopt;
}

std::u32string_view NameIn(std::u32string_view sLabel) {
  sLabel = TrimPlaces(sLabel);
  while (!sLabel.empty() && IsLeader(sLabel.back())) sLabel.remove_suffix(1);
  return sLabel;
}

/// A label of a line and where its value stands; places count from 0.
struct Field {
  std::u32string sName;
  size_t nValue = 0;
  size_t nEnd = std::u32string_view::npos;  ///< Where the next label of the line begins
};

/// All lines that begin with one label.
struct LabelLines {
  std::u32string sPrefix;  ///< The line up to its first value
  std::vector<size_t> lines;
  bool bTaken = false;
};

/// Makes parts of a recipe of lines that begin with one label each.
class clsLabelParts {
 public:
  explicit clsLabelParts(const clsReportSample& report) : report_(report) {}

  /// Names that are known get no other column.
  void AddNames(const std::vector<std::string>& names) {
    for (const std::string& sName : names) ++names_[sName];
  }

  /// The first label of such lines and those that all have at the same place further right.
  std::vector<Field> FieldsOf(const LabelLines& label) const {
    std::vector<Field> fields{{std::u32string(NameIn(label.sPrefix)), label.sPrefix.size()}};
    const SampleLine& line = Line(label.lines.front());
    for (size_t i = 1; i < line.marks.size(); ++i) {
      const auto nStart = static_cast<size_t>(line.marks[i].lStart);
      if (nStart < fields.back().nValue || line.marks[i].lStart - line.marks[i - 1].lEnd < 2) continue;
      const auto nEnd = LabelEnd(line.sText, nStart);
      if (!nEnd || !IsAtOnePlace(label, nStart, line.sText.substr(nStart, *nEnd - nStart))) continue;
      fields.back().nEnd = nStart;
      fields.push_back({std::u32string(NameIn(line.sText.substr(nStart, *nEnd - nStart))), *nEnd});
    }
    return fields;
  }

  bool IsAtOnePlace(const LabelLines& label, size_t nStart, std::u32string_view sLabel) const {
    const auto nThere = std::count_if(label.lines.begin(), label.lines.end(), [&](size_t n) {
      return Line(n).sText.size() > nStart && Line(n).sText.substr(nStart).starts_with(sLabel);
    });
    return static_cast<size_t>(nThere) * 10 >= label.lines.size() * 9;
  }

  TidyPart PartOf(const LabelLines& label) {
    TidyPart part;
    part.likes.push_back(PictureOfText(label.sPrefix));
    std::vector<TidyPlace>& places = part.cut.places.emplace_back();
    for (const Field& field : FieldsOf(label)) {
      const bool bOpen = field.nEnd == std::u32string_view::npos;
      // A blank stays in front of the next label, or a value would go on into it.
      places.push_back({static_cast<int32_t>(field.nValue) + 1, bOpen ? 0 : static_cast<int32_t>(field.nEnd) - 1});
      part.names.push_back(OwnName(Utf8Of(field.sName)));
      std::vector<std::u32string_view> values;
      for (const size_t n : label.lines) {
        const std::u32string_view sText = Line(n).sText;
        const size_t nCount = bOpen ? field.nEnd : field.nEnd - field.nValue;
        values.push_back(field.nValue < sText.size() ? TrimPlaces(sText.substr(field.nValue, nCount))
                                                     : std::u32string_view());
      }
      part.types.push_back(TypingOfValues(report_, values, part.blanks));
    }
    return part;
  }

  /// A name that no other column of the table has: values of one name would become one.
  std::string OwnName(const std::string& sName) {
    const size_t nBefore = names_[sName]++;
    return nBefore == 0 ? sName : sName + " " + std::to_string(nBefore + 1);
  }

 private:
  const SampleLine& Line(size_t n) const { return report_.Lines()[n]; }

  const clsReportSample& report_;
  std::map<std::string, size_t> names_;
};

class clsRecordsByLabel {
 public:
  clsRecordsByLabel(const clsReportSample& report, std::vector<bool>& taken) : report_(report), taken_(taken) {
    kinds_.resize(report_.Lines().size(), kNone);
    Collect();
  }

  std::vector<FoundTable> Find() {
    std::vector<FoundTable> tables;
    constexpr size_t kMostTables = 4;
    while (tables.size() < kMostTables) {
      const size_t nAnchor = Anchor();
      if (nAnchor == kNone) break;
      const std::vector<size_t> members = Members(nAnchor);
      labels_[nAnchor].bTaken = true;
      if (!AreRecords(nAnchor, members)) continue;
      tables.push_back(TableOf(nAnchor, members));
      for (const size_t nLabel : members) labels_[nLabel].bTaken = true;
    }
    return tables;
  }

 private:
  static constexpr size_t kNone = static_cast<size_t>(-1);
  const SampleLine& Line(size_t n) const { return report_.Lines()[n]; }

  void Collect() {
    std::map<std::u32string, size_t> known;
    for (size_t n = 0; n < report_.Lines().size(); ++n) {
      const SampleLine& line = Line(n);
      if (line.IsBlank() || line.bDrawn) continue;
      const auto nFirst = static_cast<size_t>(line.marks.front().lStart);
      const auto nEnd = LabelEnd(line.sText, nFirst);
      if (!nEnd) continue;
      std::u32string sPrefix(line.sText.substr(0, *nEnd));
      const auto [it, bNew] = known.try_emplace(std::move(sPrefix), labels_.size());
      if (bNew) labels_.push_back({it->first, {}});
      labels_[it->second].lines.push_back(n);
      kinds_[n] = it->second;
    }
  }

  /// The label that comes most often; the first one among equals.
  size_t Anchor() const {
    constexpr size_t kFewest = 3;
    size_t nBest = kNone;
    for (size_t i = 0; i < labels_.size(); ++i) {
      if (labels_[i].bTaken || labels_[i].lines.size() < kFewest) continue;
      if (nBest == kNone || labels_[i].lines.size() > labels_[nBest].lines.size()) nBest = i;
    }
    return nBest;
  }

  /// The labels that come once a record at the most, the first one included, in the order of their lines.
  std::vector<size_t> Members(size_t nAnchor) const {
    const std::vector<size_t>& starts = labels_[nAnchor].lines;
    std::vector<size_t> members;
    for (size_t i = 0; i < labels_.size(); ++i) {
      const std::vector<size_t>& lines = labels_[i].lines;
      if (labels_[i].bTaken || lines.size() < 2 || lines.back() < starts.front()) continue;
      size_t nOnce = 0;
      size_t nLast = kNone;
      for (const size_t n : lines) {
        const auto nRecord = static_cast<size_t>(std::upper_bound(starts.begin(), starts.end(), n) - starts.begin());
        nOnce += nRecord > 0 && nRecord != nLast ? 1U : 0U;
        nLast = nRecord;
      }
      const bool bOften = lines.size() * 10 >= starts.size();
      if (i == nAnchor || (bOften && nOnce * 10 >= lines.size() * 9)) members.push_back(i);
    }
    return InOrder(nAnchor, members);
  }

  /// The first label in front, the others as they stand in the records.
  std::vector<size_t> InOrder(size_t nAnchor, std::vector<size_t> members) const {
    std::erase(members, nAnchor);
    std::stable_sort(members.begin(), members.end(),
                     [&](size_t a, size_t b) { return labels_[a].lines[0] < labels_[b].lines[0]; });
    std::vector<std::vector<size_t>> lines;
    for (const size_t nLabel : members) lines.push_back(labels_[nLabel].lines);
    std::vector<size_t> ordered{nAnchor};
    for (const size_t i : OrderInRecords(labels_[nAnchor].lines, lines)) ordered.push_back(members[i]);
    return ordered;
  }

  /// Most lines from the first record to the last one begin with one of the labels, and there are several.
  bool AreRecords(size_t nAnchor, const std::vector<size_t>& members) const {
    const std::vector<size_t>& starts = labels_[nAnchor].lines;
    size_t nLabels = 0;
    size_t nOften = 0;
    for (const size_t nLabel : members) {
      nLabels += clsLabelParts(report_).FieldsOf(labels_[nLabel]).size();
      nOften += labels_[nLabel].lines.size() * 3 >= starts.size() ? 1U : 0U;
    }
    if (nOften < 2 || nLabels < 3) return false;
    size_t nLines = 0;
    size_t nOfLabels = 0;
    for (size_t n = starts.front(); n <= starts.back(); ++n) {
      if (Line(n).IsBlank() || Line(n).bDrawn) continue;
      ++nLines;
      nOfLabels += std::find(members.begin(), members.end(), kinds_[n]) != members.end() ? 1U : 0U;
    }
    return nOfLabels * 5 >= nLines * 3 && !BeginWithOthers(nAnchor, members);
  }

  /// Whether lines without labels stand above the labels of most records, each with its own text: those are the rows.
  bool BeginWithOthers(size_t nAnchor, const std::vector<size_t>& members) const {
    const auto isMember = [&](size_t n) {
      return std::find(members.begin(), members.end(), kinds_[n]) != members.end();
    };
    std::set<std::u32string_view> texts;
    size_t nAbove = 0;
    for (size_t n = 1; n <= labels_[nAnchor].lines.back(); ++n) {
      if (!isMember(n) || isMember(n - 1) || Line(n - 1).IsBlank() || Line(n - 1).bDrawn) continue;
      ++nAbove;
      texts.insert(Line(n - 1).sText);
    }
    return nAbove * 5 >= labels_[nAnchor].lines.size() * 3 && texts.size() * 2 > nAbove;
  }

  FoundTable TableOf(size_t nAnchor, const std::vector<size_t>& members) {
    FoundTable table;
    clsLabelParts parts(report_);
    table.bRecords = true;
    table.rows = labels_[nAnchor].lines;
    for (const size_t nLabel : members) {
      const LabelLines& label = labels_[nLabel];
      for (const size_t n : label.lines) taken_[n] = true;
      if (nLabel == nAnchor) {
        table.tidy.row = parts.PartOf(label);
        continue;
      }
      TidyFurtherLine further;
      further.part = parts.PartOf(label);
      table.tidy.lines.push_back(std::move(further));
      table.furtherLines.insert(table.furtherLines.end(), label.lines.begin(), label.lines.end());
    }
    return table;
  }

  const clsReportSample& report_;
  std::vector<bool>& taken_;
  std::vector<LabelLines> labels_;
  std::vector<size_t> kinds_;  ///< Label of each line
};

}  // namespace

bool AttachLabelledLines(const clsReportSample& report, const std::vector<bool>& taken, FoundTable& table) {
  std::map<std::u32string, size_t> known;
  std::vector<LabelLines> labels;
  size_t nOthers = 0;
  const auto isFree = [&](size_t n) {
    return n < report.Lines().size() && !report.Lines()[n].IsBlank() && !report.Lines()[n].bDrawn && !taken[n];
  };
  for (const size_t nRow : table.rows) {
    constexpr size_t kMostBelow = 12;
    for (size_t n = nRow + 1; n <= nRow + kMostBelow && isFree(n); ++n) {
      const SampleLine& line = report.Lines()[n];
      const auto nEnd = LabelEnd(line.sText, static_cast<size_t>(line.marks.front().lStart));
      nOthers += nEnd ? 0U : 1U;
      if (!nEnd) continue;
      std::u32string sPrefix(line.sText.substr(0, *nEnd));
      const auto [it, bNew] = known.try_emplace(std::move(sPrefix), labels.size());
      if (bNew) labels.push_back({it->first, {}});
      labels[it->second].lines.push_back(n);
    }
  }
  // What stands above the first row, too, heads groups.
  const size_t nFirst = table.rows.front();
  const auto isHeading = [&](const LabelLines& label) {
    constexpr size_t kNear = 4;
    for (size_t n = nFirst; n > 0 && nFirst - n < kNear; --n) {
      if (report.Lines()[n - 1].sText.starts_with(label.sPrefix)) return true;
    }
    return false;
  };
  std::erase_if(labels, [&](const LabelLines& label) { return label.lines.size() < 2 || isHeading(label); });
  size_t nLines = 0;
  for (const LabelLines& label : labels) nLines += label.lines.size();
  if (nLines * 3 < table.rows.size() || nOthers > nLines) return false;
  clsLabelParts parts(report);
  parts.AddNames(table.tidy.row.names);
  std::vector<std::vector<size_t>> lines;
  for (const LabelLines& label : labels) lines.push_back(label.lines);
  for (const size_t i : OrderInRecords(table.rows, lines)) {
    const LabelLines& label = labels[i];
    TidyFurtherLine further;
    further.part = parts.PartOf(label);
    table.tidy.lines.push_back(std::move(further));
    table.furtherLines.insert(table.furtherLines.end(), label.lines.begin(), label.lines.end());
  }
  table.bRecords = true;
  return true;
}

std::vector<FoundTable> FindRecordsByLabel(const clsReportSample& report, std::vector<bool>& taken) {
  return clsRecordsByLabel(report, taken).Find();
}

namespace {

/// Whether the line is a label, ended by a colon, with a value.
bool IsLabelLine(const SampleLine& line) {
  if (line.IsBlank() || line.bDrawn) return false;
  const auto nFirst = static_cast<size_t>(line.marks.front().lStart);
  const auto nEnd = LabelEnd(line.sText, nFirst);
  return nEnd && *nEnd < line.sText.size() && line.sText[*nEnd - 1] == U':' && line.sText.find(U':') == *nEnd - 1;
}

}  // namespace

std::vector<size_t> FindLoneLabels(const clsReportSample& report, const std::vector<bool>& taken) {
  constexpr size_t kFewest = 3;
  std::map<std::u32string_view, std::vector<size_t>> byLabel;
  for (size_t n = 0; n < report.Lines().size(); ++n) {
    const SampleLine& line = report.Lines()[n];
    if (taken[n] || !IsLabelLine(line)) continue;
    const bool bGap = std::adjacent_find(line.marks.begin(), line.marks.end(),
                                         [](const LineMark& a, const LineMark& b) { return b.lStart - a.lEnd > 3; }) !=
                      line.marks.end();
    if (!bGap) byLabel[line.sText.substr(0, line.sText.find(U':'))].push_back(n);
  }
  std::vector<size_t> lone;
  for (const auto& [sLabel, lines] : byLabel) {
    const auto bBelow = [](size_t a, size_t b) { return a + 1 == b; };
    const bool bNever = std::adjacent_find(lines.begin(), lines.end(), bBelow) == lines.end();
    if (lines.size() >= kFewest && bNever) lone.insert(lone.end(), lines.begin(), lines.end());
  }
  return lone;
}

std::vector<FoundTable> FindLabelLists(const clsReportSample& report, std::vector<bool>& taken) {
  constexpr size_t kFewest = 5;
  FoundTable table;
  size_t nLines = 0;
  std::vector<std::u32string_view> labels;
  std::vector<std::u32string_view> values;
  for (size_t n = 0; n < report.Lines().size(); ++n) {
    const SampleLine& line = report.Lines()[n];
    nLines += line.IsBlank() || line.bDrawn ? 0U : 1U;
    if (taken[n] || !IsLabelLine(line)) continue;
    table.rows.push_back(n);
    const size_t nColon = line.sText.find(U':');
    labels.push_back(TrimPlaces(line.sText.substr(0, nColon)));
    values.push_back(TrimPlaces(line.sText.substr(nColon + 1)));
  }
  // Elsewhere such lines are headings, and told as such.
  if (table.rows.size() < kFewest || table.rows.size() * 10 < nLines * 8) return {};
  table.bRecords = true;
  table.tidy.row.cut.split = TidySplit::AtText;
  table.tidy.row.cut.sSplit = ":";
  table.tidy.row.names = {"Label", "Value"};
  table.tidy.row.types = {{TidyType::Text, false, 0, {}}, TypingOfValues(report, values, table.tidy.row.blanks)};
  table.tidy.row.needs = {{0, {{TidyKind::Letters, {}}}}, {1, {{TidyKind::Any, {}}}}};
  for (const size_t n : table.rows) taken[n] = true;
  std::vector<FoundTable> tables;
  tables.push_back(std::move(table));
  return tables;
}

}  // namespace quillon
