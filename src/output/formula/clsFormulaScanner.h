#pragma once
// How far a formula has been read, and the smallest things that stand there: words, numbers, texts, operators.

#include <string>
#include <string_view>

namespace quillon {

/// Refers to the text it was given. What a Take function doesn't find it leaves, unless it says otherwise.
class clsFormulaScanner {
 public:
  static constexpr int kOperatorLevels = 5;

  explicit clsFormulaScanner(std::string_view sText) : sRest_(sText) {}

  bool AtEnd() const { return sRest_.empty(); }
  std::string_view Rest() const { return sRest_; }
  /// Goes back to a Rest() of earlier.
  void Return(std::string_view sRest) { sRest_ = sRest; }

  char Peek() const { return sRest_.empty() ? '\0' : sRest_.front(); }
  bool Take(char ch);
  /// Goes behind the next such character; false if none comes.
  bool SkipBehind(char ch);
  void SkipBlanks();

  std::string_view TakeWord();
  /// All signs with the blanks among them.
  std::string_view TakeSigns();
  /// The binary operator of the level that stands here, or "". Level 0 compares, then &, + -, * /, ^.
  std::string_view TakeOperator(int nLevel);
  /// The error value that stands here as it is written in full, or "".
  std::string_view TakeError();
  /// False if no number stands here or a letter follows it.
  bool TakeNumber(double& nValue);
  /// A text in quotes of the kind that stands here, doubled ones undone. False, at the end, if none closes it.
  bool TakeQuoted(std::string& sOut);
  /// The same for a string, which has a greatest length.
  bool TakeString(std::string& sOut);
  /// Two rows, as 3:7, and no number.
  bool RowsStandHere() const;

 private:
  std::string_view TakeFirst(size_t nChars);

  std::string_view sRest_;
};

}  // namespace quillon
