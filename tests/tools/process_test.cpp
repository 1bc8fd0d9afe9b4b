// What only the built command as a process can show: exit codes, standard input, Ctrl-C, and being
// killed at any moment.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <random>
#include <thread>

#include "simulator/pool.h"
#include "tests/tools/child_process.h"
#include "tests/tools/command_bench.h"

namespace mixdecks {
namespace {

using test::Bytes;
using test::ChildProcess;
using testing::HasSubstr;

class ProcessTest : public testing::Test {
 protected:
  std::vector<std::string> ExportWords(const std::vector<std::string>& more = {}) const {
    std::vector<std::string> words = {"export", picture_, "--pool", bench_.Pool()};
    words.insert(words.end(), more.begin(), more.end());
    return words;
  }
  std::string Errors() const { return test::ReadText(bench_.Path("errors")); }
  /// Waits until a started export has opened its pool.
  void WaitForPool() const {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!std::filesystem::exists(bench_.Pool() + "/pool.json")) {
      ASSERT_LT(std::chrono::steady_clock::now(), limit) << "no pool: " << Errors();
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }

  test::CommandBench bench_;
  std::string picture_ = bench_.Write("one.ppm", test::PnmFile('6', 2, 2, Bytes(12, 99)));
};

TEST_F(ProcessTest, EndsWithItsExitCodes) {
  EXPECT_EQ(ChildProcess(ExportWords({"--mode", "ntsc"}), "", "", "").Wait().exitCode, 0);
  EXPECT_EQ(ChildProcess({"export", "missing.png"}, "", "", "").Wait().exitCode, 1);
  EXPECT_EQ(ChildProcess({"export"}, "", "", "").Wait().exitCode, 2);
}

TEST_F(ProcessTest, ReadsStandardInput) {
  ChildProcess process({"export", "-", "--pool", bench_.Pool(), "--mode", "ntsc"}, picture_,
                       bench_.Path("output"), bench_.Path("errors"));
  EXPECT_EQ(process.Wait().exitCode, 0) << Errors();
  EXPECT_THAT(test::ReadText(bench_.Path("output")), HasSubstr("Exported \"still\""));
}

TEST_F(ProcessTest, TellsFileNamesThatAreNoTextAsJson) {
  ChildProcess process({"export", "\xFF.png", "--json"}, "", bench_.Path("output"), "");
  EXPECT_EQ(process.Wait().exitCode, 1);
  EXPECT_THAT(test::ReadText(bench_.Path("output")), HasSubstr("\"what\": \"\uFFFD.png\""));
}

TEST_F(ProcessTest, HelpsWithFilesThatLookLikeOptions) {
  const std::filesystem::path former = std::filesystem::current_path();
  std::filesystem::current_path(bench_.Path(""));
  bench_.Write("-one.ppm", test::PnmFile('6', 1, 1, {1, 2, 3}));
  ChildProcess process({"export", "-one.ppm"}, "", "", bench_.Path("errors"));
  EXPECT_EQ(process.Wait().exitCode, 2);
  EXPECT_THAT(Errors(), HasSubstr("what to do: for the file give ./-one.ppm"));
  std::filesystem::current_path(former);
}

TEST_F(ProcessTest, ClosesInOrderOnCtrlC) {
  const std::string scenario = bench_.Write(
      "slow.json", R"({"mode": "ntsc", "connectDelay": 600000, "uploadTime": 600000})");
  ChildProcess process(ExportWords({"--scenario", scenario}), "", "", bench_.Path("errors"));
  WaitForPool();
  process.Signal(SIGINT);
  EXPECT_EQ(process.Wait().exitCode, 130);
  EXPECT_THAT(Errors(), HasSubstr("interrupted while"));
  bench_.ExpectWholePool();
  EXPECT_EQ(ChildProcess(ExportWords(), "", "", "").Wait().exitCode, 0);
}

TEST_F(ProcessTest, EndsAtOnceOnCtrlCWhileItReadsStandardInput) {
  const std::string pipe = bench_.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const int end = open(pipe.c_str(), O_RDWR);  // neither side waits for the other
  ASSERT_GE(end, 0);
  ChildProcess process({"export", "-", "--pool", bench_.Pool()}, pipe, "", "");
  ASSERT_EQ(write(end, "P6", 2), 2);
  const auto limit = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  for (int unread = 2; unread > 0; std::this_thread::yield()) {
    ASSERT_EQ(ioctl(end, FIONREAD, &unread), 0);
    ASSERT_LT(std::chrono::steady_clock::now(), limit);
  }
  process.Signal(SIGINT);
  EXPECT_EQ(process.Wait().exitCode, 130);
  EXPECT_FALSE(std::filesystem::exists(bench_.Pool()));
  close(end);
}

TEST_F(ProcessTest, FailsWhenItsOutputCannotBeWritten) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  const std::vector<std::string> commands[] = {ExportWords({"--mode", "ntsc"}),
                                               ExportWords({"--json"}),
                                               {"pool", "--pool", bench_.Pool()},
                                               {"--help"}};
  for (const auto& words : commands) {
    SCOPED_TRACE(words.front());
    ChildProcess process(words, "", "/dev/full", bench_.Path("errors"));
    EXPECT_EQ(process.Wait().exitCode, 1);
    EXPECT_THAT(Errors(), HasSubstr("mixdecks: standard output: No space left on device"));
  }
}

TEST_F(ProcessTest, KeepsTwoExportsOutOfOnePool) {
  const std::string scenario = bench_.Write("slow.json", R"({"uploadTime": 600000})");
  ChildProcess first(ExportWords({"--scenario", scenario, "--mode", "ntsc"}), "", "", "");
  WaitForPool();
  ChildProcess second(ExportWords(), "", "", bench_.Path("errors"));
  EXPECT_EQ(second.Wait().exitCode, 1);
  EXPECT_THAT(Errors(), HasSubstr("in use"));
}

TEST_F(ProcessTest, LeavesAWholePoolWhenItIsKilledAtAnyMoment) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  ASSERT_EQ(ChildProcess(ExportWords({"--mode", "ntsc"}), "", "", "").Wait().exitCode, 0);
  unsigned killed = 0;
  for (int i = 0; i < 25; ++i) {
    ChildProcess process(ExportWords({"--name", std::to_string(i)}), "", "", "");
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 120'000));
    process.Signal(SIGKILL);
    if (process.Wait().signal == SIGKILL) ++killed;
    bench_.ExpectWholePool();
  }
  EXPECT_GT(killed, 0u);
  EXPECT_EQ(ChildProcess(ExportWords(), "", "", "").Wait().exitCode, 0);
}

}  // namespace
}  // namespace mixdecks
