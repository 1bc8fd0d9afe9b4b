// What all service objects have in common: a count of references, kept strictly.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "simulator/object_book.h"
#include "simulator/service_results.h"
#include "simulator/switcher.h"
#include "transfer/service_contract.h"

namespace mixdecks::simulator {

/// One operation of a service object, as it is visited and as messages name it.
struct Call {
  Point point;
  std::uint32_t number = 0;
};

/// Made with one reference, which the maker hands out. Uses after the last release, which a
/// client must not make, are recorded and fail.
template <class Interface>
class CountedObject : public Interface, public BookedObject {
 public:
  std::uint32_t AddRef() final {
    for (std::uint32_t count = references_; count != 0;) {
      if (references_.compare_exchange_weak(count, count + 1)) return count + 1;
    }
    ReportLateUse("AddRef");
    return 0;
  }

  std::uint32_t Release() final {
    for (std::uint32_t count = references_; count != 0;) {
      if (!references_.compare_exchange_weak(count, count - 1)) continue;
      if (count == 1) Retire();
      return count - 1;
    }
    ReportLateUse("Release");
    return 0;
  }

  HResult QueryInterface(const ServiceId& id, void** object) final {
    if (!InUse("QueryInterface") || !Given(object, "QueryInterface")) return kNullPointer;
    *object = nullptr;
    if (id != kUnknownId) return Find(id, object);
    AddRef();
    *object = static_cast<Interface*>(this);
    return kResultOk;
  }

  std::uint32_t References() const noexcept final { return references_; }

 protected:
  explicit CountedObject(std::shared_ptr<Switcher> switcher) : switcher_(std::move(switcher)) {
    switcher_->Objects().Enter(*this);
  }

  Switcher& Equipment() const noexcept { return *switcher_; }
  const std::shared_ptr<Switcher>& SharedEquipment() const noexcept { return switcher_; }

  /// Stores another interface of the object, with a reference of its own.
  virtual HResult Find(const ServiceId&, void**) { return kNoInterface; }

  /// Called when the last reference is given back.
  virtual void OnLastRelease() {}

  bool InUse(std::string_view operation) const {
    if (references_ != 0) return true;
    ReportLateUse(operation);
    return false;
  }

  /// Whether a place for a result was given.
  bool Given(const void* place, std::string_view operation) const {
    if (place == nullptr) Report(operation, "called with a null pointer");
    return place != nullptr;
  }

  void Report(std::string_view operation, const std::string& what) const {
    switcher_->Violation(operation, what);
  }

  /// What an operation that nobody is to call comes to.
  HResult Unused(int slot) const {
    Report(InterfaceName(), "slot " + std::to_string(slot) + " was called, which is in no use");
    return kNotImplemented;
  }

  /// Arrives at the call's point and runs it unless the script lets it fail. Nothing that goes
  /// wrong here leaves as an exception: the caller may be another compiler's code.
  template <class Operation>
  HResult Serve(const Call& call, Operation&& operation) {
    try {
      if (!InUse(InfoOf(call.point).name)) return kResultFail;
      if (switcher_->Arrive(call.point, call.number).failed) return kResultFail;
      return operation();
    } catch (const std::bad_alloc&) {
      return kOutOfMemory;
    } catch (const PoolError&) {
      return kResultFail;
    }
  }

 private:
  void ReportLateUse(std::string_view operation) const {
    Report(operation, std::string("called on ") + InterfaceName() + " after its last Release");
  }

  void Retire() {
    OnLastRelease();
    switcher_->Objects().Retire(std::unique_ptr<BookedObject>(this));
  }

  const std::shared_ptr<Switcher> switcher_;
  std::atomic<std::uint32_t> references_ = 1;
};

}  // namespace mixdecks::simulator
