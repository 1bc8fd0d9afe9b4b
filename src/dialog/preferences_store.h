// The port to the place where preferences are kept: the user's registry on Windows, memory in
// programs that have none. The dialog's thread. Failures are silent: defaults stand in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace mixdecks {

/// How a value is stored; reading does not look at it.
enum class PreferenceType : std::uint32_t {
  kText = 1,    ///< UTF-16 units, without a terminator
  kNumber = 4,  ///< 32 bits
};

class PreferencesStore {
 public:
  virtual ~PreferencesStore() = default;

  /// Opens the place, and makes it first if it is not there. False when that fails; the other
  /// operations are called only between a successful `Open` and `Close`.
  virtual bool Open() = 0;
  virtual void Close() = 0;
  /// Reads a value whole into `buffer`. The bytes read, or nothing, and then `buffer` is as it
  /// was: there is no such value, or it does not fit.
  virtual std::optional<std::size_t> Read(const char16_t* name, std::span<std::byte> buffer) = 0;
  virtual void Write(const char16_t* name, PreferenceType type,
                     std::span<const std::byte> value) = 0;

 protected:
  PreferencesStore() = default;
  PreferencesStore(const PreferencesStore&) = default;
  PreferencesStore& operator=(const PreferencesStore&) = default;
};

/// Keeps values as long as the object lives.
class MemoryPreferences final : public PreferencesStore {
 public:
  struct Value {
    PreferenceType type;
    std::vector<std::byte> bytes;
  };

  bool Open() override;
  void Close() override {}
  std::optional<std::size_t> Read(const char16_t* name, std::span<std::byte> buffer) override;
  void Write(const char16_t* name, PreferenceType type, std::span<const std::byte> value) override;

  bool canOpen = true;  ///< false makes `Open` fail
  bool exists = false;  ///< whether `Open` has succeeded once
  std::map<std::u16string, Value> values;
};

/// The preferences of this program: the user's registry key on Windows, one `MemoryPreferences`
/// elsewhere.
PreferencesStore& SystemPreferences();

}  // namespace mixdecks
