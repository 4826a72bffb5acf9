#pragma once

#include <string>
#include <utility>

namespace quillon {

/// A shared library that is loaded when something of it is first asked for, as few runs need it and its loading takes
/// as long as the rest of a start. What isn't there throws UnhandledFailure with the system's reason.
class clsLateLibrary {
 public:
  /// sFile is the name by which the system's loader finds it.
  explicit clsLateLibrary(std::string sFile) : sFile_(std::move(sFile)) {}
  clsLateLibrary(const clsLateLibrary&) = delete;
  clsLateLibrary& operator=(const clsLateLibrary&) = delete;
  ~clsLateLibrary() = default;  ///< It stays loaded: what it made may outlive us.

  /// The function or object of that name, of a type that the library's header declares.
  template <typename Symbol>
  Symbol* Find(const char* pName) {
    return reinterpret_cast<Symbol*>(Address(pName));
  }

 private:
  void* Address(const char* pName);

  std::string sFile_;
  void* pLibrary_ = nullptr;
};

}  // namespace quillon
