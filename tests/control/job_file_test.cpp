#include <gtest/gtest.h>

#include "clsConversionOptions.h"
#include "clsTempFolder.h"
#include "modFailure.h"
#include "modSettings.h"

namespace quillon {
namespace {

class JobFile : public testing::Test {
 protected:
  ~JobFile() override { ResetFoundationGlobals(); }
  clsConversionOptions Open(std::string_view sBytes) {
    clsConversionOptions options;
    options.OpenConversionJob(folder.Write("job.QLN", sBytes));
    return options;
  }
  clsTempFolder folder;
};

TEST_F(JobFile, HasDefaultsThatDifferFromANewRecord) {
  const clsConversionOptions fresh;
  EXPECT_EQ(fresh.lConversionMethod, kMethodMarkup);
  EXPECT_TRUE(fresh.bClearOutputFileBeforeProcessing);

  const clsConversionOptions job = Open("[QLN]\r\nsInputFile=C:\\a.txt\r\n");
  EXPECT_EQ(job.sInputFile, "C:\\a.txt");
  EXPECT_EQ(job.lConversionMethod, kMethodProfile);
  EXPECT_FALSE(job.bClearOutputFileBeforeProcessing);
  EXPECT_TRUE(job.bTrimInputTextFilesPadCharacter);
  EXPECT_EQ(job.sFixedWidthProfile, "Default-Profile");
}

TEST_F(JobFile, ReadsTruthInTwoWaysAndCutsLongValues) {
  const clsConversionOptions job = Open(
      "[qln]\nbDoSubfolders=true\nbUnix=yes\nbShowStatusMessages=yes\nsOutputFile=" + std::string(600, 'x') + "\n");
  EXPECT_TRUE(job.bDoSubfolders);
  EXPECT_FALSE(job.bUnix);
  EXPECT_TRUE(job.bVerbose) << "this key alone is true for whatever isn't FALSE";
  EXPECT_EQ(job.sOutputFile.size(), 499u);
}

TEST_F(JobFile, BadNumberIsAFailureThatNobodyHandles) {
  EXPECT_THROW(Open("[QLN]\nlTabSize=eight\n"), UnhandledFailure);
  EXPECT_THROW(Open("[QLN]\nlDelimitationCharacter=\n"), UnhandledFailure);
  EXPECT_EQ(Open("[QLN]\nlTabSize=2.5\n").lTabSize, 2) << "half to even";
}

TEST_F(JobFile, TakesTheNotesOfItsWayOfRunning) {
  const std::string_view bytes = "[QLN]\nReadMe=one\nReadMe2=two\nReadMeCommandLine=cl\n";
  const clsConversionOptions window = Open(bytes);
  EXPECT_EQ(window.sReadMe + window.sReadMe2 + window.sReadMeCommandLine, "onetwo");
  gbCommandLineMode = true;
  const clsConversionOptions unattended = Open(bytes);
  EXPECT_EQ(unattended.sReadMe + unattended.sReadMe2 + unattended.sReadMeCommandLine, "cl");
}

TEST_F(JobFile, NewFileHasAllKeysInOrder) {
  clsConversionOptions options;
  options.sInputFile = "%appdata%\\*.txt";
  options.bVerbose = true;
  options.sLogFile = "C:\\run.log";
  options.sCLBatchJobFile = "C:\\x.QLN";
  ASSERT_TRUE(options.SaveConversionJob(folder.Path("new.QLN")));
  EXPECT_EQ(folder.Read("new.QLN"),
            "[QLN]\r\n"
            "INFO=This is a 'Quillon' Conversion Job file. Use me as a batch file to convert TXT to CSV/Excel\r\n"
            "sInputFile=%appdata%\\*.txt\r\nsOutputFile=\r\nsRecipeFile=\r\nlConversionMethod=2\r\n"
            "bDoSubfolders=FALSE\r\nbSaveInOriginalFolder=FALSE\r\nbClearOutputFileBeforeProcessing=TRUE\r\n"
            "sSheetTarget=1\r\nlDelimitationCharacter=44\r\nlTabSize=8\r\nbUnix=FALSE\r\nsStartColRow=A1\r\n"
            "bTreatDataAsText=FALSE\r\nlUseDoubleQuotes=1\r\nbIsUnicode=FALSE\r\n"
            "bTrimInputTextFilesPadCharacter=TRUE\r\nsFixedWidthProfile=Default-Profile\r\n"
            "bShowStatusMessages=FALSE\r\n");
}

TEST_F(JobFile, SavingKeepsWhatAUserAddedAndReadsBack) {
  folder.Write("job.QLN", "; mine\r\n[QLN]\r\nReadMe=keep me\r\nltabsize=3\r\nOwn=1\r\n[Other]\r\nx=y\r\n");
  clsConversionOptions options;
  options.lTabSize = 5;
  options.sSheetTarget = "Budget, Expense";
  ASSERT_TRUE(options.SaveConversionJob(folder.Path("job.QLN")));
  const std::string bytes = folder.Read("job.QLN");
  EXPECT_EQ(bytes.find("; mine\r\n[QLN]\r\nReadMe=keep me\r\n"), 0u);
  EXPECT_NE(bytes.find("Own=1\r\n"), std::string::npos);
  EXPECT_NE(bytes.find("[Other]\r\nx=y\r\n"), std::string::npos);

  clsConversionOptions again;
  again.OpenConversionJob(folder.Path("job.QLN"));
  EXPECT_EQ(again.lTabSize, 5);
  EXPECT_EQ(again.sSheetTarget, "Budget, Expense");
  EXPECT_EQ(again.sReadMe, "keep me");
}

TEST_F(JobFile, IsWrittenInTheCodePageInWhichItIsRead) {
  for (const char* const page : {"windows-1252", "cp437", "UTF-8", "auto"}) {
    OverrideSystemCodePage(clsCodePage::Find(page), true);
    const bool utf8 = std::string_view(page) != "cp437";  // An editor wrote it.
    folder.Write("job.QLN", utf8 ? "[QLN]\r\nReadMe=\xC3\xBC\r\n" : "[QLN]\r\nReadMe=x\r\n");
    for (const char* const path : {"C:\\Größe.txt", "C:\\Łódź.txt"}) {
      clsConversionOptions options;
      options.sInputFile = path;
      ASSERT_TRUE(options.SaveConversionJob(folder.Path("job.QLN")));
      clsConversionOptions again;
      again.OpenConversionJob(folder.Path("job.QLN"));
      EXPECT_EQ(again.sInputFile, path) << page;
      EXPECT_EQ(again.sReadMe, utf8 ? "ü" : "x") << page;
    }
  }
}

}  // namespace
}  // namespace quillon
