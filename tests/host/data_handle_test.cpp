// When the host's handle procedures are used, and what stands in for them.
#include "host/data_handle.h"

#include <gtest/gtest.h>

#include <ostream>

#include "host/fallback_handle.h"
#include "host/host_data.h"
#include "tools/memory_host/memory_host.h"

namespace mixdecks {
namespace {

struct TableCase {
  const char* name;
  void (*change)(HostHandleProcs& procs);
  bool usable;
};

std::ostream& operator<<(std::ostream& out, const TableCase& tableCase) {
  return out << tableCase.name;
}

constexpr TableCase kTables[] = {
    {"whole", [](HostHandleProcs&) {}, true},
    {"version0", [](HostHandleProcs& procs) { procs.version = 0; }, false},
    {"version2", [](HostHandleProcs& procs) { procs.version = 2; }, false},
    {"version257", [](HostHandleProcs& procs) { procs.version = 257; }, false},
    {"count0", [](HostHandleProcs& procs) { procs.count = 0; }, false},
    {"count1", [](HostHandleProcs& procs) { procs.count = 1; }, false},
    {"count6", [](HostHandleProcs& procs) { procs.count = 6; }, false},
    {"count7", [](HostHandleProcs& procs) { procs.count = 7; }, false},
    {"count8", [](HostHandleProcs& procs) { procs.count = 8; }, true},
    {"count32767", [](HostHandleProcs& procs) { procs.count = 32767; }, true},
    {"countMinus1", [](HostHandleProcs& procs) { procs.count = -1; }, true},
    {"countMinus32768", [](HostHandleProcs& procs) { procs.count = -32768; }, true},
    {"noNew", [](HostHandleProcs& procs) { procs.newHandle = nullptr; }, false},
    {"noDispose", [](HostHandleProcs& procs) { procs.disposeHandle = nullptr; }, false},
    {"noGetSize", [](HostHandleProcs& procs) { procs.getSize = nullptr; }, false},
    {"noSetSize", [](HostHandleProcs& procs) { procs.setSize = nullptr; }, false},
    {"noUnlock", [](HostHandleProcs& procs) { procs.unlock = nullptr; }, true},
};

class HandleTables : public testing::TestWithParam<TableCase> {
 protected:
  HandleTables() : host_(HostDocument{}) { GetParam().change(host_.HandleProcs()); }
  MemoryHost host_;
};

TEST_P(HandleTables, AreUsableOrNot) {
  EXPECT_EQ(HandleProcsUsable(&host_.HandleProcs()), GetParam().usable);
}

TEST_P(HandleTables, ServeTheDataEitherWay) {
  std::int16_t result = 99;
  std::intptr_t data = 0;
  ExportGlobals* globals = AcquireHostData(&result, &host_.Record(), &data);
  ASSERT_NE(globals, nullptr);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(globals->result, &result);
  EXPECT_EQ(globals->record, &host_.Record());
  EXPECT_NE(data, 0);
  EXPECT_EQ(host_.OpenHandles(), GetParam().usable ? 1u : 0u);

  ReleaseHostData(globals, &data);
  EXPECT_EQ(data, 0);
  EXPECT_EQ(host_.OpenHandles(), 0u);
  EXPECT_EQ(host_.Calls(HostCall::kDisposeHandle), GetParam().usable ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Host, HandleTables, testing::ValuesIn(kTables),
                         [](const auto& tested) { return tested.param.name; });

class HostData : public testing::Test {
 protected:
  HostData() : host_(HostDocument{}) {}
  ~HostData() override { EXPECT_TRUE(host_.Violations().empty()) << host_.Violations().front(); }

  ExportGlobals* Acquire() { return AcquireHostData(&result_, &host_.Record(), &data_); }

  MemoryHost host_;
  std::int16_t result_ = 99;
  std::intptr_t data_ = 0;
};

TEST_F(HostData, AbsentTableIsNotUsable) {
  EXPECT_FALSE(HandleProcsUsable(nullptr));
}

TEST_F(HostData, AHandleThatIsThereIsLockedAndFilledAnew) {
  ASSERT_NE(Acquire(), nullptr);
  const std::intptr_t first = data_;
  UnlockDataHandle(host_.Record().handleProcs, data_);

  ExportRecord otherRecord = host_.Record();
  std::int16_t otherResult = 99;
  ExportGlobals* globals = AcquireHostData(&otherResult, &otherRecord, &data_);
  ASSERT_NE(globals, nullptr);
  EXPECT_EQ(data_, first);
  EXPECT_EQ(globals->result, &otherResult);
  EXPECT_EQ(globals->record, &otherRecord);
  EXPECT_EQ(otherResult, 0);
  EXPECT_EQ(host_.Calls(HostCall::kNewHandle), 1);
  ReleaseHostData(globals, &data_);
}

TEST_F(HostData, ANewHandleThatCannotBeLockedIsDisposedOf) {
  host_.Fail(HostCall::kLockHandle, 1);
  EXPECT_EQ(Acquire(), nullptr);
  EXPECT_EQ(data_, 0);
  EXPECT_EQ(host_.Calls(HostCall::kDisposeHandle), 1);
  EXPECT_EQ(host_.OpenHandles(), 0u);
}

TEST_F(HostData, AnOldHandleThatCannotBeLockedStays) {
  ASSERT_NE(Acquire(), nullptr);
  UnlockDataHandle(host_.Record().handleProcs, data_);
  const std::intptr_t handle = data_;
  host_.Fail(HostCall::kLockHandle, 2);
  EXPECT_EQ(Acquire(), nullptr);
  EXPECT_EQ(data_, handle);
  EXPECT_EQ(host_.OpenHandles(), 1u);
  EXPECT_EQ(host_.LockedHandles(), 0u);
}

TEST_F(HostData, ANewHandleThatIsNullIsNeitherLockedNorDisposedOf) {
  host_.Fail(HostCall::kNewHandle, 1);
  EXPECT_EQ(Acquire(), nullptr);
  EXPECT_EQ(data_, 0);
  EXPECT_EQ(host_.Calls(HostCall::kLockHandle), 0);
  EXPECT_EQ(host_.Calls(HostCall::kDisposeHandle), 0);
}

TEST_F(HostData, AMissingLockProcedureIsALockThatFailed) {
  host_.HandleProcs().lock = nullptr;
  EXPECT_EQ(Acquire(), nullptr);
  EXPECT_EQ(data_, 0);
  EXPECT_EQ(host_.OpenHandles(), 0u);
}

TEST_F(HostData, ReleasingAClearWordDoesNothing) {
  const ExportGlobals globals{&result_, &host_.Record()};
  ReleaseHostData(&globals, &data_);
  EXPECT_EQ(host_.Calls(HostCall::kUnlockHandle), 0);
  EXPECT_EQ(host_.Calls(HostCall::kDisposeHandle), 0);
}

TEST_F(HostData, TheFallbackHandleIsUsedAgain) {
  host_.WithdrawHandleProcs();
  ExportGlobals* first = Acquire();
  ASSERT_NE(first, nullptr);
  UnlockDataHandle(nullptr, data_);
  ExportGlobals* second = Acquire();
  EXPECT_EQ(second, first);
  ReleaseHostData(second, &data_);
  EXPECT_EQ(LastHandleError(), kHandleErrorNone);
}

TEST_F(HostData, AHandleOfAHostThatWithdrewItsProceduresIsRefused) {
  ASSERT_NE(Acquire(), nullptr);
  UnlockDataHandle(host_.Record().handleProcs, data_);
  const std::intptr_t handle = data_;
  host_.WithdrawHandleProcs();
  EXPECT_EQ(Acquire(), nullptr);
  EXPECT_EQ(data_, handle);
}

}  // namespace
}  // namespace mixdecks
