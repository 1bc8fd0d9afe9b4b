// Keeps a pool folder to one process at a time, by a lock on a file in it.
//
// The system gives the lock back when a process ends, however it ends; the file stays.
#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>

namespace mixdecks::simulator {

/// The lock is held elsewhere: in another process, or a second time in this one.
class FolderInUse : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class FolderLock {
 public:
  /// Takes the lock on `file`, which is made if need be. Throws `FolderInUse`, or
  /// `std::filesystem::filesystem_error` when the file cannot be made.
  explicit FolderLock(const std::filesystem::path& file);
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;
  ~FolderLock();

 private:
  std::intptr_t handle_;
};

}  // namespace mixdecks::simulator
