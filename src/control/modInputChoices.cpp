#include "modInputChoices.h"

#include <algorithm>
#include <array>
#include <optional>

#include "clsEbcdicPage.h"
#include "modCellTyping.h"
#include "modNumbers.h"
#include "modReportText.h"
#include "modText.h"

namespace quillon {

namespace {

template <typename Value>
struct Word {
  std::string_view sWord;
  Value value;
};

template <typename Value>
Word(const char*, Value) -> Word<Value>;

constexpr std::array kRecords{Word{"auto", RecordForm::Auto}, Word{"lines", RecordForm::Lines},
                              Word{"fixed", RecordForm::Fixed}, Word{"rdw", RecordForm::Rdw},
                              Word{"blocks", RecordForm::Blocks}};
constexpr std::array kControls{Word{"", CarriageControl::Unsaid}, Word{"none", CarriageControl::None},
                               Word{"asa", CarriageControl::Asa}, Word{"machine", CarriageControl::Machine},
                               Word{"auto", CarriageControl::Auto}};
constexpr std::array kCodes{Word{"off", PrinterCodes::Off}, Word{"on", PrinterCodes::On},
                            Word{"auto", PrinterCodes::Auto}};

template <typename Words>
auto Find(const Words& words, std::string_view sValue) {
  std::optional<decltype(words[0].value)> found;
  for (const auto& word : words) {
    if (EqualNoCase(word.sWord, sValue)) found = word.value;
  }
  return found;
}

template <typename Words>
std::string Unless(const Words& words, std::string_view sValue) {
  if (Find(words, sValue)) return {};
  std::string sWanted;
  for (const auto& word : words) sWanted += (sWanted.empty() ? "" : ", ") + std::string(word.sWord);
  return "one of " + sWanted + " is wanted";
}

/// Digits alone: "2,3" would be a number too, but no page that is meant.
std::optional<int32_t> ParsePage(std::string_view sPage) {
  if (sPage.empty()) return 0;
  return std::all_of(sPage.begin(), sPage.end(), IsAsciiDigit) ? ParseWholeNumber(sPage) : std::nullopt;
}

/// "", "2", "2-5", "2-" or "-5".
std::optional<PdfPages> ParsePages(std::string_view sValue) {
  const std::string_view sPages = TrimBlanks(sValue);
  if (sPages.empty()) return PdfPages();
  const size_t nDash = sPages.find('-');
  const std::string_view sFirst = sPages.substr(0, nDash);
  const std::string_view sLast = nDash == std::string_view::npos ? sFirst : sPages.substr(nDash + 1);
  const auto lFirst = ParsePage(sFirst);
  const auto lLast = ParsePage(sLast);
  const bool bGood = lFirst && lLast && (*lLast == 0 || *lLast >= *lFirst) && (*lFirst > 0 || *lLast > 0);
  return bGood ? std::optional(PdfPages{*lFirst, *lLast}) : std::nullopt;
}

}  // namespace

std::string WhyNoInputChoice(std::string_view sMember, std::string_view sValue) {
  if (sMember == "sRecords") return Unless(kRecords, sValue);
  if (sMember == "sCarriageControl") return Unless(kControls, sValue);
  if (sMember == "sPrinterCodes") return Unless(kCodes, sValue);
  if (sMember == "sDateOrder" && !sValue.empty() && !DateOrderOf(sValue)) return "one of mdy, dmy, ymd is wanted";
  if (sMember == "sPages" && !ParsePages(sValue)) return "pages such as 2, 2-5 or 3- are wanted";
  return {};
}

void ApplyInputChoices(const clsConversionOptions& options) {
  InputOptions& input = ReportInput();
  input.sEbcdicPage = clsEbcdicPage::Find(options.sCodePage) != nullptr ? options.sCodePage : "";
  input.records = Find(kRecords, options.sRecords).value_or(RecordForm::Auto);
  input.lRecordLength = options.lRecordLength;
  input.carriageControl = Find(kControls, options.sCarriageControl).value_or(CarriageControl::Unsaid);
  input.printerCodes = Find(kCodes, options.sPrinterCodes).value_or(PrinterCodes::Off);
  input.pages = ParsePages(options.sPages).value_or(PdfPages());
}

}  // namespace quillon
