// What the main form tells of the outputs of many files before they are written.

#include <map>

#include "frmMain.h"
#include "modFileListing.h"
#include "modPacked.h"
#include "modPaths.h"
#include "modStrings.h"
#include "modTranslator.h"

namespace quillon {

/// As a run names it; "" where it can't.
std::string frmMain::OutputOf(const std::string& sInput) const {
  const std::string sPattern = ExpandedPath(Get("cbOutputFile").sText);
  if (!HasWildcards(sPattern)) return {};
  const BatchOutput output(sPattern);
  const std::string sFolder = FolderOfPath(sInput);
  try {
    const std::string sTarget = Get("cbSaveToOriginalFolder").bChecked ? sFolder : output.TargetFor(sFolder);
    return sTarget + BaseNameOfReport(sInput) + "." + output.sOutputExtension;
  } catch (const OutputFolderTooLong&) {
    return {};
  }
}

/// Folders below are searched by the run alone: they may be a whole disk, and this is asked with each key.
void frmMain::ShowOutputPath() {
  clsControl& label = Get("lblOutputPath");
  const std::string sPattern = ExpandedPath(Get("cbInputFile").sText);
  std::string sOutput;
  if (HasWildcards(sPattern) && !Get("cbDoSubfolders").bChecked) {
    const std::string sFirst = FirstMatch(sPattern);
    if (!HasWildcards(sFirst)) sOutput = OutputOf(sFirst);
  }
  label.bVisible = !sOutput.empty();
  label.sCaption = Translate("First output:") + " " + sOutput;
}

/// Asks before the run if two of its files would be written to one output. False: no.
bool frmMain::MayReplaceEachOther() {
  const std::string sPattern = ExpandedPath(Get("cbInputFile").sText);
  if (!HasWildcards(sPattern)) return true;
  std::vector<std::string> files;
  std::string sIgnored;
  bool bDone = false;
  SetBusyPointer(true);
  BuildFileListing(sPattern, Get("cbDoSubfolders").bChecked, files, sIgnored, true, bDone);
  SetBusyPointer(false);
  std::map<std::string, const std::string*, std::less<>> outputs;
  for (const std::string& sFile : files) {
    const std::string sOutput = OutputOf(sFile);
    const auto [it, bNew] = outputs.emplace(sOutput, &sFile);
    if (bNew || sOutput.empty()) continue;
    const std::string sText = Translate("Two files have the same output, and the second replaces the first:") +
                              "\r\n\r\n" + *it->second + "\r\n" + sFile + "\r\n-> " + sOutput + "\r\n\r\n" +
                              Translate("Convert them all the same?");
    return host_.ShowMessage(sText, sCaption, MessageIcon::Question, MessageButtons::NoYes) == MessageAnswer::Yes;
  }
  return true;
}

}  // namespace quillon
