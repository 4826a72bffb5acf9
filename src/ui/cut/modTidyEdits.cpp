#include "modTidyEdits.h"

#include <algorithm>
#include <optional>

#include "modNumbers.h"
#include "modRecipeOfTables.h"
#include "modText.h"
#include "modTidyKeys.h"

namespace quillon {

namespace {

std::string LineEndOf(std::string_view sText) {
  return sText.find("\r\n") != std::string_view::npos || sText.find('\n') == std::string_view::npos ? "\r\n" : "\n";
}

/// A line of the text; nNext: where the next one begins.
struct TextLine {
  size_t nFrom = 0, nNext = 0;
  std::string_view sText;
};

TextLine LineFrom(std::string_view sRecipe, size_t nFrom) {
  const size_t nEnd = std::min(sRecipe.find('\n', nFrom), sRecipe.size());
  std::string_view sLine = sRecipe.substr(nFrom, nEnd - nFrom);
  if (sLine.ends_with('\r')) sLine.remove_suffix(1);
  return {nFrom, std::min(nEnd + 1, sRecipe.size()), sLine};
}

/// The name in a header, by the rules of section files; "" if the line is none.
std::string_view HeaderName(std::string_view sLine) {
  const size_t nOpen = sLine.find('[');
  const size_t nClose = nOpen == std::string_view::npos ? nOpen : sLine.find(']', nOpen);
  return nClose == std::string_view::npos ? std::string_view()
                                          : TrimBlanks(sLine.substr(nOpen + 1, nClose - nOpen - 1));
}

/// Where the lines of a section begin and end.
struct SectionPlace {
  size_t nFrom = 0, nEnd = 0;
};

std::optional<SectionPlace> PlaceOfSection(std::string_view sRecipe, std::string_view sSection) {
  std::optional<SectionPlace> place;
  for (size_t nAt = 0; nAt < sRecipe.size();) {
    const TextLine line = LineFrom(sRecipe, nAt);
    const bool bHeader = line.sText.find('[') != std::string_view::npos;
    if (place && bHeader) break;
    if (!place && bHeader && HeaderName(line.sText) == sSection) place = SectionPlace{line.nNext, line.nNext};
    if (place) place->nEnd = line.nNext;
    nAt = line.nNext;
  }
  return place;
}

std::optional<TextLine> LineOfKey(std::string_view sRecipe, const SectionPlace& place, std::string_view sKey) {
  for (size_t nAt = place.nFrom; nAt < place.nEnd;) {
    const TextLine line = LineFrom(sRecipe, nAt);
    const size_t nEqual = line.sText.find('=');
    if (nEqual != std::string_view::npos && TrimBlanks(line.sText.substr(0, nEqual)) == sKey) return line;
    nAt = line.nNext;
  }
  return std::nullopt;
}

class clsTidyEdits {
 public:
  explicit clsTidyEdits(std::string_view sRecipe) : sText_(sRecipe) {}

  void SetKey(const std::string& sSection, const std::string& sKey, const std::string& sValue) {
    const auto place = PlaceOfSection(sText_, sSection);
    if (!place) return;
    if (const auto line = LineOfKey(sText_, *place, sKey)) {
      const size_t nValue = sText_.find('=', line->nFrom) + 1;
      const size_t nEnd = std::min(sText_.find_first_of(";\r\n", nValue), sText_.size());
      return Do({nValue, nEnd - nValue, sValue});
    }
    const size_t nAt = LastKeyEnd(*place);
    const bool bOpen = nAt > 0 && sText_[nAt - 1] != '\n';
    Do({nAt, 0, (bOpen ? LineEndOf(sText_) : "") + sKey + "=" + sValue + LineEndOf(sText_)});
  }

  void RemoveKey(const std::string& sSection, const std::string& sKey) {
    const auto place = PlaceOfSection(sText_, sSection);
    const auto line = place ? LineOfKey(sText_, *place, sKey) : std::nullopt;
    if (line) Do({line->nFrom, line->nNext - line->nFrom, {}});
  }

  /// Behind the sections of the same table.
  void AddSection(const TidySection& section, const std::string& sNumber) {
    size_t nAt = sText_.size();
    for (size_t n = 0; n < sText_.size();) {
      const TextLine line = LineFrom(sText_, n);
      const std::string_view sName = HeaderName(line.sText);
      if (IsOf(sName, sNumber)) nAt = PlaceOfSection(sText_, sName)->nEnd;
      n = line.nNext;
    }
    const std::string sEnd = LineEndOf(sText_);
    std::string sAll = nAt > 0 && sText_[nAt - 1] != '\n' ? sEnd : std::string();
    sAll += "[" + section.sName + "]" + sEnd;
    for (const auto& [sKey, sValue] : section.keys) sAll += sKey + "=" + sValue + sEnd;
    Do({nAt, 0, std::move(sAll)});
  }

  void RemoveSection(const std::string& sSection) {
    const auto place = PlaceOfSection(sText_, sSection);
    if (!place) return;
    const size_t nHeader = sText_.rfind('[', place->nFrom - 1);
    const size_t nLine = nHeader == 0 ? 0 : sText_.rfind('\n', nHeader) + 1;
    Do({nLine, place->nEnd - nLine, {}});
  }

  std::vector<TextEdit> Take() { return std::move(edits_); }

 private:
  static bool IsOf(std::string_view sName, const std::string& sNumber) {
    return sName == "Table " + sNumber || sName.starts_with("Heading " + sNumber + ".") ||
           sName.starts_with("Line " + sNumber + ".");
  }
  /// Behind the last key, in front of blank lines and comments that end the section.
  size_t LastKeyEnd(const SectionPlace& place) const {
    size_t nEnd = place.nFrom;
    for (size_t n = place.nFrom; n < place.nEnd;) {
      const TextLine line = LineFrom(sText_, n);
      if (line.sText.find('=') != std::string_view::npos && !line.sText.starts_with(';')) nEnd = line.nNext;
      n = line.nNext;
    }
    return nEnd;
  }
  void Do(TextEdit edit) {
    sText_ = edit.Applied(sText_);
    edits_.push_back(std::move(edit));
  }

  std::string sText_;
  std::vector<TextEdit> edits_;
};

/// The headings or further lines of a table as its recipe calls them, whose numbers may leave some out.
struct WrittenParts {
  std::string sKind;  ///< "Heading 1."
  std::vector<std::string> names;
  int32_t lLast = 0;  ///< The highest number

  void Add(const TidySection& section, bool bListed) {
    if (bListed) names.push_back(section.sName);
    lLast = std::max(lLast, ParseWholeNumber(section.sName.substr(sKind.size())).value_or(0));
  }
  /// nKept: so many of the first sections are called in the recipe as they are here.
  void Rename(std::vector<TidySection>& sections, size_t nKept) const {
    size_t nPart = 0;
    for (TidySection& section : sections) {
      if (!section.sName.starts_with(sKind) || nPart++ < nKept) continue;
      const size_t n = nPart - nKept - 1;
      section.sName =
          n < names.size() ? names[n] : sKind + std::to_string(lLast + 1 + static_cast<int>(n - names.size()));
    }
  }
};

/// The sections of a table that was read from the recipe as `before`, or was changed since.
std::vector<TidySection> SectionsOf(const TidyTable& table, const TidyTable& before) {
  std::vector<TidySection> sections = SectionsOfText(RecipeOfTable(table, static_cast<size_t>(table.lNumber)));
  const std::string sNumber = std::to_string(before.lNumber);
  WrittenParts headings{"Heading " + sNumber + ".", {}};
  // The number of a line that nothing else finds is its distance.
  WrittenParts lines{"Line " + sNumber + ".", {}, 1};
  size_t nLine = 0;
  for (const TidySection& section : before.sections) {
    if (section.sName.starts_with(headings.sKind)) headings.Add(section, true);
    if (section.sName.starts_with(lines.sKind)) lines.Add(section, !before.lines[nLine++].IsByDistance());
  }
  headings.Rename(sections, 0);
  int32_t lFarthest = 0;
  for (const TidyFurtherLine& line : table.lines) {
    if (line.IsByDistance()) lFarthest = std::max(lFarthest, line.nDistance);
  }
  lines.Rename(sections, static_cast<size_t>(lFarthest));
  return sections;
}

const TidySection* Find(const std::vector<TidySection>& sections, std::string_view sName) {
  const auto found = std::find_if(sections.begin(), sections.end(), [&](const auto& s) { return s.sName == sName; });
  return found == sections.end() ? nullptr : &*found;
}

const std::string* Find(const TidySection& section, std::string_view sKey) {
  const auto found =
      std::find_if(section.keys.begin(), section.keys.end(), [&](const auto& k) { return k.first == sKey; });
  return found == section.keys.end() ? nullptr : &found->second;
}

void EditSection(const TidySection& before, const TidySection& after, clsTidyEdits& edits) {
  for (const auto& [sKey, sValue] : before.keys) {
    if (Find(after, sKey) == nullptr) edits.RemoveKey(before.sName, sKey);
  }
  for (const auto& [sKey, sValue] : after.keys) {
    const std::string* const pOld = Find(before, sKey);
    if (pOld == nullptr || *pOld != sValue) edits.SetKey(after.sName, sKey, sValue);
  }
}

}  // namespace

std::vector<TextEdit> TidyEdits(std::string_view sRecipe, const TidyTable& before, const TidyTable& after) {
  clsTidyEdits edits(sRecipe);
  const std::string sNumber = std::to_string(after.lNumber);
  if (!before.sParsing.empty() && after.sParsing.empty()) edits.RemoveKey("Table " + sNumber, "Parsing");
  const std::vector<TidySection> old = SectionsOf(before, before);
  const std::vector<TidySection> now = SectionsOf(after, before);
  for (const TidySection& section : old) {
    if (Find(now, section.sName) == nullptr) edits.RemoveSection(section.sName);
  }
  for (const TidySection& section : now) {
    const TidySection* const pOld = Find(old, section.sName);
    pOld == nullptr ? edits.AddSection(section, sNumber) : EditSection(*pOld, section, edits);
  }
  return edits.Take();
}

TextEdit AddedTable(std::string_view sRecipe, int32_t lTable) {
  const std::string sEnd = LineEndOf(sRecipe);
  const bool bOpen = !sRecipe.empty() && !sRecipe.ends_with('\n');
  return {sRecipe.size(), 0, (bOpen ? sEnd : "") + "[Table " + std::to_string(lTable) + "]" + sEnd};
}

}  // namespace quillon
