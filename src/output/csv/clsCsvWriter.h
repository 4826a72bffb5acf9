#pragma once

#include <string>
#include <string_view>

#include "clsOutputFile.h"

namespace quillon {

/// When a value is put in double quotes: never (it goes out raw), when it needs them, always.
enum class CsvQuoting : uint8_t { Never, Sometimes, Always };

/// How the rows of one CSV file are written. All bytes are those of the output's code page.
struct CsvRules {
  std::string sSeparator = ",";  ///< One character, which may be several bytes of UTF-8
  CsvQuoting quoting = CsvQuoting::Sometimes;
  std::string sQuoteOn = "\"\r\n";  ///< Single bytes that make a value need quotes
  bool bQuoteSeparator = true;      ///< A value that holds the separator needs them, too
  bool bTrim = false;               ///< Blanks around values go
  bool bSafe = false;               ///< A value that a spreadsheet would run as a formula gets an apostrophe in front
  /// No separator stands behind a value as long as the row's text is empty; with bTrim the values count as they were.
  bool bJoinEmpty = false;
};

/// Fields of any length joined by the separator, rows ended by CR LF, double quotes inside a quoted value doubled.
/// Writes into the file's buffer; a failure is the file's and comes out at its Commit.
class clsCsvWriter {
 public:
  /// The file must outlive the writer.
  clsCsvWriter(clsOutputFile& file, CsvRules rules) : file_(file), rules_(std::move(rules)) {}

  /// bCalm: the value would run as a formula, so it gets an apostrophe in front, and quotes unless the mode is Never.
  void Field(std::string_view sValue, bool bCalm = false);
  void EndRow() {
    file_.Write("\r\n");
    bFirst_ = true;
  }
  const CsvRules& Rules() const { return rules_; }

 private:
  clsOutputFile& file_;
  CsvRules rules_;
  bool bFirst_ = true;
};

bool NeedsQuotes(const CsvRules& rules, std::string_view sValue);
/// Writes the value in double quotes to pOut, which has room for twice its bytes and two more; returns the place
/// behind.
char* PutQuoted(char* pOut, std::string_view sValue);

}  // namespace quillon
