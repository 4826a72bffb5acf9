#pragma once
// Section files: the text form of every file of the engine, with limits of its own that are part of the formats.
//
// A line that holds "[", at least one character and "]" is a section header; the name is what stands between, trimmed.
// Names and keys are compared exactly. "key=value"; ";" behind the "=" begins a comment. A line that holds "[" anywhere
// ends the section, so a value can't hold one. The first line that holds the wanted key's text and a "=" decides: if
// its key is another one, the wanted key reads as missing. An empty value reads as missing too.
//
// Writing goes through clsIniFile, which finds sections and keys without regard to case and changes them in place.

#include <cstdint>
#include <string>
#include <string_view>

#include "clsHost.h"
#include "clsLineReader.h"
#include "clsSectionFile.h"

namespace quillon {

enum class TrimMode { Both = 0, LeftOnly = 1, RightOnly = 2 };

/// What FindKeyText looks for. Matching is by containment, case matters.
struct KeyTexts {
  std::string_view sNeedle1;       ///< "" is in every line that isn't empty
  std::string_view sNeedle2 = {};  ///< "" is in no line; also sNeedle3
  std::string_view sNeedle3 = {};
  std::string_view sExclusion = {};  ///< Lines that hold it are passed over; "" is in no line
  int64_t lStartColumn = 1;          ///< With lLength above 0 only that many characters from here are looked at
  int64_t lLength = 0;
};
constexpr int64_t kThirdNeedle = 10000000;

/// The value of the key in the next section of that name, or sDefault. An empty section name reads on from the present
/// line: so keys are read one after the other, and must stand in the order in which they are asked for.
std::string ReadSectionValue(clsSectionFile& filehandle, std::string_view section, std::string_view key,
                             std::string_view sDefault, TrimMode trim = TrimMode::Both);
/// From the top of the file.
std::string ReadKeyFromFile(clsSectionFile& filehandle, std::string_view section, std::string_view key,
                            std::string_view sDefault);
std::string ReadKeyFromFileTrimmed(clsSectionFile& filehandle, std::string_view section, std::string_view key,
                                   std::string_view sDefault, TrimMode trim);
std::string ReadKeyFromFile(std::string_view sPath, const TextFileOptions& options, std::string_view section,
                            std::string_view key, std::string_view sDefault);
/// Sets one key, making file, section or key as needed. False if the file can't be written. No caller
/// yet.
bool WriteSectionValue(std::string_view sPath, std::string_view section, std::string_view key, std::string_view sValue);

/// True where the header is wrong, without regard to case; a message box has told which key it was.
bool CheckFileHeader(clsHost& host, clsSectionFile& file, std::string_view sProduct, std::string_view sFileType,
                     std::string_view sFileFormat);

/// Reads on to the next line that matches and tells how many lines that took (it included): that number for the first
/// needle, negated for the second, plus kThirdNeedle for the third; 0 at the end. The key texts are UTF-8; one that the
/// report's code page can't hold is in no line. Characters of a report are counted in its code page.
int64_t FindKeyText(clsLineReader& filehandle, const KeyTexts& texts);
int64_t FindKeyText(clsSectionFile& filehandle, const KeyTexts& texts);
/// From the top of the file; 0 if it doesn't exist. No caller yet.
int64_t FindKeyTextInFile(std::string_view sPath, const TextFileOptions& options, const KeyTexts& texts);
/// How many times FindKeyText succeeds from the top of the file to its end.
int64_t CountMatchingLines(clsSectionFile& file, const KeyTexts& texts);
int64_t CountMatchingLines(std::string_view sPath, const TextFileOptions& options, const KeyTexts& texts);

/// A whole number that the program can't go on without: throws UnhandledFailure for anything else, with the place (file
/// and section) in front of the key.
int32_t RequiredWholeNumber(std::string_view sPlace, std::string_view sKey, std::string_view sValue);

/// The text of a value that isn't there.
constexpr std::string_view kMissing = "-999999";

// The kinds of keys that sections share. An empty section name reads on. A value that is refused gives False and leaves
// the result as it was.

/// A text that must be there; kMissing itself counts as missing.
bool ReadRequiredText(clsSectionFile& filehandle, std::string_view section, std::string_view key, std::string& sResult);
/// A whole number above 0.
bool ReadPositiveNumber(clsSectionFile& filehandle, std::string_view section, std::string_view key, int32_t& lResult);
/// Column letters that IsColumnText lets through.
bool ReadColumnLetters(clsSectionFile& filehandle, std::string_view key, std::string& sResult);
/// A whole number, 0 if it is missing; RequiredWholeNumber for anything else.
int32_t ReadOffset(clsSectionFile& filehandle, std::string_view sPlace, std::string_view key);

/// The plain comparison that column letters of a section file pass: in upper case the text sorts between "A" and "Z",
/// so "AB" passes and "ZA" doesn't.
bool IsColumnText(std::string_view sText);

}  // namespace quillon
