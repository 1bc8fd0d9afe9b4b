#include "simulator/still_store.h"

#include <string>

#include "platform/four_character_code.h"
#include "simulator/pool_files.h"

namespace mixdecks::simulator {
namespace {

constexpr std::uint32_t kDefaultMode = FourCharacterCode("10i9");

}  // namespace

PoolContents NewPool(const PoolShape& shape) {
  PoolContents contents;
  contents.mode = shape.mode.value_or(kDefaultMode);
  contents.slots.resize(shape.slots.value_or(kDefaultSlots));
  contents.players.resize(shape.players.value_or(kDefaultPlayers));
  return contents;
}

PoolContents Reshape(PoolContents contents, const PoolShape& shape,
                     const std::filesystem::path& subject) {
  contents.mode = shape.mode.value_or(contents.mode);
  const std::size_t slots = shape.slots.value_or(contents.slots.size());
  for (std::size_t slot = slots; slot < contents.slots.size(); ++slot) {
    if (!contents.slots[slot]) continue;
    RefusePool(subject, "the pool holds a still in slot " + std::to_string(slot + 1) +
                            ", but the switcher is to have only " + std::to_string(slots) +
                            "; give it more slots, or use another pool");
  }
  contents.slots.resize(slots);
  contents.players.resize(shape.players.value_or(contents.players.size()));
  for (auto& shown : contents.players) {
    if (shown && *shown >= slots) shown.reset();
  }
  return contents;
}

}  // namespace mixdecks::simulator
