#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <system_error>

#include "simulator/folder_lock.h"

namespace mixdecks::simulator {
namespace {

/// Who holds the lock, as its holder wrote it; for the message only.
std::string Holder(int descriptor) {
  std::array<char, 32> text{};
  const ssize_t length = pread(descriptor, text.data(), text.size() - 1, 0);
  const std::string process(text.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
  return process.empty() ? "in use by another process"
                         : "in use by process " + process.substr(0, process.find('\n'));
}

void WriteHolder(int descriptor) {
  const std::string process = std::to_string(getpid()) + "\n";
  // Nobody but a reader of the message misses it when this fails.
  if (ftruncate(descriptor, 0) == 0) {
    [[maybe_unused]] const ssize_t written = pwrite(descriptor, process.data(), process.size(), 0);
  }
}

}  // namespace

FolderLock::FolderLock(const std::filesystem::path& file)
    : handle_(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {
  const int descriptor = static_cast<int>(handle_);
  const auto fail = [&](int error) {
    throw std::filesystem::filesystem_error("cannot be locked", file,
                                            std::error_code(error, std::generic_category()));
  };
  if (descriptor < 0) fail(errno);
  if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
    const int error = errno;
    const std::string holder = error == EWOULDBLOCK ? Holder(descriptor) : "";
    close(descriptor);
    if (error == EWOULDBLOCK) throw FolderInUse(holder);
    fail(error);
  }
  WriteHolder(descriptor);
}

FolderLock::~FolderLock() {
  close(static_cast<int>(handle_));
}

}  // namespace mixdecks::simulator
