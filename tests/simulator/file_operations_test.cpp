// What a pool and its readers ask of the file system beside reading.
#include "simulator/file_operations.h"

#include <gtest/gtest.h>

#include <chrono>

#include "tests/simulator/temporary_folder.h"

namespace mixdecks::simulator {
namespace {

TEST(LastWriteCount, IsNothingForAFileThatIsNotThere) {
  const test::TemporaryFolder folder;
  EXPECT_EQ(LastWriteCount(folder / "none"), 0u);
}

TEST(LastWriteCount, TellsWritesWithinASecondApart) {
  using Clock = std::chrono::steady_clock;
  const test::TemporaryFolder folder;
  const std::uint8_t bytes[] = {1, 2, 3};
  SystemFileOperations().Write(folder / "file", bytes);
  const std::uint64_t first = LastWriteCount(folder / "file");
  const Clock::time_point end = Clock::now() + std::chrono::milliseconds(500);
  // Counts of seconds could change once while this repeats, not twice.
  int changes = 0;
  for (std::uint64_t last = first; changes < 2 && Clock::now() < end;) {
    SystemFileOperations().Write(folder / "file", bytes);
    const std::uint64_t now = LastWriteCount(folder / "file");
    changes += now != last;
    last = now;
  }
  EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace mixdecks::simulator
