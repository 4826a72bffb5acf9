// What a report's drawing learns by pointing, and what it tells of each lesson.

#include <algorithm>
#include <utility>

#include "clsReportCut.h"
#include "modTranslator.h"

namespace quillon {

void clsReportCut::Teach(Lesson lesson, const PointedLine& line) {
  Learn([&](std::string& sFault) { return source_.Teach(lesson, line, sFault); });
}

void clsReportCut::TeachColumn(const PointedColumn& column, const ColumnLesson& lesson) {
  Learn([&](std::string& sFault) { return source_.TeachColumn(column, lesson, sFault); });
}

void clsReportCut::Learn(const std::function<bool(std::string& sFault)>& take) {
  if (!CanTeach()) return;
  std::string sFault;
  const bool bWhole = pPass_ == nullptr || pPass_->IsDone();
  std::vector<CutKind> before = picture_.kinds;
  if (pPass_ != nullptr && bWhole) before = KindsOfPass();
  if (!take(sFault)) return Note(sFault);
  Update();
  NoteLearned(before, picture_.kinds);
  // Of lines further down it is known once they were read.
  if (bWhole && pPass_ != nullptr && !picture_.notes.empty()) learnedBefore_ = std::move(before);
  if (onChange) onChange();
}

std::vector<CutKind> clsReportCut::KindsOfPass() const {
  std::vector<CutKind> kinds;
  kinds.reserve(pPass_->Lines().size());
  for (const clsReportPass::ToldLine& line : pPass_->Lines()) kinds.push_back(CutKindOf(line.kind));
  return kinds;
}

/// How many rows there are now, and which lines aren't rows any more.
void clsReportCut::NoteLearned(const std::vector<CutKind>& before, const std::vector<CutKind>& now) {
  if (now.empty()) return;
  const size_t nBoth = std::min(before.size(), now.size());
  // What lies behind the lines that are known now isn't compared.
  const auto lBefore = std::count(before.begin(), before.begin() + static_cast<ptrdiff_t>(nBoth), CutKind::Row);
  int64_t lLost = 0;
  size_t nFirst = 0;
  for (size_t i = 0; i < nBoth; ++i) {
    if (before[i] != CutKind::Row || now[i] == CutKind::Row) continue;
    if (lLost++ == 0) nFirst = i + 1;
  }
  std::string sText = Translate("Rows now:") + " " + std::to_string(std::count(now.begin(), now.end(), CutKind::Row)) +
                      "; " + Translate("before:") + " " + std::to_string(lBefore);
  if (lLost > 0) {
    sText += "; " + Translate("No longer rows:") + " " + std::to_string(lLost) + "; " + Translate("First on line:") +
             " " + std::to_string(nFirst);
  }
  picture_.notes.insert(picture_.notes.begin(), {std::move(sText), lLost > 0});
}

}  // namespace quillon
