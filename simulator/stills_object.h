// `ITMKSwitcherStills`, the still store as one connection sees it, and its locking interface.
#pragma once

#include "simulator/connection_object.h"

namespace mixdecks::simulator {

class StillsObject final : public ConnectionObject<ITMKSwitcherStills> {
 public:
  StillsObject(std::shared_ptr<Switcher> switcher, std::shared_ptr<Connection> connection);

  const char* InterfaceName() const noexcept override { return "ITMKSwitcherStills"; }
  HResult GetCount(std::uint32_t* count) override;
  HResult IsValid(std::uint32_t slot, std::int32_t* valid) override;
  HResult GetName(std::uint32_t slot, char16_t** name) override;
  HResult Unlock(ITMKSwitcherLockCallback* callback) override;
  HResult SetPicture(std::uint32_t slot, char16_t* name, ITMKSwitcherFrame* frame) override;
  HResult AddCallback(ITMKSwitcherStillsCallback* callback) override;
  HResult RemoveCallback(ITMKSwitcherStillsCallback* callback) override;

  HResult Unused6() override { return Unused(6); }
  HResult Unused7() override { return Unused(7); }
  HResult Unused8() override { return Unused(8); }
  HResult Unused9() override { return Unused(9); }
  HResult Unused12() override { return Unused(12); }
  HResult Unused13() override { return Unused(13); }
  HResult Unused14() override { return Unused(14); }

 protected:
  HResult Find(const ServiceId& id, void** object) override;
  void OnLastRelease() override;

 private:
  bool HasSlot(std::uint32_t slot, std::string_view operation) const;
  HResult BeginUpload(std::uint32_t slot, std::u16string_view name,
                      std::shared_ptr<const FrameBuffer> frame);
};

class StillsLockObject final : public ConnectionObject<ITMKSwitcherStillsLock> {
 public:
  StillsLockObject(std::shared_ptr<Switcher> switcher, std::shared_ptr<Connection> connection)
      : ConnectionObject(std::move(switcher), std::move(connection)) {}

  const char* InterfaceName() const noexcept override { return "ITMKSwitcherStillsLock"; }
  HResult Lock(ITMKSwitcherLockCallback* callback, std::uint32_t slot) override;

  HResult Unused3() override { return Unused(3); }
  HResult Unused4() override { return Unused(4); }
  HResult Unused5() override { return Unused(5); }
  HResult Unused6() override { return Unused(6); }
  HResult Unused7() override { return Unused(7); }
  HResult Unused8() override { return Unused(8); }
  HResult Unused9() override { return Unused(9); }
  HResult Unused10() override { return Unused(10); }
  HResult Unused11() override { return Unused(11); }
  HResult Unused12() override { return Unused(12); }
  HResult Unused13() override { return Unused(13); }
  HResult Unused14() override { return Unused(14); }
  HResult Unused15() override { return Unused(15); }
  HResult Unused16() override { return Unused(16); }
};

}  // namespace mixdecks::simulator
