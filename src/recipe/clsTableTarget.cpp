#include "clsTableTarget.h"

#include "clsCsvRowSink.h"
#include "clsSheetRowSink.h"
#include "modRecipeFailures.h"
#include "modRecipeMessages.h"
#include "modText.h"

namespace quillon {

namespace {

clsRowSink::Noted EqualSignNoted(RecipeContext& context, bool bShowMessageBox) {
  return [&context, bShowMessageBox] {
    if (context.account.lEqualSigns++ == 0) ReportRecipe(context.host, kLeadingEqualSign, {}, bShowMessageBox);
  };
}

/// The character of a code in the bytes of the output; "" if the code is none. It is a code of the system's page; a
/// Unicode report has none, so there it is that of the default page.
std::string SeparatorOf(int32_t lCode, const clsCodePage& pageOfOutput) {
  if (lCode < 1 || lCode > 255) return {};
  const clsCodePage& page = pageOfOutput.IsSingleByte() ? pageOfOutput : clsCodePage::Windows1252();
  std::string sUtf8;
  std::string sBytes;
  AppendUtf8(page.CharOf(static_cast<unsigned char>(lCode)), sUtf8);
  pageOfOutput.Encode(sUtf8, sBytes);
  return sBytes;
}

/// A sink that adds to the account what it lost.
class clsCountedCsvSink : public clsCsvRowSink {
 public:
  clsCountedCsvSink(RecipeContext& context, clsOutputFile& file, const CsvRules& rules, const clsCodePage& page)
      : clsCsvRowSink(file, rules, page, EqualSignNoted(context, true)), account_(context.account) {}
  ~clsCountedCsvSink() override { account_.lCharactersLost += CharsLost(); }

 private:
  FileAccount& account_;
};

class clsCsvTarget : public clsTableTarget {
 public:
  clsCsvTarget(RecipeContext& context, clsOutputFile& file) : context_(context), file_(file) {}

  bool MakeSink(const clsTable& table, const clsCodePage& pageOfReport, std::unique_ptr<clsRowSink>& sink) override {
    const RecipeOptions& options = context_.options;
    const clsCodePage& page = options.text.pCodePage != nullptr ? *options.text.pCodePage : pageOfReport;
    const std::string sSeparator = SeparatorOf(table.lDelimitationChar, page);
    if (!sSeparator.empty())
      sink = std::make_unique<clsCountedCsvSink>(context_, file_, RecipeCsvRules(options, sSeparator), page);
    return true;
  }
  Failure LastFailure() const override { return file_.LastFailure(); }

 private:
  RecipeContext& context_;
  clsOutputFile& file_;
};

class clsSheetTarget : public clsTableTarget {
 public:
  explicit clsSheetTarget(RecipeContext& context) : context_(context) {}

  bool MakeSink(const clsTable&, const clsCodePage&, std::unique_ptr<clsRowSink>& sink) override {
    return SheetSink(context_, sink);
  }

 private:
  RecipeContext& context_;
};

}  // namespace

std::unique_ptr<clsTableTarget> TargetOf(RecipeContext& context, clsOutputFile* csv_file_handle) {
  if (csv_file_handle == nullptr) return std::make_unique<clsSheetTarget>(context);
  return std::make_unique<clsCsvTarget>(context, *csv_file_handle);
}

bool SheetSink(RecipeContext& context, std::unique_ptr<clsRowSink>& sink) {
  if (context.pWorkbook == nullptr) return EndWalk(context, "There is no workbook");
  const auto refused = [&context](const Failure& failure) {
    ReportCellFailure(context, failure);
    return true;
  };
  const clsSheetRowSink::Options options{.bTrim = context.options.bTrimFields};
  sink = std::make_unique<clsSheetRowSink>(*context.pWorkbook, options, refused, EqualSignNoted(context, false));
  return true;
}

CsvRules RecipeCsvRules(const RecipeOptions& options, std::string sSeparator) {
  CsvRules rules;
  rules.sSeparator = std::move(sSeparator);
  rules.sQuoteOn = options.bSafeCsv ? ",\"\r\n" : ",\"";
  rules.bQuoteSeparator = options.bSafeCsv;
  rules.bTrim = options.bTrimFields;
  rules.bSafe = options.bSafeCsv;
  rules.bJoinEmpty = true;
  return rules;
}

}  // namespace quillon
