// The media players of a switcher, in player order from 0. Service calls only; takes no lock.
#pragma once

#include <cstdint>

#include "transfer/service_pointer.h"

namespace mixdecks {

using MediaPlayerIterator = ServicePointer<ITMKSwitcherMediaPlayerIterator>;

/// Gets an iterator that stands before the first player.
HResult CreateMediaPlayerIterator(ITMKSwitcher& switcher, MediaPlayerIterator& players);

/// Players from where the iterator stands to its end.
std::int32_t CountMediaPlayers(ITMKSwitcherMediaPlayerIterator& players);

/// Makes the player with this number, counted from where the iterator stands, show the still of a
/// slot. `kResultOk`, the service's failure, or `kResultFail` when there is no such player.
HResult ShowStill(ITMKSwitcherMediaPlayerIterator& players, std::int32_t player,
                  std::uint32_t slot);

}  // namespace mixdecks
