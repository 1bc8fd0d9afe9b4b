// Documents that are refused and hosts that fail: what is told, and that nothing stays behind.
#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <utility>
#include <vector>

#include "host/channel_reader.h"
#include "tests/host/document_reading.h"
#include "tests/host/heap_faults.h"
#include "tools/memory_host/memory_host.h"

namespace mixdecks {
namespace {

// Documents that are refused.

struct RefusedCase {
  const char* name;
  void (*change)(HostDocument& document);
};

std::ostream& operator<<(std::ostream& out, const RefusedCase& refused) {
  return out << refused.name;
}

constexpr RefusedCase kRefused[] = {
    {"noChannels", [](HostDocument& d) { d.composite.clear(); }},
    {"twoExtraAlphas",
     [](HostDocument& d) {
       d.extraAlpha = {Channel8(5), Channel8(6)};
     }},
    {"threeExtraAlphas",
     [](HostDocument& d) {
       d.extraAlpha = {Channel8(5), Channel8(6), Channel8(7)};
     }},
    {"smallTransparency",
     [](HostDocument& d) {
       d.transparency = Channel8(4);
       d.transparency->bounds = {1, 1, kHeight, kWidth};
     }},
    {"topNot0", [](HostDocument& d) { d.composite[0].bounds.top = 1; }},
    {"topNegative", [](HostDocument& d) { d.composite[0].bounds.top = -1; }},
    {"leftNot0", [](HostDocument& d) { d.composite[1].bounds.left = 1; }},
    {"tooLow", [](HostDocument& d) { d.composite[2].bounds.bottom += 1; }},
    {"tooWide", [](HostDocument& d) { d.composite[0].bounds.right += 1; }},
    {"tooNarrow", [](HostDocument& d) { d.composite[0].bounds.right -= 1; }},
    {"empty",
     [](HostDocument& d) {
       d.composite[0].bounds = {0, 0, 0, 0};
     }},
    {"noLevels", [](HostDocument& d) { d.composite[0].levels = 0; }},
    {"negativeLevels", [](HostDocument& d) { d.composite[0].levels = -1; }},
    {"noLevelsOfAlpha",
     [](HostDocument& d) {
       d.extraAlpha = {Channel8(5)};
       d.extraAlpha[0].levels = 0;
     }},
};

class Refused : public testing::TestWithParam<RefusedCase> {};

TEST_P(Refused, FailsAndLeavesAlphaAlone) {
  HostDocument document = Document8();
  GetParam().change(document);
  MemoryHost host(std::move(document));
  HeapBlock image;
  bool hasAlpha = true;
  EXPECT_EQ(ReadChannelDocument(&host.Record(), image, hasAlpha), kResultFail);
  EXPECT_TRUE(hasAlpha);
  EXPECT_TRUE(static_cast<bool>(image));
  ExpectBalance(host);
}

INSTANTIATE_TEST_SUITE_P(Host, Refused, testing::ValuesIn(kRefused),
                         [](const auto& tested) { return tested.param.name; });

TEST(ChannelReaderFaults, RefusesDepthsOtherThan8And16WithoutOverrunning) {
  for (const std::int32_t depth :
       {-16, -8, -1, 0, 1, 2, 7, 9, 12, 15, 17, 24, 31, 32, 64, 1 << 30, INT32_MAX, INT32_MIN}) {
    HostDocument document = Document8();
    document.composite[0].depth = depth;
    document.composite[0].samples.clear();
    const Reading reading{MemoryHost(std::move(document))};
    EXPECT_EQ(reading.result, kResultFail) << depth;
  }
}

// Hosts that fail.

TEST(ChannelReaderFaults, ReleasesTheSuiteEvenIfThereIsNone) {
  MemoryHost host(Document8());
  host.RemoveSuite();
  const Reading reading(host);
  EXPECT_EQ(reading.result, kResultFail);
  EXPECT_FALSE(reading.imageAllocated);
  EXPECT_EQ(host.Calls(HostCall::kReleaseSuite), 1);
  EXPECT_EQ(host.SuiteReferences(), 0);
}

TEST(ChannelReaderFaults, HolesInTheHostsTablesAreFailures) {
  constexpr void (*kHoles[])(MemoryHost&) = {
      [](MemoryHost& host) { host.Record().basicSuite = nullptr; },
      [](MemoryHost& host) { host.BasicSuite().acquireSuite = nullptr; },
      [](MemoryHost& host) { host.BasicSuite().releaseSuite = nullptr; },
      [](MemoryHost& host) { host.Record().document = nullptr; },
      [](MemoryHost& host) { host.Suite().countLevels = nullptr; },
      [](MemoryHost& host) { host.Suite().getDepth = nullptr; },
      [](MemoryHost& host) { host.Suite().getBounds = nullptr; },
      [](MemoryHost& host) { host.Suite().readPixels = nullptr; },
  };
  for (const auto makeHole : kHoles) {
    MemoryHost host(Document8());
    makeHole(host);
    EXPECT_EQ(Reading(host).result, kResultFail);
    EXPECT_EQ(host.SuiteReferences(), 0);
  }
}

TEST(ChannelReaderFaults, AcquiringNullIsAFailure) {
  MemoryHost host(Document8());
  host.BasicSuite().acquireSuite = [](const char*, std::int32_t, const void** suite) {
    *suite = nullptr;
    return 0;
  };
  EXPECT_EQ(Reading(host).result, kResultFail);
  EXPECT_EQ(host.Calls(HostCall::kReleaseSuite), 1);
}

TEST(ChannelReaderFaults, ReleasingMayFail) {
  MemoryHost host(Document8());
  host.Fail(HostCall::kReleaseSuite, 0);
  EXPECT_EQ(Reading(host).result, kResultOk);
}

/// Every call of a document with alpha, failing in turn. Whatever fails, the host has its suite
/// back, nothing stays allocated, and a second attempt reads the document.
TEST(ChannelReaderFaults, EveryHostCallMayFail) {
  constexpr HostCall kQuestions[] = {HostCall::kAcquireSuite, HostCall::kCountLevels,
                                     HostCall::kGetDepth, HostCall::kGetBounds};
  HostDocument document = Document8();
  document.transparency = Channel8(4);
  for (const HostCall call : kQuestions) {
    for (const std::int32_t error : {1, 5, -1, -108, INT32_MIN}) {
      const int calls = call == HostCall::kAcquireSuite ? 1 : 4;
      for (int nth = 1; nth <= calls; ++nth) {
        SCOPED_TRACE(testing::Message() << HostCallName(call) << " " << nth << " gives " << error);
        MemoryHost host(document);
        host.Fail(call, nth, error);
        const Reading failed(host);
        EXPECT_EQ(failed.result, kResultFail);
        EXPECT_FALSE(failed.hasAlpha);
        EXPECT_EQ(host.Calls(call), nth);
        ExpectBalance(host);

        const Reading again(host);
        EXPECT_EQ(again.result, kResultOk);
        EXPECT_TRUE(again.hasAlpha);
        ExpectBalance(host);
      }
    }
  }
}

TEST(ChannelReaderFaults, APositiveResultOfAReadFailsTheReading) {
  HostDocument document = Document8();
  document.transparency = Channel8(4);
  for (int nth = 1; nth <= 4; ++nth) {
    MemoryHost host(document);
    host.Fail(HostCall::kReadPixels, nth, 1);
    const Reading reading(host);
    EXPECT_EQ(reading.result, kResultFail) << nth;
    EXPECT_FALSE(reading.hasAlpha) << nth;
    EXPECT_EQ(host.Calls(HostCall::kReadPixels), nth);
    ExpectBalance(host);
  }
}

// Only numbers above 0 make the reading fail, so a host that refuses with a negative one gets the
// channels before that exported, over zeros and without alpha.
TEST(ChannelReaderFaults, ANegativeResultOfAReadEndsTheReadingWithoutFailingIt) {
  HostDocument document = Document8();
  document.transparency = Channel8(4);
  for (int nth = 1; nth <= 4; ++nth) {
    SCOPED_TRACE(nth);
    const std::vector<std::uint8_t> zeros(kPixels, 0);
    MemoryHost host(document);
    host.Fail(HostCall::kReadPixels, nth, -36);
    const Reading reading(host);
    EXPECT_EQ(reading.result, kResultOk);
    EXPECT_FALSE(reading.hasAlpha);
    EXPECT_EQ(host.Calls(HostCall::kReadPixels), nth);
    EXPECT_EQ(reading.Lane(2), nth > 1 ? Samples8(1) : zeros);
    EXPECT_EQ(reading.Lane(1), nth > 2 ? Samples8(2) : zeros);
    EXPECT_EQ(reading.Lane(0), nth > 3 ? Samples8(3) : zeros);
    ExpectBalance(host);
  }
}

TEST(ChannelReaderFaults, EveryAllocationMayFail) {
  HostDocument document = Document8();
  document.transparency = Channel8(4);
  MemoryHost host(document);
  bool succeeded = false;
  int failAt = 0;
  while (!succeeded) {
    Heap() = {.failAt = ++failAt};
    HeapBlock image;
    bool hasAlpha = false;
    succeeded = ReadChannelDocument(&host.Record(), image, hasAlpha) == kResultOk;
    EXPECT_EQ(hasAlpha, succeeded);
    EXPECT_EQ(static_cast<bool>(image), failAt > 1);
    image.Reset();
    EXPECT_EQ(Heap().live, 0) << failAt;
    ExpectBalance(host);
  }
  EXPECT_EQ(failAt, 6) << "the image and four channels can fail";
}

}  // namespace
}  // namespace mixdecks
