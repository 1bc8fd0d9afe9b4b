// `ITMKSwitcherFrame`: a frame for the client to write.
#pragma once

#include "simulator/connection_object.h"
#include "simulator/frame_buffer.h"

namespace mixdecks::simulator {

class FrameObject final : public ConnectionObject<ITMKSwitcherFrame> {
 public:
  FrameObject(std::shared_ptr<Switcher> switcher, std::shared_ptr<Connection> connection,
              std::uint32_t mode);

  const char* InterfaceName() const noexcept override { return "ITMKSwitcherFrame"; }
  std::int32_t GetHeight() override;
  std::int32_t GetRowBytes() override;
  HResult GetBytes(void** bytes) override;

  HResult Unused3() override { return Unused(3); }
  HResult Unused6() override { return Unused(6); }

 protected:
  void OnLastRelease() override;

 private:
  std::shared_ptr<FrameBuffer> buffer_;
};

}  // namespace mixdecks::simulator
