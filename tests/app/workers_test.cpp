#include "clsWorkers.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "clsConsoleHost.h"
#include "clsTempFolder.h"

namespace quillon {
namespace {

using Got = clsWorkers::Got;
using Convert = std::function<bool(size_t, FileStory&)>;

bool HasChildren() {
  return waitpid(-1, nullptr, WNOHANG) >= 0 || errno != ECHILD;
}

/// A converter that notes in a file of bytes which files it was asked for.
class Workers : public testing::Test {
 protected:
  Workers() { std::signal(SIGPIPE, SIG_IGN); }  // As in each run
  void List(size_t nFiles, int64_t lBytes = 10) {
    files.assign(nFiles, {"in", "out", lBytes});
    sTouched = folder.Write("touched", std::string(nFiles, '0'));
  }
  clsWorkers::Calls CallsOf(Convert convert) {
    clsWorkers::Calls calls;
    calls.makeConverter = [this, convert] {
      return [this, convert](size_t nFile, FileStory& story) {
        Touch(nFile);
        story.outcome.sInput = std::to_string(nFile);
        return convert(nFile, story);
      };
    };
    calls.begins = [this](const clsWorkers::Part& part) { given.push_back(part); };
    calls.waits = [] {};
    return calls;
  }
  void Touch(size_t nFile) const {
    FILE* const pFile = fopen(sTouched.c_str(), "r+b");
    fseek(pFile, static_cast<long>(nFile), SEEK_SET);
    const int cOld = fgetc(pFile);
    fseek(pFile, static_cast<long>(nFile), SEEK_SET);
    fputc(cOld + 1, pFile);
    fclose(pFile);
  }
  /// Asks for all files in order: "s" story, "n" nothing, "d" died by itself, or the number of its signal.
  std::vector<std::string> Ends(size_t nWorkers, const Convert& convert) {
    clsWorkers workers(files, CallsOf(convert));
    EXPECT_TRUE(workers.Start(nWorkers));
    std::vector<std::string> ends;
    for (size_t nFile = 0; nFile < files.size(); ++nFile) {
      FileStory story;
      const Got got = workers.Wait(nFile, story);
      const int nSignal = workers.DeathSignal();
      ends.push_back(got == Got::Story     ? "s"
                     : got == Got::Nothing ? "n"
                     : nSignal == 0        ? "d"
                                           : std::to_string(nSignal));
      if (got == Got::Story) {
        EXPECT_TRUE(story.nFile == nFile && story.outcome.sInput == std::to_string(nFile));
      }
    }
    return ends;
  }
  std::vector<std::string> AllStories() const { return std::vector<std::string>(files.size(), "s"); }

  clsTempFolder folder;
  std::vector<PlannedFile> files;
  std::vector<clsWorkers::Part> given;
  std::string sTouched;
};

TEST_F(Workers, StoriesComeInTheOrderOfTheListAndEachFileIsConvertedOnce) {
  struct Case {
    size_t nFiles, nWorkers;
    int64_t lBytes;
  };
  for (const Case& c :
       {Case{1, 1, 10}, Case{1, 4, -1}, Case{300, 3, 10}, Case{40, 2, int64_t{15} << 20}, Case{0, 2, 0}}) {
    List(c.nFiles, c.lBytes);
    given.clear();
    EXPECT_EQ(Ends(c.nWorkers,
                   [](size_t nFile, FileStory&) {
                     if (nFile % 7 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(2));
                     return true;
                   }),
              AllStories());
    EXPECT_EQ(folder.Read("touched"), std::string(c.nFiles, '1'));
    size_t nEnd = 0;
    for (const clsWorkers::Part& part : given) {
      EXPECT_EQ(part.nFrom, std::exchange(nEnd, part.nEnd));
      if (c.lBytes > 1'000'000) {
        EXPECT_EQ(part.nEnd - part.nFrom, 1u) << "large files are given one by one";
      }
    }
    EXPECT_EQ(nEnd, c.nFiles);
    EXPECT_FALSE(HasChildren());
  }
}

TEST_F(Workers, AStoryLargerThanAnySocketHoldsComesWhole) {
  List(6);
  clsWorkers workers(files, CallsOf([](size_t nFile, FileStory& story) {
                       story.notes.assign(3, std::string(size_t{1} << 21, static_cast<char>('a' + nFile)));
                       return true;
                     }));
  ASSERT_TRUE(workers.Start(2));
  for (size_t nFile = 0; nFile < files.size(); ++nFile) {
    FileStory story;
    ASSERT_EQ(workers.Wait(nFile, story), Got::Story);
    EXPECT_TRUE(story.notes == std::vector(3, std::string(size_t{1} << 21, static_cast<char>('a' + nFile)))) << nFile;
  }
}

TEST_F(Workers, AProcessThatDiesLosesTheFileInHandAlone) {
  for (const size_t nWorkers : {size_t{1}, size_t{3}}) {
    List(120);
    const auto ends = Ends(nWorkers, [](size_t nFile, FileStory&) {
      if (nFile == 0) _exit(3);
      if (nFile == 40) raise(SIGKILL);
      if (nFile == 41) throw std::runtime_error("no memory");
      if (nFile == 119) std::abort();
      return nFile != 70;
    });
    auto expected = AllStories();
    expected[0] = expected[41] = expected[70] = "d";
    expected[40] = std::to_string(SIGKILL);
    expected[119] = std::to_string(SIGABRT);
    EXPECT_EQ(ends, expected) << nWorkers;
    EXPECT_EQ(folder.Read("touched"), std::string(120, '1')) << "nobody tries again what killed another";
  }
}

TEST_F(Workers, EndEvenIfEveryFileKills) {
  List(25);
  EXPECT_EQ(Ends(2,
                 [](size_t, FileStory&) -> bool {
                   raise(SIGKILL);
                   return true;
                 }),
            std::vector<std::string>(25, std::to_string(SIGKILL)));
  clsWorkers::Calls calls = CallsOf({});
  calls.makeConverter = []() -> Convert { throw std::runtime_error("no place"); };
  clsWorkers workers(files, std::move(calls));
  ASSERT_TRUE(workers.Start(2));
  for (size_t nFile = 0; nFile < files.size(); ++nFile) {
    FileStory story;
    EXPECT_EQ(workers.Wait(nFile, story), Got::Died);
    EXPECT_EQ(workers.DeathSignal(), 0);
  }
}

TEST_F(Workers, NoneOutlivesTheObject) {
  List(50);
  const auto began = std::chrono::steady_clock::now();
  {
    clsWorkers workers(files, CallsOf([](size_t, FileStory&) {
                         std::this_thread::sleep_for(std::chrono::seconds(60));
                         return true;
                       }));
    ASSERT_TRUE(workers.Start(3));
    EXPECT_TRUE(HasChildren());
  }
  EXPECT_FALSE(HasChildren());
  EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(30));
}

/// In a process of its own, as nobody takes an interrupt back.
[[noreturn]] void InterruptedRun(const std::vector<PlannedFile>& files, clsWorkers::Calls calls) {
  CatchInterrupts();
  size_t nStories = 0;
  calls.waits = [&nStories, bRaised = false]() mutable {
    if (nStories == 1 && !std::exchange(bRaised, true)) raise(SIGTERM);
  };
  bool bStoryBehind = false;
  Got got = Got::Story;
  {
    clsWorkers workers(files, std::move(calls));
    workers.Start(2);
    FileStory story;
    while ((got = workers.Wait(nStories, story)) == Got::Story) ++nStories;
    bStoryBehind = workers.Wait(files.size() - 1, story) != Got::Nothing;
  }
  std::fprintf(stderr, "stories %zu, then %d, children %d", nStories, static_cast<int>(got), HasChildren() ? 1 : 0);
  std::exit(bStoryBehind ? 1 : 0);
}

TEST_F(Workers, AnInterruptEndsAllAndTellsOfNoFileThatIsNotConverted) {
  List(4, int64_t{15} << 20);
  const auto calls = CallsOf([](size_t nFile, FileStory&) {
    while (nFile > 0 && InterruptSignal() == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return nFile == 0;
  });
  EXPECT_EXIT(InterruptedRun(files, calls), testing::ExitedWithCode(0), "stories 1, then 1, children 0");
}

}  // namespace
}  // namespace quillon
