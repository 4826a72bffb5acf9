#include "clsReportCanvas.h"

#include <QFontDatabase>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <limits>

#include "clsFormBinder.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

/// Steps of a hand that leaves the drawing by so many points are meant.
constexpr int kOff = 24;

}  // namespace

clsReportCanvas::clsReportCanvas(clsReportCut& cut, QWidget* pParent) : QAbstractScrollArea(pParent), cut_(cut) {
  setObjectName("canvasReportCut");
  setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setMouseTracking(true);
  setAccessibleName(ToQt(Translate("The report with its cut")));
  Measure();
}

void clsReportCanvas::Measure() {
  const QFontMetricsF metrics(font());
  nCharWidth_ = metrics.horizontalAdvance(QLatin1Char('0'));
  nAscent_ = static_cast<int>(std::ceil(metrics.ascent()));
  nLineHeight_ = nAscent_ + static_cast<int>(std::ceil(metrics.descent())) + 1;
  constexpr int kFewestLines = 12;  // fewer show no table with what stands around it
  setMinimumHeight(Top() + kFewestLines * nLineHeight_ + horizontalScrollBar()->sizeHint().height() + 2 * frameWidth());
}

void clsReportCanvas::ShowPicture() {
  const CutPicture& picture = cut_.Picture();
  lWidest_ = 0;
  for (const CutLine& line : picture.lines) {
    lWidest_ = std::max(lWidest_, static_cast<int32_t>(CharCount(line.sText)));
  }
  if (!picture.Fields().empty()) lWidest_ = std::max(lWidest_, picture.Fields().back().lEnd);
  ShowLines();
}

void clsReportCanvas::ShowLines() {
  SetScrollBars();
  viewport()->update();
}

void clsReportCanvas::SetScrollBars() {
  const int nRows = std::max(1, (viewport()->height() - Top()) / nLineHeight_);
  verticalScrollBar()->setPageStep(nRows);
  verticalScrollBar()->setRange(0, std::max(0, Rows() - nRows));
  const int nColumns = std::max(1, static_cast<int>((viewport()->width() - Left()) / nCharWidth_));
  constexpr int kRoom = 12;  // to draw a field behind the longest line
  horizontalScrollBar()->setPageStep(nColumns);
  horizontalScrollBar()->setRange(0, std::max(0, static_cast<int>(lWidest_) + kRoom - nColumns));
}

void clsReportCanvas::resizeEvent(QResizeEvent*) {
  SetScrollBars();
}

void clsReportCanvas::changeEvent(QEvent* pEvent) {
  QAbstractScrollArea::changeEvent(pEvent);
  if (pEvent->type() != QEvent::FontChange) return;
  Measure();
  SetScrollBars();
}

void clsReportCanvas::ScrollToLine(int64_t lLine) {
  const int nRow = RowOfLine(lLine);
  const int nTop = verticalScrollBar()->value();
  if (nRow < 0 || (nRow >= nTop && nRow < nTop + verticalScrollBar()->pageStep())) return;
  constexpr int kAbove = 3;
  verticalScrollBar()->setValue(nRow - kAbove);
}

void clsReportCanvas::ScrollToBoundary() {
  if (cut_.Selected() < 0 || cut_.Selected() >= static_cast<int>(cut_.Boundaries().size())) return;
  const int32_t lAfter = cut_.Boundaries()[static_cast<size_t>(cut_.Selected())].lAfter;
  QScrollBar* const pBar = horizontalScrollBar();
  if (lAfter < pBar->value() || lAfter >= pBar->value() + pBar->pageStep()) {
    pBar->setValue(lAfter - pBar->pageStep() / 2);
  }
}

int clsReportCanvas::Rows() const {
  constexpr int64_t kMost = std::numeric_limits<int>::max();
  return static_cast<int>(std::min(cut_.Lines(), kMost));
}

int clsReportCanvas::RowOfLine(int64_t lLine) const {
  return lLine < 1 || lLine > Rows() ? -1 : static_cast<int>(lLine) - 1;
}

int clsReportCanvas::Left() const {
  constexpr size_t kFewest = 3;
  const size_t nDigits = std::max(kFewest, std::to_string(cut_.Lines()).size());
  return static_cast<int>((static_cast<double>(nDigits) + 1.5) * nCharWidth_);
}

double clsReportCanvas::XOf(int32_t lAfter) const {
  return Left() + (lAfter - horizontalScrollBar()->value()) * nCharWidth_;
}

int32_t clsReportCanvas::AfterAt(double x) const {
  return std::max(0, static_cast<int32_t>(std::lround((x - Left()) / nCharWidth_)) + horizontalScrollBar()->value());
}

int32_t clsReportCanvas::CharacterAt(double x) const {
  return std::max(1, static_cast<int32_t>(std::floor((x - Left()) / nCharWidth_)) + 1 + horizontalScrollBar()->value());
}

int clsReportCanvas::RowAt(int y) const {
  const int nRow = verticalScrollBar()->value() + (y - Top()) / nLineHeight_;
  return y < Top() || nRow >= Rows() ? -1 : nRow;
}

QPoint clsReportCanvas::PointOnRuler(int32_t lAfter) const {
  return {static_cast<int>(std::lround(XOf(lAfter))), Top() / 2};
}

QPoint clsReportCanvas::PointOnLine(int64_t lLine, int32_t lAfter) const {
  const int nRow = RowOfLine(lLine) - verticalScrollBar()->value();
  return {static_cast<int>(std::lround(XOf(lAfter))), Top() + nRow * nLineHeight_ + nLineHeight_ / 2};
}

void clsReportCanvas::mousePressEvent(QMouseEvent* pEvent) {
  if (pEvent->button() != Qt::LeftButton) return;
  if (onBeforeHand) onBeforeHand();
  bJustAdded_ = false;
  const int32_t lAfter = AfterAt(pEvent->position().x());
  const int64_t lLine = LineAt(static_cast<int>(pEvent->position().y()));
  const bool bLeft = pEvent->position().x() < Left() - nCharWidth_ / 2;
  const int nBoundary = bLeft || IsFree(lLine) ? -1 : cut_.BoundaryAt(lAfter);
  if (nBoundary >= 0 && cut_.CanEdit()) {
    nDragged_ = nBoundary;
    lDragTo_ = lAfter;
    bDragOff_ = false;
    cut_.Select(nBoundary);
    return;
  }
  cut_.Select(-1);
  if (pEvent->position().y() < Top()) {
    pressed_ = lAfter;
    return;
  }
  if (lLine <= 0) return;
  DropSelection();
  lAnchor_ = bLeft ? 0 : CharacterAt(pEvent->position().x());
  MoveCursor(lLine);
  cut_.ChooseTableOf(lLine);
}

/// A line that no boundary cuts, so that a hand on it means its text.
bool clsReportCanvas::IsFree(int64_t lLine) const {
  const CutLine* const pLine = cut_.CanTeach() ? cut_.Line(lLine) : nullptr;
  return pLine != nullptr && pLine->nTable < 0;
}

int64_t clsReportCanvas::LineAt(int y) const {
  return RowAt(y) + 1;
}

void clsReportCanvas::mouseMoveEvent(QMouseEvent* pEvent) {
  const int32_t lAfter = AfterAt(pEvent->position().x());
  if (lAnchor_ > 0 && pEvent->buttons().testFlag(Qt::LeftButton)) return SelectTo(pEvent->position().x());
  if (nDragged_ < 0) {
    const bool bFree = IsFree(LineAt(static_cast<int>(pEvent->position().y())));
    const bool bOnBoundary =
        !bFree && cut_.CanEdit() && cut_.BoundaryAt(lAfter) >= 0 && pEvent->position().x() >= Left() - 4;
    viewport()->setCursor(bOnBoundary ? Qt::SplitHCursor : Qt::ArrowCursor);
    return;
  }
  lDragTo_ = lAfter;
  bDragOff_ = !viewport()->rect().adjusted(-kOff, -kOff, kOff, kOff).contains(pEvent->position().toPoint());
  QToolTip::showText(pEvent->globalPosition().toPoint(), QString::number(lDragTo_), viewport());
  viewport()->update();
}

void clsReportCanvas::mouseReleaseEvent(QMouseEvent* pEvent) {
  if (pEvent->button() != Qt::LeftButton) return;
  if (std::exchange(lAnchor_, 0) > 0 && lSelFirst_ > 0) return Tell();
  const int nDragged = std::exchange(nDragged_, -1);
  // The report may have been looked at anew while the button was down.
  if (nDragged >= static_cast<int>(cut_.Boundaries().size())) return;
  if (nDragged >= 0) {
    if (bDragOff_) {
      cut_.Remove(nDragged);
    } else if (lDragTo_ != cut_.Boundaries()[static_cast<size_t>(nDragged)].lAfter) {
      cut_.Move(nDragged, lDragTo_, pEvent->modifiers().testFlag(Qt::ShiftModifier));
    }
    viewport()->update();
    return;
  }
  const auto pressed = std::exchange(pressed_, std::nullopt);
  if (pressed && *pressed == AfterAt(pEvent->position().x())) bJustAdded_ = cut_.Add(*pressed);
}

/// The first click of the two may have added the boundary that the second one hits.
void clsReportCanvas::mouseDoubleClickEvent(QMouseEvent* pEvent) {
  if (std::exchange(bJustAdded_, false)) return;
  nDragged_ = -1;
  cut_.Remove(cut_.BoundaryAt(AfterAt(pEvent->position().x())));
}

void clsReportCanvas::focusInEvent(QFocusEvent* pEvent) {
  QAbstractScrollArea::focusInEvent(pEvent);
  viewport()->update();
}

void clsReportCanvas::focusOutEvent(QFocusEvent* pEvent) {
  QAbstractScrollArea::focusOutEvent(pEvent);
  viewport()->update();
}

}  // namespace quillon
