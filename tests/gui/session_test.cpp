// A session with real key presses and clicks in the real window, on a screen of the toolkit's own.

#include <QDragEnterEvent>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QTableWidget>

#include "clsGuiSession.h"
#include "modRecipeGlobals.h"

namespace quillon {

class clsSession : public clsGuiSession {
  Q_OBJECT

 private:
  static constexpr int kRows = 3000000;  // enough for turns on any machine
  static constexpr int64_t kRowBytes = 20;

  /// Does it in the first turn that the sections of the next run give to events.
  void AtTurn(std::function<void()> act) {
    pHost_->beforeEvents = [this, act = std::move(act), before = pHost_->beforeEvents, bDone = false]() mutable {
      before();
      if (!gbProcessing || std::exchange(bDone, true)) return;
      QTimer::singleShot(0, pWindow_.get(), act);
    };
  }
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
    Type("cbInputFile", LongReport(kRows));
    Type("cbOutputFile", folder_.Path("long.csv"));
    AtTurn([this] { QTest::keyClick(pWindow_.get(), Qt::Key_F9); });
    Answer("No");
    pForm_->Click("keyConvert");
    QCOMPARE(FileSizeOf(folder_.Path("long.csv")), kRows * kRowBytes);
    QVERIFY(Widget<QComboBox>("cbInputFile")->isEnabled());

    Activate();
    AtTurn([this] { QTest::keyClick(pWindow_.get(), Qt::Key_F9); });
    WithModal([](QWidget* pBox) {
      QCOMPARE(static_cast<QMessageBox*>(pBox)->defaultButton()->text().remove('&'), QString("No"));
      Answer("Yes");
    });
    pForm_->Click("keyConvert");
    QVERIFY2(Log().contains("Conversion stopped."), qPrintable(Log()));
    const int64_t nSize = FileSizeOf(folder_.Path("long.csv"));
    QVERIFY2(nSize < kRows * kRowBytes && nSize % kRowBytes == 0, qPrintable(QString::number(nSize)));
    QVERIFY(Widget<QComboBox>("cbInputFile")->isEnabled());
  }

  void closedDuringARunKeepsTheOldOutputAndAsksAboutTheJob() {
    const std::string sJob = folder_.Write("long.QLN", "[QLN]\r\nlConversionMethod=2\r\n");
    pForm_->ConversionJobOpen(sJob);
    pWindow_->ShowAll();
    Type("cbInputFile", LongReport(kRows));
    Type("cbOutputFile", folder_.Write("long.csv", "old"));
    AtTurn([this] { pWindow_->close(); });
    Answer("Yes");
    pForm_->Click("keyConvert");
    QTRY_VERIFY(!pWindow_->isVisible());
    QCOMPARE(folder_.Read("long.csv"), std::string("old"));
    QCOMPARE(GetPrivateProfileString(sJob, "QLN", "sOutputFile", ""), folder_.Path("long.csv"));
  }

  void savesTheJobAndOpensNoneWhileARunGoesOn() {
    const std::string sJob = folder_.Write("batch.QLN", "[QLN]\r\nlConversionMethod=2\r\n");
    pForm_->ConversionJobOpen(sJob);
    pWindow_->ShowAll();
    LongReport(kRows);
    Type("cbInputFile", folder_.Path("l*.txt"));
    Type("cbOutputFile", folder_.Path("*.csv"));
    AtTurn([this] {
      QTest::keyClick(pWindow_.get(), Qt::Key_S, Qt::ControlModifier);
      pForm_->ConversionJobOpen(folder_.Write("other.QLN", "[QLN]\r\nsOutputFile=other\r\n"));
    });
    pForm_->Click("keyConvert");
    QCOMPARE(FileSizeOf(folder_.Path("long.csv")), kRows * kRowBytes);
    QCOMPARE(GetPrivateProfileString(sJob, "QLN", "sInputFile", ""), folder_.Path("l*.txt"));
    QCOMPARE(pForm_->sJobFile, sJob);
  }

  void tabGoesThroughTheStepsInTheirOrder() {
    ChooseMethod(1);
    Activate();
    for (const char* const pBox : {"cbInputFile", "cbOutputFile"}) Type(pBox, "none");
    Widget<QComboBox>("cbInputFile")->setFocus();
    QStringList order;
    while (order.size() < 40 && (order.isEmpty() || order.first() != QApplication::focusWidget()->objectName())) {
      order << QApplication::focusWidget()->objectName();
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(order.join(' '),
             QString("cbInputFile cmdInputBrowse cmdSelectInputFolder cmdHelpInputFile cbCodePage cbOutputFile "
                     "cmdOutputBrowse cmdHelpOutputFile rbConversionMethod rbConversionMethod1 "
                     "rbConversionMethod2 cmdHelpConversionMethod cbRecipeFile cmdRecipeBrowse "
                     "cmdEditRecipe cmdHelpRecipeFile txtLog"));
  }

  void takesATypedNameAsItStands() {
    Type("cbInputFile", "/in/Ledger.txt");
    pForm_->UpdateMRUs();
    pWindow_->ShowAll();
    auto* const pBox = Widget<QComboBox>("cbInputFile");
    const auto name = [this] { return pForm_->Get("cbInputFile").sText; };
    pBox->lineEdit()->setCursorPosition(3);
    QTest::keyClicks(pBox->lineEdit(), "/a");
    QCOMPARE(name(), std::string("/in/a/Ledger.txt"));
    for (const char* const pName : {"/in/ledger.TXT", "/in/Led"}) {
      Type("cbInputFile", pName);
      QTest::keyClick(pBox->lineEdit(), Qt::Key_Tab);
      QCOMPARE(FromQt(pBox->currentText()), std::string(pName));
      QCOMPARE(name(), std::string(pName));
    }
  }

  void typesTheNameOfAnotherProfileWithoutOpeningIt() {
    folder_.Write("data/Brindlemark, Inc/Quillon/Profiles/Other.txt", "1\t2\t[32] Space\tLeft\tNo\t1\t\r\n");
    int nRows = 0;
    WithModal([&](QWidget* pEditor) {
      QLineEdit* const pName = pEditor->findChild<QComboBox*>("cbProfileList")->lineEdit();
      pName->selectAll();
      QTest::keyClicks(pName, "Other");
      QTest::keyClick(pName, Qt::Key_Tab);
      nRows = pEditor->findChild<QTableWidget*>("fgGrid")->rowCount();
      QTest::keyClick(pEditor, Qt::Key_Escape);
    });
    pForm_->Click("cmdEditProfile");
    QVERIFY(nRows > 1);
  }

  void givesEnterToTheFocusedButtonAndToNoneBehindAWrongEntry() {
    ChooseMethod(1);
    QString sCorrected;
    QString sTitle;
    bool bOpen = false;
    WithModal([&](QWidget* pEditor) {
      WithModal([&](QWidget* pTable) {
        auto* const pStart = pTable->findChild<QLineEdit*>("txtReadStartLine");
        pStart->setFocus();
        pStart->selectAll();
        QTest::keyClick(pStart, Qt::Key_Delete);
        Answer("OK");
        QTest::keyClick(pStart, Qt::Key_Return);
        sCorrected = pStart->text();
        bOpen = pTable->isVisible();
        pTable->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(pTable));
        auto* const pNumber = pTable->findChild<QLineEdit*>("txtTableNumber");
        pNumber->setFocus();
        QTest::keyClicks(pNumber, "5");
        QWidget* const pCancel = pTable->findChild<QPushButton*>("cmdCancel");
        pCancel->setFocus();
        sTitle = pTable->windowTitle();
        QTest::keyClick(pCancel, Qt::Key_Return);
      });
      QTest::mouseClick(pEditor->findChild<QPushButton*>("cmdAddTable"), Qt::LeftButton);
      QVERIFY(!pEditor->findChild<QPlainTextEdit*>("txtFileEditor")->toPlainText().contains("[Table"));
      pEditor->findChild<QPushButton*>("cmdCancel")->click();
    });
    pForm_->Click("cmdEditRecipe");
    QCOMPARE(sCorrected, QString("KEY TEXT AT TOP"));
    QCOMPARE(sTitle, QString("Add Table 15"));
    QVERIFY(bOpen);
  }

  void asksForFilesByTheWholeNamesOfTheirKinds() {
    Type("cbInputFile", folder_.Write("in/a.txt", "x"));
    QStringList kinds;
    QString sFolder;
    const auto look = [&](QWidget* pModal) {
      auto* const pDialog = qobject_cast<QFileDialog*>(pModal);
      kinds = pDialog->nameFilters();
      sFolder = pDialog->directory().path();
      pDialog->reject();
    };
    WithModal(look);
    pForm_->Click("cmdInputBrowse");
    QCOMPARE(kinds, QStringList({"Text (ASCII) Files (*.txt)", "All Files (*)"}));
    WithModal(look);
    pForm_->Click("cmdSelectInputFolder");
    QCOMPARE(FromQt(sFolder), folder_.Path("in"));
  }

  void savesARecipeWithItsNoBreakSpaces() {
    ChooseMethod(1);
    Type("cbRecipeFile", folder_.Write("r.rcp",
                                       "[Table 1]\r\nReadStartLine=1\xA0"
                                       "000\r\n"));
    WithModal([](QWidget* pEditor) {
      QTest::keyClicks(pEditor->findChild<QPlainTextEdit*>("txtFileEditor"), "x");
      pEditor->findChild<QPushButton*>("cmdSaveAndClose")->click();
    });
    pForm_->Click("cmdEditRecipe");
    QCOMPARE(folder_.Read("r.rcp"), std::string("x[Table 1]\r\nReadStartLine=1\xA0"
                                                "000\r\n"));
  }

  void takesWhatIsDroppedOnIt() {
    const auto drop = [this](const std::string& sPath) {
      QMimeData data;
      data.setUrls({QUrl::fromLocalFile(QString::fromStdString(sPath))});
      QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(pWindow_.get(), &enter);
      QVERIFY(enter.isAccepted());
      QDropEvent event(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(pWindow_.get(), &event);
    };
    const auto text = [this](const char* pCombo) { return FromQt(Widget<QComboBox>(pCombo)->currentText()); };
    drop(folder_.Write("in/a.txt", "x"));
    QCOMPARE(text("cbInputFile"), folder_.Path("in/a.txt"));
    drop(folder_.Path("in"));
    QCOMPARE(text("cbInputFile"), folder_.Path("in/*.TXT"));
    drop(folder_.Write("r.rcp", "x"));
    QCOMPARE(text("cbRecipeFile"), folder_.Path("r.rcp"));
    QCOMPARE(pForm_->lConversionMethod, 1);
    drop(folder_.Write("j.QLN", "[QLN]\r\nsInputFile=from the job\r\n"));
    QCOMPARE(text("cbInputFile"), std::string("from the job"));
  }

  void asksAboutAChangedJobAlsoAfterARunThatFailed() {
    const std::string sRecipe = folder_.Write("wrong.rcp",
                                              "[Table 1]\nReadStartLine=GONE\nReadStartLineOffset=1\nReadEndLine=x\n"
                                              "ReadEndLineOffset=0\nParsing=--\nWriteColumn=A\n");
    const std::string sInput = folder_.Write("a.txt", "no table\n");
    const std::string sJob =
        folder_.Write("a.QLN", "[QLN]\r\nsInputFile=" + sInput + "\r\nsOutputFile=" + folder_.Path("a.csv") +
                                   "\r\nlConversionMethod=1\r\n" + "sRecipeFile=" + sRecipe + "\r\n");
    pForm_->ConversionJobOpen(sJob);
    pWindow_->ShowAll();
    Answer("OK");
    pForm_->Click("keyConvert");
    QVERIFY2(Log().contains("[-5604]"), qPrintable(Log()));
    pForm_->ConversionJobOpen(sJob);
    QVERIFY2(!Log().contains("QLN File Opened Successfully"), "no job opens before a run ends well");
    pWindow_->ShowAll();
    Type("cbOutputFile", folder_.Path("b.csv"));
    Answer("Yes");
    pWindow_->close();
    QCOMPARE(GetPrivateProfileString(sJob, "QLN", "sOutputFile", ""), folder_.Path("b.csv"));
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

  void saysWhenNothingOpensAFile() {
    const std::string sOpener = folder_.Write("bin/xdg-open", "#!/bin/sh\nexit 3\n");
    QFile::setPermissions(ToQt(sOpener), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QByteArray::fromStdString(folder_.Path("bin")) + ":" + path);
    QString sTold;
    WithModal([&](QWidget* pBox) {
      sTold = static_cast<QMessageBox*>(pBox)->text();
      Answer("OK");
    });
    pForm_->LaunchFile(folder_.Write("a.xlsx", "x"));
    QTRY_VERIFY(!sTold.isEmpty() && QApplication::activeModalWidget() == nullptr);
    qputenv("PATH", path);
    QVERIFY2(sTold.startsWith("No program of the desktop opens this:"), qPrintable(sTold));
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
