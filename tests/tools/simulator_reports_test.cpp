// What the command reads beside a pool of the registered simulator.
#include "tools/export/simulator_reports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "simulator/file_operations.h"
#include "tests/simulator/temporary_folder.h"

namespace mixdecks {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class SimulatorReportsTest : public testing::Test {
 protected:
  /// Writes until the file system sees a difference to what was there.
  void WriteLater(const fs::path& file, std::string_view text) const {
    const std::uint64_t former = simulator::LastWriteCount(file);
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    do {
      test::WriteText(file, text);
      ASSERT_LT(std::chrono::steady_clock::now(), limit) << "the file system's clock stands still";
    } while (simulator::LastWriteCount(file) == former);
  }

  const test::TemporaryFolder folder_;
  const fs::path pool_ = folder_ / "pool";
  const fs::path failure_ = folder_ / "simulator-error.txt";
  const fs::path violations_ = folder_ / "simulator-violations.txt";
};

TEST_F(SimulatorReportsTest, AreNoneWithoutFiles) {
  const SimulatorReports reports(pool_);
  EXPECT_EQ(reports.Failure(), "");
  EXPECT_THAT(reports.Violations(), IsEmpty());
}

TEST_F(SimulatorReportsTest, AreThoseThatCameSince) {
  test::WriteText(failure_, "of yesterday\r\n");
  test::WriteText(violations_, "of yesterday\r\n");
  const SimulatorReports reports(pool_);
  EXPECT_EQ(reports.Failure(), "");
  EXPECT_THAT(reports.Violations(), IsEmpty());
  WriteLater(failure_, "of today\r\n");
  WriteLater(violations_, "one\r\ntwo\r\n");
  EXPECT_EQ(reports.Failure(), "of today");
  EXPECT_THAT(reports.Violations(), ElementsAre("one", "two"));
  fs::remove(failure_);
  EXPECT_EQ(reports.Failure(), "");
}

TEST_F(SimulatorReportsTest, AreValidText) {
  const SimulatorReports reports(pool_ / "");
  test::WriteText(failure_, "caf\xE9");
  EXPECT_EQ(reports.Failure(), "caf\xEF\xBF\xBD");
  WriteLater(failure_, "");
  EXPECT_EQ(reports.Failure(), "");
}

}  // namespace
}  // namespace mixdecks
