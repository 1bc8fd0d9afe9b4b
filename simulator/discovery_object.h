// `ITMKSwitcherDiscovery`: where connections come from.
#pragma once

#include <string_view>

#include "simulator/counted_object.h"

namespace mixdecks::simulator {

class DiscoveryObject final : public CountedObject<ITMKSwitcherDiscovery> {
 public:
  explicit DiscoveryObject(std::shared_ptr<Switcher> switcher)
      : CountedObject(std::move(switcher)) {}

  const char* InterfaceName() const noexcept override { return "ITMKSwitcherDiscovery"; }
  HResult ConnectTo(char16_t* address, ITMKSwitcher** switcher, std::uint32_t* reason) override;

 protected:
  HResult Find(const ServiceId& id, void** object) override;

 private:
  HResult Refuse(std::uint64_t ticket) const;
};

/// Four numbers from 0 to 255 with dots between them.
bool IsDottedAddress(std::u16string_view address) noexcept;

}  // namespace mixdecks::simulator
