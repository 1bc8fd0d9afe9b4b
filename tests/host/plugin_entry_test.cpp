// Every selector through the exported function, the records built byte by byte where it matters.
#include "host/plugin_entry.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <new>
#include <ostream>
#include <stdexcept>

#include "plugin/export_main.h"
#include "tests/host/scripted_dialogs.h"
#include "tools/memory_host/memory_host.h"

namespace mixdecks {
namespace {

int windowTag = 0;
void* const kWindow = &windowTag;

class PluginEntryTest : public testing::Test {
 protected:
  PluginEntryTest() : host_(HostDocument{.width = 4, .height = 3}) {
    Dialogs() = {};
    host_.SetParentWindow(kWindow);
  }
  ~PluginEntryTest() override {
    for (const std::string& violation : host_.Violations())
      ADD_FAILURE() << violation;
    EXPECT_EQ(host_.LockedHandles(), 0u);
  }

  std::int16_t Call(Selector selector) { return host_.Call(MixdecksExportMain, selector); }
  std::int16_t Call(std::int16_t selector) { return host_.Call(MixdecksExportMain, selector); }

  int HandleCalls() const {
    return host_.Calls(HostCall::kNewHandle) + host_.Calls(HostCall::kLockHandle) +
           host_.Calls(HostCall::kUnlockHandle) + host_.Calls(HostCall::kDisposeHandle);
  }

  MemoryHost host_;
};

TEST_F(PluginEntryTest, AboutShowsTheBoxAndTouchesNothingElse) {
  host_.DataWord() = 0;
  std::int16_t result = 1234;
  MixdecksExportMain(0, &host_.About(), &host_.DataWord(), &result);
  EXPECT_EQ(Dialogs().aboutWindows, std::vector<void*>{kWindow});
  EXPECT_TRUE(Dialogs().exportWindows.empty());
  EXPECT_EQ(result, 1234);
  EXPECT_EQ(host_.DataWord(), 0);
  EXPECT_EQ(HandleCalls(), 0);
  EXPECT_EQ(CurrentBasicSuite(), &host_.BasicSuite());
}

TEST_F(PluginEntryTest, AboutLeavesTheDataOfOtherSelectorsAlone) {
  Call(Selector::kContinue);
  const std::intptr_t data = host_.DataWord();
  const int calls = HandleCalls();
  Call(Selector::kAbout);
  EXPECT_EQ(host_.DataWord(), data);
  EXPECT_EQ(HandleCalls(), calls);
}

TEST_F(PluginEntryTest, AboutWithoutAPlatformRecordHasNoParent) {
  host_.About().platform = nullptr;
  Call(Selector::kAbout);
  EXPECT_EQ(Dialogs().aboutWindows, std::vector<void*>{nullptr});
}

TEST_F(PluginEntryTest, AboutReadsItsRecordByOffsets) {
  PlatformRecord platform{kWindow};
  HostBasicSuite suite{};
  alignas(8) std::array<std::byte, 16> record{};
  void* const platformAt0 = &platform;
  void* const suiteAt8 = &suite;
  std::memcpy(record.data(), &platformAt0, 8);
  std::memcpy(record.data() + 8, &suiteAt8, 8);
  MixdecksExportMain(0, record.data(), nullptr, nullptr);
  EXPECT_EQ(Dialogs().aboutWindows, std::vector<void*>{kWindow});
  EXPECT_EQ(CurrentBasicSuite(), &suite);
}

TEST_F(PluginEntryTest, StartRunsTheDialogAndIsDone) {
  Dialogs().onExport = [this](ExportGlobals* globals) {
    EXPECT_EQ(globals->result, &host_.ResultWord());
    EXPECT_EQ(globals->record, &host_.Record());
    EXPECT_EQ(*globals->result, 0);
    EXPECT_EQ(host_.LockedHandles(), 1u);
    EXPECT_NE(host_.DataWord(), 0);
    return 0;
  };
  EXPECT_EQ(Call(Selector::kStart), 1);
  EXPECT_EQ(Dialogs().exportWindows, std::vector<void*>{kWindow});
  EXPECT_EQ(host_.DataWord(), 0);
  EXPECT_EQ(host_.OpenHandles(), 0u);
  EXPECT_EQ(CurrentBasicSuite(), &host_.BasicSuite());
}

TEST_F(PluginEntryTest, StartKeepsTheHandleUnlockedWhenTheDialogEndedOtherwise) {
  Dialogs().onExport = [](ExportGlobals*) { return 5; };
  EXPECT_EQ(Call(Selector::kStart), 0);
  EXPECT_NE(host_.DataWord(), 0);
  EXPECT_EQ(host_.OpenHandles(), 1u);
  EXPECT_EQ(host_.LockedHandles(), 0u);
}

TEST_F(PluginEntryTest, StartSurvivesADialogThatThrows) {
  Dialogs().onExport = [](ExportGlobals*) -> std::intptr_t { throw std::bad_alloc(); };
  EXPECT_EQ(Call(Selector::kStart), 1);
  EXPECT_EQ(host_.DataWord(), 0);
  EXPECT_EQ(host_.OpenHandles(), 0u);

  Dialogs().onAbout = []() -> std::intptr_t { throw std::runtime_error("no box"); };
  EXPECT_EQ(Call(Selector::kAbout), 0);
}

TEST_F(PluginEntryTest, StartWithoutAPlatformRecordHasNoParent) {
  host_.Record().platform = nullptr;
  EXPECT_EQ(Call(Selector::kStart), 1);
  EXPECT_EQ(Dialogs().exportWindows, std::vector<void*>{nullptr});
}

TEST_F(PluginEntryTest, StartRefusesEveryOtherImageMode) {
  for (int mode = -1; mode < 18; ++mode) {
    if (mode == kImageModeRgb) continue;
    host_.Record().imageMode = static_cast<std::int16_t>(mode);
    EXPECT_EQ(Call(Selector::kStart), -30201) << mode;
    EXPECT_EQ(host_.DataWord(), 0) << mode;
    EXPECT_EQ(host_.OpenHandles(), 0u) << mode;
  }
  EXPECT_TRUE(Dialogs().exportWindows.empty());
}

TEST_F(PluginEntryTest, StartRefusesAnotherModeWithTheHandleOfBefore) {
  Call(Selector::kContinue);
  host_.Record().imageMode = 1;
  EXPECT_EQ(Call(Selector::kStart), -30201);
  EXPECT_EQ(host_.DataWord(), 0);
  EXPECT_EQ(host_.OpenHandles(), 0u);
}

TEST_F(PluginEntryTest, ContinueMakesAHandleAndKeepsIt) {
  EXPECT_EQ(Call(Selector::kContinue), 0);
  const std::intptr_t data = host_.DataWord();
  EXPECT_NE(data, 0);
  EXPECT_EQ(Call(Selector::kContinue), 0);
  EXPECT_EQ(host_.DataWord(), data);
  EXPECT_EQ(host_.OpenHandles(), 1u);
}

TEST_F(PluginEntryTest, FinishReleasesTheHandle) {
  Call(Selector::kContinue);
  EXPECT_EQ(Call(Selector::kFinish), 0);
  EXPECT_EQ(host_.DataWord(), 0);
  EXPECT_EQ(host_.OpenHandles(), 0u);
}

TEST_F(PluginEntryTest, FinishAfterStartMakesAFreshHandleAndReleasesIt) {
  EXPECT_EQ(Call(Selector::kStart), 1);
  EXPECT_EQ(Call(Selector::kFinish), 0);
  EXPECT_EQ(host_.DataWord(), 0);
  EXPECT_EQ(host_.Calls(HostCall::kNewHandle), 2);
  EXPECT_EQ(host_.OpenHandles(), 0u);
}

TEST_F(PluginEntryTest, OtherSelectorsLeaveAnUnlockedHandleAndResult0) {
  for (const int number : {-32768, -1, 5, 6, 32767}) {
    const auto selector = static_cast<std::int16_t>(number);
    host_.ResultWord() = 77;
    EXPECT_EQ(Call(selector), 0) << selector;
    EXPECT_NE(host_.DataWord(), 0) << selector;
    EXPECT_EQ(host_.LockedHandles(), 0u) << selector;
  }
  EXPECT_EQ(host_.OpenHandles(), 1u);
  EXPECT_TRUE(Dialogs().exportWindows.empty());
  EXPECT_TRUE(Dialogs().aboutWindows.empty());
}

TEST_F(PluginEntryTest, WithoutMemoryNoSelectorDoesItsWork) {
  host_.Record().maximumMemory = 1000;
  for (const HostCall call : {HostCall::kNewHandle, HostCall::kLockHandle}) {
    host_.Fail(HostCall::kNewHandle, -1);
    host_.Fail(call, 0);
    for (std::int16_t selector = 1; selector <= 5; ++selector) {
      EXPECT_EQ(Call(selector), -108) << selector;
      EXPECT_EQ(host_.DataWord(), 0) << selector;
      EXPECT_EQ(host_.OpenHandles(), 0u) << selector;
    }
  }
  EXPECT_TRUE(Dialogs().exportWindows.empty());
  EXPECT_EQ(host_.Record().maximumMemory, 1000);
  EXPECT_EQ(host_.Calls(HostCall::kUnlockHandle), 0);
}

TEST_F(PluginEntryTest, ADataWordThatCannotBeLockedStaysAsItIs) {
  Call(Selector::kContinue);
  const std::intptr_t data = host_.DataWord();
  const int unlocks = host_.Calls(HostCall::kUnlockHandle);
  host_.Fail(HostCall::kLockHandle, 0);
  EXPECT_EQ(Call(Selector::kFinish), -108);
  EXPECT_EQ(host_.DataWord(), data);
  EXPECT_EQ(host_.Calls(HostCall::kUnlockHandle), unlocks);
  EXPECT_EQ(host_.OpenHandles(), 1u);
}

TEST_F(PluginEntryTest, EverySelectorKeepsTheBasicSuiteOfItsRecord) {
  HostBasicSuite suites[5] = {};
  for (std::int16_t selector = 1; selector <= 5; ++selector) {
    host_.Record().basicSuite = &suites[selector - 1];
    Call(selector);
    EXPECT_EQ(CurrentBasicSuite(), &suites[selector - 1]) << selector;
  }
}

TEST_F(PluginEntryTest, WorksWithoutTheHostsHandleProcedures) {
  host_.WithdrawHandleProcs();
  EXPECT_EQ(Call(Selector::kContinue), 0);
  EXPECT_NE(host_.DataWord(), 0);
  EXPECT_EQ(Call(Selector::kPrepare), 0);
  Dialogs().onExport = [this](ExportGlobals* globals) {
    EXPECT_EQ(globals->record, &host_.Record());
    EXPECT_EQ(globals->result, &host_.ResultWord());
    return 0;
  };
  EXPECT_EQ(Call(Selector::kStart), 1);
  EXPECT_EQ(host_.DataWord(), 0);
  EXPECT_EQ(Call(Selector::kFinish), 0);
  EXPECT_EQ(HandleCalls(), 0);
}

struct CountCase {
  std::int16_t count;
  bool used;
};

TEST_F(PluginEntryTest, TheCountOfProceduresDecides) {
  for (const CountCase& c : {CountCase{7, false}, CountCase{8, true}, CountCase{-1, true}}) {
    const int before = HandleCalls();
    host_.HandleProcs().count = c.count;
    EXPECT_EQ(Call(Selector::kStart), 1) << c.count;
    EXPECT_EQ(HandleCalls() - before, c.used ? 4 : 0) << c.count;
  }
}

struct PrepareCase {
  const char* name;
  std::int32_t memory;
  std::int16_t depth, planes, width, height;
  std::int32_t expected;
};

std::ostream& operator<<(std::ostream& out, const PrepareCase& prepareCase) {
  return out << prepareCase.name;
}

constexpr PrepareCase kPrepareCases[] = {
    {"lowered", 100000000, 8, 3, 1920, 1080, 6220800},
    {"alreadySmaller", 1000, 8, 3, 1920, 1080, 1000},
    {"equal", 6220800, 8, 3, 1920, 1080, 6220800},
    {"roundsTowardZero", 100, 1, 1, 5, 3, 1},
    {"sixteenBits", INT32_MAX, 16, 4, 100, 100, 80000},
    // 8 x 3 x 2^28 is 2^32 + 2^31, and the rest of it in 32 bits is the lowest number.
    {"wrapsNegative", 1, 8, 3, 16384, 16384, INT32_MIN / 8},
    // 2^5 x (2^15 - 1)^2 is 2^35 - 2^21 + 2^5, and 2^35 vanishes.
    {"wrapsPerFactor", INT32_MAX, 8, 4, 32767, 32767, -2097120 / 8},
    {"wrapsToZero", 50, 16, 4, 32767, 0, 0},
    {"wrapsToSmallPositive", 1000000, 8, 4, 16385, 16384, 524288 / 8},
    {"negativeDepth", 10, -8, 3, 4, 3, -36},
    {"negativeRoundsTowardZero", 10, -1, 1, 5, 3, -1},
    {"negativeMemoryStays", -100, 8, 3, 4, 3, -100},
};

class Prepare : public PluginEntryTest, public testing::WithParamInterface<PrepareCase> {};

TEST_P(Prepare, LowersTheMemoryField) {
  const PrepareCase& c = GetParam();
  ExportRecord& record = host_.Record();
  record.maximumMemory = c.memory;
  record.depth = c.depth;
  record.planes = c.planes;
  record.imageWidth = c.width;
  record.imageHeight = c.height;
  EXPECT_EQ(Call(Selector::kPrepare), 0);
  EXPECT_EQ(record.maximumMemory, c.expected);
  EXPECT_NE(host_.DataWord(), 0);
}

INSTANTIATE_TEST_SUITE_P(Host, Prepare, testing::ValuesIn(kPrepareCases),
                         [](const auto& tested) { return tested.param.name; });

/// A record as the host lays it out: nothing but bytes at offsets.
class RawRecord {
 public:
  template <typename Value>
  void Put(std::size_t offset, Value value) {
    std::memcpy(bytes_.data() + offset, &value, sizeof(value));
  }
  template <typename Value>
  Value Get(std::size_t offset) const {
    Value value{};
    std::memcpy(&value, bytes_.data() + offset, sizeof(value));
    return value;
  }
  void* Data() { return bytes_.data(); }
  const std::array<std::byte, 1336>& Bytes() const { return bytes_; }

 private:
  alignas(8) std::array<std::byte, 1336> bytes_{};
};

TEST_F(PluginEntryTest, ReadsTheRecordByOffsets) {
  RawRecord raw;
  raw.Put<std::int32_t>(24, INT32_MAX);
  raw.Put<std::int16_t>(28, 3);
  raw.Put<std::int16_t>(30, 11);
  raw.Put<std::int16_t>(32, 13);
  raw.Put<std::int16_t>(34, 16);
  raw.Put<std::int16_t>(36, 5);
  raw.Put<const void*>(1184, &kWindow);
  raw.Put<const void*>(1224, &host_.HandleProcs());
  raw.Put<const void*>(1328, &host_.BasicSuite());

  std::int16_t result = 77;
  MixdecksExportMain(4, raw.Data(), &host_.DataWord(), &result);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(raw.Get<std::int32_t>(24), 16 * 5 * 13 * 11 / 8);
  EXPECT_EQ(host_.OpenHandles(), 1u);

  const RawRecord before = raw;
  MixdecksExportMain(1, raw.Data(), &host_.DataWord(), &result);
  EXPECT_EQ(result, 1);
  EXPECT_EQ(Dialogs().exportWindows, std::vector<void*>{kWindow});
  EXPECT_EQ(raw.Bytes(), before.Bytes());
  EXPECT_EQ(CurrentBasicSuite(), &host_.BasicSuite());
}

TEST_F(PluginEntryTest, KeepsTwoPointersOfSixteenBytesInTheHandle) {
  static std::int32_t askedFor = 0;
  static HostHandleProcs* real = nullptr;
  HostHandleProcs watched = host_.HandleProcs();
  real = &host_.HandleProcs();
  watched.newHandle = [](std::int32_t size) {
    askedFor = size;
    return real->newHandle(size);
  };
  host_.Record().handleProcs = &watched;
  Call(Selector::kContinue);
  EXPECT_EQ(askedFor, 16);

  const void* kept[2] = {};
  std::memcpy(kept, watched.lock(host_.DataWord(), 1), sizeof(kept));
  watched.unlock(host_.DataWord());
  EXPECT_EQ(kept[0], &host_.ResultWord());
  EXPECT_EQ(kept[1], &host_.Record());
}

}  // namespace
}  // namespace mixdecks
