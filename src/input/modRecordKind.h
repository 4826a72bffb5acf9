#pragma once
// What kind of records a file holds: as the choices say, and where they leave it open, as its bytes do.

#include <cstdint>
#include <string>
#include <string_view>

#include "clsRecordMaker.h"
#include "modInputOptions.h"

namespace quillon {

/// What a file begins with, and how long it is (0: unknown): all that is looked at.
struct FileBeginning {
  std::string_view sHead;
  int64_t nBytes = 0;
};
constexpr size_t kBeginningBytes = size_t{64} << 10;

/// True if every byte is one of an EBCDIC text and none speaks of another. Lengths in front of records count as such.
bool LooksLikeEbcdic(std::string_view sHead);

/// False with the reason if the bytes don't tell what the choices leave open.
bool FindRecordKind(const FileBeginning& file, const InputOptions& options, RecordKind& kind, std::string& sFault);

}  // namespace quillon
