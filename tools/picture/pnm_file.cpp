#include "tools/picture/pnm_file.h"

#include "tools/picture/byte_reader.h"
#include "tools/picture/format_inspectors.h"
#include "tools/picture/samples.h"

namespace mixdecks {
namespace {

bool IsSpace(std::uint8_t byte) {
  return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

/// The next number of the header, past white space and comments; takes the byte behind it.
std::uint32_t NextNumber(ByteReader& reader) {
  std::uint8_t byte = reader.Byte();
  while (IsSpace(byte) || byte == '#') {
    if (byte == '#') {
      while (byte != '\n')
        byte = reader.Byte();
    }
    byte = reader.Byte();
  }
  std::uint32_t number = 0;
  for (; byte >= '0' && byte <= '9'; byte = reader.Byte()) {
    if (number > 99'999'999) throw DamagedPicture("a number in its header is out of range");
    number = number * 10 + (byte - std::uint32_t{'0'});
  }
  if (!IsSpace(byte)) throw DamagedPicture("its header is not made of numbers");
  return number;
}

/// Every `step`th sample, from the `first` on.
template <typename Sample>
std::vector<Sample> Lane(std::span<const Sample> samples, std::size_t first, std::size_t step) {
  std::vector<Sample> lane;
  lane.reserve(samples.size() / step);
  for (std::size_t i = first; i < samples.size(); i += step)
    lane.push_back(samples[i]);
  return lane;
}

}  // namespace

PnmFile ReadPnm(std::span<const std::uint8_t> file) {
  ByteReader reader(file);
  reader.Skip(1);
  const bool grey = reader.Byte() == '5';
  PnmFile pnm;
  PictureHeader& header = pnm.header;
  header.mode = grey ? ColourMode::kGrey : ColourMode::kRgb;
  header.width = NextNumber(reader);
  header.height = NextNumber(reader);
  const std::uint32_t largest = NextNumber(reader);
  if (largest != 255 && largest != 65535) {
    throw PictureError("the PNM's largest sample value is neither 255 nor 65535",
                       "save it with 8 or 16 bits per sample");
  }
  header.depth = largest == 65535 ? 16 : 8;
  const std::uint64_t pixelBytes = (grey ? 1u : 3u) * static_cast<std::uint64_t>(header.depth / 8);
  if (header.width <= kLargestSide && header.height <= kLargestSide) {
    pnm.samples = reader.Take(pixelBytes * header.width * header.height);
  }
  return pnm;
}

PictureHeader InspectPnm(std::span<const std::uint8_t> file) {
  return ReadPnm(file).header;
}

HostDocument DecodePnm(std::span<const std::uint8_t> file) {
  const PnmFile pnm = ReadPnm(file);
  HostDocument document;
  document.width = static_cast<std::int32_t>(pnm.header.width);
  document.height = static_cast<std::int32_t>(pnm.header.height);
  const std::size_t lanes = pnm.header.mode == ColourMode::kGrey ? 1 : 3;
  const std::vector<std::uint16_t> wide =
      pnm.header.depth == 16 ? BigEndianSamples(pnm.samples) : std::vector<std::uint16_t>();
  for (std::size_t lane = 0; lane < lanes; ++lane) {
    document.composite.push_back(
        pnm.header.depth == 16
            ? ChannelOfSamples16(Lane(std::span(wide), lane, lanes), document.width,
                                 document.height)
            : ChannelOfSamples8(Lane(pnm.samples, lane, lanes), document.width, document.height));
  }
  return document;
}

}  // namespace mixdecks
