// The named points of a connection, an enumeration and an upload at which something can be made
// to happen: by a step of a scenario, or by a hook of a test.
//
// A point that is a call is visited on the caller's thread before the simulator has done anything
// for it; a point that is a happening is visited on the simulator's thread that makes it happen.
// No lock of the simulator is held at a point.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

namespace mixdecks::simulator {

enum class Point : std::uint8_t {
  // Calls, in the order of a connection and an export.
  kConnectTo,        ///< discovery: a connection is asked for
  kConnected,        ///< discovery: the connection is about to be given to the caller
  kQueryMediaPool,   ///< switcher: `QueryInterface` for the media pool
  kGetStills,        ///< media pool
  kGetCount,         ///< stills
  kCreateIterator,   ///< switcher
  kNext,             ///< media player iterator; number: the player, the end included
  kAddCallback,      ///< switcher, media pool or stills
  kIsValid,          ///< stills; number: the slot
  kGetName,          ///< stills; number: the slot
  kGetVideoMode,     ///< switcher
  kCreateFrame,      ///< media pool
  kGetBytes,         ///< frame
  kQueryStillsLock,  ///< stills: `QueryInterface` for the lock
  kLock,             ///< stills lock; number: the slot
  kSetPicture,       ///< stills; number: the slot
  kUnlock,           ///< stills
  kSetSource,        ///< media player; number: the player
  kRemoveCallback,   ///< switcher, media pool or stills
  // Happenings, on threads of the simulator.
  kLockGranted,     ///< `Locked` is about to be called; number: the slot
  kLockedReturned,  ///< `Locked` came back; number: the slot
  kUploadBegun,     ///< number: the slot, here and below
  kUploadHalfway,
  kUploadReceived,   ///< all of the frame arrived, nothing is stored yet
  kNotifyStills,     ///< a stills `Notify` is about to be called
  kStillsNotified,   ///< it came back
  kNotifySwitcher,   ///< a switcher `Notify` is about to be called; number: 0
  kSwitcherNotified  ///< it came back; number: 0
};

inline constexpr std::size_t kPointCount = static_cast<std::size_t>(Point::kSwitcherNotified) + 1;

/// What a script can make of a point, beside disconnecting, waiting and other stations' doings.
enum class PointKind : std::uint8_t {
  kCall,          ///< a call that can be made to fail
  kHonouredCall,  ///< a call that never fails for a script: the client's clean-up relies on it
  kUpload,        ///< a stage of an upload, which can be made to fail or be cancelled
  kHappening,     ///< anything else
};

/// What the number of a point counts.
enum class PointNumber : std::uint8_t { kNone, kSlot, kPlayer };

struct PointInfo {
  Point point;
  std::string_view name;  ///< as scenarios write it, `GetName` or `UploadHalfway`
  PointKind kind;
  PointNumber number;
};

/// All points, in the order of `Point`.
std::span<const PointInfo> Points() noexcept;
const PointInfo& InfoOf(Point point) noexcept;
std::optional<Point> FindPoint(std::string_view name) noexcept;

/// One arrival at a point.
struct PointVisit {
  Point point;
  std::uint32_t number;  ///< slot or player from 0; 0 where the point has none
  std::uint32_t event;   ///< what a `Notify` tells; 0 at other points
  std::uint32_t count;   ///< arrivals at this point so far, this one included
};

/// Called at a point, on the thread that is there. It may block and may call the simulator.
using PointHook = std::function<void(const PointVisit&)>;

}  // namespace mixdecks::simulator
