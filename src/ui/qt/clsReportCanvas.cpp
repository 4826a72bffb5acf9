#include "clsReportCanvas.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "clsFormBinder.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

QColor Blend(const QColor& a, const QColor& b, double nShare) {
  const auto mix = [&](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * nShare)); };
  return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

/// Steps of a hand that leaves the drawing by so many points are meant.
constexpr int kOff = 24;

}  // namespace

struct clsReportCanvas::Colours {
  QColor paper, ink, faint, ruler, bands[2], otherBands[2], boundary, selected, loss, lossPaper, key;

  explicit Colours(const QPalette& palette) {
    paper = palette.color(QPalette::Base);
    ink = palette.color(QPalette::Text);
    faint = Blend(ink, paper, 0.45);
    ruler = Blend(paper, palette.color(QPalette::Window), 0.8);
    const bool bDark = paper.lightness() < 128;
    const QColor tint = bDark ? QColor(90, 150, 255) : QColor(40, 110, 220);
    const QColor second = bDark ? QColor(80, 200, 160) : QColor(20, 150, 110);
    bands[0] = Blend(paper, tint, 0.20);
    bands[1] = Blend(paper, second, 0.20);
    otherBands[0] = Blend(paper, ink, 0.05);
    otherBands[1] = Blend(paper, ink, 0.10);
    boundary = Blend(paper, tint, 0.75);
    selected = bDark ? QColor(255, 190, 60) : QColor(200, 90, 0);
    loss = bDark ? QColor(255, 150, 140) : QColor(170, 0, 0);
    lossPaper = Blend(paper, bDark ? QColor(255, 60, 40) : QColor(255, 0, 0), bDark ? 0.45 : 0.28);
    key = bDark ? QColor(240, 210, 90) : QColor(140, 100, 0);
  }
};

clsReportCanvas::clsReportCanvas(clsReportCut& cut, QWidget* pParent) : QAbstractScrollArea(pParent), cut_(cut) {
  setObjectName("canvasReportCut");
  setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setMouseTracking(true);
  setAccessibleName(ToQt(Translate("The report with its cut")));
  setMinimumHeight(120);
  Measure();
}

void clsReportCanvas::Measure() {
  const QFontMetricsF metrics(font());
  nCharWidth_ = metrics.horizontalAdvance(QLatin1Char('0'));
  nAscent_ = static_cast<int>(std::ceil(metrics.ascent()));
  nLineHeight_ = nAscent_ + static_cast<int>(std::ceil(metrics.descent())) + 1;
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
  if (cut_.Selected() < 0) return;
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

void clsReportCanvas::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  const Colours colours(palette());
  painter.setFont(font());
  painter.fillRect(viewport()->rect(), colours.paper);
  painter.setClipRect(0, Top(), viewport()->width(), viewport()->height() - Top());
  const int nFirst = verticalScrollBar()->value();
  for (int nRow = nFirst; nRow < static_cast<int>(rows_.size()); ++nRow) {
    const int y = Top() + (nRow - nFirst) * nLineHeight_;
    if (y > viewport()->height()) break;
    PaintRow(painter, colours, nRow, y);
  }
  painter.setClipping(false);
  PaintRuler(painter, colours);
  PaintBoundaries(painter, colours);
  if (!hasFocus()) return;
  painter.setPen(palette().color(QPalette::Highlight));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
}

void clsReportCanvas::PaintRow(QPainter& painter, const Colours& colours, int nRow, int y) const {
  const int nLine = rows_[static_cast<size_t>(nRow)];
  painter.setPen(colours.faint);
  if (nLine < 0) {
    painter.drawText(Left(), y + nAscent_, QStringLiteral("..."));
    return;
  }
  const CutLine& line = cut_.Picture().lines[static_cast<size_t>(nLine)];
  painter.save();
  painter.setClipRect(Left(), Top(), viewport()->width() - Left(), viewport()->height() - Top());
  PaintBands(painter, colours, line, y);
  PaintMarks(painter, colours, line, y);
  painter.setPen(colours.ink);
  PaintText(painter, line, y);
  painter.restore();
  const bool bLoses = !line.sMarks.empty();
  painter.setPen(bLoses ? colours.loss : colours.faint);
  const QRectF place(0, y, Left() - 0.75 * nCharWidth_, nLineHeight_);
  painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, QString::number(line.lLine));
}

void clsReportCanvas::PaintBands(QPainter& painter, const Colours& colours, const CutLine& line, int y) const {
  if (line.nTable < 0) return;
  const CutPicture& picture = cut_.Picture();
  const QColor* const bands = line.nTable == picture.nCurrent ? colours.bands : colours.otherBands;
  const std::vector<CutField>& fields = picture.tables[static_cast<size_t>(line.nTable)].fields;
  for (size_t i = 0; i < fields.size(); ++i) {
    const double x = XOf(fields[i].lStart - 1);
    if (x > viewport()->width()) break;
    painter.fillRect(QRectF(x, y, XOf(fields[i].lEnd) - x, nLineHeight_), bands[i % 2]);
  }
}

void clsReportCanvas::PaintMarks(QPainter& painter, const Colours& colours, const CutLine& line, int y) const {
  for (size_t i = 0; i < line.sMarks.size(); ++i) {
    if (line.sMarks[i] == ' ') continue;
    const double x = XOf(static_cast<int32_t>(i));
    const bool bCut = line.sMarks[i] == '^';
    // The two characters that a boundary tears apart, or one that nobody takes.
    painter.fillRect(QRectF(x, y, nCharWidth_ * (bCut ? 2 : 1), nLineHeight_), colours.lossPaper);
    if (bCut) painter.fillRect(QRectF(x + nCharWidth_ - 1, y, 2, nLineHeight_), colours.loss);
  }
  if (line.lKeyAt < 1) return;
  painter.setPen(colours.key);
  const double x = XOf(line.lKeyAt - 1);
  painter.drawRect(QRectF(x - 1, y, line.lKeyLength * nCharWidth_ + 1, nLineHeight_ - 1));
}

/// Plain text goes out in one piece; anything else by the character, as fonts hold the pitch for few others.
void clsReportCanvas::PaintText(QPainter& painter, const CutLine& line, int y) const {
  const int nFirst = horizontalScrollBar()->value();
  const int nShown = horizontalScrollBar()->pageStep() + 2;
  const std::string sShown(MidChars(line.sText, nFirst + 1, nShown));
  QString sPlain;
  int nColumn = 0;
  for (size_t i = 0; i < sShown.size(); ++nColumn) {
    const char32_t ch = DecodeUtf8(sShown, i);
    const bool bControl = ch < 0x20 || (ch >= 0x7F && ch < 0xA0);
    if (bControl || ch < 0x80) {
      sPlain += bControl ? QChar(0xB7) : QChar(static_cast<char16_t>(ch));
      continue;
    }
    sPlain += QLatin1Char(' ');
    const double x = Left() + nColumn * nCharWidth_;
    painter.drawText(QPointF(x, y + nAscent_), QString::fromUcs4(&ch, 1));
  }
  painter.drawText(QPointF(Left(), y + nAscent_), sPlain);
}

void clsReportCanvas::PaintRuler(QPainter& painter, const Colours& colours) const {
  painter.fillRect(0, 0, viewport()->width(), Top(), colours.ruler);
  const CutPicture& picture = cut_.Picture();
  const int nFirst = horizontalScrollBar()->value();
  painter.setClipRect(Left(), 0, viewport()->width() - Left(), Top());
  if (picture.nCurrent >= 0) {
    const CutTable& table = picture.tables[static_cast<size_t>(picture.nCurrent)];
    for (size_t i = 0; i < table.fields.size(); ++i) {
      const QRectF place(XOf(table.fields[i].lStart - 1), nLineHeight_ + 3,
                         (table.fields[i].lEnd - table.fields[i].lStart + 1) * nCharWidth_, nLineHeight_ + 1);
      if (place.right() < Left() || place.left() > viewport()->width()) continue;
      const bool bLeftOut = table.letters[i].empty();
      painter.fillRect(place, bLeftOut ? colours.otherBands[i % 2] : colours.bands[i % 2]);
      painter.setPen(colours.ink);
      painter.drawText(place, Qt::AlignCenter, ToQt(table.letters[i]));
    }
  }
  painter.setPen(colours.faint);
  const int nLast = nFirst + horizontalScrollBar()->pageStep() + 2;
  for (int n = nFirst + 1; n <= nLast; ++n) {
    const double x = XOf(n);
    painter.drawLine(QPointF(x, nLineHeight_ + 3 -
                                    (n % 10 == 0  ? 5
                                     : n % 5 == 0 ? 4
                                                  : 2)),
                     QPointF(x, nLineHeight_ + 2));
    if (n % 10 != 0) continue;
    const QRectF place(x - 4 * nCharWidth_, 0, 8 * nCharWidth_, nLineHeight_ - 1);
    painter.drawText(place, Qt::AlignCenter, QString::number(n));
  }
  painter.setClipping(false);
  painter.drawLine(0, Top() - 1, viewport()->width(), Top() - 1);
}

/// Strong where the table lies and in the ruler, faint over the lines that it doesn't cut.
void clsReportCanvas::PaintBoundaries(QPainter& painter, const Colours& colours) const {
  const std::vector<CutBoundary>& boundaries = cut_.Boundaries();
  for (size_t i = 0; i < boundaries.size(); ++i) {
    const bool bInHand = static_cast<int>(i) == nDragged_;
    if (bInHand && bDragOff_) continue;
    const double x = XOf(bInHand ? lDragTo_ : boundaries[i].lAfter);
    if (x < Left() - 1 || x > viewport()->width()) continue;
    const bool bSelected = bInHand || static_cast<int>(i) == cut_.Selected();
    const QColor colour = bSelected ? colours.selected : colours.boundary;
    QPen pen(bSelected ? colour : Blend(colours.paper, colour, 0.35), bSelected ? 2 : 1);
    if (cut_.HasProposal()) pen.setStyle(Qt::DashLine);
    painter.setPen(pen);
    painter.drawLine(QPointF(x, Top()), QPointF(x, viewport()->height()));
    pen.setColor(colour);
    painter.setPen(pen);
    painter.drawLine(QPointF(x, nLineHeight_ + 3), QPointF(x, Top()));
    painter.fillRect(QRectF(x - 2, nLineHeight_ + 3, 5, 5), colour);
    for (const auto& [nFrom, nTo] : TableStretches()) painter.drawLine(QPointF(x, nFrom), QPointF(x, nTo));
  }
}

/// Heights from and to which rows of the current table are in sight.
std::vector<std::pair<int, int>> clsReportCanvas::TableStretches() const {
  const CutPicture& picture = cut_.Picture();
  std::vector<std::pair<int, int>> stretches;
  if (picture.nCurrent < 0) return stretches;
  const int nFirst = verticalScrollBar()->value();
  const int nLast = std::min(static_cast<int>(rows_.size()), nFirst + verticalScrollBar()->pageStep() + 2);
  for (int nRow = nFirst; nRow < nLast; ++nRow) {
    const int nLine = rows_[static_cast<size_t>(nRow)];
    if (nLine < 0 || picture.lines[static_cast<size_t>(nLine)].nTable != picture.nCurrent) continue;
    const int y = Top() + (nRow - nFirst) * nLineHeight_;
    if (stretches.empty() || stretches.back().second != y) stretches.emplace_back(y, y);
    stretches.back().second = y + nLineHeight_;
  }
  return stretches;
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
  if (lLine > 0) cut_.ChooseTableOf(lLine);
}

int64_t clsReportCanvas::LineAt(int y) const {
  const int nRow = RowAt(y);
  const int nLine = nRow < 0 ? -1 : rows_[static_cast<size_t>(nRow)];
  return nLine < 0 ? 0 : cut_.Picture().lines[static_cast<size_t>(nLine)].lLine;
}

void clsReportCanvas::contextMenuEvent(QContextMenuEvent* pEvent) {
  if (onBeforeHand) onBeforeHand();
  const int64_t lLine = LineAt(pEvent->pos().y());
  if (lLine == 0 || !cut_.CanBound()) return;
  QMenu menu;
  const QAction* const pFirst = menu.addAction(ToQt(Translate("First row of the table")));
  const QAction* const pLast = menu.addAction(ToQt(Translate("Last row of the table")));
  const QAction* const pChosen = menu.exec(pEvent->globalPos());
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

void clsReportCanvas::keyPressEvent(QKeyEvent* pEvent) {
  if (onBeforeHand) onBeforeHand();
  const bool bControl = pEvent->modifiers().testFlag(Qt::ControlModifier);
  const int nKey = pEvent->key();
  if (pEvent->matches(QKeySequence::Undo) && onUndo) return onUndo();
  if (pEvent->matches(QKeySequence::Redo) && onRedo) return onRedo();
  if (nKey == Qt::Key_Left || nKey == Qt::Key_Right) {
    const bool bForward = nKey == Qt::Key_Right;
    if (bControl || cut_.Selected() < 0) {
      cut_.SelectNext(bForward);
    } else {
      cut_.MoveSelected(bForward ? 1 : -1, pEvent->modifiers().testFlag(Qt::ShiftModifier));
    }
    return ScrollToBoundary();
  }
  if (nKey == Qt::Key_Insert) {
    cut_.AddBehindSelected();
    return ScrollToBoundary();
  }
  if (nKey == Qt::Key_Delete || nKey == Qt::Key_Backspace) {
    cut_.RemoveSelected();
    return;
  }
  const bool bEnter = nKey == Qt::Key_Return || nKey == Qt::Key_Enter;
  if (cut_.HasProposal() && (bEnter || nKey == Qt::Key_Escape)) {
    return bEnter ? cut_.TakeProposal() : cut_.DropProposal();
  }
  if (nKey == Qt::Key_Escape && cut_.Selected() >= 0) return cut_.Select(-1);
  QAbstractScrollArea::keyPressEvent(pEvent);
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
