// The host's parameter records, 64-bit layout: only the fields that the plug-in touches have
// names. The host owns every record; the plug-in borrows them for the length of a selector.
#pragma once

#include <cstddef>
#include <cstdint>

namespace mixdecks {

/// A rectangle of signed 16-bit numbers.
struct HostRect16 {
  std::int16_t top, left, bottom, right;
};

/// A rectangle of signed 32-bit numbers.
struct HostRect32 {
  std::int32_t top, left, bottom, right;
};

/// The host's platform record: its first field is the parent window.
struct PlatformRecord {
  void* parentWindow;
};

/// The host's basic suite: the way to every other suite. Results are 0 on success.
struct HostBasicSuite {
  std::int32_t (*acquireSuite)(const char* name, std::int32_t version, const void** suite);
  std::int32_t (*releaseSuite)(const char* name, std::int32_t version);
};

/// The host's table of handle procedures. A handle is an opaque word.
struct HostHandleProcs {
  std::uint16_t version;
  std::int16_t count;
  std::intptr_t (*newHandle)(std::int32_t size);
  void (*disposeHandle)(std::intptr_t handle);
  std::int32_t (*getSize)(std::intptr_t handle);
  std::int16_t (*setSize)(std::intptr_t handle, std::int32_t size);
  void* (*lock)(std::intptr_t handle, std::uint8_t moveHigh);
  void (*unlock)(std::intptr_t handle);
};
static_assert(offsetof(HostHandleProcs, count) == 2);
static_assert(offsetof(HostHandleProcs, newHandle) == 8);
static_assert(offsetof(HostHandleProcs, disposeHandle) == 16);
static_assert(offsetof(HostHandleProcs, getSize) == 24);
static_assert(offsetof(HostHandleProcs, setSize) == 32);
static_assert(offsetof(HostHandleProcs, lock) == 40);
static_assert(offsetof(HostHandleProcs, unlock) == 48);

/// One channel of a document, in a linked list.
struct ChannelDescription {
  std::byte unnamed0[8];
  const ChannelDescription* next;
  void* readPort;
};
static_assert(offsetof(ChannelDescription, next) == 8);
static_assert(offsetof(ChannelDescription, readPort) == 16);

/// The document's channel lists.
struct DocumentDescription {
  std::byte unnamed0[832];
  const ChannelDescription* mergedComposite;
  const ChannelDescription* mergedTransparency;  ///< or null
  const ChannelDescription* extraAlpha;          ///< or null
};
static_assert(offsetof(DocumentDescription, mergedComposite) == 832);
static_assert(offsetof(DocumentDescription, mergedTransparency) == 840);
static_assert(offsetof(DocumentDescription, extraAlpha) == 848);

/// Image mode of a document in RGB.
inline constexpr std::int16_t kImageModeRgb = 3;

/// The parameter record of every selector but about.
struct ExportRecord {
  std::byte unnamed0[24];
  std::int32_t maximumMemory;  ///< bytes of image memory the plug-in asks for
  std::int16_t imageMode;
  std::int16_t imageHeight;  ///< pixels
  std::int16_t imageWidth;   ///< pixels
  std::int16_t depth;        ///< bits per channel sample
  std::int16_t planes;
  std::byte unnamed38[778];
  HostRect16 imageRect;
  std::byte unnamed824[20];
  std::uint8_t fileName[256];  ///< Pascal string: length byte, then characters
  std::byte unnamed1100[84];
  PlatformRecord* platform;
  std::byte unnamed1192[32];
  HostHandleProcs* handleProcs;
  std::byte unnamed1232[88];
  DocumentDescription* document;
  HostBasicSuite* basicSuite;
};
static_assert(offsetof(ExportRecord, maximumMemory) == 24);
static_assert(offsetof(ExportRecord, imageMode) == 28);
static_assert(offsetof(ExportRecord, imageHeight) == 30);
static_assert(offsetof(ExportRecord, imageWidth) == 32);
static_assert(offsetof(ExportRecord, depth) == 34);
static_assert(offsetof(ExportRecord, planes) == 36);
static_assert(offsetof(ExportRecord, imageRect) == 816);
static_assert(offsetof(ExportRecord, fileName) == 844);
static_assert(offsetof(ExportRecord, platform) == 1184);
static_assert(offsetof(ExportRecord, handleProcs) == 1224);
static_assert(offsetof(ExportRecord, document) == 1320);
static_assert(offsetof(ExportRecord, basicSuite) == 1328);

/// The parameter record of the about selector.
struct AboutRecord {
  PlatformRecord* platform;
  HostBasicSuite* basicSuite;
};
static_assert(offsetof(AboutRecord, basicSuite) == 8);

/// What the plug-in keeps in its data handle between selectors; rewritten at every selector.
struct ExportGlobals {
  std::int16_t* result;
  ExportRecord* record;
};
static_assert(sizeof(ExportGlobals) == 16);

}  // namespace mixdecks
