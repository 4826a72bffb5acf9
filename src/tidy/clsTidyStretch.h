#pragma once

#include <cstdint>
#include <deque>
#include <string_view>

#include "modTidyModel.h"

namespace quillon {

/// Finds where a table begins and ends, from lines as they arrive. As a start or end may lie some lines above the text
/// that tells it, lines are to be handed on Delay() lines later than they arrive.
class clsTidyStretch {
 public:
  explicit clsTidyStretch(const TidyTable& table);

  /// Lines between the arrival of one and the time when it is known what it is.
  int64_t Delay() const { return lDelay_; }
  void Arrives(int64_t lLine, std::string_view sLine);
  /// True if the line is in a stretch; asked in the order of the lines.
  bool Covers(int64_t lLine);
  /// True if it is the last line of its stretch.
  bool EndsAt(int64_t lLine) const { return !stretches_.empty() && stretches_.front().lEnd == lLine; }
  /// True if no further stretch can come behind the line.
  bool IsOver(int64_t lLine) const;
  /// True if no line is in a stretch until one holds the start text, if any does.
  bool IsIdle() const { return stretches_.empty() && looking_ != Looking::End; }
  /// Until=blank: the present stretch ends here. True if lines that arrived since must arrive once more, as they may
  /// begin another one.
  bool EndHere(int64_t lLine);

  bool WasFound() const { return bFound_; }
  bool EndWasFound() const { return bEndFound_; }

 private:
  struct Stretch {
    int64_t lStart, lEnd;
  };
  enum class Looking { Start, End, Nothing };
  void Begin(int64_t lKeyLine);
  void Finish(int64_t lKeyLine);

  const TidyTable& table_;
  int64_t lDelay_ = 0;
  Looking looking_ = Looking::Start;
  int64_t lFirstForStart_ = 1;  ///< Lines before it begin nothing
  int64_t lFirstForEnd_ = 1;
  std::deque<Stretch> stretches_;  ///< Those that aren't passed yet
  bool bFound_ = false, bEndFound_ = false;
};

}  // namespace quillon
