#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "clsHost.h"
#include "modProfileFile.h"

namespace quillon {

/// The largest number of columns that any profile has given the engine in this process. Columns beyond a shorter
/// profile are closed up to here, so that none of a longer, earlier one survives.
extern int32_t lMostColumnsAssigned;

/// Results of AssignFixedWidthAttributes.
enum ProfileStatus : int32_t { kProfileDone = 0, kProfileMissing = -1, kProfileBad = -2 };

/// Gives the columns of a profile (a path or a name) to the engine. bInputSide: as widths of the input, else of the
/// output. bTrimInputTextFilesPadCharacter: pads are trimmed on the side where they stand in the input, the opposite of
/// the column's alignment. On kProfileBad columns given before stay given and fault says what is wrong where. Every
/// 1000 lines events are let run.
int32_t AssignFixedWidthAttributes(std::string_view sProfile, bool bInputSide, bool bTrimInputTextFilesPadCharacter,
                                   clsHost& host, ProfileFault& fault);

}  // namespace quillon
