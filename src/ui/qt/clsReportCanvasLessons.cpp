// What a hand says of lines and columns in clsReportCanvas: menus, letters, the selection on a line.

#include <QContextMenuEvent>
#include <QInputDialog>
#include <QKeyEvent>
#include <algorithm>
#include <array>

#include "clsFormBinder.h"
#include "clsReportCanvas.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

namespace {

struct LessonRow {
  Lesson lesson;
  Qt::Key key;
};
constexpr std::array kLessons{LessonRow{Lesson::Starts, Qt::Key_S},  LessonRow{Lesson::Ends, Qt::Key_E},
                              LessonRow{Lesson::Row, Qt::Key_R},     LessonRow{Lesson::Names, Qt::Key_N},
                              LessonRow{Lesson::Heading, Qt::Key_H}, LessonRow{Lesson::LeaveOut, Qt::Key_L},
                              LessonRow{Lesson::Further, Qt::Key_M}};

std::string TextOf(Lesson lesson) {
  switch (lesson) {
    case Lesson::Starts:
      return Translate("Starts here");
    case Lesson::Ends:
      return Translate("Ends here");
    case Lesson::Row:
      return Translate("Rows look like this");
    case Lesson::Names:
      return Translate("These are the names");
    case Lesson::Heading:
      return Translate("A heading");
    case Lesson::LeaveOut:
      return Translate("Leave lines like this out");
    default:
      return Translate("Further line of the record");
  }
}

}  // namespace

void clsReportCanvas::FillLineMenu(QMenu& menu) {
  for (const LessonRow& row : kLessons) {
    QAction* const pAction = menu.addAction(ToQt(TextOf(row.lesson)));
    pAction->setShortcut(QKeySequence(row.key));
    // The canvas itself answers the key.
    pAction->setShortcutContext(Qt::WidgetShortcut);
    pAction->setShortcutVisibleInContextMenu(true);
    pAction->setEnabled(lCursor_ > 0);
    connect(pAction, &QAction::triggered, this, [this, lesson = row.lesson] {
      cut_.Teach(lesson, {lCursor_, lSelFirst_, lSelLast_});
      DropSelection();
    });
  }
}

bool clsReportCanvas::LessonKey(const QKeyEvent& event) {
  if (lCursor_ == 0 || !cut_.CanTeach()) return false;
  const bool bSide = event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
  const bool bShift = event.modifiers().testFlag(Qt::ShiftModifier);
  if (bSide && bShift && cut_.Selected() < 0) {
    return SelectWord(event.key() == Qt::Key_Right, event.modifiers().testFlag(Qt::ControlModifier));
  }
  if (event.modifiers() != Qt::NoModifier) return false;
  const auto found =
      std::find_if(kLessons.begin(), kLessons.end(), [&](const LessonRow& r) { return r.key == event.key(); });
  if (found == kLessons.end()) return false;
  cut_.Teach(found->lesson, {lCursor_, lSelFirst_, lSelLast_});
  DropSelection();
  return true;
}

/// The next word of the cursor's line, or one more.
bool clsReportCanvas::SelectWord(bool bForward, bool bMore) {
  const CutLine* const pLine = cut_.Line(lCursor_);
  if (pLine == nullptr) return false;
  const std::string_view sLine = pLine->sText;
  std::vector<std::pair<int32_t, int32_t>> words;
  int32_t lAt = 1;
  bool bGap = true;
  for (size_t i = 0; i < sLine.size(); ++lAt) {
    const bool bBlank = DecodeUtf8(sLine, i) == U' ';
    if (!bBlank && bGap) words.emplace_back(lAt, lAt);
    if (!bBlank) words.back().second = lAt;
    bGap = bBlank;
  }
  if (words.empty()) return false;
  const auto after = std::find_if(words.begin(), words.end(), [&](const auto& word) { return word.first > lSelLast_; });
  const auto before =
      std::find_if(words.rbegin(), words.rend(), [&](const auto& word) { return word.second < lSelFirst_; });
  const auto [lFirst, lLast] =
      bForward ? (after == words.end() ? words.back() : *after) : (before == words.rend() ? words.front() : *before);
  const bool bGrow = bMore && lSelFirst_ > 0;
  lSelFirst_ = bGrow ? std::min(lSelFirst_, lFirst) : lFirst;
  lSelLast_ = bGrow ? std::max(lSelLast_, lLast) : lLast;
  Tell();
  viewport()->update();
  return true;
}

void clsReportCanvas::SelectTo(double x) {
  const int32_t lNow = CharacterAt(x);
  // A hand that trembles in a click selects nothing.
  if (lNow == lAnchor_ && lSelFirst_ == 0) return;
  lSelFirst_ = std::min(lAnchor_, lNow);
  lSelLast_ = std::max(lAnchor_, lNow);
  viewport()->update();
}

void clsReportCanvas::DropSelection() {
  lSelFirst_ = lSelLast_ = 0;
  viewport()->update();
}

void clsReportCanvas::AddNameAction(QMenu& menu, const PointedColumn& column, const QString& sName) {
  connect(menu.addAction(ToQt(Translate("Name..."))), &QAction::triggered, this, [this, column, sName] {
    bool bOk = false;
    const QString sNew = QInputDialog::getText(this, ToQt(Translate("Name of the column")), ToQt(Translate("Name:")),
                                               QLineEdit::Normal, sName, &bOk);
    if (bOk) cut_.TeachColumn(column, {.sName = FromQt(sNew), .type = {}, .bFill = {}});
  });
}

void clsReportCanvas::FillColumnMenu(QMenu& menu, const PointedColumn& column, const QString& sName) {
  AddNameAction(menu, column, sName);
  menu.addSeparator();
  for (const auto& [type, sText] :
       {std::pair{TidyType::Text, Translate("Text")}, std::pair{TidyType::Number, Translate("Number")},
        std::pair{TidyType::Date, Translate("Date")}, std::pair{TidyType::Skip, Translate("Skip this column")}}) {
    connect(menu.addAction(ToQt(sText)), &QAction::triggered, this,
            [this, column, type = type] { cut_.TeachColumn(column, {.sName = {}, .type = type, .bFill = {}}); });
  }
  if (column.part != ColumnSource::Row) return;
  menu.addSeparator();
  for (const auto& [bFill, sText] : {std::pair{true, Translate("Fill empty cells from above")},
                                     std::pair{false, Translate("Leave empty cells empty")}}) {
    connect(menu.addAction(ToQt(sText)), &QAction::triggered, this,
            [this, column, bFill = bFill] { cut_.TeachColumn(column, {.sName = {}, .type = {}, .bFill = bFill}); });
  }
}

/// Of the column whose letter is drawn there.
bool clsReportCanvas::ColumnMenuAt(double x, const QPoint& place) {
  const CutPicture& picture = cut_.Picture();
  if (!picture.bTidy || picture.nCurrent < 0) return false;
  const DrawnTable& table = picture.tables[static_cast<size_t>(picture.nCurrent)];
  const int32_t lCharacter = CharacterAt(x);
  for (size_t i = 0; i < table.fields.size(); ++i) {
    if (lCharacter < table.fields[i].lStart || lCharacter > table.fields[i].lEnd) continue;
    QMenu menu;
    FillColumnMenu(menu, {ColumnSource::Row, 0, i}, ToQt(table.letters[i]));
    menu.exec(place);
    return true;
  }
  return false;
}

void clsReportCanvas::contextMenuEvent(QContextMenuEvent* pEvent) {
  if (onBeforeHand) onBeforeHand();
  if (!cut_.CanTeach()) return;
  // The key for it means the line of the cursor.
  const bool bByKey = pEvent->reason() == QContextMenuEvent::Keyboard;
  if (!bByKey && pEvent->pos().y() < Top()) {
    ColumnMenuAt(pEvent->pos().x(), pEvent->globalPos());
    return;
  }
  const int64_t lLine = bByKey ? lCursor_ : LineAt(pEvent->pos().y());
  if (lLine <= 0) return;
  MoveCursor(lLine);
  QMenu menu;
  FillLineMenu(menu);
  menu.exec(bByKey ? viewport()->mapToGlobal(PointOnLine(lLine, 0)) : pEvent->globalPos());
}

}  // namespace quillon
