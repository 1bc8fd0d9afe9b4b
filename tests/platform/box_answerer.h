// Shows message boxes for a test and answers each at once, whatever the system shows them with.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace mixdecks::testing {

struct ShownBox {
  std::string text;
  std::string caption;
  bool hasIcon = false;
  bool operator==(const ShownBox&) const = default;
};

/// Whether boxes can be shown at all here: a system may have no screen.
bool CanShowBoxes();

/// Runs `show` on this thread; `pumped` runs inside each box while it is open.
std::vector<ShownBox> AnswerBoxes(const std::function<void()>& show,
                                  const std::function<void()>& pumped = {});

}  // namespace mixdecks::testing
