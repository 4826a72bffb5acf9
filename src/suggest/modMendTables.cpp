#include "modMendTables.h"

#include <algorithm>
#include <set>

#include "clsTidyReport.h"
#include "modRowKinds.h"
#include "modStretchKeys.h"

namespace quillon {

namespace {

class clsRowCollector : public clsTidyListener {
 public:
  void Row(const TidyRecord& row) override {
    const auto n = static_cast<size_t>(row.lLine) - 1;
    if (rows.empty() || rows.back() != n) rows.push_back(n);
  }
  std::vector<size_t> rows;
};

std::vector<size_t> Without(const std::vector<size_t>& all, const std::vector<size_t>& taken) {
  std::vector<size_t> rest;
  std::set_difference(all.begin(), all.end(), taken.begin(), taken.end(), std::back_inserter(rest));
  return rest;
}

/// How many of these lines a table takes that is nothing but needs and places.
size_t Taken(const clsReportSample& report, const std::vector<size_t>& lines, const TidyPart& row) {
  std::vector<TidyTable> tables(1);
  tables.front().row = row;
  tables.front().row.names.clear();
  clsRowCollector collector;
  clsTidyReport run(tables, collector);
  for (const size_t n : lines) run.Line(Utf8Of(report.Lines()[n].sText));
  run.End();
  return collector.rows.size();
}

/// Loosens the needs that keep most of these lines out.
void Loosen(const clsReportSample& report, const std::vector<size_t>& missing, TidyPart& row) {
  constexpr size_t kMostLooked = 200;
  std::vector<size_t> lines = missing;
  if (lines.size() > kMostLooked) lines.resize(kMostLooked);
  while (!row.needs.empty()) {
    const size_t nNow = Taken(report, lines, row);
    if (nNow == lines.size()) return;
    size_t nBest = row.needs.size();
    size_t nMost = nNow;
    for (size_t i = 0; i < row.needs.size(); ++i) {
      TidyPart looser = row;
      looser.needs.erase(looser.needs.begin() + static_cast<ptrdiff_t>(i));
      const size_t nTaken = Taken(report, lines, looser);
      if (nTaken <= nMost) continue;
      nMost = nTaken;
      nBest = i;
    }
    if (nBest == row.needs.size()) return;
    row.needs.erase(row.needs.begin() + static_cast<ptrdiff_t>(nBest));
  }
}

}  // namespace

std::vector<size_t> RowsTaken(const clsReportSample& report, const TidyTable& table) {
  std::vector<TidyTable> tables{table};
  clsRowCollector collector;
  clsTidyReport run(tables, collector);
  for (const SampleLine& line : report.Lines()) run.Line(Utf8Of(line.sText));
  run.End();
  std::sort(collector.rows.begin(), collector.rows.end());
  return std::move(collector.rows);
}

void MendTable(const clsReportSample& report, const LineOwners& owners, uint32_t lOwner, FoundTable& table) {
  const auto strangers = [&](const std::vector<size_t>& taken) {
    std::vector<size_t> wrong;
    // A line directly behind the last row that the table takes is one more row.
    size_t nLast = table.rows.back();
    for (const size_t n : Without(taken, table.rows)) {
      const bool bFree = !owners.names[n] && !owners.totals[n] && (owners.tables[n] == 0 || owners.tables[n] == lOwner);
      if (n == nLast + 1 && bFree && !SaysTotal(report.Lines()[n].sText)) {
        nLast = n;
        continue;
      }
      const bool bOther = owners.names[n] || owners.totals[n] || (owners.tables[n] != 0 && owners.tables[n] != lOwner);
      const bool bOutside = n < table.rows.front() || n > table.rows.back();
      if (bOther || bOutside || SaysTotal(report.Lines()[n].sText)) wrong.push_back(n);
    }
    return wrong;
  };
  std::vector<size_t> taken = RowsTaken(report, table.tidy);
  const std::vector<size_t> missing = Without(table.rows, taken);
  if (!missing.empty()) {
    Loosen(report, missing, table.tidy.row);
    taken = RowsTaken(report, table.tidy);
  }
  const auto accept = [&](TidyTable better) {
    std::vector<size_t> now = RowsTaken(report, better);
    const bool bAll = Without(table.rows, now).size() <= Without(table.rows, taken).size();
    if (!bAll || strangers(now).size() >= strangers(taken).size()) return;
    table.tidy = std::move(better);
    taken = std::move(now);
  };
  if (const std::vector<size_t> wrong = strangers(taken); !wrong.empty()) {
    // Totals behind the last row are told by their word, as those between the rows are: the words above and below
    // change from month to month.
    constexpr size_t kNear = 4;
    TidyTable better = table.tidy;
    std::vector<size_t> own;
    for (const size_t n : wrong) {
      const bool bInside = n > table.rows.front() && n < table.rows.back() + kNear;
      if (bInside && (owners.tables[n] == 0 || owners.tables[n] == lOwner)) own.push_back(n);
    }
    DropTotals(report, own, table.rows, better);
    if (better.drops.size() > table.tidy.drops.size()) accept(std::move(better));
  }
  if (const std::vector<size_t> wrong = strangers(taken); !wrong.empty()) {
    TidyTable better = table.tidy;
    SetStretch(report, owners, wrong, table.rows, table.headingLines, better);
    accept(std::move(better));
  }
  table.lMissing = static_cast<int64_t>(Without(table.rows, taken).size());
  table.lStrangers = static_cast<int64_t>(strangers(taken).size());
  if (!taken.empty()) table.rows = std::move(taken);
}

}  // namespace quillon
