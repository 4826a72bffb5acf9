// LayoutFindTables of modDialogLayouts.

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>

#include "clsFoundCut.h"
#include "frmFindTables.h"
#include "modDialogLayouts.h"
#include "modEditorParts.h"

namespace quillon {

namespace {

enum ListColumn { kName, kRows, kColumns, kParts, kLines, kNote };

QString LinesText(const ListedTable& table) {
  return QString::number(table.parts.front().lFirst) + " - " + QString::number(table.parts.back().lLast);
}

void FillList(frmFindTables& form, QTableWidget& list) {
  QStringList heads;
  for (const std::string& sHead :
       {Translate("Table"), Translate("Rows"), Translate("Columns"), Translate("Parts"), Translate("Lines")}) {
    heads << ToQt(sHead);
  }
  list.setColumnCount(kNote + 1);
  list.setHorizontalHeaderLabels(heads << QString());
  list.setRowCount(static_cast<int>(form.Tables().size()));
  for (int nRow = 0; nRow < list.rowCount(); ++nRow) {
    const ListedTable& table = form.Tables()[static_cast<size_t>(nRow)];
    const auto put = [&](ListColumn column, const QString& sText, bool bNumber = true) {
      auto* const pItem = new QTableWidgetItem(sText);
      pItem->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
      if (bNumber) pItem->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      list.setItem(nRow, column, pItem);
      return pItem;
    };
    const QString sNumber = ToQt(Translate("Table")) + " " + QString::number(nRow + 1);
    QTableWidgetItem* const pName = put(kName, table.sName.empty() ? sNumber : ToQt(table.sName), false);
    pName->setFlags(pName->flags() | Qt::ItemIsUserCheckable);
    pName->setCheckState(form.IsTicked(static_cast<size_t>(nRow)) ? Qt::Checked : Qt::Unchecked);
    put(kRows, QString::number(table.lRows));
    put(kColumns, QString::number(table.lColumns));
    put(kParts, QString::number(table.parts.size()));
    put(kLines, LinesText(table));
    put(kNote, table.bDoubtful ? ToQt(Translate("Perhaps no table")) : QString(), false);
  }
  list.resizeColumnsToContents();
}

QTableWidget* MakeList(frmFindTables& form) {
  auto* const pList = new QTableWidget;
  pList->setObjectName("fgTables");
  pList->setAccessibleName(ToQt(Translate("Find Tables")));
  pList->setSelectionBehavior(QAbstractItemView::SelectRows);
  pList->setSelectionMode(QAbstractItemView::SingleSelection);
  pList->verticalHeader()->hide();
  pList->horizontalHeader()->setStretchLastSection(true);
  pList->setTabKeyNavigation(false);
  FillList(form, *pList);
  pList->selectRow(0);
  QObject::connect(pList, &QTableWidget::itemChanged, pList, [&form](const QTableWidgetItem* pItem) {
    if (pItem->column() == kName) form.Tick(static_cast<size_t>(pItem->row()), pItem->checkState() == Qt::Checked);
  });
  QObject::connect(pList, &QTableWidget::currentCellChanged, pList, [&form](int nRow, int, int, int) {
    if (nRow >= 0) form.Select(static_cast<size_t>(nRow));
  });
  return pList;
}

}  // namespace

void LayoutFindTables(clsForm& anyForm, clsFormBinder& b, QDialog& dialog) {
  auto& form = static_cast<frmFindTables&>(anyForm);
  auto* const pAll = new QVBoxLayout(&dialog);
  pAll->addWidget(b.Widget("lblFound"));
  QTableWidget* const pList = MakeList(form);
  clsReportCutView* const pView = MakeCutView<clsFoundCut>(form, dialog);
  auto* const pSplitter = new QSplitter(Qt::Vertical);
  pSplitter->addWidget(pList);
  pSplitter->addWidget(pView);
  pSplitter->setStretchFactor(0, 1);
  pSplitter->setStretchFactor(1, 4);
  pSplitter->setChildrenCollapsible(false);
  pAll->addWidget(pSplitter, 1);
  auto* const pButtons = new QHBoxLayout;
  pButtons->addStretch();
  for (const char* const pName : {"cmdOK", "cmdCancel"}) pButtons->addWidget(b.Widget(pName));
  b.As<QPushButton>("cmdOK")->setDefault(true);
  pAll->addLayout(pButtons);
  b.onState = [&form, pList, pView] {
    const QSignalBlocker quiet(pList);
    if (pList->currentRow() != static_cast<int>(form.Selected())) pList->selectRow(static_cast<int>(form.Selected()));
    pView->UpdateSoon();
  };
  constexpr int kWidth = 900, kHeight = 700, kFrame = 40;
  dialog.resize(QSize(kWidth, kHeight).boundedTo(dialog.screen()->availableGeometry().size() - QSize(0, kFrame)));
  pList->setFocus();
}

}  // namespace quillon
