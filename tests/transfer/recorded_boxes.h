// Message boxes as a test finds them: this program's `ShowMessageBox` stands in for the system's
// and answers at once.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace mixdecks {

struct RecordedBox {
  void* owner;
  std::string text;
  std::string caption;
  std::uint32_t flags;
};

/// Records the boxes of its lifetime; one at a time. A box outside of one is a failure.
class RecordedBoxes {
 public:
  RecordedBoxes();
  ~RecordedBoxes();
  RecordedBoxes(const RecordedBoxes&) = delete;
  RecordedBoxes& operator=(const RecordedBoxes&) = delete;

  const std::vector<RecordedBox>& Shown() const { return shown_; }
  void Add(RecordedBox box) { shown_.push_back(std::move(box)); }

 private:
  std::vector<RecordedBox> shown_;
};

}  // namespace mixdecks
