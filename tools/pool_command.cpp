#include "tools/pool_command.h"

#include <fmt/format.h>

#include <memory>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "simulator/code_text.h"
#include "simulator/pool.h"
#include "simulator/unicode.h"
#include "tools/json_text.h"
#include "tools/path_text.h"
#include "tools/pool_failure.h"
#include "tools/printable_text.h"
#include "tools/video_mode_name.h"

namespace mixdecks {
namespace {

using simulator::PoolContents;
using simulator::Still;

constexpr const char* kPoolExamples =
    "Examples:\n"
    "  mixdecks pool\n"
    "  mixdecks pool --pool studio-1 --json";

struct PoolOptions {
  std::string pool = "mixdecks-pool";
  bool json = false;
};

PoolContents Load(const std::string& pool) {
  try {
    return simulator::LoadPool(PathOf(pool));
  } catch (const simulator::PoolError& error) {
    throw PoolFailure(PathOf(pool), error.what());
  }
}

/// The media players, from 1, that show `slot`.
std::vector<std::size_t> PlayersOf(const PoolContents& contents, std::size_t slot) {
  std::vector<std::size_t> players;
  for (std::size_t player = 0; player < contents.players.size(); ++player) {
    if (contents.players[player] == slot) players.push_back(player + 1);
  }
  return players;
}

std::string TextOf(const std::string& pool, const PoolContents& contents) {
  std::string rows;
  std::size_t used = 0;
  for (std::size_t slot = 0; slot < contents.slots.size(); ++slot) {
    const auto& still = contents.slots[slot];
    if (!still) continue;
    ++used;
    rows += fmt::format("{:>4}  {:<9}  {:<13}  {:<7}  {}\n", slot + 1,
                        fmt::format("{}x{}", still->width, still->height),
                        simulator::AlphaText(still->alpha),
                        fmt::format("{}", fmt::join(PlayersOf(contents, slot), ",")),
                        PrintableText(simulator::ToUtf8(still->name)));
  }
  std::string text = fmt::format("{}: video mode {}, {} slots ({} used), {} media players\n",
                                 PrintableText(pool), VideoModeText(contents.mode),
                                 contents.slots.size(), used, contents.players.size());
  if (used > 0) text += "slot  size       alpha          players  name\n" + rows;
  return text;
}

nlohmann::ordered_json JsonOf(const PoolContents& contents, std::uint32_t slot,
                              const Still& still) {
  return {{"slot", slot + 1},
          {"name", simulator::ToUtf8(still.name)},
          {"mode", simulator::CodeText(still.mode)},
          {"modeName", NameOfVideoMode(still.mode)},
          {"width", still.width},
          {"height", still.height},
          {"alpha", simulator::AlphaText(still.alpha)},
          {"players", PlayersOf(contents, slot)},
          {"frame", simulator::FrameFileName(slot)},
          {"picture", simulator::PictureFileName(slot)}};
}

nlohmann::ordered_json JsonOf(const std::string& pool, const PoolContents& contents) {
  nlohmann::ordered_json stills = nlohmann::ordered_json::array();
  for (std::uint32_t slot = 0; slot < contents.slots.size(); ++slot) {
    const auto& still = contents.slots[slot];
    if (still) stills.push_back(JsonOf(contents, slot, *still));
  }
  return {{"pool", pool},
          {"mode", simulator::CodeText(contents.mode)},
          {"modeName", NameOfVideoMode(contents.mode)},
          {"slots", contents.slots.size()},
          {"players", contents.players.size()},
          {"stills", std::move(stills)}};
}

void Run(const PoolOptions& options, const Console& console) {
  CheckPoolName(options.pool);
  const PoolContents contents = Load(options.pool);
  if (options.json) {
    console.out << JsonText(JsonOf(options.pool, contents));
  } else {
    console.out << TextOf(options.pool, contents);
  }
}

}  // namespace

void AddPoolCommand(CLI::App& app, const Console& console) {
  const auto options = std::make_shared<PoolOptions>();
  CLI::App& command = *app.add_subcommand("pool", "List the stills of a media pool");
  command.footer(kPoolExamples);
  command
      .add_option("--pool", options->pool,
                  "Folder of the media pool (default: " + options->pool + ")")
      ->type_name("DIR");
  command.add_flag("--json", options->json, "Tell the contents as JSON");
  command.callback([options, &console] { Run(*options, console); });
}

}  // namespace mixdecks
