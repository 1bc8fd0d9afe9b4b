#include "simulator/media_player_objects.h"

#include "simulator/code_text.h"

namespace mixdecks::simulator {

HResult MediaPlayerObject::SetSource(std::uint32_t type, std::uint32_t index) {
  return ServeConnected({Point::kSetSource, player_}, [&] {
    if (type != kSourceStill) {
      Report("SetSource", "the type is " + CodeText(type) + ", only smps is known");
      return kInvalidArgument;
    }
    if (index >= Equipment().Pool().SlotCount()) {
      Report("SetSource", "there is no slot of index " + std::to_string(index));
      return kInvalidArgument;
    }
    Equipment().Pool().Show(player_, index);
    return kResultOk;
  });
}

HResult MediaPlayerIteratorObject::Next(ITMKSwitcherMediaPlayer** player) {
  const std::uint32_t index = next_;
  return ServeConnected({Point::kNext, index}, [&] {
    if (!Given(player, "Next")) return kNullPointer;
    *player = nullptr;
    if (index >= Equipment().Pool().PlayerCount()) return kNoMore;
    *player = new MediaPlayerObject(SharedEquipment(), SharedLine(), index);
    next_ = index + 1;
    return kResultOk;
  });
}

}  // namespace mixdecks::simulator
