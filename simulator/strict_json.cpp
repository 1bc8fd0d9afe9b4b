#include "simulator/strict_json.h"

#include <algorithm>
#include <set>

namespace mixdecks::simulator {
namespace {

using nlohmann::json;

/// The library's message without its own numbering, "[json.exception.parse_error.101] ".
std::string PlainMessage(const json::exception& error) {
  const std::string text = error.what();
  const std::size_t end = text.find("] ");
  return end == std::string::npos ? text : text.substr(end + 2);
}

/// Watches a parse for keys that come twice in one object: the library keeps the last.
class DuplicateKeyWatch {
 public:
  explicit DuplicateKeyWatch(std::string_view source) : source_(source) {}

  bool operator()(int, json::parse_event_t event, json& value) {
    if (event == json::parse_event_t::object_start) open_.emplace_back();
    if (event == json::parse_event_t::object_end) open_.pop_back();
    if (event == json::parse_event_t::key && !open_.back().insert(value).second) {
      throw JsonError(std::string(source_) + ": the key " + value.dump() + " comes twice");
    }
    return true;
  }

 private:
  std::string_view source_;
  std::vector<std::set<std::string>> open_;
};

}  // namespace

json ParseJson(std::string_view text, std::string_view source) {
  try {
    DuplicateKeyWatch watch(source);
    return json::parse(text, std::ref(watch));
  } catch (const json::exception& error) {
    throw JsonError(std::string(source) + ": " + PlainMessage(error));
  }
}

std::uint32_t NumberWithin(const json& value, std::uint32_t least, std::uint32_t most,
                           const std::string& place) {
  const bool fits = value.is_number_unsigned() && value.get<std::uint64_t>() >= least &&
                    value.get<std::uint64_t>() <= most;
  if (!fits) {
    throw JsonError(place + ": must be a whole number from " + std::to_string(least) + " to " +
                    std::to_string(most));
  }
  return value.get<std::uint32_t>();
}

ObjectReader::ObjectReader(const json& object, std::string place)
    : object_(object), place_(std::move(place)) {
  if (!object.is_object()) throw JsonError(place_ + ": must be an object, { … }");
}

const json* ObjectReader::Find(const std::string& key) {
  if (std::ranges::find(known_, key) == known_.end()) known_.push_back(key);
  const auto member = object_.find(key);
  return member == object_.end() ? nullptr : &*member;
}

const json& ObjectReader::Required(const std::string& key, const char* kind) {
  const json* value = Find(key);
  if (value == nullptr) throw JsonError(place_ + ": \"" + key + "\" is missing; it is " + kind);
  return *value;
}

std::uint32_t ObjectReader::Number(const std::string& key, std::uint32_t least,
                                   std::uint32_t most) {
  return NumberWithin(Required(key, "a whole number"), least, most, PlaceOf(key));
}

std::string ObjectReader::String(const std::string& key) {
  const json& value = Required(key, "a text");
  if (!value.is_string()) Refuse(key, "must be a text in quotes");
  return value.get<std::string>();
}

const json& ObjectReader::Array(const std::string& key) {
  const json& value = Required(key, "a list");
  if (!value.is_array()) Refuse(key, "must be a list, [ … ]");
  return value;
}

void ObjectReader::Finish() const {
  for (const auto& member : object_.items()) {
    if (std::ranges::find(known_, member.key()) != known_.end()) continue;
    std::string allowed;
    for (const std::string& key : known_)
      allowed += (allowed.empty() ? "" : ", ") + key;
    throw JsonError(place_ + ": unknown key " + json(member.key()).dump() +
                    "; allowed here: " + allowed);
  }
}

std::string ObjectReader::PlaceOf(const std::string& key) const {
  return place_ + ": " + key;
}

void ObjectReader::Refuse(const std::string& key, const std::string& why) const {
  throw JsonError(PlaceOf(key) + ": " + why);
}

}  // namespace mixdecks::simulator
