#pragma once
// Results of ConvertFile and the words for them.

#include <array>
#include <cstdint>
#include <string_view>

namespace quillon {

/// What ConvertFile gives back. Attributes is positive by the interface's rule; the caller treats it as a failure.
enum class EngineResult : int32_t {
  Done = 0,
  Attributes = 6,  ///< The output can't be written because of its attributes
  InputType = -1,
  InputUnreadable = -2,
  OutputType = -3,
  OutputUnwritable = -4,
  TooManyColumns = -5,
  CellRefused = -6,
  ColumnNumber = -7,  ///< Of an option, not of ConvertFile
  StartCell = -8,     ///< Of OptXLSRangeSet: A1 is taken instead
  Stopped = -9,
};

struct EngineMessage {
  EngineResult result;
  std::string_view sText;  ///< English; what it is about follows in brackets or behind a colon
};

inline constexpr std::array<EngineMessage, 10> kEngineMessages{{
    {EngineResult::Attributes, "The output file can't be written because of its attributes"},
    {EngineResult::InputType, "Unknown type of input file, expected 21 (single-byte text) or 42 (UTF-16 text)"},
    {EngineResult::InputUnreadable, "The input file can't be read"},
    {EngineResult::OutputType, "Unknown type of output file, expected a name with .CSV, .XLS or .XLSX"},
    {EngineResult::OutputUnwritable, "The output file can't be written"},
    {EngineResult::TooManyColumns, "The profile has more columns than a sheet of this kind holds"},
    {EngineResult::CellRefused, "The sheet can't hold the report, nothing was written; CSV has no such limits"},
    {EngineResult::ColumnNumber, "A column number from 1 to 32767 is expected"},
    {EngineResult::StartCell, "The start cell is no cell reference such as B4, so A1 was taken"},
    {EngineResult::Stopped, "Stopped before the end, nothing was written"},
}};

}  // namespace quillon
