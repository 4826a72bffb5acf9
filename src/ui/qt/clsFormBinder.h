#pragma once

#include <QAction>
#include <QDialog>
#include <QMenuBar>
#include <QWidget>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "clsForm.h"

namespace quillon {

QString ToQt(std::string_view sText);
std::string FromQt(const QString& sText);

/// Places and sizes of the models are in twips, 1440 to the inch; the toolkit's pixels are 96 to the inch.
constexpr double kTwipsPerPixel = 15;

/// Draws the controls of one form and forwards their events: a widget for each control by its kind, made once, and one
/// operation that shows the form's whole state. It knows no rule of any form.
class clsFormBinder : public clsFormView {
 public:
  /// Registers itself as the form's view until it goes.
  explicit clsFormBinder(clsForm& form);
  clsFormBinder(const clsFormBinder&) = delete;
  clsFormBinder& operator=(const clsFormBinder&) = delete;
  ~clsFormBinder() override;

  /// The widget of a control; made at the first call, owned by pParent's tree.
  QWidget* Widget(std::string_view sControl, int nIndex = 0);
  template <typename T>
  T* As(std::string_view sControl, int nIndex = 0) {
    return static_cast<T*>(Widget(sControl, nIndex));
  }
  /// The action of a tool button or menu entry.
  QAction* Action(std::string_view sControl, int nIndex = 0);
  /// Fills the menu bar from the form's menus; again at each state in which their number differs.
  void MakeMenus(QMenuBar* pBar);

  void ShowState() override;
  void SetFocus(const clsControl& control) override;
  void CloseView() override;

  std::function<void()> onClose;
  std::function<void()> onState;  ///< After each ShowState, for what only this form's view draws

 private:
  using Key = std::pair<std::string, int>;
  QWidget* Make(clsControl& control);
  QWidget* MakeText(clsControl& control);
  QWidget* MakeList(clsControl& control);
  QWidget* MakeButton(clsControl& control);
  void Show(const clsControl& control, QWidget* pWidget);
  void ShowList(const clsControl& control, QWidget* pWidget);
  void ShowText(const clsControl& control, QWidget* pWidget);
  void ShowAction(const clsControl& control, QAction* pAction);
  void FillMenuBar();

  clsForm& form_;
  std::map<Key, QWidget*> widgets_;
  std::map<Key, QAction*> actions_;
  std::map<std::string, QMenu*> menus_;  ///< Those of the bar
  QMenuBar* pMenuBar_ = nullptr;
  size_t nMenus_ = 0;
  bool bShowing_ = false;
};

}  // namespace quillon
