#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// A word of a page with its box, in points from the page's upper left corner.
struct PlacedWord {
  double dLeft = 0, dTop = 0, dRight = 0, dBottom = 0;
  std::string sText;

  /// Stands on its side, as far as a box can tell.
  bool IsTurned() const;
  double Middle() const { return (dTop + dBottom) / 2; }
};

/// Reads pdftotext's list of words page by page. Lines come in any pieces of the list.
class clsWordList {
 public:
  using PageSink = std::function<void(std::vector<PlacedWord>& words)>;
  void Take(std::string_view sBlock, const PageSink& sink);

 private:
  void TakeLine(std::string_view sLine, const PageSink& sink);

  std::string sKept_;
  std::vector<PlacedWord> words_;
};

/// The one grid of a document's characters, measured over all of its words first, then filled page by page. A column
/// is as wide as most characters are, a line as high as most lines lie apart, and the upper left corner is that of all
/// words: so a column stands at the same place on each page. Pieces of a word that touch are joined, and a word that is
/// drawn again over itself to look bold is one.
class clsWordGrid {
 public:
  /// First every page is measured, then every page is placed.
  void Measure(const std::vector<PlacedWord>& words);
  void EndMeasure();
  /// Appends the page's lines; a form feed stands between pages.
  void Place(std::vector<PlacedWord>& words, std::string& sOut);

  int64_t Pages() const { return lPages_; }
  int64_t EmptyPages() const { return lEmpty_; }
  int64_t TurnedWords() const { return lTurned_; }
  int64_t MovedWords() const { return lMoved_; }
  int64_t Words() const { return lWords_; }
  /// Left out, as they were drawn over themselves.
  int64_t DoubledWords() const { return lDoubled_; }

 private:
  /// Lengths by how often they occur, in hundredths of a point.
  using Lengths = std::map<int64_t, double>;
  static double Dominant(const Lengths& lengths);
  int64_t LineOf(const PlacedWord& word) const;
  int64_t ColumnOf(const PlacedWord& word) const;
  bool LiesOver(const PlacedWord& word, const PlacedWord& other) const;
  void PlaceLine(const std::vector<const PlacedWord*>& words, std::string& sOut);

  Lengths widths_, heights_;
  double dLeft_ = 1e9, dTop_ = 1e9;
  double dWidth_ = 6, dHeight_ = 12;
  int64_t lPages_ = 0, lEmpty_ = 0, lTurned_ = 0, lMoved_ = 0, lWords_ = 0;
  int64_t lDoubled_ = 0;
};

}  // namespace quillon
