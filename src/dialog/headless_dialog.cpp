#include "dialog/headless_dialog.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "dialog/window_messages.h"

namespace mixdecks {
namespace {

/// The one device context; its low half is no control's number.
constexpr std::uintptr_t kDeviceContext = 0x10000;
constexpr std::intptr_t kDeviceContextBrush = 0x20000;

}  // namespace

HeadlessDialog::HeadlessDialog(const DialogTemplate& layout, Procedure procedure)
    : procedure_(std::move(procedure)), caption_(layout.caption) {
  for (const ControlTemplate& control : layout.controls)
    controls_.emplace_back(control);
  // A full HD screen without a host's window, at the usual size of dialog units.
  placement.parentRight = placement.screenWidth = 1920;
  placement.parentBottom = placement.screenHeight = 1080;
  placement.captionButtonWidth = 36;
  placement.width = layout.width * 3 / 2;
  placement.height = layout.height * 13 / 8;
  placement.hasSystemMenu = (layout.style & kWindowSystemMenu) != 0;
}

std::intptr_t HeadlessDialog::RunModal(std::intptr_t parameter, const HeadlessUser& user) {
  endValue_.reset();
  Send(kWmInitDialog, 0, parameter);
  while (!endValue_) {
    if (const std::optional<Message> message = TakeMessage()) {
      Send(message->message, message->first, message->second);
    } else if (user) {
      user(*this);
      if (!endValue_) WaitForMessage(Clock::time_point::max());
    } else {
      Post(kWmCommand, CommandParameter(kCloseButton, kBnClicked), 0);
    }
  }
  return *endValue_;
}

bool HeadlessDialog::HandleMessagesUntil(const std::function<bool()>& done,
                                         std::chrono::milliseconds limit) {
  const Clock::time_point deadline = Clock::now() + limit;
  while (!done()) {
    if (endValue_ || Clock::now() >= deadline) return false;
    if (const std::optional<Message> message = TakeMessage()) {
      Send(message->message, message->first, message->second);
    } else {
      WaitForMessage(deadline);
    }
  }
  return true;
}

std::intptr_t HeadlessDialog::Send(std::uint32_t message, std::uintptr_t first,
                                   std::intptr_t second) {
  return procedure_(*this, message, first, second);
}

std::optional<HeadlessDialog::Message> HeadlessDialog::TakeMessage() {
  {
    const std::lock_guard lock(queueMutex_);
    if (!queue_.empty()) {
      const Message message = queue_.front();
      queue_.pop_front();
      return message;
    }
  }
  return TakeDueTimer();
}

std::optional<HeadlessDialog::Message> HeadlessDialog::TakeDueTimer() {
  const Clock::time_point now = Clock::now();
  for (auto& [number, timer] : timers_) {
    if (timer.due > now) continue;
    timer.due = now + timer.period;
    return Message{kWmTimer, number, 0};
  }
  return std::nullopt;
}

void HeadlessDialog::WaitForMessage(Clock::time_point limit) {
  for (const auto& [number, timer] : timers_)
    limit = std::min(limit, timer.due);
  std::unique_lock lock(queueMutex_);
  const auto hasMessage = [this] { return !queue_.empty(); };
  if (limit == Clock::time_point::max()) {
    queued_.wait(lock, hasMessage);
  } else {
    queued_.wait_until(lock, limit, hasMessage);
  }
}

void HeadlessDialog::Post(std::uint32_t message, std::uintptr_t first, std::intptr_t second) {
  // Notified under the lock: once the dialog's thread has the message, it may end the dialog.
  const std::lock_guard lock(queueMutex_);
  queue_.push_back({message, first, second});
  queued_.notify_one();
}

HeadlessControl* HeadlessDialog::Find(int control) {
  const auto found = std::ranges::find_if(
      controls_, [control](const HeadlessControl& each) { return each.layout.id == control; });
  return control == kLabel || found == controls_.end() ? nullptr : &*found;
}

const HeadlessControl& HeadlessDialog::Control(int control) const {
  const HeadlessControl* found = const_cast<HeadlessDialog*>(this)->Find(control);
  if (found == nullptr) std::abort();
  return *found;
}

void HeadlessDialog::Notify(int control, std::uint32_t notification) {
  Send(kWmCommand, CommandParameter(control, notification), control);
}

bool HeadlessDialog::Click(int button) {
  HeadlessControl* control = Find(button);
  if (control == nullptr || !control->enabled) return false;
  if (control->IsButtonOfKind(kButtonAutoCheckBox)) control->checked = !control->checked;
  if (control->IsButtonOfKind(kButtonAutoRadio)) CheckRadio(*control);
  Notify(button, kBnClicked);
  return true;
}

void HeadlessDialog::CheckRadio(HeadlessControl& pressed) {
  const auto inGroup = [](const HeadlessControl& control) {
    return (control.layout.style & kWindowGroup) == 0;
  };
  auto first = controls_.begin() + (&pressed - controls_.data());
  while (first != controls_.begin() && inGroup(*first))
    --first;
  auto last = first + 1;
  while (last != controls_.end() && inGroup(*last))
    ++last;
  for (auto control = first; control != last; ++control) {
    if (control->IsButtonOfKind(kButtonAutoRadio)) control->checked = &*control == &pressed;
  }
}

bool HeadlessDialog::Type(int edit, std::u16string_view keys) {
  HeadlessControl* control = Find(edit);
  if (control == nullptr) return false;
  for (const char16_t key : keys) {
    // A change may disable the very edit that is typed into.
    if (!control->enabled) return false;
    if (control->TypeKey(key)) Notify(edit, kEnChange);
  }
  return true;
}

bool HeadlessDialog::PasteOver(int edit, std::u16string_view text) {
  HeadlessControl* control = Find(edit);
  if (control == nullptr || !control->enabled) return false;
  control->PasteOver(text);
  Notify(edit, kEnChange);
  return true;
}

bool HeadlessDialog::Choose(int list, std::int32_t index) {
  HeadlessControl* control = Find(list);
  if (control == nullptr || !control->enabled) return false;
  control->Answer(kCbSetCurSel, static_cast<std::uintptr_t>(std::intptr_t{index}), 0);
  Notify(list, kCbnSelChange);
  return true;
}

std::optional<std::uint32_t> HeadlessDialog::TextColour(int edit) {
  drawnColour_.reset();
  const std::intptr_t brush = Send(kWmCtlColorEdit, kDeviceContext, edit);
  return brush == kDeviceContextBrush ? drawnColour_ : std::nullopt;
}

std::intptr_t HeadlessDialog::SendToControl(int control, std::uint32_t message,
                                            std::uintptr_t first, std::intptr_t second) {
  HeadlessControl* found = Find(control);
  if (found == nullptr) return 0;
  const std::intptr_t answer = found->Answer(message, first, second);
  const bool isEdit = found->layout.windowClass == ControlClass::kEdit;
  if (message == kWmSetText && isEdit) Notify(control, kEnChange);
  return answer;
}

void HeadlessDialog::EnableControl(int control, bool enabled) {
  if (HeadlessControl* found = Find(control)) found->enabled = enabled;
}

void HeadlessDialog::RedrawControl(int control) {
  if (HeadlessControl* found = Find(control)) ++found->redraws;
}

void HeadlessDialog::InstallCharacterMask(int control, std::string_view characters, bool allow) {
  if (HeadlessControl* found = Find(control)) found->mask.emplace().Set(characters, allow);
}

void HeadlessDialog::StartTimer(std::uintptr_t timer, std::uint32_t milliseconds) {
  const std::chrono::milliseconds period(milliseconds);
  timers_[timer] = {period, Clock::now() + period};
}

void HeadlessDialog::SetTextColour(std::uintptr_t deviceContext, std::uint32_t colour) {
  if (deviceContext == kDeviceContext) drawnColour_ = colour;
}

std::intptr_t HeadlessDialog::DeviceContextBrush() {
  return kDeviceContextBrush;
}

void HeadlessDialog::Place(std::int32_t newLeft, std::int32_t newTop, std::int32_t width,
                           std::int32_t height) {
  left = newLeft;
  top = newTop;
  placement.width = width;
  placement.height = height;
}

}  // namespace mixdecks
