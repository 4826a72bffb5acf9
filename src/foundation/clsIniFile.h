#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "clsCodePage.h"
#include "modFailure.h"

namespace quillon {

/// An INI file kept in memory as lines. Sections and keys are found without regard to case, changed in place, all else
/// is kept byte by byte. A new section goes to the end of the file, a new key behind the last line of its section that
/// isn't blank. Lines that begin with ";" are passed over. New lines end in CR LF.
///
/// Texts are UTF-8; the file has the code page's bytes. A file that gets a text which the page lacks becomes UTF-8 with
/// a BOM, so that no path is ever damaged; so does one whose page is found by content, where the content would no
/// longer tell. One write for a batch of keys. Cost is linear in sections and keys.
class clsIniFile {
 public:
  /// The most characters that a value is read with (a buffer of 500 with its end mark).
  static constexpr size_t kMaxValue = 499;

  /// Null: the file's own bytes decide, as DetectCodePage does.
  explicit clsIniFile(const clsCodePage* pPage = &clsCodePage::Windows1252());

  /// A missing file loads as an empty one (True). False with the reason if it can't be read.
  bool Load(std::string_view sPath, Failure& failure);
  void LoadText(std::string_view sBytes);
  /// Saves as clsOutputFile does.
  bool Save(std::string_view sPath, Failure& failure) const;
  std::string Bytes() const;

  /// The value, one pair of quotes around it stripped, blanks around it trimmed, cut at kMaxValue characters and at
  /// the first NUL; the default if section or key is absent.
  std::string Get(std::string_view sSection, std::string_view sKey, std::string_view sDefault) const;
  /// Leading digits of the value (with a sign); the default if there are none, or too many for 32 bits.
  int32_t GetInt(std::string_view sSection, std::string_view sKey, int32_t lDefault) const;
  bool HasSection(std::string_view sSection) const;
  /// key=value, with no blanks added. A line holds no line end: one in a text becomes a blank.
  void Set(std::string_view sSection, std::string_view sKey, std::string_view sValue);

 private:
  struct Line {
    std::string sText;  ///< As in the file, without line end
    std::string sEnd;   ///< CR LF, LF or nothing
  };
  struct Section {
    std::vector<Line> lines;                       ///< The header line first; the part before any header has none
    std::unordered_map<std::string, size_t> keys;  ///< Folded key to its first line
  };
  static void EndLine(Line& line);
  Section& NewSection(std::string_view sSection);
  void AddKeyLine(Section& section, std::string_view sKey, Line line);

  const clsCodePage* pAskedPage_;
  const clsCodePage* pPage_ = nullptr;  ///< In force for the file in hand
  bool bBom_ = false;
  std::vector<Section> sections_;
  std::unordered_map<std::string, size_t> index_;  ///< Folded name to the first section that has it
};

/// One key from a file; the default if file, section or key is absent.
std::string GetPrivateProfileString(std::string_view sPath, std::string_view sSection, std::string_view sKey,
                                    std::string_view sDefault);
/// One key into a file. The file is re-read, changed and replaced under a clsFileLock, so that two processes never lose
/// each other's keys. A failure is silent: False.
bool WritePrivateProfileString(std::string_view sPath, std::string_view sSection, std::string_view sKey,
                               std::string_view sValue);
/// A batch of keys in one such step.
struct IniEntry {
  std::string sSection, sKey, sValue;
};
/// pPage as for clsIniFile.
bool WritePrivateProfileStrings(std::string_view sPath, const std::vector<IniEntry>& entries,
                                const clsCodePage* pPage = &clsCodePage::Windows1252());
/// Any change that depends on what the file holds by then, in one such step.
bool ChangePrivateProfile(std::string_view sPath, const std::function<void(clsIniFile&)>& change,
                          const clsCodePage* pPage = &clsCodePage::Windows1252());

}  // namespace quillon
