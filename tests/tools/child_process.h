// The built command as a process of its own.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace mixdecks::test {

/// How a process ended.
struct ProcessEnd {
  std::optional<int> exitCode;  ///< nothing when a signal ended it
  int signal = 0;
};

class ChildProcess {
 public:
  /// Starts `mixdecks WORDS…` with its streams in files; an empty name stands for no input, or for
  /// output that nobody wants.
  ChildProcess(const std::vector<std::string>& words, const std::string& input,
               const std::string& output, const std::string& errors);
  /// Kills what still runs.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  void Signal(int signal) const;
  /// Waits for the end. Kills the process and fails the test when it takes more than a minute.
  ProcessEnd Wait();

 private:
  pid_t process_ = -1;
};

}  // namespace mixdecks::test
