// Takes the time of an export's stages at the calls that the plug-in makes to its switcher.
#pragma once

#include <chrono>
#include <memory>

#include "simulator/switcher_simulator.h"

namespace mixdecks {

/// When an export passed its calls; a default time for a call that it never reached.
struct StageMarks {
  using Clock = std::chrono::steady_clock;

  Clock::time_point fitting;     ///< the video mode is asked for, to fit the image
  Clock::time_point converting;  ///< … and asked again, to convert it
  Clock::time_point copying;     ///< a frame is asked for
  Clock::time_point uploading;   ///< the lock is asked for
  Clock::time_point given;       ///< the frame is given to the switcher
};

/// Watches the first export of a simulator. It may end before the simulator does.
class StageClock {
 public:
  explicit StageClock(simulator::SwitcherSimulator& simulator);
  ~StageClock();
  StageClock(const StageClock&) = delete;
  StageClock& operator=(const StageClock&) = delete;

  StageMarks Marks() const;

 private:
  struct Record;
  std::shared_ptr<Record> record_;
};

}  // namespace mixdecks
