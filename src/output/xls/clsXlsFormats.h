#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "modFormatKinds.h"
#include "modXlsRecords.h"

namespace quillon {

/// Cell formats (XF) and number formats (FORMAT) of a workbook, and those that a run adds to them.
class clsXlsFormats {
 public:
  /// Takes what the file has, in the order of its records.
  void AddExistingFormat(std::string_view sRecordData);
  void AddExistingXf(std::string_view sRecordData) { xfs_.emplace_back(sRecordData); }
  void AddExistingXfExt(std::string_view sRecordData) { extensions_.emplace_back(sRecordData); }
  std::string_view XfData(size_t nXf) const { return xfs_[nXf]; }
  size_t XfCount() const { return xfs_.size(); }

  /// The file is this program's own work, and no person's: what an earlier report made of its cells binds no text of
  /// the next one. KindToKeep is General from here on.
  void TakeAsOwn() { bOwn_ = true; }

  uint16_t NumberFormatOf(uint16_t nXf) const { return nXf < xfs_.size() ? GetU16(xfs_[nXf], 2) : uint16_t{0}; }
  /// What the number format of an XF shows.
  FormatKind KindOf(uint16_t nXf) const;
  bool IsOwn() const { return bOwn_; }
  /// The code of an XF's number format; "" for one that isn't known.
  std::string_view CodeOf(uint16_t nXf) const;
  /// The kind that a text to be written must fit.
  FormatKind KindToKeep(uint16_t nXf) const { return bOwn_ ? FormatKind::General : KindOf(nXf); }
  /// Format of cells that have none: the standard one, or the first that is for cells where the file's differ.
  uint16_t DefaultXf() const;
  /// The XF of a cell whose value needs no format: nXf, or in a file of our own the like with General.
  uint16_t Plain(uint16_t nXf);
  /// The XF that is as nXf but for its number format ("": Plain's); -1 if the workbook can hold no more of them.
  int WithNumberFormat(uint16_t nXf, std::string_view sCode);

  /// The XF that is as nXf but for the font of headings; nXf itself in a workbook that has none.
  uint16_t Heading(uint16_t nXf);
  void SetHeadingFont(uint16_t nFont) { nHeadingFont_ = nFont; }
  bool HasHeadings() const { return nHeadingXf_ != 0; }
  const std::string& AddedFormats() const { return sAddedFormats_; }  ///< FORMAT records
  const std::string& AddedXfs() const { return sAddedXfs_; }          ///< XF records
  /// XFEXT records for added XFs whose model has one (colours that XF itself can't say).
  std::string AddedExtensions() const;
  /// Checksum of the XF records, as XFCRC holds it; of the first nCount.
  uint32_t XfChecksum(size_t nCount) const;

 private:
  int FormatId(std::string_view sCode);
  int Make(uint16_t nXf, int nFormat);
  uint16_t Add(std::string sXf, uint16_t nModel);

  bool bOwn_ = false;
  std::vector<std::string> xfs_;
  std::vector<std::string> extensions_;
  std::map<uint16_t, std::string> codes_;
  std::map<std::string, uint16_t, std::less<>> ids_;
  uint16_t nNextId_ = 164;
  uint16_t nHeadingFont_ = 0, nHeadingXf_ = 0;
  std::map<std::pair<uint16_t, uint16_t>, uint16_t> made_;  ///< XF and number format to XF
  std::vector<std::pair<uint16_t, uint16_t>> models_;       ///< Added XF and its model
  std::string sAddedFormats_, sAddedXfs_;
  /// Answers given of late.
  struct Answer {
    uint16_t nXf = 0;
    int nResult = -1;
    std::string sCode;
  };
  std::array<Answer, 32> recent_;
};

}  // namespace quillon
