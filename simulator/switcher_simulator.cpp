#include "simulator/switcher_simulator.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "simulator/discovery_object.h"
#include "simulator/memory_store.h"
#include "simulator/pool_store.h"
#include "simulator/switcher.h"
#include "transfer/service_activation.h"

namespace mixdecks::simulator {
namespace {

PoolShape ShapeOf(const Scenario& scenario) {
  return {.slots = scenario.slots, .players = scenario.players, .mode = scenario.mode};
}

}  // namespace

SwitcherSimulator::SwitcherSimulator(Scenario scenario) {
  auto store = std::make_unique<MemoryStore>(ShapeOf(scenario));
  switcher_ = std::make_shared<Switcher>(std::move(scenario), std::move(store));
}

SwitcherSimulator::SwitcherSimulator(Scenario scenario, const std::filesystem::path& poolFolder) {
  auto store = std::make_unique<PoolStore>(poolFolder, ShapeOf(scenario));
  switcher_ = std::make_shared<Switcher>(std::move(scenario), std::move(store));
}

SwitcherSimulator::~SwitcherSimulator() {
  Shutdown();
  switcher_->Objects().Close();
}

HResult SwitcherSimulator::CreateDiscovery(ITMKSwitcherDiscovery** discovery) {
  if (discovery == nullptr) return kNullPointer;
  *discovery = nullptr;
  switch (switcher_->Setup().service) {
    case ServicePresence::kAbsent:
      return kClassNotRegistered;
    case ServicePresence::kNull:
      return kResultOk;
    case ServicePresence::kPresent:
      break;
  }
  if (switcher_->Stopped()) return kResultFail;
  try {
    *discovery = new DiscoveryObject(switcher_);
    return kResultOk;
  } catch (const std::bad_alloc&) {
    return kOutOfMemory;
  }
}

void SwitcherSimulator::Shutdown() {
  switcher_->Shutdown();
}

void SwitcherSimulator::WaitUntilIdle() {
  switcher_->WaitUntilIdle();
}

std::vector<std::string> SwitcherSimulator::Violations() const {
  std::vector<std::string> violations = switcher_->Violations().All();
  if (switcher_->Stopped())
    std::ranges::move(switcher_->Objects().Leaks(), std::back_inserter(violations));
  return violations;
}

void SwitcherSimulator::SetPointHook(Point point, PointHook hook) {
  switcher_->Steps().SetHook(point, std::move(hook));
}

void SwitcherSimulator::Disconnect() {
  switcher_->Disconnect();
}

void SwitcherSimulator::StoreStill(std::uint32_t slot, std::u16string_view name,
                                   std::span<const std::uint8_t> frame) {
  switcher_->StoreStill(slot, name, frame);
}

void SwitcherSimulator::RenameStill(std::uint32_t slot, std::u16string_view name) {
  switcher_->RenameStill(slot, name);
}

void SwitcherSimulator::ClearStill(std::uint32_t slot) {
  switcher_->ClearStill(slot);
}

void SwitcherSimulator::ChangeVideoMode(std::uint32_t mode) {
  switcher_->ChangeVideoMode(mode);
}

PoolContents SwitcherSimulator::Contents() const {
  return switcher_->Pool().Contents();
}

std::vector<std::uint8_t> SwitcherSimulator::Frame(std::uint32_t slot) const {
  return slot < switcher_->Pool().SlotCount() ? switcher_->Pool().Frame(slot)
                                              : std::vector<std::uint8_t>();
}

std::string SwitcherSimulator::PoolFailure() const {
  return switcher_->Pool().LastFailure();
}

std::uint32_t SwitcherSimulator::LiveObjects() const {
  return switcher_->Objects().LiveObjects();
}

}  // namespace mixdecks::simulator
