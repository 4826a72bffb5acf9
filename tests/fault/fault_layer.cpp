// A file layer that fails: preloaded into a program, it counts the file operations on one folder and lets the n-th go
// wrong. Tests walk n through a whole run.
//
//   QUILLON_FAULT_FOLDER  the folder (absolute) whose files count
//   QUILLON_FAULT_AT      the operation that goes wrong, from 1
//   QUILLON_FAULT_KIND    fail (no space for writes, an input/output error for the rest), short, interrupt
//   QUILLON_FAULT_MARK    a file that is made when the fault has been let loose

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

enum class Fault { None, Fail, Short, Interrupt };

long gCount = 0;
bool gInside = false;

template <typename Function>
Function* Real(const char* pName) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, pName));
}

std::string_view Setting(const char* pName) {
  const char* const pValue = std::getenv(pName);
  return pValue == nullptr ? std::string_view{} : pValue;
}

bool Counts(std::string_view sPath) {
  const std::string_view sFolder = Setting("QUILLON_FAULT_FOLDER");
  if (sFolder.empty()) return false;
  return sPath.substr(0, 1) == "/" ? sPath.substr(0, sFolder.size()) == sFolder : true;
}

bool Counts(int nHandle) {
  std::array<char, 4096> path{};
  const std::string sLink = "/proc/self/fd/" + std::to_string(nHandle);
  const ssize_t nLength = readlink(sLink.c_str(), path.data(), path.size() - 1);
  return nLength > 0 && path[0] == '/' && Counts(std::string_view(path.data(), static_cast<size_t>(nLength)));
}

/// What is to happen to this operation. A kind that it cannot meet passes by.
template <typename Place>
Fault Next(Place place, bool bTransfers) {
  if (gInside || !Counts(place)) return Fault::None;
  const std::string_view sKind = Setting("QUILLON_FAULT_KIND");
  if (sKind != "fail" && !bTransfers) return Fault::None;
  if (++gCount != std::atol(std::string(Setting("QUILLON_FAULT_AT")).c_str())) return Fault::None;
  gInside = true;
  const int nMark = Real<int(const char*, int, mode_t)>("open")(std::string(Setting("QUILLON_FAULT_MARK")).c_str(),
                                                                O_WRONLY | O_CREAT, 0600);
  if (nMark >= 0) close(nMark);
  gInside = false;
  return sKind == "fail" ? Fault::Fail : sKind == "short" ? Fault::Short : Fault::Interrupt;
}

int Failed(int nError) {
  errno = nError;
  return -1;
}

template <typename Call>
ssize_t Transfer(int nHandle, size_t nBytes, int nError, Call call) {
  const Fault fault = Next(nHandle, true);
  if (fault == Fault::Fail) return Failed(nError);
  if (fault == Fault::Interrupt) return Failed(EINTR);
  return call(fault == Fault::Short && nBytes > 1 ? nBytes / 2 : nBytes);
}

}  // namespace

extern "C" {

int open(const char* pPath, int nFlags, ...) {
  // The mode is handed on whether it was given or not; the system looks at it only where it makes a file.
  __builtin_va_list arguments;
  __builtin_va_start(arguments, nFlags);
  const mode_t nMode = __builtin_va_arg(arguments, mode_t);
  __builtin_va_end(arguments);
  if (Next(std::string_view(pPath), false) == Fault::Fail) return Failed(EIO);
  return Real<int(const char*, int, mode_t)>("open")(pPath, nFlags, nMode);
}

int mkostemp(char* pTemplate, int nFlags) {
  if (Next(std::string_view(pTemplate), false) == Fault::Fail) return Failed(ENOSPC);
  return Real<int(char*, int)>("mkostemp")(pTemplate, nFlags);
}

ssize_t read(int nHandle, void* pBytes, size_t nBytes) {
  return Transfer(nHandle, nBytes, EIO,
                  [&](size_t n) { return Real<ssize_t(int, void*, size_t)>("read")(nHandle, pBytes, n); });
}

ssize_t pread(int nHandle, void* pBytes, size_t nBytes, off_t nOffset) {
  return Transfer(nHandle, nBytes, EIO, [&](size_t n) {
    return Real<ssize_t(int, void*, size_t, off_t)>("pread")(nHandle, pBytes, n, nOffset);
  });
}

ssize_t write(int nHandle, const void* pBytes, size_t nBytes) {
  return Transfer(nHandle, nBytes, ENOSPC,
                  [&](size_t n) { return Real<ssize_t(int, const void*, size_t)>("write")(nHandle, pBytes, n); });
}

int fsync(int nHandle) {
  const Fault fault = Next(nHandle, false);
  return fault == Fault::Fail ? Failed(EIO) : Real<int(int)>("fsync")(nHandle);
}

int rename(const char* pFrom, const char* pTo) noexcept {
  if (Next(std::string_view(pTo), false) == Fault::Fail) return Failed(EIO);
  return Real<int(const char*, const char*)>("rename")(pFrom, pTo);
}

}  // extern "C"
