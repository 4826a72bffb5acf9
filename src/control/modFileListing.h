#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// Appends the files that a wildcard path names to clnFiles, which is then sorted without regard to case (bSort). A
/// search that found nothing because it failed sets sErr. bResult is True whatever happened. pNotSearched gets a folder
/// that could not be searched, with the reason, if there was one.
void BuildFileListing(std::string_view sFilePath, bool bDoSubfolders, std::vector<std::string>& clnFiles,
                      std::string& sErr, bool bSort, bool& bResult, std::string* pNotSearched = nullptr);

}  // namespace quillon
