// The keys of clsReportCanvas: its boundaries, and the cursor on a line.

#include <QAccessible>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

#include "clsFormBinder.h"
#include "clsReportCanvas.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

std::string TextOf(CutKind kind) {
  switch (kind) {
    case CutKind::Row:
      return Translate("row");
    case CutKind::Further:
      return Translate("further line");
    case CutKind::Heading:
      return Translate("heading");
    case CutKind::Total:
      return Translate("total");
    case CutKind::Dropped:
      return Translate("dropped");
    case CutKind::LeftOut:
      return Translate("left out");
    default:
      return Translate("outside of all tables");
  }
}

}  // namespace

/// A screen reader is told the line, and its table.
void clsReportCanvas::MoveCursor(int64_t lLine) {
  const CutLine* const pLine = cut_.Line(lLine);
  if (pLine == nullptr) return;
  if (lCursor_ != lLine) DropSelection();
  lCursor_ = lLine;
  Tell();
  ScrollToLine(lLine);
  viewport()->update();
}

void clsReportCanvas::Tell() {
  const CutLine* const pLine = cut_.Line(lCursor_);
  if (pLine == nullptr) return;
  const int64_t lLine = lCursor_;
  std::string sText = Translate("Line") + " " + std::to_string(lLine);
  if (pLine->nTable >= 0) {
    const DrawnTable& table = cut_.Picture().tables[static_cast<size_t>(pLine->nTable)];
    sText += ", " + Translate("Table") + " " + std::to_string(table.lNumber);
  }
  if (pLine->kind != CutKind::Untold) sText += ", " + TextOf(pLine->kind);
  if (pLine->bLikeRow) sText += ", " + Translate("looks like a row");
  if (!pLine->sMarks.empty()) sText += ", " + Translate("something is lost");
  sText += ": " + pLine->sText;
  if (lSelFirst_ > 0) {
    sText += "; " + Translate("selected") + ": " +
             std::string(MidChars(pLine->sText, lSelFirst_, lSelLast_ - lSelFirst_ + 1));
  }
  setAccessibleDescription(ToQt(sText));
  QAccessibleEvent event(this, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&event);
}

void clsReportCanvas::MoveCursorBy(int nRows) {
  if (Rows() == 0) return;
  const int64_t lNow = lCursor_ == 0 ? verticalScrollBar()->value() : lCursor_;
  MoveCursor(std::clamp<int64_t>(lNow + nRows, 1, Rows()));
}

bool clsReportCanvas::FindNext(std::string_view sText, bool bForward) {
  int64_t lFound = cut_.Find(sText, bForward || lCursor_ > 0 ? lCursor_ : cut_.Lines() + 1, bForward);
  if (lFound == 0) lFound = cut_.Find(sText, bForward ? 0 : cut_.Lines() + 1, bForward);
  if (lFound > 0) MoveCursor(lFound);
  return lFound > 0;
}

bool clsReportCanvas::CursorKey(const QKeyEvent& event) {
  const bool bControl = event.modifiers().testFlag(Qt::ControlModifier);
  const bool bBack = event.modifiers().testFlag(Qt::ShiftModifier);
  const int nPage = std::max(1, verticalScrollBar()->pageStep() - 1);
  const int nAll = Rows();
  switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
      MoveCursorBy(event.key() == Qt::Key_Up ? -1 : 1);
      return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      MoveCursorBy(event.key() == Qt::Key_PageUp ? -nPage : nPage);
      return true;
    case Qt::Key_Home:
    case Qt::Key_End: {
      const bool bHome = event.key() == Qt::Key_Home;
      if (bControl) {
        MoveCursorBy(bHome ? -nAll : nAll);
      } else {
        horizontalScrollBar()->setValue(bHome ? 0 : horizontalScrollBar()->maximum());
      }
      return true;
    }
    case Qt::Key_F8:
      if (int64_t lLoss = cut_.NextLoss(lCursor_ == 0 && bBack ? cut_.Lines() + 1 : lCursor_, !bBack)) {
        MoveCursor(lLoss);
      } else if ((lLoss = cut_.NextLoss(bBack ? cut_.Lines() + 1 : 0, !bBack)) > 0) {
        MoveCursor(lLoss);
      }
      return true;
    case Qt::Key_F:
    case Qt::Key_F3:
      if (!onFind || (event.key() == Qt::Key_F && !bControl)) return false;
      onFind(event.key() == Qt::Key_F, !bBack);
      return true;
    default:
      return false;
  }
}

void clsReportCanvas::keyPressEvent(QKeyEvent* pEvent) {
  if (onBeforeHand) onBeforeHand();
  const bool bControl = pEvent->modifiers().testFlag(Qt::ControlModifier);
  const int nKey = pEvent->key();
  if (pEvent->matches(QKeySequence::Undo) && onUndo) return onUndo();
  if (pEvent->matches(QKeySequence::Redo) && onRedo) return onRedo();
  if (CursorKey(*pEvent) || LessonKey(*pEvent)) return;
  if (nKey == Qt::Key_Left || nKey == Qt::Key_Right) {
    const bool bForward = nKey == Qt::Key_Right;
    if (bControl || cut_.Selected() < 0) {
      cut_.SelectNext(bForward);
    } else {
      cut_.MoveSelected(bForward ? 1 : -1, pEvent->modifiers().testFlag(Qt::ShiftModifier));
    }
    return ScrollToBoundary();
  }
  if (nKey == Qt::Key_Insert) {
    cut_.AddBehindSelected();
    return ScrollToBoundary();
  }
  if (nKey == Qt::Key_Delete || nKey == Qt::Key_Backspace) {
    cut_.RemoveSelected();
    return;
  }
  const bool bEnter = nKey == Qt::Key_Return || nKey == Qt::Key_Enter;
  if (cut_.HasProposal() && (bEnter || nKey == Qt::Key_Escape)) {
    return bEnter ? cut_.TakeProposal() : cut_.DropProposal();
  }
  if (nKey == Qt::Key_Escape && lSelFirst_ > 0) return DropSelection();
  if (nKey == Qt::Key_Escape && cut_.Selected() >= 0) return cut_.Select(-1);
  QAbstractScrollArea::keyPressEvent(pEvent);
}

}  // namespace quillon
