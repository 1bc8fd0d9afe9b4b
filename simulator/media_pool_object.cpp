#include "simulator/media_pool_object.h"

#include "simulator/code_text.h"
#include "simulator/frame_object.h"
#include "simulator/stills_object.h"
#include "transfer/video_modes.h"

namespace mixdecks::simulator {

MediaPoolObject::MediaPoolObject(std::shared_ptr<Switcher> switcher,
                                 std::shared_ptr<Connection> connection)
    : ConnectionObject(std::move(switcher), std::move(connection)) {
  ++Line().mediaPoolObjects;
}

void MediaPoolObject::OnLastRelease() {
  if (--Line().mediaPoolObjects == 0) ForgetCallbacks(Line().mediaPoolCallbacks);
}

HResult MediaPoolObject::GetStills(ITMKSwitcherStills** stills) {
  return ServeConnected({Point::kGetStills}, [&] {
    if (!Given(stills, "GetStills")) return kNullPointer;
    return HandOut<StillsObject>(stills);
  });
}

/// Whether the client asks for what the mode it was told last leads to: then the switcher misled
/// it, by a code that nobody knows or by changing its mode since.
bool MediaPoolObject::WasToldOf(std::uint32_t width, std::uint32_t height) const {
  const std::uint32_t told = Line().toldMode;
  const VideoModeInfo& mode = *FindVideoMode(told);
  return told != 0 && mode.width == width && mode.height == height;
}

HResult MediaPoolObject::CreateFrame(std::uint32_t format, std::uint32_t width,
                                     std::uint32_t height, ITMKSwitcherFrame** frame) {
  return ServeConnected({Point::kCreateFrame}, [&] {
    if (!Given(frame, "CreateFrame")) return kNullPointer;
    *frame = nullptr;
    const VideoModeInfo& mode = *FindVideoMode(Equipment().Pool().Mode());
    if (format != kFrameFormatYuva) {
      Report("CreateFrame", "the format is " + CodeText(format) + ", only yuva is taken");
      return kInvalidArgument;
    }
    if (width != mode.width || height != mode.height) {
      if (!WasToldOf(width, height)) {
        Report("CreateFrame", "a frame of " + std::to_string(width) + " x " +
                                  std::to_string(height) + " in mode " + CodeText(mode.code) +
                                  ", which takes " + std::to_string(mode.width) + " x " +
                                  std::to_string(mode.height));
      }
      return kInvalidArgument;
    }
    *frame = new FrameObject(SharedEquipment(), SharedLine(), mode.code);
    return kResultOk;
  });
}

HResult MediaPoolObject::AddCallback(ITMKSwitcherMediaPoolCallback* callback) {
  return Register(Line().mediaPoolCallbacks, callback);
}

HResult MediaPoolObject::RemoveCallback(ITMKSwitcherMediaPoolCallback* callback) {
  return Unregister(Line().mediaPoolCallbacks, callback);
}

}  // namespace mixdecks::simulator
