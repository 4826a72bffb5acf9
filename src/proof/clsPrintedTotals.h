#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "clsSharedSums.h"
#include "clsTidyCutter.h"
#include "modLineNumbers.h"
#include "modProofModel.h"

namespace quillon {

/// What the printed totals say of the rows.
struct TotalsAccount {
  int64_t lAgree = 0, lLastDigit = 0, lDisagree = 0;
  int64_t lLines = 0;                ///< Lines that are totals
  std::vector<PrintedTotal> totals;  ///< By line; no more than the limits tell
  std::vector<std::string> words;    ///< Words that find the lines, for Totals=: of lines that agree alone

  int64_t Found() const { return lAgree + lLastDigit + lDisagree; }
};

/// Finds the totals of one table among the lines that are none of its rows and checks them against the rows.
///
/// A number under a number column is compared in its own decimals with the sums of that column over the rows since the
/// last line of the same words, since each group began and since the top. Words whose numbers agree at least as often
/// as not are those of totals (where a line is more than ten lines behind the last row: more often); zeros, and one or
/// two digits that repeat a single row, have no say. A column that never agrees in two lines is none of theirs. Lines
/// that hold one of the words given are totals whatever they say.
///
/// Memory depends on the columns and on how many different words lines have, which is limited, never on the rows.
class clsPrintedTotals {
 public:
  struct Limits {
    size_t nAgreeing = 0;      ///< Of each kind of line, so many totals that agree are kept
    size_t nDisagreeing = 50;  ///< and so many that don't
  };
  static constexpr size_t kMostKinds = 2000;
  static constexpr size_t kMostGroups = 16;
  static constexpr size_t kNoKind = static_cast<size_t>(-1);

  /// cutter: of rows that are split at a text or at blanks.
  clsPrintedTotals(std::vector<ProofColumn> columns, std::vector<std::string> words, Limits limits,
                   std::optional<clsTidyCutter> cutter = std::nullopt);
  clsPrintedTotals(clsPrintedTotals&&) = default;

  /// Numbers may be sums over the rows of all tables that share, by columns of one name. The last table with such a
  /// column counts those; for the others they are no totals. To be called before the first row; what is shared must
  /// outlive this.
  void ShareSums(clsSharedSums& shared, size_t nTable);

  /// The number of a column in the row at hand.
  void Add(size_t nColumn, const TidyNumber& number);
  void RowEnds(int64_t lLine);
  /// A group of this level (from 0) and all within it begin anew.
  void GroupBegins(size_t nLevel);
  /// A line that is no row. Gives the kind of totals that it may be of as far as is known, or kNoKind.
  size_t Line(int64_t lLine, std::string_view sLine);

  /// Whether a line that may be a row prints sums of the rows so far and nothing else.
  bool IsOfSums(std::string_view sLine);

  /// To be called once, behind the last line. bRounds: the report says that it rounds, so a difference of half a unit a
  /// row is one of the last digit; else one unit is.
  TotalsAccount Finish(bool bRounds = false);
  /// Whether the lines of a kind turned out to be totals; after Finish.
  bool IsTotal(size_t nKind) const { return nKind < kinds_.size() && kinds_[nKind].bTotal; }
  const std::vector<ProofColumn>& Columns() const { return columns_; }

 private:
  using Sum = RunningSum;
  using Sums = std::vector<Sum>;
  struct Judged {
    TotalVerdict verdict = TotalVerdict::Disagrees;
    bool bVotes = false;
    bool bNone = false;  ///< Can't be told, or is an average or a count of the rows
    bool bNearly = false;
    uint64_t nDistance = 0;
    std::string sSummed;
  };
  struct ColumnVotes {
    int64_t lAgree = 0, lLastDigit = 0, lDisagree = 0;
    int64_t lVotesFor = 0, lVotesAgainst = 0;
    int64_t lNearly = 0, lNearlyAgainst = 0;  ///< Those of lDisagree and lVotesAgainst that rounding may give
    int64_t lAloneWrong = 0;                  ///< Lines where another column agreed and this one didn't
  };
  struct Kind {
    std::string sPhrase;  ///< Finds its lines
    bool bRelied = false, bFar = false, bTotal = false;
    int64_t lLines = 0;
    Sums before;  ///< As they stood at the last line
    std::vector<ColumnVotes> votes;
    std::vector<PrintedTotal> agreeing, disagreeing;
  };

  struct Shared {
    clsSharedSums::Column* pColumn = nullptr;
    size_t nFirst = 0;  ///< The table's first column of that name: the one whose numbers are shared
  };
  bool CountsShared() const;
  size_t KindOf(std::string_view sLine);
  size_t NewKind(std::string_view sKey, std::string_view sPhrase, bool bRelied);
  Judged Judge(const Kind& kind, const LineNumber& number, size_t nColumn) const;
  static bool Compare(const Sum& now, const Sum& before, const LineNumber& number, Judged& judged);
  void CompareWithAllTables(const LineNumber& number, size_t nColumn, Judged& judged) const;
  void MoveToFreeColumns(const Kind& kind, std::vector<Judged>& judged);
  void Vote(Kind& kind, int64_t lLine, const std::vector<Judged>& judged);
  static bool IsOfKind(const Kind& kind, const ColumnVotes& votes);
  void FindNumbers(std::string_view sLine);
  static void AllowRounding(Kind& kind);
  void Settle(Kind& kind, TotalsAccount& account) const;

  std::vector<ProofColumn> columns_;
  std::vector<std::string> words_;
  Limits limits_;
  std::optional<clsTidyCutter> cutter_;
  std::vector<Shared> shared_;  ///< By column, if any are
  size_t nTable_ = 0;           ///< Of those that share
  Sums sums_;
  std::vector<Sums> groups_;
  std::vector<Kind> kinds_;
  std::map<std::string, size_t, std::less<>> kindOfWords_;
  int64_t lLastRow_ = 0;
  LineNumbers line_;  ///< Kept for its memory
};

}  // namespace quillon
