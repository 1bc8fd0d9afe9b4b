// The two dialogs as their resources lay them out: what the in-memory dialog is made from, and
// what the built library's resources are compared with.
#pragma once

#include <cstdint>
#include <span>

namespace mixdecks {

enum class ControlClass : std::uint16_t {  // numbers as templates store them
  kButton = 0x0080,
  kEdit = 0x0081,
  kStatic = 0x0082,
  kComboBox = 0x0085,
};

inline constexpr int kLabel = -1;  ///< a control that nothing refers to
inline constexpr std::uint16_t kBannerPicture = 1009;

inline constexpr std::uint32_t kWindowVisible = 0x10000000;
inline constexpr std::uint32_t kWindowDisabled = 0x08000000;
inline constexpr std::uint32_t kWindowGroup = 0x00020000;
inline constexpr std::uint32_t kWindowSystemMenu = 0x00080000;
inline constexpr std::uint32_t kButtonKindMask = 0xF;
inline constexpr std::uint32_t kButtonAutoCheckBox = 3;
inline constexpr std::uint32_t kButtonAutoRadio = 9;

/// One control; the rectangle is in dialog units.
struct ControlTemplate {
  int id;
  ControlClass windowClass;
  const char16_t* text;
  std::uint16_t picture;  ///< resource shown in place of text, or 0
  std::uint32_t style;
  std::uint32_t extendedStyle;
  std::int16_t left, top, width, height;
};

/// One dialog; controls are in tab order.
struct DialogTemplate {
  int id;
  const char16_t* caption;
  std::uint32_t style;
  std::int16_t width, height;
  std::uint16_t fontPoints;
  const char16_t* fontName;
  std::span<const ControlTemplate> controls;
};

extern const DialogTemplate kExportDialogTemplate;
extern const DialogTemplate kAboutDialogTemplate;

}  // namespace mixdecks
