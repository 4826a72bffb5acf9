#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "modReportCheck.h"

namespace quillon {

/// What stands in the head of a page.
struct CheckPageHead {
  std::string sReport, sRecipe;
  std::string sVerdict;  ///< The closing sentence
  bool bGood = false;
};

/// A page of HTML that shows a checked report: each line in the colour of its kind, the cells of rows, what is lost in
/// red, and printed totals with a tick or what their rows give. It stands alone: no script, no other file, and it
/// prints well. Long reports are shortened to their ends and the places that matter.
///
/// The report is checked twice: the second time it is followed by the page, which knows the outcome by then.
class clsCheckPage : public clsLineFollower {
 public:
  static constexpr int64_t kShort = 3000;  ///< Lines of a report that is shown whole
  static constexpr std::string_view kBegins = "<!DOCTYPE html>\n<html lang=\"en\"><head><meta ";  ///< Each page

  clsCheckPage(const ReportCheck& check, const std::vector<CutTable>& cuts, const CheckPageHead& head);

  void Line(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) override;
  /// The whole page; to be called once.
  std::string Finish();

 private:
  void Head(const CheckPageHead& head);
  void Totals();
  void TotalRow(const TableTotal& one);
  void Shapes();
  bool IsOf(const std::set<std::string, std::less<>>& keys, std::string_view sLine, TidyLineKind kind) const;
  bool IsShown(int64_t lLine, bool bMatters);
  void PutLine(int64_t lLine, const std::string& sHtml);
  std::string Marked(std::string_view sLine, TidyLineKind kind, size_t nTable, bool& bLoss) const;
  std::string TotalsOf(int64_t lLine) const;

  const ReportCheck& check_;
  std::vector<std::vector<TidyPlace>> places_;  ///< By table; sorted
  std::vector<bool> strict_;                    ///< By table: cells end where their column ends
  std::multimap<int64_t, const TableTotal*> totals_;
  std::set<std::string, std::less<>> lostShapes_, doubtfulShapes_;  ///< With the kind's number in front
  int64_t lLines_ = 0;
  bool bWhole_ = true;
  int64_t lShownTo_ = 0;                               ///< The last line put out
  int64_t lMatters_ = 0;                               ///< The last line that mattered
  int64_t lPlaces_ = 0;                                ///< How many mattered
  std::vector<std::pair<int64_t, std::string>> held_;  ///< The lines before, in case the next one matters
  std::string sOut_;
};

/// Text with the characters that mean something in HTML made harmless.
std::string HtmlText(std::string_view sText);

}  // namespace quillon
