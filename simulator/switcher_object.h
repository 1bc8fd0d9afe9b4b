// `ITMKSwitcher`: one connection to the switcher.
#pragma once

#include "simulator/connection_object.h"

namespace mixdecks::simulator {

class SwitcherObject final : public ConnectionObject<ITMKSwitcher> {
 public:
  SwitcherObject(std::shared_ptr<Switcher> switcher, std::shared_ptr<Connection> connection);

  const char* InterfaceName() const noexcept override { return "ITMKSwitcher"; }
  HResult GetVideoMode(std::uint32_t* mode) override;
  HResult CreateIterator(const ServiceId& id, void** iterator) override;
  HResult AddCallback(ITMKSwitcherCallback* callback) override;
  HResult RemoveCallback(ITMKSwitcherCallback* callback) override;

  HResult Unused3() override { return Unused(3); }
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

 protected:
  HResult Find(const ServiceId& id, void** object) override;
  void OnLastRelease() override;
};

}  // namespace mixdecks::simulator
