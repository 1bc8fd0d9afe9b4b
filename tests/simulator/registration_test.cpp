// The simulator as the process's switcher service.
#include <gtest/gtest.h>

#include "simulator/service_registration.h"
#include "tests/simulator/test_client.h"

namespace mixdecks::simulator {
namespace {

TEST(ServiceRegistration, LastsAsLongAsItLives) {
  ServicePointer<ITMKSwitcherDiscovery> object;
  EXPECT_EQ(CreateSwitcherDiscovery(object.Receive()), kClassNotRegistered);
  SwitcherSimulator outer, inner;
  {
    const ScopedServiceRegistration outerRegistration(outer);
    ASSERT_EQ(CreateSwitcherDiscovery(object.Receive()), kResultOk);
    EXPECT_EQ(outer.LiveObjects(), 1u);
    {
      const ScopedServiceRegistration innerRegistration(inner);
      ASSERT_EQ(CreateSwitcherDiscovery(object.Receive()), kResultOk);
      EXPECT_EQ(outer.LiveObjects(), 0u);
      EXPECT_EQ(inner.LiveObjects(), 1u);
    }
    ASSERT_EQ(CreateSwitcherDiscovery(object.Receive()), kResultOk);
    EXPECT_EQ(outer.LiveObjects(), 1u);
    object.Reset();
  }
  EXPECT_EQ(CreateSwitcherDiscovery(object.Receive()), kClassNotRegistered);
}

}  // namespace
}  // namespace mixdecks::simulator
