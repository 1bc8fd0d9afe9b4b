// How the command ends when something goes wrong that its user can put right.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace mixdecks {

inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 2;
/// As shells tell of a program that was stopped from the keyboard.
inline constexpr int kExitInterrupted = 130;

/// Printed as `mixdecks: what: why`, with what to do on a line of its own. None of the texts ends
/// with a full stop; a remedy may be empty.
class UserError : public std::runtime_error {
 public:
  UserError(int exitCode, std::string what, std::string why, std::string remedy)
      : std::runtime_error(what + ": " + why),
        exitCode_(exitCode),
        what_(std::move(what)),
        why_(std::move(why)),
        remedy_(std::move(remedy)) {}

  int ExitCode() const noexcept { return exitCode_; }
  const std::string& What() const noexcept { return what_; }
  const std::string& Why() const noexcept { return why_; }
  const std::string& Remedy() const noexcept { return remedy_; }

 private:
  int exitCode_;
  std::string what_;
  std::string why_;
  std::string remedy_;
};

/// A fault in what was typed.
inline UserError UsageError(std::string what, std::string why, std::string remedy) {
  return UserError(kExitUsage, std::move(what), std::move(why), std::move(remedy));
}

/// A fault in what was found.
inline UserError Failure(std::string what, std::string why, std::string remedy) {
  return UserError(kExitFailure, std::move(what), std::move(why), std::move(remedy));
}

}  // namespace mixdecks
