// File operations that go wrong at a chosen one.
#pragma once

#include <functional>
#include <system_error>

#include "simulator/file_operations.h"

namespace mixdecks::test {

/// Counts writes, replacements and removals, and calls `disaster` instead of, or in the middle of,
/// the one of number `at`, counted from 0.
class FailingFiles final : public simulator::FileOperations {
 public:
  using Disaster = std::function<void(const std::filesystem::path& file)>;

  /// Where within the operation: before it, or in the middle of a write and behind all else.
  enum class When { kBefore, kHalfway };

  FailingFiles(int at, When when, Disaster disaster)
      : at_(at), when_(when), disaster_(std::move(disaster)) {}

  int Count() const noexcept { return count_; }

  void Write(const std::filesystem::path& file, std::span<const std::uint8_t> bytes) override {
    Perform(file, [&] {
      const bool half = when_ == When::kHalfway && count_ - 1 == at_;
      system_.Write(file, half ? bytes.first(bytes.size() / 2) : bytes);
    });
  }
  void Replace(const std::filesystem::path& from, const std::filesystem::path& to) override {
    Perform(to, [&] { system_.Replace(from, to); });
  }
  void Remove(const std::filesystem::path& file) override {
    Perform(file, [&] { system_.Remove(file); });
  }

  /// A disaster for operations that merely fail.
  static void Throw(const std::filesystem::path& file) {
    throw std::filesystem::filesystem_error("refused", file,
                                            std::make_error_code(std::errc::no_space_on_device));
  }

 private:
  template <class Operation>
  void Perform(const std::filesystem::path& file, Operation&& operation) {
    const bool now = count_++ == at_;
    if (now && when_ == When::kBefore) disaster_(file);
    operation();
    if (now && when_ != When::kBefore) disaster_(file);
  }

  const int at_;
  const When when_;
  const Disaster disaster_;
  int count_ = 0;
  simulator::FileOperations& system_ = simulator::SystemFileOperations();
};

}  // namespace mixdecks::test
