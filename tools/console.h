// Where the command writes.
#pragma once

#include <ostream>
#include <string>

#include "tools/user_error.h"

namespace mixdecks {

/// Results go to `out`, everything else to `err`. Both are borrowed.
struct Console {
  std::ostream& out;
  std::ostream& err;

  void Warn(const std::string& warning) const;
  void Report(const UserError& error) const;
};

}  // namespace mixdecks
