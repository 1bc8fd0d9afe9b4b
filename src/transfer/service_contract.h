// The switcher service's interfaces: slots in order, binary-compatible with COM on 64-bit Windows.
//
// The service is the switcher maker's; this is the whole of what is called or implemented here.
// A slot that is never called stands in its place as `Unused…`. Operations return a result,
// negative for failure, unless stated. Text is BSTR (platform/text.h).
#pragma once

#include <array>
#include <cstdint>
#include <cstring>

#include "platform/four_character_code.h"
#include "platform/result.h"

namespace mixdecks {

/// An interface or class identifier in the sixteen bytes that are passed in memory.
struct ServiceId {
  std::array<std::uint8_t, 16> bytes;
  friend bool operator==(const ServiceId&, const ServiceId&) = default;
};

inline constexpr ServiceId kUnknownId{{0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xC0, 0x00,
                                       0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr ServiceId kSwitcherDiscoveryClass{{0x38, 0x50, 0x89, 0x49, 0x6D, 0xFB, 0xF7, 0x4A,
                                                    0xA6, 0x37, 0x7A, 0x92, 0xF0, 0x9F, 0x86,
                                                    0x55}};
inline constexpr ServiceId kSwitcherDiscoveryId{{0x99, 0xEF, 0x3F, 0xEB, 0x61, 0x85, 0x36, 0x48,
                                                 0x97, 0xB7, 0xE5, 0xC7, 0x68, 0x88, 0x0D, 0x2A}};
inline constexpr ServiceId kSwitcherMediaPoolId{{0x6E, 0x05, 0xA3, 0x59, 0x62, 0x7B, 0xF0, 0x46,
                                                 0x8B, 0x78, 0x1F, 0xB1, 0x49, 0xF7, 0x37, 0x2C}};
inline constexpr ServiceId kSwitcherStillsLockId{{0xD2, 0x68, 0xFE, 0x21, 0x5A, 0x29, 0xEA, 0x41,
                                                  0xA2, 0x4C, 0x9C, 0xC4, 0xCD, 0x16, 0x1F, 0x35}};
inline constexpr ServiceId kSwitcherMediaPlayerIteratorId{{0x6F, 0x81, 0x10, 0xE9, 0xCB, 0x59, 0x24,
                                                           0x42, 0xA7, 0x7F, 0x06, 0xDE, 0x3D, 0x23,
                                                           0x22, 0x75}};

/// Codes of events, sources, reasons and formats.
inline constexpr std::uint32_t kEventDisconnected = FourCharacterCode("sedi");
inline constexpr std::uint32_t kEventTransferCompleted = FourCharacterCode("cmpt");
inline constexpr std::uint32_t kEventTransferCancelled = FourCharacterCode("cncl");
inline constexpr std::uint32_t kEventTransferFailed = FourCharacterCode("fail");
inline constexpr std::uint32_t kEventNameChanged = FourCharacterCode("name");
inline constexpr std::uint32_t kEventValidityChanged = FourCharacterCode("vlid");
inline constexpr std::uint32_t kSourceStill = FourCharacterCode("smps");
inline constexpr std::uint32_t kReasonFirmware = FourCharacterCode("cfif");
inline constexpr std::uint32_t kFrameFormatYuva = FourCharacterCode("yuva");

/// The root of every interface; slots 0, 1, 2. No destructor: objects end by `Release`.
class ServiceObject {
 public:
  virtual HResult QueryInterface(const ServiceId& id, void** object) = 0;
  virtual std::uint32_t AddRef() = 0;
  virtual std::uint32_t Release() = 0;

 protected:
  ~ServiceObject() = default;
};

class ITMKSwitcherFrame : public ServiceObject {
 public:
  virtual HResult Unused3() = 0;
  virtual std::int32_t GetHeight() = 0;    ///< slot 4; rows, not a result
  virtual std::int32_t GetRowBytes() = 0;  ///< slot 5; bytes between rows, not a result
  virtual HResult Unused6() = 0;
  virtual HResult GetBytes(void** bytes) = 0;  ///< slot 7; valid until the frame is released

 protected:
  ~ITMKSwitcherFrame() = default;
};

class ITMKSwitcherLockCallback : public ServiceObject {
 public:
  virtual HResult Locked() = 0;  ///< slot 3

 protected:
  ~ITMKSwitcherLockCallback() = default;
};

class ITMKSwitcherMediaPoolCallback : public ServiceObject {
 public:
  virtual HResult Ignored3() = 0;  ///< slot 3; whatever its arguments
  virtual HResult Ignored4() = 0;  ///< slot 4; whatever its arguments

 protected:
  ~ITMKSwitcherMediaPoolCallback() = default;
};

class ITMKSwitcherCallback : public ServiceObject {
 public:
  virtual HResult Notify(std::uint32_t event) = 0;  ///< slot 3; further arguments ignored

 protected:
  ~ITMKSwitcherCallback() = default;
};

class ITMKSwitcherStillsCallback : public ServiceObject {
 public:
  virtual HResult Notify(std::uint32_t event, void* ignored, std::uint32_t slot) = 0;  ///< slot 3

 protected:
  ~ITMKSwitcherStillsCallback() = default;
};

class ITMKSwitcherStills : public ServiceObject {
 public:
  virtual HResult GetCount(std::uint32_t* count) = 0;                    ///< slot 3
  virtual HResult IsValid(std::uint32_t slot, std::int32_t* valid) = 0;  ///< slot 4
  virtual HResult GetName(std::uint32_t slot, char16_t** name) = 0;      ///< slot 5; caller frees
  virtual HResult Unused6() = 0;
  virtual HResult Unused7() = 0;
  virtual HResult Unused8() = 0;
  virtual HResult Unused9() = 0;
  virtual HResult Unlock(ITMKSwitcherLockCallback* callback) = 0;  ///< slot 10
  virtual HResult SetPicture(std::uint32_t slot, char16_t* name,
                             ITMKSwitcherFrame* frame) = 0;  ///< slot 11; starts the upload
  virtual HResult Unused12() = 0;
  virtual HResult Unused13() = 0;
  virtual HResult Unused14() = 0;
  virtual HResult AddCallback(ITMKSwitcherStillsCallback* callback) = 0;     ///< slot 15
  virtual HResult RemoveCallback(ITMKSwitcherStillsCallback* callback) = 0;  ///< slot 16

 protected:
  ~ITMKSwitcherStills() = default;
};

/// The locking interface of a stills object.
class ITMKSwitcherStillsLock : public ServiceObject {
 public:
  virtual HResult Unused3() = 0;
  virtual HResult Unused4() = 0;
  virtual HResult Unused5() = 0;
  virtual HResult Unused6() = 0;
  virtual HResult Unused7() = 0;
  virtual HResult Unused8() = 0;
  virtual HResult Unused9() = 0;
  virtual HResult Unused10() = 0;
  virtual HResult Unused11() = 0;
  virtual HResult Unused12() = 0;
  virtual HResult Unused13() = 0;
  virtual HResult Unused14() = 0;
  virtual HResult Unused15() = 0;
  virtual HResult Unused16() = 0;
  /// Slot 17. Returns at once; `Locked` is called on a thread of the service when granted.
  virtual HResult Lock(ITMKSwitcherLockCallback* callback, std::uint32_t slot) = 0;

 protected:
  ~ITMKSwitcherStillsLock() = default;
};

class ITMKSwitcherMediaPool : public ServiceObject {
 public:
  virtual HResult GetStills(ITMKSwitcherStills** stills) = 0;  ///< slot 3
  virtual HResult Unused4() = 0;
  virtual HResult Unused5() = 0;
  virtual HResult CreateFrame(std::uint32_t format, std::uint32_t width, std::uint32_t height,
                              ITMKSwitcherFrame** frame) = 0;  ///< slot 6
  virtual HResult Unused7() = 0;
  virtual HResult Unused8() = 0;
  virtual HResult Unused9() = 0;
  virtual HResult Unused10() = 0;
  virtual HResult Unused11() = 0;
  virtual HResult AddCallback(ITMKSwitcherMediaPoolCallback* callback) = 0;     ///< slot 12
  virtual HResult RemoveCallback(ITMKSwitcherMediaPoolCallback* callback) = 0;  ///< slot 13

 protected:
  ~ITMKSwitcherMediaPool() = default;
};

class ITMKSwitcherMediaPlayer : public ServiceObject {
 public:
  virtual HResult Unused3() = 0;
  virtual HResult SetSource(std::uint32_t type, std::uint32_t index) = 0;  ///< slot 4

 protected:
  ~ITMKSwitcherMediaPlayer() = default;
};

class ITMKSwitcherMediaPlayerIterator : public ServiceObject {
 public:
  virtual HResult Next(ITMKSwitcherMediaPlayer** player) = 0;  ///< slot 3; 0 while it delivers

 protected:
  ~ITMKSwitcherMediaPlayerIterator() = default;
};

class ITMKSwitcher : public ServiceObject {
 public:
  virtual HResult Unused3() = 0;
  virtual HResult GetVideoMode(std::uint32_t* mode) = 0;  ///< slot 4
  virtual HResult Unused5() = 0;
  virtual HResult Unused6() = 0;
  virtual HResult Unused7() = 0;
  virtual HResult Unused8() = 0;
  virtual HResult Unused9() = 0;
  virtual HResult Unused10() = 0;
  virtual HResult Unused11() = 0;
  virtual HResult Unused12() = 0;
  virtual HResult Unused13() = 0;
  virtual HResult Unused14() = 0;
  virtual HResult Unused15() = 0;
  virtual HResult CreateIterator(const ServiceId& id, void** iterator) = 0;  ///< slot 16
  virtual HResult AddCallback(ITMKSwitcherCallback* callback) = 0;           ///< slot 17
  virtual HResult RemoveCallback(ITMKSwitcherCallback* callback) = 0;        ///< slot 18

 protected:
  ~ITMKSwitcher() = default;
};

class ITMKSwitcherDiscovery : public ServiceObject {
 public:
  /// Slot 3. Blocks until the switcher answered or gave up; a failure's reason stays 0 when the
  /// service gives none.
  virtual HResult ConnectTo(char16_t* address, ITMKSwitcher** switcher, std::uint32_t* reason) = 0;

 protected:
  ~ITMKSwitcherDiscovery() = default;
};

}  // namespace mixdecks
