// A switcher service for tests: it does what its script says and counts everything it is asked.
//
// Each call of the contract is a point that can be made to fail, to give no object, or to run
// something of the test's. Callbacks come only when the test sends them, on a thread of their own.
// No lock of the fake is held while it calls the test or the code under test.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "transfer/service_contract.h"

namespace mixdecks {

enum class Call {
  kCreateDiscovery,
  kConnectTo,
  kQueryMediaPool,
  kGetStills,
  kGetCount,
  kCreateIterator,
  kNext,
  kAddSwitcherCallback,
  kAddMediaPoolCallback,
  kAddStillsCallback,
  kRemoveSwitcherCallback,
  kRemoveMediaPoolCallback,
  kRemoveStillsCallback,
  kGetVideoMode,
  kCreateFrame,
  kGetBytes,
  kQueryStillsLock,
  kLock,
  kSetPicture,
  kUnlock,
  kIsValid,
  kGetName,
  kSetSource,
};

/// One still slot of the fake's pool.
struct FakeSlot {
  bool valid = false;
  std::u16string name;
};

/// A still that was uploaded, as the frame looked at that moment.
struct FakePicture {
  std::uint32_t slot;
  std::u16string name;
  std::uint32_t format, width, height;
  std::int32_t rowBytes;
  std::vector<std::uint8_t> bytes;
};

class FakeService {
 public:
  /// Registers the class; one service at a time.
  FakeService();
  /// Takes the class away. Everything must have been given back.
  ~FakeService();
  FakeService(const FakeService&) = delete;
  FakeService& operator=(const FakeService&) = delete;

  /// Takes the class away early: the machine has no service.
  void Unregister();

  // The script; to be written before the calls it concerns.

  /// The result of the call's `nth` time from 1, or of all its times for 0. An object is not given.
  void Fail(Call call, HResult result = kResultFail, int nth = 0);
  /// The call succeeds and gives no object.
  void GiveNothing(Call call);
  /// Runs on the calling thread before the call does anything; the argument counts from 1.
  void At(Call call, std::function<void(int nth)> hook);

  std::uint32_t reason = 0;  ///< given by a failing `ConnectTo`
  std::vector<FakeSlot> slots{{true, u"Lower third"}, {false, u""}, {true, u"Lower third"}};
  std::int32_t mediaPlayers = 2;
  HResult endOfIteration = 1;  ///< what `Next` gives behind the last player
  std::uint32_t videoMode = FourCharacterCode("10i9");
  std::int32_t rowPadding = 0;    ///< bytes of a frame behind each row
  std::int32_t missingRows = 0;   ///< rows that a frame has fewer than was asked for
  std::uint8_t frameFill = 0xCD;  ///< what a frame holds before it is written

  // What happened.

  /// How often the call was made.
  int Count(Call call) const;
  /// Returns when the call has been made that often.
  void WaitFor(Call call, int count = 1);
  /// All calls in their order, each with the number that it was about, if any.
  std::vector<std::string> Calls() const;
  std::vector<FakePicture> Pictures() const;
  /// The stills that players were told to show: player and slot.
  std::vector<std::pair<std::int32_t, std::uint32_t>> Sources() const;
  std::u16string LastAddress() const;
  int LiveObjects() const;

  // The callbacks that are registered now, oldest first.
  std::vector<ITMKSwitcherCallback*> SwitcherCallbacks() const;
  std::vector<ITMKSwitcherMediaPoolCallback*> MediaPoolCallbacks() const;
  std::vector<ITMKSwitcherStillsCallback*> StillsCallbacks() const;
  ITMKSwitcherLockCallback* LockCallback() const;  ///< of the last `Lock`; stays after `Unlock`

  // Sends a callback to the newest that is registered, on a thread of its own, and returns when it
  // came back.
  void SendSwitcherEvent(std::uint32_t event);
  void SendStillsEvent(std::uint32_t event, std::uint32_t slot);
  void GrantLock();

  // For the fake's objects.
  struct Answer {
    HResult result;
    bool givesObject;
  };
  Answer Visit(Call call, const std::string& about = {});
  std::unique_lock<std::mutex> Guard() const { return std::unique_lock(mutex_); }
  struct State {
    int liveObjects = 0;
    std::vector<std::string> calls;
    std::vector<FakePicture> pictures;
    std::vector<std::pair<std::int32_t, std::uint32_t>> sources;
    std::u16string address;
    std::vector<ITMKSwitcherCallback*> switcherCallbacks;
    std::vector<ITMKSwitcherMediaPoolCallback*> mediaPoolCallbacks;
    std::vector<ITMKSwitcherStillsCallback*> stillsCallbacks;
    ITMKSwitcherLockCallback* lockCallback = nullptr;
  };
  State state;  ///< under `Guard`

 private:
  struct Script {
    std::map<int, HResult> failures;  ///< by time; 0 for all
    bool givesNothing = false;
    std::function<void(int)> hook;
    int count = 0;
  };

  mutable std::mutex mutex_;
  std::condition_variable visited_;
  std::map<Call, Script> scripts_;
  bool registered_ = true;
};

/// The one that is registered, or was before it was taken away early.
FakeService& CurrentFakeService();

/// What the registered class makes its objects by.
HResult CreateFakeDiscovery(ITMKSwitcherDiscovery** discovery);

/// A switcher of the fake without any connecting; one reference, the caller's.
ITMKSwitcher* CreateFakeSwitcher(FakeService& service);

/// Registers the class that makes the fake's discovery objects, or takes it away. On Windows this
/// enters COM on the calling thread, as a host does.
void RegisterFakeServiceClass();
void UnregisterFakeServiceClass();

}  // namespace mixdecks
