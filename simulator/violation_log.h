// What clients did against the rules. Any thread may call.
#pragma once

#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

namespace mixdecks::simulator {

class ViolationLog {
 public:
  /// Records one violation, worded as "SetPicture: called without the lock".
  void Add(std::string violation);
  std::vector<std::string> All() const;

 private:
  /// A client that does one thing wrong in a loop must not fill the memory.
  static constexpr std::size_t kMost = 200;

  mutable std::mutex mutex_;
  std::vector<std::string> violations_;
};

}  // namespace mixdecks::simulator
