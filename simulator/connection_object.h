// A service object that belongs to a connection.
#pragma once

#include <memory>
#include <utility>

#include "simulator/counted_object.h"

namespace mixdecks::simulator {

template <class Interface>
class ConnectionObject : public CountedObject<Interface> {
 protected:
  ConnectionObject(std::shared_ptr<Switcher> switcher, std::shared_ptr<Connection> connection)
      : CountedObject<Interface>(std::move(switcher)), connection_(std::move(connection)) {}

  Connection& Line() const noexcept { return *connection_; }
  const std::shared_ptr<Connection>& SharedLine() const noexcept { return connection_; }

  /// Runs a call that fails once the connection was dropped.
  template <class Operation>
  HResult ServeConnected(const Call& call, Operation&& operation) {
    return this->Serve(call, [&] { return connection_->alive ? operation() : kResultFail; });
  }

  /// Makes another object of the same connection and stores it, with its one reference.
  template <class Object, class Result>
  HResult HandOut(Result** result) const {
    *result = new Object(this->SharedEquipment(), connection_);
    return kResultOk;
  }

  /// Registering works on a dropped connection too: clients clean up without looking.
  template <class Callback>
  HResult Register(CallbackList<Callback>& callbacks, Callback* callback) {
    return this->Serve({Point::kAddCallback}, [&] {
      if (!this->Given(callback, "AddCallback")) return kNullPointer;
      if (callbacks.Add(callback)) return kResultOk;
      this->Report("AddCallback", "the callback is registered already");
      return kInvalidArgument;
    });
  }

  template <class Callback>
  HResult Unregister(CallbackList<Callback>& callbacks, Callback* callback) {
    return this->Serve({Point::kRemoveCallback}, [&] {
      if (callbacks.Remove(callback)) return kResultOk;
      this->Report("RemoveCallback", "the callback is not registered");
      return kInvalidArgument;
    });
  }

  /// The last object of its interface is given back: nobody can remove the callbacks any more.
  template <class Callback>
  void ForgetCallbacks(CallbackList<Callback>& callbacks) const {
    if (callbacks.RemoveAll())
      this->Report(this->InterfaceName(), "a callback was left registered");
  }

 private:
  const std::shared_ptr<Connection> connection_;
};

}  // namespace mixdecks::simulator
