#include "tools/export/document_opener.h"

#include <fmt/format.h>

#include <utility>

#include "simulator/unicode.h"
#include "tools/input_file.h"
#include "tools/path_text.h"
#include "tools/picture/picture_error.h"
#include "tools/user_error.h"

namespace mixdecks {
namespace {

/// Runs `step` on a file and names the file in what it reports.
template <typename Step>
auto WithFile(const std::string& path, Step step) {
  try {
    return step();
  } catch (const PictureError& error) {
    throw Failure(path, error.what(), error.Remedy());
  }
}

Picture ReadPicture(const std::string& path, std::vector<std::string>& warnings) {
  const std::vector<std::uint8_t> file = ReadInputFile(path);
  Picture picture = WithFile(path, [&] { return DecodePicture(file); });
  if (picture.orientation != 1) {
    warnings.push_back(
        fmt::format("{} asks to be turned or mirrored (EXIF orientation {}); mixdecks exports it "
                    "as it lies",
                    path, picture.orientation));
  }
  return picture;
}

void WarnOfDeepColours(const ExportOptions& options, const HostDocument& document,
                       std::vector<std::string>& warnings) {
  if (document.depth != 16 || document.imageMode != kImageModeRgb) return;
  warnings.push_back(fmt::format(
      "{} has 16 bits per channel: the plug-in turns such a document {}; give --depth 8 to convert "
      "it first",
      options.picture, document.transparency || !document.extraAlpha.empty() ? "black" : "blue"));
}

}  // namespace

Picture OpenDocument(const ExportOptions& options, std::vector<std::string>& warnings) {
  Picture picture = ReadPicture(options.picture, warnings);
  HostDocument& document = picture.document;
  document.fileName = options.picture == kStandardInput
                          ? ProposedName(options.picture)
                          : simulator::PathText(PathOf(options.picture).filename());
  if (options.toRgb) WithFile(options.picture, [&] { ConvertToRgb(document); });
  if (options.depth) ConvertDepth(document, static_cast<std::int16_t>(*options.depth));
  for (const std::string& path : options.alphaChannels) {
    HostDocument alpha = ReadPicture(path, warnings).document;
    WithFile(path, [&] { AddAlphaChannel(document, std::move(alpha)); });
  }
  WarnOfDeepColours(options, document, warnings);
  return picture;
}

}  // namespace mixdecks
