#include "simulator/served_discovery.h"

#include <atomic>
#include <mutex>

#include "simulator/service_results.h"

namespace mixdecks::simulator {
namespace {

// Held while a simulator is made or ended, so that a new one never meets the old one's pool.
std::mutex servingMutex;
std::unique_ptr<SwitcherSimulator> serving;
std::size_t servedObjects = 0;

void EndWithoutObjects() {
  if (servedObjects == 0) serving.reset();
}

class ServedDiscovery final : public ITMKSwitcherDiscovery {
 public:
  /// Takes over the reference to `discovery`.
  explicit ServedDiscovery(ITMKSwitcherDiscovery* discovery) noexcept : discovery_(discovery) {}

  HResult QueryInterface(const ServiceId& id, void** object) override {
    if (object == nullptr) return kNullPointer;
    *object = nullptr;
    if (id != kUnknownId && id != kSwitcherDiscoveryId) return kNoInterface;
    AddRef();
    *object = static_cast<ITMKSwitcherDiscovery*>(this);
    return kResultOk;
  }

  std::uint32_t AddRef() override { return ++references_; }

  std::uint32_t Release() override {
    const std::uint32_t count = --references_;
    if (count != 0) return count;
    const std::lock_guard lock(servingMutex);
    discovery_->Release();
    --servedObjects;
    EndWithoutObjects();
    delete this;
    return 0;
  }

  HResult ConnectTo(char16_t* address, ITMKSwitcher** switcher, std::uint32_t* reason) override {
    return discovery_->ConnectTo(address, switcher, reason);
  }

 private:
  ITMKSwitcherDiscovery* discovery_;
  std::atomic<std::uint32_t> references_ = 1;
};

}  // namespace

HResult CreateServedDiscovery(const SimulatorMaker& make, ITMKSwitcherDiscovery** discovery) {
  *discovery = nullptr;
  const std::lock_guard lock(servingMutex);
  if (serving == nullptr) serving = make();
  ITMKSwitcherDiscovery* made = nullptr;
  const HResult result = serving->CreateDiscovery(&made);
  if (made != nullptr) {
    *discovery = new ServedDiscovery(made);
    ++servedObjects;
  }
  EndWithoutObjects();
  return result;
}

bool IsServing() {
  const std::lock_guard lock(servingMutex);
  return serving != nullptr;
}

}  // namespace mixdecks::simulator
