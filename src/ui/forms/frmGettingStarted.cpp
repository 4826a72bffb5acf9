#include "frmGettingStarted.h"

#include <array>

#include "frmMain.h"
#include "modFiles.h"
#include "modFormTranslation.h"
#include "modHelp.h"
#include "modPaths.h"
#include "modSettings.h"
#include "modTranslator.h"

namespace quillon {

namespace {

struct Example {
  std::string_view sLoadCaption, sBatchCaption, sFolder;
};
constexpr std::array kExamples{
    Example{"Example 1. Profile Method", "Example 1. Profile Method.bat", "Example1-Profile Method"},
    Example{"Example 2. Recipe Method", "Example 2. Recipe Method.bat", "Example2-Recipe Method"},
    Example{"Example 3. Recipe Method", "Example 3. Recipe Method.bat", "Example3-Recipe Method"},
    Example{"Example 4. Marked Up Method", "Example 4. Marked Up Method.bat", "Example4-File Marking Method"}};

struct Chapter {
  std::string_view sButton, sCaption;
  int nTopic;
};
constexpr std::array kChapters{Chapter{"cmdHelpUserInterface", "User Interface Documentation", 22},
                               Chapter{"cmdHelpCL", "Command Line Documentation", 17},
                               Chapter{"cmdHelpAutomate", "Automating Quillon", 25}};

}  // namespace

frmGettingStarted::frmGettingStarted(frmMain& owner) : clsForm("frmGettingStarted"), oOwner_(owner) {
  sCaption = "Getting Started Guide";
  MakeControls();
}

void frmGettingStarted::MakeControls() {
  Add(ControlKind::Label, "Label1", "'Quillon' Getting Started Guide");
  Add(ControlKind::Label, "Label2",
      "Start reading the manual, or for those in a rush, take a look at the provided examples below. Get back to this "
      "form from the Help menu item.");
  Add(ControlKind::Frame, "Frame1", "User Interface Demonstration");
  Add(ControlKind::Label, "Label6",
      "From the FILE menu you may load any of the demonstrations provided. Or press one of the buttons below.");
  for (size_t i = 0; i < kExamples.size(); ++i) {
    const std::string sButton = "cmdLoadDemo" + std::to_string(i + 1);
    Add(ControlKind::CommandButton, sButton, kExamples[i].sLoadCaption);
    OnClick(sButton, [this, i] { CloseWith(static_cast<int32_t>(i) + 1); });
  }
  Add(ControlKind::Frame, "Frame2", "Manual");
  Add(ControlKind::Label, "Label3", "Press F1 at any time or go to the help menu to load the manual. ");
  for (const Chapter& chapter : kChapters) {
    Add(ControlKind::CommandButton, chapter.sButton, chapter.sCaption);
    OnClick(chapter.sButton, [this, nTopic = chapter.nTopic] { OpenHelpTopic(oOwner_.Host(), nTopic); });
  }
  Add(ControlKind::Frame, "Frame3", "Command Line Demonstration");
  Add(ControlKind::Label, "Label4",
      "BAT files and QLN files can both be ran from the command line. Click a button below to open the folder "
      "containing "
      "theQLN/BAT file:");
  Add(ControlKind::CommandButton, "cmdOpenBrowserToQLNFiles", "QLN Files for Examples 1-4");
  OnClick("cmdOpenBrowserToQLNFiles", [this] { LaunchFolder(gsAppDataFolder); });
  for (size_t i = 0; i < kExamples.size(); ++i) {
    const std::string sButton = "cmdOpenBrowserToDemo" + std::to_string(i + 1) + "bat";
    Add(ControlKind::CommandButton, sButton, kExamples[i].sBatchCaption);
    OnClick(sButton, [this, i] { LaunchFolder(gsAppDataFolder + std::string(kExamples[i].sFolder)); });
  }
  Add(ControlKind::CommandButton, "cmdClose", "&Close");
  OnClick("cmdClose", [this] { CloseWith(0); });
}

void frmGettingStarted::Form_Load() {
  TranslateForm(*this, oOwner_.Screen());
}

void frmGettingStarted::CloseWith(int32_t lDemo) {
  oOwner_.lLoadDemo = lDemo;
  Unloaded();
}

bool frmGettingStarted::KeyPressed(std::string_view sKey) {
  if (sKey == "Escape") CloseWith(0);
  if (sKey == "F1") OpenHelpTopic(oOwner_.Host(), 2);
  return sKey == "Escape" || sKey == "F1";
}

void frmGettingStarted::LaunchFolder(std::string_view sFolderToLaunch) {
  const std::string sFolder = ExpandedPath(sFolderToLaunch);
  if (FolderExists(sFolder)) {
    oOwner_.Host().OpenPath(HostPath(sFolder), OpenVerb::Explore);
    return;
  }
  oOwner_.Host().ShowMessage(Translate("Folder does not exist:") + "\r\n\r\n" + sFolder, Translate("Error"),
                             MessageIcon::Critical, MessageButtons::Ok);
}

}  // namespace quillon
