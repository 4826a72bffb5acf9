#pragma once
// The zip package of an existing workbook, read part by part.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "clsPartReader.h"
#include "clsXmlScanner.h"
#include "modFailure.h"

struct zip;

namespace quillon {

/// One relationship; the target is a part's name, or an address as it stands when external.
struct Relationship {
  std::string sId;
  std::string sType;  ///< The last piece of its type: "worksheet"
  std::string sTarget;
  bool bExternal = false;
};

/// Refuses what could do harm before any part is read: encrypted entries, other packing than deflate, too many, too
/// large or unbelievably packed ones, names that climb out of the package or come twice.
class clsXlsxPackage {
 public:
  static constexpr size_t kMaxParts = 20000;
  static constexpr uint64_t kMaxTotalBytes = uint64_t{8} << 30;
  /// Parts that are held in memory as a whole.
  static constexpr size_t kMaxSmallPart = size_t{64} << 20;

  clsXlsxPackage() = default;
  clsXlsxPackage(const clsXlsxPackage&) = delete;
  clsXlsxPackage& operator=(const clsXlsxPackage&) = delete;
  ~clsXlsxPackage();

  bool Open(const std::string& sHostPath, Failure& failure);
  const std::string& Path() const { return sPath_; }
  const std::vector<PackagePart>& Parts() const { return parts_; }
  /// By name without regard to case; a leading "/" is passed over.
  std::optional<size_t> Find(std::string_view sName) const;
  /// The part's text, or its packed bytes as they stand in the file. Null on failure.
  std::unique_ptr<clsPartReader> Read(size_t nPart, bool bPacked = false) const;
  /// True if this program was the last to write the package.
  bool IsOwnWork() const;
  bool ReadAll(size_t nPart, std::string& sBytes, Failure& failure) const;
  /// A scanner of the part.
  clsXmlScanner Scan(size_t nPart) const;
  /// Relationships of a part ("" is the package); none if it has none. False if they can't be read.
  bool ReadRelationships(std::string_view sPart, std::vector<Relationship>& relationships, Failure& failure) const;
  /// Part that holds them.
  std::optional<size_t> FindRelationshipsOf(std::string_view sPart) const;
  Failure Damaged(std::string_view sPart) const;

 private:
  bool TakeEntry(uint64_t nIndex, Failure& failure);

  zip* pZip_ = nullptr;
  std::string sPath_;
  std::vector<PackagePart> parts_;
  std::unordered_map<std::string, size_t> byName_;
};

}  // namespace quillon
