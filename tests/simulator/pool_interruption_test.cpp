// A pool survives whatever ends its writer at whatever moment: a full disk, or a kill.
#include <gtest/gtest.h>

#include <string>

#include "simulator/checksum.h"
#include "simulator/pool_store.h"
#include "tests/simulator/failing_files.h"
#include "tests/simulator/sample_frames.h"
#include "tests/simulator/temporary_folder.h"

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#endif

namespace mixdecks::simulator {
namespace {

using test::FailingFiles;
using test::GreyFrame;
using test::kOtherSmallMode;
using test::kSmallMode;
using test::TemporaryFolder;
using When = FailingFiles::When;

constexpr int kNever = -1;

class PoolInterruption : public testing::Test {
 protected:
  void SetUp() override {
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "hundreds of pools written by one thread: nothing for ThreadSanitizer to see";
#endif
  }
};

struct Sample {
  std::uint32_t mode;
  std::uint32_t luma;
  const char16_t* name;

  std::vector<std::uint8_t> Frame() const { return GreyFrame(mode, luma); }
  Still Describe() const {
    const VideoModeInfo& info = *FindVideoMode(mode);
    return {.name = name,
            .mode = mode,
            .width = info.width,
            .height = info.height,
            .alpha = FrameAlpha::kOpaque,
            .checksum = Checksum(Frame())};
  }
};

constexpr Sample kBefore{kSmallMode, 200, u"Before"};
constexpr Sample kSameSize{kSmallMode, 300, u"After"};
constexpr Sample kOtherSize{kOtherSmallMode, 400, u"After in another mode"};

void Store(StillStore& store, const Sample& sample) {
  store.StoreStill(1, sample.Describe(), sample.Frame());
}

/// What a pool may hold after an interrupted change: all of the old or all of the new.
void ExpectWhole(const std::filesystem::path& folder, const Sample* before, const Sample* after) {
  const auto holds = [&](const PoolContents& contents, const Sample* sample) {
    if (sample == nullptr) return !contents.slots[1].has_value();
    return contents.slots[1] == sample->Describe();
  };
  const PoolContents contents = LoadPool(folder);
  EXPECT_TRUE(holds(contents, before) || holds(contents, after));
  if (contents.slots[1]) {
    const std::vector<std::uint8_t> frame = LoadFrame(folder, contents, 1);
    EXPECT_EQ(Checksum(frame), contents.slots[1]->checksum);
  }
  // A writer opens it and leaves it tidy, with the same still.
  const PoolStore store(folder, {});
  EXPECT_EQ(store.Contents(), contents);
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    EXPECT_NE(entry.path().extension(), ".new") << entry.path();
  }
  if (contents.slots[1]) {
    EXPECT_EQ(Checksum(store.Frame(1)), contents.slots[1]->checksum);
    EXPECT_TRUE(std::filesystem::exists(folder / "slot-02.png"));
  } else {
    EXPECT_FALSE(std::filesystem::exists(folder / "slot-02.ay10"));
    EXPECT_FALSE(std::filesystem::exists(folder / "slot-02.png"));
  }
}

struct Change {
  const char* name;
  const Sample* before;
  const Sample* after;
};

constexpr Change kChanges[] = {
    {"the first still", nullptr, &kBefore},
    {"another still", &kBefore, &kSameSize},
    {"a still of another size", &kBefore, &kOtherSize},
    {"no still", &kBefore, nullptr},
};

void Apply(StillStore& store, const Change& change) {
  if (change.after != nullptr) {
    Store(store, *change.after);
  } else {
    store.ClearStill(1);
  }
}

/// Pools as they are before a change, made once: bringing files to the disk takes its time.
class Beginnings {
 public:
  /// Puts a pool as it is before `change` into `folder`.
  static void Prepare(const std::filesystem::path& folder, const Change& change) {
    static const Beginnings beginnings;
    std::filesystem::copy(beginnings.home_ / (change.before == nullptr ? "empty" : "used"), folder);
  }

 private:
  Beginnings() {
    PoolStore(home_ / "empty", kShape);
    PoolStore used(home_ / "used", kShape);
    Store(used, kBefore);
  }

  static inline const PoolShape kShape{.slots = 3, .mode = kSmallMode};
  TemporaryFolder home_;
};

/// How many file operations a change takes.
int CountOperations(const Change& change) {
  const TemporaryFolder home;
  Beginnings::Prepare(home / "pool", change);
  FailingFiles files(kNever, When::kBefore, FailingFiles::Throw);
  PoolStore store(home / "pool", {}, files);
  Apply(store, change);
  return files.Count();
}

TEST_F(PoolInterruption, LeavesAWholePoolWhenAnOperationFails) {
  for (const Change& change : kChanges) {
    const int operations = CountOperations(change);
    EXPECT_GE(operations, 4);
    for (int at = 0; at < operations; ++at) {
      for (const When when : {When::kBefore, When::kHalfway}) {
        SCOPED_TRACE(std::string(change.name) + ", operation " + std::to_string(at));
        const TemporaryFolder home;
        Beginnings::Prepare(home / "pool", change);
        {
          FailingFiles files(at, when, FailingFiles::Throw);
          PoolStore store(home / "pool", {}, files);
          EXPECT_THROW(Apply(store, change), PoolError);
          // What the store tells then is what the folder holds.
          EXPECT_EQ(LoadPool(home / "pool"), store.Contents());
        }
        ExpectWhole(home / "pool", change.before, change.after);
      }
    }
  }
}

TEST_F(PoolInterruption, TakesBackWhatItPreparedBeforeAFailure) {
  constexpr int kPreparations = 4;  // frame, picture, contact sheet, pool.json
  for (int at = 0; at < kPreparations; ++at) {
    SCOPED_TRACE("operation " + std::to_string(at));
    const TemporaryFolder home;
    Beginnings::Prepare(home / "pool", kChanges[1]);
    FailingFiles files(at, When::kHalfway, FailingFiles::Throw);
    PoolStore store(home / "pool", {}, files);
    EXPECT_THROW(Apply(store, kChanges[1]), PoolError);
    for (const auto& entry : std::filesystem::directory_iterator(home / "pool")) {
      EXPECT_NE(entry.path().extension(), ".new") << entry.path();
    }
  }
}

TEST_F(PoolInterruption, LetsTheSameWriterGoOnAfterAFailure) {
  const int operations = CountOperations(kChanges[2]);
  for (int at = 0; at < operations; ++at) {
    SCOPED_TRACE("operation " + std::to_string(at));
    const TemporaryFolder home;
    Beginnings::Prepare(home / "pool", kChanges[2]);
    FailingFiles files(at, When::kBefore, FailingFiles::Throw);
    PoolStore store(home / "pool", {}, files);
    EXPECT_THROW(Apply(store, kChanges[2]), PoolError);
    Store(store, kSameSize);
    EXPECT_EQ(LoadPool(home / "pool").slots[1], kSameSize.Describe());
    EXPECT_EQ(LoadFrame(home / "pool", LoadPool(home / "pool"), 1), kSameSize.Frame());
  }
}

TEST_F(PoolInterruption, SaysWhatTheSystemRefused) {
  const TemporaryFolder home;
  FailingFiles files(kNever, When::kBefore, FailingFiles::Throw);
  PoolStore store(home / "pool", {.mode = kSmallMode}, files);
  EXPECT_EQ(files.Count(), 4) << "a new pool is two files, written and put in place";
  FailingFiles full(0, When::kBefore, FailingFiles::Throw);
  store.Close();
  PoolStore again(home / "pool", {}, full);
  try {
    Store(again, kBefore);
    FAIL() << "the disk was full";
  } catch (const PoolError& error) {
    const std::string reason = std::make_error_code(std::errc::no_space_on_device).message();
    EXPECT_NE(std::string(error.what()).find("slot-02.ay10.new: cannot be written: " + reason),
              std::string::npos)
        << error.what();
  }
}

TEST_F(PoolInterruption, MakesANewPoolAfterAFailedAttempt) {
  for (int at = 0; at < 4; ++at) {
    SCOPED_TRACE("operation " + std::to_string(at));
    const TemporaryFolder home;
    FailingFiles files(at, When::kHalfway, FailingFiles::Throw);
    EXPECT_THROW(PoolStore(home / "pool", {}, files), PoolError);
    const PoolStore store(home / "pool", {});
    EXPECT_EQ(store.Contents(), NewPool({}));
  }
}

#ifndef _WIN32
void KillThisProcess(const std::filesystem::path&) {
  kill(getpid(), SIGKILL);
}

/// Runs a change in a child process, which is killed at an operation.
void ApplyAndBeKilled(const std::filesystem::path& folder, const Change& change, int at,
                      When when) {
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    FailingFiles files(at, when, KillThisProcess);
    PoolStore store(folder, {}, files);
    Apply(store, change);
    _exit(0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
}

TEST_F(PoolInterruption, LeavesAWholePoolWhenItsWriterIsKilled) {
  for (const Change& change : kChanges) {
    const int operations = CountOperations(change);
    for (int at = 0; at < operations; ++at) {
      for (const When when : {When::kBefore, When::kHalfway}) {
        SCOPED_TRACE(std::string(change.name) + ", operation " + std::to_string(at));
        const TemporaryFolder home;
        Beginnings::Prepare(home / "pool", change);
        ApplyAndBeKilled(home / "pool", change, at, when);
        ExpectWhole(home / "pool", change.before, change.after);
      }
    }
  }
}
#endif

}  // namespace
}  // namespace mixdecks::simulator
