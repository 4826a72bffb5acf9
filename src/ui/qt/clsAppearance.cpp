#include "clsAppearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>
#include <array>

namespace quillon {

namespace {

constexpr const char* kService = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.Settings";
constexpr const char* kSpace = "org.freedesktop.appearance";
constexpr const char* kKey = "color-scheme";
constexpr uint kPrefersDark = 1;

struct RoleColour {
  QPalette::ColorRole role;
  const char *pColour, *pDisabled;
};

constexpr std::array kDark{RoleColour{QPalette::Window, "#2b2d30", "#2b2d30"},
                           RoleColour{QPalette::WindowText, "#dfe1e5", "#7d8187"},
                           RoleColour{QPalette::Base, "#1e1f22", "#26282b"},
                           RoleColour{QPalette::AlternateBase, "#26282b", "#26282b"},
                           RoleColour{QPalette::Text, "#dfe1e5", "#7d8187"},
                           RoleColour{QPalette::PlaceholderText, "#9da1a8", "#6b6f75"},
                           RoleColour{QPalette::Button, "#393b40", "#303236"},
                           RoleColour{QPalette::ButtonText, "#dfe1e5", "#7d8187"},
                           RoleColour{QPalette::BrightText, "#ff7878", "#ff7878"},
                           RoleColour{QPalette::ToolTipBase, "#393b40", "#393b40"},
                           RoleColour{QPalette::ToolTipText, "#dfe1e5", "#dfe1e5"},
                           RoleColour{QPalette::Light, "#4b4e54", "#4b4e54"},
                           RoleColour{QPalette::Midlight, "#404349", "#404349"},
                           RoleColour{QPalette::Mid, "#26282b", "#26282b"},
                           RoleColour{QPalette::Dark, "#1b1c1e", "#1b1c1e"},
                           RoleColour{QPalette::Shadow, "#101112", "#101112"},
                           RoleColour{QPalette::Highlight, "#2f7d5b", "#45484d"},
                           RoleColour{QPalette::HighlightedText, "#ffffff", "#b0b3b8"},
                           RoleColour{QPalette::Link, "#6cb2ff", "#7d8187"},
                           RoleColour{QPalette::LinkVisited, "#b59bff", "#7d8187"}};

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QPalette DarkPalette() {
  QPalette palette;
  for (const RoleColour& row : kDark) {
    palette.setColor(row.role, QColor(row.pColour));
    palette.setColor(QPalette::Disabled, row.role, QColor(row.pDisabled));
  }
  return palette;
}

/// Fusion with outlines around the boxes to type and to tick in: its own are darker than the window, so that a dark
/// window hides them.
class clsDarkStyle : public QProxyStyle {
 public:
  clsDarkStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* pOption, QPainter* pPainter,
                     const QWidget* pWidget) const override {
    QProxyStyle::drawPrimitive(element, pOption, pPainter, pWidget);
    const bool bTick = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    const bool bEntry = element == PE_FrameLineEdit && !(pOption->state & State_HasFocus);
    if (!bTick && !bEntry) return;
    constexpr double kHalfPen = 0.5;
    constexpr double kCorner = 2;
    const QRectF box = QRectF(pOption->rect).adjusted(kHalfPen, kHalfPen, -kHalfPen, -kHalfPen);
    const double corner = element == PE_IndicatorRadioButton ? box.width() / 2 : bEntry ? kCorner : 0;
    pPainter->save();
    pPainter->setRenderHint(QPainter::Antialiasing);
    pPainter->setBrush(Qt::NoBrush);
    pPainter->setPen(QColor(pOption->state & State_Enabled ? "#777b83" : "#4b4e54"));
    pPainter->drawRoundedRect(box, corner, corner);
    pPainter->restore();
  }
};

}  // namespace

clsAppearance::clsAppearance(std::string_view sWish) {
  bDark_ = IsDark(QApplication::palette());
  if (sWish == "light" || sWish == "dark") {
    Show(sWish == "dark");
  } else if (!bDark_) {
    AskDesktop();
  }
}

void clsAppearance::AskDesktop() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  bus.connect(kService, kPath, kInterface, "SettingChanged", this,
              SLOT(SettingChanged(QString, QString, QDBusVariant)));
  QDBusMessage question = QDBusMessage::createMethodCall(kService, kPath, kInterface, "Read");
  question << QString(kSpace) << QString(kKey);
  auto* const pWatcher = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
  connect(pWatcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* pDone) {
    const QDBusPendingReply<QDBusVariant> reply = *pDone;
    pDone->deleteLater();
    if (reply.isValid()) SettingChanged(kSpace, kKey, reply.value());
  });
}

void clsAppearance::SettingChanged(const QString& sSpace, const QString& sKey, const QDBusVariant& value) {
  if (sSpace != kSpace || sKey != kKey) return;
  QVariant inner = value.variant();
  // The older of the two ways to read wraps the value twice.
  while (inner.canConvert<QDBusVariant>()) inner = inner.value<QDBusVariant>().variant();
  const bool bDark = inner.toUInt() == kPrefersDark;
  if (bDark != bDark_) Show(bDark);
}

void clsAppearance::Show(bool bDark) {
  bDark_ = bDark;
  QApplication::setStyle(bDark ? new clsDarkStyle : QStyleFactory::create("Fusion"));
  QApplication::setPalette(bDark ? DarkPalette() : QApplication::style()->standardPalette());
}

}  // namespace quillon
