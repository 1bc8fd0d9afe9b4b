#include <gtest/gtest.h>

#include "platform/four_character_code.h"
#include "platform/module_handle.h"
#include "platform/result.h"

namespace mixdecks {
namespace {

TEST(FourCharacterCode, HasItsFirstCharacterOnTop) {
  EXPECT_EQ(FourCharacterCode("cmpt"), 0x636D7074U);
  EXPECT_EQ(FourCharacterCode("\xFF\x80 ~"), 0xFF80207EU);
}

TEST(Result, IsAFailureWhenNegative) {
  EXPECT_TRUE(Succeeded(kResultOk));
  EXPECT_TRUE(Succeeded(1));
  EXPECT_TRUE(Failed(kResultFail));
  EXPECT_EQ(static_cast<std::uint32_t>(kResultFail), 0x80004005U);
}

TEST(ModuleHandle, IsTheOneGivenLast) {
  int instance = 0;
  EXPECT_EQ(ModuleHandle(), nullptr);
  SetModuleHandle(&instance);
  EXPECT_EQ(ModuleHandle(), &instance);
  SetModuleHandle(nullptr);
  EXPECT_EQ(ModuleHandle(), nullptr);
}

}  // namespace
}  // namespace mixdecks
