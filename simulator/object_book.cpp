#include "simulator/object_book.h"

#include <algorithm>
#include <utility>

namespace mixdecks::simulator {

void ObjectBook::Enter(BookedObject& object) {
  const std::lock_guard lock(mutex_);
  live_.insert(&object);
}

void ObjectBook::Retire(std::unique_ptr<BookedObject> object) {
  // What ends here may hold the last reference to the book's owner: it ends without the lock.
  std::unique_ptr<BookedObject> ended;
  const std::lock_guard lock(mutex_);
  live_.erase(object.get());
  if (closed_) {
    ended = std::move(object);
    return;
  }
  retired_.push_back(std::move(object));
  if (retired_.size() > kMostRetired) {
    ended = std::move(retired_.front());
    retired_.pop_front();
  }
}

void ObjectBook::Close() {
  std::deque<std::unique_ptr<BookedObject>> ended;
  const std::lock_guard lock(mutex_);
  closed_ = true;
  ended.swap(retired_);
}

std::uint32_t ObjectBook::LiveObjects() const {
  const std::lock_guard lock(mutex_);
  return static_cast<std::uint32_t>(live_.size());
}

std::vector<std::string> ObjectBook::Leaks() const {
  const std::lock_guard lock(mutex_);
  std::vector<std::string> leaks;
  for (const BookedObject* object : live_) {
    const std::uint32_t references = object->References();
    leaks.push_back(std::string(object->InterfaceName()) + ": " + std::to_string(references) +
                    (references == 1 ? " reference was" : " references were") + " not released");
  }
  std::ranges::sort(leaks);
  return leaks;
}

}  // namespace mixdecks::simulator
