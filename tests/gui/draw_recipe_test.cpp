// A recipe is made for a report that nobody has described yet, by clicks and keys alone.

#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QRegularExpression>
#include <QTextBlock>

#include "clsDrawSession.h"

namespace quillon {

class clsDrawRecipe : public clsDrawSession {
  Q_OBJECT

 private:
  /// Types over what a field holds and leaves it.
  static void Fill(QWidget* pDialog, const char* pName, const char* pText) {
    auto* const pEdit = pDialog->findChild<QLineEdit*>(pName);
    pEdit->setFocus();
    pEdit->selectAll();
    QTest::keyClicks(pEdit, pText);
    QTest::keyClick(pEdit, Qt::Key_Tab);
  }
  void OpenEditor(const std::function<void(QWidget*)>& play) {
    WithModal([&](QWidget* pEditor) {
      pEditor_ = pEditor;
      pText_ = pEditor->findChild<QPlainTextEdit*>("txtFileEditor");
      TakeCanvas(pEditor);
      QTest::qWait(200);
      play(pEditor);
    });
    QTest::mouseClick(Widget<QPushButton>("cmdEditRecipe"), Qt::LeftButton);
  }
  QString Parsing() const {
    const QString sText = pText_->toPlainText();
    const auto nAt = sText.lastIndexOf("Parsing=") + 8;
    return sText.mid(nAt, sText.indexOf('\n', nAt) - nAt);
  }
  /// A table that begins as one field of three characters.
  void AddTable() {
    WithModal([this](QWidget* pBuilder) {
      Fill(pBuilder, "txtReadStartLine", "DY MAX MIN AVG");
      Fill(pBuilder, "txtReadStartLineOffset", "3");
      Fill(pBuilder, "txtReadEndLine", "SM 1498");
      Fill(pBuilder, "txtReadEndLineOffset", "-2");
      WithModal([](QWidget* pField) {
        Fill(pField, "txtFieldWidth", "3");
        Click(pField, "cmdOK");
      });
      Click(pBuilder, "cmdAddColumn");
      Click(pBuilder, "cmdOK");
    });
    Click(pEditor_, "cmdAddTable");
  }

  /// A CSV file without the blanks around its values.
  static QString Cells(const std::string& sCsv) {
    static const QRegularExpression kBlanks(" *([,\"\r\n]) *");
    return ToQt(sCsv).trimmed().replace(kBlanks, "\\1");
  }

  /// Opens the context menu of a line and clicks on an entry.
  void ChooseFromMenu(int64_t lLine, const QString& sEntry) {
    QTimer::singleShot(50, [sEntry] {
      auto* const pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (pMenu == nullptr) qFatal("no menu");
      for (QAction* const pAction : pMenu->actions()) {
        if (pAction->text() != sEntry) continue;
        return QTest::mouseClick(pMenu, Qt::LeftButton, {}, pMenu->actionGeometry(pAction).center());
      }
    });
    const QPoint place = pCanvas_->PointOnLine(lLine, 5);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, pCanvas_->viewport()->mapToGlobal(place));
    QApplication::sendEvent(pCanvas_->viewport(), &event);
  }

  QWidget* pEditor_ = nullptr;
  QPlainTextEdit* pText_ = nullptr;

 private slots:
  void init() { Start(); }
  void cleanup() { Stop(); }

  void aRecipeDrawnOverAReportConvertsToTheExpectedRows() {
    Type("cbInputFile", folder_.Write("cf6.txt", Sample("cf6_anchorage/cf6_anchorage.txt")));
    Type("cbOutputFile", folder_.Path("cf6.csv"));
    ChooseMethod(1);
    Type("cbRecipeFile", folder_.Path("cf6.rcp"));
    QString sDrawn;
    QString sHint;
    QString sNotes;
    OpenEditor([&](QWidget* pEditor) {
      QCOMPARE(pText_->toPlainText(), QString("[Header]\nProduct=QLN-B\nFileType=RECIPE\nFileFormat=1.0\n"));
      AddTable();
      QCOMPARE(Parsing(), QString("---"));
      pEditor->resize(1100, 800);
      QTest::qWait(200);
      // One boundary too far right, one too far left, two too many.
      for (const int32_t lAfter : {7, 11, 15, 19, 25, 28, 32, 37, 42, 44, 47, 50, 54, 58, 60, 63, 67, 73}) {
        ClickRuler(lAfter);
      }
      Drag(25, pCanvas_->PointOnLine(20, 23));
      Drag(44, pCanvas_->PointOnLine(20, 44) + QPoint(0, 4000));
      QTest::mouseDClick(pCanvas_->viewport(), Qt::LeftButton, {}, pCanvas_->PointOnRuler(60));
      Key(Qt::Key_Escape);
      for (int i = 0; i < 8; ++i) Key(Qt::Key_Right, Qt::ControlModifier);
      sHint = pEditor->findChild<QLabel*>("lblCutHint")->text();
      Key(Qt::Key_Left);
      for (int i = 0; i < 20; ++i) Key(Qt::Key_Right, Qt::ControlModifier);
      Key(Qt::Key_Insert);
      for (int i = 0; i < 6; ++i) Key(Qt::Key_Left);
      ClickRuler(80);
      Key(Qt::Key_Delete);
      Key(Qt::Key_Z, Qt::ControlModifier);
      sDrawn = Parsing();
      QTest::qWait(200);
      sNotes = pEditor->findChild<QLabel*>("lblCutNotes")->text();
      Click(pEditor, "cmdSaveAndClose");
    });
    QVERIFY2(sHint.contains("Boundary behind character 28"), qPrintable(sHint));
    QCOMPARE(sDrawn, QString("-- --- --- --- --- --- --- ---- ---- ---- ---- -- --- --- ---- --- ----- --- ---"));
    QVERIFY2(sNotes.contains("Rows looked at: 30; Nothing is lost."), qPrintable(sNotes));
    Activate();
    QTest::keyClick(pWindow_.get(), Qt::Key_F5);
    QVERIFY2(Log().contains("Errors: 0"), qPrintable(Log()));
    QCOMPARE(Cells(folder_.Read("cf6.csv")), Cells(Sample("cf6_anchorage/expected/cf6_anchorage.csv")));
  }

  void keysGoThroughTheReportFindTextsAndLosses() {
    Type("cbInputFile",
         folder_.Write("stock.txt", "STOCK\nBolts   12\nNuts     3\nWashers  9\n\fPage 2\nEND of bolts\n"));
    ChooseMethod(1);
    Type("cbRecipeFile", folder_.Write("stock.rcp",
                                       "[Table 1]\nReadStartLine=STOCK\nReadStartLineOffset=1\nReadEndLine=Page\n"
                                       "ReadEndLineOffset=-1\nParsing=----- ----\nWriteColumn=A\n"));
    std::vector<int64_t> cursor;
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
      Key(key, modifiers);
      cursor.push_back(pCanvas_->Cursor());
    };
    QString sSpoken;
    bool bOpen = false;
    OpenEditor([&](QWidget* pEditor) {
      pCanvas_->setFocus();
      press(Qt::Key_End, Qt::ControlModifier);
      press(Qt::Key_Up);
      press(Qt::Key_Home, Qt::ControlModifier);
      press(Qt::Key_F8);
      sSpoken = pCanvas_->accessibleDescription();
      press(Qt::Key_F8);
      press(Qt::Key_F, Qt::ControlModifier);
      auto* const pFind = pEditor->findChild<QLineEdit*>("txtFindInReport");
      QTest::keyClicks(pFind, "BOLTS");
      QTest::keyClick(pFind, Qt::Key_Return);
      cursor.push_back(pCanvas_->Cursor());
      QTest::keyClick(pFind, Qt::Key_Escape);
      bOpen = pEditor->isVisible() && !pFind->isVisible() && pCanvas_->hasFocus();
      press(Qt::Key_F3);
      Click(pEditor, "cmdCancel");
    });
    QCOMPARE(cursor, (std::vector<int64_t>{6, 5, 1, 4, 4, 4, 2, 6}));
    QCOMPARE(sSpoken, QString("Line 4, Table 1, something is lost: Washers  9"));
    QVERIFY(bOpen);
  }

  void findTablesWritesTheRecipeIntoTheEditorAsOneStep() {
    Type("cbInputFile", folder_.Write("limits.prt", Sample("account_limits/account_limits.prt")));
    ChooseMethod(1);
    Type("cbRecipeFile", folder_.Write("limits.rcp", "; mine\n"));
    QString sFound;
    QString sBack;
    OpenEditor([&](QWidget* pEditor) {
      WithModal([](QWidget* pDialog) { Click(pDialog, "cmdOK"); });
      Click(pEditor, "cmdFindTables");
      sFound = pText_->toPlainText();
      pText_->undo();
      sBack = pText_->toPlainText();
      Click(pEditor, "cmdCancel");
    });
    QVERIFY2(sFound.contains("[Table 1]") && !sFound.contains("mine"), qPrintable(sFound));
    QCOMPARE(sBack, QString("; mine\n"));
  }

  void linesOfTheDrawingBoundTheTable() {
    Type("cbInputFile", folder_.Write("limits.prt", Sample("account_limits/account_limits.prt")));
    Type("cbOutputFile", folder_.Path("limits.csv"));
    ChooseMethod(1);
    Type("cbRecipeFile", folder_.Path("limits.rcp"));
    QString sNotes;
    OpenEditor([&](QWidget* pEditor) {
      WithModal([](QWidget* pBuilder) { Click(pBuilder, "cmdOK"); });
      Click(pEditor, "cmdAddTable");
      ChooseFromMenu(6, "Starts here");
      for (int i = 0; i < 5; ++i) Key(Qt::Key_PageDown);
      ChooseFromMenu(50, "Ends here");
      for (const int32_t lAfter : {10, 31, 46}) ClickRuler(lAfter);
      sNotes = pEditor->findChild<QLabel*>("lblCutNotes")->text();
      Click(pEditor, "cmdSaveAndClose");
    });
    QVERIFY2(sNotes.contains("Lines: 6-50") && sNotes.contains("Nothing is lost."), qPrintable(sNotes));
    pForm_->Click("keyConvert");
    QCOMPARE(Cells(folder_.Read("limits.csv")), Cells(Sample("account_limits/expected/account_limits.csv")));
  }

  void aLongRecipeIsTypedInAndChangedWithoutLosingText() {
    std::string sRecipe = "[Header]\r\nProduct=QLN-B\r\n";
    for (int i = 1; i <= 1250; ++i) {
      const std::string sNumber = std::to_string(i);
      sRecipe += "[Table " + sNumber + "]\r\nReadStartLine=Top " + sNumber + "\r\nReadStartLineOffset=1\r\n" +
                 "ReadEndLine=End\r\nReadEndLineOffset=-1\r\nParsing====\r\nWriteColumn=A\r\n; \r\n";
    }
    Type("cbInputFile", folder_.Write("r.txt", "Top 7\nNuts 12\nEnd\n"));
    ChooseMethod(1);
    Type("cbRecipeFile", folder_.Write("long.rcp", sRecipe));
    qint64 nSlowest = 0;
    OpenEditor([&](QWidget* pEditor) {
      QTest::keyClick(pText_, Qt::Key_End, Qt::ControlModifier);
      for (const char c : std::string("; a note")) {
        QElapsedTimer timer;
        timer.start();
        QTest::keyClick(pText_, c);
        QApplication::processEvents();
        nSlowest = std::max(nSlowest, timer.elapsed());
      }
      pText_->setTextCursor(QTextCursor(pText_->document()->findBlockByNumber(2 + 6 * 8)));
      QTest::qWait(300);
      Click(pEditor, "cmdWorkOut");
      QTest::keyClick(pCanvas_, Qt::Key_Return);
      Click(pEditor, "cmdSaveAndClose");
    });
    qInfo("slowest key: %lld ms", nSlowest);
    const std::string sEnd = "\r\n; \r\n; a note";
    const std::string sSaved = folder_.Read("long.rcp");
    const size_t nParsing = sSaved.find("Parsing=", sSaved.find("[Table 7]"));
    QCOMPARE(sSaved.substr(nParsing, 17), std::string("Parsing=---- ---\r"));
    QCOMPARE(sSaved.size(), sRecipe.size() + std::string("; a note").size() + std::string("---- ---").size() - 3);
    QVERIFY(sSaved.ends_with(sEnd));
  }
};

}  // namespace quillon

int main(int argc, char** argv) {
  return quillon::PlaySession<quillon::clsDrawRecipe>(argc, argv);
}

#include "draw_recipe_test.moc"
