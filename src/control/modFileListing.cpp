#include "modFileListing.h"

#include "CFileSearch.h"
#include "modCollections.h"
#include "modTranslator.h"

namespace quillon {

void BuildFileListing(std::string_view sFilePath, bool bDoSubfolders, std::vector<std::string>& clnFiles,
                      std::string& sErr, bool bSort, bool& bResult, std::string* pNotSearched) {
  bResult = true;
  CFileSearch search;
  int32_t result = 0;
  search.BuildFileList(sFilePath, bDoSubfolders, true, result);
  clnFiles.reserve(clnFiles.size() + search.Files().size());
  for (const CFile& file : search.Files()) clnFiles.push_back(file.filename);
  if (result != 0 && clnFiles.empty()) {
    sErr = Translate("An error occured while searching for files: ") + std::to_string(search.LastErrorNumber()) +
           " : " + search.LastErrorDescription();
  }
  if (result != 0 && pNotSearched != nullptr) {
    *pNotSearched = search.LastErrorFolder() + ": " + search.LastErrorDescription();
  }
  if (bSort && bResult) clnFiles = SortCollection(clnFiles, false);
}

}  // namespace quillon
