#include "tools/export/still_description.h"

#include <fmt/format.h>

#include <optional>
#include <string_view>

#include "simulator/unicode.h"
#include "tools/path_text.h"
#include "tools/user_error.h"
#include "transfer/fit_rect.h"
#include "transfer/video_modes.h"

namespace mixdecks {
namespace {

std::string_view AlphaSourceOf(const HostDocument& document) {
  if (!document.extraAlpha.empty()) return "extra alpha channel";
  return document.transparency ? "transparency" : "none";
}

std::optional<FitRect> FitOf(const PictureFacts& picture, const simulator::Still& still) {
  const auto width = static_cast<std::int32_t>(still.width);
  const auto height = static_cast<std::int32_t>(still.height);
  if (picture.width == width && picture.height == height) return std::nullopt;
  FitRect fit{};
  ComputeFitRect(picture.width, picture.height, width, height, fit);
  return fit;
}

}  // namespace

ExportReport BeginReport(const ExportOptions& options, const Picture& picture) {
  const HostDocument& document = picture.document;
  ExportReport report;
  report.picture = {options.picture, picture.format, document.width,
                    document.height, document.depth, AlphaSourceOf(document)};
  report.pool = PathOf(options.pool);
  return report;
}

void DescribeStill(ExportReport& report, const ExportOrders& orders,
                   const simulator::PoolContents& contents) {
  const auto& still = contents.slots.at(orders.slot);
  if (!still) throw Failure("export", "the still left the pool again", "look at the scenario");
  report.still = *still;
  report.name = simulator::ToUtf8(orders.name);
  report.slot = orders.slot + 1;
  report.premultiplied = orders.premultiply;
  if (orders.mediaPlayer >= 0) {
    report.player = orders.mediaPlayer + 1;
    report.shown = contents.players.at(static_cast<std::size_t>(orders.mediaPlayer)) == orders.slot;
  }
  report.colourSpace = FindVideoMode(still->mode)->colourSpace;
  report.fit = FitOf(report.picture, *still);
  for (const std::string& file :
       {simulator::FrameFileName(orders.slot), simulator::PictureFileName(orders.slot),
        std::string("index.html")}) {
    report.files.push_back(report.pool / file);
  }
}

void CheckRules(const std::vector<std::string>& violations) {
  if (violations.empty()) return;
  throw Failure("internal fault", fmt::format("{}", fmt::join(violations, "; ")),
                "please report this message");
}

}  // namespace mixdecks
