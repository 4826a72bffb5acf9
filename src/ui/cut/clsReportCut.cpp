#include "clsReportCut.h"

#include <algorithm>
#include <utility>

#include "modTranslator.h"

namespace quillon {

const std::vector<CutField>& CutPicture::Fields() const {
  static const std::vector<CutField> kNone;
  return nCurrent < 0 ? kNone : tables[static_cast<size_t>(nCurrent)].fields;
}

void clsReportCut::Update() {
  proposals_.clear();
  nProposal_ = -1;
  Show(source_.Look(nullptr));
}

void clsReportCut::Show(CutPicture picture) {
  const bool bGone = !picture.sFault.empty() && picture.lines.empty() && !picture_.lines.empty();
  if (bGone && picture.sInput == picture_.sInput) {
    picture.notes.push_back({picture.sFault, true});
    picture.notes.push_back({Translate("What is shown was read before."), true});
    picture.lines = std::move(picture_.lines);
    for (CutLine& line : picture.lines) line = {.lLine = line.lLine, .sText = std::move(line.sText)};
    picture.sFault.clear();
  }
  const int32_t lSelected = nSelected_ < 0 ? -1 : boundaries_[static_cast<size_t>(nSelected_)].lAfter;
  picture_ = std::move(picture);
  boundaries_ = BoundariesOf(picture_.Fields(), picture_.rules);
  nSelected_ = BoundaryAt(lSelected);
  if (onChange) onChange();
}

int clsReportCut::BoundaryAt(int32_t lAfter) const {
  const auto found = std::find_if(boundaries_.begin(), boundaries_.end(),
                                  [&](const CutBoundary& boundary) { return boundary.lAfter == lAfter; });
  return found == boundaries_.end() ? -1 : static_cast<int>(found - boundaries_.begin());
}

void clsReportCut::Select(int nBoundary) {
  nSelected_ = nBoundary >= 0 && static_cast<size_t>(nBoundary) < boundaries_.size() ? nBoundary : -1;
  if (onChange) onChange();
}

void clsReportCut::SelectNext(bool bForward) {
  const int nCount = static_cast<int>(boundaries_.size());
  if (nCount == 0) return;
  if (nSelected_ < 0) return Select(bForward ? 0 : nCount - 1);
  Select(std::clamp(nSelected_ + (bForward ? 1 : -1), 0, nCount - 1));
}

bool clsReportCut::Do(const std::optional<CutChange>& change) {
  if (!change) return false;
  source_.Change(*change);
  Update();
  Select(BoundaryAt(change->lAfter));
  return true;
}

bool clsReportCut::Move(int nBoundary, int32_t lAfter, bool bApart) {
  if (!CanEdit() || nBoundary < 0) return false;
  return Do(MoveBoundary(picture_.Fields(), picture_.rules, static_cast<size_t>(nBoundary), lAfter, bApart));
}

bool clsReportCut::MoveSelected(int32_t lBy, bool bApart) {
  return nSelected_ >= 0 && Move(nSelected_, boundaries_[static_cast<size_t>(nSelected_)].lAfter + lBy, bApart);
}

bool clsReportCut::Add(int32_t lAfter) {
  return CanEdit() && Do(AddBoundary(picture_.Fields(), picture_.rules, lAfter));
}

bool clsReportCut::AddBehindSelected() {
  constexpr int32_t kNewWidth = 10;  // as the dialog for a field offers
  if (boundaries_.empty()) return Add(kNewWidth);
  const size_t nFrom = nSelected_ < 0 ? boundaries_.size() - 1 : static_cast<size_t>(nSelected_);
  const int32_t lFrom = boundaries_[nFrom].lAfter;
  if (nFrom + 1 == boundaries_.size()) return Add(lFrom + kNewWidth);
  return Add((lFrom + boundaries_[nFrom + 1].lAfter) / 2);
}

bool clsReportCut::Remove(int nBoundary) {
  if (!CanEdit() || nBoundary < 0) return false;
  return Do(RemoveBoundary(picture_.Fields(), picture_.rules, static_cast<size_t>(nBoundary)));
}

void clsReportCut::WorkOut() {
  if (HasProposal()) {
    nProposal_ = (nProposal_ + 1) % static_cast<int>(proposals_.size());
  } else {
    std::string sFault;
    proposals_ = source_.WorkOut(sFault);
    if (proposals_.empty()) {
      return Note(sFault);
    }
    nProposal_ = 0;
  }
  Show(source_.Look(&Proposal()));
}

void clsReportCut::Note(std::string_view sFault) {
  if (!sFault.empty()) picture_.notes.push_back({std::string(sFault), true});
  if (onChange) onChange();
}

void clsReportCut::Bound(bool bFirst, int64_t lLine) {
  if (!CanBound()) return;
  std::string sFault;
  if (!source_.Bound(bFirst, lLine, sFault)) return Note(sFault);
  Update();
}

void clsReportCut::TakeProposal() {
  if (!HasProposal()) return;
  const CutProposal taken = Proposal();
  source_.Take(taken);
  Update();
}

void clsReportCut::DropProposal() {
  if (HasProposal()) Update();
}

void clsReportCut::ChooseTableOf(int64_t lLine) {
  const auto found =
      std::find_if(picture_.lines.begin(), picture_.lines.end(), [&](const CutLine& l) { return l.lLine == lLine; });
  if (HasProposal() || found == picture_.lines.end() || found->nTable < 0 || found->nTable == picture_.nCurrent) return;
  source_.Choose(picture_.tables[static_cast<size_t>(found->nTable)].lNumber);
  Update();
}

void clsReportCut::LookFurther() {
  source_.LookFurther();
  Update();
}

}  // namespace quillon
