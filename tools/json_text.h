// JSON as the command writes it.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace mixdecks {

/// Several lines, the last one ended. What is no valid text, in a file's name for instance, becomes
/// the replacement character.
inline std::string JsonText(const nlohmann::ordered_json& json) {
  return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace mixdecks
