#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "clsLineReader.h"

namespace quillon {

/// One report: opened once, its page and its line ends found once, and then read from any line on. Places of lines that
/// were passed are remembered, so that going to one costs no pass from the top; and all key texts are found in one
/// pass, so that a report of many tables costs no more than it is long.
class clsReport {
 public:
  clsReport(std::string_view sPath, const TextFileOptions& options) : sPath_(sPath), options_(options) {}

  const std::string& Path() const { return sPath_; }
  /// Opens the file if that was not done yet or reading it failed since. False with the reason.
  bool Open(Failure& failure);
  /// The reader, wherever it stands. To be used while the report is open.
  clsLineReader& Reader() { return reader_; }

  /// Texts (UTF-8) that LineOf may well be asked for. Said before the report is opened, they may come without a pass of
  /// their own.
  void LookOutFor(const std::vector<std::string>& texts);
  /// The report will be read more than twice: its beginning, mostly all of it, stays in memory. To be said before it is
  /// opened.
  void KeepBeginning() { reader_.KeepFirst(kKeptBytes); }
  /// Texts (UTF-8) that LineOf may be asked for. Those of all tables, before the first is looked for.
  void Expect(std::span<const std::string> texts);
  /// The first line that holds the text, from 1, found as FindRow finds it; 0 if none does or the reader failed or was
  /// stopped. An empty text is in every line that isn't empty; one that the report's page can't hold is in none.
  int64_t LineOf(const std::string& sText);
  /// The same behind line lAfter.
  int64_t LineBehind(const std::string& sText, int64_t lAfter);

  /// The reader's next row is line lLine (from 1). False if there are not as many lines before it; it stands at the
  /// end.
  bool SeekLine(int64_t lLine);
  /// True if a tab stands anywhere in it.
  bool HasTab() { return reader_.HasTab(); }
  /// All lines of the report; the reader stands wherever it likes then.
  int64_t CountLines();

 private:
  struct Place {
    int64_t lRow, nOffset;  ///< Rows before it, and its first byte
  };
  /// Texts for whose sake each row is looked at by itself; fewer are found faster one by one.
  static constexpr size_t kFew = 12;
  static constexpr size_t kKeptBytes = size_t{32} << 20;
  static constexpr size_t kMostPlaces = size_t{1} << 16;

  void NotePlace();
  void AddPlace(Place place);
  void ThinPlaces();
  bool FindSighted(const std::string& sText);
  void FindExpected();
  void FindAll(const std::vector<std::string>& texts, const std::vector<std::string>& encoded);
  bool SeekPlace(int64_t lRow);
  int64_t SearchOn(const std::string& sText);

  std::string sPath_;
  TextFileOptions options_;
  clsLineReader reader_;
  bool bOpen_ = false;
  int64_t lLines_ = -1;  ///< All lines, once the end was reached
  int64_t lStride_ = 64;
  std::vector<Place> places_;  ///< Ascending
  std::vector<std::string> expected_;
  std::unordered_map<std::string, int64_t> found_;
};

}  // namespace quillon
