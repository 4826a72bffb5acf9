#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "clsXmlScanner.h"
#include "modFormulaText.h"

namespace quillon {

/// Takes the bytes of a part in the making.
using ByteSink = std::function<void(std::string_view)>;

/// Copies an XML part token by token as it stands, but for formulas and names of sheets in it, which follow renames.
class clsXmlCopier {
 public:
  clsXmlCopier(clsXmlScanner& scanner, const FormulaRenames& renames, ByteSink sink)
      : scanner_(scanner), renames_(renames), sink_(std::move(sink)) {}
  ~clsXmlCopier() = default;
  clsXmlCopier(const clsXmlCopier&) = delete;
  clsXmlCopier& operator=(const clsXmlCopier&) = delete;

  /// Copies the token in hand.
  void CopyToken();
  /// True once a rename has changed something.
  bool Changed() const { return bChanged_; }
  void Put(std::string_view sBytes) {
    sOut_ += sBytes;
    if (sOut_.size() >= kFlushBytes) Flush();
  }
  void Flush() {
    sink_(sOut_);
    sOut_.clear();
  }

 private:
  static constexpr size_t kFlushBytes = size_t{64} << 10;
  void CopyText();
  void CopyTag();

  clsXmlScanner& scanner_;
  const FormulaRenames& renames_;
  ByteSink sink_;
  std::string sOut_;
  bool bChanged_ = false;
};

/// Copies a whole part. False if it is damaged.
bool CopyWithRenames(clsXmlScanner& scanner, const FormulaRenames& renames, const ByteSink& sink, bool& bChanged);

}  // namespace quillon
