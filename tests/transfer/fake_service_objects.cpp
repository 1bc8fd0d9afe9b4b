// The objects that the fake service gives.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <utility>

#include "platform/text.h"
#include "tests/transfer/fake_service.h"

namespace mixdecks {
namespace {

/// An object that counts its references and is known to the service while it lives.
template <typename... Interfaces>
class Counted : public Interfaces... {
 public:
  Counted(FakeService& service, const char* name) : service_(service), name_(name) {
    const auto guard = service_.Guard();
    ++service_.state.liveObjects;
  }
  virtual ~Counted() {
    const auto guard = service_.Guard();
    --service_.state.liveObjects;
    service_.state.calls.push_back("end of " + std::string(name_));
  }

  HResult QueryInterface(const ServiceId&, void** object) override {
    *object = nullptr;
    return kResultFail;
  }
  std::uint32_t AddRef() override { return ++references_; }
  std::uint32_t Release() override {
    const std::uint32_t left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  /// Makes the call's visit and, if the script says so, the object that it gives.
  template <typename Interface, typename Make>
  HResult Give(Call call, Interface** object, Make make, const std::string& about = {}) {
    *object = nullptr;
    const FakeService::Answer answer = service_.Visit(call, about);
    if (answer.givesObject) *object = make();
    return answer.result;
  }

  FakeService& service_;

 private:
  const char* name_;
  std::atomic<std::uint32_t> references_ = 1;
};

template <typename Callback>
HResult Register(FakeService& service, Call call, std::vector<Callback*>& callbacks,
                 Callback* callback) {
  const FakeService::Answer answer = service.Visit(call);
  const auto guard = service.Guard();
  if (Succeeded(answer.result)) callbacks.push_back(callback);
  return answer.result;
}

template <typename Callback>
HResult Unregister(FakeService& service, Call call, std::vector<Callback*>& callbacks,
                   Callback* callback) {
  const FakeService::Answer answer = service.Visit(call);
  const auto guard = service.Guard();
  const auto found = std::find(callbacks.begin(), callbacks.end(), callback);
  EXPECT_NE(found, callbacks.end()) << "a callback was removed that is not registered";
  if (found != callbacks.end()) callbacks.erase(found);
  return answer.result;
}

class Frame final : public Counted<ITMKSwitcherFrame> {
 public:
  Frame(FakeService& service, std::uint32_t format, std::uint32_t width, std::uint32_t height)
      : Counted(service, "frame"),
        format_(format),
        width_(width),
        height_(static_cast<std::int32_t>(height) - service.missingRows),
        rowBytes_(static_cast<std::int32_t>(width) * 4 + service.rowPadding),
        // A frame with short rows is made whole, so that writing past a row is a fault of its own.
        bytes_(static_cast<std::size_t>(height_) * static_cast<std::size_t>(rowBytes_),
               service.frameFill) {}

  HResult Unused3() override { return kResultFail; }
  std::int32_t GetHeight() override { return height_; }
  std::int32_t GetRowBytes() override { return rowBytes_; }
  HResult Unused6() override { return kResultFail; }
  HResult GetBytes(void** bytes) override {
    *bytes = nullptr;
    const FakeService::Answer answer = service_.Visit(Call::kGetBytes);
    if (answer.givesObject) *bytes = bytes_.data();
    return answer.result;
  }

  FakePicture Snapshot(std::uint32_t slot, const char16_t* name) const {
    return {slot,   name == nullptr ? std::u16string() : name, format_,
            width_, static_cast<std::uint32_t>(height_),       rowBytes_,
            bytes_};
  }

 private:
  std::uint32_t format_, width_;
  std::int32_t height_, rowBytes_;
  std::vector<std::uint8_t> bytes_;
};

class StillsLock final : public Counted<ITMKSwitcherStillsLock> {
 public:
  explicit StillsLock(FakeService& service) : Counted(service, "stills lock") {}
  HResult Unused3() override { return kResultFail; }
  HResult Unused4() override { return kResultFail; }
  HResult Unused5() override { return kResultFail; }
  HResult Unused6() override { return kResultFail; }
  HResult Unused7() override { return kResultFail; }
  HResult Unused8() override { return kResultFail; }
  HResult Unused9() override { return kResultFail; }
  HResult Unused10() override { return kResultFail; }
  HResult Unused11() override { return kResultFail; }
  HResult Unused12() override { return kResultFail; }
  HResult Unused13() override { return kResultFail; }
  HResult Unused14() override { return kResultFail; }
  HResult Unused15() override { return kResultFail; }
  HResult Unused16() override { return kResultFail; }
  HResult Lock(ITMKSwitcherLockCallback* callback, std::uint32_t slot) override {
    {
      const auto guard = service_.Guard();
      service_.state.lockCallback = callback;
    }
    return service_.Visit(Call::kLock, std::to_string(slot)).result;
  }
};

class Stills final : public Counted<ITMKSwitcherStills> {
 public:
  explicit Stills(FakeService& service) : Counted(service, "stills") {}

  HResult QueryInterface(const ServiceId& id, void** object) override {
    if (id != kSwitcherStillsLockId) return Counted::QueryInterface(id, object);
    ITMKSwitcherStillsLock* lock = nullptr;
    const HResult result =
        Give(Call::kQueryStillsLock, &lock, [this] { return new StillsLock(service_); });
    *object = lock;
    return result;
  }
  HResult GetCount(std::uint32_t* count) override {
    const FakeService::Answer answer = service_.Visit(Call::kGetCount);
    if (Succeeded(answer.result)) *count = static_cast<std::uint32_t>(service_.slots.size());
    return answer.result;
  }
  HResult IsValid(std::uint32_t slot, std::int32_t* valid) override {
    const FakeService::Answer answer = service_.Visit(Call::kIsValid, std::to_string(slot));
    *valid = service_.slots.at(slot).valid ? 1 : 0;
    return answer.result;
  }
  HResult GetName(std::uint32_t slot, char16_t** name) override {
    *name = nullptr;
    const FakeService::Answer answer = service_.Visit(Call::kGetName, std::to_string(slot));
    // Given on failure too: whoever asked owns it all the same.
    *name = Text(service_.slots.at(slot).name).Detach();
    return answer.result;
  }
  HResult Unused6() override { return kResultFail; }
  HResult Unused7() override { return kResultFail; }
  HResult Unused8() override { return kResultFail; }
  HResult Unused9() override { return kResultFail; }
  HResult Unlock(ITMKSwitcherLockCallback*) override {
    return service_.Visit(Call::kUnlock).result;
  }
  HResult SetPicture(std::uint32_t slot, char16_t* name, ITMKSwitcherFrame* frame) override {
    const FakeService::Answer answer = service_.Visit(Call::kSetPicture, std::to_string(slot));
    const auto guard = service_.Guard();
    service_.state.pictures.push_back(static_cast<Frame*>(frame)->Snapshot(slot, name));
    return answer.result;
  }
  HResult Unused12() override { return kResultFail; }
  HResult Unused13() override { return kResultFail; }
  HResult Unused14() override { return kResultFail; }
  HResult AddCallback(ITMKSwitcherStillsCallback* callback) override {
    return Register(service_, Call::kAddStillsCallback, service_.state.stillsCallbacks, callback);
  }
  HResult RemoveCallback(ITMKSwitcherStillsCallback* callback) override {
    return Unregister(service_, Call::kRemoveStillsCallback, service_.state.stillsCallbacks,
                      callback);
  }
};

class MediaPool final : public Counted<ITMKSwitcherMediaPool> {
 public:
  explicit MediaPool(FakeService& service) : Counted(service, "pool") {}

  HResult GetStills(ITMKSwitcherStills** stills) override {
    return Give(Call::kGetStills, stills, [this] { return new Stills(service_); });
  }
  HResult Unused4() override { return kResultFail; }
  HResult Unused5() override { return kResultFail; }
  HResult CreateFrame(std::uint32_t format, std::uint32_t width, std::uint32_t height,
                      ITMKSwitcherFrame** frame) override {
    return Give(
        Call::kCreateFrame, frame, [&] { return new Frame(service_, format, width, height); },
        std::to_string(width) + "x" + std::to_string(height));
  }
  HResult Unused7() override { return kResultFail; }
  HResult Unused8() override { return kResultFail; }
  HResult Unused9() override { return kResultFail; }
  HResult Unused10() override { return kResultFail; }
  HResult Unused11() override { return kResultFail; }
  HResult AddCallback(ITMKSwitcherMediaPoolCallback* callback) override {
    return Register(service_, Call::kAddMediaPoolCallback, service_.state.mediaPoolCallbacks,
                    callback);
  }
  HResult RemoveCallback(ITMKSwitcherMediaPoolCallback* callback) override {
    return Unregister(service_, Call::kRemoveMediaPoolCallback, service_.state.mediaPoolCallbacks,
                      callback);
  }
};

class MediaPlayer final : public Counted<ITMKSwitcherMediaPlayer> {
 public:
  MediaPlayer(FakeService& service, std::int32_t number)
      : Counted(service, "player"), number_(number) {}
  HResult Unused3() override { return kResultFail; }
  HResult SetSource(std::uint32_t type, std::uint32_t index) override {
    EXPECT_EQ(type, kSourceStill);
    const FakeService::Answer answer = service_.Visit(Call::kSetSource, std::to_string(number_));
    const auto guard = service_.Guard();
    if (Succeeded(answer.result)) service_.state.sources.emplace_back(number_, index);
    return answer.result;
  }

 private:
  std::int32_t number_;
};

class Players final : public Counted<ITMKSwitcherMediaPlayerIterator> {
 public:
  explicit Players(FakeService& service) : Counted(service, "players") {}
  HResult Next(ITMKSwitcherMediaPlayer** player) override {
    *player = nullptr;
    const FakeService::Answer answer = service_.Visit(Call::kNext);
    if (answer.result != 0) {
      // Given with a success other than 0 too: it is no player, yet whoever asked owns it.
      if (answer.result > 0) *player = new MediaPlayer(service_, next_);
      return answer.result;
    }
    if (next_ == service_.mediaPlayers) return service_.endOfIteration;
    if (answer.givesObject) *player = new MediaPlayer(service_, next_);
    ++next_;
    return 0;
  }

 private:
  std::int32_t next_ = 0;
};

class Switcher final : public Counted<ITMKSwitcher> {
 public:
  explicit Switcher(FakeService& service) : Counted(service, "switcher") {}

  HResult QueryInterface(const ServiceId& id, void** object) override {
    if (id != kSwitcherMediaPoolId) return Counted::QueryInterface(id, object);
    ITMKSwitcherMediaPool* pool = nullptr;
    const HResult result =
        Give(Call::kQueryMediaPool, &pool, [this] { return new MediaPool(service_); });
    *object = pool;
    return result;
  }
  HResult Unused3() override { return kResultFail; }
  HResult GetVideoMode(std::uint32_t* mode) override {
    const FakeService::Answer answer = service_.Visit(Call::kGetVideoMode);
    *mode = service_.videoMode;
    return answer.result;
  }
  HResult Unused5() override { return kResultFail; }
  HResult Unused6() override { return kResultFail; }
  HResult Unused7() override { return kResultFail; }
  HResult Unused8() override { return kResultFail; }
  HResult Unused9() override { return kResultFail; }
  HResult Unused10() override { return kResultFail; }
  HResult Unused11() override { return kResultFail; }
  HResult Unused12() override { return kResultFail; }
  HResult Unused13() override { return kResultFail; }
  HResult Unused14() override { return kResultFail; }
  HResult Unused15() override { return kResultFail; }
  HResult CreateIterator(const ServiceId& id, void** iterator) override {
    EXPECT_EQ(id, kSwitcherMediaPlayerIteratorId);
    ITMKSwitcherMediaPlayerIterator* players = nullptr;
    const HResult result =
        Give(Call::kCreateIterator, &players, [this] { return new Players(service_); });
    *iterator = players;
    return result;
  }
  HResult AddCallback(ITMKSwitcherCallback* callback) override {
    return Register(service_, Call::kAddSwitcherCallback, service_.state.switcherCallbacks,
                    callback);
  }
  HResult RemoveCallback(ITMKSwitcherCallback* callback) override {
    return Unregister(service_, Call::kRemoveSwitcherCallback, service_.state.switcherCallbacks,
                      callback);
  }
};

class Discovery final : public Counted<ITMKSwitcherDiscovery> {
 public:
  explicit Discovery(FakeService& service) : Counted(service, "discovery") {}

  HResult QueryInterface(const ServiceId& id, void** object) override {
    if (id != kSwitcherDiscoveryId && id != kUnknownId) return Counted::QueryInterface(id, object);
    AddRef();
    *object = this;
    return kResultOk;
  }
  HResult ConnectTo(char16_t* address, ITMKSwitcher** switcher, std::uint32_t* reason) override {
    {
      const auto guard = service_.Guard();
      service_.state.address = address == nullptr ? std::u16string() : address;
    }
    const HResult result =
        Give(Call::kConnectTo, switcher, [this] { return new Switcher(service_); });
    if (Failed(result)) *reason = service_.reason;
    return result;
  }
};

}  // namespace

HResult CreateFakeDiscovery(ITMKSwitcherDiscovery** discovery) {
  *discovery = nullptr;
  const FakeService::Answer answer = CurrentFakeService().Visit(Call::kCreateDiscovery);
  if (answer.givesObject) *discovery = new Discovery(CurrentFakeService());
  return answer.result;
}

ITMKSwitcher* CreateFakeSwitcher(FakeService& service) {
  return new Switcher(service);
}

}  // namespace mixdecks
