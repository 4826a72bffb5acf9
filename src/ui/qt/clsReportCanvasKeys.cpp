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

const CutLine* LineOf(const CutPicture& picture, int64_t lLine) {
  const auto found = std::lower_bound(picture.lines.begin(), picture.lines.end(), lLine,
                                      [](const CutLine& line, int64_t l) { return line.lLine < l; });
  return found == picture.lines.end() || found->lLine != lLine ? nullptr : &*found;
}

std::string KindText(CutKind kind) {
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
  const CutLine* const pLine = LineOf(cut_.Picture(), lLine);
  if (pLine == nullptr) return;
  lCursor_ = lLine;
  std::string sText = Translate("Line") + " " + std::to_string(lLine);
  if (pLine->nTable >= 0) {
    const CutTable& table = cut_.Picture().tables[static_cast<size_t>(pLine->nTable)];
    sText += ", " + Translate("Table") + " " + std::to_string(table.lNumber);
  }
  if (pLine->kind != CutKind::Untold) sText += ", " + KindText(pLine->kind);
  if (!pLine->sMarks.empty()) sText += ", " + Translate("something is lost");
  setAccessibleDescription(ToQt(sText + ": " + pLine->sText));
  QAccessibleEvent event(this, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&event);
  ScrollToLine(lLine);
  viewport()->update();
}

/// By rows of the drawing, past the breaks between lines.
void clsReportCanvas::MoveCursorBy(int nRows) {
  if (rows_.empty()) return;
  const int nLast = static_cast<int>(rows_.size()) - 1;
  const int nNow = lCursor_ == 0 ? verticalScrollBar()->value() - 1 : RowOfLine(lCursor_);
  const int nStep = nRows < 0 ? -1 : 1;
  int nRow = std::clamp(nNow + nRows, 0, nLast);
  while (nRow >= 0 && nRow <= nLast && rows_[static_cast<size_t>(nRow)] < 0) nRow += nStep;
  if (nRow < 0 || nRow > nLast) return;
  MoveCursor(cut_.Picture().lines[static_cast<size_t>(rows_[static_cast<size_t>(nRow)])].lLine);
}

bool clsReportCanvas::MoveCursorTo(bool bForward, const std::function<bool(const CutLine&)>& wanted) {
  const std::vector<CutLine>& lines = cut_.Picture().lines;
  const auto nLines = static_cast<int64_t>(lines.size());
  const CutLine* const pNow = LineOf(cut_.Picture(), lCursor_);
  const int64_t nNow = pNow == nullptr ? (bForward ? -1 : nLines) : pNow - lines.data();
  for (int64_t n = 1; n <= nLines; ++n) {
    const auto nLine = static_cast<size_t>(((nNow + (bForward ? n : -n)) % nLines + nLines) % nLines);
    if (!wanted(lines[nLine])) continue;
    MoveCursor(lines[nLine].lLine);
    return true;
  }
  return false;
}

bool clsReportCanvas::FindNext(std::string_view sText, bool bForward) {
  return !sText.empty() && MoveCursorTo(bForward, [sText](const CutLine& line) {
    return FindNoCase(line.sText, sText) != std::string_view::npos;
  });
}

bool clsReportCanvas::CursorKey(const QKeyEvent& event) {
  const bool bControl = event.modifiers().testFlag(Qt::ControlModifier);
  const bool bBack = event.modifiers().testFlag(Qt::ShiftModifier);
  const int nPage = std::max(1, verticalScrollBar()->pageStep() - 1);
  const int nAll = static_cast<int>(rows_.size());
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
      MoveCursorTo(!bBack, [](const CutLine& line) { return !line.sMarks.empty() || line.kind == CutKind::LeftOut; });
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
  if (CursorKey(*pEvent)) return;
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
  if (nKey == Qt::Key_Escape && cut_.Selected() >= 0) return cut_.Select(-1);
  QAbstractScrollArea::keyPressEvent(pEvent);
}

}  // namespace quillon
