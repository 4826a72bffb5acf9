// One look of the recipe editor's drawing at a report of 100 MB, as the recipe stands after a key was pressed.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include "clsLedger.h"
#include "clsRecipeCut.h"
#include "clsReportCut.h"
#include "clsTestHost.h"
#include "clsTestScreen.h"
#include "frmExportBuilder.h"
#include "frmMain.h"
#include "modFreshStart.h"

namespace {

using namespace quillon;

constexpr size_t kBytes = 100'000'000;

struct Bench {
  Bench() : sFolder(std::filesystem::temp_directory_path() / "quillon-bench-cut") {
    std::filesystem::create_directories(sFolder);
    StartAfresh(sFolder);
    std::ofstream text(sFolder + "/text", std::ios::binary);
    const std::string sRows = clsLedger(5000).Text();
    text << "TOP\n" << sRows << "MIDDLE\n";
    while (static_cast<size_t>(text.tellp()) < kBytes) text << sRows;
    text << "DEEP\n" << sRows << "BOTTOM\n";
    std::ofstream noise(sFolder + "/noise", std::ios::binary);
    std::mt19937_64 random(1);  // NOLINT: the same noise each time
    for (size_t n = 0; n < kBytes; n += sizeof(uint64_t)) {
      const uint64_t n8 = random();
      noise.write(reinterpret_cast<const char*>(&n8), sizeof(n8));
    }
  }
  ~Bench() { std::filesystem::remove_all(sFolder); }

  std::string sFolder;
};

struct Case {
  const char *pName, *pReport, *pStart, *pEnd, *pParsing;
  int nTables = 1;
};

void Look(benchmark::State& state, const Bench& bench, const Case& c) {
  clsTestHost host;
  clsTestScreen screen;
  clsRunFields fields;
  clsRunLog log(host, gConversionOptions);
  frmMain form(host, screen, gConversionOptions, log, fields);
  frmExportBuilder editor(form);
  std::string& sText = editor.Get("txtFileEditor").sText;
  for (int i = 1; i <= c.nTables; ++i) {
    const std::string sOther = i == 1 ? "" : std::to_string(i);
    sText += "[Table " + std::to_string(i) + "]\r\nReadStartLine=" + c.pStart + sOther +
             "\r\nReadStartLineOffset=1\r\nReadEndLine=" + c.pEnd +
             "\r\nReadEndLineOffset=-1\r\nParsing=" + c.pParsing + "\r\nWriteColumn=A\r\n";
  }
  form.Get("cbInputFile").sText = bench.sFolder + "/" + c.pReport;
  clsRecipeCut source(editor);
  clsReportCut cut(source);
  for (auto _ : state) cut.Update();
}

}  // namespace

int main(int nArguments, char** pArguments) {
  const Bench bench;
  constexpr const char* kDrawn = "--------- --------- --------- --------- --------- ---------";
  for (const Case& c :
       {Case{"drawn", "text", "TOP", "MIDDLE", kDrawn}, Case{"worked out", "text", "TOP", "MIDDLE", "="},
        Case{"end far below", "text", "TOP", "BOTTOM", kDrawn},
        Case{"worked out, end far below", "text", "TOP", "BOTTOM", "="},
        Case{"start far below", "text", "DEEP", "BOTTOM", kDrawn},
        Case{"no key text there", "text", "NONE", "NO", kDrawn},
        Case{"worked out, no key text there", "text", "NONE", "NO", "="},
        Case{"1,250 tables", "text", "TOP", "MIDDLE", kDrawn, 1250}, Case{"binary", "noise", "TOP", "NO", kDrawn}}) {
    benchmark::RegisterBenchmark(c.pName, Look, std::cref(bench), c)->Unit(benchmark::kMillisecond);
  }
  benchmark::Initialize(&nArguments, pArguments);
  benchmark::RunSpecifiedBenchmarks();
}
