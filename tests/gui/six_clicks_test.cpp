// Six clicks from an unknown report to a workbook that holds what it should: on a report with groups, on one with
// several tables, and on one of 100 MB.

#include <fmt/format.h>

#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QProcess>
#include <QScrollBar>
#include <QTreeWidget>
#include <ctime>
#include <fstream>

#include "clsDrawSession.h"

namespace quillon {

class clsSixClicks : public clsDrawSession {
  Q_OBJECT

 private:
#ifdef __SANITIZE_ADDRESS__
  static constexpr int kRows = 40000;  // each step takes many times as long
#else
  static constexpr int kRows = 840000;
#endif
  int nClicks_ = 0;

  void ClickIn(QWidget* pWindow, const char* pName) {
    ++nClicks_;
    Click(pWindow, pName);
  }
  /// File.., the report, Find Tables.., OK, Convert, Open: the last one is there to be clicked.
  void Convert(const std::string& sReport, const std::function<void(QTreeWidget&)>& look = {}) {
    nClicks_ = 0;
    WithModal([&](QWidget* pModal) {
      // In the list of the dialog this is a double click on the name.
      auto* const pName = pModal->findChild<QLineEdit*>("fileNameEdit");
      pName->setText(ToQt(sReport));
      ++nClicks_;
      QTest::keyClick(pName, Qt::Key_Return);
    });
    ClickIn(pWindow_.get(), "cmdInputBrowse");
    WithModal([&](QWidget* pDialog) {
      if (look) look(*pDialog->findChild<QTreeWidget*>("fgTables"));
      ClickIn(pDialog, "cmdOK");
    });
    ClickIn(pWindow_.get(), "cmdFindTables");
    ++nClicks_;
    Activate();
    QTest::keyClick(pWindow_.get(), Qt::Key_F5);
    QVERIFY2(Log().contains("Errors: 0"), qPrintable(Log()));
    QVERIFY(Widget<QAbstractButton>("cmdOpenResult")->isVisible());
    ++nClicks_;
    QCOMPARE(nClicks_, 6);
  }
  QString Closing() {
    return Widget<QLabel>("lblClosing")->text();
  }
  static QString Python(const QStringList& arguments) {
    QProcess python;
    python.setProcessChannelMode(QProcess::MergedChannels);
    python.start(QUILLON_PYTHON, QStringList(QUILLON_SOURCE_DIR "/tests/gui/compare_workbook.py") + arguments);
    constexpr int kLong = 300000;
    python.waitForFinished(kLong);
    return QString::fromUtf8(python.readAll()) + (python.exitCode() == 0 ? "" : "!");
  }
  static QString Wanted(const char* pName) {
    return QStringLiteral(QUILLON_SOURCE_DIR "/tests/golden/tidy_reports/expected/") + pName;
  }
  /// Rows in departments over pages with totals: some 120 bytes a row.
  std::string LargeReport(int nRows) {
    const std::string sPath = folder_.Path("large.txt");
    std::ofstream out(sPath, std::ios::binary);
    int64_t lAll = 0;
    constexpr int kRowsOfPage = 50;
    for (int i = 0, nDepartment = 0; i < nRows;) {
      out << fmt::format("{}GENERAL WORKS      STOCK LEDGER      PAGE {}\n\n  STORE NUMBER: {:04}\n\n",
                         i > 0 ? "\f" : "", ++nDepartment, nDepartment);
      out << "  ITEM NO  DESCRIPTION                               LOCATION          QTY    UNIT PRICE         VALUE"
             "  LAST MOVED\n";
      int64_t lSum = 0;
      for (int n = 0; n < kRowsOfPage && i < nRows; ++n, ++i) {
        const int64_t lCents = 100 + (i * int64_t{7919}) % 90000;
        const int nQuantity = 1 + i % 9;
        lSum += lCents * nQuantity;
        out << fmt::format("  {:07}  {:40}  {:10} {:10} {:10}.{:02} {:10}.{:02}  {:02}/{:02}/20{:02}\n", i + 1,
                           fmt::format("Part of kind {} for store {}", i % 977, nDepartment),
                           fmt::format("R{}-{}", i % 40, i % 13), nQuantity, lCents / 100, lCents % 100,
                           lCents * nQuantity / 100, lCents * nQuantity % 100, 1 + i % 12, 1 + i % 28, 10 + i % 15);
      }
      lAll += lSum;
      out << fmt::format("\n  STORE TOTALS {:86}.{:02}\n", lSum / 100, lSum % 100);
    }
    out << fmt::format("\n  GRAND TOTALS {:86}.{:02}\n", lAll / 100, lAll % 100);
    return sPath;
  }

  /// The report is scrolled through, searched and changed from end to end; each answer is measured.
  void TryTheDrawing() {
    int64_t nSlowest = 0;
    int64_t nMost = 0;
    QString sSlowest;
    int64_t lEnd = 0;
    // The clock on the wall counts other work of the machine, too.
    const auto timed = [&](const QString& sWhat, const std::function<void()>& act) {
      QElapsedTimer timer;
      timer.start();
      const std::clock_t begin = std::clock();
      act();
      nMost = std::max(nMost, static_cast<int64_t>((std::clock() - begin) * 1000 / CLOCKS_PER_SEC));
      if (timer.elapsed() <= nSlowest) return;
      nSlowest = timer.elapsed();
      sSlowest = sWhat;
    };
    WithModal([&](QWidget* pEditor) {
      TakeCanvas(pEditor);
      QTest::qWait(3000);
      for (int i = 0; i < 5; ++i) {
        timed("Ctrl+End", [&] { Key(Qt::Key_End, Qt::ControlModifier); });
        lEnd = pCanvas_->Cursor();
        timed("Page up", [&] { Key(Qt::Key_PageUp); });
        timed("scroll", [&] { pCanvas_->verticalScrollBar()->setValue((i + 1) * kRows / 6); });
        timed("Ctrl+Home", [&] { Key(Qt::Key_Home, Qt::ControlModifier); });
        timed("boundary", [&] { Key(Qt::Key_Right, Qt::ControlModifier); });
        timed("moved boundary", [&] { Key(Qt::Key_Right); });
      }
      Click(pEditor, "cmdCancel");
    });
    QTest::mouseClick(Widget<QPushButton>("cmdEditRecipe"), Qt::LeftButton);
    qInfo("slowest answer: %s, %lld ms; most work for one: %lld ms", qPrintable(sSlowest),
          static_cast<long long>(nSlowest), static_cast<long long>(nMost));
    QVERIFY2(lEnd > kRows, qPrintable(QString::number(lEnd)));
  }

  /// The search for tables can be stopped while the window stays alive.
  void TryToCancel(const std::string& sReport) {
    Type("cbInputFile", sReport);
    bool bStopped = false;
    int nPulses = 0;
    QTimer pulse;
    connect(&pulse, &QTimer::timeout, this, [&] { ++nPulses; });
    pulse.start(10);
    WithBox([&](QWidget* pBox) {
      QTest::keyClick(pBox, Qt::Key_Escape);
      bStopped = true;
    });
    Click(pWindow_.get(), "cmdFindTables");
    QVERIFY(bStopped);
    QVERIFY2(nPulses > 0, qPrintable(QString::number(nPulses)));
    QCOMPARE(Widget<QComboBox>("cbRecipeFile")->currentText(), QString());
    Type("cbInputFile", "");
  }

 private slots:
  void init() {
    Start();
  }
  void cleanup() {
    Stop();
  }

  void aReportWithGroups() {
    Convert(folder_.Write("temps.txt", Sample("tidy_reports/regional_temps.txt")));
    QCOMPARE(Python({ToQt(folder_.Path("temps.xlsx")), "1", Wanted("regional_temps.csv")}), QString());
  }

  void aReportWithSeveralTables() {
    QStringList names;
    Convert(folder_.Write("net.rpt", Sample("epanet_net1_pages/epanet_net1_pages.rpt")), [&](QTreeWidget& list) {
      for (int i = 0; i < list.topLevelItemCount(); ++i) names << list.topLevelItem(i)->text(1);
    });
    QVERIFY2(names.contains("275") || names.contains("276"), qPrintable(names.join(' ')));
    QCOMPARE(Python({ToQt(folder_.Path("net.xlsx")), "1", Wanted("epanet_net1_pages.csv")}), QString());
  }

  void aReportOfAHundredMegabytes() {
    const std::string sReport = LargeReport(kRows);
    constexpr int64_t kRowBytes = 119;
    QVERIFY(FileSizeOf(sReport) > kRows * kRowBytes);
    TryToCancel(sReport);
    QElapsedTimer timer;
    timer.start();
    Convert(sReport);
    qInfo("from the report to the workbook: %lld ms", static_cast<long long>(timer.elapsed()));
    QVERIFY2(Closing().contains("totals agree") && !Closing().contains("disagree"), qPrintable(Closing()));
    QCOMPARE(Python({"--count", ToQt(folder_.Path("large.xlsx"))}), QString::number(kRows + 1) + "\n");
    TryTheDrawing();
  }
};

}  // namespace quillon

int main(int argc, char** argv) {
  return quillon::PlaySession<quillon::clsSixClicks>(argc, argv);
}

#include "six_clicks_test.moc"
