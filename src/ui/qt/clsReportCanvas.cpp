#include "clsReportCanvas.h"

#include <QFontDatabase>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <cmath>

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
  rows_.clear();
  lWidest_ = 0;
  for (size_t i = 0; i < picture.lines.size(); ++i) {
    if (i > 0 && picture.lines[i].lLine != picture.lines[i - 1].lLine + 1) rows_.push_back(-1);
    rows_.push_back(static_cast<int>(i));
    lWidest_ = std::max(lWidest_, static_cast<int32_t>(CharCount(picture.lines[i].sText)));
  }
  if (picture.bMore && !rows_.empty()) rows_.push_back(-1);
  if (!picture.Fields().empty()) lWidest_ = std::max(lWidest_, picture.Fields().back().lEnd);
  SetScrollBars();
  viewport()->update();
}

void clsReportCanvas::SetScrollBars() {
  const int nRows = std::max(1, (viewport()->height() - Top()) / nLineHeight_);
  verticalScrollBar()->setPageStep(nRows);
  verticalScrollBar()->setRange(0, std::max(0, static_cast<int>(rows_.size()) - nRows));
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

int clsReportCanvas::RowOfLine(int64_t lLine) const {
  const std::vector<CutLine>& lines = cut_.Picture().lines;
  const auto found = std::find_if(rows_.begin(), rows_.end(), [&](int nLine) {
    return nLine >= 0 && lines[static_cast<size_t>(nLine)].lLine == lLine;
  });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

int clsReportCanvas::Left() const {
  const std::vector<CutLine>& lines = cut_.Picture().lines;
  constexpr size_t kFewest = 3;
  const size_t nDigits = lines.empty() ? kFewest : std::max(kFewest, std::to_string(lines.back().lLine).size());
  return static_cast<int>((static_cast<double>(nDigits) + 1.5) * nCharWidth_);
}

double clsReportCanvas::XOf(int32_t lAfter) const {
  return Left() + (lAfter - horizontalScrollBar()->value()) * nCharWidth_;
}

int32_t clsReportCanvas::AfterAt(double x) const {
  return std::max(0, static_cast<int32_t>(std::lround((x - Left()) / nCharWidth_)) + horizontalScrollBar()->value());
}

int clsReportCanvas::RowAt(int y) const {
  const int nRow = verticalScrollBar()->value() + (y - Top()) / nLineHeight_;
  return y < Top() || nRow >= static_cast<int>(rows_.size()) ? -1 : nRow;
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
  const int nBoundary = pEvent->position().x() < Left() - nCharWidth_ / 2 ? -1 : cut_.BoundaryAt(lAfter);
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
  const int64_t lLine = LineAt(static_cast<int>(pEvent->position().y()));
  if (lLine <= 0) return;
  MoveCursor(lLine);
  cut_.ChooseTableOf(lLine);
}

int64_t clsReportCanvas::LineAt(int y) const {
  const int nRow = RowAt(y);
  const int nLine = nRow < 0 ? -1 : rows_[static_cast<size_t>(nRow)];
  return nLine < 0 ? 0 : cut_.Picture().lines[static_cast<size_t>(nLine)].lLine;
}

void clsReportCanvas::contextMenuEvent(QContextMenuEvent* pEvent) {
  if (onBeforeHand) onBeforeHand();
  // The key for it means the line of the cursor.
  const bool bByKey = pEvent->reason() == QContextMenuEvent::Keyboard;
  const int64_t lLine = bByKey ? lCursor_ : LineAt(pEvent->pos().y());
  if (lLine == 0 || !cut_.CanBound()) return;
  const QPoint place = bByKey ? viewport()->mapToGlobal(PointOnLine(lLine, 0)) : pEvent->globalPos();
  QMenu menu;
  const QAction* const pFirst = menu.addAction(ToQt(Translate("First row of the table")));
  const QAction* const pLast = menu.addAction(ToQt(Translate("Last row of the table")));
  const QAction* const pChosen = menu.exec(place);
  if (pChosen == pFirst || pChosen == pLast) cut_.Bound(pChosen == pFirst, lLine);
}

void clsReportCanvas::mouseMoveEvent(QMouseEvent* pEvent) {
  const int32_t lAfter = AfterAt(pEvent->position().x());
  if (nDragged_ < 0) {
    const bool bOnBoundary = cut_.CanEdit() && cut_.BoundaryAt(lAfter) >= 0 && pEvent->position().x() >= Left() - 4;
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
