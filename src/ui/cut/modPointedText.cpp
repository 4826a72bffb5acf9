#include "modPointedText.h"

#include <algorithm>
#include <tuple>

#include "modLineMarks.h"
#include "modText.h"

namespace quillon {

namespace {

std::string Utf8(std::u32string_view sText) {
  std::string sOut;
  for (const char32_t ch : sText) AppendUtf8(ch, sOut);
  return sOut;
}

bool HoldsLetter(std::u32string_view sText) {
  return std::any_of(sText.begin(), sText.end(), IsLetterPlace);
}

int32_t Overlap(int32_t lFirst, int32_t lLast, const TidyPlace& place) {
  const int32_t lEnd = place.nEnd > 0 ? place.nEnd : std::max(lLast, place.nStart);
  return std::min(lLast, lEnd) - std::max(lFirst, place.nStart) + 1;
}

size_t ColumnUnder(int32_t lFirst, int32_t lLast, const std::vector<TidyPlace>& places) {
  const auto best = std::max_element(places.begin(), places.end(), [&](const TidyPlace& a, const TidyPlace& b) {
    return Overlap(lFirst, lLast, a) < Overlap(lFirst, lLast, b);
  });
  return static_cast<size_t>(best - places.begin());
}

/// Words of a piece with their places.
std::vector<TextPiece> WordsOfPiece(const TextPiece& piece) {
  std::vector<TextPiece> words;
  for (size_t i = 0; i < piece.sText.size();) {
    const size_t nEnd = std::min(piece.sText.find(U' ', i), piece.sText.size());
    const auto lFirst = piece.lFirst + static_cast<int32_t>(i);
    if (nEnd > i)
      words.push_back({lFirst, lFirst + static_cast<int32_t>(nEnd - i) - 1, piece.sText.substr(i, nEnd - i)});
    i = nEnd + 1;
  }
  return words;
}

}  // namespace

std::vector<TextPiece> PiecesOf(std::u32string_view sLine) {
  std::vector<LineMark> marks;
  FindMarks(sLine, marks);
  std::vector<TextPiece> pieces;
  for (const LineMark& mark : marks) {
    const bool bGoesOn = !pieces.empty() && mark.lStart + 1 - pieces.back().lLast <= 2;
    if (!bGoesOn) pieces.push_back({mark.lStart + 1, mark.lEnd + 1, {}});
    pieces.back().lLast = mark.lEnd + 1;
    pieces.back().sText = Characters(sLine, pieces.back().lFirst, pieces.back().lLast);
  }
  return pieces;
}

std::u32string_view Characters(std::u32string_view sLine, int32_t lFirst, int32_t lLast) {
  if (lFirst < 1 || lLast < lFirst || static_cast<size_t>(lFirst) > sLine.size()) return {};
  return TrimPlaces(sLine.substr(static_cast<size_t>(lFirst) - 1, static_cast<size_t>(lLast - lFirst) + 1));
}

std::vector<TidyPlace> PlacesOfPieces(std::u32string_view sLine) {
  std::vector<TidyPlace> places;
  for (const TextPiece& piece : PiecesOf(sLine)) {
    if (!places.empty()) places.back().nEnd = piece.lFirst - 1;
    places.push_back({piece.lFirst, 0});
  }
  return places;
}

std::vector<std::pair<size_t, std::string>> PartsOver(const TextPiece& piece, const std::vector<TidyPlace>& places) {
  const auto nOver = std::count_if(places.begin(), places.end(), [&](const TidyPlace& place) {
    return Overlap(piece.lFirst, piece.lLast, place) > 0;
  });
  std::vector<std::pair<size_t, std::string>> parts;
  if (nOver < 2) return {{ColumnUnder(piece.lFirst, piece.lLast, places), Utf8(piece.sText)}};
  for (const TextPiece& word : WordsOfPiece(piece)) {
    const size_t nColumn = ColumnUnder(word.lFirst, word.lLast, places);
    if (!parts.empty() && parts.back().first == nColumn) {
      parts.back().second += " " + Utf8(word.sText);
    } else {
      parts.emplace_back(nColumn, Utf8(word.sText));
    }
  }
  return parts;
}

std::vector<std::u32string> WordsOf(std::u32string_view sLine) {
  std::vector<std::u32string> runs;
  for (const TextPiece& piece : PiecesOf(sLine)) {
    bool bGoesOn = false;
    for (const TextPiece& word : WordsOfPiece(piece)) {
      const bool bPlain = HoldsLetter(word.sText) && std::none_of(word.sText.begin(), word.sText.end(), IsDigitPlace);
      if (bPlain && bGoesOn) {
        runs.back().append(U" ").append(word.sText);
      } else if (bPlain) {
        runs.emplace_back(word.sText);
      }
      bGoesOn = bPlain;
    }
  }
  std::stable_sort(runs.begin(), runs.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
  return runs;
}

std::string PictureOf(std::u32string_view sLine, size_t nLength) {
  constexpr std::u32string_view kMeaning = U"9AX_.\\";
  std::string sPicture;
  for (const char32_t ch : sLine.substr(0, nLength)) {
    if (IsBlankPlace(ch)) {
      sPicture += '_';
    } else if (IsDigitPlace(ch)) {
      sPicture += '9';
    } else if (IsLetterPlace(ch)) {
      sPicture += 'A';
    } else {
      if (kMeaning.find(ch) != std::u32string_view::npos) sPicture += '\\';
      AppendUtf8(ch, sPicture);
    }
  }
  return sPicture;
}

std::u32string_view WithoutColon(std::u32string_view sLabel) {
  while (!sLabel.empty() &&
         (sLabel.back() == U':' || sLabel.back() == U'.' || sLabel.back() == U'=' || IsBlankPlace(sLabel.back()))) {
    sLabel.remove_suffix(1);
  }
  return sLabel;
}

namespace {

/// Where the value behind the first label of the line begins, or its last piece.
std::pair<int32_t, int32_t> UnaskedValue(std::u32string_view sLine, const std::vector<TextPiece>& pieces) {
  const size_t nColon = sLine.find(U':');
  for (size_t i = 0; i < pieces.size() && nColon != std::u32string_view::npos; ++i) {
    const auto lColon = static_cast<int32_t>(nColon) + 1;
    if (pieces[i].lLast > lColon) {
      const auto nFirst =
          sLine.find_first_not_of(U' ', std::max(nColon + 1, static_cast<size_t>(pieces[i].lFirst) - 1));
      return {static_cast<int32_t>(nFirst) + 1, pieces[i].lLast};
    }
  }
  return {pieces.back().lFirst, pieces.back().lLast};
}

}  // namespace

PointedValue ValueAt(std::u32string_view sLine, int32_t lFirst, int32_t lLast) {
  PointedValue value;
  const std::vector<TextPiece> pieces = PiecesOf(sLine);
  if (pieces.empty()) return value;
  if (lFirst < 1) std::tie(lFirst, lLast) = UnaskedValue(sLine, pieces);
  const auto own = std::find_if(pieces.begin(), pieces.end(), [&](const TextPiece& p) { return p.lLast >= lFirst; });
  value.lFirst = lFirst;
  if (own == pieces.end()) return value;
  const std::u32string_view sInFront = Characters(sLine, own->lFirst, lFirst - 1);
  if (HoldsLetter(sInFront)) {
    value.sLabel = sInFront;
  } else {
    for (auto it = own; it != pieces.begin() && value.sLabel.empty();) {
      if (HoldsLetter((--it)->sText)) value.sLabel = it->sText;
      value.bBehindLabel = value.bBehindLabel && (value.sLabel.empty() ? false : true);
    }
  }
  // Of a piece with a colon inside the label ends there.
  const size_t nColon = value.sLabel.rfind(U':');
  if (nColon != std::u32string::npos && nColon + 1 < value.sLabel.size()) {
    value.bBehindLabel = false;
    value.sLabel.resize(nColon + 1);
  }
  value.bBehindLabel = value.bBehindLabel && lLast >= own->lLast;
  const auto next = own + 1;
  value.lLast = lLast < own->lLast ? lLast : next == pieces.end() ? 0 : next->lFirst - 1;
  const auto nWord = static_cast<size_t>(WordsOfPiece(pieces.front()).front().lLast);
  value.sLike = PictureOf(sLine, nWord);
  return value;
}

}  // namespace quillon
