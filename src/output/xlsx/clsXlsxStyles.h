#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "modFormatKinds.h"

namespace quillon {

class clsXmlScanner;

/// The styles part of an existing workbook. What it holds stays byte by byte; cell formats that a run needs are added
/// behind the others.
class clsXlsxStyles {
 public:
  /// False if the part is damaged.
  bool Load(std::string sBytes);

  /// Number of cell formats; a cell's "s" counts from 0.
  size_t Count() const { return formats_.size(); }
  /// The file is this program's own work, and no person's: what an earlier report made of its cells binds no text of
  /// the next one. KindToKeep is General from here on.
  void TakeAsOwn() { bOwn_ = true; }
  /// The kind that a text to be written must fit.
  FormatKind KindToKeep(uint32_t nFormat) const { return bOwn_ ? FormatKind::General : KindOf(nFormat); }
  FormatKind KindOf(uint32_t nFormat) const { return nFormat < kinds_.size() ? kinds_[nFormat] : FormatKind::General; }
  bool IsOwn() const { return bOwn_; }
  /// The code of a cell format's number format; "" for one that isn't known.
  std::string_view CodeOf(uint32_t nFormat) const;
  /// True for two cell formats with one number format.
  bool SameCode(uint32_t nFormat, uint32_t nOther) const {
    return nFormat < codeIds_.size() && nOther < codeIds_.size() && codeIds_[nFormat] == codeIds_[nOther];
  }
  /// In a file of our own the format of its headings; the plain one if it has none.
  uint32_t Heading() const;
  /// The format of a cell whose value needs none: nFormat, or in a file of our own the like with General.
  uint32_t Plain(uint32_t nFormat);
  /// The cell format that is like nFormat but for its number format; -1 if there is no room for another one.
  int64_t Derive(uint32_t nFormat, std::string_view sCode);

  bool Changed() const { return !newFormats_.empty(); }
  /// The part with what was added.
  std::string Bytes() const;

 private:
  struct Place {
    size_t nStart = 0, nEnd = 0;  ///< The start tag
    size_t nClose = 0;            ///< The end tag; the end of the tag for an empty one
    bool bFound = false;
    bool bEmpty = false;
    size_t nItems = 0;
    bool bOpen = false;  ///< Its end tag was not seen yet
  };
  Place* PlaceOf(const clsXmlScanner& scanner);
  bool NotePlace(const clsXmlScanner& scanner, Place& place);
  void TakeCode(const clsXmlScanner& scanner);
  uint32_t FormatId(std::string_view sCode);
  bool TakeFormat(std::string sXf, uint32_t nFormatId);
  void AppendList(const Place& place, size_t nNew, std::string_view sNew, std::string& sOut) const;

  bool bOwn_ = false;
  std::string sBytes_;
  std::string sPrefix_;
  Place root_, codesPlace_, formatsPlace_;
  std::unordered_map<uint32_t, std::string> codes_;
  std::unordered_map<std::string, uint32_t> idOfCode_;
  uint32_t nNextId_ = 164;
  std::vector<std::string> formats_;  ///< Each "xf" element as it stands
  std::vector<FormatKind> kinds_;
  std::vector<uint32_t> codeIds_;  ///< The number of each one's number format
  std::unordered_map<std::string, uint32_t> indexOfFormat_;
  std::unordered_map<std::string, int64_t> derived_;  ///< By format and code
  std::string sNewCodes_;
  size_t nNewCodes_ = 0;
  std::vector<std::string> newFormats_;
};

}  // namespace quillon
