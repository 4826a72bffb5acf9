#pragma once

#include <QWidget>
#include <map>
#include <string>

#include "clsHost.h"
#include "clsScreen.h"

namespace quillon {

/// Message boxes, pickers and modal dialogs of the desktop program.
class clsQtScreen : public clsScreen {
 public:
  explicit clsQtScreen(clsHost& host) : host_(host) {}

  void SetMainWindow(QWidget* pWindow) { pMainWindow_ = pWindow; }
  QWidget* MainWindow() const { return pMainWindow_; }

  void ShowModal(clsForm& form) override;
  std::shared_ptr<void> ShowAlong(clsForm& form) override;
  std::string AskFile(FileQuestion& question) override;
  std::string AskFolder(std::string_view sTitle, std::string_view sStartFolder) override;
  std::string AskFont(std::string_view sFontName) override;
  bool FontInstalled(std::string_view sFontName) override;
  WindowPlacement MainPlacement() override;
  std::string Toolkit() override { return std::string("Qt ") + qVersion(); }

 private:
  clsHost& host_;
  QWidget* pMainWindow_ = nullptr;
};

}  // namespace quillon
