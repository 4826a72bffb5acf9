// One sitting at the desktop program without a screen, for tests that let files fail under it or run several at once:
// a changed setting, recent files, a saved job and a saved profile. Each message is a line of standard output.
//
//   desktop_session MARK JOB PROFILE [KEYS]   MARK is the text that all of them get; KEYS settings are written besides

#include <cstdlib>
#include <iostream>

#include "clsIniFile.h"
#include "clsProfileGrid.h"
#include "clsTestHost.h"
#include "clsTestScreen.h"
#include "frmMain.h"
#include "modSettings.h"

int main(int argc, char** argv) {
  using namespace quillon;
  if (argc < 4) return 2;
  const std::string sMark = argv[1];
  const int nKeys = argc > 4 ? std::atoi(argv[4]) : 0;
  clsTestHost host;
  clsTestScreen screen;
  clsRunFields fields;
  clsRunLog log(host, gConversionOptions);
  ResetConversionOptions();
  FindSettingsFile();
  gsAppDataFolder = AppDataFolder();

  frmMain form(host, screen, gConversionOptions, log, fields);
  bool bFirst = false;
  form.Form_Load(bFirst);
  form.sSheetTarget = sMark;
  for (const char* const pControl : {"cbInputFile", "cbOutputFile"}) form.TypeText(pControl, sMark + ".txt");
  form.UpdateMRUs();
  form.sJobFile = argv[2];
  form.ConversionJobSave();
  clsProfileGrid grid;
  CreateDefaultProfile(grid);
  grid.SetText(0, clsProfileGrid::kWidth, sMark);
  SaveProfileToDisk(argv[3], grid, host);
  for (int i = 0; i < nKeys; ++i) {
    WritePrivateProfileString(gsSettingsFile, "Session", sMark + "-" + std::to_string(i), sMark);
  }
  form.Form_Unload();
  for (const auto& message : host.messages) std::cout << message.sText << "\n";
  return 0;
}
