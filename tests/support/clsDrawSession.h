#pragma once

#include "clsGuiSession.h"
#include "clsOutputFile.h"
#include "clsReportCanvas.h"

namespace quillon {

/// A session in which a hand draws over a report.
class clsDrawSession : public clsGuiSession {
 protected:
  static std::string Sample(const std::string& sName) {
    std::string sBytes;
    Failure failure;
    if (!ReadWholeFile(QUILLON_SOURCE_DIR "/tests/golden/" + sName, sBytes, 1 << 20, failure)) {
      qFatal("%s", failure.sText.c_str());
    }
    return sBytes;
  }
  static void Click(QWidget* pDialog, const char* pName) {
    auto* const pButton = pDialog->findChild<QAbstractButton*>(pName);
    if (pButton == nullptr) qFatal("no button %s", pName);
    QTest::mouseClick(pButton, Qt::LeftButton);
  }
  /// Where the dialog draws the report.
  void TakeCanvas(QWidget* pDialog) {
    pCanvas_ = static_cast<clsReportCanvas*>(pDialog->findChild<QWidget*>("canvasReportCut"));
  }
  void ClickRuler(int32_t lAfter) {
    QTest::mouseClick(pCanvas_->viewport(), Qt::LeftButton, {}, pCanvas_->PointOnRuler(lAfter));
  }
  void Drag(int32_t lFrom, const QPoint& to) {
    QWidget* const pView = pCanvas_->viewport();
    QTest::mousePress(pView, Qt::LeftButton, {}, pCanvas_->PointOnRuler(lFrom));
    QTest::mouseMove(pView, to);
    QMouseEvent move(QEvent::MouseMove, to, pView->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(pView, &move);
    QTest::mouseRelease(pView, Qt::LeftButton, {}, to);
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(pCanvas_, key, modifiers); }

  clsReportCanvas* pCanvas_ = nullptr;
};

}  // namespace quillon
