// Our reading of addresses beside the system's own.
#include <gtest/gtest.h>
#include <winsock2.h>

#include <random>

#include "dialog/address_text.h"

namespace mixdecks {
namespace {

std::string RandomAddress(std::mt19937& random) {
  constexpr std::string_view kParts[] = {"0",   "1",   "7",    "9",  "10",  "00",
                                         "08",  "010", "077",  "99", "255", "256",
                                         "300", "377", "0377", "",   "192", "0400"};
  std::string text;
  for (int part = 0; part < 4; ++part) {
    if (part > 0) text += '.';
    text += kParts[random() % std::size(kParts)];
  }
  return text;
}

TEST(AddressText, AgreesWithTheSystem) {
  constexpr unsigned kSeed = 20;
  std::mt19937 random(kSeed);
  for (int i = 0; i < 20000; ++i) {
    const std::string text = RandomAddress(random);
    const std::optional<std::uint32_t> ours = ParseDottedAddress(text);
    const std::uint32_t theirs = ntohl(inet_addr(text.c_str()));
    ASSERT_EQ(ours.value_or(INADDR_NONE), theirs) << text << " (seed " << kSeed << ")";
  }
}

}  // namespace
}  // namespace mixdecks
