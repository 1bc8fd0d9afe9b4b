#include "simulator/frame_object.h"

namespace mixdecks::simulator {

FrameObject::FrameObject(std::shared_ptr<Switcher> switcher, std::shared_ptr<Connection> connection,
                         std::uint32_t mode)
    : ConnectionObject(std::move(switcher), std::move(connection)),
      buffer_(std::make_shared<FrameBuffer>(mode, Equipment().Setup().rowPadding)) {
  Equipment().EnterFrame(this, buffer_);
}

void FrameObject::OnLastRelease() {
  Equipment().ForgetFrame(this);
  // An upload under way keeps the bytes; this object, which stays a while, does not.
  buffer_.reset();
}

std::int32_t FrameObject::GetHeight() {
  return InUse("GetHeight") ? static_cast<std::int32_t>(buffer_->Height()) : 0;
}

std::int32_t FrameObject::GetRowBytes() {
  return InUse("GetRowBytes") ? static_cast<std::int32_t>(buffer_->RowBytes()) : 0;
}

HResult FrameObject::GetBytes(void** bytes) {
  return Serve({Point::kGetBytes}, [&] {
    if (!Given(bytes, "GetBytes")) return kNullPointer;
    *bytes = buffer_->Bytes();
    return kResultOk;
  });
}

}  // namespace mixdecks::simulator
