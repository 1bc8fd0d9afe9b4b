// Reading JSON strictly: every key is known, every value in range, and every message says where.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace mixdecks::simulator {

/// What is wrong with a text, beginning with its source and the place in it.
class JsonError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Parses a text whose keys are unique in each object. `source` names it in messages. Throws
/// `JsonError`.
nlohmann::json ParseJson(std::string_view text, std::string_view source);

/// Reads the members of one object. Asking for a key makes it a known one; `Finish` refuses those
/// that nobody asked for. Values of the wrong kind or out of range throw `JsonError`.
class ObjectReader {
 public:
  /// `place` is what messages begin with: the source, and the path to the object. The object must
  /// outlive the reader.
  ObjectReader(const nlohmann::json& object, std::string place);

  /// The member's value, or null when there is none.
  const nlohmann::json* Find(const std::string& key);
  /// Whether there is such a member.
  bool Has(const std::string& key) { return Find(key) != nullptr; }

  std::uint32_t Number(const std::string& key, std::uint32_t least, std::uint32_t most);
  std::string String(const std::string& key);
  const nlohmann::json& Array(const std::string& key);

  void Finish() const;

  /// The place of a member, for readers and messages below it.
  std::string PlaceOf(const std::string& key) const;
  [[noreturn]] void Refuse(const std::string& key, const std::string& why) const;

 private:
  const nlohmann::json& Required(const std::string& key, const char* kind);

  const nlohmann::json& object_;
  std::string place_;
  std::vector<std::string> known_;
};

/// `value` as a whole number within the bounds, or a `JsonError` that begins with `place`.
std::uint32_t NumberWithin(const nlohmann::json& value, std::uint32_t least, std::uint32_t most,
                           const std::string& place);

}  // namespace mixdecks::simulator
