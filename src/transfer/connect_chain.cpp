#include "transfer/connect_chain.h"

#include "transfer/media_players.h"

namespace mixdecks {

ConnectOutcome ConnectToSwitcher(ITMKSwitcherDiscovery& discovery, char16_t* address) {
  ConnectOutcome found;
  const HResult reached = discovery.ConnectTo(address, found.switcher.Receive(), &found.reason);
  if (!Delivered(reached, found.switcher)) return found;

  const HResult queried =
      QueryService(*found.switcher.Get(), kSwitcherMediaPoolId, found.mediaPool);
  if (!Delivered(queried, found.mediaPool)) return found;
  if (!Delivered(found.mediaPool->GetStills(found.stills.Receive()), found.stills)) return found;
  if (Failed(found.stills->GetCount(&found.stillsCount))) return found;

  MediaPlayerIterator players;
  const HResult created = CreateMediaPlayerIterator(*found.switcher.Get(), players);
  if (!Delivered(created, players)) return found;
  found.mediaPlayerCount = CountMediaPlayers(*players.Get());
  found.connected = true;
  return found;
}

}  // namespace mixdecks
