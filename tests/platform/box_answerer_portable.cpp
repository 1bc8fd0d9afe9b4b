#include <utility>

#include "platform/message_box.h"
#include "tests/platform/box_answerer.h"

namespace mixdecks::testing {

bool CanShowBoxes() {
  return true;
}

std::vector<ShownBox> AnswerBoxes(const std::function<void()>& show,
                                  const std::function<void()>& pumped) {
  std::vector<ShownBox> boxes;
  MessageBoxPresenter previous = SetMessageBoxPresenter(
      [&](void*, const char* text, const char* caption, std::uint32_t flags) {
        boxes.push_back({text, caption, flags == kMessageBoxIconError});
        if (pumped) pumped();
      });
  show();
  SetMessageBoxPresenter(std::move(previous));
  return boxes;
}

}  // namespace mixdecks::testing
