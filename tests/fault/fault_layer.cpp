// A file layer that fails: preloaded into a program, it counts the file operations on one folder and lets the n-th go
// wrong. Tests walk n through a whole run.
//
//   QUILLON_FAULT_FOLDER  the folder (absolute) whose files count
//   QUILLON_FAULT_AT      the operation that goes wrong, from 1
//   QUILLON_FAULT_KIND    fail (an input/output error), full (no space, where something is written or made), short
//                         (half of what was asked for), interrupt (as by a signal), kill (the program is killed before
//                         it writes; only writing counts)
//   QUILLON_FAULT_MARK    a file that gets the operation's name when the fault has been let loose
//   QUILLON_FAULT_NAMED   set: the file system knows no nameless files

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

/// What an operation can meet.
enum Abilities : unsigned { kMakes = 1, kTransfers = 2, kWaits = 4 };
enum class Fault { None, Fail, Full, Short, Interrupt, Kill };

long gCount = 0;
bool gInside = false;

template <typename Function>
Function* Real(const char* pName) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, pName));
}
int RealOpen(const char* pPath, int nFlags, mode_t nMode) {
  return Real<int(const char*, int, mode_t)>("open")(pPath, nFlags, nMode);
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

Fault KindFor(unsigned abilities) {
  const std::string_view sKind = Setting("QUILLON_FAULT_KIND");
  if (sKind == "fail") return Fault::Fail;
  if (sKind == "full" && (abilities & kMakes) != 0) return Fault::Full;
  if (sKind == "short" && (abilities & kTransfers) != 0) return Fault::Short;
  if (sKind == "kill" && (abilities & kMakes) != 0 && (abilities & kTransfers) != 0) return Fault::Kill;
  if (sKind == "interrupt" && (abilities & kWaits) != 0) return Fault::Interrupt;
  return Fault::None;
}

/// What is to happen to this operation, with errno set for it. A kind that it cannot meet passes by.
template <typename Place>
Fault Next(const char* pName, Place place, unsigned abilities) {
  const Fault fault = KindFor(abilities);
  if (fault == Fault::None || gInside || !Counts(place)) return Fault::None;
  if (++gCount != std::atol(std::string(Setting("QUILLON_FAULT_AT")).c_str())) return Fault::None;
  if (fault == Fault::Kill) std::raise(SIGKILL);
  gInside = true;
  const int nMark = RealOpen(std::string(Setting("QUILLON_FAULT_MARK")).c_str(), O_WRONLY | O_CREAT, 0600);
  dprintf(nMark, "%s", pName);
  Real<int(int)>("close")(nMark);
  gInside = false;
  errno = fault == Fault::Full ? ENOSPC : fault == Fault::Interrupt ? EINTR : EIO;
  return fault;
}

template <typename Call>
ssize_t Transfer(const char* pName, int nHandle, size_t nBytes, unsigned abilities, Call call) {
  const Fault fault = Next(pName, nHandle, abilities | kTransfers | kWaits);
  if (fault != Fault::None && fault != Fault::Short) return -1;
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
  const bool bNameless = (nFlags & O_TMPFILE) == O_TMPFILE;
  if (bNameless && !Setting("QUILLON_FAULT_NAMED").empty()) {
    errno = EOPNOTSUPP;
    return -1;
  }
  const unsigned abilities = kWaits | ((nFlags & O_CREAT) != 0 || bNameless ? kMakes : 0U);
  return Next("open", std::string_view(pPath), abilities) == Fault::None ? RealOpen(pPath, nFlags, nMode) : -1;
}

FILE* fopen(const char* pPath, const char* pMode) {
  if (Next("fopen", std::string_view(pPath), 0) != Fault::None) return nullptr;
  return Real<FILE*(const char*, const char*)>("fopen")(pPath, pMode);
}

size_t fread(void* pBytes, size_t nSize, size_t nItems, FILE* pFile) {
  constexpr int kErrorSeen = 0x20;  // What ferror looks at
  if (Next("fread", fileno(pFile), 0) != Fault::None) {
    pFile->_flags |= kErrorSeen;
    return 0;
  }
  return Real<size_t(void*, size_t, size_t, FILE*)>("fread")(pBytes, nSize, nItems, pFile);
}

ssize_t read(int nHandle, void* pBytes, size_t nBytes) {
  return Transfer("read", nHandle, nBytes, 0,
                  [&](size_t n) { return Real<ssize_t(int, void*, size_t)>("read")(nHandle, pBytes, n); });
}

ssize_t pread(int nHandle, void* pBytes, size_t nBytes, off_t nOffset) {
  return Transfer("pread", nHandle, nBytes, 0, [&](size_t n) {
    return Real<ssize_t(int, void*, size_t, off_t)>("pread")(nHandle, pBytes, n, nOffset);
  });
}

ssize_t write(int nHandle, const void* pBytes, size_t nBytes) {
  return Transfer("write", nHandle, nBytes, kMakes,
                  [&](size_t n) { return Real<ssize_t(int, const void*, size_t)>("write")(nHandle, pBytes, n); });
}

int fsync(int nHandle) {
  return Next("fsync", nHandle, kMakes | kWaits) == Fault::None ? Real<int(int)>("fsync")(nHandle) : -1;
}

int close(int nHandle) {
  const Fault fault = Next("close", nHandle, kMakes | kWaits);
  const int nError = errno;
  const int nDone = Real<int(int)>("close")(nHandle);
  errno = nError;
  return fault == Fault::None ? nDone : -1;
}

int rename(const char* pFrom, const char* pTo) noexcept {
  if (Next("rename", std::string_view(pTo), kMakes) != Fault::None) return -1;
  return Real<int(const char*, const char*)>("rename")(pFrom, pTo);
}

int linkat(int nFrom, const char* pFrom, int nTo, const char* pTo, int nFlags) noexcept {
  if (Next("linkat", std::string_view(pTo), kMakes) != Fault::None) return -1;
  return Real<int(int, const char*, int, const char*, int)>("linkat")(nFrom, pFrom, nTo, pTo, nFlags);
}

}  // extern "C"
