// The library's load notification over a mutex that can be missing.
#include "plugin/load_notification.h"

#include <gtest/gtest.h>

#include "control/wait_primitives.h"
#include "platform/module_handle.h"

namespace mixdecks {
namespace {

bool mutexAvailable = true;
int liveMutexes = 0;
int instances[4];

}  // namespace

// These two take the place of the system's.
int CreateWaitMutex(WaitMutex& mutex) noexcept {
  mutex.handle = mutexAvailable ? &liveMutexes : nullptr;
  if (mutexAvailable) ++liveMutexes;
  return mutexAvailable ? 0 : 1;
}

int DestroyWaitMutex(WaitMutex& mutex) noexcept {
  EXPECT_EQ(mutex.handle, &liveMutexes);
  --liveMutexes;
  return 0;
}

namespace {

constexpr std::uint32_t kThreadAttach = 2;
constexpr std::uint32_t kThreadDetach = 3;

TEST(LoadNotification, AttachMakesOneMutexAndDetachClosesIt) {
  EXPECT_TRUE(OnLoadNotification(kProcessAttach, &instances[0]));
  EXPECT_EQ(liveMutexes, 1);
  EXPECT_EQ(ModuleHandle(), &instances[0]);
  EXPECT_TRUE(OnLoadNotification(kProcessDetach, &instances[0]));
  EXPECT_EQ(liveMutexes, 0);
}

TEST(LoadNotification, EveryNotificationStoresTheInstance) {
  for (const std::uint32_t reason :
       {kProcessAttach, kThreadAttach, kThreadDetach, kProcessDetach}) {
    EXPECT_TRUE(OnLoadNotification(reason, &instances[reason]));
    EXPECT_EQ(ModuleHandle(), &instances[reason]);
  }
  EXPECT_EQ(liveMutexes, 0);
}

TEST(LoadNotification, ThreadsChangeNothingElse) {
  EXPECT_TRUE(OnLoadNotification(kThreadAttach, &instances[0]));
  EXPECT_TRUE(OnLoadNotification(kThreadDetach, &instances[0]));
  EXPECT_EQ(liveMutexes, 0);
}

TEST(LoadNotification, WithoutAMutexTheLibraryIsNotLoaded) {
  mutexAvailable = false;
  EXPECT_FALSE(OnLoadNotification(kProcessAttach, &instances[1]));
  EXPECT_EQ(ModuleHandle(), &instances[1]);
  EXPECT_TRUE(OnLoadNotification(kProcessDetach, &instances[1])) << "nothing to close";
  EXPECT_EQ(liveMutexes, 0);
  mutexAvailable = true;
  EXPECT_TRUE(OnLoadNotification(kProcessAttach, &instances[1]));
  EXPECT_TRUE(OnLoadNotification(kProcessDetach, &instances[1]));
}

}  // namespace
}  // namespace mixdecks
