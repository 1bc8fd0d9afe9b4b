#include "tests/e2e/session.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace mixdecks::e2e {

HostedPlugin::~HostedPlugin() {
  for (const std::string& violation : host.Violations())
    ADD_FAILURE() << violation;
}

Session::Session(simulator::Scenario scenario, HostDocument document)
    : HostedPlugin(std::move(document)), simulator(std::move(scenario)) {}

Session::~Session() {
  simulator.Shutdown();
  EXPECT_EQ(simulator.Violations(), expectedViolations);
}

std::int16_t HostedPlugin::Run(Selector selector, const User& user) {
  std::atomic<bool> ended = false;
  DialogDriver driver(GetCurrentThreadId(), ended);
  std::thread userThread([&] {
    user(driver);
    driver.CloseEverything();
  });
  const std::int16_t result = host.Call(library.Entry(), selector);
  ended = true;
  userThread.join();
  return result;
}

simulator::Still StillIn(const simulator::SwitcherSimulator& simulator, std::uint32_t slot) {
  const simulator::PoolContents contents = simulator.Contents();
  if (slot >= contents.slots.size() || !contents.slots[slot]) {
    ADD_FAILURE() << "slot " << slot << " is empty";
    return {};
  }
  return *contents.slots[slot];
}

}  // namespace mixdecks::e2e
