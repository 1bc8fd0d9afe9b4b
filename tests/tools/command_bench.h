// Runs the command in this process, in a folder of its own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tests/simulator/temporary_folder.h"
#include "tests/tools/picture_files.h"

namespace mixdecks::test {

struct CommandResult {
  int exitCode = -1;
  std::string out;
  std::string err;
};

/// Files of a test, and a pool among them.
class CommandBench {
 public:
  /// Writes a file and gives its path.
  std::string Write(std::string_view name, const Bytes& bytes) const;
  std::string Write(std::string_view name, std::string_view text) const;
  std::string Path(std::string_view name) const;
  std::string Pool() const { return Path("pool"); }

  /// `mixdecks WORDS…`.
  CommandResult Run(const std::vector<std::string>& words) const;
  /// `mixdecks export --pool POOL WORDS…`.
  CommandResult Export(std::vector<std::string> words) const;

  /// The frame in a slot, counted from 1. Fails the test when there is none.
  Bytes Frame(std::uint32_t slot) const;
  /// Fails the test unless pool and all its frames can be read.
  void ExpectWholePool() const;

 private:
  TemporaryFolder folder_;
};

}  // namespace mixdecks::test
