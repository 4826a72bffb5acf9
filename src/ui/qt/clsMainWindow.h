#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSyntaxHighlighter>
#include <optional>

#include "clsFormBinder.h"
#include "clsQtHost.h"
#include "frmMain.h"
#include "frmMainMDI.h"
#include "modRunLog.h"

namespace quillon {

/// The frame and the main form in one window: the three steps, the log, toolbar, menus and status bars.
class clsMainWindow : public QMainWindow, public clsRunLogView {
 public:
  clsMainWindow(clsQtHost& host, frmMainMDI& frame, frmMain& form, clsRunLog& log);
  ~clsMainWindow() override;

  /// Applies the placement of the settings, on a screen that still exists.
  void ApplyPlacement();
  void ShowAll() { binder_.ShowState(); }
  /// A job is opened, a recipe chosen, another file or a folder's files made the input. Host path.
  void TakeFile(const QString& sPath);

  void LogReplaced(std::string_view sText) override;
  void LogAppended(std::string_view sBytes) override;

 protected:
  void closeEvent(QCloseEvent* pEvent) override;
  void resizeEvent(QResizeEvent* pEvent) override;
  void moveEvent(QMoveEvent* pEvent) override;
  void changeEvent(QEvent* pEvent) override;
  void dragEnterEvent(QDragEnterEvent* pEvent) override;
  void dropEvent(QDropEvent* pEvent) override;
  bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

 private:
  QWidget* MakeStep1();
  QWidget* MakeStep2();
  QWidget* MakeStep3();
  QWidget* MakeLine(const char* pText, std::initializer_list<const char*> links);
  QWidget* MakeLog();
  void AlignSteps();
  void NameControls();
  void MakeToolBar();
  void MakeIcons();
  void MakeStatusBars();
  void NotePlacement();
  void ShowRunProgress(const RunProgress& progress);
  void ShowBusy();
  void PaintProgress();
  void HideProgress();
  void CloseWhenIdle();

  clsQtHost& host_;
  frmMainMDI& frame_;
  frmMain& form_;
  clsRunLog& log_;
  clsFormBinder binder_;
  QPlainTextEdit* pLog_ = nullptr;
  QSyntaxHighlighter* pLogColours_ = nullptr;
  QProgressBar* pProgress_ = nullptr;
  struct Progress {
    double share;  ///< Of all files of the run
    int64_t lRow;
  };

  std::map<std::pair<int, int>, QLabel*> panels_;
  std::map<std::pair<int, int>, QString> panelTexts_;  ///< Not shown yet: a run tells more than an eye can see
  std::optional<Progress> progress_;                   ///< Of the run in hand, once it tells
  QElapsedTimer runTime_;                              ///< Since the first progress, at startShare_
  double startShare_ = 0;
  bool bUnloaded_ = false;
  bool bBusyShown_ = false;  ///< The pointer says so
};

}  // namespace quillon
