// A payroll register becomes a table by pointing at its lines alone.

#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QTableView>
#include <QTreeWidget>

#include "clsDrawSession.h"
#include "modPayroll.h"

namespace quillon {

class clsTeach : public clsDrawSession {
  Q_OBJECT

 private:
  void OpenEditor(const std::function<void(QWidget*)>& play) {
    Type("cbInputFile", folder_.Write("payroll.txt", Payroll()));
    Type("cbOutputFile", folder_.Path("payroll.csv"));
    ChooseMethod(1);
    Type("cbRecipeFile", folder_.Write("payroll.rcp", "[Header]\r\nProduct=QLN-B\r\n"));
    WithModal([&](QWidget* pEditor) {
      pEditor_ = pEditor;
      pText_ = pEditor->findChild<QPlainTextEdit*>("txtFileEditor");
      TakeCanvas(pEditor);
      QTest::qWait(250);
      play(pEditor);
    });
    QTest::mouseClick(Widget<QPushButton>("cmdEditRecipe"), Qt::LeftButton);
  }
  void ClickLine(int64_t lLine) {
    pCanvas_->ScrollToLine(lLine);
    // On its number, where no boundary is.
    QTest::mouseClick(pCanvas_->viewport(), Qt::LeftButton, {}, QPoint(3, pCanvas_->PointOnLine(lLine, 0).y()));
  }
  /// Drags over characters of a line, from 1.
  void DragOver(int64_t lLine, int32_t lFirst, int32_t lLast) {
    QWidget* const pView = pCanvas_->viewport();
    const auto at = [&](int32_t lCharacter) {
      return (pCanvas_->PointOnLine(lLine, lCharacter - 1) + pCanvas_->PointOnLine(lLine, lCharacter)) / 2;
    };
    QTest::mousePress(pView, Qt::LeftButton, {}, at(lFirst));
    QMouseEvent move(QEvent::MouseMove, at(lLast), pView->mapToGlobal(at(lLast)), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(pView, &move);
    QTest::mouseRelease(pView, Qt::LeftButton, {}, at(lLast));
  }
  /// Opens the menu of the button and clicks on an entry.
  void Say(const QString& sEntry) {
    QTimer::singleShot(50, [sEntry] {
      auto* const pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (pMenu == nullptr) qFatal("no menu");
      for (QAction* const pAction : pMenu->actions()) {
        if (pAction->text() == sEntry)
          return QTest::mouseClick(pMenu, Qt::LeftButton, {}, pMenu->actionGeometry(pAction).center());
      }
      qFatal("no entry %s", qPrintable(sEntry));
    });
    Click(pEditor_, "cmdThisLine");
  }
  QString Notes() const { return pEditor_->findChild<QLabel*>("lblCutNotes")->text(); }

  QWidget* pEditor_ = nullptr;
  QPlainTextEdit* pText_ = nullptr;

 private slots:
  void init() { Start(); }
  void cleanup() { Stop(); }

  void aPayrollIsTaughtByPointingAlone() {
    QString sNotes;
    bool bUndone = false;
    OpenEditor([&](QWidget* pEditor) {
      const QString sEmpty = pText_->toPlainText();
      ClickLine(8);
      Say("Rows look like this");
      bUndone = pText_->toPlainText() != sEmpty;
      Key(Qt::Key_Z, Qt::ControlModifier);
      bUndone = bUndone && pText_->toPlainText() == sEmpty;
      QTest::qWait(250);
      ClickLine(8);
      Key(Qt::Key_R);
      sNotes = Notes();
      ClickLine(6);
      Say("These are the names");
      DragOver(3, 20, 21);
      Say("A heading");
      DragOver(3, 24, 28);
      Key(Qt::Key_H);
      ClickLine(10);
      Key(Qt::Key_M);
      QTest::qWait(400);
      Click(pEditor, "cmdSaveAndClose");
    });
    QVERIFY(bUndone);
    QVERIFY2(sNotes.contains("Rows now: 9; before: 0"), qPrintable(sNotes));
    pForm_->Click("keyConvert");
    const QString sCsv = ToQt(folder_.Read("payroll.csv")).replace("\r\n", "\n");
    QCOMPARE(sCsv.section('\n', 0, 2),
             QString("DEPARTMENT NUMBER,DEPARTMENT NUMBER 2,EMPL. NO.,NAME,GROSS PAY,TAX,NET PAY,MEMO\n"
                     "10,SALES,101,\"MILLER, ANNA\",3101.00,101.50,2999.50,\n"
                     "10,SALES,102,\"O'NEILL, TOM\",3102.00,102.50,2999.50,badge 714"));
    QVERIFY2(sCsv.contains("\n20,SHIPPING AND RECEIVING,104,"), qPrintable(sCsv));
    QCOMPARE(sCsv.count('\n'), 10);
  }

  void aWordIsSelectedByKeysAndToldToAScreenReader() {
    QString sTold;
    QString sText;
    OpenEditor([&](QWidget*) {
      ClickLine(8);
      Key(Qt::Key_R);
      Key(Qt::Key_Home, Qt::ControlModifier);
      for (int i = 0; i < 2; ++i) Key(Qt::Key_Down);
      for (int i = 0; i < 3; ++i) Key(Qt::Key_Right, Qt::ShiftModifier);
      sTold = pCanvas_->accessibleDescription();
      Key(Qt::Key_H);
      sText = pText_->toPlainText();
      Click(pEditor_, "cmdCancel");
    });
    QVERIFY2(sTold.startsWith("Line 3, ") && sTold.endsWith("selected: 10"), qPrintable(sTold));
    QVERIFY2(sText.contains("[Heading 1.1]\nText=DEPARTMENT NUMBER:\nNames=DEPARTMENT NUMBER"), qPrintable(sText));
  }

  void theProofLeadsToALineThatIsLeftOut() {
    QStringList groups;
    int64_t lLine = 0;
    OpenEditor([&](QWidget* pEditor) {
      ClickLine(8);
      Key(Qt::Key_R);
      QTest::qWait(600);
      auto* const pTree = pEditor->findChild<QTreeWidget*>("treeProof");
      for (int i = 0; i < pTree->topLevelItemCount(); ++i) groups << pTree->topLevelItem(i)->text(0);
      auto* const pShapes = pTree->topLevelItem(1);
      pEditor->findChild<QTabWidget*>("tabsCut")->setCurrentIndex(1);
      QTest::qWait(50);
      pTree->scrollToItem(pShapes->child(0));
      QTest::mouseClick(pTree->viewport(), Qt::LeftButton, {}, pTree->visualItemRect(pShapes->child(0)).center());
      lLine = pCanvas_->Cursor();
      Click(pEditor, "cmdCancel");
    });
    QVERIFY2(groups.size() >= 3 && groups[1] == "Lines that are in no table, by shape", qPrintable(groups.join('|')));
    QVERIFY(lLine > 0);
  }
};

}  // namespace quillon

int main(int argc, char** argv) {
  return quillon::PlaySession<quillon::clsTeach>(argc, argv);
}

#include "teach_test.moc"
