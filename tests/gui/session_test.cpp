// A session with real key presses and clicks in the real window, on a screen of the toolkit's own.

#include <QLabel>
#include <QMessageBox>
#include <QTableWidget>

#include "clsGuiSession.h"

namespace quillon {

class clsSession : public clsGuiSession {
  Q_OBJECT

 private:
  std::string LongReport(int nRows) {
    std::string sText = ">>1\n-------- --------\n";
    for (int i = 0; i < nRows; ++i) sText += "row      number  \n";
    return folder_.Write("long.txt", sText + "<<1\n");
  }
 private slots:
  void init() { Start(); }
  void cleanup() { Stop(); }

  void loadsAnExampleConvertsItAndSavesTheJob() {
    WithModal(
        [](QWidget* pGuide) { QTest::mouseClick(pGuide->findChild<QPushButton*>("cmdLoadDemo2"), Qt::LeftButton); });
    pForm_->Click("mnuGettingStarted");
    pWindow_->ShowAll();
    QVERIFY(Log().contains("QLN File Opened Successfully"));
    const std::string sOutput = FromQt(Widget<QComboBox>("cbOutputFile")->currentText());
    Activate();
    QTest::keyClick(pWindow_.get(), Qt::Key_F5);
    QVERIFY2(Log().contains("Errors: 0"), qPrintable(Log()));
    QVERIFY(FileSizeOf(ExpandedPath(sOutput)) > 0);

    WithModal([](QWidget* pOptions) {
      auto* const pTab = pOptions->findChild<QLineEdit*>("txtTabSize");
      pTab->selectAll();
      QTest::keyClicks(pTab, "4");
      QTest::mouseClick(pOptions->findChild<QPushButton*>("cmdApply"), Qt::LeftButton);
    });
    pForm_->ConfigureQLNOptions();
    QCOMPARE(pForm_->lTabSize, 4);
    Activate();
    QTest::keyClick(pWindow_.get(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(GetPrivateProfileString(pForm_->sJobFile, "QLN", "lTabSize", ""), std::string("4"));
    QVERIFY(!pForm_->bAskToSaveBMKFileBeforeExit);
  }

  void pausesALongRunAtAQuestion() {
    ChooseMethod(2);
    Type("cbInputFile", LongReport(400000));
    Type("cbOutputFile", folder_.Path("long.csv"));
    const auto pauseSoon = [this] {
      QTimer::singleShot(40, pWindow_.get(), [this] { QTest::keyClick(pWindow_.get(), Qt::Key_F9); });
    };
    // Whether the key falls into the run depends on the machine; the question comes only if it does.
    int nAsked = 0;
    const auto answer = [&](const char* pButton) {
      QTimer* const pTimer = new QTimer(pWindow_.get());
      connect(pTimer, &QTimer::timeout, [&nAsked, pTimer, pButton] {
        auto* const pBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (pBox == nullptr) return;
        ++nAsked;
        pTimer->stop();
        for (QAbstractButton* const pEach : pBox->buttons()) {
          if (pEach->text().remove('&') == pButton) pEach->click();
        }
      });
      pTimer->start(5);
      return pTimer;
    };
    std::unique_ptr<QTimer> pNo(answer("No"));
    pauseSoon();
    pForm_->Click("keyConvert");
    QCOMPARE(FileSizeOf(folder_.Path("long.csv")), int64_t{400000} * 20);
    pNo.reset();
    std::unique_ptr<QTimer> pYes(answer("Yes"));
    const int nBefore = nAsked;
    pauseSoon();
    pForm_->Click("keyConvert");
    const int64_t nSize = FileSizeOf(folder_.Path("long.csv"));
    QVERIFY(nAsked == nBefore ? nSize == int64_t{400000} * 20 : nSize < int64_t{400000} * 20 && nSize % 20 == 0);
    QVERIFY(Widget<QComboBox>("cbInputFile")->isEnabled());
  }

  void staysWholeWhenClosedDuringARun() {
    ChooseMethod(2);
    Type("cbInputFile", LongReport(400000));
    Type("cbOutputFile", folder_.Path("long.csv"));
    QTimer::singleShot(40, pWindow_.get(), [this] { pWindow_->close(); });
    pForm_->Click("keyConvert");
    QTRY_VERIFY(!pWindow_->isVisible());
    QVERIFY(FileSizeOf(folder_.Path("long.csv")) % 20 == 0);
  }

  void showsTheCutBelowTheRecipeWhileItIsTyped() {
    ChooseMethod(1);
    Type("cbInputFile", folder_.Write("stock.txt", "STOCK\nBolts   12\nEND\n"));
    Type("cbRecipeFile", folder_.Write("stock.rcp",
                                       "[Table 1]\nReadStartLine=STOCK\nReadStartLineOffset=1\n"
                                       "ReadEndLine=END\nReadEndLineOffset=-1\nParsing=--- ---\n"
                                       "WriteColumn=A\n"));
    QString sWrong;
    QString sRight;
    bool bHidden = false;
    WithModal([&](QWidget* pEditor) {
      auto* const pText = pEditor->findChild<QPlainTextEdit*>("txtFileEditor");
      auto* const pNotes = pEditor->findChild<QLabel*>("lblCutNotes");
      QTest::qWait(300);
      sWrong = pNotes->text();
      pText->setPlainText(pText->toPlainText().replace("--- ---", "------- --"));
      QTest::qWait(300);
      sRight = pNotes->text();
      pEditor->findChild<QAbstractButton*>("cbShowPreview")->click();
      bHidden = !pNotes->isVisible();
      QTest::mouseClick(pEditor->findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
    });
    pForm_->Click("cmdEditRecipe");
    QVERIFY2(sWrong.contains("Values cut: 1"), qPrintable(sWrong));
    QVERIFY2(sRight.contains("Nothing is lost."), qPrintable(sRight));
    QVERIFY(bHidden);
  }

  void keepsTheProfileEditorsHeightAndTakesEnterInTheNumberOfColumns() {
    int nRows = 0;
    WithModal([&](QWidget* pEditor) {
      pEditor->resize(pEditor->width(), 600);
      auto* const pCount = pEditor->findChild<QLineEdit*>("txtNumOfColumns");
      pCount->setFocus();
      pCount->selectAll();
      QTest::keyClicks(pCount, "7");
      QTest::keyClick(pCount, Qt::Key_Return);
      nRows = pEditor->findChild<QTableWidget*>("fgGrid")->rowCount();
      pEditor->findChild<QLineEdit*>("txtColumnWidth")->setFocus();
      QTest::keyClick(pEditor, Qt::Key_Escape);
    });
    pForm_->Click("cmdEditProfile");
    QCOMPARE(nRows, 7);
    QCOMPARE(StoreGet("SpecifyFixedWidthFormHeight", "Height", ""), std::string("9000"));
  }

  void tellsWhatIsWrongInABoxAndInTheLog() {
    ChooseMethod(2);
    Type("cbInputFile", folder_.Path("missing.txt"));
    Type("cbOutputFile", folder_.Path("a.csv"));
    Answer("OK");
    pForm_->Click("keyConvert");
    QVERIFY(Log().contains("Error [-1] Invalid Input File Specified"));
  }
};

}  // namespace quillon

int main(int argc, char** argv) {
  return quillon::PlaySession<quillon::clsSession>(argc, argv);
}

#include "session_test.moc"
