// Handles made without the host, over the portable memory and a heap that can refuse.
#include "host/fallback_handle.h"

#include <gtest/gtest.h>

#include <cstring>

#include "host/movable_memory.h"
#include "host/plugin_entry.h"
#include "tests/host/heap_faults.h"

namespace mixdecks {
namespace {

constexpr std::size_t kSize = 16;

const char* HeaderOf(std::intptr_t handle) {
  return reinterpret_cast<const char*>(handle);
}

TEST(FallbackHandle, IsAHeaderOfPointerAndMark) {
  const std::intptr_t handle = NewFallbackHandle(kSize);
  ASSERT_NE(handle, 0);
  EXPECT_EQ(LastHandleError(), kHandleErrorNone);
  EXPECT_EQ(MovableSize(MovableHandleOf(HeaderOf(handle))), 12u);
  EXPECT_EQ(std::memcmp(HeaderOf(handle) + 8, "OTOF", 4), 0);

  void* data = nullptr;
  std::memcpy(&data, HeaderOf(handle), sizeof(data));
  EXPECT_EQ(MovableSize(MovableHandleOf(data)), kSize);
  EXPECT_EQ(LockWithoutHost(handle, kSize), data);
  DisposeFallbackHandle(handle);
}

TEST(FallbackHandle, KeepsItsDataFromLockToLock) {
  const std::intptr_t handle = NewFallbackHandle(kSize);
  auto* data = static_cast<char*>(LockWithoutHost(handle, kSize));
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(std::memcmp(data, "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", kSize), 0);
  std::memset(data, 0x5A, kSize);
  UnlockWithoutHost(handle);
  EXPECT_EQ(LockWithoutHost(handle, kSize), data);
  EXPECT_EQ(data[15], 0x5A);
  EXPECT_EQ(std::memcmp(HeaderOf(handle) + 8, "OTOF", 4), 0);
  UnlockWithoutHost(handle);
  DisposeFallbackHandle(handle);
}

TEST(FallbackHandle, EveryAllocationMayFail) {
  for (int failAt = 1; failAt <= 2; ++failAt) {
    Heap() = {.failAt = failAt};
    EXPECT_EQ(NewFallbackHandle(kSize), 0) << "request " << failAt;
    EXPECT_EQ(LastHandleError(), kHandleErrorNoMemory);
    EXPECT_EQ(Heap().live, 0) << "request " << failAt;
  }
  Heap() = {.failAt = 3};
  const std::intptr_t handle = NewFallbackHandle(kSize);
  EXPECT_NE(handle, 0);
  EXPECT_EQ(LastHandleError(), kHandleErrorNone);
  DisposeFallbackHandle(handle);
}

TEST(FallbackHandle, DisposingOfNullIsNoted) {
  DisposeFallbackHandle(0);
  EXPECT_EQ(LastHandleError(), kHandleErrorNoHandle);
}

TEST(FallbackHandle, DisposingFreesAHeaderWithoutData) {
  const std::intptr_t handle = NewFallbackHandle(kSize);
  void* data = LockWithoutHost(handle, kSize);
  FreeMovable(MovableHandleOf(data));
  std::memset(reinterpret_cast<void*>(handle), 0, sizeof(void*));
  DisposeFallbackHandle(handle);
  EXPECT_EQ(LastHandleError(), kHandleErrorNone);
}

TEST(FallbackHandle, AForeignBlockIsLockedAndUnlockedButNotDisposedOf) {
  const MovableHandle foreign = AllocateMovable(kSize);
  const auto word = reinterpret_cast<std::intptr_t>(foreign);
  void* address = LockWithoutHost(word, kSize);
  ASSERT_NE(address, nullptr);
  EXPECT_EQ(LockMovable(address), address) << "it is locked";
  UnlockWithoutHost(word);
  EXPECT_EQ(LockMovable(address), nullptr) << "it is unlocked";
  DisposeFallbackHandle(word);
  EXPECT_EQ(MovableSize(foreign), kSize);
  FreeMovable(foreign);
}

TEST(FallbackHandle, AForeignBlockThatIsTooSmallIsRefusedUnlocked) {
  const MovableHandle foreign = AllocateMovable(kSize - 1);
  void* address = LockMovable(foreign);
  UnlockMovable(foreign);
  EXPECT_EQ(LockWithoutHost(reinterpret_cast<std::intptr_t>(foreign), kSize), nullptr);
  EXPECT_EQ(LockMovable(address), nullptr) << "no lock stays behind";
  FreeMovable(foreign);
}

TEST(FallbackHandle, AForeignBlockOfAHeadersSizeIsNoHeaderWithoutTheMark) {
  const MovableHandle foreign = AllocateMovable(12);
  EXPECT_EQ(LockWithoutHost(reinterpret_cast<std::intptr_t>(foreign), kSize), nullptr);
  FreeMovable(foreign);
}

TEST(FallbackHandle, AWordThatIsNoHandleIsRefused) {
  alignas(16) static char own[16] = {0, 0, 0, 0, 0, 0, 0, 0, 'O', 'T', 'O', 'F'};
  const auto word = reinterpret_cast<std::intptr_t>(own);
  EXPECT_EQ(LockWithoutHost(word, kSize), nullptr);
  DisposeFallbackHandle(word);
  EXPECT_EQ(LastHandleError(), kHandleErrorNoHandle);
}

TEST(FallbackHandle, TheEntryTellsAHostWithoutProceduresThatMemoryIsShort) {
  const HostDialogs dialogs{
      .runAboutDialog = [](void*) -> std::intptr_t { return 0; },
      .runExportDialog = [](void*, ExportGlobals*) -> std::intptr_t { return 0; }};
  ExportRecord record{};
  record.imageMode = kImageModeRgb;
  for (int failAt = 1; failAt <= 3; ++failAt) {
    Heap() = {.failAt = failAt};
    std::intptr_t data = 0;
    std::int16_t result = 77;
    RunSelector(dialogs, static_cast<std::int16_t>(Selector::kStart), &record, &data, &result);
    EXPECT_EQ(result, failAt <= 2 ? kHostResultNoMemory : kHostResultDone) << failAt;
    EXPECT_EQ(data, 0) << failAt;
    EXPECT_EQ(Heap().live, 0) << failAt;
  }
}

}  // namespace
}  // namespace mixdecks
