#include "simulator/scenario.h"

#include <array>

#include "simulator/code_text.h"
#include "simulator/file_reading.h"
#include "simulator/pool.h"
#include "simulator/strict_json.h"
#include "simulator/unicode.h"

namespace mixdecks::simulator {
namespace {

using nlohmann::json;

constexpr std::uint64_t kMostFileBytes = 1u << 20;
constexpr std::uint32_t kMostMilliseconds = 600'000;
constexpr std::uint32_t kMostRowPadding = 4096;
constexpr std::uint32_t kMostCalls = 1'000'000;

template <class Value>
struct Named {
  std::string_view name;
  Value value;
};

constexpr std::array kActions = {
    Named<Action>{"fail", Action::kFail},
    Named<Action>{"cancel", Action::kCancel},
    Named<Action>{"disconnect", Action::kDisconnect},
    Named<Action>{"rename", Action::kRename},
    Named<Action>{"clear", Action::kClear},
    Named<Action>{"mode", Action::kChangeMode},
    Named<Action>{"wait", Action::kWait},
};

constexpr std::array kPresences = {
    Named<ServicePresence>{"present", ServicePresence::kPresent},
    Named<ServicePresence>{"absent", ServicePresence::kAbsent},
    Named<ServicePresence>{"null", ServicePresence::kNull},
};

/// The value of a name in a table; refuses others by listing the table.
template <class Table>
auto ReadNamed(ObjectReader& reader, const std::string& key, const Table& table) {
  const std::string text = reader.String(key);
  std::string names;
  for (const auto& row : table) {
    if (row.name == text) return row.value;
    names += (names.empty() ? "" : ", ") + std::string(row.name);
  }
  reader.Refuse(key, "must be one of " + names);
}

Point ReadPoint(ObjectReader& reader) {
  const std::string text = reader.String("at");
  if (const std::optional<Point> point = FindPoint(text)) return *point;
  std::string names;
  for (const PointInfo& info : Points()) {
    names += (names.empty() ? "" : ", ") + std::string(info.name);
  }
  reader.Refuse("at", "must be one of " + names);
}

std::uint32_t ReadMode(ObjectReader& reader) {
  const std::optional<std::uint32_t> mode = VideoModeFromText(reader.String("mode"));
  if (!mode) reader.Refuse("mode", "must be one of " + VideoModeList());
  return *mode;
}

std::uint32_t ReadCode(ObjectReader& reader, const std::string& key) {
  const std::optional<std::uint32_t> code = CodeFromText(reader.String(key));
  if (!code) reader.Refuse(key, "must be a code of four ASCII characters");
  return *code;
}

std::chrono::milliseconds ReadTime(ObjectReader& reader, const std::string& key) {
  return std::chrono::milliseconds(reader.Number(key, 0, kMostMilliseconds));
}

/// A number that counts from 1 in the file and from 0 here.
std::uint32_t ReadIndex(ObjectReader& reader, const std::string& key, std::uint32_t most) {
  return reader.Number(key, 1, most) - 1;
}

/// Refuses actions that mean nothing at the step's point.
void CheckAction(const ObjectReader& reader, const ScriptStep& step) {
  const PointInfo& point = InfoOf(step.at);
  const bool upload = point.kind == PointKind::kUpload;
  if (step.action == Action::kFail && point.kind != PointKind::kCall && !upload) {
    reader.Refuse("do", std::string(point.name) + " cannot fail");
  }
  if (step.action == Action::kCancel && !upload) {
    reader.Refuse("do",
                  "only an upload can be cancelled, at UploadBegun, UploadHalfway or "
                  "UploadReceived");
  }
}

void ReadActionMembers(ObjectReader& reader, std::uint32_t slots, ScriptStep& step) {
  switch (step.action) {
    case Action::kFail:
      if (step.at == Point::kConnectTo || step.at == Point::kConnected) {
        if (reader.Has("reason")) step.reason = ReadCode(reader, "reason");
      }
      break;
    case Action::kRename:
      step.target = ReadIndex(reader, "target", slots);
      step.name = ToUtf16(reader.String("name"));
      break;
    case Action::kClear:
      step.target = ReadIndex(reader, "target", slots);
      break;
    case Action::kChangeMode:
      step.mode = ReadMode(reader);
      break;
    case Action::kWait:
      step.wait = ReadTime(reader, "ms");
      break;
    case Action::kCancel:
    case Action::kDisconnect:
      break;
  }
}

std::uint32_t ReadTimes(ObjectReader& reader) {
  const json* times = reader.Find("times");
  if (times == nullptr) return 1;
  if (*times == "always") return ScriptStep::kAlways;
  if (times->is_string()) reader.Refuse("times", "must be a whole number or \"always\"");
  return reader.Number("times", 1, kMostCalls);
}

ScriptStep ReadStep(const json& object, const std::string& place, std::uint32_t slots) {
  ObjectReader reader(object, place);
  ScriptStep step;
  step.at = ReadPoint(reader);
  step.action = ReadNamed(reader, "do", kActions);
  CheckAction(reader, step);
  const PointNumber number = InfoOf(step.at).number;
  if (number == PointNumber::kSlot && reader.Has("slot")) {
    step.number = ReadIndex(reader, "slot", slots);
  }
  if (number == PointNumber::kPlayer && reader.Has("player")) {
    step.number = ReadIndex(reader, "player", kMostPlayers + 1);
  }
  const bool tellsEvent = step.at == Point::kNotifyStills || step.at == Point::kStillsNotified;
  if (tellsEvent && reader.Has("event")) step.event = ReadCode(reader, "event");
  if (reader.Has("call")) step.call = reader.Number("call", 1, kMostCalls);
  step.times = ReadTimes(reader);
  ReadActionMembers(reader, slots, step);
  reader.Finish();
  return step;
}

std::vector<std::u16string> ReadAddresses(ObjectReader& reader) {
  std::vector<std::u16string> addresses;
  for (const json& address : reader.Array("addresses")) {
    if (!address.is_string()) reader.Refuse("addresses", "each must be a text in quotes");
    addresses.push_back(ToUtf16(address.get<std::string>()));
  }
  return addresses;
}

void ReadTimesOfTheEquipment(ObjectReader& reader, Scenario& scenario) {
  const auto read = [&](const char* key, std::chrono::milliseconds& time) {
    if (reader.Has(key)) time = ReadTime(reader, key);
  };
  read("connectDelay", scenario.connectDelay);
  read("refuseDelay", scenario.refuseDelay);
  read("lockDelay", scenario.lockDelay);
  read("uploadTime", scenario.uploadTime);
}

Scenario ReadScenario(std::string_view text, std::string_view source) {
  const json document = ParseJson(text, source);
  ObjectReader reader(document, std::string(source));
  Scenario scenario;
  if (reader.Has("slots")) scenario.slots = reader.Number("slots", 0, kMostSlots);
  if (reader.Has("players")) scenario.players = reader.Number("players", 0, kMostPlayers);
  if (reader.Has("mode")) scenario.mode = ReadMode(reader);
  if (reader.Has("reportedMode")) scenario.reportedMode = ReadCode(reader, "reportedMode");
  if (reader.Has("addresses")) scenario.addresses = ReadAddresses(reader);
  if (reader.Has("rowPadding")) {
    scenario.rowPadding = reader.Number("rowPadding", 0, kMostRowPadding);
  }
  ReadTimesOfTheEquipment(reader, scenario);
  if (reader.Has("service")) scenario.service = ReadNamed(reader, "service", kPresences);
  if (reader.Has("script")) {
    const json& script = reader.Array("script");
    for (std::size_t i = 0; i < script.size(); ++i) {
      const std::string place = reader.PlaceOf("script[" + std::to_string(i + 1) + "]");
      scenario.script.push_back(ReadStep(script[i], place, scenario.slots.value_or(kMostSlots)));
    }
  }
  reader.Finish();
  return scenario;
}

}  // namespace

Scenario ParseScenario(std::string_view json, std::string_view source) {
  try {
    return ReadScenario(json, source);
  } catch (const JsonError& error) {
    throw ScenarioError(error.what());
  }
}

Scenario LoadScenario(const std::filesystem::path& file) {
  try {
    return ParseScenario(ReadTextFile(file, kMostFileBytes), PathText(file));
  } catch (const std::filesystem::filesystem_error& error) {
    throw ScenarioError(PathText(file) + ": cannot be read: " + Reason(error));
  }
}

}  // namespace mixdecks::simulator
