#include "simulator/points.h"

#include <algorithm>
#include <array>

namespace mixdecks::simulator {
namespace {

using enum Point;
constexpr auto kCall = PointKind::kCall;
constexpr auto kHonoured = PointKind::kHonouredCall;
constexpr auto kUpload = PointKind::kUpload;
constexpr auto kHappening = PointKind::kHappening;
constexpr auto kNone = PointNumber::kNone;
constexpr auto kSlot = PointNumber::kSlot;
constexpr auto kPlayer = PointNumber::kPlayer;

// clang-format off
constexpr std::array kPoints = {
    PointInfo{kConnectTo,        "ConnectTo",        kCall,      kNone},
    PointInfo{kConnected,        "Connected",        kCall,      kNone},
    PointInfo{kQueryMediaPool,   "QueryMediaPool",   kCall,      kNone},
    PointInfo{kGetStills,        "GetStills",        kCall,      kNone},
    PointInfo{kGetCount,         "GetCount",         kCall,      kNone},
    PointInfo{kCreateIterator,   "CreateIterator",   kCall,      kNone},
    PointInfo{kNext,             "Next",             kCall,      kPlayer},
    PointInfo{kAddCallback,      "AddCallback",      kHonoured,  kNone},
    PointInfo{kIsValid,          "IsValid",          kCall,      kSlot},
    PointInfo{kGetName,          "GetName",          kCall,      kSlot},
    PointInfo{kGetVideoMode,     "GetVideoMode",     kCall,      kNone},
    PointInfo{kCreateFrame,      "CreateFrame",      kCall,      kNone},
    PointInfo{kGetBytes,         "GetBytes",         kCall,      kNone},
    PointInfo{kQueryStillsLock,  "QueryStillsLock",  kCall,      kNone},
    PointInfo{kLock,             "Lock",             kCall,      kSlot},
    PointInfo{kSetPicture,       "SetPicture",       kCall,      kSlot},
    PointInfo{kUnlock,           "Unlock",           kHonoured,  kNone},
    PointInfo{kSetSource,        "SetSource",        kCall,      kPlayer},
    PointInfo{kRemoveCallback,   "RemoveCallback",   kHonoured,  kNone},
    PointInfo{kLockGranted,      "LockGranted",      kHappening, kSlot},
    PointInfo{kLockedReturned,   "LockedReturned",   kHappening, kSlot},
    PointInfo{kUploadBegun,      "UploadBegun",      kUpload,    kSlot},
    PointInfo{kUploadHalfway,    "UploadHalfway",    kUpload,    kSlot},
    PointInfo{kUploadReceived,   "UploadReceived",   kUpload,    kSlot},
    PointInfo{kNotifyStills,     "NotifyStills",     kHappening, kSlot},
    PointInfo{kStillsNotified,   "StillsNotified",   kHappening, kSlot},
    PointInfo{kNotifySwitcher,   "NotifySwitcher",   kHappening, kNone},
    PointInfo{kSwitcherNotified, "SwitcherNotified", kHappening, kNone},
};
// clang-format on

constexpr bool InOrder() {
  for (std::size_t i = 0; i < kPoints.size(); ++i) {
    if (static_cast<std::size_t>(kPoints[i].point) != i) return false;
  }
  return kPoints.size() == kPointCount;
}
static_assert(InOrder());

}  // namespace

std::span<const PointInfo> Points() noexcept {
  return kPoints;
}

const PointInfo& InfoOf(Point point) noexcept {
  return kPoints[static_cast<std::size_t>(point)];
}

std::optional<Point> FindPoint(std::string_view name) noexcept {
  const auto row = std::ranges::find(kPoints, name, &PointInfo::name);
  if (row == kPoints.end()) return std::nullopt;
  return row->point;
}

}  // namespace mixdecks::simulator
