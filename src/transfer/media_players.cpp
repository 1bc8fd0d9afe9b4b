#include "transfer/media_players.h"

namespace mixdecks {
namespace {

using MediaPlayer = ServicePointer<ITMKSwitcherMediaPlayer>;

/// Goes on to the next player, giving up the one before. Only 0 delivers one.
bool Advance(ITMKSwitcherMediaPlayerIterator& players, MediaPlayer& player) {
  return players.Next(player.Receive()) == 0;
}

}  // namespace

HResult CreateMediaPlayerIterator(ITMKSwitcher& switcher, MediaPlayerIterator& players) {
  void* iterator = nullptr;
  const HResult result = switcher.CreateIterator(kSwitcherMediaPlayerIteratorId, &iterator);
  players = MediaPlayerIterator::Adopt(static_cast<ITMKSwitcherMediaPlayerIterator*>(iterator));
  return result;
}

std::int32_t CountMediaPlayers(ITMKSwitcherMediaPlayerIterator& players) {
  std::int32_t count = 0;
  MediaPlayer player;
  while (Advance(players, player))
    ++count;
  return count;
}

HResult ShowStill(ITMKSwitcherMediaPlayerIterator& players, std::int32_t player,
                  std::uint32_t slot) {
  MediaPlayer reached;
  for (std::int32_t number = -1; number < player; ++number) {
    if (!Advance(players, reached)) return kResultFail;
  }
  if (!reached) return kResultFail;
  const HResult result = reached->SetSource(kSourceStill, slot);
  return Succeeded(result) ? kResultOk : result;
}

}  // namespace mixdecks
