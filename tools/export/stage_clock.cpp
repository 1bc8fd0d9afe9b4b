#include "tools/export/stage_clock.h"

#include <mutex>

namespace mixdecks {

using simulator::Point;
using simulator::PointVisit;

/// Shared with the hooks, which the simulator's callers may still be inside.
struct StageClock::Record {
  mutable std::mutex mutex;
  StageMarks marks;

  StageMarks::Clock::time_point* MarkOf(const PointVisit& visit) {
    switch (visit.point) {
      case Point::kGetVideoMode:
        return visit.count == 1 ? &marks.fitting : &marks.converting;
      case Point::kCreateFrame:
        return &marks.copying;
      case Point::kQueryStillsLock:
        return &marks.uploading;
      case Point::kSetPicture:
        return &marks.given;
      default:
        return nullptr;
    }
  }

  void Note(const PointVisit& visit) {
    const std::lock_guard lock(mutex);
    StageMarks::Clock::time_point* const mark = MarkOf(visit);
    if (mark != nullptr) *mark = StageMarks::Clock::now();
  }
};

StageClock::StageClock(simulator::SwitcherSimulator& simulator)
    : record_(std::make_shared<Record>()) {
  for (const Point point :
       {Point::kGetVideoMode, Point::kCreateFrame, Point::kQueryStillsLock, Point::kSetPicture}) {
    simulator.SetPointHook(point,
                           [record = record_](const PointVisit& visit) { record->Note(visit); });
  }
}

StageClock::~StageClock() = default;

StageMarks StageClock::Marks() const {
  const std::lock_guard lock(record_->mutex);
  return record_->marks;
}

}  // namespace mixdecks
