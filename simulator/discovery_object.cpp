#include "simulator/discovery_object.h"

#include <algorithm>

#include "platform/text.h"
#include "simulator/switcher_object.h"

namespace mixdecks::simulator {
namespace {

bool Answers(const Scenario& scenario, std::u16string_view address) {
  if (scenario.addresses.empty()) return IsDottedAddress(address);
  return std::ranges::find(scenario.addresses, address) != scenario.addresses.end();
}

}  // namespace

bool IsDottedAddress(std::u16string_view address) noexcept {
  int numbers = 0;
  for (; numbers < 4; ++numbers) {
    std::size_t digits = 0;
    unsigned value = 0;
    while (digits < address.size() && digits < 3 && address[digits] >= u'0' &&
           address[digits] <= u'9') {
      value = value * 10 + (address[digits++] - unsigned{u'0'});
    }
    if (digits == 0 || value > 255) return false;
    address.remove_prefix(digits);
    if (numbers == 3) break;
    if (address.empty() || address.front() != u'.') return false;
    address.remove_prefix(1);
  }
  return address.empty();
}

HResult DiscoveryObject::Find(const ServiceId& id, void** object) {
  if (id != kSwitcherDiscoveryId) return kNoInterface;
  AddRef();
  *object = static_cast<ITMKSwitcherDiscovery*>(this);
  return kResultOk;
}

/// Gives up as a client does that gets no answer.
HResult DiscoveryObject::Refuse(std::uint64_t ticket) const {
  Equipment().PauseOpening(ticket, Equipment().Setup().refuseDelay);
  return kResultFail;
}

HResult DiscoveryObject::ConnectTo(char16_t* address, ITMKSwitcher** switcher,
                                   std::uint32_t* reason) {
  if (!InUse("ConnectTo") || !Given(switcher, "ConnectTo") || !Given(reason, "ConnectTo") ||
      !Given(address, "ConnectTo")) {
    return kNullPointer;
  }
  *switcher = nullptr;
  *reason = 0;
  try {
    const Scenario& scenario = Equipment().Setup();
    const std::uint64_t ticket = Equipment().OpeningTicket();
    Outcome outcome = Equipment().Arrive(Point::kConnectTo);
    const bool answered = !outcome.failed && Answers(scenario, {address, TextLength(address)});
    if (answered) {
      Equipment().PauseOpening(ticket, scenario.connectDelay);
      outcome = Equipment().Arrive(Point::kConnected);
    }
    if (!answered || outcome.failed) {
      *reason = outcome.reason;
      return Refuse(ticket);
    }
    const std::shared_ptr<Connection> connection = Equipment().Open(ticket);
    if (connection == nullptr) return kResultFail;
    *switcher = new SwitcherObject(SharedEquipment(), connection);
    return kResultOk;
  } catch (const std::bad_alloc&) {
    return kOutOfMemory;
  }
}

}  // namespace mixdecks::simulator
