// The port to the file system, as far as a pool writes: durable writes and atomic replacement.
//
// A file that was replaced holds the old or the new bytes whole, also after the process was killed
// or the power failed. Failures throw `std::filesystem::filesystem_error`. Any thread may call.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

namespace mixdecks::simulator {

class FileOperations {
 public:
  virtual ~FileOperations() = default;
  /// Creates the file, or overwrites it, and brings its bytes to the disk.
  virtual void Write(const std::filesystem::path& file, std::span<const std::uint8_t> bytes) = 0;
  /// Renames `from` to `to` in the same folder, atomically replacing a file that is there.
  virtual void Replace(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
  /// Removes a file; one that is not there is no failure.
  virtual void Remove(const std::filesystem::path& file) = 0;
};

/// The system's own.
FileOperations& SystemFileOperations() noexcept;

/// When a file was written last, as finely as its file system counts, which the standard library
/// does not on every system; of use only to be compared. 0 for a file that is not there.
std::uint64_t LastWriteCount(const std::filesystem::path& file) noexcept;

}  // namespace mixdecks::simulator
