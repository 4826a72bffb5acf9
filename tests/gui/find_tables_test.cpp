// From a report that nobody has described to a workbook, click by click.

#include <QFileDialog>
#include <QLabel>
#include <QTreeWidget>

#include "clsDrawSession.h"

namespace quillon {

class clsFindTables : public clsDrawSession {
  Q_OBJECT

 private:
  void ClickIn(const char* pName) { QTest::mouseClick(Widget<QAbstractButton>(pName), Qt::LeftButton); }
  void OpenReport(const std::string& sPath) {
    WithModal([sPath](QWidget* pModal) {
      auto* const pDialog = qobject_cast<QFileDialog*>(pModal);
      pDialog->findChild<QLineEdit*>("fileNameEdit")->setText(ToQt(sPath));
      QTest::keyClick(pDialog->findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
    });
    ClickIn("cmdInputBrowse");
  }
  QString Closing() { return Widget<QLabel>("lblClosing")->text(); }
  std::string Box(const char* pCombo) { return FromQt(Widget<QComboBox>(pCombo)->currentText()); }

 private slots:
  void init() { Start(); }
  void cleanup() { Stop(); }

  void aReportBecomesAWorkbookWithSixClicks() {
    const std::string sReport = folder_.Write("in/limits.prt", Sample("account_limits/account_limits.prt"));
    OpenReport(sReport);
    QCOMPARE(Box("cbInputFile"), sReport);
    WithModal([](QWidget* pDialog) { Click(pDialog, "cmdOK"); });
    ClickIn("cmdFindTables");
    QCOMPARE(Box("cbRecipeFile"), folder_.Path("in/limits.rcp"));
    QCOMPARE(Box("cbOutputFile"), folder_.Path("in/limits.xlsx"));
    pForm_->Click("keyConvert");
    QVERIFY2(Log().contains("Errors: 0"), qPrintable(Log()));
    QVERIFY2(Closing().contains(" rows, ") && Closing().contains("to limits.xlsx"), qPrintable(Closing()));
    QVERIFY(FileSizeOf(folder_.Path("in/limits.xlsx")) > 0);
    QVERIFY(Widget<QAbstractButton>("cmdOpenResult")->isVisible());
    QVERIFY(Widget<QAbstractButton>("cmdShowResult")->isVisible());
  }

  void onlyTickedTablesComeIntoTheRecipeAndNoRecipeIsLost() {
    const std::string sReport = folder_.Write("t.txt", Sample("epanet_net1_pages/epanet_net1_pages.rpt"));
    folder_.Write("t.rcp", "mine");
    Type("cbInputFile", sReport);
    Type("cbOutputFile", folder_.Path("other.csv"));
    int nTables = 0;
    bool bOkWithNone = true;
    WithModal([&](QWidget* pDialog) {
      auto* const pList = pDialog->findChild<QTreeWidget*>("fgTables");
      nTables = pList->topLevelItemCount();
      for (int nRow = 0; nRow < nTables; ++nRow) pList->topLevelItem(nRow)->setCheckState(0, Qt::Unchecked);
      bOkWithNone = pDialog->findChild<QWidget*>("cmdOK")->isEnabled();
      pList->topLevelItem(0)->setCheckState(0, Qt::Checked);
      pList->topLevelItem(0)->setText(0, "Nodes");
      Answer("No");
      Click(pDialog, "cmdOK");
    });
    ClickIn("cmdFindTables");
    QVERIFY(nTables > 1);
    QVERIFY(!bOkWithNone);
    QCOMPARE(folder_.Read("t.rcp"), std::string("mine"));
    QCOMPARE(Box("cbRecipeFile"), folder_.Path("t-2.rcp"));
    QCOMPARE(Box("cbOutputFile"), folder_.Path("other.csv"));
    const std::string sRecipe = folder_.Read("t-2.rcp");
    QVERIFY2(sRecipe.find("[Table 1]") != std::string::npos && sRecipe.find("[Table 2]") == std::string::npos &&
                 sRecipe.find("Sheet=Nodes") != std::string::npos,
             sRecipe.c_str());
  }
};

}  // namespace quillon

int main(int argc, char** argv) {
  return quillon::PlaySession<quillon::clsFindTables>(argc, argv);
}

#include "find_tables_test.moc"
