#include "dialog/dialog_templates.h"

#include "dialog/window_messages.h"

namespace mixdecks {
namespace {

using enum ControlClass;

// clang-format off
constexpr ControlTemplate kExportControls[] = {
  {kAddressEdit,       kEdit,     u"",                      0, 0x50810080, 0,      109,  56, 156, 14},
  {kSlotList,          kComboBox, u"",                      0, 0x50210003, 0,      109, 101, 155, 77},
  {kLabel,             kStatic,   u"Media Pool Location:",  0, 0x50020002, 0x1000,  33, 103,  71,  8},
  {kLabel,             kStatic,   u"Switcher IP Address:",  0, 0x50020002, 0,       35,  58,  69,  8},
  {kDoNothingRadio,    kButton,   u"Do Nothing",            0, 0x50000009, 0,      109, 139,  51, 10},
  {kMediaPlayer1Radio, kButton,   u"Set to Media Player 1", 0, 0x50000009, 0,      109, 152, 131,  9},
  {kMediaPlayer2Radio, kButton,   u"Set to Media Player 2", 0, 0x50000009, 0,      109, 165,  84, 10},
  {kMediaPlayer3Radio, kButton,   u"Set to Media Player 3", 0, 0x50000009, 0,      109, 178,  84, 10},
  {kMediaPlayer4Radio, kButton,   u"Set to Media Player 4", 0, 0x50000009, 0,      109, 191,  84, 10},
  {kCloseButton,       kButton,   u"Close",                 0, 0x50010000, 0,      190, 206,  51, 14},
  {kExportButton,      kButton,   u"Export",                0, 0x50010001, 0,      253, 206,  52, 14},
  {kLabel,             kStatic,   u"After Export:",         0, 0x50020002, 0,       29, 139,  75,  8},
  {kBanner,            kStatic,   u"",         kBannerPicture, 0x5000000E, 0,        0,   0, 315, 41},
  {kStatusLine,        kStatic,   u"",                      0, 0x50020000, 0,       12, 168,  60,  8},
  {kNameEdit,          kEdit,     u"",                      0, 0x50810080, 0,      109,  79, 156, 14},
  {kLabel,             kStatic,   u"Name:",                 0, 0x50020002, 0,       43,  81,  61,  8},
  {kLabel,             kStatic,   u"Colors:",               0, 0x50020002, 0x1000,  32, 122,  71,  8},
  {kPremultiplyCheck,  kButton,   u"Pre Multiply Alpha",    0, 0x50010003, 0,      109, 120, 152, 13},
};

constexpr ControlTemplate kAboutControls[] = {
  {kLabel,        kStatic, u"ORVA Switcher Media Pool", 0, 0x50020001, 0, 7,  6, 215, 8},
  {kAboutVersion, kStatic, u"Version X.X",              0, 0x50020001, 0, 7, 22, 215, 8},
  {kAboutNotice,  kStatic, u"Copyright (C) Tollenmark Design. All rights reserved.",
                                                        0, 0x50020001, 0, 7, 39, 215, 8},
};
// clang-format on

}  // namespace

const DialogTemplate kExportDialogTemplate = {
    kExportDialog,  u"Orva Switcher Media Pool", 0x80C000CD, 315, 232, 8, u"MS Shell Dlg",
    kExportControls};

const DialogTemplate kAboutDialogTemplate = {kAboutDialog, u"", 0x860008C8,      229,
                                             54,           8,   u"MS Shell Dlg", kAboutControls};

}  // namespace mixdecks
