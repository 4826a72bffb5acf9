#pragma once
// One phrase table for all shown texts. Keys are the program's English texts exactly, blanks at their ends included. A
// phrase that the language file lacks shows in English and is appended to the file, once per process.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "clsHost.h"

namespace quillon {

extern std::string gsLanguage;        ///< "English" when no translation is active
extern std::string gsLanguageFile;    ///< Path of its file; empty for English
extern std::string gsLanguageFont;    ///< Font chosen for the language, or empty
extern int16_t giLanguageFileFormat;  ///< 0 8-bit text, -1 UTF-16, 99 unreadable
extern int32_t giUserLcid;            ///< The user's locale identifier
extern bool gbDoubleByteLocale;       ///< Japanese, Korean or Chinese
extern const std::string gsProductName;

/// Puts the values above and the phrase table back to their start values.
void ResetTranslator();

/// Start-up, before any form: takes language and font from the settings and loads the table. With no language chosen
/// yet it is "English", and on a system that isn't English chooseLanguage runs first (it may set gsLanguage and
/// gsLanguageFont; an unattended run hands in nothing). Throws UnhandledFailure for a language file that is missing,
/// unreadable or can't be processed. The host, kept until ResetTranslator, shows the first failed append.
void InitializeTranslator(clsHost& host, const std::function<void()>& chooseLanguage);

/// The text to show for an English text.
std::string Translate(std::string_view sKey);
/// The same for a text that differs at each run: where the table lacks it, nothing is appended.
std::string TranslateIfKnown(std::string_view sKey);

/// Path of a language's file in the Languages folder of the data folder; a shipped file of that name stands in for one
/// that the user's folder lacks.
std::string GetLanguageFilePath(std::string_view sLanguage);
/// Path of the user's own file, to be written to or edited. Where there is none the shipped one is copied there first.
std::string OwnLanguageFile(std::string_view sLanguage);
/// "English" and the languages that have a file, in this order.
std::vector<std::string> LanguageList();

std::string GetLanguage();
void SaveLanguage(std::string_view sLanguage);
std::string GetLanguageFont();
void SaveLanguageFont(std::string_view sFont);

/// Identifier of a locale name such as "de_DE.UTF-8"; English (1033) for "C" and unknown ones are 0.
int32_t LcidOfLocale(std::string_view sLocale);

}  // namespace quillon
