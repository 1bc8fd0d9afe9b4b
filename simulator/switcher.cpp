#include "simulator/switcher.h"

#include <utility>

#include "simulator/code_text.h"
#include "transfer/video_modes.h"

namespace mixdecks::simulator {

Switcher::Switcher(Scenario scenario, std::unique_ptr<StillStore> store)
    : scenario_(std::move(scenario)), script_(scenario_.script), pool_(std::move(store)) {}

void Switcher::Violation(std::string_view operation, const std::string& what) {
  violations_.Add(std::string(operation) + ": " + what);
}

Outcome Switcher::Arrive(Point point, std::uint32_t number, std::uint32_t event) {
  Outcome outcome;
  for (const ScriptStep& step : script_.Arrive(point, number, event)) {
    try {
      TakeStep(step, outcome);
    } catch (const PoolError&) {
      // The disk refused what another station did: it did not happen, and nobody here asked.
    }
  }
  // A call that the client's clean-up relies on is honoured, whatever a script made in code says.
  if (InfoOf(point).kind == PointKind::kHonouredCall) outcome.failed = false;
  return outcome;
}

void Switcher::TakeStep(const ScriptStep& step, Outcome& outcome) {
  switch (step.action) {
    case Action::kFail:
      outcome.failed = true;
      outcome.reason = step.reason;
      break;
    case Action::kCancel:
      outcome.cancelled = true;
      break;
    case Action::kDisconnect:
      Disconnect();
      break;
    case Action::kRename:
      RenameStill(step.target, step.name);
      break;
    case Action::kClear:
      ClearStill(step.target);
      break;
    case Action::kChangeMode:
      ChangeVideoMode(step.mode);
      break;
    case Action::kWait:
      Pause(step.wait, [] { return false; });
      break;
  }
}

bool Switcher::Stopped() const {
  const std::lock_guard lock(mutex_);
  return stopped_;
}

void Switcher::Pause(std::chrono::milliseconds duration, const std::function<bool()>& until) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, duration, [&] { return stopped_ || until(); });
}

std::uint64_t Switcher::OpeningTicket() const {
  const std::lock_guard lock(mutex_);
  return disconnections_;
}

void Switcher::PauseOpening(std::uint64_t ticket, std::chrono::milliseconds duration) {
  Pause(duration, [&] { return disconnections_ != ticket; });
}

std::shared_ptr<Connection> Switcher::Open(std::uint64_t ticket) {
  auto connection = std::make_shared<Connection>();
  const std::lock_guard lock(mutex_);
  if (stopped_ || disconnections_ != ticket) return nullptr;
  std::erase_if(connections_, [](const auto& other) { return other.expired(); });
  connections_.push_back(connection);
  return connection;
}

std::vector<std::shared_ptr<Connection>> Switcher::Connections() const {
  const std::lock_guard lock(mutex_);
  std::vector<std::shared_ptr<Connection>> open;
  for (const auto& weak : connections_) {
    if (auto connection = weak.lock()) open.push_back(std::move(connection));
  }
  return open;
}

void Switcher::EnterFrame(const ITMKSwitcherFrame* frame,
                          std::shared_ptr<const FrameBuffer> buffer) {
  const std::lock_guard lock(mutex_);
  frames_[frame] = std::move(buffer);
}

void Switcher::ForgetFrame(const ITMKSwitcherFrame* frame) {
  const std::lock_guard lock(mutex_);
  frames_.erase(frame);
}

std::shared_ptr<const FrameBuffer> Switcher::FindFrame(const ITMKSwitcherFrame* frame) const {
  const std::lock_guard lock(mutex_);
  const auto entry = frames_.find(frame);
  return entry == frames_.end() ? nullptr : entry->second;
}

void Switcher::Disconnect() {
  std::vector<std::shared_ptr<Connection>> dropped;
  {
    const std::lock_guard lock(mutex_);
    ++disconnections_;
    for (const auto& weak : std::exchange(connections_, {})) {
      if (auto connection = weak.lock()) dropped.push_back(std::move(connection));
    }
    for (const auto& connection : dropped)
      connection->alive = false;
  }
  for (const auto& connection : dropped) {
    EndLocks(*connection);
    StartTellingDisconnected(connection);
  }
}

void Switcher::StartTellingDisconnected(std::shared_ptr<Connection> connection) {
  threads_.Start([this, connection = std::move(connection)] { TellDisconnected(*connection); });
}

void Switcher::TellDisconnected(Connection& connection) {
  Arrive(Point::kNotifySwitcher, 0, kEventDisconnected);
  for (ITMKSwitcherCallback* callback : connection.switcherCallbacks.All()) {
    if (!connection.switcherCallbacks.Mark(callback)) continue;
    CheckAnswer("ITMKSwitcherCallback::Notify", callback->Notify(kEventDisconnected));
  }
  Arrive(Point::kSwitcherNotified, 0, kEventDisconnected);
}

void Switcher::CheckAnswer(std::string_view callback, HResult answer) {
  if (answer == kResultOk) return;
  Violation(callback, "answered " + CodeText(static_cast<std::uint32_t>(answer)) + ", must be 0");
}

void Switcher::StoreStill(std::uint32_t slot, std::u16string_view name,
                          std::span<const std::uint8_t> frame) {
  const std::uint32_t mode = pool_.Mode();
  const std::size_t bytes =
      std::size_t{4} * FindVideoMode(mode)->width * FindVideoMode(mode)->height;
  if (frame.size() != bytes) {
    throw PoolError("a frame of " + std::to_string(frame.size()) + " bytes in mode " +
                    CodeText(mode) + ", which takes " + std::to_string(bytes));
  }
  ChangePool(slot, [&] { return pool_.Store(slot, name, mode, frame); });
}

void Switcher::RenameStill(std::uint32_t slot, std::u16string_view name) {
  ChangePool(slot, [&] { return pool_.Rename(slot, name); });
}

void Switcher::ClearStill(std::uint32_t slot) {
  ChangePool(slot, [&] { return pool_.Clear(slot); });
}

void Switcher::ChangePool(std::uint32_t slot, const std::function<SlotChange()>& change) {
  if (slot >= pool_.SlotCount() || Stopped()) return;
  TellChange(slot, change(), nullptr);
}

void Switcher::ChangeVideoMode(std::uint32_t mode) {
  if (IsVideoMode(mode) && !Stopped()) pool_.ChangeMode(mode);
}

void Switcher::Shutdown() {
  {
    const std::lock_guard lock(mutex_);
    if (stopped_) return;
    stopped_ = true;
  }
  changed_.notify_all();
  threads_.Stop();
  pool_.Close();
  for (const auto& connection : Connections()) {
    EndLocks(*connection);
  }
}

}  // namespace mixdecks::simulator
