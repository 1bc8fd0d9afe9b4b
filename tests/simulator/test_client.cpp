#include "tests/simulator/test_client.h"

#include <algorithm>
#include <cstring>

#include "platform/text.h"
#include "transfer/video_modes.h"

namespace mixdecks::test {

TestClient::TestClient(simulator::SwitcherSimulator& simulator) : simulator_(simulator) {}

HResult TestClient::ConnectWithoutCallbacks(std::u16string_view address) {
  HResult result = discovery ? kResultOk : simulator_.CreateDiscovery(discovery.Receive());
  if (Failed(result)) return result;
  const Text text(address);
  result = discovery->ConnectTo(text.Get(), switcher.Receive(), &reason);
  if (Failed(result)) return result;
  result = QueryService(*switcher.Get(), kSwitcherMediaPoolId, mediaPool);
  if (Failed(result)) return result;
  return mediaPool->GetStills(stills.Receive());
}

HResult TestClient::Connect(std::u16string_view address) {
  const HResult result = ConnectWithoutCallbacks(address);
  if (Succeeded(result)) AddCallbacks();
  return result;
}

void TestClient::AddCallbacks() {
  EXPECT_EQ(switcher->AddCallback(callbacks.Switcher()), kResultOk);
  EXPECT_EQ(mediaPool->AddCallback(callbacks.MediaPool()), kResultOk);
  EXPECT_EQ(stills->AddCallback(callbacks.Stills()), kResultOk);
  registered_ = true;
}

void TestClient::RemoveCallbacks() {
  if (!registered_) return;
  registered_ = false;
  EXPECT_EQ(switcher->RemoveCallback(callbacks.Switcher()), kResultOk);
  EXPECT_EQ(mediaPool->RemoveCallback(callbacks.MediaPool()), kResultOk);
  EXPECT_EQ(stills->RemoveCallback(callbacks.Stills()), kResultOk);
}

void TestClient::Close() {
  RemoveCallbacks();
  switcher.Reset();
  mediaPool.Reset();
  stills.Reset();
  frame.Reset();
  discovery.Reset();
}

HResult TestClient::CountPlayers(std::uint32_t& count) {
  void* untyped = nullptr;
  const HResult result = switcher->CreateIterator(kSwitcherMediaPlayerIteratorId, &untyped);
  if (Failed(result)) return result;
  const auto players = ServicePointer<ITMKSwitcherMediaPlayerIterator>::Adopt(
      static_cast<ITMKSwitcherMediaPlayerIterator*>(untyped));
  ServicePointer<ITMKSwitcherMediaPlayer> player;
  for (count = 0; players->Next(player.Receive()) == kResultOk;)
    ++count;
  return kResultOk;
}

HResult TestClient::SlotName(std::uint32_t slot, std::u16string& name) {
  Text text;
  const HResult result = stills->GetName(slot, text.Receive());
  name = text.View();
  return result;
}

HResult TestClient::MakeFrame(const std::vector<std::uint8_t>& packed) {
  std::uint32_t mode = 0;
  HResult result = switcher->GetVideoMode(&mode);
  if (Failed(result)) return result;
  const VideoModeInfo& info = *FindVideoMode(mode);
  result = mediaPool->CreateFrame(kFrameFormatYuva, info.width, info.height, frame.Receive());
  if (Failed(result)) return result;
  void* bytes = nullptr;
  result = frame->GetBytes(&bytes);
  if (Failed(result)) return result;
  const std::size_t rowBytes = std::size_t{4} * info.width;
  for (std::int32_t row = 0; row < frame->GetHeight(); ++row) {
    std::memcpy(static_cast<std::uint8_t*>(bytes) + std::ptrdiff_t{row} * frame->GetRowBytes(),
                packed.data() + static_cast<std::size_t>(row) * rowBytes, rowBytes);
  }
  return kResultOk;
}

HResult TestClient::RequestLock(std::uint32_t slot) {
  ServicePointer<ITMKSwitcherStillsLock> lock;
  const HResult result = QueryService(*stills.Get(), kSwitcherStillsLockId, lock);
  return Failed(result) ? result : lock->Lock(callbacks.Lock(), slot);
}

HResult TestClient::SetPicture(std::uint32_t slot, std::u16string_view name) {
  const Text text(name);
  return stills->SetPicture(slot, text.Get(), frame.Get());
}

std::string TestClient::Upload(std::uint32_t slot, std::u16string_view name,
                               const std::vector<std::uint8_t>& packed) {
  EXPECT_EQ(MakeFrame(packed), kResultOk);
  EventLog ended;
  callbacks.onLocked = [&, name = std::u16string(name)] {
    EXPECT_EQ(SetPicture(slot, name), kResultOk);
  };
  callbacks.onStills = [&](std::uint32_t event, std::uint32_t) {
    if (event == kEventNameChanged || event == kEventValidityChanged) return;
    EXPECT_EQ(stills->Unlock(callbacks.Lock()), kResultOk);
    ended.Add("ended");
    ended.Add(simulator::CodeText(event));
  };
  EXPECT_EQ(RequestLock(slot), kResultOk);
  ended.Await("ended");
  simulator_.WaitUntilIdle();
  callbacks.onLocked = nullptr;
  callbacks.onStills = nullptr;
  frame.Reset();
  return ended.All().back();
}

HResult TestClient::ShowOnPlayer(std::uint32_t player, std::uint32_t slot, std::uint32_t type) {
  void* untyped = nullptr;
  const HResult result = switcher->CreateIterator(kSwitcherMediaPlayerIteratorId, &untyped);
  if (Failed(result)) return result;
  const auto players = ServicePointer<ITMKSwitcherMediaPlayerIterator>::Adopt(
      static_cast<ITMKSwitcherMediaPlayerIterator*>(untyped));
  ServicePointer<ITMKSwitcherMediaPlayer> object;
  for (std::uint32_t i = 0; i <= player; ++i) {
    const HResult next = players->Next(object.Receive());
    if (next != kResultOk) return next;
  }
  return object->SetSource(type, slot);
}

}  // namespace mixdecks::test
