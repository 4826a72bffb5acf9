// OpenZipMember of modPacked.

#include <unistd.h>
#include <zip.h>

#include <cerrno>
#include <string>

#include "modPacked.h"
#include "modTranslator.h"

namespace quillon {

namespace {

struct CloseArchive {
  void operator()(zip_t* pArchive) const { zip_discard(pArchive); }
};
struct CloseMember {
  void operator()(zip_file_t* pMember) const { zip_fclose(pMember); }
};

Failure ZipFailure(std::string_view sPath, std::string_view sText) {
  return OwnFailure(sPath, "zip: " + std::string(sText));
}

class clsZipMember : public clsByteSource {
 public:
  clsZipMember(std::string_view sPath, std::unique_ptr<zip_t, CloseArchive> archive,
               std::unique_ptr<zip_file_t, CloseMember> member, int64_t nPacked, uint64_t nWhole)
      : sPath_(sPath), archive_(std::move(archive)), member_(std::move(member)), nPacked_(nPacked), nWhole_(nWhole) {}

  size_t Read(char* pBytes, size_t nBytes) override {
    const zip_int64_t nGot = zip_fread(member_.get(), pBytes, nBytes);
    // The library compares the check sum with the last read, but not the size.
    if (nGot < 0 || (nGot == 0 && nRead_ != nWhole_)) failure_ = ZipFailure(sPath_, Translate("the file is damaged"));
    nRead_ += static_cast<uint64_t>(std::max<zip_int64_t>(nGot, 0));
    return failure_.Failed() ? 0 : static_cast<size_t>(nGot);
  }
  int64_t BytesTaken() const override { return nPacked_; }

 private:
  std::string sPath_;
  std::unique_ptr<zip_t, CloseArchive> archive_;
  std::unique_ptr<zip_file_t, CloseMember> member_;
  int64_t nPacked_;
  uint64_t nWhole_;
  uint64_t nRead_ = 0;
};

/// The one entry that is no folder; -1 if there is none, -2 if there are several.
zip_int64_t OnlyFile(zip_t* pArchive) {
  zip_int64_t nFound = -1;
  const zip_int64_t nEntries = zip_get_num_entries(pArchive, 0);
  for (zip_int64_t i = 0; i < nEntries; ++i) {
    const char* const pName = zip_get_name(pArchive, static_cast<zip_uint64_t>(i), ZIP_FL_ENC_RAW);
    if (pName == nullptr || std::string_view(pName).ends_with('/')) continue;
    if (nFound >= 0) return -2;
    nFound = i;
  }
  return nFound;
}

}  // namespace

std::unique_ptr<clsByteSource> OpenZipMember(int nHandle, std::string_view sPath, Failure& failure) {
  // The library closes what it is given, and reads from where the handle stands.
  const std::string sAgain = "/proc/self/fd/" + std::to_string(nHandle);
  int nError = 0;
  std::unique_ptr<zip_t, CloseArchive> archive(zip_open(sAgain.c_str(), ZIP_RDONLY, &nError));
  const zip_int64_t nOnly = archive != nullptr ? OnlyFile(archive.get()) : -1;
  if (archive == nullptr) {
    failure = ZipFailure(sPath, Translate("the file is damaged"));
  } else if (nOnly == -1) {
    failure = ZipFailure(sPath, Translate("the archive is empty"));
  } else if (nOnly == -2) {
    failure = ZipFailure(sPath, Translate("the archive holds more than one file; unpack it first"));
  }
  if (failure.Failed()) return nullptr;

  zip_stat_t info{};
  const auto nIndex = static_cast<zip_uint64_t>(nOnly);
  if (zip_stat_index(archive.get(), nIndex, 0, &info) != 0) info.valid = 0;
  std::unique_ptr<zip_file_t, CloseMember> member(zip_fopen_index(archive.get(), nIndex, 0));
  const bool bSized = (info.valid & ZIP_STAT_SIZE) != 0 && (info.valid & ZIP_STAT_COMP_SIZE) != 0;
  if (member != nullptr && bSized) {
    return std::make_unique<clsZipMember>(sPath, std::move(archive), std::move(member),
                                          static_cast<int64_t>(info.comp_size), info.size);
  }
  const int nCode = zip_error_code_zip(zip_get_error(archive.get()));
  const bool bSecret = nCode == ZIP_ER_NOPASSWD || nCode == ZIP_ER_WRONGPASSWD;
  failure = ZipFailure(sPath, bSecret ? Translate("the file is locked by a password; unpack it first")
                                      : Translate("the file is damaged"));
  return nullptr;
}

}  // namespace quillon
