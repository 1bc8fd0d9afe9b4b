// Many clients, stations and disconnections at once; ThreadSanitizer watches.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

#include "simulator/service_threads.h"
#include "tests/simulator/sample_frames.h"
#include "tests/simulator/test_client.h"

namespace mixdecks::simulator {
namespace {

using test::EventLog;
using test::GreyFrame;
using test::kSmallMode;
using test::TestClient;
using testing::IsEmpty;

constexpr unsigned kClients = 4;
constexpr unsigned kRounds = 40;

/// A client that keeps its objects under a mutex which its callbacks take too, as a plug-in does.
class RacingClient {
 public:
  explicit RacingClient(SwitcherSimulator& simulator) : client_(simulator) {}

  /// Exports, and closes at any moment: with the lock asked for, with it granted, during the
  /// upload, or when all is over. May be disconnected at any moment, too.
  void Play(std::minstd_rand& random) {
    const std::uint32_t slot = random() % 4;
    const bool closesEarly = random() % 2 == 0;
    client_.callbacks.onLocked = [this, slot] {
      const std::lock_guard lock(mutex_);
      if (client_.stills) client_.SetPicture(slot, u"Racing");
    };
    client_.callbacks.onStills = [this](std::uint32_t event, std::uint32_t) {
      if (event == kEventNameChanged || event == kEventValidityChanged) return;
      const std::lock_guard lock(mutex_);
      if (client_.stills) client_.stills->Unlock(client_.callbacks.Lock());
      over_.Add("over");
    };
    client_.callbacks.onDisconnected = [this] { over_.Add("over"); };
    if (Export(slot) && !closesEarly) over_.Await("over");
    const std::lock_guard lock(mutex_);
    client_.Close();
  }

 private:
  bool Export(std::uint32_t slot) {
    const std::lock_guard lock(mutex_);
    return Succeeded(client_.Connect()) &&
           Succeeded(client_.MakeFrame(GreyFrame(kSmallMode, 64 + slot))) &&
           Succeeded(client_.RequestLock(slot));
  }

  std::mutex mutex_;
  EventLog over_;
  TestClient client_;
};

TEST(Concurrency, ManyClientsAndStationsAtOnce) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  Scenario scenario;
  scenario.mode = kSmallMode;
  scenario.slots = 4;
  SwitcherSimulator simulator(scenario);
  std::atomic<bool> done = false;
  // A callback that has begun when it is removed ends later: the clients stay until then.
  std::vector<std::unique_ptr<RacingClient>> clients;
  for (unsigned i = 0; i < kClients * kRounds; ++i) {
    clients.push_back(std::make_unique<RacingClient>(simulator));
  }
  std::vector<std::thread> threads;
  for (unsigned i = 0; i < kClients; ++i) {
    threads.emplace_back([&, i] {
      std::minstd_rand random(seed + i);
      for (unsigned round = 0; round < kRounds; ++round)
        clients[i * kRounds + round]->Play(random);
    });
  }
  std::thread station([&] {
    std::minstd_rand random(seed + 99);
    while (!done) {
      switch (random() % 4) {
        case 0:
          simulator.RenameStill(random() % 4, u"Theirs");
          break;
        case 1:
          simulator.ClearStill(random() % 4);
          break;
        case 2:
          simulator.Disconnect();
          break;
        default:
          simulator.StoreStill(random() % 4, u"New", GreyFrame(kSmallMode, 100));
      }
      std::this_thread::yield();
    }
  });
  for (std::thread& thread : threads) {
    thread.join();
  }
  done = true;
  station.join();
  simulator.Shutdown();
  EXPECT_THAT(simulator.Violations(), IsEmpty());
  EXPECT_EQ(simulator.LiveObjects(), 0u);
}

TEST(Concurrency, ServiceThreadsEndBeforeTheirOwnerDoes) {
  std::atomic<int> ran = 0;
  {
    ServiceThreads threads;
    for (int i = 0; i < 200; ++i) {
      EXPECT_TRUE(threads.Start([&] { ++ran; }));
      if (i % 50 == 0) threads.WaitUntilIdle();
    }
    threads.Stop();
    EXPECT_FALSE(threads.Start([&] { ++ran; }));
  }
  EXPECT_EQ(ran, 200);
}

}  // namespace
}  // namespace mixdecks::simulator
