#include "clsReportCut.h"

#include <algorithm>
#include <utility>

#include "modLineShape.h"
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
  fetched_.clear();
  lLines_ = picture.lines.empty() ? 0 : picture.lines.back().lLine;
  ReadThrough();
  const int32_t lSelected = nSelected_ < 0 ? -1 : boundaries_[static_cast<size_t>(nSelected_)].lAfter;
  picture_ = std::move(picture);
  for (CutLine& line : picture_.lines) TellLikeRow(line);
  boundaries_ = BoundariesOf(picture_.Fields(), picture_.rules);
  nSelected_ = BoundaryAt(lSelected);
  if (onChange) onChange();
}

/// Begins to read the report by the recipe, unless that is being done or was done.
void clsReportCut::ReadThrough() {
  const PreviewRequest report = source_.Report();
  const bool bOpen = !report.sInput.empty() && text_.Open(report);
  const std::string sRecipe = bOpen ? source_.TidyRecipe() : std::string();
  if (bOpen) lLines_ = std::max(lLines_, text_.Counted());
  if (!bOpen || std::exchange(sRead_, text_.Stamp() + "\n" + sRecipe) == sRead_) return;
  likeRows_.clear();
  askedProof_.reset();
  learnedBefore_.reset();
  ++nProof_;
  bRecipe_ = !sRecipe.empty();
  pPass_ = std::make_unique<clsReportPass>();
  if (!bRecipe_ || !pPass_->Begin(report, sRecipe)) pPass_.reset();
}

namespace {

const CutLine* LineIn(const std::vector<CutLine>& lines, int64_t lLine) {
  const auto found = std::lower_bound(lines.begin(), lines.end(), lLine,
                                      [](const CutLine& line, int64_t l) { return line.lLine < l; });
  return found == lines.end() || found->lLine != lLine ? nullptr : &*found;
}

}  // namespace

CutKind CutKindOf(TidyLineKind kind) {
  switch (kind) {
    case TidyLineKind::Row:
      return CutKind::Row;
    case TidyLineKind::Further:
    case TidyLineKind::Joined:
      return CutKind::Further;
    case TidyLineKind::Heading:
      return CutKind::Heading;
    case TidyLineKind::Total:
      return CutKind::Total;
    case TidyLineKind::Dropped:
      return CutKind::Dropped;
    case TidyLineKind::LeftOut:
      return CutKind::LeftOut;
    default:
      return CutKind::Outside;
  }
}

CutKind clsReportCut::KindAt(int64_t lLine) const {
  const auto n = static_cast<size_t>(lLine) - 1;
  if (n < picture_.kinds.size()) return picture_.kinds[n];
  return pPass_ != nullptr && n < pPass_->Lines().size() ? CutKindOf(pPass_->Lines()[n].kind) : CutKind::Untold;
}

/// What is known of a line that the picture doesn't have.
void clsReportCut::Tell(CutLine& line) const {
  line.kind = KindAt(line.lLine);
  TellLikeRow(line);
  const bool bInside = picture_.lTableFrom > 0 && line.lLine >= picture_.lTableFrom && line.lLine <= picture_.lTableTo;
  if (line.kind == CutKind::Untold && bInside) line.nTable = picture_.InFront();
  if (line.kind != CutKind::Row || picture_.tables.empty()) return;
  const auto n = static_cast<size_t>(line.lLine) - 1;
  const bool bPassed = pPass_ != nullptr && n < pPass_->Lines().size();
  const int nTable = bPassed ? pPass_->Lines()[n].nTable : picture_.InFront();
  line.nTable = std::min(nTable, static_cast<int>(picture_.tables.size()) - 1);
}

const CutLine* clsReportCut::Line(int64_t lLine) {
  if (const CutLine* const pLine = LineIn(picture_.lines, lLine)) return pLine;
  if (const CutLine* const pLine = LineIn(fetched_, lLine)) return pLine;
  if (lLine < 1 || lLine > lLines_) return nullptr;
  constexpr int64_t kAround = 300;
  fetched_.clear();
  for (PreviewRow& row : text_.Lines(std::max<int64_t>(1, lLine - kAround), lLine + kAround)) {
    fetched_.push_back({.lLine = row.lLine, .sText = std::move(row.sText)});
    Tell(fetched_.back());
  }
  return LineIn(fetched_, lLine);
}

void clsReportCut::TellLikeRow(CutLine& line) const {
  const bool bIn = line.kind != CutKind::LeftOut && line.kind != CutKind::Outside;
  line.bLikeRow = !bIn && !likeRows_.empty() && likeRows_.contains(LineShapeKey(line.sText));
}

void clsReportCut::Proved() {
  ++nProof_;
  for (const ShapeOfLines& shape : pPass_->Proof().shapes) {
    if (shape.bLikeRow) likeRows_.insert(shape.sKey);
  }
  for (CutLine& line : picture_.lines) TellLikeRow(line);
  for (CutLine& line : fetched_) TellLikeRow(line);
  if (learnedBefore_ && !picture_.notes.empty()) {
    picture_.notes.erase(picture_.notes.begin());
    NoteLearned(*learnedBefore_, KindsOfPass());
  }
  learnedBefore_.reset();
  if (onChange) onChange();
}

void clsReportCut::Prove() {
  ReportProof proof;
  if (askedProof_ || !MustAskForProof() || !source_.Prove(proof)) return;
  askedProof_ = std::move(proof);
  ++nProof_;
  if (onChange) onChange();
}

bool clsReportCut::WorkOn(int nMilliseconds) {
  constexpr int64_t kBytes = int64_t{4} << 20;
  const bool bCounting = text_.CountOn(kBytes);
  lLines_ = std::max(lLines_, text_.Counted());
  if (bCounting) return true;
  if (pPass_ == nullptr || pPass_->IsDone()) return false;
  const size_t nBefore = pPass_->Lines().size();
  const bool bDone = pPass_->Step(nMilliseconds);
  const bool bSeen = !fetched_.empty() && fetched_.back().lLine > static_cast<int64_t>(nBefore) &&
                     fetched_.front().lLine <= static_cast<int64_t>(pPass_->Lines().size());
  if (bSeen) {
    for (CutLine& line : fetched_) Tell(line);
  }
  if (bDone) Proved();
  return !bDone;
}

int64_t clsReportCut::NextLoss(int64_t lFrom, bool bForward) const {
  const int64_t lEnd = lLines_;
  const auto lost = [&](int64_t lLine) {
    const CutLine* const pLine = LineIn(picture_.lines, lLine);
    return (pLine != nullptr && !pLine->sMarks.empty()) || KindAt(lLine) == CutKind::LeftOut;
  };
  for (int64_t l = bForward ? lFrom + 1 : lFrom - 1; l >= 1 && l <= lEnd; bForward ? ++l : --l) {
    if (lost(l)) return l;
  }
  return 0;
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
