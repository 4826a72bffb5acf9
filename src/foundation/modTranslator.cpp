#include "modTranslator.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "clsOutputFile.h"
#include "modFailure.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modPhraseFile.h"
#include "modSettings.h"
#include "modText.h"

namespace quillon {

std::string gsLanguage;
std::string gsLanguageFile;
std::string gsLanguageFont;
int16_t giLanguageFileFormat = 0;
int32_t giUserLcid = 0;
bool gbDoubleByteLocale = false;
const std::string gsProductName = "Quillon";

namespace {

constexpr size_t kMaxLanguageBytes = size_t{16} << 20;

PhraseTable gPhrases;
clsHost* gpTranslatorHost = nullptr;
bool gbToldFailedAppend = false;

std::string FileNameOfLanguage(std::string_view sLanguage) {
  return std::string(sLanguage) + "-" + gsProductName + ".txt";
}

std::string LanguagesFolder() {
  return gsAppDataFolder + "Languages\\";
}

[[noreturn]] void Fail(std::string_view sText) {
  // The box that tells it must not try to add its own texts to that file.
  throw UnhandledFailure("InitializeTranslator: " + std::string(sText) + ": \r\n" + std::exchange(gsLanguageFile, {}));
}

void LoadLanguage() {
  gsLanguageFile = GetLanguageFilePath(gsLanguage);
  if (!FileExists(gsLanguageFile)) Fail("Unable to locate Language file");
  std::string sBytes;
  Failure failure;
  const bool bRead = ReadWholeFile(gsLanguageFile, sBytes, kMaxLanguageBytes, failure);
  giLanguageFileFormat = bRead ? phrasefile::DetectFormat(sBytes) : kPhrasesUnreadable;
  if (giLanguageFileFormat == kPhrasesUnreadable) Fail("Unable to read Language file");
  gPhrases.clear();
  phrasefile::Parse(sBytes, giLanguageFileFormat, gPhrases);
}

void AppendMissingPhrase(std::string_view sKey) {
  if (gsLanguageFile.empty()) return;
  gsLanguageFile = OwnLanguageFile(gsLanguage);
  if (phrasefile::Append(gsLanguageFile, giLanguageFileFormat, sKey)) return;
  // Once will do: a window of a language that lacks all of its texts would bring hundreds.
  if (gpTranslatorHost == nullptr || std::exchange(gbToldFailedAppend, true)) return;
  // The message's own texts may be missing as well; they must not come back here.
  const std::string sFile = std::exchange(gsLanguageFile, {});
  gpTranslatorHost->ShowMessage(Translate("Unable to add to Language file"), Translate("Error"), MessageIcon::Warning,
                                MessageButtons::Ok);
  gsLanguageFile = sFile;
}

std::string UserLocale() {
  for (const char* const pName : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* const pValue = std::getenv(pName);
    if (pValue != nullptr && *pValue != '\0') return pValue;
  }
  return "C";
}

void AddLanguagesOf(const std::string& sFolder, std::vector<std::string>& languages) {
  const std::string sTail = "-" + gsProductName + ".txt";
  std::vector<std::string> found;
  std::error_code error;
  for (std::filesystem::directory_iterator i(HostPath(sFolder), error), end; !error && i != end; i.increment(error)) {
    const std::string sName = i->path().filename().string();
    const size_t nTail = FindNoCase(sName, sTail);
    if (nTail != std::string::npos && nTail + sTail.size() == sName.size()) found.push_back(sName.substr(0, nTail));
  }
  std::sort(found.begin(), found.end());
  for (std::string& sName : found) {
    if (std::find(languages.begin(), languages.end(), sName) == languages.end()) languages.push_back(std::move(sName));
  }
}

}  // namespace

void ResetTranslator() {
  gsLanguage.clear();
  gsLanguageFile.clear();
  gsLanguageFont.clear();
  giLanguageFileFormat = 0;
  giUserLcid = 0;
  gbDoubleByteLocale = false;
  gPhrases.clear();
  gpTranslatorHost = nullptr;
  gbToldFailedAppend = false;
}

void InitializeTranslator(clsHost& host, const std::function<void()>& chooseLanguage) {
  static constexpr std::array<int32_t, 7> kDoubleByte{1041, 1042, 4100, 1028, 3076, 2052, 5124};
  gpTranslatorHost = &host;
  giUserLcid = LcidOfLocale(UserLocale());
  gbDoubleByteLocale = std::find(kDoubleByte.begin(), kDoubleByte.end(), giUserLcid) != kDoubleByte.end();
  gsLanguage = GetLanguage();
  if (gsLanguage.empty()) {
    gsLanguage = "English";
    const bool bEnglish = giUserLcid == 1033 || giUserLcid == 2057;
    if (!bEnglish && chooseLanguage) chooseLanguage();
    SaveLanguage(gsLanguage);
  }
  if (gsLanguage != "English") LoadLanguage();
  gsLanguageFont = GetLanguageFont();
}

std::string Translate(std::string_view sKey) {
  if (TrimBlanks(sKey).empty() || TrimBlanks(gsLanguage).empty()) return std::string(sKey);
  std::string sText(sKey);
  const auto found = gPhrases.find(sText);
  if (found != gPhrases.end()) return found->second;
  gPhrases.emplace(sText, sText);
  if (gsLanguage != "English") AppendMissingPhrase(sKey);
  return sText;
}

std::string TranslateIfKnown(std::string_view sKey) {
  const auto found = gPhrases.find(std::string(sKey));
  return found != gPhrases.end() ? found->second : std::string(sKey);
}

std::string GetLanguageFilePath(std::string_view sLanguage) {
  const std::string sOwn = LanguagesFolder() + FileNameOfLanguage(sLanguage);
  if (FileExists(sOwn)) return sOwn;
  const std::string sShipped = ShippedPath("Languages/" + FileNameOfLanguage(sLanguage));
  return FileExists(sShipped) ? sShipped : sOwn;
}

std::string OwnLanguageFile(std::string_view sLanguage) {
  std::string sOwn = LanguagesFolder() + FileNameOfLanguage(sLanguage);
  const std::string sFound = GetLanguageFilePath(sLanguage);
  if (sFound != sOwn) {
    MakeFolderPath(LanguagesFolder());
    CopyFileOver(sFound, sOwn);
  }
  return sOwn;
}

std::vector<std::string> LanguageList() {
  std::vector<std::string> languages{"English"};
  AddLanguagesOf(LanguagesFolder(), languages);
  AddLanguagesOf(ShippedPath("Languages"), languages);
  return languages;
}

std::string GetLanguage() {
  return GetPrivateProfileString(gsSettingsFile, "Language", "Language_Code", "");
}

void SaveLanguage(std::string_view sLanguage) {
  gsLanguage = sLanguage;
  WritePrivateProfileString(gsSettingsFile, "Language", "Language_Code", sLanguage);
}

std::string GetLanguageFont() {
  return GetPrivateProfileString(gsSettingsFile, "Language", "Language_Font", "");
}

void SaveLanguageFont(std::string_view sFont) {
  gsLanguageFont = sFont;
  WritePrivateProfileString(gsSettingsFile, "Language", "Language_Font", sFont);
}

int32_t LcidOfLocale(std::string_view sLocale) {
  struct Known {
    std::string_view sPrefix;
    int32_t lLcid;
  };
  static constexpr std::array<Known, 17> kKnown{{{"en_GB", 2057},
                                                 {"en", 1033},
                                                 {"C", 1033},
                                                 {"POSIX", 1033},
                                                 {"ja", 1041},
                                                 {"ko", 1042},
                                                 {"zh_SG", 4100},
                                                 {"zh_TW", 1028},
                                                 {"zh_HK", 3076},
                                                 {"zh_MO", 5124},
                                                 {"zh", 2052},
                                                 {"de", 1031},
                                                 {"fr", 1036},
                                                 {"es", 3082},
                                                 {"it", 1040},
                                                 {"pl", 1045},
                                                 {"pt", 2070}}};
  for (const Known& known : kKnown) {
    if (sLocale.starts_with(known.sPrefix)) return known.lLcid;
  }
  return 0;
}

}  // namespace quillon
