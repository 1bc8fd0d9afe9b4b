// Numbers of the messages, notifications and controls that the dialogs work with, as the window
// system defines them, so that the logic needs no system header.
#pragma once

#include <cstdint>

namespace mixdecks {

// Messages to a dialog or to a control.
inline constexpr std::uint32_t kWmSetText = 12;
inline constexpr std::uint32_t kWmGetText = 13;
inline constexpr std::uint32_t kWmClose = 16;
inline constexpr std::uint32_t kWmNcDestroy = 130;
inline constexpr std::uint32_t kWmChar = 258;
inline constexpr std::uint32_t kWmInitDialog = 272;
inline constexpr std::uint32_t kWmCommand = 273;
inline constexpr std::uint32_t kWmTimer = 275;
inline constexpr std::uint32_t kWmCtlColorEdit = 307;
inline constexpr std::uint32_t kWmLeftButtonDown = 513;
inline constexpr std::uint32_t kWmApp = 32768;

inline constexpr std::uint32_t kEmLimitText = 197;
inline constexpr std::uint32_t kBmGetCheck = 240;
inline constexpr std::uint32_t kBmSetCheck = 241;
inline constexpr std::uint32_t kCbAddString = 323;
inline constexpr std::uint32_t kCbDeleteString = 324;
inline constexpr std::uint32_t kCbGetCount = 326;
inline constexpr std::uint32_t kCbGetCurSel = 327;
inline constexpr std::uint32_t kCbInsertString = 330;
inline constexpr std::uint32_t kCbResetContent = 331;
inline constexpr std::uint32_t kCbSetCurSel = 334;
inline constexpr std::uint32_t kCbSetItemData = 337;

// Notifications, in the high half of a command's first parameter.
inline constexpr std::uint32_t kBnClicked = 0;
inline constexpr std::uint32_t kCbnSelChange = 1;
inline constexpr std::uint32_t kEnChange = 768;

// Keys of a character message.
inline constexpr std::uintptr_t kKeyReturn = 13;
inline constexpr std::uintptr_t kKeyEscape = 27;

// Dialogs.
inline constexpr int kAboutDialog = 103;
inline constexpr int kExportDialog = 104;

// Controls.
inline constexpr int kOkCommand = 1;
inline constexpr int kCloseButton = 2;
inline constexpr int kAboutVersion = 1005;
inline constexpr int kAboutNotice = 1006;
inline constexpr int kAddressEdit = 1007;
inline constexpr int kBanner = 1008;
inline constexpr int kNameEdit = 1010;
inline constexpr int kDoNothingRadio = 1012;
inline constexpr int kMediaPlayer1Radio = 1013;
inline constexpr int kMediaPlayer2Radio = 1014;
inline constexpr int kSlotList = 1015;
inline constexpr int kStatusLine = 1017;
inline constexpr int kExportButton = 1018;
inline constexpr int kPremultiplyCheck = 1020;
inline constexpr int kMediaPlayer3Radio = 1021;
inline constexpr int kMediaPlayer4Radio = 1022;

/// The radio buttons of the choices after an export, in the order of the choices' numbers.
inline constexpr int kAfterExportRadios[] = {kDoNothingRadio, kMediaPlayer1Radio,
                                             kMediaPlayer2Radio, kMediaPlayer3Radio,
                                             kMediaPlayer4Radio};

/// The dialog's only timer.
inline constexpr std::uintptr_t kExportTimer = 1;

/// A command's first parameter: which control, and what happened to it.
constexpr std::uintptr_t CommandParameter(int control, std::uint32_t notification) noexcept {
  return static_cast<std::uintptr_t>(notification) << 16 | static_cast<std::uint16_t>(control);
}

}  // namespace mixdecks
