#pragma once

#include <array>
#include <string>
#include <vector>

#include "clsEbcdicPage.h"
#include "clsPageLines.h"
#include "clsRecordCutter.h"
#include "clsTextMaker.h"

namespace quillon {

/// What is known about a file of records before its text is made.
struct RecordKind {
  const clsEbcdicPage* pEbcdic = nullptr;           ///< Null: the bytes are text of the report's own page
  RecordForm form = RecordForm::Lines;              ///< None of Auto
  size_t nLength = 0;                               ///< Of Fixed
  CarriageControl control = CarriageControl::None;  ///< None, Asa or Machine

  bool IsPlain() const { return pEbcdic == nullptr && form == RecordForm::Lines && control == CarriageControl::None; }
};

/// Records to lines of text: EBCDIC becomes UTF-8, carriage control becomes lines and form feeds, blanks that fill up
/// records of one length go.
class clsRecordMaker : public clsTextMaker {
 public:
  explicit clsRecordMaker(const RecordKind& kind);

  void Take(std::string_view sBlock, std::string& sOut) override;
  void End(std::string& sOut) override;
  std::string Fault() const override { return cutter_.Fault(); }
  std::vector<std::string> Notes() const override;

 private:
  void Put(std::string_view sRecord, std::string& sOut);
  void PutText(std::string_view sText, std::string& sOut);
  void PutAsa(char control, std::string_view sText, std::string& sOut);
  void PutMachine(unsigned char control, std::string_view sText, std::string& sOut);
  void Decode(std::string_view sBytes, std::string& sOut) const;

  RecordKind kind_;
  clsRecordCutter cutter_;
  clsPageLines page_;
  std::array<char, 256> ascii_{};  ///< The character of each byte that is ASCII; 0x80 for the others
  std::string sText_;
};

}  // namespace quillon
