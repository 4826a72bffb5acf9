#include "modSystemIo.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "modEventLoop.h"

namespace quillon {

namespace {

/// A pipe that nobody reads would hold an interrupted run for ever.
bool GivenUp() {
  if (RunEvents() || !gbAbandonOutput) return false;
  errno = ECANCELED;
  return true;
}

template <typename Call>
auto Repeat(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR && !GivenUp()) result = call();
  return result;
}

int OpenNamelessIn(const char* folder) {
  const int nHandle = OpenHandle(folder, O_TMPFILE | O_RDWR, 0600);
  if (nHandle >= 0) return nHandle;
  // Some file systems have no nameless files.
  std::string sName = std::string(folder) + "/quillon-XXXXXX";
  const int nNamed = mkostemp(sName.data(), O_CLOEXEC);
  if (nNamed >= 0) unlink(sName.c_str());
  return nNamed;
}

}  // namespace

int OpenHandle(const std::string& sHostPath, int nFlags, unsigned nMode) {
  return Repeat([&] { return open(sHostPath.c_str(), nFlags | O_CLOEXEC, nMode); });
}

int OpenNamelessFile() {
  const char* const chosen = std::getenv("TMPDIR");
  if (chosen != nullptr && *chosen != '\0') {
    const int nHandle = OpenNamelessIn(chosen);
    if (nHandle >= 0) return nHandle;
  }
  // /tmp is memory on many systems.
  const int nHandle = OpenNamelessIn("/var/tmp");
  return nHandle >= 0 ? nHandle : OpenNamelessIn("/tmp");
}

int64_t ReadHandle(int nHandle, char* pBytes, size_t nBytes) {
  return Repeat([&] { return read(nHandle, pBytes, nBytes); });
}

int64_t ReadHandleAt(int nHandle, char* pBytes, size_t nBytes, int64_t nOffset) {
  return Repeat([&] { return pread(nHandle, pBytes, nBytes, nOffset); });
}

bool WriteHandle(int nHandle, const char* pBytes, size_t nBytes) {
  while (nBytes > 0) {
    const int64_t nDone = Repeat([&] { return write(nHandle, pBytes, nBytes); });
    if (nDone < 0) return false;
    if (nDone == 0) {
      errno = EIO;
      return false;
    }
    pBytes += nDone;
    nBytes -= static_cast<size_t>(nDone);
    if (nBytes > 0 && GivenUp()) return false;
  }
  return true;
}

bool SyncHandle(int nHandle) {
  return Repeat([&] { return fsync(nHandle); }) == 0 || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
}

bool CloseHandle(int nHandle) {
  // An interrupted call has closed it all the same; again would close what another may have opened meanwhile.
  return close(nHandle) == 0 || errno == EINTR;
}

}  // namespace quillon
