#include "tools/export/export_report.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "simulator/code_text.h"
#include "simulator/unicode.h"
#include "tools/printable_text.h"
#include "tools/video_mode_name.h"

namespace mixdecks {
namespace {

std::string_view ColourSpaceName(std::uint32_t colourSpace) {
  return colourSpace == 0 ? "Rec. 601" : "Rec. 709";
}

std::string AlphaText(const ExportReport& report) {
  const std::string_view source = report.picture.alphaSource;
  if (source == "none") return "none in the picture, the still is opaque";
  return fmt::format(
      "from the {}, {}", source,
      report.premultiplied ? "colours multiplied by it" : "colours left as they are");
}

std::string PlayerText(const ExportReport& report) {
  if (!report.player) return "none changed";
  return fmt::format("{} {}", *report.player,
                     report.shown ? "shows the still" : "did not take the still");
}

std::string FitText(const ExportReport& report) {
  if (!report.fit) return "the picture has the frame's size, not scaled";
  const FitRect& fit = *report.fit;
  return fmt::format("scaled to {:.0f} x {:.0f} at {:.0f}, {:.0f}", fit.width, fit.height, fit.left,
                     fit.top);
}

std::string TimesText(const ExportReport& report) {
  std::string text;
  for (const auto& [stage, time] : report.times) {
    text += fmt::format("{}{} {:.1f} ms", text.empty() ? "" : ", ", stage, time.count());
  }
  return text;
}

std::string Line(std::string_view label, std::string_view text) {
  return fmt::format("  {:<13} {}\n", label, text);
}

}  // namespace

std::string TextOf(const ExportReport& report) {
  const PictureFacts& picture = report.picture;
  const simulator::Still& still = report.still;
  std::string text = fmt::format("Exported \"{}\" to slot {} of {}\n", PrintableText(report.name),
                                 report.slot, PrintableText(simulator::PathText(report.pool)));
  if (report.replaced)
    text += Line("replaced", fmt::format("\"{}\"", PrintableText(*report.replaced)));
  text +=
      Line("picture", fmt::format("{}, {}, {} x {}, {} bits per channel",
                                  PrintableText(picture.path), PictureFormatName(picture.format),
                                  picture.width, picture.height, picture.depth));
  text += Line("video mode", fmt::format("{}, {} x {}, {}", VideoModeText(still.mode), still.width,
                                         still.height, ColourSpaceName(report.colourSpace)));
  text += Line("fit", FitText(report));
  text += Line("alpha", AlphaText(report));
  text += Line("media player", PlayerText(report));
  text += Line("times", TimesText(report));
  std::string_view label = "files";
  for (const auto& file : report.files) {
    text += Line(label, PrintableText(simulator::PathText(file)));
    label = "";
  }
  return text;
}

nlohmann::ordered_json JsonOf(const ExportReport& report) {
  const PictureFacts& picture = report.picture;
  nlohmann::ordered_json json;
  json["picture"] = {{"file", picture.path},   {"format", PictureFormatName(picture.format)},
                     {"width", picture.width}, {"height", picture.height},
                     {"depth", picture.depth}, {"alpha", picture.alphaSource}};
  json["name"] = report.name;
  json["slot"] = report.slot;
  if (report.replaced) json["replaced"] = *report.replaced;
  json["player"] = nullptr;
  if (report.player) json["player"] = *report.player;
  json["shown"] = report.shown;
  json["mode"] = simulator::CodeText(report.still.mode);
  json["modeName"] = NameOfVideoMode(report.still.mode);
  json["width"] = report.still.width;
  json["height"] = report.still.height;
  json["colourSpace"] = ColourSpaceName(report.colourSpace);
  json["alpha"] = simulator::AlphaText(report.still.alpha);
  json["premultiply"] = report.premultiplied;
  json["fit"] = nullptr;
  if (report.fit) {
    json["fit"] = {{"left", report.fit->left},
                   {"top", report.fit->top},
                   {"width", report.fit->width},
                   {"height", report.fit->height}};
  }
  json["milliseconds"] = nlohmann::ordered_json::object();
  for (const auto& [stage, time] : report.times)
    json["milliseconds"][std::string(stage)] = time.count();
  json["pool"] = simulator::PathText(report.pool);
  json["files"] = nlohmann::ordered_json::array();
  for (const auto& file : report.files)
    json["files"].push_back(simulator::PathText(file));
  json["warnings"] = report.warnings;
  return json;
}

}  // namespace mixdecks
