#include "modReportText.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include "clsTextSpool.h"
#include "modFileState.h"
#include "modFiles.h"
#include "modPacked.h"
#include "modPdfText.h"
#include "modSystemIo.h"
#include "modTextPlan.h"
#include "modTranslator.h"

namespace quillon {

namespace {

constexpr size_t kBlockBytes = size_t{256} << 10;
/// An archive of a compressed file is nothing unusual; what goes on so is made to harm.
constexpr int kMostPackings = 3;
/// Recipes read up to twelve reports in turn.
constexpr size_t kMostTexts = 12;

using Makers = std::vector<std::unique_ptr<clsTextMaker>>;

/// A text that was made, and of what.
struct MadeText {
  FileState state;
  std::string sPath;
  InputOptions options;
  int64_t nMost = 0;
  std::unique_ptr<clsTextSpool> spool;
  bool bUtf8 = false;
  std::vector<std::string> notes;
};

struct Process {
  InputOptions options;
  std::vector<MadeText> texts;
};

Process& TheProcess() {
  static Process process;
  return process;
}

/// Makes one text: unpacks, then makes text of what was in it.
class clsReportMaker {
 public:
  clsReportMaker(std::string_view sPath, int nHandle, int64_t nBytes, int64_t nMost, Failure& failure)
      : sPath_(sPath), nFile_(nHandle), nFileBytes_(nBytes), nMost_(nMost), failure_(failure) {}

  bool Make(MadeText& made) {
    Packing packing = PackingOf(Head());
    for (int i = 0; packing != Packing::None && i < kMostPackings; ++i) {
      if (!Unpack(packing)) return false;
      packing = PackingOf(Head());
    }
    if (packing != Packing::None) {
      failure_ = OwnFailure(sPath_, Translate("unpacks to more than a report can be"));
      return false;
    }
    if (IsPdf(Head())) return MakeOfPdf(made);
    TextPlan plan;
    std::string sFault;
    if (!MakeTextPlan(Handle(), Head(), Size(), made.options, plan, sFault)) {
      failure_ = OwnFailure(sPath_, sFault);
      return false;
    }
    made.bUtf8 = plan.bUtf8;
    if (!plan.makers.empty() && !Run(plan.makers)) return false;
    for (const auto& maker : plan.makers) {
      for (std::string& sNote : maker->Notes()) made.notes.push_back(std::move(sNote));
    }
    made.spool = std::move(spool_);
    return true;
  }

 private:
  int Handle() const { return spool_ != nullptr ? spool_->Handle() : nFile_; }
  /// 0 where only the beginning was unpacked.
  int64_t Size() const {
    if (spool_ == nullptr) return nFileBytes_;
    return spool_->IsEnough() ? 0 : spool_->Size();
  }
  std::string Head() const { return BeginningOf(Handle(), kHeadBytes); }

  /// What is made is read from now on.
  bool Replace(std::unique_ptr<clsTextSpool> spool) {
    failure_ = spool->LastFailure();
    if (failure_.Failed()) return false;
    spool_ = std::move(spool);
    return true;
  }

  bool MakeOfPdf(MadeText& made) {
    auto spool = std::make_unique<clsTextSpool>(sPath_, nMost_);
    if (!MakePdfText(sPath_, Handle(), made.options.pages, *spool, made.notes, failure_)) return false;
    made.bUtf8 = true;
    made.spool = std::move(spool);
    return true;
  }

  bool Unpack(Packing packing) {
    const std::unique_ptr<clsByteSource> source = OpenPacked(packing, Handle(), sPath_, failure_);
    if (source == nullptr) return false;
    // A beginning may shrink as it becomes text.
    constexpr int64_t kBytesPerCharacter = 4;
    auto spool = std::make_unique<clsTextSpool>(sPath_, nMost_ * kBytesPerCharacter);
    std::vector<char> block(kBlockBytes);
    while (const size_t nGot = source->Read(block.data(), block.size())) {
      if (!spool->Write({block.data(), nGot}, source->BytesTaken())) break;
    }
    failure_ = source->LastFailure();
    return !failure_.Failed() && Replace(std::move(spool));
  }

  bool Run(const Makers& makers) {
    auto spool = std::make_unique<clsTextSpool>(sPath_, nMost_);
    std::vector<char> block(kBlockBytes);
    int64_t nPos = 0;
    for (bool bMore = true; bMore;) {
      const int64_t nGot = ReadHandleAt(Handle(), block.data(), block.size(), nPos);
      if (nGot < 0) failure_ = SystemFailure(sPath_, errno);
      if (nGot < 0) return false;
      nPos += nGot;
      const std::string sText = Pass(makers, {block.data(), static_cast<size_t>(nGot)}, nGot == 0);
      if (failure_.Failed()) return false;
      bMore = spool->Write(sText, nPos) && nGot > 0;
    }
    return Replace(std::move(spool));
  }

  /// One block through the whole chain.
  std::string Pass(const Makers& makers, std::string_view sBlock, bool bEnd) {
    std::string sIn(sBlock);
    for (const auto& maker : makers) {
      std::string sOut;
      maker->Take(sIn, sOut);
      if (bEnd) maker->End(sOut);
      if (const std::string sFault = maker->Fault(); !sFault.empty()) failure_ = OwnFailure(sPath_, sFault);
      sIn = std::move(sOut);
    }
    return sIn;
  }

  std::string sPath_;
  int nFile_;
  int64_t nFileBytes_;
  int64_t nMost_;
  Failure& failure_;
  std::unique_ptr<clsTextSpool> spool_;
};

MadeText* FindMade(const MadeText& wanted) {
  for (MadeText& made : TheProcess().texts) {
    if (made.state == wanted.state && made.options == wanted.options && made.nMost == wanted.nMost) return &made;
  }
  return nullptr;
}

/// Another handle of the text's file.
bool HandOut(const MadeText& made, ReportText& text, Failure& failure) {
  text.nHandle = fcntl(made.spool->Handle(), F_DUPFD_CLOEXEC, 0);
  text.nBytes = made.spool->Size();
  text.bUtf8 = made.bUtf8;
  text.bCutShort = made.spool->IsEnough();
  if (text.nHandle < 0) failure = SystemFailure(made.sPath, errno);
  return text.nHandle >= 0;
}

bool OpenMade(std::string_view sPath, int nFile, int64_t nMost, ReportText& text, Failure& failure) {
  MadeText wanted{FileState::Of("/proc/self/fd/" + std::to_string(nFile)),
                  std::string(sPath),
                  ReportInput(),
                  nMost,
                  nullptr,
                  false,
                  {}};
  if (const MadeText* const pMade = FindMade(wanted); pMade != nullptr) return HandOut(*pMade, text, failure);
  if (!clsReportMaker(sPath, nFile, wanted.state.nSize, nMost, failure).Make(wanted)) return false;
  std::vector<MadeText>& texts = TheProcess().texts;
  if (texts.size() >= kMostTexts) texts.erase(texts.begin());
  texts.push_back(std::move(wanted));
  return HandOut(texts.back(), text, failure);
}

}  // namespace

InputOptions& ReportInput() {
  return TheProcess().options;
}

bool OpenReportText(std::string_view sPath, int64_t nMost, ReportText& text, Failure& failure) {
  text = {};
  text.nHandle = OpenOrdinaryFile(sPath, text.nBytes, failure);
  if (text.nHandle < 0) return false;
  const std::string sHead = BeginningOf(text.nHandle, kHeadBytes);
  TextPlan plan;
  std::string sFault;
  const bool bNoText = PackingOf(sHead) != Packing::None || IsPdf(sHead);
  const bool bPlanned = !bNoText && MakeTextPlan(text.nHandle, sHead, text.nBytes, ReportInput(), plan, sFault);
  if (bPlanned && plan.makers.empty()) return true;
  const int nFile = text.nHandle;
  const bool bOpened = OpenMade(sPath, nFile, nMost, text, failure);
  CloseHandle(nFile);
  return bOpened;
}

std::vector<std::string> ReportNotes(std::string_view sPath) {
  const std::vector<MadeText>& texts = TheProcess().texts;
  const auto found = std::find_if(texts.rbegin(), texts.rend(), [&](const MadeText& m) { return m.sPath == sPath; });
  return found != texts.rend() ? found->notes : std::vector<std::string>();
}

void ForgetReportTexts() {
  TheProcess().texts.clear();
}

void ResetReportInput() {
  TheProcess() = {};
}

}  // namespace quillon
