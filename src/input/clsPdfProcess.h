#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <string_view>

#include "clsByteSource.h"
#include "modInputOptions.h"

namespace quillon {

/// The words of a PDF with their boxes, as pdftotext tells them. A PDF comes from outside and its reader is large: it
/// runs in a process of its own, which may open a few files, write none, and take so much memory and time.
class clsPdfProcess : public clsByteSource {
 public:
  /// nHandle stays the caller's. A password is taken from the variable QUILLON_PDF_PASSWORD.
  clsPdfProcess(std::string_view sPath, int nHandle, const PdfPages& pages);
  ~clsPdfProcess() override;

  size_t Read(char* pBytes, size_t nBytes) override;
  int64_t BytesTaken() const override { return nGiven_; }

 private:
  void Start(int nHandle, const PdfPages& pages);
  bool Await();
  void End();
  void Judge(int nStatus);
  std::string Complaint() const;

  std::string sPath_;
  pid_t nChild_ = -1;
  int nPipe_ = -1;
  int nErrors_ = -1;  ///< What the process says goes to a file without a name
  int64_t nGiven_ = 0;
  std::chrono::steady_clock::time_point lastByte_;
};

}  // namespace quillon
