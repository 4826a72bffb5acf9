// A profile is made for a file without a blank between its fields, by clicks and keys alone.

#include <QElapsedTimer>
#include <QLabel>
#include <QTableWidget>

#include "clsDrawSession.h"

namespace quillon {

class clsDrawProfile : public clsDrawSession {
  Q_OBJECT

 private:
  void OpenEditor(const std::function<void(QWidget*)>& play) {
    WithModal([&](QWidget* pEditor) {
      pGrid_ = pEditor->findChild<QTableWidget*>("fgGrid");
      TakeCanvas(pEditor);
      pEditor->resize(1900, 900);
      QTest::qWait(200);
      play(pEditor);
    });
    QTest::mouseClick(Widget<QPushButton>("cmdEditProfile"), Qt::LeftButton);
  }
  void ClickRow(int nRow) {
    pGrid_->scrollToItem(pGrid_->item(nRow, 0));
    QTest::mouseClick(pGrid_->viewport(), Qt::LeftButton, {}, pGrid_->visualItemRect(pGrid_->item(nRow, 0)).center());
  }
  /// Steps down, or up, in a drop-down list of the editor.
  static void Step(QWidget* pEditor, const char* pCombo, int nSteps) {
    auto* const pList = pEditor->findChild<QComboBox*>(pCombo);
    pList->setFocus();
    for (int i = 0; i < std::abs(nSteps); ++i) QTest::keyClick(pList, nSteps > 0 ? Qt::Key_Down : Qt::Key_Up);
  }
  QString Widths() const {
    QStringList widths;
    for (int n = 0; n < pGrid_->rowCount(); ++n) widths << pGrid_->item(n, 1)->text();
    return widths.join(' ');
  }
  /// The entry records of the payment file.
  static std::string Entries() {
    std::string sEntries;
    for (const QString& sLine : ToQt(Sample("profile_ach/ach_payments.txt")).split('\n')) {
      if (sLine.startsWith('6')) sEntries += FromQt(sLine) + "\n";
    }
    return sEntries;
  }

  QTableWidget* pGrid_ = nullptr;

 private slots:
  void init() { Start(); }
  void cleanup() { Stop(); }

  void aProfileDrawnOverAFileConvertsToTheExpectedRows() {
    Type("cbInputFile", folder_.Write("entries.txt", Entries()));
    Type("cbOutputFile", folder_.Path("entries.csv"));
    ChooseMethod(0);
    QString sDrawn;
    QString sNotes;
    OpenEditor([&](QWidget* pEditor) {
      QLineEdit* const pName = pEditor->findChild<QComboBox*>("cbProfileList")->lineEdit();
      pName->setFocus();
      pName->selectAll();
      QTest::keyClicks(pName, "Entries");
      QCOMPARE(Widths(), QString("10 12 2 15 7"));
      Drag(10, pCanvas_->PointOnLine(1, 11));
      Drag(22, pCanvas_->PointOnLine(2, 12));
      Drag(24, pCanvas_->PointOnLine(1, 29));
      Drag(46, pCanvas_->PointOnLine(1, 54));
      for (const int32_t lAfter : {1, 3, 76, 78, 79, 60, 90}) ClickRuler(lAfter);
      Drag(90, pCanvas_->PointOnLine(1, 94));
      QTest::mouseDClick(pCanvas_->viewport(), Qt::LeftButton, {}, pCanvas_->PointOnRuler(60));
      Click(pEditor, "cbAdvancedOptionsShow");
      ClickRow(0);
      Step(pEditor, "cbRemove", 1);
      ClickRow(5);
      Step(pEditor, "cbPadWithCharacter", '0' - ' ');
      Click(pEditor, "cmdWorkOut");
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);  // drops what was worked out, and keeps the dialog
      for (const int nRow : {4, 8}) {
        ClickRow(nRow);
        Step(pEditor, "cbJustification", -1);
      }
      QTest::qWait(300);
      sDrawn = Widths();
      sNotes = pEditor->findChild<QLabel*>("lblCutNotes")->text();
      Click(pEditor, "cmdApply");
    });
    QCOMPARE(sDrawn, QString("1 2 8 1 17 10 15 22 2 1 15"));
    QVERIFY2(sNotes.contains("Nothing is lost"), qPrintable(sNotes));
    QCOMPARE(Widget<QComboBox>("cbFixedWidthProfileList")->currentText(), QString("Entries"));
    Activate();
    QTest::keyClick(pWindow_.get(), Qt::Key_F5);
    QVERIFY2(Log().contains("Errors: 0"), qPrintable(Log()));
    QCOMPARE(folder_.Read("entries.csv"), Sample("profile_ach/expected/entries.csv"));
  }

  void aProfileOf10001RowsIsTypedInAndDrawnOver() {
    std::string sRows;
    for (int n = 1; n <= 10001; ++n) {
      const std::string sNumber = std::to_string(n);
      sRows += sNumber + "\t3\t[32] Space\tRight\tNo\t" + sNumber + "\t\t\r\n";
    }
    folder_.Write("data/Brindlemark, Inc/Quillon/Profiles/Default-Profile.txt", sRows);
    Type("cbInputFile", folder_.Write("wide.txt", std::string(2000, 'x') + "\n" + std::string(31000, 'y') + "\n"));
    qint64 nSlowest = 0;
    qint64 nDrawn = 0;
    OpenEditor([&](QWidget* pEditor) {
      QCOMPARE(pGrid_->rowCount(), 10001);
      auto* const pWidth = pEditor->findChild<QLineEdit*>("txtColumnWidth");
      const auto timed = [&](qint64& nMost, const std::function<void()>& act) {
        QElapsedTimer timer;
        timer.start();
        act();
        QApplication::processEvents();
        nMost = std::max(nMost, timer.elapsed());
      };
      ClickRow(10000);
      pWidth->selectAll();
      for (const char c : std::string("12")) timed(nSlowest, [&] { QTest::keyClick(pWidth, c); });
      for (int i = 0; i < 5; ++i) timed(nSlowest, [&] { QTest::keyClick(pWidth, Qt::Key_Up); });
      for (int i = 0; i < 3; ++i) timed(nSlowest, [&] { QTest::keyClick(pGrid_, '4'); });
      QTest::qWait(300);
      timed(nDrawn, [&] { Drag(30, pCanvas_->PointOnLine(1, 31)); });
      timed(nDrawn, [&] { ClickRuler(16); });
      Click(pEditor, "cmdApply");
    });
    qInfo("10,001 rows: slowest key %lld ms, slowest step of the hand %lld ms", nSlowest, nDrawn);
    const std::string sSaved = folder_.Read("data/Brindlemark, Inc/Quillon/Profiles/Default-Profile.txt");
    for (const char* const pRow : {"\n10\t4\t", "\n11\t2\t", "\n9996\t4\t", "\n10001\t12\t"}) {
      QVERIFY2(sSaved.find(pRow) != std::string::npos, pRow);
    }
  }
};

}  // namespace quillon

int main(int argc, char** argv) {
  return quillon::PlaySession<quillon::clsDrawProfile>(argc, argv);
}

#include "draw_profile_test.moc"
