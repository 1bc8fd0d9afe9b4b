// The objects' tables of operations, called by number as any compiler's code calls them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "platform/text.h"
#include "simulator/switcher_simulator.h"
#include "tests/simulator/sample_frames.h"
#include "tests/simulator/test_client.h"

namespace mixdecks::simulator {
namespace {

using test::kSmallMode;
using test::LoggingCallbacks;
using testing::IsEmpty;

/// Calls operation number `slot` of an object's table; the object is the first argument.
template <class Result = HResult, class... Arguments>
Result CallSlot(void* object, int slot, Arguments... arguments) {
  void** table = nullptr;
  std::memcpy(&table, object, sizeof table);
  using Operation = Result (*)(void*, Arguments...);
  Operation operation = nullptr;
  std::memcpy(&operation, table + slot, sizeof operation);
  return operation(object, arguments...);
}

std::uint32_t Release(void* object) {
  return CallSlot<std::uint32_t>(object, 2);
}

TEST(ServiceTables, HoldEachOperationAtItsNumber) {
  Scenario scenario;
  scenario.mode = kSmallMode;
  SwitcherSimulator simulator(scenario);
  LoggingCallbacks callbacks;
  ITMKSwitcherDiscovery* discovery = nullptr;
  ASSERT_EQ(simulator.CreateDiscovery(&discovery), kResultOk);
  EXPECT_EQ(CallSlot<std::uint32_t>(discovery, 1), 2u);
  EXPECT_EQ(Release(discovery), 1u);

  const Text address(u"192.168.10.240");
  void* switcher = nullptr;
  std::uint32_t reason = 9;
  ASSERT_EQ(CallSlot(discovery, 3, address.Get(), &switcher, &reason), kResultOk);
  EXPECT_EQ(reason, 0u);
  void* mediaPool = nullptr;
  ASSERT_EQ(CallSlot(switcher, 0, &kSwitcherMediaPoolId, &mediaPool), kResultOk);
  std::uint32_t mode = 0;
  EXPECT_EQ(CallSlot(switcher, 4, &mode), kResultOk);
  EXPECT_EQ(mode, kSmallMode);
  void* stills = nullptr;
  ASSERT_EQ(CallSlot(mediaPool, 3, &stills), kResultOk);
  EXPECT_EQ(CallSlot(switcher, 17, callbacks.Switcher()), kResultOk);
  EXPECT_EQ(CallSlot(mediaPool, 12, callbacks.MediaPool()), kResultOk);
  EXPECT_EQ(CallSlot(stills, 15, callbacks.Stills()), kResultOk);

  std::uint32_t count = 0;
  EXPECT_EQ(CallSlot(stills, 3, &count), kResultOk);
  EXPECT_EQ(count, 20u);
  std::int32_t valid = 1;
  EXPECT_EQ(CallSlot(stills, 4, std::uint32_t{5}, &valid), kResultOk);
  EXPECT_EQ(valid, 0);
  Text name;
  EXPECT_EQ(CallSlot(stills, 5, std::uint32_t{5}, name.Receive()), kResultOk);
  EXPECT_TRUE(name);

  void* frame = nullptr;
  ASSERT_EQ(
      CallSlot(mediaPool, 6, kFrameFormatYuva, std::uint32_t{720}, std::uint32_t{486}, &frame),
      kResultOk);
  EXPECT_EQ(CallSlot<std::int32_t>(frame, 4), 486);
  EXPECT_EQ(CallSlot<std::int32_t>(frame, 5), 720 * 4);
  void* bytes = nullptr;
  ASSERT_EQ(CallSlot(frame, 7, &bytes), kResultOk);
  const auto picture = test::GreyFrame(kSmallMode, 222);
  std::memcpy(bytes, picture.data(), picture.size());

  void* lock = nullptr;
  ASSERT_EQ(CallSlot(stills, 0, &kSwitcherStillsLockId, &lock), kResultOk);
  ASSERT_EQ(CallSlot(lock, 17, callbacks.Lock(), std::uint32_t{5}), kResultOk);
  Release(lock);
  callbacks.log.Await("locked");
  const Text stillName(u"By number");
  ASSERT_EQ(CallSlot(stills, 11, std::uint32_t{5}, stillName.Get(), frame), kResultOk);
  callbacks.log.Await("cmpt 5");
  EXPECT_EQ(CallSlot(stills, 10, callbacks.Lock()), kResultOk);
  simulator.WaitUntilIdle();
  EXPECT_EQ(simulator.Frame(5), picture);

  void* players = nullptr;
  ASSERT_EQ(CallSlot(switcher, 16, &kSwitcherMediaPlayerIteratorId, &players), kResultOk);
  void* player = nullptr;
  ASSERT_EQ(CallSlot(players, 3, &player), kResultOk);
  EXPECT_EQ(CallSlot(player, 4, kSourceStill, std::uint32_t{5}), kResultOk);
  EXPECT_EQ(simulator.Contents().players[0], 5u);

  EXPECT_EQ(CallSlot(switcher, 18, callbacks.Switcher()), kResultOk);
  EXPECT_EQ(CallSlot(mediaPool, 13, callbacks.MediaPool()), kResultOk);
  EXPECT_EQ(CallSlot(stills, 16, callbacks.Stills()), kResultOk);
  for (void* object :
       {player, players, frame, stills, mediaPool, switcher, static_cast<void*>(discovery)}) {
    EXPECT_EQ(Release(object), 0u);
  }
  simulator.Shutdown();
  EXPECT_THAT(simulator.Violations(), IsEmpty());
}

}  // namespace
}  // namespace mixdecks::simulator
