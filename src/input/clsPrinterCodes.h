#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "clsTextMaker.h"

namespace quillon {

/// True if a text holds backspaces that overstrike, or escape sequences of printers or terminals.
bool HasPrinterCodes(std::string_view sText);

/// Text of a spool file without what only a printer or terminal obeys. Characters printed over others with backspaces
/// or with a CR in mid-line join the line by the rules of clsPageLines; escape sequences of ANSI and PCL go, with the
/// bytes that belong to them, but where they move on in the line, which becomes blanks; job commands between
/// "ESC%-12345X" and the text go; a form feed in mid-line ends the line. Bytes beyond ASCII are characters of UTF-8 if
/// bUtf8, else of one byte each.
class clsPrinterCodes : public clsTextMaker {
 public:
  explicit clsPrinterCodes(bool bUtf8) : bUtf8_(bUtf8) {}

  void Take(std::string_view sBlock, std::string& sOut) override;
  void End(std::string& sOut) override;
  std::string Fault() const override { return sFault_; }
  std::vector<std::string> Notes() const override;

 private:
  enum class State { Text, Escape, Ansi, Pcl, Data };
  using Cells = std::vector<std::string>;  ///< A character each

  void Step(char c, std::string& sOut);
  void StepText(char c, std::string& sOut);
  void StepControl(char c, std::string& sOut);
  void StepEscape(char c);
  void StepAnsi(char c);
  void StepPcl(char c);
  void EndPcl(char c);
  void Put(char c);
  void PutCell(std::string sCell);
  void MoveTo(int64_t nColumn);
  void EndLine(std::string& sOut, std::string_view sEnd);

  bool bUtf8_;
  State state_ = State::Text;
  std::string sSequence_;  ///< What stands behind the escape so far
  int64_t nData_ = 0;      ///< Bytes of data left
  bool bJob_ = false;      ///< Lines may be job commands
  Cells line_;
  Cells over_;  ///< What would hide characters of line_: a line of its own
  size_t nColumn_ = 0;
  std::string sFeeds_;    ///< Form feeds in front of the line
  std::string sPartial_;  ///< Bytes of a character that isn't whole yet
  int64_t lSequences_ = 0;
  int64_t lStruck_ = 0;
  std::string sFault_;
};

}  // namespace quillon
