#include "clsTidyMatcher.h"

#include <algorithm>
#include <array>

#include "modTidyValues.h"

namespace quillon {

bool HoldsAny(std::string_view sLine, const std::vector<std::string>& texts) {
  return std::any_of(texts.begin(), texts.end(),
                     [&](const std::string& sText) { return sLine.find(sText) != std::string_view::npos; });
}

bool IsOneOfTidyBlanks(std::string_view sCell, const std::vector<std::string>& blanks) {
  if (std::find(blanks.begin(), blanks.end(), sCell) != blanks.end()) return true;
  for (const std::string_view sSign : {"$", "\u00A3", "\u20AC", "\u00A5"}) {
    std::string_view sRest = sCell;
    if (sRest.starts_with(sSign)) sRest = TrimBlanks(sRest.substr(sSign.size()));
    if (sRest.ends_with(sSign)) sRest = TrimBlanks(sRest.substr(0, sRest.size() - sSign.size()));
    if (sRest.size() < sCell.size() && std::find(blanks.begin(), blanks.end(), sRest) != blanks.end()) return true;
  }
  return false;
}

clsTidyMatcher::clsTidyMatcher(const TidyPart& part) : part_(part) {
  for (const std::string& sLike : part.likes) pictures_.push_back(Compile(sLike));
  for (const TidyNeed& need : part.needs) known_.resize(std::max(known_.size(), need.column + 1));
}

clsTidyMatcher::Picture clsTidyMatcher::Compile(std::string_view sLike) {
  Picture picture;
  for (size_t i = 0; i < sLike.size();) {
    char32_t ch = DecodeUtf8(sLike, i);
    const bool bItself = ch == '\\' && i < sLike.size();
    if (bItself) ch = DecodeUtf8(sLike, i);
    const bool bKind =
        !bItself && ch < 0x80 && std::string_view("9AX_.").find(static_cast<char>(ch)) != std::string_view::npos;
    picture.push_back({bKind ? static_cast<char>(ch) : '=', ch});
  }
  return picture;
}

bool clsTidyMatcher::FitsStep(const clsTidyLine& line, size_t nPosition, const Step& step) {
  switch (step.kind) {
    case '9':
      return line.IsDigitAt(nPosition);
    case 'A':
      return line.IsLetterAt(nPosition);
    case 'X':
      return !line.IsBlankAt(nPosition);
    case '_':
      return line.IsBlankAt(nPosition);
    case '.':
      return true;
    default:
      break;
  }
  if (nPosition >= line.Size()) return step.ch == ' ';
  size_t nByte = line.Offset(nPosition);
  return DecodeUtf8(line.Text(), nByte) == step.ch;
}

bool clsTidyMatcher::FitsPicture(const clsTidyLine& line) const {
  if (pictures_.empty()) return true;
  return std::any_of(pictures_.begin(), pictures_.end(), [&](const Picture& picture) {
    for (size_t i = 0; i < picture.size(); ++i) {
      if (!FitsStep(line, i, picture[i])) return false;
    }
    return true;
  });
}

bool clsTidyMatcher::FitsNeeds(std::span<const std::string_view> cells) const {
  for (Known& known : known_) known.sCell = {};
  for (const TidyNeed& need : part_.needs) {
    if (!FitsNeed(need, need.column < cells.size() ? cells[need.column] : std::string_view())) return false;
  }
  return true;
}

size_t clsTidyMatcher::CountFailing(std::span<const std::string_view> cells, TidyColumn& failing) const {
  size_t nFailing = 0;
  for (const TidyNeed& need : part_.needs) {
    if (FitsNeed(need, need.column < cells.size() ? cells[need.column] : std::string_view())) continue;
    ++nFailing;
    failing = need.column;
  }
  return nFailing;
}

bool clsTidyMatcher::FitsNeed(const TidyNeed& need, std::string_view sCell) const {
  for (const TidyKindOrText& kind : need.alternatives) {
    if (FitsKind(kind, need.column, sCell)) return true;
  }
  return false;
}

bool clsTidyMatcher::FitsNumber(TidyColumn column, std::string_view sCell) const {
  Known& known = known_[column];
  if (!ReadTidyNumber(sCell, part_.TypeOf(column), &known.sPlain, known.number)) return false;
  known.sCell = sCell;
  return true;
}

bool clsTidyMatcher::FitsKind(const TidyKindOrText& kind, TidyColumn column, std::string_view sCell) const {
  if (kind.kind == TidyKind::Blank) return sCell.empty();
  if (sCell.empty()) return false;
  if (IsTidyBlank(sCell, part_.blanks)) return true;
  switch (kind.kind) {
    case TidyKind::Number:
      return FitsNumber(column, sCell);
    case TidyKind::Digits:
      return std::all_of(sCell.begin(), sCell.end(), IsAsciiDigit);
    case TidyKind::Date:
      return ReadTidyDate(sCell, part_.TypeOf(column).sDateForm, sPlain_);
    case TidyKind::Letters: {
      size_t nByte = 0;
      return IsTidyLetter(DecodeUtf8(sCell, nByte));
    }
    case TidyKind::Holds:
      return sCell.find(kind.sText) != std::string_view::npos;
    default:
      return true;
  }
}

}  // namespace quillon
