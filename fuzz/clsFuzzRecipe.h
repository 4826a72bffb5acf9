#pragma once

#include <string>

#include "clsFuzzInput.h"
#include "clsLineProcessor.h"
#include "clsRecipe.h"
#include "clsTempFolder.h"
#include "clsTestHost.h"
#include "clsWorkbook.h"
#include "modExportRun.h"
#include "modFailure.h"
#include "modSettings.h"

namespace quillon {

/// What a fuzz entry of the engine works with: one folder for the whole process, all else fresh for each input.
class clsFuzzRecipe : public clsFuzzInput {
 public:
  /// The first byte chooses code page, line ends and tab size; the rest is left in sInput.
  clsFuzzRecipe(const uint8_t* pData, size_t nSize) : clsFuzzInput(pData, nSize), folder(Folder()) {
    const unsigned choice = TakeByte();
    options.text = {(choice & 4) != 0, FuzzPage(choice)};
    options.pRecipePage = options.text.pCodePage;
    ResetRecipeGlobals();
    gbCommandLineMode = true;
    glTabSize = static_cast<int32_t>((choice >> 3) & 15);
    gsAppDataFolder = folder.Path() + "/";
  }

  /// The bytes of the CSV file that the loaded specification makes of the reports in its file slots; "" if none came.
  std::string Csv() {
    gsOutputFile = folder.Write("out.csv", "");
    account = {};
    RunRecipe(context, kFormatCsv);
    CheckAccount();
    return folder.Read("out.csv");
  }
  /// Runs it into a new workbook of that name and kind.
  void Workbook(const char* pName, int32_t lFormat) {
    gsOutputFile = folder.Path(pName);
    std::remove(gsOutputFile.c_str());
    RunRecipe(context, lFormat);
    CheckAccount();
  }

  const clsTempFolder& folder;
  clsTestHost host;
  RecipeOptions options;
  FileAccount account;
  clsRecipe recipe;
  RecipeContext context{host, options, recipe, gLineProcessor(), account};

 private:
  void CheckAccount() const {
    Must(account.lLinesInTables <= account.lLinesRead, "no more lines in tables than in the report");
    Must(account.bOutputWritten != account.failure.Failed(), "an output or the reason why there is none");
    for (const TableAccount& table : account.tables) {
      Must(table.lRows >= 0 && table.loss.Characters() >= 0, "counts of a table are counts");
    }
  }
  static const clsTempFolder& Folder() {
    static const clsTempFolder theFolder;
    return theFolder;
  }
};

}  // namespace quillon
