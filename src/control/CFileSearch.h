#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "modPathMatch.h"

namespace quillon {

/// One found file.
struct CFile {
  std::string filename;  ///< Full path, in the form that the search was given
  int32_t FileSize = 0;  ///< Low 32 bits of the size in bytes
};

/// Walks a folder tree and keeps the files whose names match a mask. Failures are numbers and texts, never exceptions.
class CFileSearch {
 public:
  /// Splits the path behind its last separator into folder and mask and searches. lResult: 0 or an error number; a path
  /// without folder or mask gives one of the kSearch numbers below.
  void BuildFileList(std::string_view sFilePath, bool bSearchSubfolders, bool bContinueOnError, int32_t& lResult);
  /// The search proper. bExclude finds the files that the mask doesn't match.
  void BuildFileList1(std::string_view spath, std::string_view sFileMask, bool bSearchSubfolders, bool bExclude,
                      bool bContinueOnError, int32_t& lResult);

  int32_t TotalSearched() const { return lTotalSearched_; }
  int32_t TotalFound() const { return static_cast<int32_t>(files_.size()); }
  float ElapsedTime() const { return fElapsedTime_; }  ///< Seconds, to two decimals
  /// In the order of the walk: by name within a folder, a subfolder's files where its name stands.
  const std::vector<CFile>& Files() const { return files_; }
  int32_t LastErrorNumber() const { return lLastErrorNumber_; }
  const std::string& LastErrorDescription() const { return sLastErrorDescription_; }
  const std::string& LastErrorFolder() const { return sLastErrorFolder_; }  ///< "" if it came from no folder

 private:
  struct Entry;
  void Walk(const std::string& sFolder);
  /// The folder's entries by name; False if it can't be read or the walk is in it already.
  bool ReadFolder(const std::string& sFolder, std::vector<Entry>& entries);
  void NoteFailure(const std::string& sFolder, int nError);
  void Refuse(uint32_t lNumber, std::string_view sText, int32_t& lResult);

  bool bSearchSubfolders_ = false;
  bool bMatchValue_ = true;  ///< What a name's match must come to
  bool bContinueOnError_ = true;
  clsPathMatch mask_;
  int32_t lTotalSearched_ = 0;
  float fElapsedTime_ = 0;
  std::vector<CFile> files_;
  std::vector<std::pair<uint64_t, uint64_t>> above_;  ///< Device and number of the folders that the walk is in
  int32_t lLastErrorNumber_ = 0;
  std::string sLastErrorDescription_;
  std::string sLastErrorFolder_;
};

constexpr uint32_t kSearchNoMask = 0x80040201;
constexpr uint32_t kSearchNoFolder = 0x80040202;
constexpr uint32_t kSearchTooShort = 0x80040203;

}  // namespace quillon
