#pragma once

#include <deque>
#include <functional>
#include <string>

#include "clsScreen.h"

namespace quillon {

/// Answers of dialogs, set beforehand.
class clsTestScreen : public clsScreen {
 public:
  std::function<void(clsForm&)> onModal;  ///< Plays the user of the next modal form
  std::function<void(clsForm&)> onAlong;  ///< Plays the user of the next form that is shown along with work
  std::deque<std::string> files, folders;
  std::string sFont;
  FileQuestion lastQuestion;

  void ShowModal(clsForm& form) override {
    const auto play = std::exchange(onModal, nullptr);
    if (play) play(form);
    if (!form.IsUnloaded()) form.CloseRequested();
  }
  std::shared_ptr<void> ShowAlong(clsForm& form) override {
    if (const auto play = std::exchange(onAlong, nullptr)) play(form);
    return {};
  }
  std::string AskFile(FileQuestion& question) override {
    lastQuestion = question;
    return Next(files);
  }
  std::string AskFolder(std::string_view, std::string_view) override { return Next(folders); }
  std::string AskFont(std::string_view) override { return sFont; }
  bool FontInstalled(std::string_view) override { return false; }
  WindowPlacement MainPlacement() override { return {}; }
  std::string Toolkit() override { return "no toolkit"; }

 private:
  static std::string Next(std::deque<std::string>& answers) {
    if (answers.empty()) return {};
    std::string sAnswer = answers.front();
    answers.pop_front();
    return sAnswer;
  }
};

}  // namespace quillon
