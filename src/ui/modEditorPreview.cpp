#include "modEditorPreview.h"

#include <algorithm>

#include "frmMain.h"
#include "modFiles.h"
#include "modPaths.h"
#include "modPreviewText.h"
#include "modSectionFile.h"
#include "modSettings.h"
#include "modShortTable.h"
#include "modTranslator.h"

namespace quillon {

std::string EditorPreview(frmExportBuilder& form, std::string_view sRecipe, size_t nCaret) {
  constexpr int64_t kRows = 20;
  frmMain& main = form.Owner();
  PreviewRequest request;
  request.sInput = ExpandedPath(main.Get("cbInputFile").sText);
  if (!IsFile(request.sInput)) return Translate("Choose one input file in the main window to see how it is cut.");
  request.text = {main.bUnix, SystemCodePage()};
  request.lTabSize = main.lTabSize;
  request.lRows = kRows;
  const TextFileOptions utf8{false, &clsCodePage::Utf8()};
  clsSectionFile recipe;
  // The caret's own line counts whole, so that a header under it is the table's already.
  const size_t nLineEnd = std::min(sRecipe.find('\n', std::min(nCaret, sRecipe.size())), sRecipe.size());
  recipe.OpenMemory(sRecipe.substr(0, nLineEnd), utf8);
  request.lTable = std::max(1, static_cast<int32_t>(CountShortTables(recipe)));
  if (!recipe.OpenMemory(sRecipe, utf8)) return {};
  const ReportPreview preview = PreviewByRecipe(request, recipe);
  return PreviewText(preview) + preview.sFault;
}

}  // namespace quillon
