// `ITMKSwitcherMediaPool`: where stills and frames come from.
#pragma once

#include "simulator/connection_object.h"

namespace mixdecks::simulator {

class MediaPoolObject final : public ConnectionObject<ITMKSwitcherMediaPool> {
 public:
  MediaPoolObject(std::shared_ptr<Switcher> switcher, std::shared_ptr<Connection> connection);

  const char* InterfaceName() const noexcept override { return "ITMKSwitcherMediaPool"; }
  HResult GetStills(ITMKSwitcherStills** stills) override;
  HResult CreateFrame(std::uint32_t format, std::uint32_t width, std::uint32_t height,
                      ITMKSwitcherFrame** frame) override;
  HResult AddCallback(ITMKSwitcherMediaPoolCallback* callback) override;
  HResult RemoveCallback(ITMKSwitcherMediaPoolCallback* callback) override;

  HResult Unused4() override { return Unused(4); }
  HResult Unused5() override { return Unused(5); }
  HResult Unused7() override { return Unused(7); }
  HResult Unused8() override { return Unused(8); }
  HResult Unused9() override { return Unused(9); }
  HResult Unused10() override { return Unused(10); }
  HResult Unused11() override { return Unused(11); }

 protected:
  void OnLastRelease() override;

 private:
  bool WasToldOf(std::uint32_t width, std::uint32_t height) const;
};

}  // namespace mixdecks::simulator
