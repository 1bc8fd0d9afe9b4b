#include "tools/memory_host/memory_host.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "tools/memory_host/memory_host_procedures.h"

namespace mixdecks {
namespace {

constexpr std::string_view kCallNames[kHostCallCount] = {
    "acquire suite",   "release suite",   "count levels", "get depth",
    "get bounds",      "read pixels",     "new handle",   "dispose handle",
    "get handle size", "set handle size", "lock handle",  "unlock handle",
};

std::int16_t CheckedSide(std::int32_t side) {
  if (side < 0 || side > INT16_MAX) {
    throw std::invalid_argument("a document is 0 to 32767 pixels wide and high");
  }
  return static_cast<std::int16_t>(side);
}

}  // namespace

std::string_view HostCallName(HostCall call) noexcept {
  return kCallNames[static_cast<std::size_t>(call)];
}

MemoryHost::MemoryHost(HostDocument document) : document_(std::move(document)) {
  if (Procedures::active != nullptr) throw std::logic_error("there is a host already");
  FillRecords();
  Procedures::active = this;
}

MemoryHost::~MemoryHost() {
  Procedures::active = nullptr;
}

std::int16_t MemoryHost::Call(PluginEntry entry, std::int16_t selector) {
  const bool about = selector == static_cast<std::int16_t>(Selector::kAbout);
  resultWord_ = 0;
  entry(selector, about ? static_cast<void*>(&about_) : &record_, &dataWord_, &resultWord_);
  return resultWord_;
}

void MemoryHost::Fail(HostCall call, int nth, std::int32_t result) noexcept {
  faults_[static_cast<std::size_t>(call)] = {nth, result};
}

std::size_t MemoryHost::LockedHandles() const noexcept {
  return static_cast<std::size_t>(
      std::ranges::count_if(handles_, [](const auto& handle) { return handle.second.locks > 0; }));
}

const ChannelDescription* MemoryHost::Link(const HostChannel* channels, std::size_t count) {
  const ChannelDescription* next = nullptr;
  for (std::size_t i = count; i-- > 0;) {
    ports_.push_back({this, &channels[i]});
    ChannelDescription description{};
    description.next = next;
    description.readPort = &ports_.back();
    descriptions_.push_back(description);
    next = &descriptions_.back();
  }
  return next;
}

void MemoryHost::FillRecords() {
  description_.mergedComposite = Link(document_.composite.data(), document_.composite.size());
  description_.mergedTransparency =
      document_.transparency ? Link(&*document_.transparency, 1) : nullptr;
  description_.extraAlpha = Link(document_.extraAlpha.data(), document_.extraAlpha.size());

  handleProcs_ = {1,
                  8,
                  Procedures::NewHandle,
                  Procedures::DisposeHandle,
                  Procedures::GetHandleSize,
                  Procedures::SetHandleSize,
                  Procedures::LockHandle,
                  Procedures::UnlockHandle};
  basicSuite_ = {Procedures::AcquireSuite, Procedures::ReleaseSuite};
  suite_.countLevels = Procedures::CountLevels;
  suite_.getDepth = Procedures::GetDepth;
  suite_.getBounds = Procedures::GetBounds;
  suite_.readPixels = Procedures::ReadPixels;

  record_.maximumMemory = INT32_MAX;
  record_.imageMode = document_.imageMode;
  record_.imageHeight = CheckedSide(document_.height);
  record_.imageWidth = CheckedSide(document_.width);
  record_.depth = document_.depth;
  record_.planes = document_.planes;
  record_.imageRect = {0, 0, record_.imageHeight, record_.imageWidth};
  const std::size_t length = std::min<std::size_t>(document_.fileName.size(), 255);
  record_.fileName[0] = static_cast<std::uint8_t>(length);
  std::copy_n(document_.fileName.begin(), length, record_.fileName + 1);
  record_.platform = &platform_;
  record_.handleProcs = &handleProcs_;
  record_.document = &description_;
  record_.basicSuite = &basicSuite_;
  about_ = {&platform_, &basicSuite_};
}

}  // namespace mixdecks
