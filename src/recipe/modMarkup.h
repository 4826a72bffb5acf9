#pragma once

#include <cstdint>

#include "clsLineReader.h"
#include "clsSectionWriter.h"

namespace quillon {

/// Writes a short recipe of the tables that marks enclose, from the reader's place on. Returns their number.
/// lWithoutEnd: the line of a table that begins and has no end, or 0.
int32_t WriteRecipeOfMarks(clsLineReader& reader, clsSectionWriter& file, int64_t& lWithoutEnd);

}  // namespace quillon
