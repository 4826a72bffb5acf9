#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// Turns the bytes of one kind of report into the bytes of the next, block by block; the last one of a chain gives the
/// text that is read. Blocks are cut anywhere.
class clsTextMaker {
 public:
  clsTextMaker() = default;
  clsTextMaker(const clsTextMaker&) = delete;
  clsTextMaker& operator=(const clsTextMaker&) = delete;
  virtual ~clsTextMaker() = default;

  /// Appends what the block gives; what can't be told yet is kept.
  virtual void Take(std::string_view sBlock, std::string& sOut) = 0;
  virtual void End(std::string& sOut) = 0;
  /// Why the bytes are none of this kind; "" if they are. Asked after each call.
  virtual std::string Fault() const { return {}; }
  /// What people are told about it once it has ended.
  virtual std::vector<std::string> Notes() const = 0;
};

}  // namespace quillon
