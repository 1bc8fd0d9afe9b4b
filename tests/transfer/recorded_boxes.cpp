#include "tests/transfer/recorded_boxes.h"

#include <gtest/gtest.h>

#include "platform/message_box.h"

namespace mixdecks {
namespace {

RecordedBoxes* currentBoxes = nullptr;

}  // namespace

RecordedBoxes::RecordedBoxes() {
  currentBoxes = this;
}

RecordedBoxes::~RecordedBoxes() {
  currentBoxes = nullptr;
}

void ShowMessageBox(void* owner, const char* text, const char* caption, std::uint32_t flags) {
  if (currentBoxes == nullptr) {
    ADD_FAILURE() << "unexpected message box: " << text;
  } else {
    currentBoxes->Add({owner, text, caption, flags});
  }
}

}  // namespace mixdecks
