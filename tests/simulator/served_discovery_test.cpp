// Discovery objects that bring their simulator with them.
#include "simulator/served_discovery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "platform/text.h"
#include "simulator/service_results.h"

namespace mixdecks::simulator {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ServedDiscoveries : public ::testing::Test {
 protected:
  ITMKSwitcherDiscovery* Create() {
    ITMKSwitcherDiscovery* discovery = nullptr;
    EXPECT_EQ(CreateServedDiscovery(owner, &discovery), kResultOk);
    return discovery;
  }

  int made = 0;
  Scenario scenario;
  std::vector<std::string> reported;
  const SimulatorOwner owner = {[this] {
                                  ++made;
                                  return std::make_unique<SwitcherSimulator>(scenario);
                                },
                                [this](std::span<const std::string> violations) {
                                  EXPECT_TRUE(reported.empty()) << "reported twice";
                                  reported.assign(violations.begin(), violations.end());
                                }};
};

TEST_F(ServedDiscoveries, ShareASimulatorUntilTheLastGoes) {
  EXPECT_FALSE(IsServing());
  ITMKSwitcherDiscovery* first = Create();
  ITMKSwitcherDiscovery* second = Create();
  EXPECT_EQ(made, 1);
  EXPECT_EQ(first->AddRef(), 2U);
  EXPECT_EQ(first->Release(), 1U);
  EXPECT_EQ(first->Release(), 0U);
  EXPECT_TRUE(IsServing());
  EXPECT_EQ(second->Release(), 0U);
  EXPECT_FALSE(IsServing());
  Create()->Release();
  EXPECT_EQ(made, 2);
}

TEST_F(ServedDiscoveries, Connect) {
  ITMKSwitcherDiscovery* discovery = Create();
  ITMKSwitcher* switcher = nullptr;
  std::uint32_t reason = 0;
  const Text address(u"192.168.10.240");
  EXPECT_EQ(discovery->ConnectTo(address.Get(), &switcher, &reason), kResultOk);
  if (switcher != nullptr) switcher->Release();
  discovery->Release();
}

TEST_F(ServedDiscoveries, GiveTheirOwnInterfacesAlone) {
  ITMKSwitcherDiscovery* discovery = Create();
  void* object = nullptr;
  EXPECT_EQ(discovery->QueryInterface(kSwitcherDiscoveryId, &object), kResultOk);
  EXPECT_EQ(object, discovery);
  EXPECT_EQ(discovery->Release(), 1U);
  EXPECT_EQ(discovery->QueryInterface(kSwitcherMediaPoolId, &object), kNoInterface);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(discovery->QueryInterface(kUnknownId, nullptr), kNullPointer);
  discovery->Release();
}

TEST_F(ServedDiscoveries, LeaveNothingBehindWithoutAnObject) {
  ITMKSwitcherDiscovery* discovery = nullptr;
  scenario.service = ServicePresence::kNull;
  EXPECT_EQ(CreateServedDiscovery(owner, &discovery), kResultOk);
  EXPECT_EQ(discovery, nullptr);
  scenario.service = ServicePresence::kAbsent;
  EXPECT_LT(CreateServedDiscovery(owner, &discovery), 0);
  EXPECT_FALSE(IsServing());
  const SimulatorOwner failing = {
      []() -> std::unique_ptr<SwitcherSimulator> { throw PoolError("no pool"); }, {}};
  EXPECT_THROW(CreateServedDiscovery(failing, &discovery), PoolError);
  EXPECT_FALSE(IsServing());
}

TEST_F(ServedDiscoveries, ReportWhatTheirClientsDidWhenTheLastGoes) {
  ITMKSwitcherDiscovery* first = Create();
  ITMKSwitcherDiscovery* second = Create();
  EXPECT_LT(second->ConnectTo(nullptr, nullptr, nullptr), 0);
  second->Release();
  EXPECT_TRUE(reported.empty());
  ITMKSwitcher* leaked = nullptr;
  std::uint32_t reason = 0;
  const Text address(u"192.168.10.240");
  EXPECT_EQ(first->ConnectTo(address.Get(), &leaked, &reason), kResultOk);
  first->Release();
  EXPECT_TRUE(IsServing()) << "the library is still needed";
  EXPECT_THAT(reported, IsEmpty());
  Create()->Release();
  EXPECT_FALSE(IsServing());
  EXPECT_THAT(reported, ElementsAre(HasSubstr("ConnectTo"), HasSubstr("was not released")));
  if (leaked != nullptr) leaked->Release();
}

TEST_F(ServedDiscoveries, MayGoBeforeWhatWasGotThroughThem) {
  ITMKSwitcherDiscovery* discovery = Create();
  ITMKSwitcher* switcher = nullptr;
  std::uint32_t reason = 0;
  const Text address(u"192.168.10.240");
  ASSERT_EQ(discovery->ConnectTo(address.Get(), &switcher, &reason), kResultOk);
  discovery->Release();
  EXPECT_TRUE(IsServing()) << "the library is still needed";
  EXPECT_EQ(switcher->Release(), 0u);
  EXPECT_FALSE(IsServing());
  EXPECT_THAT(reported, IsEmpty());
}

TEST_F(ServedDiscoveries, ReportNothingOfClientsThatKeepToTheRules) {
  Create()->Release();
  EXPECT_THAT(reported, IsEmpty());
}

TEST_F(ServedDiscoveries, ComeAndGoOnManyThreads) {
  const auto comeAndGo = [this] {
    for (int i = 0; i < 100; ++i)
      Create()->Release();
  };
  std::thread threads[] = {std::thread(comeAndGo), std::thread(comeAndGo)};
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_FALSE(IsServing());
}

}  // namespace
}  // namespace mixdecks::simulator
