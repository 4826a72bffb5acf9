#pragma once

#include <QDBusVariant>
#include <QObject>
#include <string_view>

namespace quillon {

/// Light or dark colours. A desktop whose own plugin colours the toolkit is left alone; any other is asked through its
/// portal whether it prefers dark, and followed when that changes. Nothing waits for the answer.
class clsAppearance : public QObject {
  Q_OBJECT

 public:
  /// sWish: "light" or "dark"; anything else follows the desktop.
  explicit clsAppearance(std::string_view sWish);

 private slots:
  void SettingChanged(const QString& sSpace, const QString& sKey, const QDBusVariant& value);

 private:
  void AskDesktop();
  void Show(bool bDark);

  bool bDark_ = false;
};

}  // namespace quillon
