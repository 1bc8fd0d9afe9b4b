// The host in memory is itself strict, counts right and fails where it is told to.
#include "tools/memory_host/memory_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <thread>
#include <vector>

namespace mixdecks {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(HostSamples, ScaleTo32768) {
  EXPECT_EQ(HostSample16(0), 0);
  EXPECT_EQ(HostSample16(1), 1);
  EXPECT_EQ(HostSample16(32767), 16384);
  EXPECT_EQ(HostSample16(65534), 32767);
  EXPECT_EQ(HostSample16(65535), 32768);
  static_assert(HostSample16(65535) == 32768);
}

TEST(HostDocuments, TakeAnImageApart) {
  const std::array<std::uint8_t, 8> rgba{1, 2, 3, 4, 5, 6, 7, 8};
  const HostDocument document = DocumentOfRgba8(rgba, 2, 1, true);
  ASSERT_EQ(document.composite.size(), 3u);
  EXPECT_THAT(document.composite[0].samples, ElementsAre(std::byte{1}, std::byte{5}));
  EXPECT_THAT(document.composite[1].samples, ElementsAre(std::byte{2}, std::byte{6}));
  EXPECT_THAT(document.composite[2].samples, ElementsAre(std::byte{3}, std::byte{7}));
  ASSERT_TRUE(document.transparency);
  EXPECT_THAT(document.transparency->samples, ElementsAre(std::byte{4}, std::byte{8}));
  EXPECT_EQ(document.composite[0].bounds.right, 2);
  EXPECT_EQ(document.composite[0].bounds.bottom, 1);
  EXPECT_FALSE(DocumentOfRgba8(rgba, 2, 1, false).transparency);
}

TEST(HostDocuments, Of16BitsAreInTheHostsScale) {
  const std::array<std::uint16_t, 4> rgba{65535, 0, 32767, 65535};
  const HostDocument document = DocumentOfRgba16(rgba, 1, 1, false);
  EXPECT_EQ(document.depth, 16);
  EXPECT_EQ(document.composite[0].depth, 16);
  EXPECT_THAT(document.composite[0].samples, ElementsAre(std::byte{0}, std::byte{0x80}));
  EXPECT_THAT(document.composite[2].samples, ElementsAre(std::byte{0}, std::byte{0x40}));
}

TEST(HostDocuments, OfTheWrongSizeAreRefused) {
  const std::array<std::uint8_t, 8> rgba{};
  EXPECT_THROW(DocumentOfRgba8(rgba, 1, 1, true), std::invalid_argument);
  EXPECT_THROW(DocumentOfRgba8(rgba, -2, -1, true), std::invalid_argument);
  EXPECT_THROW(DocumentOfRgba8(rgba, 32768, 1, true), std::invalid_argument);
  EXPECT_THROW(ChannelOfSamples8(rgba, 7, 1), std::invalid_argument);
  EXPECT_THROW(MemoryHost(HostDocument{.width = 32768}), std::invalid_argument);
  EXPECT_THROW(MemoryHost(HostDocument{.height = -1}), std::invalid_argument);
}

TEST(MemoryHost, IsAloneInItsProcess) {
  {
    const MemoryHost host(HostDocument{});
    EXPECT_THROW(MemoryHost(HostDocument{}), std::logic_error);
  }
  EXPECT_NO_THROW(MemoryHost(HostDocument{}));
}

TEST(MemoryHost, FillsTheRecord) {
  HostDocument document{.width = 30, .height = 20, .depth = 16, .planes = 4};
  document.fileName = "bars.psd";
  MemoryHost host(std::move(document));
  const ExportRecord& record = host.Record();
  EXPECT_EQ(record.imageMode, 3);
  EXPECT_EQ(record.imageWidth, 30);
  EXPECT_EQ(record.imageHeight, 20);
  EXPECT_EQ(record.depth, 16);
  EXPECT_EQ(record.planes, 4);
  EXPECT_EQ(record.imageRect.right, 30);
  EXPECT_EQ(record.fileName[0], 8);
  EXPECT_EQ(record.fileName[1], 'b');
  EXPECT_EQ(record.fileName[8], 'd');
}

TEST(MemoryHost, CutsAFileNameThatIsTooLong) {
  MemoryHost host(HostDocument{.fileName = std::string(300, 'x')});
  EXPECT_EQ(host.Record().fileName[0], 255);
  EXPECT_EQ(host.Record().fileName[255], 'x');
}

TEST(MemoryHost, LinksTheChannelsInOrder) {
  HostDocument document;
  document.composite.resize(3);
  document.extraAlpha.resize(2);
  MemoryHost host(std::move(document));
  const DocumentDescription& description = *host.Record().document;
  ASSERT_NE(description.mergedComposite, nullptr);
  ASSERT_NE(description.mergedComposite->next, nullptr);
  ASSERT_NE(description.mergedComposite->next->next, nullptr);
  EXPECT_EQ(description.mergedComposite->next->next->next, nullptr);
  EXPECT_EQ(description.mergedTransparency, nullptr);
  ASSERT_NE(description.extraAlpha, nullptr);
  EXPECT_NE(description.extraAlpha->next, nullptr);
}

TEST(MemoryHost, NotesWhatIsDoneToHandles) {
  MemoryHost host(HostDocument{});
  const HostHandleProcs& procs = host.HandleProcs();
  const std::intptr_t handle = procs.newHandle(16);
  EXPECT_EQ(procs.getSize(handle), 16);
  EXPECT_EQ(procs.setSize(handle, 32), 0);
  EXPECT_EQ(procs.getSize(handle), 32);
  EXPECT_EQ(host.OpenHandles(), 1u);
  EXPECT_NE(procs.lock(handle, 1), nullptr);
  EXPECT_EQ(host.LockedHandles(), 1u);
  procs.unlock(handle);
  EXPECT_EQ(host.LockedHandles(), 0u);
  EXPECT_THAT(host.Violations(), IsEmpty());

  procs.unlock(handle);
  procs.lock(handle, 0);
  procs.disposeHandle(handle);
  procs.disposeHandle(handle);
  EXPECT_EQ(procs.lock(handle, 1), nullptr);
  EXPECT_THAT(host.Violations(),
              ElementsAre("unlock handle: not locked", "lock handle: not moved high",
                          "dispose handle: still locked", "dispose handle: no such handle",
                          "lock handle: no such handle"));
}

TEST(MemoryHost, FailsTheCallItIsToldTo) {
  MemoryHost host(HostDocument{});
  host.Fail(HostCall::kAcquireSuite, 2, 17);
  const auto acquire = [&host] {
    const void* suite = nullptr;
    return host.BasicSuite().acquireSuite(kChannelPortsSuiteName, 3, &suite);
  };
  EXPECT_EQ(acquire(), 0);
  EXPECT_EQ(acquire(), 17);
  EXPECT_EQ(acquire(), 0);
  EXPECT_EQ(host.Calls(HostCall::kAcquireSuite), 3);
  EXPECT_EQ(host.SuiteReferences(), 2);
}

TEST(MemoryHost, KnowsItsSuiteByNameAndVersion) {
  MemoryHost host(HostDocument{});
  const void* suite = nullptr;
  EXPECT_NE(host.BasicSuite().acquireSuite("Another Suite", 3, &suite), 0);
  EXPECT_NE(host.BasicSuite().acquireSuite(kChannelPortsSuiteName, 2, &suite), 0);
  EXPECT_EQ(suite, nullptr);
  EXPECT_EQ(host.BasicSuite().acquireSuite(kChannelPortsSuiteName, 3, &suite), 0);
  EXPECT_EQ(suite, &host.Suite());
}

TEST(MemoryHost, RefusesToReadWhatItDidNotOffer) {
  HostDocument document{.width = 2, .height = 1};
  document.composite = {ChannelOfSamples8(std::array<std::uint8_t, 2>{1, 2}, 2, 1)};
  MemoryHost host(std::move(document));
  void* port = host.Record().document->mergedComposite->readPort;
  std::array<std::uint8_t, 16> data{};
  PixelDescription pixels{data.data(), 16, 8, 0, 8};
  HostRect32 bounds{0, 0, 1, 2};

  EXPECT_NE(host.Suite().readPixels(port, 0, &bounds, &pixels), 0);
  EXPECT_THAT(host.Violations(), ElementsAre("read pixels: the suite is not acquired"));

  const void* suite = nullptr;
  host.BasicSuite().acquireSuite(kChannelPortsSuiteName, 3, &suite);
  EXPECT_EQ(host.Suite().readPixels(port, 0, &bounds, &pixels), 0);
  EXPECT_EQ(data[1], 2);
  pixels.rowBits = 24;
  EXPECT_NE(host.Suite().readPixels(port, 0, &bounds, &pixels), 0);
  pixels = {data.data(), 16, 8, 0, 16};
  EXPECT_NE(host.Suite().readPixels(port, 0, &bounds, &pixels), 0);
  bounds.right = 1;
  EXPECT_NE(host.Suite().readPixels(port, 0, &bounds, &pixels), 0);
  EXPECT_EQ(host.Violations().size(), 4u);
}

TEST(MemoryHost, NotesCallsOfOtherThreads) {
  MemoryHost host(HostDocument{});
  std::thread([&host] { host.HandleProcs().newHandle(1); }).join();
  EXPECT_THAT(host.Violations(), ElementsAre("new handle: not on the host's thread"));
}

}  // namespace
}  // namespace mixdecks
