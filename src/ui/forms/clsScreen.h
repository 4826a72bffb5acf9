#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "clsForm.h"
#include "clsHost.h"

namespace quillon {

/// A file dialog. Filters are pairs of label and masks ("Recipe Files (*.rcp)", "*.rcp").
struct FileQuestion {
  std::string sTitle;
  std::vector<std::pair<std::string, std::string>> filters;
  int lFilterIndex = 1;         ///< From 1, in and out
  std::string sInitDir;         ///< Host path; may be empty
  std::string sFileName;        ///< Preset name, or path text
  bool bSave = false;           ///< For a name to save under; PickFile sees to it where the title says so
  bool bAsksToReplace = false;  ///< Saving over a file that is there is asked about in the dialog
  bool bMayBeNew = false;       ///< A name that no file has yet may be chosen without saving
};

/// Window placement in twips (1440 to the inch). State 0 normal, 1 minimised, 2 maximised.
struct WindowPlacement {
  int lWindowState = 0;
  double Left = 150, Top = 150, Width = 13695, Height = 12350;
};

/// What forms ask of the toolkit beyond their own view. The desktop program and the tests implement it.
class clsScreen {
 public:
  virtual ~clsScreen() = default;
  /// Shows the form until it is unloaded.
  virtual void ShowModal(clsForm& form) = 0;
  /// Shows the form in front of all others for as long as what comes back lives, without waiting for anything.
  virtual std::shared_ptr<void> ShowAlong(clsForm& form) = 0;
  /// The chosen path as a path text; "" if cancelled.
  virtual std::string AskFile(FileQuestion& question) = 0;
  /// The chosen folder without a trailing separator; "" if cancelled.
  virtual std::string AskFolder(std::string_view sTitle, std::string_view sStartFolder) = 0;
  virtual std::string AskFont(std::string_view sFontName) = 0;
  virtual bool FontInstalled(std::string_view sFontName) = 0;
  /// Where the main window stands, in twips.
  virtual WindowPlacement MainPlacement() = 0;
  /// Name and version of the toolkit.
  virtual std::string Toolkit() = 0;
};

/// The filters of a text "label|masks|label|masks".
std::vector<std::pair<std::string, std::string>> FiltersOf(std::string_view sFilter);

/// The pickers, over a screen. PickFile saves if it is told to or the title holds the translated word "save".
std::string PickFile(clsScreen& screen, FileQuestion& question, std::string_view sStartPath);
std::string PickFolder(clsScreen& screen, std::string_view sStartPath);

}  // namespace quillon
