#include "tests/tools/child_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>
#include <utility>

namespace mixdecks::test {
namespace {

const char* OrNull(const std::string& file) {
  return file.empty() ? "/dev/null" : file.c_str();
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& words, const std::string& input,
                           const std::string& output, const std::string& errors) {
  std::vector<std::string> all = {MIXDECKS_COMMAND};
  all.insert(all.end(), words.begin(), words.end());
  std::vector<char*> arguments;
  for (std::string& word : all)
    arguments.push_back(word.data());
  arguments.push_back(nullptr);
  constexpr int kNew = O_WRONLY | O_CREAT | O_TRUNC;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, OrNull(input), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, OrNull(output), kNew, 0600);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, OrNull(errors), kNew, 0600);
  const int error =
      posix_spawn(&process_, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) {
    ADD_FAILURE() << "cannot start " << all[0];
    process_ = -1;
  }
}

ChildProcess::~ChildProcess() {
  if (process_ < 0) return;
  Signal(SIGKILL);
  waitpid(process_, nullptr, 0);
}

void ChildProcess::Signal(int signal) const {
  if (process_ >= 0) kill(process_, signal);
}

ProcessEnd ChildProcess::Wait() {
  const auto limit = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  int status = 0;
  while (process_ >= 0 && waitpid(process_, &status, WNOHANG) == 0) {
    if (std::chrono::steady_clock::now() > limit) {
      ADD_FAILURE() << "the process hangs";
      Signal(SIGKILL);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  process_ = -1;
  if (WIFSIGNALED(status)) return {std::nullopt, WTERMSIG(status)};
  return {WEXITSTATUS(status), 0};
}

}  // namespace mixdecks::test
