#include "clsForm.h"

#include <algorithm>
#include <cassert>

namespace quillon {

clsControl& clsForm::Add(ControlKind kind, std::string_view sControl, std::string_view sCaptionText, int nIndex) {
  controls_.push_back(std::make_unique<clsControl>());
  clsControl& control = *controls_.back();
  control.kind = kind;
  control.sName = sControl;
  control.sCaption = sCaptionText;
  control.nIndex = nIndex;
  index_[{control.sName, nIndex}] = &control;
  return control;
}

clsControl* clsForm::Find(std::string_view sControl, int nIndex) {
  const auto found = index_.find({std::string(sControl), nIndex});
  return found == index_.end() ? nullptr : found->second;
}

clsControl& clsForm::Get(std::string_view sControl, int nIndex) {
  clsControl* const pControl = Find(sControl, nIndex);
  assert(pControl != nullptr);
  return *pControl;
}

const clsControl& clsForm::Get(std::string_view sControl, int nIndex) const {
  return *index_.at({std::string(sControl), nIndex});
}

void clsForm::Unload(std::string_view sControl, int nFrom) {
  std::erase_if(index_, [&](const auto& item) { return item.first.first == sControl && item.first.second >= nFrom; });
  std::erase_if(controls_,
                [&](const auto& pControl) { return pControl->sName == sControl && pControl->nIndex >= nFrom; });
}

void clsForm::OnClick(std::string_view sControl, Handler handler, int nIndex) {
  clicks_[{std::string(sControl), nIndex}] = std::move(handler);
}

void clsForm::OnChange(std::string_view sControl, Handler handler, int nIndex) {
  changes_[{std::string(sControl), nIndex}] = std::move(handler);
}

void clsForm::OnLostFocus(std::string_view sControl, Handler handler) {
  lostFocus_[{std::string(sControl), 0}] = std::move(handler);
}

void clsForm::Run(std::map<Key, Handler>& handlers, std::string_view sControl, int nIndex) {
  const auto found = handlers.find({std::string(sControl), nIndex});
  // A copy, as a handler may rebuild the controls it belongs to.
  const Handler handler = found == handlers.end() ? Handler{} : found->second;
  if (handler) handler();
  if (!bUnloaded_) Refresh();
}

void clsForm::Click(std::string_view sControl, int nIndex) {
  clsControl* const pControl = Find(sControl, nIndex);
  if (pControl == nullptr || !pControl->bEnabled || !pControl->bVisible) return;
  if (pControl->kind == ControlKind::CheckBox) pControl->bChecked = !pControl->bChecked;
  if (pControl->kind == ControlKind::OptionButton) {
    for (const auto& pOther : controls_) {
      if (pOther->sName == sControl) pOther->bChecked = pOther.get() == pControl;
    }
  }
  Run(clicks_, sControl, nIndex);
}

void clsForm::TypeText(std::string_view sControl, std::string_view sText) {
  clsControl& control = Get(sControl);
  if (!control.bEnabled || !control.bVisible || control.sText == sText) return;
  control.sText = sText;
  control.lListIndex = -1;
  Run(changes_, sControl, 0);
}

void clsForm::SelectItem(std::string_view sControl, int lListIndex) {
  clsControl& control = Get(sControl);
  const bool bThere = lListIndex >= 0 && static_cast<size_t>(lListIndex) < control.items.size();
  if (!control.bEnabled || !control.bVisible || !bThere) return;
  control.lListIndex = lListIndex;
  control.sText = control.items[static_cast<size_t>(lListIndex)];
  Run(clicks_, sControl, 0);
}

void clsForm::LoseFocus(std::string_view sControl) {
  const clsControl& control = Get(sControl);
  const std::string sBefore = control.sText;
  Run(lostFocus_, sControl, 0);
  bEntryReplaced_ = control.sText != sBefore;
}

void clsForm::Refresh() {
  if (pView_ != nullptr) pView_->ShowState();
}

void clsForm::Focus(std::string_view sControl, int nIndex) {
  if (pView_ != nullptr) pView_->SetFocus(Get(sControl, nIndex));
}

void clsForm::Unloaded() {
  bUnloaded_ = true;
  if (pView_ != nullptr) pView_->CloseView();
}

}  // namespace quillon
