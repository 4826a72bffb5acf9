#pragma once

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>

#include "MainModule.h"
#include "clsMainWindow.h"
#include "clsQtHost.h"
#include "clsQtScreen.h"
#include "clsTempFolder.h"
#include "frmMain.h"
#include "frmMainMDI.h"
#include "modFiles.h"
#include "modFreshStart.h"
#include "modPaths.h"
#include "modSettings.h"
#include "modTranslator.h"

namespace quillon {

/// One start of the desktop program in a data folder of its own, with the real window and real clicks and keys.
class clsGuiSession : public QObject {
 protected:
  clsTempFolder folder_;
  std::unique_ptr<clsQtHost> pHost_;
  std::unique_ptr<clsQtScreen> pScreen_;
  std::unique_ptr<clsRunLog> pLog_;
  std::unique_ptr<frmMainMDI> pFrame_;
  std::unique_ptr<frmMain> pForm_;
  std::unique_ptr<clsMainWindow> pWindow_;
  clsRunFields fields_;

  template <typename T>
  T* Widget(const char* pName) {
    T* const pWidget = pWindow_->findChild<T*>(pName);
    if (pWidget == nullptr) qFatal("no widget %s", pName);
    return pWidget;
  }
  QString Log() { return Widget<QPlainTextEdit>("txtLog")->toPlainText(); }
  void Type(const char* pCombo, const std::string& sText) {
    QLineEdit* const pEdit = Widget<QComboBox>(pCombo)->lineEdit();
    pEdit->setFocus();
    pEdit->selectAll();
    QTest::keyClicks(pEdit, QString::fromStdString(sText));
  }
  /// Plays the user of the next modal window, once it is there and has the keyboard.
  static void WithModal(const std::function<void(QWidget*)>& play) {
    QTimer::singleShot(20, [play] {
      QWidget* const pModal = QApplication::activeModalWidget();
      const bool bPasses = pModal != nullptr && pModal->objectName() == "frmWorking";
      pModal == nullptr || !pModal->isActiveWindow() || bPasses ? WithModal(play) : play(pModal);
    });
  }
  /// The same for the box that stands over the window while something takes long.
  static void WithBox(const std::function<void(QWidget*)>& play) {
    QTimer::singleShot(20, [play] {
      QWidget* const pModal = QApplication::activeModalWidget();
      const bool bBox = pModal != nullptr && pModal->objectName() == "frmWorking";
      bBox && pModal->isVisible() ? play(pModal) : WithBox(play);
    });
  }
  static void Answer(const QString& sButton) {
    WithModal([sButton](QWidget* pModal) {
      for (QPushButton* const pButton : pModal->findChildren<QPushButton*>()) {
        if (pButton->text().remove('&') == sButton) return QTest::mouseClick(pButton, Qt::LeftButton);
      }
      qFatal("no button %s", qPrintable(sButton));
    });
  }
  void Activate() {
    pWindow_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(pWindow_.get()));
  }
  /// Clicks on one of the three ways to convert, from 0.
  void ChooseMethod(int nMethod) {
    const QString sButton = "rbConversionMethod" + (nMethod > 0 ? QString::number(nMethod) : QString());
    for (QAbstractButton* const pButton : pWindow_->findChildren<QAbstractButton*>(sButton)) {
      QTest::mouseClick(pButton, Qt::LeftButton);
    }
  }
  void Start() {
    StartAfresh(folder_.Path("data"));
    InstallExamples();
    pHost_ = std::make_unique<clsQtHost>();
    pScreen_ = std::make_unique<clsQtScreen>(*pHost_);
    pLog_ = std::make_unique<clsRunLog>(*pHost_, gConversionOptions);
    pHost_->SetLog(pLog_.get());
    pFrame_ = std::make_unique<frmMainMDI>();
    pForm_ = std::make_unique<frmMain>(*pHost_, *pScreen_, gConversionOptions, *pLog_, fields_);
    pWindow_ = std::make_unique<clsMainWindow>(*pHost_, *pFrame_, *pForm_, *pLog_);
    pScreen_->SetMainWindow(pWindow_.get());
    bool bFirst = false;
    pForm_->Form_Load(bFirst);
    pWindow_->ShowAll();
    pWindow_->show();
    Activate();
  }
  void Stop() {
    pWindow_.reset();
    pForm_.reset();
    pFrame_.reset();
  }
};

/// What main does for a session.
template <typename Session>
int PlaySession(int argc, char** argv) {
  // On a screen of its own, unless a session is wanted on another.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("LC_ALL", "C.UTF-8");
  QApplication application(argc, argv);
  Session session;
  return QTest::qExec(&session, argc, argv);
}

}  // namespace quillon
