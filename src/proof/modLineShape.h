#pragma once
// What a line looks like, whatever it says.

#include <string>
#include <string_view>

namespace quillon {

/// The line with each digit as 9 and each letter as A, runs of letters and blanks shortened: "9999 AAAA 999.99". For
/// people; no longer than some 60 characters.
std::string LineShape(std::string_view sLine);

/// What lines of one shape have in common: the kinds of their words, single blanks and gaps between them, and roughly
/// where they begin.
std::string LineShapeKey(std::string_view sLine);

/// Whether a line may be a row of some table: it has several figures with gaps in front of them, or many, and more of
/// them than texts.
bool HasSeveralFigures(std::string_view sLine);
/// Whether its figures count columns: 1 2 3, or name years: 2023 2022.
bool CountsColumns(std::string_view sLine);

}  // namespace quillon
