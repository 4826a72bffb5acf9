// LayoutFindTables of modDialogLayouts.

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "clsFoundCut.h"
#include "frmFindTables.h"
#include "modDialogLayouts.h"
#include "modEditorParts.h"

namespace quillon {

namespace {

enum ListColumn { kName, kRows, kColumns, kPages, kLines, kNote };

/// What an entry of the list stands for.
enum EntryKind { kTable, kHeading, kColumn, kDoubt };
constexpr int kKindRole = Qt::UserRole, kTableRole = Qt::UserRole + 1, kPartRole = Qt::UserRole + 2,
              kLineRole = Qt::UserRole + 3;

QString TypeText(TidyType type) {
  switch (type) {
    case TidyType::Text:
      return ToQt(Translate("Text"));
    case TidyType::Number:
      return ToQt(Translate("Number"));
    case TidyType::Date:
      return ToQt(Translate("Date"));
    default:
      return {};
  }
}

QTreeWidgetItem* AddEntry(QTreeWidgetItem* pParent, EntryKind kind, size_t nTable, size_t nPart,
                          const std::string& sName) {
  auto* const pItem = new QTreeWidgetItem(pParent);
  pItem->setText(kName, ToQt(sName));
  pItem->setData(kName, kKindRole, kind);
  pItem->setData(kName, kTableRole, static_cast<qulonglong>(nTable));
  pItem->setData(kName, kPartRole, static_cast<qulonglong>(nPart));
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (kind == kTable || kind == kHeading) flags |= Qt::ItemIsUserCheckable;
  if (kind == kTable || kind == kColumn) flags |= Qt::ItemIsEditable;
  pItem->setFlags(flags);
  return pItem;
}

QColor WarningColour(const QWidget& widget) {
  const bool bDark = widget.palette().color(QPalette::Base).lightness() < 128;
  return bDark ? QColor(0xff, 0x9a, 0x8c) : QColor(0xa0, 0, 0);
}

/// Over the whole width, in the colour of warnings; a click goes to its line.
QTreeWidgetItem* AddDoubt(QTreeWidgetItem* pParent, size_t nTable, const std::string& sText, int64_t lLine) {
  QTreeWidgetItem* const pItem = AddEntry(pParent, kDoubt, nTable, 0, sText);
  pItem->setData(kName, kLineRole, static_cast<qlonglong>(lLine));
  pItem->setForeground(kName, WarningColour(*pItem->treeWidget()));
  pItem->setFirstColumnSpanned(true);
  return pItem;
}

void AddLeftOut(const ProofGroup& leftOut, QTreeWidget& list) {
  if (leftOut.entries.empty()) return;
  constexpr size_t kNoTable = static_cast<size_t>(-1);
  QTreeWidgetItem* const pGroup =
      AddDoubt(list.invisibleRootItem(), kNoTable, leftOut.sTitle, leftOut.entries.front().lLine);
  for (const ProofEntry& entry : leftOut.entries) AddDoubt(pGroup, kNoTable, entry.sText, entry.lLine);
}

void AddParts(QTreeWidgetItem* pTable, const ListedTable& table, size_t nTable) {
  for (const ProofEntry& doubt : table.doubts) AddDoubt(pTable, nTable, doubt.sText, doubt.lLine);
  for (size_t k = 0; k < table.headings.size(); ++k) {
    QTreeWidgetItem* const pItem = AddEntry(pTable, kHeading, nTable, k, table.headings[k].sName);
    pItem->setCheckState(kName, table.headings[k].bTicked ? Qt::Checked : Qt::Unchecked);
    pItem->setText(kNote, ToQt(Translate("Heading")));
  }
  for (size_t i = 0; i < table.columns.size(); ++i) {
    QTreeWidgetItem* const pItem = AddEntry(pTable, kColumn, nTable, i, table.columns[i].sName);
    pItem->setText(kColumns, table.columns[i].sPlaces.c_str());
    pItem->setTextAlignment(kColumns, Qt::AlignRight | Qt::AlignVCenter);
    pItem->setText(kNote, TypeText(table.columns[i].type));
  }
}

void FillList(const frmFindTables& form, QTreeWidget& list) {
  for (size_t n = 0; n < form.Tables().size(); ++n) {
    const ListedTable& table = form.Tables()[n];
    QTreeWidgetItem* const pItem = AddEntry(list.invisibleRootItem(), kTable, n, 0, table.sName);
    pItem->setCheckState(kName, table.bTicked ? Qt::Checked : Qt::Unchecked);
    const auto put = [&](ListColumn column, const QString& sText) {
      pItem->setText(column, sText);
      pItem->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    };
    put(kRows, QString::number(table.lRows));
    put(kColumns, QString::number(table.columns.size()));
    put(kPages, QString::number(table.lPages));
    if (table.lFirstLine > 0) put(kLines, QString::number(table.lFirstLine) + " - " + QString::number(table.lLastLine));
    if (table.bDoubtful) pItem->setText(kNote, ToQt(Translate("Perhaps no table")));
    if (table.bIncomplete) pItem->setText(kNote, ToQt(Translate("Perhaps rows are missing")));
    if (pItem->text(kNote).isEmpty() && !table.doubts.empty()) pItem->setText(kNote, ToQt(table.doubts.front().sText));
    pItem->setForeground(kNote, WarningColour(list));
    pItem->setToolTip(kNote, pItem->text(kNote));
    AddParts(pItem, table, n);
  }
  AddLeftOut(form.Finder().LeftOut(), list);
}

void Changed(frmFindTables& form, const QTreeWidgetItem& item) {
  if (item.data(kName, kKindRole).toInt() == kDoubt) return;
  const auto nTable = static_cast<size_t>(item.data(kName, kTableRole).toULongLong());
  const auto nPart = static_cast<size_t>(item.data(kName, kPartRole).toULongLong());
  const bool bTicked = item.checkState(kName) == Qt::Checked;
  const ListedTable& table = form.Tables()[nTable];
  const std::string sName = FromQt(item.text(kName));
  switch (item.data(kName, kKindRole).toInt()) {
    case kTable:
      if (bTicked != table.bTicked) form.Tick(nTable, bTicked);
      if (sName != table.sName) form.NameTable(nTable, sName);
      break;
    case kHeading:
      if (bTicked != table.headings[nPart].bTicked) form.TickHeading(nTable, nPart, bTicked);
      break;
    default:
      if (sName != table.columns[nPart].sName) form.NameColumn(nTable, nPart, sName);
  }
}

QTreeWidget* MakeList(frmFindTables& form) {
  auto* const pList = new QTreeWidget;
  pList->setObjectName("fgTables");
  pList->setAccessibleName(ToQt(Translate("Find Tables")));
  QStringList heads;
  for (const std::string& sHead :
       {Translate("Table"), Translate("Rows"), Translate("Columns"), Translate("Pages"), Translate("Lines")}) {
    heads << ToQt(sHead);
  }
  pList->setHeaderLabels(heads << QString());
  pList->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
  FillList(form, *pList);
  // With one table its columns are what there is to look at.
  if (form.Tables().size() == 1) pList->topLevelItem(0)->setExpanded(true);
  for (int n = kName; n < kNote; ++n) pList->resizeColumnToContents(n);
  pList->setCurrentItem(pList->topLevelItem(0));
  QObject::connect(pList, &QTreeWidget::itemChanged, pList,
                   [&form](const QTreeWidgetItem* pItem, int) { Changed(form, *pItem); });
  QObject::connect(pList, &QTreeWidget::currentItemChanged, pList, [&form](const QTreeWidgetItem* pItem) {
    const size_t nTable = pItem != nullptr ? static_cast<size_t>(pItem->data(kName, kTableRole).toULongLong()) : 0;
    if (pItem != nullptr && nTable < form.Tables().size()) form.Select(nTable);
  });
  return pList;
}

/// The list stands on the selected table, one of its parts, or on lines that are in none.
void ShowSelected(const frmFindTables& form, QTreeWidget& list) {
  const QTreeWidgetItem* const pNow = list.currentItem();
  const size_t nTable = pNow != nullptr ? static_cast<size_t>(pNow->data(kName, kTableRole).toULongLong()) : 0;
  const bool bThere = pNow != nullptr && (nTable == form.Selected() || nTable >= form.Tables().size());
  if (!bThere) list.setCurrentItem(list.topLevelItem(static_cast<int>(form.Selected())));
}

}  // namespace

void LayoutFindTables(clsForm& anyForm, clsFormBinder& b, QDialog& dialog) {
  auto& form = static_cast<frmFindTables&>(anyForm);
  auto* const pAll = new QVBoxLayout(&dialog);
  pAll->addWidget(b.Widget("lblFound"));
  QTreeWidget* const pList = MakeList(form);
  clsReportCutView* const pView = MakeCutView<clsFoundCut>(form, dialog);
  QObject::connect(pList, &QTreeWidget::currentItemChanged, pView, [pView](const QTreeWidgetItem* pItem) {
    const qlonglong lLine = pItem != nullptr ? pItem->data(kName, kLineRole).toLongLong() : 0;
    if (lLine > 0) pView->Canvas().GoToLine(lLine);
  });
  auto* const pSplitter = new QSplitter(Qt::Vertical);
  pSplitter->addWidget(pList);
  pSplitter->addWidget(pView);
  pSplitter->setStretchFactor(0, 1);
  pSplitter->setStretchFactor(1, 3);
  constexpr int kListHeight = 200, kViewHeight = 460;
  pSplitter->setSizes({kListHeight, kViewHeight});
  pSplitter->setChildrenCollapsible(false);
  pAll->addWidget(pSplitter, 1);
  auto* const pButtons = new QHBoxLayout;
  pButtons->addStretch();
  for (const char* const pName : {"cmdOK", "cmdCancel"}) pButtons->addWidget(b.Widget(pName));
  b.As<QPushButton>("cmdOK")->setDefault(true);
  pAll->addLayout(pButtons);
  b.onState = [&form, pList, pView] {
    const QSignalBlocker quiet(pList);
    ShowSelected(form, *pList);
    pView->UpdateSoon();
  };
  constexpr int kWidth = 1000, kHeight = 760, kFrame = 40;
  dialog.resize(QSize(kWidth, kHeight).boundedTo(dialog.screen()->availableGeometry().size() - QSize(0, kFrame)));
  pList->setFocus();
}

}  // namespace quillon
