#pragma once
// Temporary files and folders that have a name, and what killed runs left of them. The one who makes such an entry
// holds flock on it for as long as it is needed.

#include <string>
#include <string_view>

namespace quillon {

/// The prefix with six characters by chance. A prefix must be one that nobody else gives to what is theirs.
std::string LeftoverName(std::string_view sPrefix);

/// Removes the entries of the folder (host path, "" for the current one) that have a LeftoverName, belong to this user,
/// have rested for ten minutes and are held by nobody. A maker that had not come to its lock by then finds its entry
/// without a link and makes another.
void RemoveLeftovers(const std::string& sFolder, std::string_view sPrefix);

}  // namespace quillon
