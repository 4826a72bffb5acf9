#include "modIcons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace quillon {

namespace {

// All shapes are drawn on a field of 24 x 24.
constexpr int kField = 24;

QPen Line(const QColor& colour, double width) {
  return {colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

void Polygon(QPainter& painter, std::initializer_list<QPointF> points) {
  painter.drawPolygon(QPolygonF(QList<QPointF>(points)));
}

/// A printed report in front of which a sheet lies.
void DrawApplication(QPainter& painter) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor("#21445b"));
  painter.drawRoundedRect(QRectF(1.5, 1.5, 21, 21), 3.75, 3.75);
  painter.setBrush(QColor("#f6f1e4"));
  painter.drawRect(QRectF(4.5, 4.5, 8, 14.5));
  painter.setPen(Line(QColor("#8a8471"), 0.8));
  for (const double y : {6.75, 9.0, 11.25, 13.5, 15.75}) painter.drawLine(QPointF(5.8, y), QPointF(11, y));
  const QRectF sheet(11.6, 7.9, 8.6, 10.5);
  painter.setPen(Line(QColor("#2e9e6b"), 0.8));
  painter.setBrush(Qt::white);
  painter.drawRoundedRect(sheet, 0.8, 0.8);
  for (const double y : {13.1, 15.75}) painter.drawLine(QPointF(sheet.left(), y), QPointF(sheet.right(), y));
  painter.drawLine(QPointF(16, 10.5), QPointF(16, sheet.bottom()));
  painter.setBrush(QColor("#2e9e6b"));
  painter.drawRect(QRectF(sheet.left(), sheet.top(), sheet.width(), 2.6));
}

void DrawConvert(QPainter& painter) {
  const QColor green("#2e9e6b");
  painter.setPen(Line(green, 2));
  painter.setBrush(green);
  Polygon(painter, {{7, 5}, {19, 12}, {7, 19}});
}

void DrawPause(QPainter& painter, const QColor& text) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(text);
  for (const double x : {6.0, 14.0}) painter.drawRoundedRect(QRectF(x, 4.5, 4, 15), 1.2, 1.2);
}

/// Three sliders.
void DrawOptions(QPainter& painter, const QColor& text, const QColor& ground) {
  constexpr std::array<std::pair<double, double>, 3> kSliders{{{6.5, 9}, {12, 15.5}, {17.5, 7.5}}};
  for (const auto& [y, knob] : kSliders) {
    painter.setPen(Line(text, 1.6));
    painter.drawLine(QPointF(4, y), QPointF(20, y));
    painter.setBrush(ground);
    painter.drawEllipse(QPointF(knob, y), 2, 2);
  }
}

void DrawFile(QPainter& painter, const QColor& text, const QColor& ground) {
  painter.setPen(Line(text, 1.5));
  painter.setBrush(ground);
  Polygon(painter, {{6, 3.5}, {14, 3.5}, {18.5, 8}, {18.5, 20.5}, {6, 20.5}});
  painter.drawPolyline(QPolygonF(QList<QPointF>{{14, 3.5}, {14, 8}, {18.5, 8}}));
  for (const double y : {12.0, 15.0, 18.0}) painter.drawLine(QPointF(9, y), QPointF(15.5, y));
}

void DrawFolder(QPainter& painter, const QColor& text) {
  painter.setPen(Line(text, 1.5));
  painter.setBrush(QColor("#e8b64c"));
  Polygon(painter, {{3.5, 19}, {3.5, 5.5}, {9.5, 5.5}, {11.5, 8}, {20.5, 8}, {20.5, 19}});
}

void Draw(QPainter& painter, Icon icon, const QPalette& palette) {
  const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
  const QColor ground = palette.color(QPalette::Active, QPalette::Base);
  switch (icon) {
    case Icon::Application:
      return DrawApplication(painter);
    case Icon::Convert:
      return DrawConvert(painter);
    case Icon::Pause:
      return DrawPause(painter, text);
    case Icon::Options:
      return DrawOptions(painter, text, ground);
    case Icon::File:
      return DrawFile(painter, text, ground);
    case Icon::Folder:
      return DrawFolder(painter, text);
  }
}

}  // namespace

QIcon MakeIcon(Icon icon, const QPalette& palette) {
  QIcon made;
  for (const int size : {16, 20, 24, 32, 48, 64, 128}) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(static_cast<double>(size) / kField, static_cast<double>(size) / kField);
    Draw(painter, icon, palette);
    painter.end();
    made.addPixmap(pixmap);
  }
  return made;
}

}  // namespace quillon
