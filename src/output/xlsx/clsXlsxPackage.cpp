#include "clsXlsxPackage.h"

#include <fcntl.h>
#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <cerrno>

#include "modOutputMessages.h"
#include "modSystemIo.h"
#include "modText.h"
#include "modXlsxParts.h"

namespace quillon {

namespace {

// Deflate can't pack more than about 1,030 to 1, and a sheet whose rows are numbered not nearly so much.
constexpr uint64_t kMaxRatio = 300;
constexpr uint64_t kRatioMatters = uint64_t{16} << 20;

/// Only parts that are unpacked can do harm; a blank picture may well be packed like that.
bool IsBomb(const PackagePart& part) {
  const std::string sExtension = UpperText(part.sName.substr(std::min(part.sName.rfind('.'), part.sName.size())));
  const bool bUnpacked = sExtension == ".XML" || sExtension == ".RELS" || sExtension == ".VML";
  return bUnpacked && part.nSize > kRatioMatters && part.nSize / kMaxRatio > part.nPacked;
}

bool ClimbsOut(std::string_view sName) {
  if (sName.empty() || sName[0] == '/' || sName[0] == '\\' || sName.find(':') != std::string_view::npos) return true;
  for (size_t nStart = 0; nStart <= sName.size();) {
    const size_t nEnd = std::min(sName.find_first_of("/\\", nStart), sName.size());
    if (sName.substr(nStart, nEnd - nStart) == "..") return true;
    nStart = nEnd + 1;
  }
  return false;
}

/// The part that the target names, seen from the folder of the part that holds it.
std::string ResolveTarget(std::string_view sPart, std::string_view sTarget) {
  std::string sPath;
  if (!sTarget.starts_with('/')) sPath = sPart.substr(0, sPart.rfind('/') + 1);
  sPath += sTarget;
  std::vector<std::string_view> pieces;
  for (size_t nStart = 0; nStart <= sPath.size();) {
    const size_t nEnd = std::min(sPath.find('/', nStart), sPath.size());
    const std::string_view sPiece = std::string_view(sPath).substr(nStart, nEnd - nStart);
    if (sPiece == "..") {
      if (!pieces.empty()) pieces.pop_back();
    } else if (!sPiece.empty() && sPiece != ".") {
      pieces.push_back(sPiece);
    }
    nStart = nEnd + 1;
  }
  std::string sResult;
  for (const std::string_view sPiece : pieces) {
    if (!sResult.empty()) sResult += '/';
    sResult += sPiece;
  }
  return sResult;
}

}  // namespace

clsXlsxPackage::~clsXlsxPackage() {
  if (pZip_ != nullptr) zip_discard(pZip_);
}

Failure clsXlsxPackage::Damaged(std::string_view sPart) const {
  return OutputFailure(sPath_ + ": " + std::string(sPart), OutputMessage::Damaged);
}

bool clsXlsxPackage::Open(const std::string& sHostPath, Failure& failure) {
  sPath_ = sHostPath;
  const int nHandle = OpenHandle(sHostPath, O_RDONLY);
  if (nHandle < 0) {
    failure = SystemFailure(sHostPath, errno);
    return false;
  }
  int nError = 0;
  pZip_ = zip_fdopen(nHandle, 0, &nError);
  if (pZip_ == nullptr) {
    close(nHandle);  // Else it is the library's.
    failure = nError == ZIP_ER_OPEN || nError == ZIP_ER_READ ? SystemFailure(sHostPath, errno != 0 ? errno : EIO)
                                                             : OutputFailure(sHostPath, OutputMessage::Damaged);
    return false;
  }
  const zip_int64_t nEntries = zip_get_num_entries(pZip_, 0);
  if (nEntries > static_cast<zip_int64_t>(kMaxParts)) {
    failure = OutputFailure(sHostPath, OutputMessage::TooLarge);
    return false;
  }
  for (zip_int64_t i = 0; i < nEntries; ++i)
    if (!TakeEntry(static_cast<uint64_t>(i), failure)) return false;
  uint64_t nTotal = 0;
  for (const PackagePart& part : parts_) nTotal += std::min(part.nSize, kMaxTotalBytes);
  if (nTotal > kMaxTotalBytes) failure = OutputFailure(sHostPath, OutputMessage::TooLarge);
  return !failure.Failed();
}

bool clsXlsxPackage::TakeEntry(uint64_t nIndex, Failure& failure) {
  zip_stat_t status;
  constexpr zip_uint64_t kWanted = ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_CRC |
                                   ZIP_STAT_COMP_METHOD | ZIP_STAT_ENCRYPTION_METHOD;
  if (zip_stat_index(pZip_, nIndex, ZIP_FL_ENC_RAW, &status) != 0 || (status.valid & kWanted) != kWanted) {
    failure = OutputFailure(sPath_, OutputMessage::Damaged);
    return false;
  }
  PackagePart part{status.name, status.size, status.comp_size, status.crc, status.comp_method};
  const bool bPackedKnown = part.nMethod == ZIP_CM_STORE || part.nMethod == ZIP_CM_DEFLATE;
  if (status.encryption_method != ZIP_EM_NONE) {
    failure = OutputFailure(sPath_, OutputMessage::Encrypted);
  } else if (IsBomb(part)) {
    failure = OutputFailure(sPath_, OutputMessage::TooLarge);
  } else if (!bPackedKnown || ClimbsOut(part.sName) || !byName_.emplace(UpperText(part.sName), parts_.size()).second) {
    failure = Damaged(part.sName);
  }
  parts_.push_back(std::move(part));
  return !failure.Failed();
}

std::optional<size_t> clsXlsxPackage::Find(std::string_view sName) const {
  if (sName.starts_with('/')) sName.remove_prefix(1);
  const auto found = byName_.find(UpperText(sName));
  return found == byName_.end() ? std::nullopt : std::optional(found->second);
}

std::unique_ptr<clsPartReader> clsXlsxPackage::Read(size_t nPart, bool bPacked) const {
  zip_file_t* const pFile = zip_fopen_index(pZip_, nPart, ZIP_FL_COMPRESSED);
  return pFile == nullptr ? nullptr : std::make_unique<clsPartReader>(pFile, parts_[nPart], bPacked);
}

bool clsXlsxPackage::IsOwnWork() const {
  const auto nPart = Find("docProps/app.xml");
  std::string sBytes;
  Failure ignored;
  return nPart && ReadAll(*nPart, sBytes, ignored) && sBytes.find(kOwnApplication) != std::string::npos;
}

bool clsXlsxPackage::ReadAll(size_t nPart, std::string& sBytes, Failure& failure) const {
  const PackagePart& part = parts_[nPart];
  const auto reader = part.nSize <= kMaxSmallPart ? Read(nPart) : nullptr;
  if (reader == nullptr) {
    failure = part.nSize > kMaxSmallPart ? OutputFailure(sPath_ + ": " + part.sName, OutputMessage::TooLarge)
                                         : Damaged(part.sName);
    return false;
  }
  sBytes.resize(part.nSize);
  size_t nRead = 0;
  int64_t nNow = 0;
  while (nRead < sBytes.size() && (nNow = reader->Read(sBytes.data() + nRead, sBytes.size() - nRead)) > 0)
    nRead += static_cast<size_t>(nNow);
  // The read behind the last byte is the one that checks the sum.
  char chBehind = 0;
  if (nRead == sBytes.size() && nNow >= 0 && reader->Read(&chBehind, 1) == 0) return true;
  failure = Damaged(part.sName);
  return false;
}

clsXmlScanner clsXlsxPackage::Scan(size_t nPart) const {
  std::shared_ptr<clsPartReader> reader = Read(nPart);
  return clsXmlScanner([reader](char* pBuffer, size_t nBytes) -> int64_t {
    return reader == nullptr ? -1 : reader->Read(pBuffer, nBytes);
  });
}

std::optional<size_t> clsXlsxPackage::FindRelationshipsOf(std::string_view sPart) const {
  const size_t nName = sPart.rfind('/') + 1;
  return Find(std::string(sPart.substr(0, nName)) + "_rels/" + std::string(sPart.substr(nName)) + ".rels");
}

bool clsXlsxPackage::ReadRelationships(std::string_view sPart, std::vector<Relationship>& relationships,
                                       Failure& failure) const {
  const auto nPart = FindRelationshipsOf(sPart);
  if (!nPart) return true;
  std::string sBytes;
  if (!ReadAll(*nPart, sBytes, failure)) return false;
  clsXmlScanner scanner(sBytes);
  while (scanner.Next() != XmlToken::End) {
    if (scanner.Token() == XmlToken::Failed) {
      failure = Damaged(parts_[*nPart].sName);
      return false;
    }
    if (!scanner.IsOpening() || scanner.LocalName() != "Relationship" || scanner.Depth() != 2) continue;
    Relationship& relationship = relationships.emplace_back();
    relationship.sId = scanner.AttributeText("Id");
    const std::string sType = scanner.AttributeText("Type");
    relationship.sType = sType.substr(sType.rfind('/') + 1);
    relationship.sTarget = scanner.AttributeText("Target");
    relationship.bExternal = scanner.AttributeText("TargetMode") == "External";
    if (!relationship.bExternal) relationship.sTarget = ResolveTarget(sPart, relationship.sTarget);
  }
  return true;
}

}  // namespace quillon
