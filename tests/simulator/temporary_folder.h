// A folder that lives as long as a test.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

namespace mixdecks::test {

class TemporaryFolder {
 public:
  TemporaryFolder() : path_(std::filesystem::temp_directory_path() / Name()) {
    std::filesystem::create_directories(path_);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& Path() const noexcept { return path_; }
  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

 private:
  static std::string Name() {
    static std::atomic<unsigned> counter = 0;
    return "mixdecks-test-" + std::to_string(std::random_device{}()) + "-" +
           std::to_string(counter++);
  }

  std::filesystem::path path_;
};

inline std::string ReadText(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

inline void WriteText(const std::filesystem::path& file, std::string_view text) {
  std::ofstream(file, std::ios::binary) << text;
}

}  // namespace mixdecks::test
