#include "clsCheckPage.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <numeric>

#include "modLineShape.h"
#include "modPreviewText.h"
#include "modProofText.h"
#include "modText.h"

namespace quillon {

namespace {

constexpr size_t kContext = 3;        // lines around a place that matters
constexpr int64_t kFirst = 60;        // lines at the beginning of a long report
constexpr int64_t kMostPlaces = 500;  // that a long report is shown at
constexpr int64_t kMostTotals = 30;   // that agree
constexpr size_t kMostCharacters = 1000;

constexpr std::array<std::string_view, kTidyLineKinds> kClasses{"row",     "further", "joined",  "heading", "total",
                                                                "dropped", "left",    "outside", "blank"};

constexpr std::string_view kStyle =
    "body{font:15px/1.45 sans-serif;color:#222;background:#fff;margin:2em auto;max-width:75em;padding:0 1em}"
    "h1{font-size:1.4em;overflow-wrap:anywhere}h2{font-size:1.1em;margin-top:1.6em;break-after:avoid}"
    "table{border-collapse:collapse}td,th{text-align:left;padding:.15em 1em .15em 0;border-bottom:1px solid #ddd}"
    "td.num,th.num{text-align:right}.good{color:#176a2c}.bad,.lost{color:#b00020;font-weight:bold}"
    "code{white-space:pre-wrap}.report{font:12px/1.35 monospace;overflow-x:auto}.report div{white-space:pre;"
    "min-width:max-content}.report div:before{content:attr(data-n);display:inline-block;width:4.5em;color:#888}"
    ".row{background:#eef7ee}.row i{font-style:normal;background:#d5ebd5}.further,.joined{background:#f4f8e4}"
    ".heading{background:#e8f0fb}.total{background:#fbf3d9}.dropped,.left,.outside{color:#777}"
    ".like{background:#fde4e4;color:#222}.may{background:#fdf0d0;color:#222}.maybe{color:#8a5a00;font-weight:bold}.gap{"
    "color:#888;border-top:1px dashed #bbb;border-bottom:1px dashed #bbb}"
    ".key span{display:inline-block;padding:.1em .6em;margin-right:.5em}"
    "@media "
    "print{body{margin:0;max-width:none;font-size:10pt}code{font-size:7pt}tr{break-inside:avoid}.report{overflow:"
    "visible;font-size:7pt}.report div{white-space:pre-wrap;min-width:0;break-inside:avoid}"
    "*{-webkit-print-color-adjust:exact;print-color-adjust:exact}}";

std::string Shown(std::string_view sText) {
  return HtmlText(ShownText(sText));
}

/// For each character of a line, what it is: 0 outside of all columns, else the number of its column.
std::vector<int> ColumnsOf(const std::u32string& characters, const std::vector<TidyPlace>& places, bool bStrict) {
  std::vector<int> columns(characters.size());
  for (size_t i = 0; i < places.size(); ++i) {
    const size_t nEnd = places[i].nEnd > 0 ? static_cast<size_t>(places[i].nEnd) : characters.size();
    for (auto n = static_cast<size_t>(places[i].nStart - 1); n < std::min(nEnd, characters.size()); ++n) {
      columns[n] = static_cast<int>(i) + 1;
    }
  }
  if (bStrict) return columns;
  // A word that touches a column is that column's, however far it goes.
  for (size_t n = 1; n < columns.size(); ++n) {
    if (columns[n] == 0 && columns[n - 1] != 0 && characters[n] != U' ' && characters[n - 1] != U' ')
      columns[n] = columns[n - 1];
  }
  for (size_t n = columns.size(); n-- > 1;) {
    if (columns[n - 1] == 0 && columns[n] != 0 && characters[n] != U' ' && characters[n - 1] != U' ')
      columns[n - 1] = columns[n];
  }
  return columns;
}

std::string KeyOf(TidyLineKind kind, std::string_view sShape) {
  return std::to_string(static_cast<int>(kind)) + "|" + std::string(sShape);
}

std::u32string CharactersOf(std::string_view sLine) {
  std::u32string characters;
  for (size_t i = 0; i < sLine.size() && characters.size() < kMostCharacters;) characters += DecodeUtf8(sLine, i);
  return characters;
}

}  // namespace

std::string HtmlText(std::string_view sText) {
  std::string sHtml;
  for (const char c : sText) {
    if (c == '&') {
      sHtml += "&amp;";
    } else if (c == '<') {
      sHtml += "&lt;";
    } else if (c == '>') {
      sHtml += "&gt;";
    } else if (c == '"') {
      sHtml += "&quot;";
    } else {
      sHtml += c;
    }
  }
  return sHtml;
}

clsCheckPage::clsCheckPage(const ReportCheck& check, const std::vector<CutTable>& cuts, const CheckPageHead& head)
    : check_(check) {
  for (const TidyTable& table : check.tables) {
    auto& places = places_.emplace_back();
    for (const auto& panel : table.row.cut.places) places.insert(places.end(), panel.begin(), panel.end());
    strict_.push_back(false);
  }
  for (const CutTable& cut : cuts) {
    places_.push_back(cut.places);
    strict_.push_back(true);
  }
  for (const TableTotal& total : check.proof.totals) totals_.emplace(total.total.lLine, &total);
  for (const ShapeOfLines& shape : check.proof.shapes) {
    if (shape.bLikeRow && !shape.bMeant) lostShapes_.insert(KeyOf(shape.kind, shape.sKey));
    if (shape.bFigures || (shape.bLikeRow && shape.bMeant)) doubtfulShapes_.insert(KeyOf(shape.kind, shape.sKey));
  }
  lLines_ = std::accumulate(check.proof.lines.begin(), check.proof.lines.end(), int64_t{0});
  bWhole_ = lLines_ <= kShort;
  Head(head);
}

void clsCheckPage::Head(const CheckPageHead& head) {
  const int64_t lBlank = check_.proof.Lines(TidyLineKind::Blank);
  sOut_ = fmt::format(
      "{7}"
      "charset=\"utf-8\"><title>{0}</title><style>{1}</style></head><body>\n"
      "<h1>{0}</h1>\n<p>Recipe: {2}</p>\n<p class=\"{3}\">{4}</p>\n<p>{5} lines: {6}{8}.</p>\n",
      Shown(head.sReport), kStyle, Shown(head.sRecipe), head.bGood ? "good" : "bad", Shown(head.sVerdict), lLines_,
      LineKindsText(check_.proof.lines), kBegins, lBlank > 0 ? fmt::format(", {} blank", lBlank) : "");
  Totals();
  Shapes();
  sOut_ +=
      "<h2>The report</h2>\n<p class=\"key\"><span class=\"row\">row</span><span class=\"further\">further or joined "
      "line"
      "</span><span class=\"heading\">heading</span><span class=\"total\">total</span><span class=\"like\">looks like "
      "a "
      "row, but is none</span><span class=\"may\">may be a row</span><span class=\"lost\">lost</span></p>\n";
  if (!bWhole_) sOut_ += "<p>Only the places that matter are shown.</p>\n";
  sOut_ += "<div class=\"report\">";
}

void clsCheckPage::Totals() {
  const ReportProof& proof = check_.proof;
  if (proof.Totals() == 0) return;
  sOut_ += "<h2>Printed totals</h2>\n<p>" + HtmlText(TotalsText(proof)) + "</p>\n";
  sOut_ +=
      "<table><tr><th class=\"num\">Line</th><th>Column</th><th class=\"num\">Printed</th><th class=\"num\">Rows</th>"
      "<th></th></tr>\n";
  // What needs a look comes first.
  for (const TableTotal& one : proof.totals) {
    if (one.total.verdict != TotalVerdict::Agrees) TotalRow(one);
  }
  int64_t lShown = 0;
  for (const TableTotal& one : proof.totals) {
    if (one.total.verdict == TotalVerdict::Agrees && ++lShown <= kMostTotals) TotalRow(one);
  }
  sOut_ += "</table>\n";
  if (proof.lTotalsAgree > kMostTotals)
    sOut_ += fmt::format("<p>{} more agree.</p>\n", proof.lTotalsAgree - kMostTotals);
}

void clsCheckPage::TotalRow(const TableTotal& one) {
  sOut_ +=
      fmt::format("<tr><td class=\"num\">{}</td><td>{}</td><td class=\"num\">{}</td><td class=\"num\">{}</td>{}</tr>\n",
                  one.total.lLine, Shown(one.sColumn), Shown(one.total.sPrinted), SummedText(one.total),
                  one.total.verdict == TotalVerdict::Agrees      ? "<td class=\"good\">&#10003;</td>"
                  : one.total.verdict == TotalVerdict::LastDigit ? "<td>last digit</td>"
                                                                 : "<td class=\"bad\">&#10007;</td>");
}

void clsCheckPage::Shapes() {
  if (check_.proof.shapes.empty()) return;
  sOut_ +=
      "<h2>Lines left out or outside of all tables, by "
      "shape</h2>\n<table><tr><th class=\"num\">Lines</th><th class=\"num\">First</th><th></th></tr>\n";
  constexpr size_t kMost = 50;
  for (size_t i = 0; i < check_.proof.shapes.size() && i < kMost; ++i) {
    const ShapeOfLines& shape = check_.proof.shapes[i];
    sOut_ += fmt::format("<tr><td class=\"num\">{}</td><td class=\"num\">{}</td><td><code>{}</code>{}</td></tr>\n",
                         shape.lLines, shape.lFirstLine, Shown(MidChars(shape.sFirst, 1, 120)),
                         shape.bLikeRow && !shape.bMeant    ? " <span class=\"bad\">looks like a row</span>"
                         : shape.bLikeRow || shape.bFigures ? " <span class=\"maybe\">may be a row</span>"
                                                            : "");
  }
  sOut_ += "</table>\n";
}

/// The line with the cells of rows marked, and what no column takes in red.
std::string clsCheckPage::Marked(std::string_view sLine, TidyLineKind kind, size_t nTable, bool& bLoss) const {
  const std::u32string characters = CharactersOf(sLine);
  const bool bCells = kind == TidyLineKind::Row && nTable < places_.size() && !places_[nTable].empty();
  const std::vector<int> columns =
      bCells ? ColumnsOf(characters, places_[nTable], strict_[nTable]) : std::vector<int>(characters.size());
  std::string sHtml;
  for (size_t i = 0; i < characters.size();) {
    const bool bLost = bCells && columns[i] == 0 && characters[i] != U' ' && characters[i] != 0xA0;
    std::string sPiece;
    const size_t nFirst = i;
    const auto isLost = [&](size_t n) {
      return bCells && columns[n] == 0 && characters[n] != U' ' && characters[n] != 0xA0;
    };
    for (; i < characters.size() && columns[i] == columns[nFirst] && isLost(i) == bLost; ++i)
      AppendUtf8(characters[i], sPiece);
    const char* const sTag = bLost ? "b" : bCells && columns[nFirst] > 0 ? "i" : nullptr;
    bLoss = bLoss || bLost;
    if (sTag == nullptr) {
      sHtml += Shown(sPiece);
    } else {
      sHtml += fmt::format("<{0}{1}>{2}</{0}>", sTag, bLost ? " class=\"lost\"" : "", Shown(sPiece));
    }
  }
  return sHtml;
}

std::string clsCheckPage::TotalsOf(int64_t lLine) const {
  std::string sHtml;
  const auto [first, last] = totals_.equal_range(lLine);
  for (auto total = first; total != last; ++total) {
    const TableTotal& one = *total->second;
    sHtml += one.total.verdict == TotalVerdict::Disagrees
                 ? fmt::format("  <span class=\"bad\">&#10007; {}: rows {}</span>", Shown(one.sColumn),
                               SummedText(one.total))
                 : fmt::format("  <span class=\"good\">&#10003; {}</span>", Shown(one.sColumn));
  }
  return sHtml;
}

void clsCheckPage::PutLine(int64_t lLine, const std::string& sHtml) {
  if (lLine > lShownTo_ + 1)
    sOut_ += fmt::format("<div class=\"gap\" data-n=\"\">{} lines more</div>", lLine - lShownTo_ - 1);
  sOut_ += sHtml;
  lShownTo_ = lLine;
}

bool clsCheckPage::IsShown(int64_t lLine, bool bMatters) {
  if (bWhole_ || lLine <= kFirst) return true;
  if (bMatters && ++lPlaces_ <= kMostPlaces) lMatters_ = lLine;
  return lMatters_ > 0 && lLine - lMatters_ <= static_cast<int64_t>(kContext);
}

bool clsCheckPage::IsOf(const std::set<std::string, std::less<>>& keys, std::string_view sLine,
                        TidyLineKind kind) const {
  if (keys.empty()) return false;
  const std::string sKind = KeyOf(kind, "");
  const auto first = keys.lower_bound(sKind);
  return first != keys.end() && first->starts_with(sKind) && keys.contains(sKind + LineShapeKey(sLine));
}

void clsCheckPage::Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) {
  const bool bFree = kind == TidyLineKind::LeftOut || kind == TidyLineKind::Outside;
  const bool bLike = IsOf(lostShapes_, sLine, kind);
  const bool bMaybe = !bLike && IsOf(doubtfulShapes_, sLine, kind);
  const bool bTotal = bFree && totals_.contains(lLine);
  bool bLoss = bLike || bMaybe;
  std::string sHtml = Marked(sLine, kind, nTable, bLoss);
  const auto [first, last] = totals_.equal_range(lLine);
  const bool bWrong =
      std::any_of(first, last, [](const auto& total) { return total.second->total.verdict != TotalVerdict::Agrees; });
  const std::string_view sClass = bLike               ? "like"
                                  : bMaybe && !bTotal ? "may"
                                  : bTotal            ? "total"
                                                      : kClasses[static_cast<size_t>(kind)];
  sHtml = fmt::format("<div class=\"{}\" data-n=\"{}\">{}{}</div>", sClass, lLine, sHtml, TotalsOf(lLine));
  if (IsShown(lLine, bLoss || bWrong)) {
    for (const auto& [lHeld, sHeld] : held_) PutLine(lHeld, sHeld);
    held_.clear();
    return PutLine(lLine, sHtml);
  }
  held_.emplace_back(lLine, std::move(sHtml));
  if (held_.size() > kContext) held_.erase(held_.begin());
}

std::string clsCheckPage::Finish() {
  for (const auto& [lHeld, sHeld] : held_) PutLine(lHeld, sHeld);
  sOut_ += "</div>\n</body></html>\n";
  return std::move(sOut_);
}

}  // namespace quillon
