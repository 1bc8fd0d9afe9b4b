// A control of the in-memory dialog: answers the messages that the logic sends as the system's
// edit, drop-down list, button and static text do. One thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dialog/character_mask.h"
#include "dialog/dialog_templates.h"

namespace mixdecks {

class HeadlessControl {
 public:
  explicit HeadlessControl(const ControlTemplate& control)
      : layout(control), text(control.text), enabled((control.style & kWindowDisabled) == 0) {}

  /// Answers a message. Other messages give 0.
  std::intptr_t Answer(std::uint32_t message, std::uintptr_t first, std::intptr_t second);

  /// A key typed at the end of the text; false when mask or limit refuse it, or when it is no
  /// character.
  bool TypeKey(char16_t character);
  /// Pastes over the whole text, up to the limit.
  void PasteOver(std::u16string_view pasted);

  bool IsButtonOfKind(std::uint32_t kind) const noexcept {
    return layout.windowClass == ControlClass::kButton && (layout.style & kButtonKindMask) == kind;
  }

  const ControlTemplate& layout;
  std::u16string text;
  bool enabled;
  bool checked = false;
  std::vector<std::u16string> items;
  std::int32_t selection = -1;
  std::size_t limit = kDefaultTextLimit;
  std::optional<CharacterMask> mask;
  int redraws = 0;  ///< how often it was asked to draw itself again

 private:
  static constexpr std::size_t kDefaultTextLimit = 32767;

  std::intptr_t AnswerAsList(std::uint32_t message, std::uintptr_t first, std::intptr_t second);
  std::intptr_t CopyText(std::size_t units, char16_t* buffer) const;
  std::intptr_t DeleteItem(std::intptr_t index);
  std::intptr_t InsertItem(std::intptr_t index, const char16_t* item);
  std::intptr_t Select(std::intptr_t index);
};

}  // namespace mixdecks
