#include "simulator/stills_object.h"

#include <optional>

#include "platform/text.h"

namespace mixdecks::simulator {
namespace {

std::string OutOfRange(std::uint32_t slot, std::uint32_t count) {
  return "slot index " + std::to_string(slot) + " of " + std::to_string(count) + " slots";
}

}  // namespace

StillsObject::StillsObject(std::shared_ptr<Switcher> switcher,
                           std::shared_ptr<Connection> connection)
    : ConnectionObject(std::move(switcher), std::move(connection)) {
  ++Line().stillsObjects;
}

void StillsObject::OnLastRelease() {
  if (--Line().stillsObjects > 0) return;
  ForgetCallbacks(Line().stillsCallbacks);
  Equipment().EndLocks(Line());
}

HResult StillsObject::Find(const ServiceId& id, void** object) {
  if (id != kSwitcherStillsLockId) return kNoInterface;
  return ServeConnected({Point::kQueryStillsLock}, [&] {
    ITMKSwitcherStillsLock* lock = nullptr;
    const HResult result = HandOut<StillsLockObject>(&lock);
    *object = lock;
    return result;
  });
}

bool StillsObject::HasSlot(std::uint32_t slot, std::string_view operation) const {
  const std::uint32_t count = Equipment().Pool().SlotCount();
  if (slot >= count) Report(operation, OutOfRange(slot, count));
  return slot < count;
}

HResult StillsObject::GetCount(std::uint32_t* count) {
  return ServeConnected({Point::kGetCount}, [&] {
    if (!Given(count, "GetCount")) return kNullPointer;
    *count = Equipment().Pool().SlotCount();
    return kResultOk;
  });
}

HResult StillsObject::IsValid(std::uint32_t slot, std::int32_t* valid) {
  return ServeConnected({Point::kIsValid, slot}, [&] {
    if (!Given(valid, "IsValid")) return kNullPointer;
    if (!HasSlot(slot, "IsValid")) return kInvalidArgument;
    *valid = Equipment().Pool().Find(slot) ? 1 : 0;
    return kResultOk;
  });
}

HResult StillsObject::GetName(std::uint32_t slot, char16_t** name) {
  return ServeConnected({Point::kGetName, slot}, [&] {
    if (!Given(name, "GetName")) return kNullPointer;
    *name = nullptr;
    if (!HasSlot(slot, "GetName")) return kInvalidArgument;
    const std::optional<Still> still = Equipment().Pool().Find(slot);
    *name = Text(still ? std::u16string_view(still->name) : u"").Detach();
    return kResultOk;
  });
}

HResult StillsObject::Unlock(ITMKSwitcherLockCallback* callback) {
  return Serve({Point::kUnlock}, [&] {
    const UnlockAnswer answer = Equipment().Locks().Unlock(Line(), callback);
    Equipment().GrantNextLock();
    if (answer == UnlockAnswer::kDuringUpload) Report("Unlock", "called during the upload");
    if (answer != UnlockAnswer::kNotHeld) return kResultOk;
    // A dropped connection has lost its lock, which the client may not know yet.
    if (Line().alive) Report("Unlock", "called without the lock");
    return kResultFail;
  });
}

HResult StillsObject::SetPicture(std::uint32_t slot, char16_t* name, ITMKSwitcherFrame* frame) {
  bool served = false;
  const HResult result = ServeConnected({Point::kSetPicture, slot}, [&] {
    served = true;
    if (!HasSlot(slot, "SetPicture")) return kInvalidArgument;
    std::shared_ptr<const FrameBuffer> buffer = Equipment().FindFrame(frame);
    if (buffer == nullptr) {
      Report("SetPicture", "called with what is no frame of this switcher");
      return kInvalidArgument;
    }
    const std::u16string_view text =
        name == nullptr ? std::u16string_view() : std::u16string_view(name, TextLength(name));
    return BeginUpload(slot, text, std::move(buffer));
  });
  if (!served) Equipment().Locks().Excuse(Line());
  return result;
}

HResult StillsObject::BeginUpload(std::uint32_t slot, std::u16string_view name,
                                  std::shared_ptr<const FrameBuffer> frame) {
  std::uint64_t lockId = 0;
  switch (Equipment().Locks().BeginUpload(Line(), slot, lockId)) {
    case UploadPermission::kGiven:
      break;
    case UploadPermission::kNoLock:
      if (Line().alive) Report("SetPicture", "called without the lock");
      return kAccessDenied;
    case UploadPermission::kOtherSlot:
      Report("SetPicture", "the lock is for another slot than " + std::to_string(slot));
      return kAccessDenied;
    case UploadPermission::kUnderWay:
      Report("SetPicture", "called during the upload");
      return kAccessDenied;
  }
  if (const auto fault = frame->FindFault()) Report("SetPicture", *fault);
  const bool started =
      Equipment().StartUpload({SharedLine(), lockId, slot, std::u16string(name), std::move(frame)});
  if (!started) Equipment().Locks().Excuse(Line());
  return started ? kResultOk : kResultFail;
}

HResult StillsObject::AddCallback(ITMKSwitcherStillsCallback* callback) {
  return Register(Line().stillsCallbacks, callback);
}

HResult StillsObject::RemoveCallback(ITMKSwitcherStillsCallback* callback) {
  const HResult result = Unregister(Line().stillsCallbacks, callback);
  // A lock callback cannot be removed: whoever stops listening is told of no lock either.
  if (Line().stillsCallbacks.Empty()) Equipment().Locks().Withdraw(Line());
  return result;
}

HResult StillsLockObject::Lock(ITMKSwitcherLockCallback* callback, std::uint32_t slot) {
  return ServeConnected({Point::kLock, slot}, [&] {
    if (!Given(callback, "Lock")) return kNullPointer;
    const std::uint32_t count = Equipment().Pool().SlotCount();
    if (slot >= count) {
      Report("Lock", OutOfRange(slot, count));
      return kInvalidArgument;
    }
    if (!Equipment().Locks().Ask(SharedLine(), callback, slot)) {
      Report("Lock", "called by who has the lock or waits for it");
      return kInvalidArgument;
    }
    if (Equipment().GrantNextLock()) return kResultOk;
    Equipment().Locks().Withdraw(Line());
    return kResultFail;
  });
}

}  // namespace mixdecks::simulator
