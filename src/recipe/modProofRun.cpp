#include "modProofRun.h"

#include <algorithm>

#include "clsMixedProof.h"
#include "clsRecipe.h"
#include "clsTidyLines.h"
#include "modNumbers.h"
#include "modProofText.h"

namespace quillon {

namespace {

std::vector<CutTable> CutsOf(const RecipeContext& context) {
  std::vector<CutTable> cuts;
  const auto& tables = context.recipe.ExportSpecs.TablesCollection;
  for (const TableAccount& account : context.account.tables) {
    const auto nTable = static_cast<size_t>(account.lTable - 1);
    if (account.lFirstLine < 1 || nTable >= tables.size() || tables[nTable].tidy) continue;
    CutTable& cut = cuts.emplace_back();
    cut.lNumber = account.lTable;
    cut.lFirstLine = account.lFirstLine;
    cut.lLastLine = account.lLastLine;
    for (const clsColumn& column : tables[nTable].ColumnsCollection) {
      cut.places.push_back({column.ReadColumnStart, column.ReadColumnEnd});
      cut.names.push_back(column.WriteColumn);
    }
  }
  return cuts;
}

template <typename TakeLine>
bool EachLine(RecipeContext& context, TakeLine takeLine) {
  clsLineReader reader;
  TextFileOptions text = context.options.text;
  if (context.account.pCodePage != nullptr) text.pCodePage = context.account.pCodePage;
  if (!reader.Open(context.recipe.InputFileNameOf(1), text, context.account.failure)) return false;
  clsTidyLines lines(reader, glTabSize);
  for (std::string_view sLine; lines.Next(sLine);) takeLine(reader.RowNumber(), sLine);
  if (reader.LastFailure().Failed()) context.account.failure = reader.LastFailure();
  return !reader.LastFailure().Failed();
}

}  // namespace

void ProveBlocks(RecipeContext& context) {
  clsMixedProof proof({}, CutsOf(context), {});
  if (proof.MustLearn()) {
    const bool bRead = EachLine(context, [&](int64_t lLine, std::string_view sLine) { proof.Learn(lLine, sLine); });
    if (!bRead) return;
    proof.LearnedAll();
  }
  if (EachLine(context, [&](int64_t lLine, std::string_view sLine) { proof.Line(lLine, sLine); })) {
    context.account.proof = proof.Finish();
  }
}

std::string StrictFault(const FileAccount& account) {
  ReportProof proof = account.proof;
  for (const TableAccount& table : account.tables) proof.loss.Add(table.loss);
  std::string sText = LossText(proof);
  const auto add = [&](const std::string& sPart) { sText += (sText.empty() ? "" : ", ") + sPart; };
  if (account.lCharactersLost > 0) {
    add(CountedText(account.lCharactersLost, "character", "characters") + " that the output's code page lacks");
  }
  if (account.lCellsFailed > 0) add(CountedText(account.lCellsFailed, "cell", "cells") + " failed");
  if (account.proof.lTotalsDisagree > 0) add(TotalsText(account.proof));
  if (account.proof.pages.lPages > 0) add(PagesText(account.proof.pages));
  return sText;
}

}  // namespace quillon
