// How clsReportCanvas draws.

#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "clsFormBinder.h"
#include "clsReportCanvas.h"
#include "modText.h"

namespace quillon {

namespace {

QColor Blend(const QColor& a, const QColor& b, double nShare) {
  const auto mix = [&](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * nShare)); };
  return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

}  // namespace

struct clsReportCanvas::Colours {
  QColor paper, ink, faint, ruler, bands[2], otherBands[2], boundary, selected, loss, lossPaper, key;
  QColor further, heading, total, leftOut;

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
    further = Blend(paper, tint, 0.10);
    heading = Blend(paper, bDark ? QColor(240, 200, 80) : QColor(230, 170, 0), 0.28);
    total = Blend(paper, bDark ? QColor(190, 130, 255) : QColor(130, 60, 200), 0.22);
    leftOut = Blend(paper, bDark ? QColor(255, 110, 90) : QColor(240, 90, 60), 0.20);
    key = bDark ? QColor(240, 210, 90) : QColor(140, 100, 0);
  }
};

void clsReportCanvas::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  const Colours colours(palette());
  painter.setFont(font());
  painter.fillRect(viewport()->rect(), colours.paper);
  painter.setClipRect(0, Top(), viewport()->width(), viewport()->height() - Top());
  const int nFirst = verticalScrollBar()->value();
  for (int nRow = nFirst; nRow < Rows(); ++nRow) {
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
  const CutLine* const pLine = cut_.Line(nRow + 1);
  if (pLine == nullptr) return;
  const CutLine& line = *pLine;
  painter.save();
  painter.setClipRect(Left(), Top(), viewport()->width() - Left(), viewport()->height() - Top());
  PaintKind(painter, colours, line, y);
  PaintBands(painter, colours, line, y);
  PaintMarks(painter, colours, line, y);
  PaintSelection(painter, line, y);
  const bool bFaint = line.kind == CutKind::Outside || line.kind == CutKind::Dropped;
  painter.setPen(bFaint ? colours.faint : colours.ink);
  PaintText(painter, line, y);
  PaintPageMark(painter, colours, line, y);
  painter.restore();
  if (line.lLine == lCursor_) {
    painter.setPen(hasFocus() ? colours.selected : colours.faint);
    painter.drawLine(0, y + nLineHeight_ - 1, viewport()->width(), y + nLineHeight_ - 1);
    painter.fillRect(QRectF(0, y, 3, nLineHeight_), hasFocus() ? colours.selected : colours.faint);
  }
  const bool bLoses = !line.sMarks.empty() || line.bLikeRow;
  painter.setPen(bLoses ? colours.loss : colours.faint);
  const QRectF place(0, y, Left() - 0.75 * nCharWidth_, nLineHeight_);
  painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, QString::number(line.lLine));
}

void clsReportCanvas::PaintBands(QPainter& painter, const Colours& colours, const CutLine& line, int y) const {
  if (line.nTable < 0) return;
  const CutPicture& picture = cut_.Picture();
  const QColor* const bands = line.nTable == picture.InFront() ? colours.bands : colours.otherBands;
  const std::vector<CutField>& fields = picture.tables[static_cast<size_t>(line.nTable)].fields;
  for (size_t i = 0; i < fields.size(); ++i) {
    const double x = XOf(fields[i].lStart - 1);
    if (x > viewport()->width()) break;
    painter.fillRect(QRectF(x, y, XOf(fields[i].lEnd) - x, nLineHeight_), bands[i % 2]);
  }
}

/// What is no row and means something has a ground of its own; what looks like a row and is none stands out most.
void clsReportCanvas::PaintKind(QPainter& painter, const Colours& colours, const CutLine& line, int y) const {
  const QColor* pGround = nullptr;
  if (line.kind == CutKind::Further) pGround = &colours.further;
  if (line.kind == CutKind::Heading) pGround = &colours.heading;
  if (line.kind == CutKind::Total) pGround = &colours.total;
  if (line.kind == CutKind::LeftOut) pGround = &colours.otherBands[0];
  if (line.bLikeRow) pGround = &colours.leftOut;
  if (pGround != nullptr) painter.fillRect(QRectF(Left(), y, viewport()->width() - Left(), nLineHeight_), *pGround);
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

void clsReportCanvas::PaintSelection(QPainter& painter, const CutLine& line, int y) const {
  if (line.lLine != lCursor_ || lSelFirst_ < 1) return;
  QColor colour = palette().color(QPalette::Highlight);
  constexpr int kGlass = 110;
  colour.setAlpha(kGlass);
  painter.fillRect(QRectF(XOf(lSelFirst_ - 1), y, (lSelLast_ - lSelFirst_ + 1) * nCharWidth_, nLineHeight_), colour);
}

/// A page begins at a form feed.
void clsReportCanvas::PaintPageMark(QPainter& painter, const Colours& colours, const CutLine& line, int y) const {
  if (line.sText.find('\f') == std::string::npos) return;
  painter.setPen(QPen(colours.boundary, 1, Qt::DashDotLine));
  painter.drawLine(Left(), y, viewport()->width(), y);
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
  painter.setClipRect(Left(), 0, viewport()->width() - Left(), Top());
  PaintLetters(painter, colours);
  painter.setPen(colours.faint);
  const int nFirst = horizontalScrollBar()->value();
  const int nLast = nFirst + horizontalScrollBar()->pageStep() + 2;
  const int nBottom = nLineHeight_ + 2;
  for (int n = nFirst + 1; n <= nLast; ++n) {
    const double x = XOf(n);
    const int nTick = n % 10 == 0 ? 4 : n % 5 == 0 ? 3 : 1;
    painter.drawLine(QPointF(x, nBottom - nTick), QPointF(x, nBottom));
    if (n % 10 != 0) continue;
    const QRectF place(x - 4 * nCharWidth_, 0, 8 * nCharWidth_, nLineHeight_ - 1);
    painter.drawText(place, Qt::AlignCenter, QString::number(n));
  }
  painter.setClipping(false);
  painter.drawLine(0, Top() - 1, viewport()->width(), Top() - 1);
}

/// The letters of the output's columns over their fields.
void clsReportCanvas::PaintLetters(QPainter& painter, const Colours& colours) const {
  const CutPicture& picture = cut_.Picture();
  if (picture.InFront() < 0) return;
  const DrawnTable& table = picture.tables[static_cast<size_t>(picture.InFront())];
  for (size_t i = 0; i < table.fields.size(); ++i) {
    const double x = XOf(table.fields[i].lStart - 1);
    const QRectF place(x, nLineHeight_ + 3, XOf(table.fields[i].lEnd) - x, nLineHeight_ + 1);
    if (place.right() < Left() || place.left() > viewport()->width()) continue;
    painter.fillRect(place, table.letters[i].empty() ? colours.otherBands[i % 2] : colours.bands[i % 2]);
    painter.setPen(colours.ink);
    const QFontMetrics metrics(font());
    const QString sName = metrics.elidedText(ToQt(table.letters[i]), Qt::ElideRight, static_cast<int>(place.width()));
    painter.drawText(place, Qt::AlignCenter, sName);
  }
}

/// Strong where the table lies and in the ruler, faint over the lines that it doesn't cut.
void clsReportCanvas::PaintBoundaries(QPainter& painter, const Colours& colours) const {
  const std::vector<CutBoundary>& boundaries = cut_.Boundaries();
  const std::vector<std::pair<int, int>> stretches = TableStretches();
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
    for (const auto& [nFrom, nTo] : stretches) painter.drawLine(QPointF(x, nFrom), QPointF(x, nTo));
  }
}

/// Heights from and to which rows of the current table are in sight.
std::vector<std::pair<int, int>> clsReportCanvas::TableStretches() const {
  const CutPicture& picture = cut_.Picture();
  std::vector<std::pair<int, int>> stretches;
  if (picture.nCurrent < 0) return stretches;
  const int nFirst = verticalScrollBar()->value();
  const int nLast = std::min(Rows(), nFirst + verticalScrollBar()->pageStep() + 2);
  for (int nRow = nFirst; nRow < nLast; ++nRow) {
    const CutLine* const pLine = cut_.Line(nRow + 1);
    if (pLine == nullptr || pLine->nTable != picture.nCurrent) continue;
    const int y = Top() + (nRow - nFirst) * nLineHeight_;
    if (stretches.empty() || stretches.back().second != y) stretches.emplace_back(y, y);
    stretches.back().second = y + nLineHeight_;
  }
  return stretches;
}

}  // namespace quillon
