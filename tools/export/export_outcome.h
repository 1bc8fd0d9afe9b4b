// What became of an export, as its operator saw it.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace mixdecks {

enum class ExportEnd : std::uint8_t {
  kNotBegun,            ///< the plug-in never opened its dialog
  kExported,            ///< the switcher holds the still
  kServiceMissing,      ///< the switcher service could not be created
  kOutOfMemory,         ///< there was no memory to begin with
  kNotConnected,        ///< the switcher did not let us in; `connectReason` may tell why
  kSlotMissing,         ///< the switcher has fewer slots
  kPlayerMissing,       ///< the switcher has fewer media players
  kDocumentUnreadable,  ///< the plug-in could not read the document's channels
  kFailed,              ///< the export ended without success; `messages` may tell why
  kDisconnected,        ///< the switcher went away
  kTimedOut,            ///< the time limit passed
  kInterrupted,         ///< the user pressed Ctrl-C
};

/// Where an export stood when it ended.
enum class ExportStep : std::uint8_t { kConnecting, kListing, kExporting };

/// A message box, as the user would have seen it.
struct ShownMessage {
  std::u16string caption;
  std::u16string text;
};

struct ExportOutcome {
  ExportEnd end = ExportEnd::kNotBegun;
  ExportStep step = ExportStep::kConnecting;
  std::uint32_t connectReason = 0;     ///< four-character code, 0 for none
  std::uint32_t stillSlots = 0;        ///< of the switcher, once connected
  std::int32_t mediaPlayers = 0;       ///< of the switcher, once connected
  std::u16string replaced;             ///< name of the still that was in the slot
  bool slotWasUsed = false;            ///< whether there was one
  std::vector<ShownMessage> messages;  ///< in the order they came
  std::string serviceFault;            ///< why the registered simulator could not serve, if told
  std::string poolFailure;             ///< why the pool could not keep a change, if it could not
  bool cutOff = false;                 ///< whether the switcher had to be switched off to close

  std::chrono::steady_clock::duration connecting{};
  std::chrono::steady_clock::duration readingChannels{};
  std::chrono::steady_clock::time_point clicked;  ///< when Export was pressed
  std::chrono::steady_clock::time_point ended;    ///< when the end was told
};

}  // namespace mixdecks
