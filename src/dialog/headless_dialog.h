// A dialog without a screen: the controls of a template in memory, a message queue, timers and a
// modal loop. The second adapter of WindowOperations, on every system.
//
// One thread makes it, runs it and is its user; `Post` alone may be called on any thread.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

#include "dialog/headless_control.h"
#include "dialog/window_operations.h"

namespace mixdecks {

class HeadlessDialog;

/// Who sits before the dialog: called on the dialog's thread whenever all messages have been
/// handled, just before the dialog waits for the next one.
using HeadlessUser = std::function<void(HeadlessDialog&)>;

class HeadlessDialog final : public WindowOperations {
 public:
  using Procedure = std::function<std::intptr_t(WindowOperations& window, std::uint32_t message,
                                                std::uintptr_t first, std::intptr_t second)>;

  HeadlessDialog(const DialogTemplate& layout, Procedure procedure);

  /// Runs the dialog from its initialisation, which gets `parameter`, until it has ended. The
  /// value it ended with. Without a user nobody could end it: then it is closed when idle.
  std::intptr_t RunModal(std::intptr_t parameter, const HeadlessUser& user);
  /// Handles messages, and waits for more, until `done` holds before one of them. False when it
  /// does not within `limit`, or when the dialog ends first.
  bool HandleMessagesUntil(const std::function<bool()>& done, std::chrono::milliseconds limit);
  /// Sends a message past the queue.
  std::intptr_t Send(std::uint32_t message, std::uintptr_t first, std::intptr_t second);

  // What a user does. Each does nothing and gives false on a control that is disabled.
  bool Click(int button);
  /// Presses one key after the other at the end of the text; '\b' takes the last one away.
  bool Type(int edit, std::u16string_view keys);
  /// Selects all of the text and pastes.
  bool PasteOver(int edit, std::u16string_view text);
  bool Choose(int list, std::int32_t index);

  // What a user sees. The control must exist.
  const HeadlessControl& Control(int control) const;
  const std::u16string& Caption() const noexcept { return caption_; }
  /// Colour (0x00BBGGRR) in which the edit draws its text; nothing when the dialog does not say.
  std::optional<std::uint32_t> TextColour(int edit);
  bool HasTimer(std::uintptr_t timer) const { return timers_.contains(timer); }
  /// The value the dialog ended with, once it has.
  std::optional<std::intptr_t> EndValue() const noexcept { return endValue_; }

  /// Where the dialog stands. The first four lines may be set before it runs.
  DialogPlacement placement;
  std::int32_t left = 0;
  std::int32_t top = 0;

  // WindowOperations
  std::intptr_t SendToControl(int control, std::uint32_t message, std::uintptr_t first,
                              std::intptr_t second) override;
  void EnableControl(int control, bool enabled) override;
  void RedrawControl(int control) override;
  bool IsControl(std::intptr_t window, int control) override { return window == control; }
  void InstallCharacterMask(int control, std::string_view characters, bool allow) override;
  void SetCaption(const char16_t* caption) override { caption_ = caption; }
  void StartTimer(std::uintptr_t timer, std::uint32_t milliseconds) override;
  void StopTimer(std::uintptr_t timer) override { timers_.erase(timer); }
  void Post(std::uint32_t message, std::uintptr_t first, std::intptr_t second) override;
  void End(std::intptr_t result) override { endValue_ = result; }
  void SetTextColour(std::uintptr_t deviceContext, std::uint32_t colour) override;
  std::intptr_t DeviceContextBrush() override;
  DialogPlacement Placement() override { return placement; }
  void Place(std::int32_t newLeft, std::int32_t newTop, std::int32_t width,
             std::int32_t height) override;

 private:
  using Clock = std::chrono::steady_clock;

  struct Message {
    std::uint32_t message;
    std::uintptr_t first;
    std::intptr_t second;
  };
  struct Timer {
    Clock::duration period;
    Clock::time_point due;
  };

  HeadlessControl* Find(int control);
  /// Reports what happened to a control.
  void Notify(int control, std::uint32_t notification);
  void CheckRadio(HeadlessControl& pressed);
  /// The next message of the queue, or of a timer that is due.
  std::optional<Message> TakeMessage();
  std::optional<Message> TakeDueTimer();
  void WaitForMessage(Clock::time_point limit);

  Procedure procedure_;
  std::vector<HeadlessControl> controls_;
  std::u16string caption_;
  std::map<std::uintptr_t, Timer> timers_;
  std::optional<std::intptr_t> endValue_;
  std::optional<std::uint32_t> drawnColour_;

  std::mutex queueMutex_;
  std::condition_variable queued_;
  std::deque<Message> queue_;
};

}  // namespace mixdecks
