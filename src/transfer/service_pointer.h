// The one holder of a counted reference to an object of the switcher service.
#pragma once

#include <utility>

#include "platform/result.h"
#include "transfer/service_contract.h"

namespace mixdecks {

/// Owns one reference, or none, and releases it on exit. As safe across threads as its object.
template <typename Interface>
class ServicePointer {
 public:
  ServicePointer() = default;
  /// Takes over a reference that the caller owns.
  static ServicePointer Adopt(Interface* object) noexcept {
    ServicePointer pointer;
    pointer.object_ = object;
    return pointer;
  }
  ServicePointer(ServicePointer&& other) noexcept
      : object_(std::exchange(other.object_, nullptr)) {}
  ServicePointer& operator=(ServicePointer&& other) noexcept {
    ServicePointer old = std::move(*this);
    object_ = std::exchange(other.object_, nullptr);
    return *this;
  }
  ~ServicePointer() { Reset(); }

  /// A second reference to the same object; none to nothing.
  ServicePointer Share() const {
    if (object_ != nullptr) object_->AddRef();
    return Adopt(object_);
  }
  void Reset() noexcept {
    if (object_ != nullptr) std::exchange(object_, nullptr)->Release();
  }
  /// Where an operation that hands out an object may store it; what was held is released first.
  Interface** Receive() noexcept {
    Reset();
    return &object_;
  }

  Interface* Get() const noexcept { return object_; }
  Interface* operator->() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }

 private:
  Interface* object_ = nullptr;
};

/// Whether an operation that hands out an object succeeded and really gave one.
template <typename Interface>
bool Delivered(HResult result, const ServicePointer<Interface>& object) noexcept {
  return Succeeded(result) && object;
}

/// Asks `object` for another of its interfaces.
template <typename Interface>
HResult QueryService(ServiceObject& object, const ServiceId& id, ServicePointer<Interface>& found) {
  void* untyped = nullptr;
  const HResult result = object.QueryInterface(id, &untyped);
  found = ServicePointer<Interface>::Adopt(static_cast<Interface*>(untyped));
  return result;
}

}  // namespace mixdecks
