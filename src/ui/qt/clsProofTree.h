#pragma once

#include <QTreeWidget>
#include <functional>

#include "modProofList.h"

namespace quillon {

/// The panel of proof: what became of lines, totals and characters. A click or Enter on an entry with a line goes
/// there.
class clsProofTree : public QTreeWidget {
 public:
  explicit clsProofTree(QWidget* pParent = nullptr);

  void Show(const std::vector<ProofGroup>& groups);
  std::function<void(int64_t lLine)> onLine;

 private:
  void GoTo(const QTreeWidgetItem* pItem) const;
};

}  // namespace quillon
