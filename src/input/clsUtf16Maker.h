#pragma once

#include "clsTextMaker.h"
#include "clsUtf16Text.h"

namespace quillon {

/// UTF-16 that begins with a BOM.
class clsUtf16Maker : public clsTextMaker {
 public:
  void Take(std::string_view sBlock, std::string& sOut) override;
  void End(std::string& sOut) override;
  std::vector<std::string> Notes() const override;

 private:
  clsUtf16Text units_;
  bool bBegun_ = false;
  std::string sHalf_;  ///< A byte whose partner is in the next block
};

}  // namespace quillon
