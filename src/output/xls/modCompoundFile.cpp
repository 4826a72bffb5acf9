#include "modCompoundFile.h"

#include <glib-object.h>
#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-memory.h>
#include <gsf/gsf-input.h>
#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-impl.h>
#include <gsf/gsf-output-memory.h>
#include <gsf/gsf-utils.h>

#include <array>
#include <vector>

#include "clsOutputFile.h"
#include "modEventLoop.h"
#include "modOutputMessages.h"
#include "modText.h"
#include "modXlsBytes.h"

namespace quillon {

namespace {

constexpr size_t kMaxFileBytes = size_t{1} << 30;
constexpr size_t kMaxDirectoryEntries = 8192;  // the library walks the directory's tree by recursion
constexpr int kMaxDepth = 32;

struct Unref {
  void operator()(void* pObject) const { g_object_unref(pObject); }
};
template <typename T>
using Ref = std::unique_ptr<T, Unref>;

const guint8* Bytes(std::string_view sText) {
  return reinterpret_cast<const guint8*>(sText.data());
}

/// The library warns about damaged files on standard error; the reason that we give is enough.
void StartLibrary() {
  static const bool bStarted = [] {
    gsf_init();
    const auto silent = [](const char*, GLogLevelFlags, const char*, void*) {};
    for (const char* pDomain : {static_cast<const char*>(nullptr), "libgsf", "libgsf:msole"})
      g_log_set_handler(pDomain, static_cast<GLogLevelFlags>(G_LOG_LEVEL_WARNING | G_LOG_LEVEL_CRITICAL), silent,
                        nullptr);
    return true;
  }();
  static_cast<void>(bStarted);
}

/// Sector tables of a compound file, as far as they are needed to see that no chain leads astray.
class clsSectorCheck {
 public:
  explicit clsSectorCheck(std::string_view sFile) : sFile_(sFile) {}

  bool Run() { return CheckHeader() && CollectTables() && CheckDirectory(); }

 private:
  bool CheckHeader() {
    constexpr std::string_view kSignature = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
    if (sFile_.size() < 512 || !sFile_.starts_with(kSignature) || GetU16(sFile_, 28) != 0xFFFE) return false;
    const unsigned nShift = GetU16(sFile_, 30);
    if ((nShift != 9 && nShift != 12) || GetU16(sFile_, 32) != 6 || GetU32(sFile_, 56) != 4096) return false;
    nSectorBytes_ = size_t{1} << nShift;
    if (sFile_.size() <= nSectorBytes_) return false;
    nSectors_ = (sFile_.size() - 1) / nSectorBytes_;
    const size_t nTables = GetU32(sFile_, 44);
    return nTables > 0 && nTables <= nSectors_ && GetU32(sFile_, 64) <= nSectors_ && GetU32(sFile_, 72) <= nSectors_;
  }

  bool AddTables(std::string_view sList, size_t nEntries) {
    for (size_t i = 0; i < nEntries && tables_.size() < GetU32(sFile_, 44); ++i) {
      const uint32_t nSector = GetU32(sList, 4 * i);
      if (nSector >= nSectors_) return false;
      tables_.push_back(nSector);
    }
    return true;
  }
  bool CollectTables() {
    const size_t nPerSector = nSectorBytes_ / 4;
    if (!AddTables(sFile_.substr(76, 436), 109)) return false;
    uint32_t nNext = GetU32(sFile_, 68);
    for (size_t nLeft = GetU32(sFile_, 72); nLeft > 0 && tables_.size() < GetU32(sFile_, 44); --nLeft) {
      const std::string_view sSector = Sector(nNext);
      if (sSector.size() < nSectorBytes_ || !AddTables(sSector, nPerSector - 1)) return false;
      nNext = GetU32(sSector, nSectorBytes_ - 4);
    }
    return tables_.size() == GetU32(sFile_, 44);
  }

  bool CheckDirectory() {
    const size_t nMaxSectors = kMaxDirectoryEntries * 128 / nSectorBytes_;
    uint32_t nSector = GetU32(sFile_, 48);
    for (size_t nSteps = 0; nSector < 0xFFFFFFFAU; ++nSteps) {
      if (nSteps >= nMaxSectors || nSector >= nSectors_) return false;
      nSector = NextSector(nSector);
    }
    return GetU32(sFile_, 48) < nSectors_ && nSector == 0xFFFFFFFEU;
  }

  std::string_view Sector(uint32_t nSector) const {
    if (nSector >= nSectors_) return {};
    return sFile_.substr((size_t{nSector} + 1) * nSectorBytes_, nSectorBytes_);
  }
  uint32_t NextSector(uint32_t nSector) const {
    const size_t nPerSector = nSectorBytes_ / 4;
    const size_t nTable = nSector / nPerSector;
    const std::string_view sTable = nTable < tables_.size() ? Sector(tables_[nTable]) : std::string_view{};
    const size_t nOffset = 4 * (nSector % nPerSector);
    return nOffset + 4 <= sTable.size() ? GetU32(sTable, nOffset) : 0;
  }

  std::string_view sFile_;
  size_t nSectorBytes_ = 512;
  size_t nSectors_ = 0;
  std::vector<uint32_t> tables_;
};

bool WritePieces(GsfOutput* pStream, std::span<const std::string_view> pieces) {
  constexpr size_t kPart = size_t{1} << 20;
  for (std::string_view sPiece : pieces) {
    for (; !sPiece.empty(); sPiece.remove_prefix(std::min(kPart, sPiece.size()))) {
      RunEvents();
      if (!gsf_output_write(pStream, std::min(kPart, sPiece.size()), Bytes(sPiece))) return false;
    }
  }
  return true;
}

bool WriteStream(GsfOutfile* pFolder, std::string_view sName, std::span<const std::string_view> pieces) {
  const Ref<GsfOutput> stream(gsf_outfile_new_child(pFolder, std::string(sName).c_str(), FALSE));
  return stream && WritePieces(stream.get(), pieces) && gsf_output_close(stream.get());
}

void CopyClassAndTime(GsfInfile* pSource, GsfOutfile* pTarget) {
  std::array<guint8, 16> classId{};
  if (gsf_infile_msole_get_class_id(GSF_INFILE_MSOLE(pSource), classId.data()))
    gsf_outfile_msole_set_class_id(GSF_OUTFILE_MSOLE(pTarget), classId.data());
  if (GDateTime* pTime = gsf_input_get_modtime(GSF_INPUT(pSource))) gsf_output_set_modtime(GSF_OUTPUT(pTarget), pTime);
}

/// Copies all that the folder holds; at the top, the stream sReplaced is left out.
bool CopyFolder(GsfInfile* pSource, GsfOutfile* pTarget, std::string_view sReplaced, int nDepth) {
  if (nDepth > kMaxDepth) return false;
  CopyClassAndTime(pSource, pTarget);
  const int nChildren = gsf_infile_num_children(pSource);
  for (int i = 0; i < nChildren; ++i) {
    const char* pName = gsf_infile_name_by_index(pSource, i);
    if (pName != nullptr && nDepth == 0 && sReplaced == pName) continue;
    const Ref<GsfInput> child(gsf_infile_child_by_index(pSource, i));
    if (!child || pName == nullptr) return false;
    const bool bFolder = GSF_IS_INFILE(child.get()) && gsf_infile_num_children(GSF_INFILE(child.get())) >= 0;
    const Ref<GsfOutput> copy(gsf_outfile_new_child(pTarget, pName, bFolder ? TRUE : FALSE));
    if (!copy) return false;
    const bool bCopied = bFolder ? CopyFolder(GSF_INFILE(child.get()), GSF_OUTFILE(copy.get()), {}, nDepth + 1)
                                 : gsf_input_copy(child.get(), copy.get()) != FALSE;
    if (!gsf_output_close(copy.get()) || !bCopied) return false;
  }
  return true;
}

}  // namespace

struct clsCompoundFile::Impl {
  std::string sPath;
  std::string sFile;
  Ref<GsfInfile> root;
};

clsCompoundFile::clsCompoundFile() : impl_(std::make_unique<Impl>()) {}
clsCompoundFile::~clsCompoundFile() = default;

bool CompoundFileIsSound(std::string_view sFile) {
  return clsSectorCheck(sFile).Run();
}

bool clsCompoundFile::Open(const std::string& sHostPath, Failure& failure) {
  StartLibrary();
  impl_->sPath = sHostPath;
  if (!ReadWholeFile(sHostPath, impl_->sFile, kMaxFileBytes, failure)) return false;
  if (CompoundFileIsSound(impl_->sFile)) {
    const Ref<GsfInput> input(
        gsf_input_memory_new(Bytes(impl_->sFile), static_cast<gsf_off_t>(impl_->sFile.size()), FALSE));
    GError* pError = nullptr;
    impl_->root.reset(gsf_infile_msole_new(input.get(), &pError));
    g_clear_error(&pError);
  }
  if (impl_->root) return true;
  failure = OutputFailure(sHostPath, OutputMessage::Damaged);
  return false;
}

std::string clsCompoundFile::FindStream(std::string_view sName) const {
  const int nChildren = gsf_infile_num_children(impl_->root.get());
  for (int i = 0; i < nChildren; ++i) {
    const char* pName = gsf_infile_name_by_index(impl_->root.get(), i);
    if (pName != nullptr && EqualNoCase(pName, sName)) return pName;
  }
  return {};
}

bool clsCompoundFile::ReadStream(const std::string& sName, std::string& sBytes) const {
  const Ref<GsfInput> stream(gsf_infile_child_by_name(impl_->root.get(), sName.c_str()));
  const gsf_off_t nSize = stream ? gsf_input_size(stream.get()) : -1;
  if (nSize < 0 || static_cast<size_t>(nSize) > impl_->sFile.size()) return false;
  sBytes.resize(static_cast<size_t>(nSize));
  return nSize == 0 || gsf_input_read(stream.get(), sBytes.size(), reinterpret_cast<guint8*>(sBytes.data())) != nullptr;
}

void clsCompoundFile::CloseIfAlone() {
  if (gsf_infile_num_children(impl_->root.get()) == 1) impl_ = std::make_unique<Impl>();
}

bool clsCompoundFile::IsOpen() const {
  return impl_->root != nullptr;
}

bool SaveCompoundFile(std::string_view sPath, const clsCompoundFile* pSource, std::string_view sStream,
                      std::span<const std::string_view> pieces, Failure& failure) {
  StartLibrary();
  const Ref<GsfOutput> memory(gsf_output_memory_new());
  const Ref<GsfOutfile> root(gsf_outfile_msole_new(memory.get()));
  const bool bMade = WriteStream(root.get(), sStream, pieces) &&
                     (pSource == nullptr || CopyFolder(pSource->impl_->root.get(), root.get(), sStream, 0));
  if (!gsf_output_close(GSF_OUTPUT(root.get())) || !bMade) {
    failure = OutputFailure(sPath, OutputMessage::Damaged);
    return false;
  }
  const auto* pBytes = reinterpret_cast<const char*>(gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(memory.get())));
  const auto nBytes = static_cast<size_t>(gsf_output_size(memory.get()));
  return WriteWholeFile(sPath, {pBytes, nBytes}, failure);
}

}  // namespace quillon
