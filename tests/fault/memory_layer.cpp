// A memory that fails: preloaded into the program, it lets the n-th request for memory fail, counted from the first
// thing that main does. Before that nothing is touched and nobody could report.
//
//   QUILLON_MEMORY_AT    the request that fails, from 1
//   QUILLON_MEMORY_MARK  a file that is made when it has failed

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <new>

namespace {

long gCount = 0;
bool gInMain = false;

/// Without a request of its own.
bool Fails() {
  static const char* const pAt = std::getenv("QUILLON_MEMORY_AT");
  static const long lAt = pAt == nullptr ? 0 : std::strtol(pAt, nullptr, 10);
  if (!gInMain || ++gCount != lAt) return false;
  const char* const pMark = std::getenv("QUILLON_MEMORY_MARK");
  const int nMark = pMark == nullptr ? -1 : open(pMark, O_WRONLY | O_CREAT, 0600);
  if (nMark >= 0) close(nMark);
  return true;
}

}  // namespace

/// The first call of main.
extern "C" char* setlocale(int nCategory, const char* pName) noexcept {
  gInMain = true;
  return reinterpret_cast<char* (*)(int, const char*)>(dlsym(RTLD_NEXT, "setlocale"))(nCategory, pName);
}

void* operator new(std::size_t nBytes) {
  void* const pMemory = Fails() ? nullptr : std::malloc(nBytes == 0 ? 1 : nBytes);
  if (pMemory == nullptr) throw std::bad_alloc();
  return pMemory;
}

void operator delete(void* pMemory) noexcept {
  std::free(pMemory);
}

void operator delete(void* pMemory, std::size_t) noexcept {
  std::free(pMemory);
}
