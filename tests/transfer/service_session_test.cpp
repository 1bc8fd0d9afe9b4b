// The service may be unloaded as soon as it is left: nothing of it may be in use any more.
#include "transfer/service_session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "tests/transfer/fake_service.h"
#include "tests/transfer/front_end.h"
#include "tests/transfer/noted_activation.h"

namespace mixdecks {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ServiceSessions : public testing::Test {
 protected:
  ServiceSessions() {
    service_.videoMode = FourCharacterCode("ntsc");
    ObjectsAliveAtLeaving().clear();
  }
  ~ServiceSessions() override { ResultOfEntering() = kResultOk; }

  FakeService service_;
};

TEST_F(ServiceSessions, OutliveConnectionAndFrame) {
  FrontEnd frontEnd;
  frontEnd.Connect(3);
  frontEnd.Open({720, 486, false, std::vector<std::uint8_t>(std::size_t{720} * 486 * 4)});
  frontEnd.Export();
  service_.WaitFor(Call::kLock);
  service_.GrantLock();
  EXPECT_EQ(service_.LiveObjects(), 5);
  EXPECT_THAT(ObjectsAliveAtLeaving(), IsEmpty());
  frontEnd.Close();
  EXPECT_THAT(ObjectsAliveAtLeaving(), ElementsAre(0));
}

TEST_F(ServiceSessions, EndWithACreationThatFails) {
  service_.Fail(Call::kCreateDiscovery);
  EXPECT_THROW(FrontEnd(), int);
  EXPECT_THAT(ObjectsAliveAtLeaving(), ElementsAre(0));
}

// 1 is what tells a thread that had entered before.
TEST_F(ServiceSessions, AreBalancedWhenTheThreadHadEnteredBefore) {
  ResultOfEntering() = 1;
  FrontEnd().Close();
  EXPECT_THAT(ObjectsAliveAtLeaving(), ElementsAre(0));
}

TEST_F(ServiceSessions, ThatCannotBeginMeanNoServiceAndAreNotLeft) {
  ResultOfEntering() = kResultFail;
  EXPECT_THROW(FrontEnd(), int);
  EXPECT_EQ(service_.Count(Call::kCreateDiscovery), 0);
  EXPECT_THAT(ObjectsAliveAtLeaving(), IsEmpty());
}

}  // namespace
}  // namespace mixdecks
