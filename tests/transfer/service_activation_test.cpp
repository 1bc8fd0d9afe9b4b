// How the service is found, on every system alike.
#include "transfer/service_activation.h"

#include <gtest/gtest.h>

#include "tests/transfer/fake_service.h"
#include "transfer/service_pointer.h"

namespace mixdecks {
namespace {

using Discovery = ServicePointer<ITMKSwitcherDiscovery>;

TEST(ServiceActivation, GivesTheRegisteredClass) {
  FakeService service;
  ASSERT_GE(EnterService(), 0);
  {
    Discovery discovery;
    EXPECT_EQ(CreateSwitcherDiscovery(discovery.Receive()), kResultOk);
    ASSERT_TRUE(discovery);
    ServicePointer<ITMKSwitcher> switcher;
    std::uint32_t reason = 0;
    char16_t address[] = u"10.0.0.5";
    EXPECT_EQ(discovery->ConnectTo(address, switcher.Receive(), &reason), kResultOk);
    EXPECT_EQ(service.LiveObjects(), 2);
  }
  LeaveService();
}

TEST(ServiceActivation, FailsWithoutAClass) {
  FakeService service;
  ASSERT_GE(EnterService(), 0);
  service.Unregister();
  Discovery discovery;
  EXPECT_EQ(CreateSwitcherDiscovery(discovery.Receive()), kClassNotRegistered);
  EXPECT_FALSE(discovery);
  LeaveService();
}

TEST(ServiceActivation, PassesOnAFailureOfTheClass) {
  FakeService service;
  service.Fail(Call::kCreateDiscovery, kResultFail);
  ASSERT_GE(EnterService(), 0);
  Discovery discovery;
  EXPECT_EQ(CreateSwitcherDiscovery(discovery.Receive()), kResultFail);
  EXPECT_FALSE(discovery);
  LeaveService();
}

TEST(ServiceActivation, MaySucceedAndGiveNothing) {
  FakeService service;
  service.GiveNothing(Call::kCreateDiscovery);
  ASSERT_GE(EnterService(), 0);
  Discovery discovery;
  EXPECT_EQ(CreateSwitcherDiscovery(discovery.Receive()), kResultOk);
  EXPECT_FALSE(discovery);
  LeaveService();
}

TEST(ServiceActivation, EntersAThreadThatWasEnteredBefore) {
  ASSERT_GE(EnterService(), 0);
  EXPECT_GE(EnterService(), 0);
  LeaveService();
  LeaveService();
}

}  // namespace
}  // namespace mixdecks
