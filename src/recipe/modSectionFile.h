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
#include <vector>

#include "clsHost.h"
#include "clsLineReader.h"

namespace quillon {

/// A section file that is open for reading: the whole file in memory, a present line, and an index of its headers, so
/// that reading all of its sections costs no more than the file is long.
class clsSectionFile {
 public:
  static constexpr size_t kMaxBytes = size_t{256} << 20;
  /// Sections that counts in the file promise and the file doesn't have, before the counts are believed no more.
  static constexpr int32_t kMaxMissing = 16384;

  /// False with the reason if the file can't be read or is larger than kMaxBytes; the file is closed then and every
  /// value reads as its default.
  bool Open(std::string_view sPath, const TextFileOptions& options, Failure& failure);
  /// The same from bytes in memory, which needn't outlive the call.
  bool OpenMemory(std::string_view sBytes, const TextFileOptions& options);
  bool IsOpen() const { return bOpen_; }

  void Rewind() { nLine_ = 0; }
  bool AtEnd() const { return nLine_ >= starts_.size(); }
  /// The next line as UTF-8, valid as long as the file is open; False at the end.
  bool ReadLine(std::string_view& sLine);
  /// Goes on to the line behind the next header of that name; to the end, and False, if none follows.
  bool SeekSection(std::string_view section);
  /// To be asked before reading one more section that a count promises: False once the file is at its end and
  /// kMaxMissing such sections were asked for there.
  bool MayReadOn() { return !AtEnd() || ++lMissing_ <= kMaxMissing; }

 private:
  struct Header {
    uint32_t nLine, nName, nLength;  ///< Line index; place and length of the name in sText_
  };
  bool Load(clsLineReader& reader);
  void IndexHeaders();
  std::string_view Name(const Header& header) const;

  bool bOpen_ = false;
  bool bIndexed_ = false;
  std::string sText_;             ///< All lines, without line ends
  std::vector<uint32_t> starts_;  ///< Where each line starts in sText_
  std::vector<Header> headers_;   ///< By name, then line
  size_t nLine_ = 0;
  int32_t lMissing_ = 0;
};

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
/// Sets one key, making file, section or key as needed. False if the file can't be written.
bool WriteSectionValue(std::string_view sPath, std::string_view section, std::string_view key, std::string_view sValue);

/// True where the header is wrong, without regard to case; a message box has told which key it was.
bool CheckFileHeader(clsHost& host, clsSectionFile& file, std::string_view sProduct, std::string_view sFileType,
                     std::string_view sFileFormat);

/// Reads on to the next line that matches and tells how many lines that took (it included): that number for the first
/// needle, negated for the second, plus kThirdNeedle for the third; 0 at the end. The key texts are UTF-8; one that the
/// report's code page can't hold is in no line. Characters of a report are counted in its code page.
int64_t FindKeyText(clsLineReader& filehandle, const KeyTexts& texts);
int64_t FindKeyText(clsSectionFile& filehandle, const KeyTexts& texts);
/// From the top of the file; 0 if it doesn't exist.
int64_t FindKeyTextInFile(std::string_view sPath, const TextFileOptions& options, const KeyTexts& texts);
/// How many times FindKeyText succeeds from the top of the file to its end.
int64_t CountMatchingLines(clsSectionFile& file, const KeyTexts& texts);
int64_t CountMatchingLines(std::string_view sPath, const TextFileOptions& options, const KeyTexts& texts);

/// A whole number of a section file that the program can't go on without: throws UnhandledFailure for anything else.
int32_t RequiredWholeNumber(std::string_view sKey, std::string_view sValue);

}  // namespace quillon
