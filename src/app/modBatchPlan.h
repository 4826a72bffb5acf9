#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "clsLongRun.h"
#include "modConversionRun.h"
#include "modLongOptions.h"

namespace quillon {

/// Finds the inputs of a command and names an output for each. The part of an input's path behind its pattern's folder
/// is mirrored under OUTPUT's folder, and the "*" of OUTPUT becomes the input's base name. Nothing is touched yet.
///
/// False if the command as a whole can't be carried out, which has been said: an output of no known type, many inputs
/// and one output, two inputs with one output (by case at least), an output that is an input (or the recipe), with
/// shards or a result list an output or list that a pattern would find the next time. A pattern that finds nothing is
/// said and counted as a failure.
bool PlanBatch(const ConvertRequest& request, clsLongRun& run, std::vector<PlannedFile>& files);

/// OUTPUT's path for one input. sRelative: folder of the input below its pattern's folder, with its separator, or "".
std::string OutputPathFor(std::string_view sOutput, std::string_view sInput, std::string_view sRelative,
                          bool bBesideInput);

}  // namespace quillon
