#include "clsProofTree.h"

#include <QHeaderView>

#include "clsFormBinder.h"
#include "modTranslator.h"

namespace quillon {

clsProofTree::clsProofTree(QWidget* pParent) : QTreeWidget(pParent) {
  setObjectName("treeProof");
  setAccessibleName(ToQt(Translate("Proof")));
  setHeaderHidden(true);
  setColumnCount(1);
  header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  header()->setStretchLastSection(false);
  connect(this, &QTreeWidget::itemClicked, this, [this](const QTreeWidgetItem* pItem) { GoTo(pItem); });
  connect(this, &QTreeWidget::itemActivated, this, [this](const QTreeWidgetItem* pItem) { GoTo(pItem); });
}

void clsProofTree::GoTo(const QTreeWidgetItem* pItem) const {
  const qlonglong lLine = pItem->data(0, Qt::UserRole).toLongLong();
  if (lLine > 0 && onLine) onLine(lLine);
}

void clsProofTree::Show(const std::vector<ProofGroup>& groups) {
  clear();
  const bool bDark = palette().color(QPalette::Base).lightness() < 128;
  const QColor warning = bDark ? QColor(0xff, 0x9a, 0x8c) : QColor(0xa0, 0, 0);
  for (const ProofGroup& group : groups) {
    auto* const pGroup = new QTreeWidgetItem(this, {ToQt(group.sTitle)});
    if (group.bWarning) pGroup->setForeground(0, warning);
    QFont font = pGroup->font(0);
    font.setBold(true);
    pGroup->setFont(0, font);
    for (const ProofEntry& entry : group.entries) {
      auto* const pEntry = new QTreeWidgetItem(pGroup, {ToQt(entry.sText)});
      pEntry->setData(0, Qt::UserRole, static_cast<qlonglong>(entry.lLine));
      if (entry.bWarning) pEntry->setForeground(0, warning);
    }
  }
  expandAll();
}

}  // namespace quillon
