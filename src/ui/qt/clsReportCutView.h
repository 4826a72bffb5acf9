#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QWidget>
#include <functional>

#include "clsProofTree.h"
#include "clsReportCanvas.h"
#include "clsReportCut.h"

namespace quillon {

/// The pane beside an editor: the report with its cut, the cells that it gives, what is wrong with it, and the buttons
/// to work it out. An editor adds it to a splitter, calls UpdateSoon whenever the text of the cut or its caret changes,
/// and sets the functions below. Nothing is read while it is hidden.
class clsReportCutView : public QWidget {
 public:
  /// The source outlives the view.
  explicit clsReportCutView(clsCutSource& source, QWidget* pParent = nullptr);

  /// Called before each look and before the hand does anything: tells the source what only the editor's view knows.
  std::function<void()> onBeforeLook;
  /// Undo and redo of the editor, for their keys in the drawing.
  std::function<void()> onUndo, onRedo;

  /// Looks again a moment after the last call, so that typing isn't held up.
  void UpdateSoon() { timer_.start(kMoment); }
  /// For a window that shows a proof of its own.
  void HideProof() { bProof_ = false; }
  clsReportCanvas& Canvas() { return *pCanvas_; }
  clsReportCut& Cut() { return cut_; }

 protected:
  void showEvent(QShowEvent* pEvent) override;
  void changeEvent(QEvent* pEvent) override;
  bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

 private:
  static constexpr int kMoment = 120;  // milliseconds
  static constexpr int kSlice = 8;     // milliseconds of work between two events
  class clsCells;

  void UpdateNow();
  void WorkOn();
  void ShowProof();
  void Show();
  QString NotesText() const;
  QString HintText();
  void MakeGrid();
  void MakeButtons();
  void ColumnMenu(int nColumn, const QPoint& place);
  void LayOut();
  void MakeFind();
  void Find(bool bForward);
  QPushButton* MakeButton(const char* pName, std::string_view sCaption, std::function<void()> onClick);

  clsReportCut cut_;
  QTimer timer_, work_;
  bool bProof_ = true;
  int nProofShown_ = 0;
  clsReportCanvas* pCanvas_;
  clsCells* pCells_;
  QTableView* pGrid_;
  clsProofTree* pProof_;
  QTabWidget* pTabs_;
  QPushButton *pLine_, *pWorkOut_, *pTake_, *pDrop_, *pFurther_;
  QLabel *pNotes_, *pHint_;
  QLineEdit* pFind_;
};

}  // namespace quillon
