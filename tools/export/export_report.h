// What `mixdecks export` tells about an export that succeeded, for people and for programs.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "simulator/pool.h"
#include "tools/export/export_options.h"
#include "tools/picture/picture_header.h"
#include "transfer/image_scaler.h"

namespace mixdecks {

/// The picture as the plug-in got it.
struct PictureFacts {
  std::string path;
  PictureFormat format{};
  std::int32_t width = 0;
  std::int32_t height = 0;
  int depth = 8;
  /// Where alpha came from: "extra alpha channel", "transparency", or "none".
  std::string_view alphaSource;
};

using StageTime = std::pair<std::string_view, std::chrono::duration<double, std::milli>>;

struct ExportReport {
  PictureFacts picture;
  std::string name;
  std::uint32_t slot = 0;               ///< from 1
  std::optional<std::string> replaced;  ///< name of the still that was there before
  std::optional<int> player;            ///< from 1
  bool shown = false;                   ///< whether that player shows the still
  simulator::Still still;
  std::uint32_t colourSpace = 0;      ///< ColourSpaceIndex
  std::optional<FitRect> fit;         ///< nothing when the picture had the frame's size
  bool premultiplied = false;         ///< as ordered; without alpha it changes nothing
  std::vector<std::string> warnings;  ///< what was told besides
  std::vector<StageTime> times;       ///< in order
  std::filesystem::path pool;
  std::vector<std::filesystem::path> files;
};

/// Several lines, the last one ended.
std::string TextOf(const ExportReport& report);

nlohmann::ordered_json JsonOf(const ExportReport& report);

}  // namespace mixdecks
