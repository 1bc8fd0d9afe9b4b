// The fake service's script, and its notes of what happened.

#include "tests/transfer/fake_service.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace mixdecks {
namespace {

FakeService* currentService = nullptr;

constexpr std::array kCallNames = {
    "CreateDiscovery",
    "ConnectTo",
    "QueryMediaPool",
    "GetStills",
    "GetCount",
    "CreateIterator",
    "Next",
    "AddCallback switcher",
    "AddCallback pool",
    "AddCallback stills",
    "RemoveCallback switcher",
    "RemoveCallback pool",
    "RemoveCallback stills",
    "GetVideoMode",
    "CreateFrame",
    "GetBytes",
    "QueryStillsLock",
    "Lock",
    "SetPicture",
    "Unlock",
    "IsValid",
    "GetName",
    "SetSource",
};

template <typename Container>
auto Newest(const Container& callbacks) {
  EXPECT_FALSE(callbacks.empty());
  return callbacks.back();
}

}  // namespace

FakeService::FakeService() {
  currentService = this;
  RegisterFakeServiceClass();
}

FakeService::~FakeService() {
  Unregister();
  currentService = nullptr;
  EXPECT_EQ(state.liveObjects, 0) << "references were not given back";
  EXPECT_TRUE(state.switcherCallbacks.empty());
  EXPECT_TRUE(state.mediaPoolCallbacks.empty());
  EXPECT_TRUE(state.stillsCallbacks.empty());
}

void FakeService::Unregister() {
  if (std::exchange(registered_, false)) UnregisterFakeServiceClass();
}

void FakeService::Fail(Call call, HResult result, int nth) {
  const auto guard = Guard();
  scripts_[call].failures[nth] = result;
}

void FakeService::GiveNothing(Call call) {
  const auto guard = Guard();
  scripts_[call].givesNothing = true;
}

void FakeService::At(Call call, std::function<void(int)> hook) {
  const auto guard = Guard();
  scripts_[call].hook = std::move(hook);
}

FakeService::Answer FakeService::Visit(Call call, const std::string& about) {
  std::function<void(int)> hook;
  Answer answer{kResultOk, true};
  int nth = 0;
  {
    const auto guard = Guard();
    Script& script = scripts_[call];
    nth = ++script.count;
    hook = script.hook;
    for (const int time : {0, nth}) {
      const auto failure = script.failures.find(time);
      if (failure != script.failures.end()) answer = {failure->second, false};
    }
    if (script.givesNothing) answer.givesObject = false;
    const std::string name = kCallNames[static_cast<std::size_t>(call)];
    state.calls.push_back(about.empty() ? name : name + ' ' + about);
  }
  visited_.notify_all();
  if (hook) hook(nth);
  return answer;
}

int FakeService::Count(Call call) const {
  const auto guard = Guard();
  const auto script = scripts_.find(call);
  return script == scripts_.end() ? 0 : script->second.count;
}

void FakeService::WaitFor(Call call, int count) {
  auto guard = Guard();
  visited_.wait(guard, [&] { return scripts_[call].count >= count; });
}

std::vector<std::string> FakeService::Calls() const {
  const auto guard = Guard();
  return state.calls;
}

std::vector<FakePicture> FakeService::Pictures() const {
  const auto guard = Guard();
  return state.pictures;
}

std::vector<std::pair<std::int32_t, std::uint32_t>> FakeService::Sources() const {
  const auto guard = Guard();
  return state.sources;
}

std::u16string FakeService::LastAddress() const {
  const auto guard = Guard();
  return state.address;
}

int FakeService::LiveObjects() const {
  const auto guard = Guard();
  return state.liveObjects;
}

std::vector<ITMKSwitcherCallback*> FakeService::SwitcherCallbacks() const {
  const auto guard = Guard();
  return state.switcherCallbacks;
}

std::vector<ITMKSwitcherMediaPoolCallback*> FakeService::MediaPoolCallbacks() const {
  const auto guard = Guard();
  return state.mediaPoolCallbacks;
}

std::vector<ITMKSwitcherStillsCallback*> FakeService::StillsCallbacks() const {
  const auto guard = Guard();
  return state.stillsCallbacks;
}

ITMKSwitcherLockCallback* FakeService::LockCallback() const {
  const auto guard = Guard();
  return state.lockCallback;
}

void FakeService::SendSwitcherEvent(std::uint32_t event) {
  ITMKSwitcherCallback* callback = Newest(SwitcherCallbacks());
  std::thread([=] { EXPECT_EQ(callback->Notify(event), kResultOk); }).join();
}

void FakeService::SendStillsEvent(std::uint32_t event, std::uint32_t slot) {
  ITMKSwitcherStillsCallback* callback = Newest(StillsCallbacks());
  std::thread([=] { EXPECT_EQ(callback->Notify(event, nullptr, slot), kResultOk); }).join();
}

void FakeService::GrantLock() {
  ITMKSwitcherLockCallback* callback = LockCallback();
  std::thread([=] { EXPECT_EQ(callback->Locked(), kResultOk); }).join();
}

FakeService& CurrentFakeService() {
  return *currentService;
}

}  // namespace mixdecks
