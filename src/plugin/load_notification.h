// What the library does when the system loads or unloads it: it keeps its instance handle, and
// one mutex for as long as it is attached to the process. The system calls one at a time.
#pragma once

#include <cstdint>

namespace mixdecks {

/// The system's reasons to notify a library. Threads that come and go have others.
inline constexpr std::uint32_t kProcessDetach = 0;
inline constexpr std::uint32_t kProcessAttach = 1;

/// Whether the library may stay loaded: false when it attaches and the system has no mutex left.
bool OnLoadNotification(std::uint32_t reason, void* instance) noexcept;

}  // namespace mixdecks
