#include "clsPrintedTotals.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace quillon {

namespace {

constexpr int64_t kFarLines = 10;

/// An average of the rows, or their number, is none of their sums.
bool IsAverageOrCount(const TidyNumber& printed, int64_t nSum, int64_t lRows) {
  if (lRows < 2 || printed.nValue == 0) return false;
  const double dAll = static_cast<double>(printed.nValue) * static_cast<double>(lRows);
  return std::abs(dAll - static_cast<double>(nSum)) <= static_cast<double>(lRows) ||
         (printed.nDecimals == 0 && printed.nValue == lRows);
}

std::string PlainText(int64_t nValue, int nDecimals) {
  std::string sDigits = std::to_string(Magnitude(nValue));
  const auto nBehind = static_cast<size_t>(nDecimals);
  if (sDigits.size() <= nBehind) sDigits.insert(0, nBehind + 1 - sDigits.size(), '0');
  if (nBehind > 0) sDigits.insert(sDigits.size() - nBehind, 1, '.');
  return (nValue < 0 ? "-" : "") + sDigits;
}

}  // namespace

clsPrintedTotals::clsPrintedTotals(std::vector<ProofColumn> columns, std::vector<std::string> words, Limits limits,
                                   std::optional<clsTidyCutter> cutter)
    : columns_(std::move(columns)),
      words_(std::move(words)),
      limits_(limits),
      cutter_(std::move(cutter)),
      sums_(columns_.size()) {
  for (const std::string& sWord : words_) NewKind("=" + sWord, sWord, true);
}

size_t clsPrintedTotals::NewKind(std::string_view sKey, std::string_view sPhrase, bool bRelied) {
  if (kinds_.size() >= kMostKinds + words_.size()) return kNoKind;
  Kind& kind = kinds_.emplace_back();
  kind.sPhrase = sPhrase;
  kind.bRelied = bRelied;
  kind.before.resize(columns_.size());
  kind.votes.resize(columns_.size());
  kindOfWords_.emplace(sKey, kinds_.size() - 1);
  return kinds_.size() - 1;
}

void clsPrintedTotals::Add(size_t nColumn, const TidyNumber& number) {
  sums_[nColumn].Add(number);
  if (shared_.empty() || shared_[nColumn].pColumn == nullptr || shared_[nColumn].nFirst != nColumn) return;
  shared_[nColumn].pColumn->sum.Add(number);
}

void clsPrintedTotals::RowEnds(int64_t lLine) {
  lLastRow_ = lLine;
}

void clsPrintedTotals::GroupBegins(size_t nLevel) {
  if (nLevel >= kMostGroups) return;
  if (groups_.size() <= nLevel) groups_.resize(nLevel + 1, sums_);
  for (size_t i = nLevel; i < groups_.size(); ++i) groups_[i] = sums_;
}

size_t clsPrintedTotals::KindOf(std::string_view sLine) {
  for (size_t i = 0; i < words_.size(); ++i) {
    if (sLine.find(words_[i]) != std::string_view::npos) return i;
  }
  const auto found = kindOfWords_.find(line_.sWords);
  return found != kindOfWords_.end() ? found->second : NewKind(line_.sWords, line_.sPhrase, false);
}

void clsPrintedTotals::ShareSums(clsSharedSums& shared, size_t nTable) {
  nTable_ = nTable;
  shared_.resize(columns_.size());
  for (size_t i = 0; i < columns_.size(); ++i) {
    if (!columns_[i].bNumber || columns_[i].sName.empty()) continue;
    const auto first = std::find_if(columns_.begin(), columns_.end(), [&](const ProofColumn& candidate) {
      return candidate.bNumber && candidate.sName == columns_[i].sName;
    });
    shared_[i] = {&shared.Join(columns_[i].sName, nTable), static_cast<size_t>(first - columns_.begin())};
  }
}

/// No later table has a column of one of the names.
bool clsPrintedTotals::CountsShared() const {
  return std::all_of(shared_.begin(), shared_.end(), [&](const Shared& shared) {
    return shared.pColumn == nullptr || shared.pColumn->nLastTable == nTable_;
  });
}

/// Compares with the rows behind `before`; keeps the nearest. False if that can't be told.
bool clsPrintedTotals::Compare(const Sum& now, const Sum& before, const LineNumber& line, Judged& judged) {
  int64_t nSum = 0;
  if (!SumSince(now, before, line.number.nDecimals, nSum)) return false;
  const int64_t nPrinted = line.number.nValue;
  const uint64_t nDistance =
      static_cast<uint64_t>(std::max(nSum, nPrinted)) - static_cast<uint64_t>(std::min(nSum, nPrinted));
  const int64_t lRows = now.lRows - before.lRows;
  constexpr int64_t kFewDigits = 99;
  // One digit agrees with anything.
  constexpr int64_t kOneDigit = 9;
  const bool bSays =
      Magnitude(nPrinted) > kOneDigit && (lRows > 1 || nDistance > 1 || Magnitude(nPrinted) > kFewDigits);
  judged.bNone = judged.bNone || IsAverageOrCount(line.number, nSum, lRows);
  if (!judged.sSummed.empty() && nDistance > judged.nDistance) return true;
  judged.bVotes = bSays || (nDistance == judged.nDistance && judged.bVotes);
  judged.nDistance = nDistance;
  judged.sSummed = PlainText(nSum, line.number.nDecimals);
  judged.verdict = nDistance > 1    ? TotalVerdict::Disagrees
                   : nDistance == 1 ? TotalVerdict::LastDigit
                                    : TotalVerdict::Agrees;
  judged.bNearly = nDistance > 1 && nDistance <= static_cast<uint64_t>(lRows + 1) / 2;
  return true;
}

/// A number that is no sum of this table's rows may be one of all tables that have such a column.
void clsPrintedTotals::CompareWithAllTables(const LineNumber& line, size_t nColumn, Judged& judged) const {
  const Shared& shared = shared_[nColumn];
  if (shared.pColumn == nullptr) return;
  Sum all = shared.pColumn->sum;
  all.TakeAway(sums_[shared.nFirst]);
  if (all.lRows == 0) return;
  all.Add(sums_[nColumn]);
  Judged together;
  if (!Compare(all, Sum(), line, together) || together.verdict != TotalVerdict::Agrees || !together.bVotes) return;
  judged = together;
  judged.bNone = !CountsShared();
}

clsPrintedTotals::Judged clsPrintedTotals::Judge(const Kind& kind, const LineNumber& line, size_t nColumn) const {
  Judged judged;
  // A column whose rows hold no number has no sums.
  if (!line.number.bScaled || line.number.nDecimals > kMostSumDecimals || sums_[nColumn].lRows == 0) {
    judged.bNone = true;
    return judged;
  }
  const Sum& now = sums_[nColumn];
  bool bTold = Compare(now, kind.before[nColumn], line, judged);
  for (const Sums& group : groups_) bTold = Compare(now, group[nColumn], line, judged) || bTold;
  bTold = Compare(now, Sum(), line, judged) || bTold;
  if (judged.verdict != TotalVerdict::Disagrees) judged.bNone = false;
  const bool bCarried = line.number.nValue == now.last.nValue && line.number.nDecimals == now.last.nDecimals;
  judged.bNone = judged.bNone || !bTold || (bCarried && judged.verdict == TotalVerdict::Disagrees);
  if (judged.verdict == TotalVerdict::Disagrees && !shared_.empty()) CompareWithAllTables(line, nColumn, judged);
  return judged;
}

/// Sums are wider than their columns: one that disagrees and would agree under a free column beside it is that one's.
void clsPrintedTotals::MoveToFreeColumns(const Kind& kind, std::vector<Judged>& judged) {
  const auto isFree = [&](size_t nColumn) {
    return nColumn < columns_.size() && columns_[nColumn].bNumber &&
           std::none_of(line_.numbers.begin(), line_.numbers.end(),
                        [&](const LineNumber& other) { return other.nColumn == nColumn; });
  };
  for (size_t i = 0; i < judged.size(); ++i) {
    if (judged[i].verdict == TotalVerdict::Agrees) continue;
    const size_t nOwn = line_.numbers[i].nColumn;
    for (const size_t nBeside : {nOwn + 1, nOwn - 1}) {
      if (!isFree(nBeside)) continue;
      Judged other = Judge(kind, line_.numbers[i], nBeside);
      if (other.verdict != TotalVerdict::Agrees || !other.bVotes) continue;
      judged[i] = std::move(other);
      line_.numbers[i].nColumn = nBeside;
      break;
    }
  }
}

void clsPrintedTotals::Vote(Kind& kind, int64_t lLine, const std::vector<Judged>& judged) {
  const bool bOneAgrees = std::any_of(judged.begin(), judged.end(), [](const Judged& one) {
    return one.bVotes && !one.bNone && one.verdict == TotalVerdict::Agrees;
  });
  for (size_t i = 0; i < judged.size(); ++i) {
    const Judged& one = judged[i];
    if (one.bNone) continue;
    const LineNumber& number = line_.numbers[i];
    ColumnVotes& votes = kind.votes[number.nColumn];
    const bool bAgrees = one.verdict == TotalVerdict::Agrees;
    const bool bDisagrees = one.verdict == TotalVerdict::Disagrees;
    ++(bAgrees ? votes.lAgree : bDisagrees ? votes.lDisagree : votes.lLastDigit);
    // Small numbers come near to others by chance.
    constexpr uint64_t kManyDigits = 1000;
    const bool bVotes = one.bVotes && (bAgrees || bDisagrees || Magnitude(number.number.nValue) >= kManyDigits);
    if (bVotes) ++(bDisagrees ? votes.lVotesAgainst : votes.lVotesFor);
    if (one.bNearly) ++votes.lNearly;
    if (one.bNearly && bVotes) ++votes.lNearlyAgainst;
    if (bDisagrees && bOneAgrees) ++votes.lAloneWrong;
    auto& kept = bAgrees ? kind.agreeing : kind.disagreeing;
    if (kept.size() >= (bAgrees ? limits_.nAgreeing : limits_.nDisagreeing)) continue;
    kept.push_back({lLine, number.nColumn, one.verdict, std::string(number.sPrinted), one.sSummed, one.bNearly});
  }
}

void clsPrintedTotals::FindNumbers(std::string_view sLine) {
  if (cutter_) {
    FindSplitNumbers(sLine, *cutter_, columns_, line_);
  } else {
    FindLineNumbers(sLine, columns_, line_);
  }
}

bool clsPrintedTotals::IsOfSums(std::string_view sLine) {
  if (lLastRow_ == 0) return false;
  FindNumbers(sLine);
  const auto found = kindOfWords_.find(line_.sWords);
  Kind none;
  none.before.resize(columns_.size());
  const Kind& kind = found != kindOfWords_.end() ? kinds_[found->second] : none;
  bool bOne = false;
  for (const LineNumber& number : line_.numbers) {
    const Judged judged = Judge(kind, number, number.nColumn);
    if (judged.bNone) continue;
    if (judged.verdict != TotalVerdict::Agrees) return false;
    bOne = bOne || judged.bVotes;
  }
  return bOne;
}

size_t clsPrintedTotals::Line(int64_t lLine, std::string_view sLine) {
  if (lLastRow_ == 0) return kNoKind;
  FindNumbers(sLine);
  if (line_.numbers.empty()) return kNoKind;
  const size_t nKind = KindOf(sLine);
  if (nKind == kNoKind) return kNoKind;
  Kind& kind = kinds_[nKind];
  std::vector<Judged> judged;
  judged.reserve(line_.numbers.size());
  for (const LineNumber& number : line_.numbers) judged.push_back(Judge(kind, number, number.nColumn));
  MoveToFreeColumns(kind, judged);
  Vote(kind, lLine, judged);
  ++kind.lLines;
  kind.bFar = kind.bFar || lLine - lLastRow_ > kFarLines;
  kind.before = sums_;
  const bool bMayBe = kind.bRelied || std::any_of(kind.votes.begin(), kind.votes.end(),
                                                  [](const ColumnVotes& votes) { return votes.lVotesFor > 0; });
  return bMayBe ? nKind : kNoKind;
}

/// Whether the lines of a kind print sums of the column: one that is wrong again and again is none, and one of words
/// that are relied on only if others of the same lines are right.
bool clsPrintedTotals::IsOfKind(const Kind& kind, const ColumnVotes& votes) {
  if (votes.lAgree + votes.lLastDigit > 0) return true;
  constexpr int64_t kAgainAndAgain = 2;
  return (kind.bRelied ? votes.lAloneWrong : votes.lDisagree) < kAgainAndAgain;
}

/// What disagrees by no more than rounding may give is a difference of the last digit.
void clsPrintedTotals::AllowRounding(Kind& kind) {
  for (ColumnVotes& votes : kind.votes) {
    votes.lDisagree -= votes.lNearly;
    votes.lLastDigit += votes.lNearly;
    votes.lVotesAgainst -= votes.lNearlyAgainst;
  }
  for (PrintedTotal& total : kind.disagreeing) {
    if (total.bNearly) total.verdict = TotalVerdict::LastDigit;
  }
}

void clsPrintedTotals::Settle(Kind& kind, TotalsAccount& account) const {
  int64_t lFor = 0;
  int64_t lAgainst = 0;
  for (ColumnVotes& votes : kind.votes) {
    if (!IsOfKind(kind, votes)) votes = ColumnVotes();
    lFor += votes.lVotesFor;
    lAgainst += votes.lVotesAgainst;
  }
  kind.bTotal = kind.lLines > 0 && (kind.bRelied || (lFor > 0 && (kind.bFar ? lFor > lAgainst : lFor >= lAgainst)));
  if (!kind.bTotal) return;
  account.lLines += kind.lLines;
  int64_t lDisagree = 0;
  for (const ColumnVotes& votes : kind.votes) {
    account.lAgree += votes.lAgree;
    account.lLastDigit += votes.lLastDigit;
    lDisagree += votes.lDisagree;
  }
  account.lDisagree += lDisagree;
  if (lDisagree == 0 && !kind.sPhrase.empty()) account.words.push_back(kind.sPhrase);
  for (auto* totals : {&kind.agreeing, &kind.disagreeing}) {
    std::copy_if(std::make_move_iterator(totals->begin()), std::make_move_iterator(totals->end()),
                 std::back_inserter(account.totals), [&](const PrintedTotal& total) {
                   const ColumnVotes& votes = kind.votes[total.nColumn];
                   return votes.lAgree + votes.lLastDigit + votes.lDisagree > 0;
                 });
    totals->clear();
  }
}

TotalsAccount clsPrintedTotals::Finish(bool bRounds) {
  TotalsAccount account;
  for (Kind& kind : kinds_) {
    if (bRounds) AllowRounding(kind);
    Settle(kind, account);
  }
  std::stable_sort(account.totals.begin(), account.totals.end(), [](const PrintedTotal& a, const PrintedTotal& b) {
    return std::pair(a.lLine, a.nColumn) < std::pair(b.lLine, b.nColumn);
  });
  return account;
}

}  // namespace quillon
