// A scenario: what equipment the simulator plays, and a script of what goes wrong with it.
//
// A scenario is a plain value. Made in code it holds any values; read from a file it has been
// checked, and docs/simulator.md documents the file. Slots and players count from 0 here and from
// 1 in a file, as users count them.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/points.h"

namespace mixdecks::simulator {

enum class Action : std::uint8_t {
  kFail,        ///< the call fails, or the upload ends as failed
  kCancel,      ///< the upload ends as cancelled
  kDisconnect,  ///< the switcher drops all its connections
  kRename,      ///< another station renames slot `target` to `name`
  kClear,       ///< another station empties slot `target`
  kChangeMode,  ///< the switcher changes to video mode `mode`
  kWait,        ///< the thread at the point waits for `wait`
};

/// One step of the script: at some arrivals at a point, do something.
struct ScriptStep {
  Point at{};
  Action action{};
  std::optional<std::uint32_t> number = std::nullopt;  ///< only at this slot or player; else at any
  std::optional<std::uint32_t> event =
      std::nullopt;                   ///< only for this event of a `Notify`; else for any
  std::uint32_t call = 1;             ///< from which arrival on, counted from 1 over those that fit
  std::uint32_t times = 1;            ///< at how many of them; `kAlways` for all that follow
  std::uint32_t reason = 0;           ///< of a failing `ConnectTo`, a four-character code or 0
  std::uint32_t target = 0;           ///< slot of `kRename` and `kClear`
  std::u16string name = {};           ///< of `kRename`
  std::uint32_t mode = 0;             ///< of `kChangeMode`
  std::chrono::milliseconds wait{0};  ///< of `kWait`

  static constexpr std::uint32_t kAlways = 0xFFFFFFFF;
};

/// What the process finds when it asks for the service.
enum class ServicePresence : std::uint8_t {
  kPresent,
  kAbsent,  ///< the class is not registered
  kNull,    ///< creation succeeds and gives no object
};

struct Scenario {
  // Of the equipment. What is not given is as the pool has it, or the default for a new pool.
  std::optional<std::uint32_t> slots = std::nullopt;    ///< still slots; 20
  std::optional<std::uint32_t> players = std::nullopt;  ///< media players; 4
  std::optional<std::uint32_t> mode = std::nullopt;  ///< video mode, one of `VideoModes()`; `10i9`
  /// What `GetVideoMode` tells instead of the true mode; any code.
  std::optional<std::uint32_t> reportedMode = std::nullopt;
  /// Addresses that are answered; none given: every dotted address is.
  std::vector<std::u16string> addresses = {};
  std::uint32_t rowPadding = 0;  ///< bytes between the rows of a frame

  // Of time. Tests order events by hooks; these are for people to watch.
  std::chrono::milliseconds connectDelay{0};   ///< until `ConnectTo` answers
  std::chrono::milliseconds refuseDelay{100};  ///< until `ConnectTo` gives up
  std::chrono::milliseconds lockDelay{0};      ///< until a free lock is granted
  std::chrono::milliseconds uploadTime{0};     ///< of one frame

  ServicePresence service = ServicePresence::kPresent;
  std::vector<ScriptStep> script = {};
};

/// A scenario that cannot be read. The text names the file, the key and what is allowed there.
class ScenarioError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads a scenario file. Throws `ScenarioError`.
Scenario LoadScenario(const std::filesystem::path& file);

/// Reads a scenario from JSON text; `source` stands for the file's name in messages.
Scenario ParseScenario(std::string_view json, std::string_view source);

}  // namespace mixdecks::simulator
