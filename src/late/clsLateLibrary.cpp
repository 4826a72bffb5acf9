#include "clsLateLibrary.h"

#include <dlfcn.h>

#include "modFailure.h"

namespace quillon {

void* clsLateLibrary::Address(const char* pName) {
  if (pLibrary_ == nullptr) pLibrary_ = dlopen(sFile_.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const pAddress = pLibrary_ != nullptr ? dlsym(pLibrary_, pName) : nullptr;
  if (pAddress != nullptr) return pAddress;
  const char* const pReason = dlerror();
  throw UnhandledFailure(pReason != nullptr ? pReason : sFile_ + " lacks " + pName);
}

}  // namespace quillon
