#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include "simulator/file_operations.h"

namespace mixdecks::simulator {
namespace {

using std::filesystem::path;

[[noreturn]] void Fail(const char* what, const path& file) {
  throw std::filesystem::filesystem_error(what, file,
                                          std::error_code(errno, std::generic_category()));
}

/// An open file. Closing reports nothing: whoever needs to know has synchronised before.
class Descriptor {
 public:
  explicit Descriptor(int descriptor) noexcept : descriptor_(descriptor) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (descriptor_ >= 0) close(descriptor_);
  }
  int Get() const noexcept { return descriptor_; }

 private:
  int descriptor_;
};

/// Brings names in a folder to the disk. Not every file system can; the renames are atomic all the
/// same, so that a refusal only weakens what a power failure leaves.
void SynchroniseFolder(const path& folder) noexcept {
  const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.Get() >= 0) fsync(descriptor.Get());
}

class PortableFileOperations final : public FileOperations {
 public:
  void Write(const path& file, std::span<const std::uint8_t> bytes) override {
    const Descriptor descriptor(open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (descriptor.Get() < 0) Fail("cannot be created", file);
    while (!bytes.empty()) {
      const ssize_t written = write(descriptor.Get(), bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) Fail("cannot be written", file);
      bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    if (fsync(descriptor.Get()) != 0) Fail("cannot be brought to the disk", file);
  }

  void Replace(const path& from, const path& to) override {
    if (std::rename(from.c_str(), to.c_str()) != 0) Fail("cannot be replaced", to);
    SynchroniseFolder(to.parent_path());
  }

  void Remove(const path& file) override {
    if (unlink(file.c_str()) != 0 && errno != ENOENT) Fail("cannot be removed", file);
  }
};

}  // namespace

FileOperations& SystemFileOperations() noexcept {
  static PortableFileOperations operations;
  return operations;
}

std::uint64_t LastWriteCount(const path& file) noexcept {
  struct stat status = {};
  if (stat(file.c_str(), &status) != 0) return 0;
  constexpr std::uint64_t perSecond = 1'000'000'000;
  return static_cast<std::uint64_t>(status.st_mtim.tv_sec) * perSecond +
         static_cast<std::uint64_t>(status.st_mtim.tv_nsec);
}

}  // namespace mixdecks::simulator
