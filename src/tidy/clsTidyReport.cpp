#include "clsTidyReport.h"

#include <array>
#include <deque>
#include <string>
#include <utility>

#include "clsTidyAwake.h"
#include "clsTidyTableReader.h"

namespace quillon {

void clsTidyListener::TableStarts(size_t /*nTable*/, const std::vector<TidyColumnInfo>& /*columns*/) {}
void clsTidyListener::Row(const TidyRecord& /*row*/) {}
void clsTidyListener::Record(const TidyRecord& /*record*/) {}
void clsTidyListener::HeadingChanges(size_t /*nTable*/, size_t /*nHeading*/, int64_t /*lLine*/) {}
void clsTidyListener::StretchStarts(size_t /*nTable*/, int64_t /*lLine*/) {}
void clsTidyListener::StretchEnds(size_t /*nTable*/, int64_t /*lLine*/) {}
void clsTidyListener::TableLine(size_t /*nTable*/, int64_t /*lLine*/, std::string_view /*sLine*/,
                                TidyLineKind /*kind*/) {}
void clsTidyListener::Line(int64_t /*lLine*/, std::string_view /*sLine*/, TidyLineKind /*kind*/, size_t /*nTable*/) {}
void clsTidyListener::GroupTooLong(size_t /*nTable*/, int64_t /*lLine*/) {}

namespace {

bool IsBlankLine(std::string_view sLine) {
  return sLine.find_first_not_of(" \f\r") == std::string_view::npos;
}

}  // namespace

class clsTidyReport::Impl : public clsTidyLineSink {
 public:
  Impl(const std::vector<TidyTable>& tables, clsTidyListener& listener) : listener_(listener), awake_(tables.size()) {
    for (size_t i = 0; i < tables.size(); ++i) {
      readers_.push_back(std::make_unique<clsTidyTableReader>(tables[i], i, listener, *this));
      awake_.Add(i, readers_.back()->KeyTexts());
    }
    awake_.Starts();
  }

  void Line(std::string_view sLine) {
    ++lLine_;
    present_ = sLine;
    awake_.Look(lLine_, sLine, [this](size_t nTable) { readers_[nTable]->Wakes(lLine_); });
    for (const size_t nTable : awake_.Tables()) readers_[nTable]->Arrives(lLine_, sLine);
    // What isn't known yet has to be kept.
    if (lSettled_ < lLine_) EntryOf(lLine_);
    if (awake_.IsOn()) PutToSleep();
    Settle();
    if (lSettled_ < lLine_) EntryOf(lLine_).sLine.assign(sLine);
    present_ = {};
  }

  void End() {
    for (const size_t nTable : awake_.Tables()) readers_[nTable]->End(lLine_);
    for (size_t i = 0; i < readers_.size(); ++i) {
      if (!awake_.Has(i)) readers_[i]->End(lLine_);
    }
    Settle();
  }

  void Classified(size_t nTable, int64_t lLine, std::string_view sLine, TidyLineKind kind) override {
    listener_.TableLine(nTable, lLine, sLine, kind);
    if (awake_.Tables().size() == 1 && lLine == lSettled_ + 1 && unsettled_.empty()) {
      Settled(lLine, sLine, kind, kind == TidyLineKind::Outside ? 0 : nTable);
      return;
    }
    Unsettled& line = EntryOf(lLine);
    --line.nAwaited;
    if (kind < line.kind || !line.bTold) {
      line.kind = kind;
      line.nTable = kind == TidyLineKind::Outside ? 0 : nTable;
    }
    line.bTold = true;
  }

  const clsTidyTableReader& Reader(size_t nTable) const { return *readers_[nTable]; }
  int64_t Lines(TidyLineKind kind) const { return counts_[static_cast<size_t>(kind)]; }

 private:
  struct Unsettled {
    TidyLineKind kind = TidyLineKind::Outside;
    size_t nTable = 0;
    size_t nAwaited = 0;  ///< Tables that don't know it yet
    bool bTold = false;   ///< Some do
    std::string sLine;
  };

  /// Only the line in hand may have none yet.
  Unsettled& EntryOf(int64_t lLine) {
    const auto nIndex = static_cast<size_t>(lLine - lSettled_ - 1);
    if (nIndex < unsettled_.size()) return unsettled_[nIndex];
    Unsettled& line = unsettled_.emplace_back();
    line.nAwaited = awake_.Tables().size();
    if (line.nAwaited == readers_.size()) return line;
    line.bTold = true;  // by those that sleep
    if (IsBlankLine(present_)) line.kind = TidyLineKind::Blank;
    return line;
  }

  void PutToSleep() {
    awake_.Drop([this](size_t nTable, int64_t lLastKey) {
      if (!readers_[nTable]->IsIdle(lLastKey)) return false;
      for (int64_t lLine = readers_[nTable]->Sleeps(); lLine <= lLine_; ++lLine) TellOutside(nTable, lLine);
      return true;
    });
  }

  /// Of a line that the table didn't tell before it fell asleep.
  void TellOutside(size_t nTable, int64_t lLine) {
    const bool bPresent = lLine == lLine_;
    const std::string_view sLine = bPresent ? present_ : std::string_view(EntryOf(lLine).sLine);
    Classified(nTable, lLine, sLine, IsBlankLine(sLine) ? TidyLineKind::Blank : TidyLineKind::Outside);
  }

  void Settled(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) {
    lSettled_ = lLine;
    ++counts_[static_cast<size_t>(kind)];
    listener_.Line(lLine, sLine, kind, nTable);
  }

  void Settle() {
    while (!unsettled_.empty() && unsettled_.front().nAwaited == 0) {
      const Unsettled line = std::move(unsettled_.front());
      unsettled_.pop_front();
      const bool bPresent = lSettled_ + 1 == lLine_ && present_.data() != nullptr;
      Settled(lSettled_ + 1, bPresent ? present_ : std::string_view(line.sLine), line.kind, line.nTable);
    }
  }

  clsTidyListener& listener_;
  std::vector<std::unique_ptr<clsTidyTableReader>> readers_;
  clsTidyAwake awake_;
  std::deque<Unsettled> unsettled_;
  std::string_view present_;
  int64_t lLine_ = 0, lSettled_ = 0;
  std::array<int64_t, kTidyLineKinds> counts_{};
};

clsTidyReport::clsTidyReport(const std::vector<TidyTable>& tables, clsTidyListener& listener)
    : impl_(std::make_unique<Impl>(tables, listener)) {}

clsTidyReport::~clsTidyReport() = default;

void clsTidyReport::Line(std::string_view sLine) {
  impl_->Line(sLine);
}

void clsTidyReport::End() {
  impl_->End();
}

const std::vector<TidyColumnInfo>& clsTidyReport::Columns(size_t nTable) const {
  return impl_->Reader(nTable).Columns();
}

const TidyTableState& clsTidyReport::State(size_t nTable) const {
  return impl_->Reader(nTable).State();
}

int64_t clsTidyReport::Lines(TidyLineKind kind) const {
  return impl_->Lines(kind);
}

}  // namespace quillon
