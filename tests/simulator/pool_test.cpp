// Pools in folders: what is kept, what is refused, and how they are opened again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "platform/text.h"
#include "simulator/checksum.h"
#include "simulator/contact_sheet.h"
#include "simulator/pool_document.h"
#include "simulator/pool_store.h"
#include "simulator/unicode.h"
#include "tests/simulator/sample_frames.h"
#include "tests/simulator/temporary_folder.h"
#include "tests/simulator/test_client.h"

namespace mixdecks::simulator {
namespace {

using test::GreyFrame;
using test::kSmallMode;
using test::ReadText;
using test::TemporaryFolder;
using test::TestClient;
using test::WriteText;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testing::UnorderedElementsAre;

Still SmallStill(std::u16string name, const std::vector<std::uint8_t>& frame) {
  return {.name = std::move(name),
          .mode = kSmallMode,
          .width = test::kSmallWidth,
          .height = test::kSmallHeight,
          .alpha = FrameAlpha::kOpaque,
          .checksum = Checksum(frame)};
}

std::string Message(const std::function<void()>& refused) {
  try {
    refused();
  } catch (const PoolError& error) {
    return error.what();
  }
  return "accepted";
}

std::set<std::string> FilesIn(const std::filesystem::path& folder) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

class PoolTest : public testing::Test {
 protected:
  TemporaryFolder home;
  const std::filesystem::path folder = home / "pool";
};

TEST_F(PoolTest, BeginsEmptyWithTheDefaults) {
  { const PoolStore store(folder, {}); }
  const PoolContents contents = LoadPool(folder);
  EXPECT_EQ(contents.mode, FourCharacterCode("10i9"));
  EXPECT_EQ(contents.slots.size(), 20u);
  EXPECT_EQ(contents.players.size(), 4u);
  EXPECT_THAT(FilesIn(folder), UnorderedElementsAre("pool.json", "index.html", "pool.lock"));
}

TEST_F(PoolTest, KeepsStillsNamesAndPlayers) {
  const auto frame = GreyFrame(kSmallMode, 500);
  const std::u16string name =
      u"\U0001F3A5 \"Quotes\" / \\ <b> \u00FC\u4E2D " + std::u16string(230, u'x');
  {
    PoolStore store(folder, {.slots = 5, .players = 2, .mode = kSmallMode});
    store.StoreStill(2, SmallStill(name, frame), frame);
    store.Change([](PoolContents& contents) { contents.players[1] = 2; });
  }
  const PoolContents contents = LoadPool(folder);
  EXPECT_EQ(contents.mode, kSmallMode);
  EXPECT_EQ(contents.slots.size(), 5u);
  ASSERT_TRUE(contents.slots[2].has_value());
  EXPECT_EQ(*contents.slots[2], SmallStill(name, frame));
  EXPECT_EQ(contents.players[0], std::nullopt);
  EXPECT_EQ(contents.players[1], 2u);
  EXPECT_EQ(LoadFrame(folder, contents, 2), frame);
  EXPECT_EQ(std::filesystem::file_size(folder / "slot-03.ay10"), frame.size());
  EXPECT_THAT(ReadText(folder / "slot-03.png"), StartsWith("\x89PNG\r\n"));
  EXPECT_THAT(FilesIn(folder), UnorderedElementsAre("pool.json", "index.html", "pool.lock",
                                                    "slot-03.ay10", "slot-03.png"));
}

TEST_F(PoolTest, OpensAgainAsItWas) {
  const auto frame = GreyFrame(kSmallMode, 500);
  {
    PoolStore store(folder, {.slots = 5, .mode = kSmallMode});
    store.StoreStill(0, SmallStill(u"Kept", frame), frame);
  }
  const std::string document = ReadText(folder / "pool.json");
  const PoolStore again(folder, {});
  EXPECT_EQ(again.Contents().slots.size(), 5u);
  EXPECT_EQ(again.Contents().slots[0]->name, u"Kept");
  EXPECT_EQ(again.Frame(0), frame);
  EXPECT_EQ(ReadText(folder / "pool.json"), document);
}

TEST_F(PoolTest, ClearsAStillWithItsFiles) {
  const auto frame = GreyFrame(kSmallMode, 500);
  PoolStore store(folder, {.mode = kSmallMode});
  store.StoreStill(0, SmallStill(u"Gone", frame), frame);
  store.ClearStill(0);
  EXPECT_EQ(LoadPool(folder).slots[0], std::nullopt);
  EXPECT_THAT(FilesIn(folder), UnorderedElementsAre("pool.json", "index.html", "pool.lock"));
}

TEST_F(PoolTest, TakesAnotherShape) {
  const auto frame = GreyFrame(kSmallMode, 500);
  {
    PoolStore store(folder, {.slots = 5, .players = 3, .mode = kSmallMode});
    store.StoreStill(1, SmallStill(u"Old mode", frame), frame);
    store.Change([](PoolContents& contents) { contents.players = {4, 1, 1}; });
  }
  {
    const PoolStore store(folder, {.slots = 8, .players = 5, .mode = FourCharacterCode("4H59")});
    EXPECT_EQ(store.Contents().slots.size(), 8u);
    EXPECT_EQ(store.Contents().players.size(), 5u);
    EXPECT_EQ(store.Contents().slots[1]->mode, kSmallMode) << "a still keeps its mode";
  }
  {
    const PoolStore store(folder, {.slots = 2, .players = 2});
    EXPECT_EQ(store.Contents().mode, FourCharacterCode("4H59"));
    EXPECT_EQ(store.Contents().players,
              (std::vector<std::optional<std::uint32_t>>{std::nullopt, 1}));
  }
  EXPECT_EQ(LoadPool(folder).slots.size(), 2u);
}

TEST_F(PoolTest, RefusesAShapeInWhichAStillWouldBeLost) {
  const auto frame = GreyFrame(kSmallMode, 500);
  {
    PoolStore store(folder, {.slots = 5, .mode = kSmallMode});
    store.StoreStill(4, SmallStill(u"Last", frame), frame);
  }
  const std::string document = ReadText(folder / "pool.json");
  EXPECT_THAT(Message([&] { const PoolStore store(folder, {.slots = 4}); }),
              HasSubstr("pool: the pool holds a still in slot 5, but the switcher is to have only "
                        "4; give it more slots"));
  EXPECT_EQ(ReadText(folder / "pool.json"), document);
}

TEST_F(PoolTest, RefusesFoldersOfOthers) {
  std::filesystem::create_directories(folder);
  WriteText(folder / "holiday.jpg", "x");
  EXPECT_THAT(Message([&] { const PoolStore store(folder, {}); }),
              HasSubstr("pool: the folder holds other files and no pool; choose another one"));
  EXPECT_THAT(FilesIn(folder), UnorderedElementsAre("holiday.jpg"));
  EXPECT_THAT(Message([&] { LoadPool(folder); }),
              HasSubstr("the folder holds no pool: pool.json is missing"));
}

TEST_F(PoolTest, RefusesAFileAndWhatIsNotThere) {
  WriteText(home / "pool", "x");
  EXPECT_THAT(Message([&] { const PoolStore store(folder, {}); }),
              HasSubstr("pool: is a file; a pool needs a folder"));
  EXPECT_THAT(Message([&] { const PoolStore store(folder / "below", {}); }),
              HasSubstr("cannot be written: "));
  EXPECT_THAT(Message([&] { LoadPool(home / "nowhere"); }), HasSubstr("there is no such folder"));
}

TEST_F(PoolTest, IsOneProcesssAtATime) {
  const PoolStore first(folder, {});
  EXPECT_THAT(Message([&] { const PoolStore second(folder, {}); }),
              HasSubstr("pool: the pool is in use by "));
  EXPECT_EQ(LoadPool(folder).slots.size(), 20u) << "reading goes on beside it";
}

TEST_F(PoolTest, IsFreeAgainAfterTheShutdown) {
  SwitcherSimulator first({}, folder);
  EXPECT_THAT(Message([&] { SwitcherSimulator second({}, folder); }), HasSubstr("in use by"));
  first.Shutdown();
  SwitcherSimulator second({}, folder);
}

TEST_F(PoolTest, GoesWithTheSimulator) {
  const auto frame = GreyFrame(kSmallMode, 321);
  {
    Scenario scenario;
    scenario.mode = kSmallMode;
    SwitcherSimulator simulator(scenario, folder);
    TestClient client(simulator);
    ASSERT_EQ(client.Connect(), kResultOk);
    EXPECT_EQ(client.Upload(7, u"Stays", frame), "cmpt");
    EXPECT_EQ(client.ShowOnPlayer(0, 7), kResultOk);
    client.Close();
    simulator.Shutdown();
    EXPECT_THAT(simulator.Violations(), IsEmpty());
    EXPECT_EQ(simulator.Frame(7), frame);
  }
  SwitcherSimulator simulator({}, folder);
  EXPECT_EQ(simulator.Contents().mode, kSmallMode);
  EXPECT_EQ(simulator.Contents().slots[7]->name, u"Stays");
  EXPECT_EQ(simulator.Contents().players[0], 7u);
  EXPECT_EQ(simulator.Frame(7), frame);
}

TEST_F(PoolTest, NoticesAFrameThatChanged) {
  const auto frame = GreyFrame(kSmallMode, 500);
  PoolStore store(folder, {.mode = kSmallMode});
  store.StoreStill(0, SmallStill(u"Touched", frame), frame);
  auto other = frame;
  other[1000] ^= 1;
  WriteText(folder / "slot-01.ay10", {reinterpret_cast<const char*>(other.data()), other.size()});
  EXPECT_THAT(Message([&] { LoadFrame(folder, LoadPool(folder), 0); }),
              HasSubstr("slot-01.ay10: the frame is not the one that pool.json tells of"));
  EXPECT_THAT(Message([&] { LoadFrame(folder, LoadPool(folder), 1); }),
              HasSubstr("slot 2 holds no still"));
  WriteText(folder / "slot-01.ay10", "short");
  EXPECT_THAT(Message([&] { LoadPool(folder); }),
              HasSubstr("slot-01.ay10: the frame is missing or has the wrong size"));
}

TEST_F(PoolTest, RendersAPictureThatIsMissing) {
  const auto frame = GreyFrame(kSmallMode, 500);
  {
    PoolStore store(folder, {.mode = kSmallMode});
    store.StoreStill(0, SmallStill(u"", frame), frame);
  }
  const std::string picture = ReadText(folder / "slot-01.png");
  std::filesystem::remove(folder / "slot-01.png");
  std::filesystem::remove(folder / "index.html");
  const PoolStore store(folder, {});
  EXPECT_EQ(ReadText(folder / "slot-01.png"), picture);
  EXPECT_TRUE(std::filesystem::exists(folder / "index.html"));
}

TEST_F(PoolTest, TakesFolderNamesOfEveryKind) {
  const std::filesystem::path named = home.Path() / u"P\u00F6\u00F6l \u4E2D \U0001F3A5 'x'";
  { const PoolStore store(named, {}); }
  EXPECT_EQ(LoadPool(named).slots.size(), 20u);
  EXPECT_THAT(Message([&] { const PoolStore a(named, {}), b(named, {}); }),
              HasSubstr(ToUtf8(u"P\u00F6\u00F6l \u4E2D \U0001F3A5 'x'")));
}

struct Damage {
  const char* what;
  const char* with;
  const char* message;
};

class DamagedPool : public testing::TestWithParam<Damage> {};

TEST_P(DamagedPool, IsRefusedAndLeftAsItIs) {
  const TemporaryFolder home;
  const std::filesystem::path folder = home / "pool";
  const auto frame = GreyFrame(kSmallMode, 500);
  {
    PoolStore store(folder, {.slots = 3, .players = 1, .mode = kSmallMode});
    store.StoreStill(0, SmallStill(u"Still", frame), frame);
  }
  std::string document = ReadText(folder / "pool.json");
  const std::size_t place = document.find(GetParam().what);
  ASSERT_NE(place, std::string::npos);
  document.replace(place, std::string(GetParam().what).size(), GetParam().with);
  WriteText(folder / "pool.json", document);
  EXPECT_THAT(Message([&] { const PoolStore store(folder, {}); }), HasSubstr(GetParam().message));
  EXPECT_THAT(Message([&] { LoadPool(folder); }), HasSubstr(GetParam().message));
  EXPECT_EQ(ReadText(folder / "pool.json"), document);
  EXPECT_EQ(LoadFrame(folder, {.slots = {SmallStill(u"", frame)}}, 0), frame);
}

INSTANTIATE_TEST_SUITE_P(
    All, DamagedPool,
    testing::Values(
        Damage{"}\n", "", "pool.json: parse error"}, Damage{"{", "[", "pool.json: parse error"},
        Damage{"mixdecks pool", "a pond", "pool.json: is not the description of a pool"},
        Damage{"\"version\": 1", "\"version\": 2", "version: is of a later release"},
        Damage{"\"slots\": 3", "\"slots\": 1000", "slots: must be a whole number from 0 to 999"},
        Damage{"\"slots\": 3", "\"slots\": 0", "stills[1]: slot: must be a whole number"},
        Damage{"\"slots\": 3", "\"slotz\": 3", "\"slots\" is missing"},
        Damage{"\"slots\": 3", "\"slots\": 3, \"more\": 1", "unknown key \"more\""},
        Damage{"ntsc", "many", "mode: must be one of ntsc"},
        Damage{"null", "4", "players: must be a whole number from 1 to 3"},
        Damage{"null", "\"1\"", "players: must be a whole number from 1 to 3"},
        Damage{"\"width\": 720", "\"width\": 721", "stills[1]: width: must be 720"},
        Damage{"\"slot\": 1", "\"slot\": 2", "frame: must be \"slot-02.ay10\""},
        Damage{"slot-01.ay10", "../../etc/passwd", "frame: must be \"slot-01.ay10\""},
        Damage{"opaque", "glass", "alpha: must be one of opaque"},
        Damage{"\"name\": \"Still\"", "\"name\": 7", "name: must be a text in quotes"},
        Damage{"Still", "\xFF\xFE", "pool.json: parse error"}));

TEST(PoolDocument, CarriesNamesOfEveryKind) {
  PoolContents contents;
  contents.mode = kSmallMode;
  const std::u16string names[] = {u"",
                                  u"\u0001\u007F\u0085\u2028",
                                  std::u16string(u"a\0b", 3),
                                  u"\U0010FFFF\uFFFE",
                                  u"</script>\"'&",
                                  std::u16string(255, u'W')};
  for (const std::u16string& name : names) {
    contents.slots.push_back(SmallStill(name, {}));
  }
  EXPECT_EQ(ReadPoolDocument(WritePoolDocument(contents), "pool.json"), contents);
}

TEST(PoolDocument, ReplacesWhatIsNoText) {
  PoolContents contents;
  contents.mode = kSmallMode;
  contents.slots = {SmallStill(std::u16string{u'a', char16_t{0xD800}}, {})};
  const PoolContents read = ReadPoolDocument(WritePoolDocument(contents), "pool.json");
  EXPECT_EQ(read.slots[0]->name, u"a\uFFFD");
}

TEST(PoolDocument, NumbersFilesByTheSlot) {
  EXPECT_EQ(FrameFileName(0), "slot-01.ay10");
  EXPECT_EQ(FrameFileName(98), "slot-99.ay10");
  EXPECT_EQ(PictureFileName(99), "slot-100.png");
}

TEST(ContactSheet, EscapesNames) {
  EXPECT_EQ(EscapeHtml(u"<b>\"&'"), "&lt;b&gt;&quot;&amp;&#39;");
  EXPECT_EQ(EscapeHtml(u"a\nb\u007F"), ToUtf8(u"a\u240Ab\u2421"));
  EXPECT_EQ(EscapeHtml(u"\U0001F3A5"), "\xF0\x9F\x8E\xA5");
  PoolContents contents;
  contents.mode = kSmallMode;
  contents.slots = {SmallStill(u"<script>alert(\"x\")</script>", {})};
  contents.players = {0};
  const std::string page = WriteContactSheet(contents);
  EXPECT_EQ(page.find("<script"), std::string::npos);
  EXPECT_THAT(page, HasSubstr("&lt;script&gt;alert(&quot;x&quot;)&lt;/script&gt;"));
}

TEST(ContactSheet, ShowsSlotsPlayersAndTheMode) {
  PoolContents contents;
  contents.mode = FourCharacterCode("10i9");
  contents.slots = {std::nullopt, SmallStill(u"Lower third", {}), SmallStill(u"", {})};
  contents.players = {1, std::nullopt, 0};
  const std::string page = WriteContactSheet(contents);
  EXPECT_THAT(page, StartsWith("<!DOCTYPE html>"));
  EXPECT_THAT(page, HasSubstr("1920 × 1080, mode 10i9"));
  EXPECT_THAT(page, HasSubstr("2 of 3 slots in use"));
  EXPECT_THAT(page, HasSubstr("<img src=\"slot-02.png\" alt=\"Lower third\""));
  EXPECT_THAT(page, HasSubstr("<span class=\"badge\">Player 1</span>"));
  EXPECT_THAT(page, HasSubstr("720 × 486, mode ntsc"));
  EXPECT_THAT(page, HasSubstr("aspect-ratio: 4 / 3"));
  EXPECT_THAT(page, HasSubstr("shows nothing"));
  EXPECT_THAT(page, HasSubstr("slot 1, empty"));
  EXPECT_THAT(page, HasSubstr("(no name)"));
  EXPECT_EQ(page.find("http"), std::string::npos) << "it needs nothing from elsewhere";
}

TEST(ContactSheet, DoesWithoutPlayersAndSlots) {
  PoolContents contents;
  contents.mode = kSmallMode;
  const std::string page = WriteContactSheet(contents);
  EXPECT_EQ(page.find("Media players"), std::string::npos);
  EXPECT_THAT(page, HasSubstr("0 of 0 slots in use"));
}

}  // namespace
}  // namespace mixdecks::simulator
