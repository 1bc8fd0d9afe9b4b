// The wait primitives and ExportControl where memory runs out.

#include <gtest/gtest.h>

#include <new>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include "platform/heap.h"
#include "tests/control/export_control_bench.h"
#include "tests/control/failing_memory.h"
#include "tests/control/wake_counter.h"

namespace mixdecks::testing {
namespace {

class OutOfMemory : public ::testing::Test {
 protected:
  void TearDown() override {
    failingBlock = 0;
    EXPECT_EQ(heapBlocks, 0);
  }
  static void FailBlock(int number) {
    blocksAsked = 0;
    failingBlock = number;
  }
};

TEST_F(OutOfMemory, LeavesAnEventPairUnchanged) {
  int marker = 0;
  WaitEventPair pair{&marker};
  FailBlock(1);
  EXPECT_EQ(CreateWaitEventPair(pair), 1);
  EXPECT_EQ(pair.record, &marker);
}

TEST_F(OutOfMemory, StartsNoThread) {
  int marker = 0;
  WaitThread thread{&marker};
  FailBlock(1);
  EXPECT_EQ(StartWaitThread(
                thread, 0,
                [](void*) {
                  ADD_FAILURE() << "started";
                  return 0;
                },
                nullptr),
            kNoMemoryForThread);
  EXPECT_EQ(thread.handle, nullptr);
}

TEST_F(OutOfMemory, IsNotBroughtOnByStartRecords) {
  int blocksWhenRunning = -1;
  WaitThread thread;
  ASSERT_EQ(StartWaitThread(
                thread, 0,
                [](void* blocks) {
                  *static_cast<int*>(blocks) = heapBlocks;
                  return 0;
                },
                &blocksWhenRunning),
            0U);
  JoinWaitThread(thread, nullptr);
  EXPECT_EQ(blocksWhenRunning, 0) << "the record is gone before the function begins";
}

TEST_F(OutOfMemory, EndsACreationWithNull) {
  int failing = 1;
  for (;; ++failing) {
    ExportControlBench bench;
    FailBlock(failing);
    bench.Create();
    FailBlock(0);
    if (bench.control != nullptr) {
      bench.Close();
      break;
    }
    EXPECT_EQ(bench.sides, 0);
    EXPECT_EQ(heapBlocks, 0);
  }
  EXPECT_GT(failing, 1);
}

// Portable mutexes and the bench's switcher side are made by `new` too.
TEST_F(OutOfMemory, OfTheObjectItselfEndsACreation) {
  ExportControlBench bench;
  int failing = 1;
  for (; bench.control == nullptr; ++failing) {
    const FailNew fail(failing);
    try {
      bench.Create();
    } catch (const std::bad_alloc&) {
      EXPECT_EQ(bench.control, nullptr) << "the switcher side could not be made";
    }
    if (bench.control == nullptr) {
      EXPECT_EQ(bench.sides, 0);
    }
  }
  EXPECT_GT(failing, 2);
  bench.Close();
}

// Many rounds, since the worker has to sleep already when the closing begins.
TEST_F(OutOfMemory, DoesNotKeepAnOpeningFromClosing) {
  for (int round = 0; round < 200; ++round) {
    WakeCounter wakes;
    ExportControlBench bench;
    bench.onWake = [&wakes] { wakes.Post(); };
    bench.Open();
    ASSERT_NE(bench.control, nullptr);
    bench.control->PostDisconnected();
    wakes.Take();
    bench.RunOne();
    std::this_thread::yield();
    const FailNew fail(1);
    EXPECT_EQ(bench.Close(), 0);
    EXPECT_EQ(bench.sides, 0);
  }
}

struct PostedResult {
  const char* name;
  void (*post)(ExportControl& control);
};

void PrintTo(const PostedResult& result, std::ostream* out) {
  *out << result.name;
}

class LostPost : public OutOfMemory, public ::testing::WithParamInterface<PostedResult> {};

// Whoever posts, a thread of the service above all, could do nothing with an exception.
TEST_P(LostPost, LosesThatResultAlone) {
  WakeCounter wakes;
  ExportControlBench bench;
  bench.onWake = [&wakes] { wakes.Post(); };
  bench.Open();
  ASSERT_NE(bench.control, nullptr);
  {
    const FailNew fail(1);
    GetParam().post(*bench.control);
  }
  bench.control->PostConnectResult(true, 7, 7, 7);
  wakes.Take();
  bench.RunOne();
  bench.Close();
  EXPECT_EQ(bench.journal.Lines(),
            std::vector<std::string>{"connected yes reason 7 stills 7 players 7"});
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, LostPost,
    ::testing::Values(
        PostedResult{"ConnectResult", [](auto& c) { c.PostConnectResult(true, 0, 3, 4); }},
        PostedResult{"ExportFinished", [](auto& c) { c.PostExportFinished(true); }},
        PostedResult{"StillInfo", [](auto& c) { c.PostStillInfo(1, true, u"lost"); }},
        PostedResult{"Disconnected", [](auto& c) { c.PostDisconnected(); }},
        PostedResult{"MessageBox", [](auto& c) { c.PostMessageBox(u"lost", u"too"); }}),
    [](const auto& tested) { return std::string(tested.param.name); });

// The front end can tell its user, and nothing has begun.
TEST_F(OutOfMemory, ReachesTheFrontEndThatAsksForSomething) {
  ExportControlBench bench;
  bench.onRead = [](HeapBlock& image, bool&) {
    image = HeapBlock(64);
    return kResultOk;
  };
  bench.Open();
  ASSERT_NE(bench.control, nullptr);
  {
    const FailNew fail(1);
    EXPECT_THROW(bench.control->Connect(u"10.0.0.1"), std::bad_alloc);
    EXPECT_THROW(bench.control->Export(u"Still", 0, false, -1), std::bad_alloc);
  }
  bench.Close();
  EXPECT_TRUE(bench.journal.Lines().empty());
}

}  // namespace
}  // namespace mixdecks::testing
