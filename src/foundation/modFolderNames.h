#pragma once
// Which names a folder has, remembered so that a batch which makes thousands of files in it doesn't list it for each.

#include <string>
#include <string_view>

namespace quillon {

/// False: the folder has no entry that equals the name when case is ignored. True: it may have one. The listing behind
/// it is kept for as long as the folder's time of change stays. Host paths.
bool MayHoldName(const std::string& sFolder, std::string_view sName);

/// This process has made, renamed to or removed this path: what is known of its folder stays valid.
void NoteOwnChange(std::string_view sHostPath);

}  // namespace quillon
