// A switcher's pool of stills, as it is kept in a folder and as others look at it.
//
// The folder holds `pool.json`, and for slot 3 `slot-03.ay10` (the frame: rows of width * 4 bytes
// without gaps) and `slot-03.png` (what it looks like), and `index.html` to look at them all.
// Everything here only reads, takes no lock and may be called from any thread and beside a process
// that writes the pool.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace mixdecks::simulator {

inline constexpr std::uint32_t kDefaultSlots = 20;
inline constexpr std::uint32_t kDefaultPlayers = 4;
inline constexpr std::uint32_t kMostSlots = 999;
inline constexpr std::uint32_t kMostPlayers = 32;

/// How a frame's colours relate to its alpha, judged by looking at the frame.
enum class FrameAlpha : std::uint8_t {
  kOpaque,         ///< no pixel lets anything through
  kPremultiplied,  ///< colours are multiplied by alpha: nothing is brighter than its alpha
  kStraight,       ///< colours are not multiplied
};

/// `opaque`, `premultiplied` or `straight`.
std::string_view AlphaText(FrameAlpha alpha) noexcept;

/// The still in a slot.
struct Still {
  std::u16string name = {};
  std::uint32_t mode = 0;  ///< video mode it was made for, a code of `VideoModes()`
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  FrameAlpha alpha = FrameAlpha::kOpaque;
  std::uint32_t checksum = 0;  ///< CRC-32 of the frame's bytes

  std::uint64_t Bytes() const noexcept { return std::uint64_t{4} * width * height; }
  friend bool operator==(const Still&, const Still&) = default;
};

/// All of a pool but the frames. Slots and players count from 0.
struct PoolContents {
  std::uint32_t mode = 0;                                  ///< the switcher's video mode
  std::vector<std::optional<Still>> slots = {};            ///< nothing in a slot without a still
  std::vector<std::optional<std::uint32_t>> players = {};  ///< the slot each player shows
  friend bool operator==(const PoolContents&, const PoolContents&) = default;
};

/// A pool that cannot be used. The text says which folder or file, why, and what to do.
class PoolError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// File names of a slot within the folder, `slot-03.ay10` and `slot-03.png` for slot 2.
std::string FrameFileName(std::uint32_t slot);
std::string PictureFileName(std::uint32_t slot);

/// Reads a pool. Throws `PoolError` when the folder holds none or a damaged one.
PoolContents LoadPool(const std::filesystem::path& folder);

/// Reads and checks the frame of a slot that holds a still. Throws `PoolError`.
std::vector<std::uint8_t> LoadFrame(const std::filesystem::path& folder,
                                    const PoolContents& contents, std::uint32_t slot);

}  // namespace mixdecks::simulator
