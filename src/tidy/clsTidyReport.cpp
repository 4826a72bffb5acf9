#include "clsTidyReport.h"

#include <array>
#include <deque>
#include <string>
#include <utility>

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

class clsTidyReport::Impl : public clsTidyLineSink {
 public:
  Impl(const std::vector<TidyTable>& tables, clsTidyListener& listener) : listener_(listener) {
    for (size_t i = 0; i < tables.size(); ++i) {
      readers_.push_back(std::make_unique<clsTidyTableReader>(tables[i], i, listener, *this));
    }
  }

  void Line(std::string_view sLine) {
    ++lLine_;
    present_ = sLine;
    for (auto& reader : readers_) reader->Arrives(lLine_, sLine);
    Settle();
    // What no table knows yet has to be kept.
    if (lSettled_ < lLine_) EntryOf(lLine_).sLine.assign(sLine);
    present_ = {};
  }

  void End() {
    for (auto& reader : readers_) reader->End(lLine_);
    Settle();
  }

  void Classified(size_t nTable, int64_t lLine, std::string_view sLine, TidyLineKind kind) override {
    listener_.TableLine(nTable, lLine, sLine, kind);
    if (readers_.size() == 1 && lLine == lSettled_ + 1 && unsettled_.empty()) {
      Settled(lLine, sLine, kind, kind == TidyLineKind::Outside ? 0 : nTable);
      return;
    }
    Unsettled& line = EntryOf(lLine);
    ++line.nTables;
    if (kind < line.kind || line.nTables == 1) {
      line.kind = kind;
      line.nTable = kind == TidyLineKind::Outside ? 0 : nTable;
    }
  }

  const clsTidyTableReader& Reader(size_t nTable) const { return *readers_[nTable]; }
  int64_t Lines(TidyLineKind kind) const { return counts_[static_cast<size_t>(kind)]; }

 private:
  struct Unsettled {
    TidyLineKind kind = TidyLineKind::Outside;
    size_t nTable = 0;
    size_t nTables = 0;  ///< That know it
    std::string sLine;
  };

  Unsettled& EntryOf(int64_t lLine) {
    const auto nIndex = static_cast<size_t>(lLine - lSettled_ - 1);
    if (nIndex >= unsettled_.size()) unsettled_.resize(nIndex + 1);
    return unsettled_[nIndex];
  }

  void Settled(int64_t lLine, std::string_view sLine, TidyLineKind kind, size_t nTable) {
    lSettled_ = lLine;
    ++counts_[static_cast<size_t>(kind)];
    listener_.Line(lLine, sLine, kind, nTable);
  }

  void Settle() {
    while (!unsettled_.empty() && unsettled_.front().nTables == readers_.size()) {
      const Unsettled line = std::move(unsettled_.front());
      unsettled_.pop_front();
      const bool bPresent = lSettled_ + 1 == lLine_ && present_.data() != nullptr;
      Settled(lSettled_ + 1, bPresent ? present_ : std::string_view(line.sLine), line.kind, line.nTable);
    }
  }

  clsTidyListener& listener_;
  std::vector<std::unique_ptr<clsTidyTableReader>> readers_;
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
