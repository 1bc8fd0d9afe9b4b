#include <windows.h>

#include <algorithm>
#include <system_error>

#include "simulator/file_operations.h"

namespace mixdecks::simulator {
namespace {

using std::filesystem::path;

[[noreturn]] void Fail(const char* what, const path& file) {
  const auto error = static_cast<int>(GetLastError());
  throw std::filesystem::filesystem_error(what, file,
                                          std::error_code(error, std::system_category()));
}

class FileHandle {
 public:
  explicit FileHandle(HANDLE handle) noexcept : handle_(handle) {}
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle() {
    if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
  }
  HANDLE Get() const noexcept { return handle_; }

 private:
  HANDLE handle_;
};

class WindowsFileOperations final : public FileOperations {
 public:
  void Write(const path& file, std::span<const std::uint8_t> bytes) override {
    const FileHandle handle(CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                        CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (handle.Get() == INVALID_HANDLE_VALUE) Fail("cannot be created", file);
    while (!bytes.empty()) {
      constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
      const auto length = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
      DWORD written = 0;
      if (!WriteFile(handle.Get(), bytes.data(), length, &written, nullptr)) {
        Fail("cannot be written", file);
      }
      bytes = bytes.subspan(written);
    }
    if (!FlushFileBuffers(handle.Get())) Fail("cannot be brought to the disk", file);
  }

  void Replace(const path& from, const path& to) override {
    constexpr DWORD kFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    if (!MoveFileExW(from.c_str(), to.c_str(), kFlags)) Fail("cannot be replaced", to);
  }

  void Remove(const path& file) override {
    if (!DeleteFileW(file.c_str()) && GetLastError() != ERROR_FILE_NOT_FOUND) {
      Fail("cannot be removed", file);
    }
  }
};

}  // namespace

FileOperations& SystemFileOperations() noexcept {
  static WindowsFileOperations operations;
  return operations;
}

std::uint64_t LastWriteCount(const path& file) noexcept {
  WIN32_FILE_ATTRIBUTE_DATA attributes = {};
  GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &attributes);
  const FILETIME& time = attributes.ftLastWriteTime;
  return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

}  // namespace mixdecks::simulator
