// What COM's apartments mean to the switcher transfer. Windows alone has them.
#include <gtest/gtest.h>
#include <objbase.h>
#include <windows.h>

#include <thread>

#include "tests/transfer/fake_service.h"
#include "tests/transfer/front_end.h"
#include "transfer/service_session.h"

namespace mixdecks {
namespace {

/// Whether this thread is in no apartment: entering one then is the first time.
bool IsOutside() {
  const HRESULT result = CoInitialize(nullptr);
  if (SUCCEEDED(result)) CoUninitialize();
  return result == S_OK;
}

TEST(Apartment, IsLeftAsOftenAsItWasEntered) {
  std::thread([] {
    {
      const ServiceSession first;
      EXPECT_TRUE(first.Entered());
      const ServiceSession second;
      EXPECT_TRUE(second.Entered());
      EXPECT_FALSE(IsOutside());
    }
    EXPECT_TRUE(IsOutside());
  }).join();
}

TEST(Apartment, OfAnotherKindMeansNoService) {
  FakeService service;
  std::thread([] {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    EXPECT_THROW(FrontEnd(), int);
    CoUninitialize();
    EXPECT_TRUE(IsOutside());
  }).join();
}

TEST(Apartment, IsLeftWhenTheServiceIsMissing) {
  std::thread([] {
    EXPECT_THROW(FrontEnd(), int);
    EXPECT_TRUE(IsOutside());
  }).join();
}

}  // namespace
}  // namespace mixdecks
