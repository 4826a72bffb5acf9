#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "clsKeySearch.h"

namespace quillon {

/// Which of a report's tables have to see its lines. Of many tables most wait for their start texts: those are looked
/// for in one pass, so that the cost follows the lines and not the tables.
class clsTidyAwake {
 public:
  explicit clsTidyAwake(size_t nTables) : states_(nTables) {}

  /// A table and the texts that wake it. All are awake at first.
  void Add(size_t nTable, const std::vector<std::string>& keyTexts);
  /// Behind the last Add.
  void Starts();

  /// Tables may sleep: there are enough of them to make it worth while.
  bool IsOn() const { return search_ != nullptr; }
  /// In their order.
  const std::vector<size_t>& Tables() const { return awake_; }
  bool Has(size_t nTable) const { return states_[nTable].bAwake; }

  /// Wakes the tables that the line concerns: wake(nTable) for each that slept.
  template <typename Wake>
  void Look(int64_t lLine, std::string_view sLine, Wake wake) {
    if (search_ == nullptr) return;
    const size_t nAwake = awake_.size();
    search_->LookForAll(sLine, [&](size_t nText) {
      for (const size_t nTable : tablesOf_[nText]) {
        State& state = states_[nTable];
        state.lLastKey = lLine;
        if (state.bAwake) continue;
        state.bAwake = true;
        awake_.push_back(nTable);
        wake(nTable);
      }
    });
    if (awake_.size() > nAwake) Sort();
  }

  /// Takes out the tables for which sleeps(nTable, line of its last key text) is true.
  template <typename Sleeps>
  void Drop(Sleeps sleeps) {
    size_t nKept = 0;
    for (size_t i = 0; i < awake_.size(); ++i) {
      State& state = states_[awake_[i]];
      state.bAwake = !sleeps(awake_[i], state.lLastKey);
      if (state.bAwake) awake_[nKept++] = awake_[i];
    }
    awake_.resize(nKept);
  }

 private:
  struct State {
    bool bAwake = true;
    int64_t lLastKey = 0;
  };
  void Sort();

  std::vector<State> states_;  ///< By table
  std::vector<size_t> awake_;
  std::map<std::string, size_t, std::less<>> texts_;
  std::vector<std::vector<size_t>> tablesOf_;  ///< By text
  std::unique_ptr<clsKeySearch> search_;
};

}  // namespace quillon
