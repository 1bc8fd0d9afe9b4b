// The exploration itself: it must find what it is there to find.

#include "tests/control/exploration.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

#include "control/wait_primitives.h"

namespace mixdecks::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Two mutexes that two threads take. Counted, for a scenario that stands still never ends.
struct TwoMutexes {
  TwoMutexes() {
    CreateWaitMutex(first);
    CreateWaitMutex(second);
  }
  void Destroy() {
    DestroyWaitMutex(first);
    DestroyWaitMutex(second);
  }
  WaitMutex first;
  WaitMutex second;
};

int TakeSecondThenFirst(void* argument) {
  auto& mutexes = *static_cast<TwoMutexes*>(argument);
  const WaitLock second(mutexes.second);
  const WaitLock first(mutexes.first);
  return 0;
}

TEST(Exploration, FindsThreadsThatWaitForEachOther) {
  const auto result = Explore(1, [] {
    TwoMutexes mutexes;
    WaitThread other;
    StartWaitThread(other, 0, TakeSecondThenFirst, &mutexes);
    {
      const WaitLock first(mutexes.first);
      const WaitLock second(mutexes.second);
    }
    JoinWaitThread(other, nullptr);
    mutexes.Destroy();
  });
  EXPECT_THAT(result.failure, HasSubstr("no thread can go on"));
}

TEST(Exploration, FindsASignalThatNobodyGives) {
  const auto result = Explore(0, [] {
    WaitMutex mutex;
    WaitEventPair pair;
    CreateWaitMutex(mutex);
    CreateWaitEventPair(pair);
    LockWaitMutex(mutex);
    WaitEventReleasing(pair, mutex);
  });
  EXPECT_THAT(result.failure, HasSubstr("no thread can go on"));
}

TEST(Exploration, FindsObjectsLeftBehind) {
  const auto result = Explore(0, [] { TwoMutexes mutexes; });
  EXPECT_THAT(result.failure, HasSubstr("left behind"));
}

TEST(Exploration, FindsUseAfterTheEnd) {
  const auto result = Explore(0, [] {
    TwoMutexes mutexes;
    WaitMutex copy = mutexes.first;
    mutexes.Destroy();
    LockWaitMutex(copy);
  });
  EXPECT_THAT(result.failure, HasSubstr("after its end"));
}

TEST(Exploration, FindsTheEndOfAMutexInUse) {
  const auto result = Explore(0, [] {
    TwoMutexes mutexes;
    LockWaitMutex(mutexes.first);
    mutexes.Destroy();
  });
  EXPECT_THAT(result.failure, HasSubstr("owned it"));
}

TEST(Exploration, TriesEveryOrder) {
  static std::string order;
  std::set<std::string> orders;
  const auto result = Explore(3, [&orders] {
    order.clear();
    WaitThread other;
    StartWaitThread(
        other, 0,
        [](void*) {
          order += 'a';
          SchedulingPoint();
          order += 'b';
          return 0;
        },
        nullptr);
    order += '1';
    SchedulingPoint();
    order += '2';
    JoinWaitThread(other, nullptr);
    orders.insert(order);
  });
  EXPECT_THAT(result.failure, IsEmpty());
  EXPECT_EQ(orders, (std::set<std::string>{"12ab", "1a2b", "1ab2", "a12b", "a1b2", "ab12"}));
}

TEST(Exploration, WaitsUntilTheOthersCannotGoOn) {
  const auto result = Explore(2, [] {
    static int steps;
    steps = 0;
    WaitThread other;
    StartWaitThread(
        other, 0,
        [](void*) {
          for (int i = 0; i < 3; ++i) {
            SchedulingPoint();
            ++steps;
          }
          return 0;
        },
        nullptr);
    WaitUntilIdle();
    EXPECT_EQ(steps, 3);
    JoinWaitThread(other, nullptr);
  });
  EXPECT_THAT(result.failure, IsEmpty());
}

}  // namespace
}  // namespace mixdecks::testing
