#include "simulator/violation_log.h"

#include <utility>

namespace mixdecks::simulator {

void ViolationLog::Add(std::string violation) {
  const std::lock_guard lock(mutex_);
  if (violations_.size() < kMost) violations_.push_back(std::move(violation));
}

std::vector<std::string> ViolationLog::All() const {
  const std::lock_guard lock(mutex_);
  return violations_;
}

}  // namespace mixdecks::simulator
