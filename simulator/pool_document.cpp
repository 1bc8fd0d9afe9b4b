#include "simulator/pool_document.h"

#include <array>

#include "simulator/code_text.h"
#include "simulator/strict_json.h"
#include "simulator/unicode.h"
#include "transfer/video_modes.h"

namespace mixdecks::simulator {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;

constexpr char kFormat[] = "mixdecks pool";
constexpr std::uint32_t kVersion = 1;
constexpr std::uint32_t kAnyNumber = 0xFFFFFFFF;

struct AlphaName {
  FrameAlpha alpha;
  std::string_view name;
};
constexpr std::array kAlphaNames = {
    AlphaName{FrameAlpha::kOpaque, "opaque"},
    AlphaName{FrameAlpha::kPremultiplied, "premultiplied"},
    AlphaName{FrameAlpha::kStraight, "straight"},
};

ordered_json WriteStill(std::uint32_t slot, const Still& still) {
  return {{"slot", slot + 1},
          {"name", ToUtf8(still.name)},
          {"mode", CodeText(still.mode)},
          {"width", still.width},
          {"height", still.height},
          {"alpha", AlphaText(still.alpha)},
          {"frame", FrameFileName(slot)},
          {"picture", PictureFileName(slot)},
          {"crc32", still.checksum}};
}

std::uint32_t ReadMode(ObjectReader& reader) {
  const std::optional<std::uint32_t> mode = VideoModeFromText(reader.String("mode"));
  if (!mode) reader.Refuse("mode", "must be one of " + VideoModeList());
  return *mode;
}

FrameAlpha ReadAlpha(ObjectReader& reader) {
  const std::string name = reader.String("alpha");
  for (const AlphaName& row : kAlphaNames) {
    if (row.name == name) return row.alpha;
  }
  reader.Refuse("alpha", "must be one of opaque, premultiplied, straight");
}

/// A member that repeats what the others say already.
template <class Value>
void Expect(ObjectReader& reader, const std::string& key, const Value& value) {
  const json* member = reader.Find(key);
  if (member == nullptr || *member != value) reader.Refuse(key, "must be " + json(value).dump());
}

void ReadStill(const json& object, const std::string& place, PoolContents& contents) {
  ObjectReader reader(object, place);
  const auto slotCount = static_cast<std::uint32_t>(contents.slots.size());
  const std::uint32_t slot = reader.Number("slot", 1, slotCount) - 1;
  if (contents.slots[slot]) reader.Refuse("slot", "there is another still in this slot");
  Still still;
  still.name = ToUtf16(reader.String("name"));
  still.mode = ReadMode(reader);
  const VideoModeInfo& mode = *FindVideoMode(still.mode);
  Expect(reader, "width", mode.width);
  Expect(reader, "height", mode.height);
  still.width = mode.width;
  still.height = mode.height;
  still.alpha = ReadAlpha(reader);
  Expect(reader, "frame", FrameFileName(slot));
  Expect(reader, "picture", PictureFileName(slot));
  still.checksum = reader.Number("crc32", 0, kAnyNumber);
  reader.Finish();
  contents.slots[slot] = std::move(still);
}

void ReadPlayers(ObjectReader& reader, PoolContents& contents) {
  const json& players = reader.Array("players");
  if (players.size() > kMostPlayers) {
    reader.Refuse("players", "at most " + std::to_string(kMostPlayers) + " are possible");
  }
  for (const json& shown : players) {
    std::optional<std::uint32_t> slot;
    if (!shown.is_null()) {
      const auto slotCount = static_cast<std::uint32_t>(contents.slots.size());
      slot = NumberWithin(shown, 1, slotCount, reader.PlaceOf("players")) - 1;
    }
    contents.players.push_back(slot);
  }
}

PoolContents ReadContents(std::string_view text, std::string_view source) {
  const json document = ParseJson(text, source);
  ObjectReader reader(document, std::string(source));
  if (!document.contains("format") || document["format"] != kFormat) {
    throw JsonError(std::string(source) + ": is not the description of a pool");
  }
  reader.String("format");
  if (reader.Number("version", 1, kAnyNumber) != kVersion) {
    reader.Refuse("version", "is of a later release; this one reads version 1");
  }
  PoolContents contents;
  contents.mode = ReadMode(reader);
  contents.slots.resize(reader.Number("slots", 0, kMostSlots));
  ReadPlayers(reader, contents);
  const json& stills = reader.Array("stills");
  for (std::size_t i = 0; i < stills.size(); ++i) {
    ReadStill(stills[i], reader.PlaceOf("stills[" + std::to_string(i + 1) + "]"), contents);
  }
  reader.Finish();
  return contents;
}

}  // namespace

std::string_view AlphaText(FrameAlpha alpha) noexcept {
  return kAlphaNames[static_cast<std::size_t>(alpha)].name;
}

std::string WritePoolDocument(const PoolContents& contents) {
  ordered_json players = ordered_json::array();
  for (const auto& shown : contents.players) {
    players.push_back(shown ? ordered_json(*shown + 1) : ordered_json());
  }
  ordered_json stills = ordered_json::array();
  for (std::uint32_t slot = 0; slot < contents.slots.size(); ++slot) {
    if (contents.slots[slot]) stills.push_back(WriteStill(slot, *contents.slots[slot]));
  }
  const ordered_json document = {{"format", kFormat},
                                 {"version", kVersion},
                                 {"mode", CodeText(contents.mode)},
                                 {"slots", contents.slots.size()},
                                 {"players", std::move(players)},
                                 {"stills", std::move(stills)}};
  return document.dump(2) + "\n";
}

PoolContents ReadPoolDocument(std::string_view text, std::string_view source) {
  try {
    return ReadContents(text, source);
  } catch (const JsonError& error) {
    throw PoolError(error.what());
  }
}

}  // namespace mixdecks::simulator
