#include "clsFormBinder.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTableWidget>

namespace quillon {

QString ToQt(std::string_view sText) {
  return QString::fromUtf8(sText.data(), static_cast<qsizetype>(sText.size()));
}

std::string FromQt(const QString& sText) {
  return sText.toStdString();
}

clsFormBinder::clsFormBinder(clsForm& form) : form_(form) {
  form_.SetView(this);
}

// Widgets that no layout took belong to nobody; actions are never in a tree of owners.
clsFormBinder::~clsFormBinder() {
  form_.SetView(nullptr);
  for (const auto& [key, pWidget] : widgets_) {
    if (pWidget->parent() == nullptr) delete pWidget;
  }
  for (const auto& [key, pAction] : actions_) delete pAction;
}

QWidget* clsFormBinder::Widget(std::string_view sControl, int nIndex) {
  const Key key{std::string(sControl), nIndex};
  const auto found = widgets_.find(key);
  if (found != widgets_.end()) return found->second;
  QWidget* const pWidget = Make(form_.Get(sControl, nIndex));
  pWidget->setObjectName(ToQt(sControl) + (nIndex == 0 ? QString() : QString::number(nIndex)));
  widgets_[key] = pWidget;
  return pWidget;
}

QWidget* clsFormBinder::Make(clsControl& control) {
  switch (control.kind) {
    case ControlKind::Label: {
      auto* const pLabel = new QLabel;
      pLabel->setWordWrap(true);
      return pLabel;
    }
    case ControlKind::Panel: {
      // It shows paths, which are no markup and may be wider than the window.
      auto* const pLabel = new QLabel;
      pLabel->setTextFormat(Qt::PlainText);
      pLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
      return pLabel;
    }
    case ControlKind::Frame:
      return new QGroupBox;
    case ControlKind::Grid:
      return new QTableWidget;
    case ControlKind::TextBox:
      return MakeText(control);
    case ControlKind::ComboBox:
    case ControlKind::ListBox:
    case ControlKind::TabStrip:
      return MakeList(control);
    default:
      return MakeButton(control);
  }
}

QWidget* clsFormBinder::MakeText(clsControl& control) {
  const std::string sControl = control.sName;
  auto* const pEdit = new QLineEdit;
  QObject::connect(pEdit, &QLineEdit::textEdited, pEdit,
                   [this, sControl](const QString& sText) { form_.TypeText(sControl, FromQt(sText)); });
  QObject::connect(pEdit, &QLineEdit::editingFinished, pEdit, [this, sControl] { form_.LoseFocus(sControl); });
  return pEdit;
}

QWidget* clsFormBinder::MakeList(clsControl& control) {
  const std::string sControl = control.sName;
  const auto select = [this, sControl](int nRow) {
    if (!bShowing_) form_.SelectItem(sControl, nRow);
  };
  if (control.kind == ControlKind::TabStrip) {
    auto* const pTabs = new QTabBar;
    QObject::connect(pTabs, &QTabBar::currentChanged, pTabs, select);
    return pTabs;
  }
  if (control.kind == ControlKind::ListBox) {
    auto* const pList = new QListWidget;
    QObject::connect(pList, &QListWidget::currentRowChanged, pList, select);
    return pList;
  }
  auto* const pCombo = new QComboBox;
  pCombo->setEditable(control.bEditable);
  pCombo->setInsertPolicy(QComboBox::NoInsert);
  pCombo->setMinimumContentsLength(8);
  pCombo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  QObject::connect(pCombo, &QComboBox::activated, pCombo, select);
  if (control.bEditable) {
    // A name that begins as an old one does, or differs from it by case, is a name of its own.
    pCombo->setCompleter(nullptr);
    // And to type the name of an item is not to select it, which may open a file over what was edited.
    QObject::disconnect(pCombo->lineEdit(), &QLineEdit::editingFinished, pCombo, nullptr);
    QObject::connect(pCombo->lineEdit(), &QLineEdit::textEdited, pCombo,
                     [this, sControl](const QString& sText) { form_.TypeText(sControl, FromQt(sText)); });
  }
  return pCombo;
}

QWidget* clsFormBinder::MakeButton(clsControl& control) {
  QAbstractButton* pButton = nullptr;
  if (control.kind == ControlKind::CheckBox) {
    pButton = new QCheckBox;
  } else if (control.kind == ControlKind::OptionButton) {
    pButton = new QRadioButton;
    // The model decides which one of the array is on.
    pButton->setAutoExclusive(false);
  } else {
    pButton = new QPushButton;
    static_cast<QPushButton*>(pButton)->setAutoDefault(false);
  }
  QObject::connect(pButton, &QAbstractButton::clicked, pButton,
                   [this, sControl = control.sName, nIndex = control.nIndex] {
                     form_.Click(sControl, nIndex);
                     ShowState();
                   });
  return pButton;
}

QAction* clsFormBinder::Action(std::string_view sControl, int nIndex) {
  QAction*& pAction = actions_[{std::string(sControl), nIndex}];
  if (pAction == nullptr) {
    pAction = new QAction;
    pAction->setObjectName(ToQt(sControl));
    QObject::connect(pAction, &QAction::triggered, pAction,
                     [this, sName = std::string(sControl), nIndex] { form_.Click(sName, nIndex); });
  }
  return pAction;
}

void clsFormBinder::MakeMenus(QMenuBar* pBar) {
  pMenuBar_ = pBar;
  FillMenuBar();
}

void clsFormBinder::FillMenuBar() {
  pMenuBar_->clear();
  nMenus_ = 0;
  menus_.clear();
  std::map<std::string, QAction*> placeOfArray;
  for (const auto& pControl : form_.Controls()) {
    if (pControl->kind != ControlKind::Menu) continue;
    ++nMenus_;
    if (pControl->sMenu.empty()) {
      menus_[pControl->sName] = pMenuBar_->addMenu(ToQt(pControl->sCaption));
      continue;
    }
    QMenu* const pMenu = menus_[pControl->sMenu];
    if (pMenu == nullptr) continue;
    if (pControl->sCaption == "-") {
      placeOfArray[pControl->sName] = pMenu->addSeparator();
      continue;
    }
    // Members of an array that come later stand where the array begins.
    QAction* const pAction = Action(pControl->sName, pControl->nIndex);
    const auto place = placeOfArray.find(pControl->sName);
    if (place == placeOfArray.end()) {
      pMenu->addAction(pAction);
    } else {
      pMenu->insertAction(place->second, pAction);
    }
    ShowAction(*pControl, pAction);
  }
}

void clsFormBinder::ShowState() {
  if (bShowing_) return;
  bShowing_ = true;
  for (const auto& [key, pWidget] : widgets_) {
    const clsControl* const pControl = form_.Find(key.first, key.second);
    if (pControl != nullptr) Show(*pControl, pWidget);
  }
  size_t nMenus = 0;
  for (const auto& pControl : form_.Controls()) nMenus += pControl->kind == ControlKind::Menu;
  if (pMenuBar_ != nullptr && nMenus != nMenus_) FillMenuBar();
  // They were made before the form was translated.
  for (const auto& [sName, pMenu] : menus_) {
    if (pMenu != nullptr) pMenu->setTitle(ToQt(form_.Get(sName).sCaption));
  }
  for (const auto& [key, pAction] : actions_) {
    const clsControl* const pControl = form_.Find(key.first, key.second);
    if (pControl != nullptr) ShowAction(*pControl, pAction);
  }
  if (onState) onState();
  bShowing_ = false;
}

void clsFormBinder::Show(const clsControl& control, QWidget* pWidget) {
  const QSignalBlocker quiet(pWidget);
  pWidget->setEnabled(control.bEnabled);
  if (pWidget->isHidden() == control.bVisible) pWidget->setVisible(control.bVisible);
  pWidget->setToolTip(ToQt(control.sToolTip));
  if (!control.sFontName.empty() && pWidget->font().family() != ToQt(control.sFontName)) {
    pWidget->setFont(QFont(ToQt(control.sFontName), pWidget->font().pointSize()));
  }
  switch (control.kind) {
    case ControlKind::Label:
      static_cast<QLabel*>(pWidget)->setText(ToQt(control.sCaption));
      break;
    case ControlKind::Panel:
      static_cast<QLabel*>(pWidget)->setText(ToQt(control.sText));
      break;
    case ControlKind::Frame:
      static_cast<QGroupBox*>(pWidget)->setTitle(ToQt(control.sCaption));
      break;
    case ControlKind::TextBox:
      ShowText(control, pWidget);
      break;
    case ControlKind::ComboBox:
    case ControlKind::ListBox:
    case ControlKind::TabStrip:
      ShowList(control, pWidget);
      break;
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
      static_cast<QAbstractButton*>(pWidget)->setChecked(control.bChecked);
      [[fallthrough]];
    case ControlKind::CommandButton:
    case ControlKind::Picture:
      static_cast<QAbstractButton*>(pWidget)->setText(ToQt(control.sCaption).trimmed());
      break;
    default:
      break;
  }
}

void clsFormBinder::ShowText(const clsControl& control, QWidget* pWidget) {
  auto* const pEdit = static_cast<QLineEdit*>(pWidget);
  const QString sText = ToQt(control.sText);
  if (pEdit->text() != sText) pEdit->setText(sText);
  if (control.lSelStart < 0) return;
  pEdit->setSelection(static_cast<int>(control.lSelStart), static_cast<int>(control.lSelLength));
  form_.Get(control.sName, control.nIndex).lSelStart = -1;
}

void clsFormBinder::ShowList(const clsControl& control, QWidget* pWidget) {
  const auto sameItems = [&](int nCount, auto textAt) {
    if (static_cast<size_t>(nCount) != control.items.size()) return false;
    for (int i = 0; i < nCount; ++i) {
      if (FromQt(textAt(i)) != control.items[static_cast<size_t>(i)]) return false;
    }
    return true;
  };
  QStringList items;
  for (const std::string& sItem : control.items) items << ToQt(sItem);
  if (control.kind == ControlKind::TabStrip) {
    auto* const pTabs = static_cast<QTabBar*>(pWidget);
    while (pTabs->count() < static_cast<int>(items.size())) pTabs->addTab(items[pTabs->count()]);
    pTabs->setCurrentIndex(control.lListIndex);
    return;
  }
  if (control.kind == ControlKind::ListBox) {
    auto* const pList = static_cast<QListWidget*>(pWidget);
    if (!sameItems(pList->count(), [&](int i) { return pList->item(i)->text(); })) {
      pList->clear();
      pList->addItems(items);
    }
    pList->setCurrentRow(control.lListIndex);
    return;
  }
  auto* const pCombo = static_cast<QComboBox*>(pWidget);
  if (!sameItems(pCombo->count(), [&](int i) { return pCombo->itemText(i); })) {
    pCombo->clear();
    pCombo->addItems(items);
  }
  // To leave an item would empty the box that is typed in, and its caret with it.
  const bool bTyped = control.bEditable && control.lListIndex < 0;
  if (!bTyped && pCombo->currentIndex() != control.lListIndex) pCombo->setCurrentIndex(control.lListIndex);
  if (control.bEditable && pCombo->currentText() != ToQt(control.sText)) pCombo->setEditText(ToQt(control.sText));
}

void clsFormBinder::ShowAction(const clsControl& control, QAction* pAction) {
  QString sText = ToQt(control.sCaption);
  // A caption of the user's own, as "&1 R&D.QLN" is: behind the access key in front each "&" is one of a name.
  if (control.sTag == "TranslateFalse") sText = sText.left(1) + sText.mid(1).replace("&", "&&");
  pAction->setText(sText);
  pAction->setEnabled(control.bEnabled);
  pAction->setVisible(control.bVisible);
  pAction->setShortcut(QKeySequence(ToQt(control.sShortcut)));
}

void clsFormBinder::SetFocus(const clsControl& control) {
  const auto found = widgets_.find({control.sName, control.nIndex});
  if (found != widgets_.end()) found->second->setFocus();
}

void clsFormBinder::CloseView() {
  if (onClose) onClose();
}

}  // namespace quillon
