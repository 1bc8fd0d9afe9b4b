// The way from an address to a switcher's objects. Service calls only; takes no lock.
#pragma once

#include <cstdint>

#include "transfer/service_pointer.h"

namespace mixdecks {

/// What a connect attempt found, as far as it got.
struct ConnectOutcome {
  bool connected = false;  ///< every step succeeded: all objects are there
  ServicePointer<ITMKSwitcher> switcher;
  ServicePointer<ITMKSwitcherMediaPool> mediaPool;
  ServicePointer<ITMKSwitcherStills> stills;
  std::uint32_t reason = 0;  ///< why the switcher was not reached; 0 when the service gave none
  std::uint32_t stillsCount = 0;
  std::int32_t mediaPlayerCount = 0;
};

/// Connects and collects what the exporter needs of a switcher, up to the first step that fails.
/// Blocks as long as the service tries to reach the address.
ConnectOutcome ConnectToSwitcher(ITMKSwitcherDiscovery& discovery, char16_t* address);

}  // namespace mixdecks
