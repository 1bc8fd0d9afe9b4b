// The book of service objects: which of them clients hold, and which they gave back.
//
// An object that was given back stays in memory for a while, so that a late use of it is recorded
// as a violation instead of destroying the process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_set>
#include <vector>

namespace mixdecks::simulator {

/// What the book knows of an object.
class BookedObject {
 public:
  BookedObject(const BookedObject&) = delete;
  BookedObject& operator=(const BookedObject&) = delete;
  virtual ~BookedObject() = default;

  /// Its interface, for messages.
  virtual const char* InterfaceName() const noexcept = 0;
  virtual std::uint32_t References() const noexcept = 0;

 protected:
  BookedObject() = default;
};

/// Any thread may call.
class ObjectBook {
 public:
  void Enter(BookedObject& object);
  /// Takes over an object whose last reference was given back.
  void Retire(std::unique_ptr<BookedObject> object);
  /// Ends retired objects, now and from now on at once.
  void Close();

  std::uint32_t LiveObjects() const;
  /// One text for each object still held: "ITMKSwitcher: 2 references were not released".
  std::vector<std::string> Leaks() const;

 private:
  static constexpr std::size_t kMostRetired = 128;

  mutable std::mutex mutex_;
  std::unordered_set<const BookedObject*> live_;
  std::deque<std::unique_ptr<BookedObject>> retired_;
  bool closed_ = false;
};

}  // namespace mixdecks::simulator
