// How the switcher service is reached: COM on Windows, a class registered in process elsewhere.
//
// The three operations are called on one thread, in this order, as a pair around the life of the
// service objects.
#pragma once

#include "platform/result.h"
#include "transfer/service_contract.h"

namespace mixdecks {

/// Prepares the calling thread for the service. A thread that was prepared before is a success;
/// each success is balanced by one `LeaveService`.
HResult EnterService() noexcept;
void LeaveService() noexcept;

/// Creates the service's discovery object; the caller releases it. A success may leave null.
HResult CreateSwitcherDiscovery(ITMKSwitcherDiscovery** discovery) noexcept;

/// What makes the discovery object where there is no COM. The portable adapter alone has it.
using ServiceClassFactory = HResult (*)(ITMKSwitcherDiscovery** discovery);

/// Result of creating a class that nobody registered (0x80040154).
inline constexpr HResult kClassNotRegistered = static_cast<HResult>(0x80040154);

/// Registers the class for this process; null takes it away. Returns the one registered before.
ServiceClassFactory RegisterServiceClass(ServiceClassFactory factory) noexcept;

}  // namespace mixdecks
