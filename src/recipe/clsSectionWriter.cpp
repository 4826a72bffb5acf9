#include "clsSectionWriter.h"

#include "clsOutputFile.h"
#include "clsSectionFile.h"
#include "modFiles.h"
#include "modText.h"
#include "modTranslator.h"

namespace quillon {

bool clsSectionWriter::Load(std::string_view sPath, Failure& failure) {
  if (!IsFile(sPath)) return true;
  loaded_.emplace(pPage_);
  return loaded_->Load(sPath, failure);
}

void clsSectionWriter::Set(std::string_view section, std::string_view key, std::string_view sValue) {
  if (loaded_) return loaded_->Set(section, key, sValue);
  if (sText_.size() > clsSectionFile::kMaxBytes) return;
  if (section != sSection_ || sText_.empty()) {
    sSection_ = section;
    sText_.append("[").append(section).append("]\r\n");
  }
  sText_.append(key).append("=").append(sValue).append("\r\n");
}

void clsSectionWriter::Set(std::string_view section, std::string_view key, int32_t lValue) {
  Set(section, key, std::to_string(lValue));
}

std::string clsSectionWriter::Bytes() const {
  if (loaded_) return loaded_->Bytes();
  return pPage_->CanEncode(sText_) ? pPage_->FromUtf8(sText_) : std::string(kUtf8Bom) + sText_;
}

bool clsSectionWriter::Save(std::string_view sPath, Failure& failure) const {
  if (sText_.size() > clsSectionFile::kMaxBytes) {
    failure = OwnFailure(sPath, Translate("File is too large"));
    return false;
  }
  return WriteWholeFile(sPath, Bytes(), failure);
}

}  // namespace quillon
