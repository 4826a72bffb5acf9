#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// The paper of a printer as text: lines are printed onto it, and moved on by carriage control. A page begins with a
/// form feed in front of its first line.
///
/// What is printed over a line that isn't blank there joins it: a blank gives way, an equal character stays, an
/// underline vanishes under another character. Texts that would hide each other become lines of their own, so nothing
/// is lost.
class clsPageLines {
 public:
  /// Prints from the first column of the line in hand on.
  void Print(std::string_view sText, std::string& sOut);
  /// Moves nLines on; 0 leaves the line in hand.
  void Advance(int nLines, std::string& sOut);
  void NewPage(std::string& sOut);
  /// The line in hand, if something was printed onto it.
  void End(std::string& sOut);

  bool IsLineOpen() const { return bOpen_; }

 private:
  void Close(std::string& sOut);

  std::string sLine_;
  std::string sFeeds_;   ///< Form feeds in front of the next line
  bool bOpen_ = false;   ///< Something was printed onto the line in hand, be it ""
  bool bBegun_ = false;  ///< There was a line before
};

/// Joins what is printed over a line with it. False if that would hide characters.
bool JoinOverprint(std::string_view sOver, std::string& sLine);

}  // namespace quillon
