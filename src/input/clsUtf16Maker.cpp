#include "clsUtf16Maker.h"

#include "modTranslator.h"

namespace quillon {

void clsUtf16Maker::Take(std::string_view sBlock, std::string& sOut) {
  if (!sHalf_.empty() && !sBlock.empty()) {
    sHalf_ += sBlock.front();
    sBlock.remove_prefix(1);
  }
  const auto convert = [&](std::string_view sBytes) {
    if (!bBegun_ && sBytes.size() >= 2) {
      sBytes.remove_prefix(units_.TakeBom(sBytes));
      bBegun_ = true;
    }
    units_.Convert(sBytes, sOut);
  };
  if (sHalf_.size() == 2) {
    convert(sHalf_);
    sHalf_.clear();
  }
  convert(sBlock);
  if (sBlock.size() % 2 != 0) sHalf_ = sBlock.back();
}

void clsUtf16Maker::End(std::string& sOut) {
  units_.End(!sHalf_.empty(), sOut);
}

std::vector<std::string> clsUtf16Maker::Notes() const {
  std::vector<std::string> notes{Translate("read as UTF-16")};
  if (units_.Replaced() > 0) {
    notes.push_back(Translate("Broken characters of the UTF-16 input that became U+FFFD:") + " " +
                    std::to_string(units_.Replaced()));
  }
  return notes;
}

}  // namespace quillon
