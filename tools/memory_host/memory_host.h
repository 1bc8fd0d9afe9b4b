// The host's side of the plug-in, in memory: records, basic suite, channel port suite and handle
// procedures over a document of plain planes. The companion command runs the plug-in with it, and
// tests find out through its counters, faults and violations how the plug-in treats its host.
//
//   MemoryHost host(DocumentOfRgba8(pixels, 1920, 1080, true));
//   std::int16_t result = host.Call(MixdecksExportMain, Selector::kStart);
//
// One at a time in a process, since the host's procedures carry no context. Like the host, it is
// made, called and destroyed on one thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "host/channel_reader.h"
#include "host/export_record.h"
#include "host/plugin_entry.h"
#include "tools/memory_host/host_document.h"

namespace mixdecks {

/// The plug-in's exported function.
using PluginEntry = void (*)(std::int16_t selector, void* record, std::intptr_t* data,
                             std::int16_t* result);

/// Everything that the plug-in calls of a host.
enum class HostCall {
  kAcquireSuite,
  kReleaseSuite,
  kCountLevels,
  kGetDepth,
  kGetBounds,
  kReadPixels,
  kNewHandle,
  kDisposeHandle,
  kGetHandleSize,
  kSetHandleSize,
  kLockHandle,
  kUnlockHandle,
};
inline constexpr std::size_t kHostCallCount = 12;

/// "read pixels", for messages.
std::string_view HostCallName(HostCall call) noexcept;

class MemoryHost {
 public:
  /// Opens `document`. Throws `std::invalid_argument` when its size is outside 0 to 32767, and
  /// `std::logic_error` while there is another host.
  explicit MemoryHost(HostDocument document);
  ~MemoryHost();
  MemoryHost(const MemoryHost&) = delete;
  MemoryHost& operator=(const MemoryHost&) = delete;

  /// Calls the plug-in with the record that the selector takes, the host's data word and a result
  /// word of 0. Returns the result word.
  std::int16_t Call(PluginEntry entry, std::int16_t selector);
  std::int16_t Call(PluginEntry entry, Selector selector) {
    return Call(entry, static_cast<std::int16_t>(selector));
  }

  // The records, free to be changed before a call.
  ExportRecord& Record() noexcept { return record_; }
  AboutRecord& About() noexcept { return about_; }
  HostHandleProcs& HandleProcs() noexcept { return handleProcs_; }
  HostBasicSuite& BasicSuite() noexcept { return basicSuite_; }
  ChannelPortsSuite& Suite() noexcept { return suite_; }
  std::intptr_t& DataWord() noexcept { return dataWord_; }
  std::int16_t& ResultWord() noexcept { return resultWord_; }
  /// The window that dialogs are to open over; null at first.
  void SetParentWindow(void* window) noexcept { platform_.parentWindow = window; }
  /// Offers no handle procedures at all.
  void WithdrawHandleProcs() noexcept { record_.handleProcs = nullptr; }

  /// Makes the `nth` call of a kind fail, counted from 1 over the host's whole life; 0 makes all
  /// of them fail. Calls with a result give `result`, a lock or a new handle gives null.
  void Fail(HostCall call, int nth, std::int32_t result = -1) noexcept;
  /// The suite is not there: acquiring it fails.
  void RemoveSuite() noexcept { suitePresent_ = false; }

  int Calls(HostCall call) const noexcept { return calls_[static_cast<std::size_t>(call)]; }
  /// Suites acquired and not released.
  int SuiteReferences() const noexcept { return suiteReferences_; }
  std::size_t OpenHandles() const noexcept { return handles_.size(); }
  std::size_t LockedHandles() const noexcept;
  /// What the plug-in did that a host does not forgive, in words; empty after a clean run.
  const std::vector<std::string>& Violations() const noexcept { return violations_; }

 private:
  struct Procedures;
  struct Port {
    MemoryHost* host;
    const HostChannel* channel;
  };
  struct HandleBlock {
    std::vector<std::byte> bytes;
    int locks = 0;
  };
  struct Fault {
    int nth = -1;
    std::int32_t result = 0;
  };

  const ChannelDescription* Link(const HostChannel* channels, std::size_t count);
  void FillRecords();
  bool FailsNow(HostCall call, std::int32_t& result);
  void Complain(HostCall call, std::string_view what);
  HandleBlock* FindHandle(HostCall call, std::intptr_t handle);

  HostDocument document_;
  std::thread::id thread_ = std::this_thread::get_id();
  std::list<Port> ports_;
  std::list<ChannelDescription> descriptions_;
  ExportRecord record_{};
  AboutRecord about_{};
  PlatformRecord platform_{};
  DocumentDescription description_{};
  HostHandleProcs handleProcs_{};
  HostBasicSuite basicSuite_{};
  ChannelPortsSuite suite_{};
  std::intptr_t dataWord_ = 0;
  std::int16_t resultWord_ = 0;

  std::array<int, kHostCallCount> calls_{};
  std::array<Fault, kHostCallCount> faults_{};
  bool suitePresent_ = true;
  int suiteReferences_ = 0;
  std::map<std::intptr_t, HandleBlock> handles_;
  std::vector<std::string> violations_;
};

}  // namespace mixdecks
