// The whole way by keys alone, from the start to a workbook, and the order in which Tab goes through the window.

#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QTableView>
#include <QTreeWidget>
#include <QWindow>

#include "clsDrawSession.h"

namespace quillon {

class clsKeyboard : public clsDrawSession {
  Q_OBJECT

 private:
  /// By the window, as the system does it, so that captions and menus hear of it, too.
  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    if (QApplication::focusWindow() == nullptr) qFatal("nothing has the keyboard");
    QTest::keyClick(QApplication::focusWindow(), key, modifiers);
  }
  static QString Focus() {
    for (const QWidget* p = QApplication::focusWidget(); p != nullptr; p = p->parentWidget()) {
      if (!p->objectName().isEmpty() && !p->objectName().startsWith("qt_")) return p->objectName();
    }
    return {};
  }
  /// Presses Tab until a control has the keyboard.
  static bool TabTo(const QString& sName, Qt::Key key = Qt::Key_Tab) {
    constexpr int kMost = 60;
    for (int i = 0; i < kMost && Focus() != sName; ++i) Press(key);
    return Focus() == sName;
  }
  /// The stops of Tab, once around.
  static QStringList Stops() {
    QStringList stops;
    constexpr int kMost = 60;
    const QString sFirst = Focus();
    do {
      stops << Focus();
      Press(Qt::Key_Tab);
    } while (Focus() != sFirst && stops.size() < kMost);
    return stops;
  }
  /// What Tab should stop at in a window. Of radio buttons only the one that is on takes it.
  static QStringList Wanted(const QWidget* pWindow) {
    QStringList wanted;
    for (const QWidget* const pWidget : pWindow->findChildren<QWidget*>()) {
      const auto* const pRadio = qobject_cast<const QRadioButton*>(pWidget);
      const bool bTakes = pWidget->isVisible() && pWidget->isEnabled() && pWidget->window() == pWindow &&
                          (pWidget->focusPolicy() & Qt::TabFocus) != 0 && pWidget->focusProxy() == nullptr;
      const bool bInner =
          qobject_cast<const QComboBox*>(pWidget->parentWidget()) != nullptr || pWidget->objectName().startsWith("qt_");
      if (bTakes && !bInner && (pRadio == nullptr || pRadio->isChecked())) wanted << pWidget->objectName();
    }
    return wanted;
  }
  static QString Missing(const QWidget* pWindow, const QStringList& stops) {
    QStringList missing;
    for (const QString& sName : Wanted(pWindow)) {
      if (!stops.contains(sName)) missing << sName;
    }
    return missing.join(' ');
  }
  /// Stops that stand above the one before, but for the first.
  static QString Backwards(QWidget* pWindow, const QStringList& stops) {
    QStringList back;
    int nBefore = -1;
    for (const QString& sName : stops) {
      const auto* const pWidget = pWindow->findChild<QWidget*>(sName);
      if (pWidget == nullptr) continue;
      const QPoint top = pWidget->mapTo(pWindow, QPoint(0, 0));
      constexpr int kLine = 12;
      if (top.y() + kLine < nBefore) back << sName;
      nBefore = top.y();
    }
    return back.join(' ');
  }

 private slots:
  void init() { Start(); }
  void cleanup() { Stop(); }

  void tabGoesThroughEveryControlDownTheWindow() {
    Type("cbInputFile", folder_.Write("limits.prt", Sample("account_limits/account_limits.prt")));
    Type("cbOutputFile", folder_.Path("limits.csv"));
    for (int nMethod = 0; nMethod < 3; ++nMethod) {
      ChooseMethod(nMethod);
      Widget<QComboBox>("cbInputFile")->setFocus();
      const QStringList stops = Stops();
      qInfo("%s", qPrintable(stops.join(' ')));
      QCOMPARE(stops.first(), QString("cbInputFile"));
      QCOMPARE(Missing(pWindow_.get(), stops), QString());
      QCOMPARE(Backwards(pWindow_.get(), stops), QString());
    }
  }

  void fromTheStartToAWorkbook() {
    const std::string sReport = folder_.Write("limits.prt", Sample("account_limits/account_limits.prt"));
    QCOMPARE(Focus(), QString("cbInputFile"));
    QTest::keyClicks(QApplication::focusWidget(), ToQt(sReport));
    Press(Qt::Key_Tab);
    QString sList;
    QString sNamed;
    QStringList stops;
    WithModal([&](QWidget* pDialog) {
      QTest::qWait(300);
      sList = Focus();
      auto* const pList = pDialog->findChild<QTreeWidget*>("fgTables");
      Press(Qt::Key_F2);
      QTest::keyClicks(QApplication::focusWidget(), "Limits");
      Press(Qt::Key_Return);
      sNamed = pList->topLevelItem(0)->text(0);
      Press(Qt::Key_Space);
      Press(Qt::Key_Space);
      stops = Stops();
      pList->setFocus();
      Press(Qt::Key_Return);
    });
    QVERIFY(TabTo("cmdFindTables"));
    Press(Qt::Key_Space);
    QCOMPARE(sList, QString("fgTables"));
    QCOMPARE(sNamed, QString("Limits"));
    for (const char* const pName : {"fgTables", "canvasReportCut", "gridCells", "cmdOK", "cmdCancel"}) {
      QVERIFY2(stops.contains(pName), qPrintable(QString(pName) + " in " + stops.join(' ')));
    }
    Activate();
    QCOMPARE(Focus(), QString("cbOutputFile"));
    Press(Qt::Key_F5);
    QVERIFY2(Log().contains("Errors: 0"), qPrintable(Log()));
    QVERIFY(FileSizeOf(folder_.Path("limits.xlsx")) > 0);
    QVERIFY2(TabTo("cmdOpenResult"), qPrintable(Focus()));
    QString sProof;
    WithModal([&](QWidget*) {
      QTest::qWait(200);
      sProof = Focus();
      Press(Qt::Key_Down);
      Press(Qt::Key_Down);
      Press(Qt::Key_Return);
      Press(Qt::Key_Escape);
    });
    QVERIFY(TabTo("cmdProof"));
    Press(Qt::Key_Space);
    QCOMPARE(sProof, QString("treeProofOfRun"));
  }

  void aRecipeIsTaughtAndSaved() {
    Type("cbInputFile", folder_.Write("stock.txt", "STOCK\nBolts   12\nNuts     3\nWashers  9\nEND\n"));
    ChooseMethod(1);
    Type("cbRecipeFile", folder_.Write("stock.rcp", "[Header]\r\nProduct=QLN-B\r\n"));
    Type("cbOutputFile", folder_.Path("stock.csv"));
    QVERIFY(TabTo("cmdEditRecipe"));
    QString sMissing;
    bool bReached = false;
    WithModal([&](QWidget* pEditor) {
      QTest::qWait(300);
      TakeCanvas(pEditor);
      sMissing = Missing(pEditor, Stops());
      TabTo("canvasReportCut");
      Press(Qt::Key_Home, Qt::ControlModifier);
      Press(Qt::Key_Down);
      Press(Qt::Key_R);
      QTest::qWait(300);
      bReached = TabTo("cmdSaveAndClose", Qt::Key_Backtab);
      Press(Qt::Key_Space);
    });
    Press(Qt::Key_Space);
    QCOMPARE(sMissing, QString());
    QVERIFY(bReached);
    Activate();
    Press(Qt::Key_F5);
    QCOMPARE(ToQt(folder_.Read("stock.csv")).section('\n', 0, 2).remove('\r'), QString("Bolts,12\nNuts,3\nWashers,9"));
  }
};

}  // namespace quillon

int main(int argc, char** argv) {
  return quillon::PlaySession<quillon::clsKeyboard>(argc, argv);
}

#include "keyboard_test.moc"
