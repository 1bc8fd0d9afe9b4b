#include <cstdio>
#include <mutex>
#include <utility>

#include "platform/message_box.h"

namespace mixdecks {
namespace {

std::mutex presenterMutex;
MessageBoxPresenter presenter;

MessageBoxPresenter CurrentPresenter() {
  const std::lock_guard lock(presenterMutex);
  return presenter;
}

}  // namespace

void ShowMessageBox(void* owner, const char* text, const char* caption, std::uint32_t flags) {
  // A copy runs without the mutex: a presenter may well install another one.
  if (const MessageBoxPresenter present = CurrentPresenter()) {
    present(owner, text, caption, flags);
  } else {
    std::fprintf(stderr, "%s: %s\n", caption, text);
  }
}

MessageBoxPresenter SetMessageBoxPresenter(MessageBoxPresenter newPresenter) {
  const std::lock_guard lock(presenterMutex);
  return std::exchange(presenter, std::move(newPresenter));
}

}  // namespace mixdecks
