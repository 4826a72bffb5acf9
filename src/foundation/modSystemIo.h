#pragma once
// The system's file calls, each repeated while a signal interrupts it. Handles are the system's; -1 and errno tell a
// failure.

#include <cstddef>
#include <cstdint>
#include <string>

namespace quillon {

int OpenHandle(const std::string& sHostPath, int nFlags, unsigned nMode = 0);
/// A temporary file without a name ($TMPDIR, else /var/tmp, else /tmp), which is gone with its last handle.
int OpenNamelessFile();
/// Up to nBytes; 0 at the end, -1 on a failure.
int64_t ReadHandle(int nHandle, char* pBytes, size_t nBytes);
int64_t ReadHandleAt(int nHandle, char* pBytes, size_t nBytes, int64_t nOffset);
/// All bytes, in as many calls as it takes. False with errno.
bool WriteHandle(int nHandle, const char* pBytes, size_t nBytes);
/// True also where the file system has nothing to sync.
bool SyncHandle(int nHandle);
bool CloseHandle(int nHandle);

}  // namespace quillon
