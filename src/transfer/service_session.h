// The service's hold on a thread, from construction to end.
#pragma once

#include "transfer/service_activation.h"

namespace mixdecks {

/// Enters the service and leaves it again, on one thread; leaves only what it entered.
class ServiceSession {
 public:
  ServiceSession() noexcept : entered_(Succeeded(EnterService())) {}
  ~ServiceSession() {
    if (entered_) LeaveService();
  }
  ServiceSession(const ServiceSession&) = delete;
  ServiceSession& operator=(const ServiceSession&) = delete;

  bool Entered() const noexcept { return entered_; }

 private:
  bool entered_;
};

}  // namespace mixdecks
