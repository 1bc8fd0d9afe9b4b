#include <windows.h>

#include <system_error>

#include "simulator/folder_lock.h"

namespace mixdecks::simulator {

// A file opened without sharing is the lock: a second opening fails until the handle is closed.
FolderLock::FolderLock(const std::filesystem::path& file)
    : handle_(reinterpret_cast<std::intptr_t>(
          CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                      FILE_ATTRIBUTE_NORMAL, nullptr))) {
  if (reinterpret_cast<HANDLE>(handle_) != INVALID_HANDLE_VALUE) return;
  const auto error = static_cast<int>(GetLastError());
  if (error == ERROR_SHARING_VIOLATION) throw FolderInUse("in use by another process");
  throw std::filesystem::filesystem_error("cannot be locked", file,
                                          std::error_code(error, std::system_category()));
}

FolderLock::~FolderLock() {
  CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

}  // namespace mixdecks::simulator
