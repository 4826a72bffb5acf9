// What a screen reader is told: every control that the keyboard reaches has a name, in the main window and in the
// windows that draw a report.

#include <QAccessible>
#include <QTableView>

#include "clsDrawSession.h"

namespace quillon {

class clsAccessible : public clsDrawSession {
  Q_OBJECT

 private:
  static bool NeedsName(const QAccessibleInterface& thing) {
    switch (thing.role()) {
      case QAccessible::Button:
      case QAccessible::ButtonMenu:
      case QAccessible::CheckBox:
      case QAccessible::RadioButton:
      case QAccessible::ComboBox:
      case QAccessible::EditableText:
      case QAccessible::Table:
      case QAccessible::Tree:
      case QAccessible::List:
      case QAccessible::MenuItem:
        return thing.state().focusable && !thing.state().invisible;
      default:
        return false;
    }
  }
  /// The tree as text, two blanks a level; things that lack a name go into the list.
  static void Print(QAccessibleInterface* pThing, int nDepth, QStringList& tree, QStringList& nameless) {
    if (pThing == nullptr || !pThing->isValid() || pThing->state().invisible) return;
    const QString sName = pThing->text(QAccessible::Name);
    const QString sRole = QVariant::fromValue(pThing->role()).toString();
    const QString sObject = pThing->object() != nullptr ? pThing->object()->objectName() : QString();
    tree << QString(2 * nDepth, ' ') + sRole + " \"" + sName + "\" " + sObject;
    if (NeedsName(*pThing) && sName.trimmed().isEmpty()) nameless << sRole + " " + sObject;
    constexpr int kMostChildren = 60;  // cells of a table are as many as its rows
    for (int i = 0; i < std::min(pThing->childCount(), kMostChildren); ++i) {
      Print(pThing->child(i), nDepth + 1, tree, nameless);
    }
  }
  static QString Nameless(QWidget* pWindow) {
    QStringList tree;
    QStringList nameless;
    Print(QAccessible::queryAccessibleInterface(pWindow), 0, tree, nameless);
    qInfo("%s", qPrintable(tree.join('\n')));
    return tree.size() < 10 ? "hardly anything is there" : nameless.join(", ");
  }

 private slots:
  void init() { Start(); }
  void cleanup() { Stop(); }

  void theMainWindow() {
    for (int nMethod = 0; nMethod < 3; ++nMethod) {
      ChooseMethod(nMethod);
      QCOMPARE(Nameless(pWindow_.get()), QString());
    }
  }

  void findTablesAndTheDrawing() {
    Type("cbInputFile", folder_.Write("limits.prt", Sample("account_limits/account_limits.prt")));
    QString sNameless;
    WithModal([&](QWidget* pDialog) {
      QTest::qWait(300);
      sNameless = Nameless(pDialog);
      Click(pDialog, "cmdOK");
    });
    Click(pWindow_.get(), "cmdFindTables");
    QCOMPARE(sNameless, QString());
    QString sLine;
    QString sCell;
    WithModal([&](QWidget* pEditor) {
      QTest::qWait(300);
      sNameless = Nameless(pEditor);
      TakeCanvas(pEditor);
      for (int i = 0; i < 10; ++i) Key(Qt::Key_Down);
      sLine = QAccessible::queryAccessibleInterface(pCanvas_)->text(QAccessible::Description);
      auto* const pGrid = pEditor->findChild<QTableView*>("gridCells");
      pGrid->setFocus();
      QTest::keyClick(pGrid, Qt::Key_Down);
      QAccessibleInterface* const pCell = QAccessible::queryAccessibleInterface(pGrid)->focusChild();
      if (pCell != nullptr) sCell = pCell->text(QAccessible::Name);
      Click(pEditor, "cmdCancel");
    });
    QTest::mouseClick(Widget<QPushButton>("cmdEditRecipe"), Qt::LeftButton);
    QCOMPARE(sNameless, QString());
    QVERIFY2(sLine.startsWith("Line 10, Table 1, row: "), qPrintable(sLine));
    qInfo("line: %s; cell: %s", qPrintable(sLine), qPrintable(sCell));
    QVERIFY(!sCell.isEmpty());
  }
};

}  // namespace quillon

int main(int argc, char** argv) {
  return quillon::PlaySession<quillon::clsAccessible>(argc, argv);
}

#include "accessible_test.moc"
