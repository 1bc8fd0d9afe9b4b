// A client of the switcher service that keeps to the rules, and lets tests break them one by one.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/code_text.h"
#include "simulator/switcher_simulator.h"
#include "tests/simulator/event_log.h"
#include "transfer/service_contract.h"
#include "transfer/service_pointer.h"

namespace mixdecks::test {

/// A callback object as clients have it: it counts no references.
template <class Interface>
class UncountedCallback : public Interface {
 public:
  HResult QueryInterface(const ServiceId&, void**) override { return kResultFail; }
  std::uint32_t AddRef() override { return 1; }
  std::uint32_t Release() override { return 1; }
};

/// Logs "locked", "sedi", "cmpt 3", "pool" and then does what the test wants.
class LoggingCallbacks {
 public:
  EventLog log;
  std::function<void()> onLocked;
  std::function<void()> onDisconnected;
  std::function<void(std::uint32_t event, std::uint32_t slot)> onStills;
  HResult answer = kResultOk;

  ITMKSwitcherLockCallback* Lock() { return &lock_; }
  ITMKSwitcherMediaPoolCallback* MediaPool() { return &mediaPool_; }
  ITMKSwitcherCallback* Switcher() { return &switcher_; }
  ITMKSwitcherStillsCallback* Stills() { return &stills_; }

 private:
  struct LockCallback final : UncountedCallback<ITMKSwitcherLockCallback> {
    explicit LockCallback(LoggingCallbacks& callbacks) : owner(callbacks) {}
    HResult Locked() override {
      if (owner.onLocked) owner.onLocked();
      owner.log.Add("locked");
      return owner.answer;
    }
    LoggingCallbacks& owner;
  };
  struct MediaPoolCallback final : UncountedCallback<ITMKSwitcherMediaPoolCallback> {
    explicit MediaPoolCallback(LoggingCallbacks& callbacks) : owner(callbacks) {}
    HResult Ignored3() override {
      owner.log.Add("pool");
      return owner.answer;
    }
    HResult Ignored4() override { return owner.answer; }
    LoggingCallbacks& owner;
  };
  struct SwitcherCallback final : UncountedCallback<ITMKSwitcherCallback> {
    explicit SwitcherCallback(LoggingCallbacks& callbacks) : owner(callbacks) {}
    HResult Notify(std::uint32_t event) override {
      if (owner.onDisconnected) owner.onDisconnected();
      owner.log.Add(simulator::CodeText(event));
      return owner.answer;
    }
    LoggingCallbacks& owner;
  };
  struct StillsCallback final : UncountedCallback<ITMKSwitcherStillsCallback> {
    explicit StillsCallback(LoggingCallbacks& callbacks) : owner(callbacks) {}
    HResult Notify(std::uint32_t event, void*, std::uint32_t slot) override {
      if (owner.onStills) owner.onStills(event, slot);
      owner.log.Add(simulator::CodeText(event) + " " + std::to_string(slot));
      return owner.answer;
    }
    LoggingCallbacks& owner;
  };

  LockCallback lock_{*this};
  MediaPoolCallback mediaPool_{*this};
  SwitcherCallback switcher_{*this};
  StillsCallback stills_{*this};
};

/// Connects step by step, uploads as an export does, and cleans up at its end.
class TestClient {
 public:
  explicit TestClient(simulator::SwitcherSimulator& simulator);
  TestClient(const TestClient&) = delete;
  TestClient& operator=(const TestClient&) = delete;
  ~TestClient() { Close(); }

  /// Discovery, connection, media pool, stills and callbacks. The result of the first step that
  /// failed.
  HResult Connect(std::u16string_view address = u"192.168.10.240");
  /// What a connection takes but the callbacks.
  HResult ConnectWithoutCallbacks(std::u16string_view address);
  void AddCallbacks();
  void RemoveCallbacks();
  /// Leaves them registered for good.
  void ForgetCallbacks() { registered_ = false; }
  /// Removes the callbacks and releases all.
  void Close();

  HResult CountPlayers(std::uint32_t& count);
  HResult SlotName(std::uint32_t slot, std::u16string& name);

  /// Makes a frame of the switcher's mode and fills it; the mode's size is looked up as a client
  /// does.
  HResult MakeFrame(const std::vector<std::uint8_t>& packed);
  HResult RequestLock(std::uint32_t slot);
  HResult SetPicture(std::uint32_t slot, std::u16string_view name);
  /// A whole upload, from the frame to the lock given back. The event that ended it.
  std::string Upload(std::uint32_t slot, std::u16string_view name,
                     const std::vector<std::uint8_t>& packed);
  HResult ShowOnPlayer(std::uint32_t player, std::uint32_t slot, std::uint32_t type = kSourceStill);

  LoggingCallbacks callbacks;
  std::uint32_t reason = 0;
  ServicePointer<ITMKSwitcherDiscovery> discovery;
  ServicePointer<ITMKSwitcher> switcher;
  ServicePointer<ITMKSwitcherMediaPool> mediaPool;
  ServicePointer<ITMKSwitcherStills> stills;
  ServicePointer<ITMKSwitcherFrame> frame;

 private:
  simulator::SwitcherSimulator& simulator_;
  bool registered_ = false;
};

}  // namespace mixdecks::test
