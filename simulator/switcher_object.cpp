#include "simulator/switcher_object.h"

#include "simulator/media_player_objects.h"
#include "simulator/media_pool_object.h"

namespace mixdecks::simulator {

SwitcherObject::SwitcherObject(std::shared_ptr<Switcher> switcher,
                               std::shared_ptr<Connection> connection)
    : ConnectionObject(std::move(switcher), std::move(connection)) {
  ++Line().switcherObjects;
}

void SwitcherObject::OnLastRelease() {
  if (--Line().switcherObjects == 0) ForgetCallbacks(Line().switcherCallbacks);
}

HResult SwitcherObject::Find(const ServiceId& id, void** object) {
  if (id != kSwitcherMediaPoolId) return kNoInterface;
  return ServeConnected({Point::kQueryMediaPool}, [&] {
    ITMKSwitcherMediaPool* mediaPool = nullptr;
    const HResult result = HandOut<MediaPoolObject>(&mediaPool);
    *object = mediaPool;
    return result;
  });
}

HResult SwitcherObject::GetVideoMode(std::uint32_t* mode) {
  return ServeConnected({Point::kGetVideoMode}, [&] {
    if (!Given(mode, "GetVideoMode")) return kNullPointer;
    *mode = Equipment().Setup().reportedMode.value_or(Equipment().Pool().Mode());
    Line().toldMode = *mode;
    return kResultOk;
  });
}

HResult SwitcherObject::CreateIterator(const ServiceId& id, void** iterator) {
  return ServeConnected({Point::kCreateIterator}, [&] {
    if (!Given(iterator, "CreateIterator")) return kNullPointer;
    *iterator = nullptr;
    if (id != kSwitcherMediaPlayerIteratorId) {
      Report("CreateIterator", "called for another interface than the media players'");
      return kNoInterface;
    }
    ITMKSwitcherMediaPlayerIterator* players = nullptr;
    const HResult result = HandOut<MediaPlayerIteratorObject>(&players);
    *iterator = players;
    return result;
  });
}

HResult SwitcherObject::AddCallback(ITMKSwitcherCallback* callback) {
  const HResult result = Register(Line().switcherCallbacks, callback);
  // Whoever registers on a dropped connection would wait for the news for ever.
  if (Succeeded(result) && !Line().alive) Equipment().StartTellingDisconnected(SharedLine());
  return result;
}

HResult SwitcherObject::RemoveCallback(ITMKSwitcherCallback* callback) {
  return Unregister(Line().switcherCallbacks, callback);
}

}  // namespace mixdecks::simulator
