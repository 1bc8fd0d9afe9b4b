// The contract of the waiting objects. The same tests run against every adapter.

#include "control/wait_primitives.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <set>
#include <thread>
#include <vector>

namespace mixdecks {
namespace {

class Mutexes : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(CreateWaitMutex(mutex_), 0); }
  void TearDown() override { EXPECT_EQ(DestroyWaitMutex(mutex_), 0); }

  /// What `operation` gives on another thread, which has ended when this returns.
  int OnAnotherThread(int (*operation)(WaitMutex&)) {
    int result = -1;
    std::thread([&] { result = operation(mutex_); }).join();
    return result;
  }

  WaitMutex mutex_;
};

TEST_F(Mutexes, AreGivenBackByTheirOwnerAlone) {
  EXPECT_EQ(UnlockWaitMutex(mutex_), 1);
  EXPECT_EQ(LockWaitMutex(mutex_), 0);
  EXPECT_EQ(OnAnotherThread([](WaitMutex& mutex) { return UnlockWaitMutex(mutex); }), 1);
  EXPECT_EQ(UnlockWaitMutex(mutex_), 0);
  EXPECT_EQ(UnlockWaitMutex(mutex_), 1);
}

TEST_F(Mutexes, CountTheLocksOfTheirOwner) {
  EXPECT_EQ(LockWaitMutex(mutex_), 0);
  EXPECT_EQ(LockWaitMutex(mutex_), 0);
  EXPECT_EQ(UnlockWaitMutex(mutex_), 0);
  EXPECT_EQ(UnlockWaitMutex(mutex_), 0);
  EXPECT_EQ(UnlockWaitMutex(mutex_), 1);
}

TEST_F(Mutexes, LetOneThreadInAtATime) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 2000;
  int count = 0;
  int inside = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < kRounds; ++round) {
        const WaitLock lock(mutex_);
        EXPECT_EQ(++inside, 1);
        ++count;
        --inside;
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(count, kThreads * kRounds);
}

TEST_F(Mutexes, OfAThreadThatEndedCanBeLocked) {
  EXPECT_EQ(OnAnotherThread([](WaitMutex& mutex) { return LockWaitMutex(mutex); }), 0);
  EXPECT_EQ(LockWaitMutex(mutex_), 0);
  EXPECT_EQ(UnlockWaitMutex(mutex_), 0);
  EXPECT_EQ(UnlockWaitMutex(mutex_), 1);
}

TEST_F(Mutexes, SeveralOfOneEndedThreadCanBeLocked) {
  std::vector<WaitMutex> mutexes(3);
  for (WaitMutex& mutex : mutexes)
    ASSERT_EQ(CreateWaitMutex(mutex), 0);
  std::thread([&] {
    for (WaitMutex& mutex : mutexes) {
      LockWaitMutex(mutex);
      LockWaitMutex(mutex);
    }
    // Given back out of order, and one of them not wholly.
    UnlockWaitMutex(mutexes[1]);
    UnlockWaitMutex(mutexes[1]);
    UnlockWaitMutex(mutexes[0]);
  }).join();
  for (WaitMutex& mutex : mutexes) {
    EXPECT_EQ(LockWaitMutex(mutex), 0);
    EXPECT_EQ(UnlockWaitMutex(mutex), 0);
    EXPECT_EQ(UnlockWaitMutex(mutex), 1);
    DestroyWaitMutex(mutex);
  }
}

TEST(EmptyWaitingObjects, FailAndAreLeftAlone) {
  WaitMutex mutex;
  WaitEventPair pair;
  EXPECT_EQ(LockWaitMutex(mutex), 1);
  EXPECT_EQ(UnlockWaitMutex(mutex), 1);
  EXPECT_EQ(SignalWaitEvent(pair), 1);
  EXPECT_EQ(WaitEventReleasing(pair, mutex), 1);
  EXPECT_EQ(DestroyWaitMutex(mutex), 0);
  EXPECT_EQ(DestroyWaitEventPair(pair), 0);
}

class Events : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(CreateWaitMutex(mutex_), 0);
    ASSERT_EQ(CreateWaitEventPair(pair_), 0);
  }
  void TearDown() override {
    EXPECT_EQ(DestroyWaitEventPair(pair_), 0);
    EXPECT_EQ(DestroyWaitMutex(mutex_), 0);
  }

  /// Takes the mutex again and again until `condition` holds under it.
  void AwaitUnderMutex(const std::function<bool()>& condition) {
    for (;;) {
      {
        const WaitLock lock(mutex_);
        if (condition()) return;
      }
      std::this_thread::yield();
    }
  }

  WaitMutex mutex_;
  WaitEventPair pair_;
};

TEST_F(Events, RememberASignalThatNobodyWaitedFor) {
  EXPECT_EQ(SignalWaitEvent(pair_), 0);
  LockWaitMutex(mutex_);
  EXPECT_EQ(WaitEventReleasing(pair_, mutex_), 0);
  EXPECT_EQ(UnlockWaitMutex(mutex_), 0) << "the mutex is held again after the wait";
  EXPECT_EQ(UnlockWaitMutex(mutex_), 1);
}

TEST_F(Events, DoNotWaitWithoutTheMutex) {
  EXPECT_EQ(WaitEventReleasing(pair_, mutex_), 1);
  EXPECT_EQ(SignalWaitEvent(pair_), 0);
  EXPECT_EQ(WaitEventReleasing(pair_, mutex_), 1);
  LockWaitMutex(mutex_);
  EXPECT_EQ(WaitEventReleasing(pair_, mutex_), 0) << "the signal is still there";
  UnlockWaitMutex(mutex_);
}

TEST_F(Events, ReleaseOneLockAndTakeOneAgain) {
  SignalWaitEvent(pair_);
  LockWaitMutex(mutex_);
  LockWaitMutex(mutex_);
  EXPECT_EQ(WaitEventReleasing(pair_, mutex_), 0);
  EXPECT_EQ(UnlockWaitMutex(mutex_), 0);
  EXPECT_EQ(UnlockWaitMutex(mutex_), 0);
  EXPECT_EQ(UnlockWaitMutex(mutex_), 1);
}

TEST_F(Events, ReleaseTheMutexWhileWaiting) {
  bool waiting = false;
  bool answered = false;
  std::thread waiter([&] {
    const WaitLock lock(mutex_);
    waiting = true;
    while (!answered)
      EXPECT_EQ(WaitEventReleasing(pair_, mutex_), 0);
  });
  // The waiter gives the mutex away in its wait alone.
  AwaitUnderMutex([&] { return waiting; });
  {
    const WaitLock lock(mutex_);
    answered = true;
    SignalWaitEvent(pair_);
  }
  waiter.join();
}

TEST_F(Events, CountTwoSignalsAsOne) {
  SignalWaitEvent(pair_);
  SignalWaitEvent(pair_);
  int waits = 0;
  bool signalled = false;
  std::thread waiter([&] {
    const WaitLock lock(mutex_);
    WaitEventReleasing(pair_, mutex_);
    waits = 1;
    WaitEventReleasing(pair_, mutex_);
    waits = 2;
    EXPECT_TRUE(signalled) << "the second wait needs a third signal";
  });
  AwaitUnderMutex([&] { return waits == 1; });
  // A second remembered signal would let the waiter through one of these gaps.
  for (int round = 0; round < 500; ++round) {
    const WaitLock lock(mutex_);
    EXPECT_EQ(waits, 1);
  }
  {
    const WaitLock lock(mutex_);
    signalled = true;
    SignalWaitEvent(pair_);
  }
  waiter.join();
}

TEST_F(Events, CarryWorkFromThreadToThread) {
  constexpr int kItems = 3000;
  std::vector<int> queue;
  std::vector<int> received;
  std::thread consumer([&] {
    const WaitLock lock(mutex_);
    while (received.size() < kItems) {
      if (queue.empty()) WaitEventReleasing(pair_, mutex_);
      received.insert(received.end(), queue.begin(), queue.end());
      queue.clear();
    }
  });
  for (int item = 0; item < kItems; ++item) {
    const WaitLock lock(mutex_);
    queue.push_back(item);
    SignalWaitEvent(pair_);
  }
  consumer.join();
  ASSERT_EQ(received.size(), static_cast<std::size_t>(kItems));
  for (int item = 0; item < kItems; ++item)
    EXPECT_EQ(received[static_cast<std::size_t>(item)], item);
}

TEST(Threads, RunTheirFunctionAndTellItsResult) {
  int argument = 41;
  WaitThread thread;
  ASSERT_EQ(StartWaitThread(
                thread, 0, [](void* number) { return ++*static_cast<int*>(number); }, &argument),
            0U);
  EXPECT_NE(thread.handle, nullptr);
  std::uintptr_t exitCode = 0;
  EXPECT_EQ(JoinWaitThread(thread, &exitCode), 0);
  EXPECT_EQ(exitCode, 42U);
  EXPECT_EQ(argument, 42);
}

TEST(Threads, WidenTheirResultWithoutSign) {
  WaitThread thread;
  ASSERT_EQ(StartWaitThread(
                thread, 0, [](void*) { return -2; }, nullptr),
            0U);
  std::uintptr_t exitCode = 0;
  JoinWaitThread(thread, &exitCode);
  EXPECT_EQ(exitCode, std::uintptr_t{0xFFFFFFFE});
}

TEST(Threads, NeedNoPlaceForTheirResult) {
  bool ran = false;
  WaitThread thread;
  ASSERT_EQ(StartWaitThread(
                thread, 0,
                [](void* flag) {
                  *static_cast<bool*>(flag) = true;
                  return 0;
                },
                &ran),
            0U);
  EXPECT_EQ(JoinWaitThread(thread, nullptr), 0);
  EXPECT_TRUE(ran);
}

TEST(Threads, HaveIdsOfTheirOwn) {
  std::set<std::uint32_t> ids{CurrentWaitThreadId()};
  EXPECT_EQ(ids.count(CurrentWaitThreadId()), 1U);
  // All live at once: a system may give an ended thread's id away again.
  std::vector<std::uint32_t> seen(8);
  std::vector<std::thread> threads;
  WaitMutex held;
  ASSERT_EQ(CreateWaitMutex(held), 0);
  LockWaitMutex(held);
  for (std::uint32_t& id : seen) {
    threads.emplace_back([&id, &held] {
      id = CurrentWaitThreadId();
      const WaitLock lock(held);
    });
  }
  UnlockWaitMutex(held);
  for (std::thread& thread : threads)
    thread.join();
  DestroyWaitMutex(held);
  for (const std::uint32_t id : seen)
    EXPECT_TRUE(ids.insert(id).second) << id;
  EXPECT_EQ(ids.count(0), 0U);
}

TEST(Threads, AreJoinedUnlessTheirOwnIdIsGiven) {
  WaitThread thread;
  ASSERT_EQ(StartWaitThread(
                thread, 0, [](void*) { return 7; }, nullptr),
            0U);
  std::uintptr_t exitCode = 0;
  EXPECT_EQ(JoinWaitThreadUnlessSelf(thread, &exitCode, 0), 0);
  EXPECT_EQ(exitCode, 7U);
}

TEST(Threads, LetThemselvesGoWithoutWaiting) {
  struct Shared {
    WaitMutex mutex;
    WaitThread thread;
    std::uintptr_t exitCode = 99;
    int result = -1;
  } shared;
  ASSERT_EQ(CreateWaitMutex(shared.mutex), 0);
  LockWaitMutex(shared.mutex);  // until the thread's handle is stored
  ASSERT_EQ(StartWaitThread(
                shared.thread, 0,
                [](void* argument) {
                  auto& own = *static_cast<Shared*>(argument);
                  const WaitLock lock(own.mutex);
                  const std::uint32_t self = CurrentWaitThreadId();
                  own.result = JoinWaitThreadUnlessSelf(own.thread, &own.exitCode, self);
                  return 5;
                },
                &shared),
            0U);
  int result = -1;
  while (result == -1) {
    UnlockWaitMutex(shared.mutex);
    std::this_thread::yield();
    LockWaitMutex(shared.mutex);
    result = shared.result;
  }
  EXPECT_EQ(result, 0);
  EXPECT_EQ(shared.exitCode, 0U);
  UnlockWaitMutex(shared.mutex);
  DestroyWaitMutex(shared.mutex);
}

}  // namespace
}  // namespace mixdecks
