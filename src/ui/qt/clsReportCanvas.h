#pragma once

#include <QAbstractScrollArea>
#include <QMenu>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "clsReportCut.h"

namespace quillon {

/// Draws a report with its cut in a fixed pitch and forwards what hand and keys do to the boundaries.
///
/// A ruler on top, line numbers at the left, the report's lines: fields in alternating bands where a table lies, what
/// the cut loses in a warning colour, the boundaries of the current table as lines from top to bottom. All colours come
/// from the palette.
///
/// The hand: a click on the ruler adds a boundary; a boundary can be dragged, also off the drawing, which removes it as
/// a double click does; a click into another table makes that one current; dragging over a line selects characters of
/// it; the context menu of a line tells what it is, that of a column's letter what the column is. Keys: Up, Down, PgUp,
/// PgDn, Ctrl+Home and Ctrl+End move the cursor from line to line, F8 to the next line that loses something;
/// Shift+Right and Shift+Left select a word of the line, with Ctrl one more; a letter tells what the line is;
/// Ctrl+Right and Ctrl+Left select a boundary, Right and Left move it, Insert adds one behind it, Delete removes it;
/// Enter takes a proposal, Escape drops it. With Shift a boundary that is moved leaves a gap behind.
class clsReportCanvas : public QAbstractScrollArea {
 public:
  explicit clsReportCanvas(clsReportCut& cut, QWidget* pParent = nullptr);

  /// Shows the model's picture as it is now.
  void ShowPicture();
  /// More lines are known than before, or what they are.
  void ShowLines();
  void ScrollToLine(int64_t lLine);
  /// Puts the cursor there and scrolls to it.
  void GoToLine(int64_t lLine) { MoveCursor(lLine); }
  /// Called before hand or keys do anything, so that the picture is up to date.
  std::function<void()> onBeforeHand;
  std::function<void()> onUndo, onRedo;  ///< The keys for them
  /// Ctrl+F (bAsk) and F3: a text is to be asked for, or the next or last line with it.
  std::function<void(bool bAsk, bool bForward)> onFind;
  /// The next line that holds the text, without regard to case, past the end on from the top. False if none does.
  bool FindNext(std::string_view sText, bool bForward);
  int64_t Cursor() const { return lCursor_; }  ///< Line of the cursor; 0: none yet
  /// Fills a menu with what can be said of the line of the cursor.
  void FillLineMenu(QMenu& menu);
  /// The same of a column.
  void FillColumnMenu(QMenu& menu, const PointedColumn& column, const QString& sName);

  // Where things are drawn, for views and tests: points of the viewport.
  QPoint PointOnRuler(int32_t lAfter) const;
  QPoint PointOnLine(int64_t lLine, int32_t lAfter) const;

 protected:
  void paintEvent(QPaintEvent* pEvent) override;
  void resizeEvent(QResizeEvent* pEvent) override;
  void changeEvent(QEvent* pEvent) override;
  void mousePressEvent(QMouseEvent* pEvent) override;
  void mouseMoveEvent(QMouseEvent* pEvent) override;
  void mouseReleaseEvent(QMouseEvent* pEvent) override;
  void mouseDoubleClickEvent(QMouseEvent* pEvent) override;
  void contextMenuEvent(QContextMenuEvent* pEvent) override;
  void keyPressEvent(QKeyEvent* pEvent) override;
  void focusInEvent(QFocusEvent* pEvent) override;
  void focusOutEvent(QFocusEvent* pEvent) override;

 private:
  struct Colours;
  void Measure();
  void SetScrollBars();
  int Left() const;
  int Top() const { return 2 * nLineHeight_ + 4; }
  double XOf(int32_t lAfter) const;
  int32_t AfterAt(double x) const;
  int32_t CharacterAt(double x) const;
  bool IsFree(int64_t lLine) const;
  int RowAt(int y) const;
  int Rows() const;  ///< A row for each line
  int RowOfLine(int64_t lLine) const;
  int64_t LineAt(int y) const;  ///< 0 where there is none
  void ScrollToBoundary();
  void MoveCursor(int64_t lLine);
  void MoveCursorBy(int nRows);
  bool CursorKey(const QKeyEvent& event);
  bool LessonKey(const QKeyEvent& event);
  bool SelectWord(bool bForward, bool bMore);
  void SelectTo(double x);
  void DropSelection();
  void Tell();
  bool ColumnMenuAt(double x, const QPoint& place);
  void AddNameAction(QMenu& menu, const PointedColumn& column, const QString& sName);

  void PaintRuler(QPainter& painter, const Colours& colours) const;
  void PaintLetters(QPainter& painter, const Colours& colours) const;
  void PaintRow(QPainter& painter, const Colours& colours, int nRow, int y) const;
  void PaintBands(QPainter& painter, const Colours& colours, const CutLine& line, int y) const;
  void PaintKind(QPainter& painter, const Colours& colours, const CutLine& line, int y) const;
  void PaintMarks(QPainter& painter, const Colours& colours, const CutLine& line, int y) const;
  void PaintSelection(QPainter& painter, const CutLine& line, int y) const;
  void PaintPageMark(QPainter& painter, const Colours& colours, const CutLine& line, int y) const;
  void PaintText(QPainter& painter, const CutLine& line, int y) const;
  void PaintBoundaries(QPainter& painter, const Colours& colours) const;
  std::vector<std::pair<int, int>> TableStretches() const;

  clsReportCut& cut_;
  int32_t lWidest_ = 0;
  int64_t lCursor_ = 0;
  double nCharWidth_ = 8;
  int nLineHeight_ = 16;
  int nAscent_ = 12;

  int nDragged_ = -1;  ///< The boundary in the hand; -1: none
  int32_t lDragTo_ = 0;
  bool bDragOff_ = false;
  std::optional<int32_t> pressed_;  ///< Where the ruler was pressed, off all boundaries
  bool bJustAdded_ = false;
  int32_t lAnchor_ = 0;                   ///< Character where the line was pressed; 0: it isn't
  int32_t lSelFirst_ = 0, lSelLast_ = 0;  ///< Selected characters of the cursor's line, from 1; 0: none
};

}  // namespace quillon
