// Rows a second into a CSV report by one core: the whole run, and the cutting of rows the fast and the plain way.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "clsCsvRowSink.h"
#include "clsLedger.h"
#include "clsLineProcessor.h"
#include "clsRecipe.h"
#include "clsRowFields.h"
#include "clsTableTarget.h"
#include "clsTestHost.h"
#include "clsWorkbook.h"
#include "modExportRun.h"

namespace {

using namespace quillon;

constexpr int64_t kRows = 400000;

/// The ledger as a file, with a recipe in memory.
struct Bench {
  Bench() : sFolder(std::filesystem::temp_directory_path() / "quillon-bench") {
    std::filesystem::create_directories(sFolder);
    recipe.InputFileName[0] = sFolder + "/ledger.txt";
    gsOutputFile = sFolder + "/ledger.csv";
    glTabSize = 8;
    std::ofstream(recipe.InputFileName[0], std::ios::binary) << "TOP\n" << clsLedger(kRows).Text() << "END\n";
    for (const clsLedger::Field& field : clsLedger::kFields) {
      clsColumn& column = columns.emplace_back();
      column.ReadColumnStart = static_cast<int32_t>(field.nStart) + 1;
      column.ReadColumnEnd = static_cast<int32_t>(field.nStart + field.nLength);
    }
    std::ofstream specification(sFolder + "/ledger.t2x");
    specification << "[Header]\nProduct=QLN\nFileType=EXPORT SPEC\nFileFormat=1.1\n[General]\nName=\n[Table 1]\n"
                  << "ReadStartLine=TOP\nReadStartLineOffset=1\nReadEndLine=END\nReadEndLineOffset=-1\nTotalColumns="
                  << columns.size() << "\n";
    for (size_t i = 0; i < columns.size(); ++i) {
      specification << "[Table 1 Col " << i + 1 << "]\nReadColumnStart=" << columns[i].ReadColumnStart
                    << "\nReadColumnEnd=" << columns[i].ReadColumnEnd << "\nWriteColumn=A\nPeriodOperator=\n";
    }
  }
  ~Bench() { std::filesystem::remove_all(sFolder); }

  std::string sFolder;
  std::vector<clsColumn> columns;
  clsTestHost host;
  RecipeOptions options;
  FileAccount account;
  clsRecipe recipe;
  RecipeContext context{host, options, recipe, gLineProcessor(), account};
};

void Count(benchmark::State& state, const Bench& bench) {
  state.SetBytesProcessed(state.iterations() *
                          static_cast<int64_t>(std::filesystem::file_size(bench.recipe.InputFileName[0])));
  state.SetItemsProcessed(state.iterations() * kRows);
}

void WholeRun(benchmark::State& state) {
  Bench bench;
  bench.options.bTrimFields = state.range(0) == 1;
  bench.options.bSafeCsv = state.range(0) == 2;
  bench.recipe.ExportSpecs.ReadFromFile(bench.context, bench.sFolder + "/ledger.t2x");
  for ([[maybe_unused]] const auto _ : state) {
    state.PauseTiming();
    std::filesystem::remove(gsOutputFile);  // the syncing of a file that is replaced would be all that is measured
    state.ResumeTiming();
    RunRecipe(bench.context, kFormatCsv);
  }
  Count(state, bench);
}
BENCHMARK(WholeRun)->ArgName("0_plain_1_trim_2_safe")->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

void CutRows(benchmark::State& state) {
  Bench bench;
  Failure failure;
  for ([[maybe_unused]] const auto _ : state) {
    clsOutputFile file;
    clsLineReader reader;
    file.Open("/dev/null", failure);
    reader.Open(bench.recipe.InputFileName[0], bench.options.text, failure);
    const bool bFast = state.range(0) == 1;
    clsRowFields fields(bench.context, bench.columns, bFast);
    clsCsvRowSink sink(
        file, RecipeCsvRules(bench.options, ","), reader.CodePage(), [] {},
        bFast ? clsCsvRowSink::Road::Fastest : clsCsvRowSink::Road::Plain);
    clsRow& row = bench.context.lineProcessor.RowCollection[0];
    while (!reader.AtEnd()) {
      bench.context.lineProcessor.ReadRowPeriod1Only(bench.context, &reader, glTabSize);
      if (fields.Cut(row)) sink.PutRow(fields.Row());
    }
    row.Clear();
  }
  Count(state, bench);
}
BENCHMARK(CutRows)->ArgName("fast")->DenseRange(0, 1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
