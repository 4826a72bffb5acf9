#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "clsControl.h"

namespace quillon {

/// Who draws a form. It is told that something changed and asks the form for all of its state.
class clsFormView {
 public:
  virtual ~clsFormView() = default;
  virtual void ShowState() = 0;
  virtual void SetFocus(const clsControl& control) = 0;
  /// The form is closed.
  virtual void CloseView() = 0;
};

/// A form without a screen: its controls and its handlers. Forms fill it; views and tests forward events to it. A form
/// keeps no reference to a view but this one, which may be null.
class clsForm {
 public:
  using Handler = std::function<void()>;

  explicit clsForm(std::string sForm) : sFormName(std::move(sForm)) {}
  clsForm(const clsForm&) = delete;
  clsForm& operator=(const clsForm&) = delete;
  virtual ~clsForm() = default;

  std::string sFormName;
  std::string sCaption;

  /// Adds a control. The reference stays good as long as the form lives.
  clsControl& Add(ControlKind kind, std::string_view sControl, std::string_view sCaptionText = {}, int nIndex = 0);
  /// The control; it must be there.
  clsControl& Get(std::string_view sControl, int nIndex = 0);
  const clsControl& Get(std::string_view sControl, int nIndex = 0) const;
  clsControl* Find(std::string_view sControl, int nIndex = 0);
  /// In the order of their making, which is the tab order.
  const std::vector<std::unique_ptr<clsControl>>& Controls() const { return controls_; }
  /// Removes members of a control array from nFrom on.
  void Unload(std::string_view sControl, int nFrom);

  void OnClick(std::string_view sControl, Handler handler, int nIndex = 0);
  void OnChange(std::string_view sControl, Handler handler, int nIndex = 0);
  void OnLostFocus(std::string_view sControl, Handler handler);

  // What a view forwards. Each does to the control what the toolkit would, calls its handler and shows the state.
  // An event on a control that is disabled or hidden does nothing.
  void Click(std::string_view sControl, int nIndex = 0);
  void TypeText(std::string_view sControl, std::string_view sText);
  void SelectItem(std::string_view sControl, int lListIndex);
  void LoseFocus(std::string_view sControl);
  /// The form refused what stood in the control that lost the focus last, and put another text there.
  bool EntryReplaced() const { return bEntryReplaced_; }
  /// Keys that belong to the form: "Escape", "F1" ...; False if the form has no use for the key.
  virtual bool KeyPressed(std::string_view /*sKey*/) { return false; }
  /// By the keyboard's own code of the key.
  virtual void KeyReleased(int32_t /*lKeyCode*/) {}
  /// The user closes the window.
  virtual void CloseRequested() { Unloaded(); }

  void SetView(clsFormView* pView) { pView_ = pView; }
  void Refresh();
  void Focus(std::string_view sControl, int nIndex = 0);
  /// Closes the view.
  void Unloaded();
  bool IsUnloaded() const { return bUnloaded_; }

 protected:
  bool bUnloaded_ = false;

 private:
  using Key = std::pair<std::string, int>;
  void Run(std::map<Key, Handler>& handlers, std::string_view sControl, int nIndex);

  std::vector<std::unique_ptr<clsControl>> controls_;
  std::map<Key, clsControl*> index_;
  std::map<Key, Handler> clicks_, changes_, lostFocus_;
  bool bEntryReplaced_ = false;
  clsFormView* pView_ = nullptr;
};

}  // namespace quillon
