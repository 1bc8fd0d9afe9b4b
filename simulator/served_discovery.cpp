#include "simulator/served_discovery.h"

#include <atomic>
#include <mutex>

#include "simulator/service_results.h"

namespace mixdecks::simulator {
namespace {

/// A simulator that reports to its owner at its end.
class ServedSimulator {
 public:
  explicit ServedSimulator(const SimulatorOwner& owner) : owner_(owner), simulator_(owner.make()) {}
  ServedSimulator(const ServedSimulator&) = delete;
  ServedSimulator& operator=(const ServedSimulator&) = delete;
  ~ServedSimulator() {
    simulator_->Shutdown();
    const std::vector<std::string> violations = simulator_->Violations();
    if (!violations.empty()) owner_.reportViolations(violations);
  }

  SwitcherSimulator* operator->() const noexcept { return simulator_.get(); }

 private:
  const SimulatorOwner owner_;
  const std::unique_ptr<SwitcherSimulator> simulator_;
};

// Held while a simulator is made or ended, so that a new one never meets the old one's pool.
std::mutex servingMutex;
std::size_t servedObjects = 0;
std::unique_ptr<ServedSimulator> serving;
// One that is shut down, but of which clients still hold objects: they may release them after
// their discovery object.
std::unique_ptr<ServedSimulator> lingering;

void EndWithoutObjects() {
  if (servedObjects != 0) return;
  (*serving)->Shutdown();
  if ((*serving)->LiveObjects() != 0) lingering = std::move(serving);
  serving.reset();
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

HResult CreateServedDiscovery(const SimulatorOwner& owner, ITMKSwitcherDiscovery** discovery) {
  *discovery = nullptr;
  const std::lock_guard lock(servingMutex);
  if (serving == nullptr) {
    serving = std::make_unique<ServedSimulator>(owner);
    lingering.reset();
  }
  ITMKSwitcherDiscovery* made = nullptr;
  const HResult result = (*serving)->CreateDiscovery(&made);
  if (made != nullptr) {
    *discovery = new ServedDiscovery(made);
    ++servedObjects;
  }
  EndWithoutObjects();
  return result;
}

bool IsServing() {
  const std::lock_guard lock(servingMutex);
  if (lingering != nullptr && (*lingering)->LiveObjects() == 0) lingering.reset();
  return serving != nullptr || lingering != nullptr;
}

}  // namespace mixdecks::simulator
