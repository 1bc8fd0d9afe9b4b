// The tables of the callbacks as the service sees them: called by position, never by name.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>

#include "control/export_control.h"
#include "tests/transfer/fake_service.h"
#include "tests/transfer/front_end.h"
#include "transfer/switcher_transfer_object.h"

namespace mixdecks {
namespace {

/// Calls the operation at a position of an object's table.
template <typename Result, typename... Arguments>
Result CallSlot(void* object, std::size_t slot, Arguments... arguments) {
  using Operation = Result (*)(void*, Arguments...);
  return (*static_cast<Operation**>(object))[slot](object, arguments...);
}

/// A switcher transfer with its own control, whose switcher side is another.
class CallbackTables : public testing::Test {
 protected:
  CallbackTables() : transfer_(new SwitcherTransfer(nullptr, frontEnd_.Control())) {}

  std::array<void*, 4> Tables() {
    return {static_cast<ITMKSwitcherLockCallback*>(transfer_.get()),
            static_cast<ITMKSwitcherMediaPoolCallback*>(transfer_.get()),
            static_cast<ITMKSwitcherCallback*>(transfer_.get()),
            static_cast<ITMKSwitcherStillsCallback*>(transfer_.get())};
  }

  FakeService service_;
  FrontEnd frontEnd_;
  std::unique_ptr<SwitcherTransfer> transfer_;
};

TEST_F(CallbackTables, StandInOrderAtTheObjectsStart) {
  auto* object = reinterpret_cast<std::byte*>(transfer_.get());
  const std::array<void*, 4> tables = Tables();
  for (std::size_t i = 0; i < tables.size(); ++i)
    EXPECT_EQ(tables[i], object + i * sizeof(void*));
}

TEST_F(CallbackTables, GiveNoOtherInterfaces) {
  for (void* table : Tables()) {
    for (const ServiceId& id : {kUnknownId, kSwitcherMediaPoolId}) {
      int untouched = 0;
      void* object = &untouched;
      EXPECT_EQ(CallSlot<HResult>(table, 0, &id, &object), static_cast<HResult>(0x80004005));
      EXPECT_EQ(object, &untouched);
    }
  }
}

TEST_F(CallbackTables, CountNothing) {
  for (void* table : Tables()) {
    for (int i = 0; i < 3; ++i)
      EXPECT_EQ(CallSlot<std::uint32_t>(table, 1), 1U);
    for (int i = 0; i < 9; ++i)
      EXPECT_EQ(CallSlot<std::uint32_t>(table, 2), 1U);
  }
}

TEST_F(CallbackTables, TakeTheMediaPoolsCallsAndIgnoreThem) {
  void* pool = Tables()[1];
  EXPECT_EQ(CallSlot<HResult>(pool, 3, std::uint32_t{1}, std::uint32_t{2}), 0);
  EXPECT_EQ(CallSlot<HResult>(pool, 4, std::uint32_t{1}, std::uint32_t{2}, &pool), 0);
}

TEST_F(CallbackTables, TakeNotificationsAndTheLock) {
  const std::array<void*, 4> tables = Tables();
  EXPECT_EQ(CallSlot<HResult>(tables[0], 3), 0);
  EXPECT_EQ(CallSlot<HResult>(tables[2], 3, kEventDisconnected, std::uint32_t{9}), 0);
  EXPECT_EQ(frontEnd_.TakeNext(), "disconnected");
  EXPECT_EQ(CallSlot<HResult>(tables[3], 3, kEventTransferFailed, static_cast<void*>(nullptr),
                              std::uint32_t{4}),
            0);
  EXPECT_EQ(frontEnd_.TakeNext(), "not exported");
}

// The destructor takes one position in one family of compilers and two in the other, where the
// second also frees the object.
TEST_F(CallbackTables, EndTheObjectBehindLocked) {
  const int objects = service_.LiveObjects();
  CallSlot<void>(transfer_.release(), 5);
  EXPECT_EQ(service_.LiveObjects(), objects - 1);
}

}  // namespace
}  // namespace mixdecks
