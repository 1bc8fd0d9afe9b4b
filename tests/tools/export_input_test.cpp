// What users can type and hand in wrongly, and what they are told.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include <nlohmann/json.hpp>

#include "tests/tools/command_bench.h"
#include "tools/video_mode_name.h"
#include "transfer/video_modes.h"

namespace mixdecks {
namespace {

using test::Bytes;
using test::CommandBench;
using test::CommandResult;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

class ExportInputTest : public testing::Test {
 protected:
  /// Expects a message with a remedy, the exit code, and no trace of a pool.
  void ExpectRefusal(const std::vector<std::string>& words, int exitCode, std::string_view told) {
    const CommandResult result = bench_.Export(words);
    SCOPED_TRACE(testing::PrintToString(words));
    EXPECT_EQ(result.exitCode, exitCode) << result.out;
    EXPECT_THAT(result.err, AllOf(StartsWith("mixdecks: "), HasSubstr(told)));
    EXPECT_EQ(result.out, "");
    EXPECT_FALSE(std::filesystem::exists(bench_.Pool()));
  }
  std::string Picture() const {
    return bench_.Write("good.ppm", test::PnmFile('6', 1, 1, {1, 2, 3}));
  }

  CommandBench bench_;
};

TEST_F(ExportInputTest, RefusesFilesThatAreNoPictures) {
  ExpectRefusal({bench_.Path("missing.png")}, 1, "No such file");
  ExpectRefusal({bench_.Path("")}, 1, "it is a folder");
  ExpectRefusal({bench_.Write("empty.png", "")}, 1, "the file is empty");
  ExpectRefusal({bench_.Write("text.png", "hello")}, 1, "not a picture");
  Bytes cut = test::PngFile(2, 1, test::kPngRgb, 8, {1, 2, 3, 4, 5, 6});
  cut.resize(cut.size() - 20);
  ExpectRefusal({bench_.Write("cut.png", cut)}, 1, "the file ends early");
}

TEST_F(ExportInputTest, RefusesSizesThatNoDocumentHas) {
  const auto png = [&](std::uint32_t width, std::uint32_t height) {
    return bench_.Write("size.png", test::PngFile(width, height, test::kPngRgb, 8, {}));
  };
  ExpectRefusal({png(0, 0)}, 1, "0 x 0");
  ExpectRefusal({png(32768, 1)}, 1, "at most 32767 x 32767");
  ExpectRefusal({png(0xFFFFFFFF, 0xFFFFFFFF)}, 1, "too large");
  ExpectRefusal({png(32767, 32767)}, 1, "more than 2 GB");
}

TEST_F(ExportInputTest, ExportsThinAndLongPictures) {
  const std::string wide =
      bench_.Write("wide.pgm", test::PnmFile('5', 32767, 1, Bytes(32767, 200)));
  const CommandResult result = bench_.Export({wide, "--rgb", "--mode", "ntsc"});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_THAT(result.out, HasSubstr("32767 x 1"));
}

TEST_F(ExportInputTest, LetsThePluginRefuseOtherModesThanRgb) {
  const std::pair<std::string, const char*> files[] = {
      {bench_.Write("grey.png", test::PngFile(2, 1, test::kPngGrey, 8, {1, 2})), "greyscale"},
      {bench_.Write("palette.png", test::PngFile(2, 1, test::kPngIndexed, 8, {1, 2})), "indexed"},
      {bench_.Write("cmyk.jpg", test::EmptyJpegFile(2, 1, 4)), "CMYK"},
      {bench_.Write("lab.psd", test::PsdFile({.mode = 9, .channels = {{1}, {2}, {3}}})), "Lab"},
  };
  for (const auto& [file, mode] : files) {
    ExpectRefusal({file}, 1, mode);
    ExpectRefusal({file}, 1, "not in RGB mode");
    ExpectRefusal({file}, 1, "-30201");
    const bool ours = mode == std::string_view("greyscale") || mode == std::string_view("indexed");
    ExpectRefusal({file}, 1, ours ? "give --rgb" : "convert it to RGB in an image editor");
  }
  EXPECT_EQ(bench_.Export({files[0].first, "--rgb", "--mode", "ntsc"}).exitCode, 0);
  EXPECT_EQ(bench_.Export({files[1].first, "--rgb", "--mode", "ntsc"}).exitCode, 0);
}

TEST_F(ExportInputTest, WarnsOfAPictureToBeTurned) {
  Bytes png = test::PngFile(1, 1, test::kPngRgb, 8, {1, 2, 3});
  test::ByteWriter exif;
  exif.Text("MM").Big16(42).Big32(8).Big16(1).Big16(0x0112).Big16(3).Big32(1).Big16(6).Big16(0);
  const Bytes chunk = test::PngChunk("eXIf", exif.Done());
  constexpr std::ptrdiff_t kBehindHeader = 33;
  png.insert(png.begin() + kBehindHeader, chunk.begin(), chunk.end());
  const CommandResult result = bench_.Export({bench_.Write("held.png", png), "--mode", "ntsc"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_THAT(result.err, HasSubstr("asks to be turned or mirrored (EXIF orientation 6); mixdecks "
                                    "exports it as it lies"));
}

TEST_F(ExportInputTest, RefusesOptionsOutOfRange) {
  const std::string picture = Picture();
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"--slot", "0"}, "slots count from 1"},
      {{"--slot", "-3"}, "slots count from 1"},
      {{"--slot", "99999999999"}, "there is no such slot"},
      {{"--slot", "one"}, "--slot"},
      {{"--player", "0"}, "from 1 to 4"},
      {{"--player", "5"}, "from 1 to 4"},
      {{"--mode", "10x9"}, "ntsc, pall"},
      {{"--mode", ""}, "no such video mode"},
      {{"--address", "1.2.3"}, "not a dotted IPv4 address"},
      {{"--address", "255.255.255.255"}, "not a dotted IPv4 address"},
      {{"--address", "1.2.3.256"}, "not a dotted IPv4 address"},
      {{"--address", "switcher"}, "not a dotted IPv4 address"},
      {{"--depth", "12"}, "8 or 16"},
      {{"--timeout", "0"}, "out of range"},
      {{"--timeout", "-1"}, "out of range"},
      {{"--timeout", "nan"}, "out of range"},
      {{"--timeout", "soon"}, "--timeout"},
      {{"--name", "\xFF"}, "not valid UTF-8"},
      {{"--premultiply", "--no-premultiply"}, "excludes"},
      {{"--slot", "1", "--slot", "2"}, "give --slot once"},
      {{"--colour", "red"}, "--help"},
      {{"another.png"}, "--help"},
  };
  for (const auto& [words, told] : cases) {
    std::vector<std::string> all = {picture};
    all.insert(all.end(), words.begin(), words.end());
    ExpectRefusal(all, 2, told);
  }
  ExpectRefusal({}, 2, "IMAGE is required");
  ExpectRefusal({"-", "--alpha-channel", "-"}, 2, "standard input can be read once");
  EXPECT_THAT(bench_.Run({"pool", "--pool", ""}).err, HasSubstr("--pool: the name is empty"));
  EXPECT_THAT(bench_.Run({"export", picture, "--pool", ""}).err,
              HasSubstr("--pool: the name is empty"));
}

TEST_F(ExportInputTest, RefusesASlotBeyondTheSwitchers) {
  const CommandResult result = bench_.Export({Picture(), "--slot", "21", "--mode", "ntsc"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.err, HasSubstr("the switcher has 20 slots"));
  bench_.ExpectWholePool();
}

TEST_F(ExportInputTest, RefusesAlphaChannelsThatDoNotFit) {
  const std::string picture = Picture();
  const auto mask = [&](const char* name, char kind, std::uint32_t width) {
    return bench_.Write(name, test::PnmFile(kind, width, 1, Bytes(3 * width, 7)));
  };
  ExpectRefusal({picture, "--alpha-channel", mask("a.pgm", '5', 2)}, 1, "2 x 1");
  ExpectRefusal({picture, "--alpha-channel", mask("b.ppm", '6', 1)}, 1, "greyscale");
  ExpectRefusal({picture, "--alpha-channel", bench_.Path("none.pgm")}, 1, "none.pgm");

  const std::string good = mask("c.pgm", '5', 1);
  const CommandResult two =
      bench_.Export({picture, "--alpha-channel", good, "--alpha-channel", good});
  EXPECT_EQ(two.exitCode, 1);
  EXPECT_THAT(two.err, HasSubstr("more than one extra alpha channel"));
}

TEST_F(ExportInputTest, RefusesFoldersThatAreNotItsOwn) {
  const std::string picture = Picture();
  const CommandResult foreign = bench_.Run({"export", picture, "--pool", bench_.Path("")});
  EXPECT_EQ(foreign.exitCode, 1);
  EXPECT_THAT(foreign.err, HasSubstr("other files"));
  const CommandResult file = bench_.Run({"export", picture, "--pool", picture});
  EXPECT_EQ(file.exitCode, 1);
  EXPECT_THAT(file.err, HasSubstr("good.ppm"));
  const CommandResult unwritable = bench_.Run({"export", picture, "--pool", picture + "/pool"});
  EXPECT_EQ(unwritable.exitCode, 1);
  EXPECT_THAT(unwritable.err, HasSubstr("pool: cannot be written"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(bench_.Path("")), {}), 1);
}

TEST_F(ExportInputTest, RefusesAPoolThatWasDamaged) {
  ASSERT_EQ(bench_.Export({Picture(), "--mode", "ntsc"}).exitCode, 0);
  bench_.Write("pool/pool.json", R"({"version": )");
  const CommandResult result = bench_.Export({Picture()});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.err, HasSubstr("pool.json"));
  EXPECT_THAT(bench_.Run({"pool", "--pool", bench_.Pool()}).err, HasSubstr("pool.json"));
}

TEST_F(ExportInputTest, RefusesMalformedScenarios) {
  const std::string picture = Picture();
  const std::pair<const char*, const char*> cases[] = {
      {"", "scenario.json"},
      {"{", "scenario.json"},
      {"[]", "scenario.json"},
      {R"({"slot": 3})", "slot"},
      {R"({"slots": -1})", "slots"},
      {R"({"mode": "none"})", "mode"},
      {R"({"script": [{"at": "Nowhere", "do": "fail"}]})", "GetVideoMode"},
      {R"({"script": [{"at": "GetCount", "do": "explode"}]})", "disconnect"},
  };
  for (const auto& [text, told] : cases) {
    ExpectRefusal({picture, "--scenario", bench_.Write("scenario.json", text)}, 1, told);
  }
  ExpectRefusal({picture, "--scenario", bench_.Path("missing.json")}, 1, "missing.json");
}

TEST_F(ExportInputTest, TellsErrorsAsJsonToo) {
  const CommandResult result = bench_.Export({bench_.Path("missing.png"), "--json"});
  EXPECT_EQ(result.exitCode, 1);
  const nlohmann::json json = nlohmann::json::parse(result.out);
  EXPECT_EQ(json["error"]["exitCode"], 1);
  EXPECT_EQ(json["error"]["what"], bench_.Path("missing.png"));
  EXPECT_THAT(result.err, StartsWith("mixdecks: "));
}

TEST_F(ExportInputTest, TellsEveryErrorAsJson) {
  const std::string foreign = bench_.Path("foreign");
  std::filesystem::create_directory(foreign);
  bench_.Write("foreign/letter.txt", "Dear");
  const std::string scenario = bench_.Write("scenario.json", R"({"slot": 3})");
  const struct {
    std::vector<std::string> words;
    int exitCode;
    std::string what;
    const char* why;
    const char* remedy;
  } cases[] = {
      {{"export", "--json"}, 2, "mixdecks export", "IMAGE is required", "--help"},
      {{"import", "--json"}, 2, "command line", "", "--help"},
      {{"export", Picture(), "--slot", "x", "--json"}, 2, "mixdecks export", "--slot", "--help"},
      {{"pool", "--pool", bench_.Path("none"), "--json"},
       1,
       bench_.Path("none"),
       "there is no such folder",
       "an export makes a pool"},
      {{"export", Picture(), "--pool", foreign, "--json"},
       1,
       foreign,
       "the folder holds other files and no pool",
       "choose another one"},
      {{"export", Picture(), "--scenario", scenario, "--json"},
       1,
       scenario,
       "unknown key \"slot\"",
       "put the scenario right"},
  };
  for (const auto& fault : cases) {
    SCOPED_TRACE(testing::PrintToString(fault.words));
    const CommandResult result = bench_.Run(fault.words);
    EXPECT_EQ(result.exitCode, fault.exitCode);
    const nlohmann::json error = nlohmann::json::parse(result.out)["error"];
    EXPECT_EQ(error["exitCode"], fault.exitCode);
    EXPECT_EQ(error["what"], fault.what);
    EXPECT_THAT(error["why"].get<std::string>(), HasSubstr(fault.why));
    EXPECT_THAT(error["remedy"].get<std::string>(), HasSubstr(fault.remedy));
  }
}

TEST_F(ExportInputTest, TellsWarningsInTheResultToo) {
  const std::vector<std::string> words = {Picture(), "--json", "--mode", "ntsc"};
  EXPECT_EQ(nlohmann::json::parse(bench_.Export(words).out)["warnings"], nlohmann::json::array());
  std::vector<std::string> longName = words;
  longName.insert(longName.end(), {"--name", std::string(300, 'n')});
  EXPECT_EQ(nlohmann::json::parse(bench_.Export(longName).out)["warnings"],
            nlohmann::json({"the name was cut to 254 characters"}));
}

TEST_F(ExportInputTest, NamesTheStillAfterTheFile) {
  const std::string picture =
      bench_.Write("Günther.v2.final.ppm", test::PnmFile('6', 1, 1, {1, 2, 3}));
  const CommandResult first = bench_.Export({picture, "--json", "--mode", "ntsc"});
  EXPECT_EQ(nlohmann::json::parse(first.out)["name"], "Günther");
  const CommandResult second = bench_.Export({picture, "--json", "--name", "\"Żółć\" 🎬"});
  const nlohmann::json report = nlohmann::json::parse(second.out);
  EXPECT_EQ(report["name"], "\"Żółć\" 🎬");
  EXPECT_EQ(report["replaced"], "Günther");
  EXPECT_EQ(nlohmann::json::parse(bench_.Export({picture, "--json", "--name", ""}).out)["name"],
            "");
}

TEST_F(ExportInputTest, KeepsNothingFromOneExportToTheNext) {
  const auto report = [this](std::vector<std::string> words) {
    words.insert(words.begin(), {Picture(), "--json", "--mode", "ntsc"});
    const CommandResult result = bench_.Export(words);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    return nlohmann::json::parse(result.out);
  };
  const std::string scenario =
      bench_.Write("scenario.json", R"({"addresses": ["10.0.0.7", "192.168.10.240"]})");
  const nlohmann::json first = report({"--slot", "7", "--player", "2", "--no-premultiply", "--name",
                                       "first", "--address", "10.0.0.7", "--scenario", scenario});
  EXPECT_EQ(first["slot"], 7);
  EXPECT_EQ(first["player"], 2);
  EXPECT_EQ(first["premultiply"], false);
  bench_.Write("scenario.json", R"({"addresses": ["192.168.10.240"]})");
  const nlohmann::json second = report({"--scenario", scenario});
  EXPECT_EQ(second["slot"], 1);
  EXPECT_EQ(second["player"], nullptr);
  EXPECT_EQ(second["premultiply"], true);
  EXPECT_EQ(second["name"], "good");
  const nlohmann::json players =
      nlohmann::json::parse(bench_.Run({"pool", "--pool", bench_.Pool(), "--json"}).out)["stills"];
  EXPECT_EQ(players[0]["players"], nlohmann::json::array());
  EXPECT_EQ(players[1]["players"], nlohmann::json({2}));
}

TEST_F(ExportInputTest, WritesControlCharactersOut) {
  const std::string name = "two\nlines \x1B[31m\u0085 \u00A0\u00E9";
  const char* const printable = "two\\nlines \\x1B[31m\\x85 \u00A0\u00E9";
  const std::vector<std::string> words = {Picture(), "--name", name, "--mode", "ntsc"};
  EXPECT_THAT(bench_.Export(words).out, HasSubstr(printable));
  EXPECT_THAT(bench_.Export(words).out, HasSubstr(std::string("replaced      \"") + printable));
  EXPECT_THAT(bench_.Run({"pool", "--pool", bench_.Pool()}).out, HasSubstr(printable));
  EXPECT_THAT(bench_.Export({name + ".png"}).err, HasSubstr(printable));
  const CommandResult json = bench_.Run({"pool", "--pool", bench_.Pool(), "--json"});
  EXPECT_EQ(nlohmann::json::parse(json.out)["stills"][0]["name"], name);
}

TEST_F(ExportInputTest, WarnsOfAStillWithoutAName) {
  const std::string hidden = bench_.Write(".hidden.ppm", test::PnmFile('6', 1, 1, {1, 2, 3}));
  const CommandResult result = bench_.Export({hidden, "--mode", "ntsc"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_THAT(result.err, HasSubstr("begins with a dot; give one with --name"));
  EXPECT_THAT(bench_.Export({Picture(), "--name", ""}).err, HasSubstr("gets no name"));
  EXPECT_EQ(bench_.Export({Picture()}).err, "");
}

TEST_F(ExportInputTest, CallsVideoModesByTheirNames) {
  std::set<std::string> names;
  for (const VideoModeInfo& mode : VideoModes()) {
    const std::string name(NameOfVideoMode(mode.code));
    SCOPED_TRACE(name);
    names.insert(name);
    const std::uint32_t lines = mode.height == 486 ? 525u : mode.height == 576 ? 625u : mode.height;
    const std::size_t scan = name.find_first_of("ip");
    EXPECT_EQ(name.substr(0, scan), std::to_string(lines));
    const double rate = std::stod(name.substr(scan + 1));
    EXPECT_EQ(mode.frameRateFamily == 30, rate == 59.94 || rate == 29.97);
    EXPECT_EQ(mode.aspectNumerator == 4, name.ends_with(" 4:3"));
  }
  EXPECT_EQ(names.size(), VideoModes().size());
  EXPECT_EQ(NameOfVideoMode(0), "unknown");

  const std::vector<std::string> words = {Picture(), "--mode", "10i9"};
  EXPECT_THAT(bench_.Export(words).out, HasSubstr("10i9 (1080i59.94), 1920 x 1080"));
  EXPECT_EQ(nlohmann::json::parse(bench_.Export({Picture(), "--json"}).out)["modeName"],
            "1080i59.94");
  EXPECT_THAT(bench_.Run({"pool", "--pool", bench_.Pool()}).out,
              HasSubstr("video mode 10i9 (1080i59.94), 20 slots"));
  EXPECT_THAT(bench_.Run({"export", "--help"}).out, HasSubstr("10i9  1080i59.94"));
}

TEST_F(ExportInputTest, CutsLongNamesAndSaysSo) {
  const std::string name(300, 'n');
  const CommandResult cut = bench_.Export({Picture(), "--json", "--name", name, "--mode", "ntsc"});
  EXPECT_EQ(nlohmann::json::parse(cut.out)["name"], name.substr(0, 254));
  EXPECT_THAT(cut.err, HasSubstr("cut to 254"));
  const nlohmann::json stills =
      nlohmann::json::parse(bench_.Run({"pool", "--pool", bench_.Pool(), "--json"}).out)["stills"];
  EXPECT_EQ(stills[0]["name"], name.substr(0, 254)) << "the pool has the name that was told";

  // A character of two units is not cut in half.
  const std::string film = std::string(253, 'n') + "🎬";
  const CommandResult whole = bench_.Export({Picture(), "--json", "--name", film});
  EXPECT_EQ(nlohmann::json::parse(whole.out)["name"], std::string(253, 'n'));
}

TEST_F(ExportInputTest, ListsThePool) {
  EXPECT_EQ(bench_.Run({"pool", "--pool", bench_.Pool()}).exitCode, 1);
  ASSERT_EQ(bench_.Export({Picture(), "--slot", "3", "--player", "2", "--mode", "ntsc"}).exitCode,
            0);
  const CommandResult text = bench_.Run({"pool", "--pool", bench_.Pool()});
  EXPECT_EQ(text.exitCode, 0);
  EXPECT_THAT(text.out, HasSubstr("20 slots (1 used), 4 media players"));
  EXPECT_THAT(text.out, HasSubstr("   3  720x486    opaque         2        good"));
  const nlohmann::json json =
      nlohmann::json::parse(bench_.Run({"pool", "--pool", bench_.Pool(), "--json"}).out);
  EXPECT_EQ(json["mode"], "ntsc");
  ASSERT_EQ(json["stills"].size(), 1u);
  EXPECT_EQ(json["stills"][0]["slot"], 3);
  EXPECT_EQ(json["stills"][0]["players"], nlohmann::json({2}));
}

TEST_F(ExportInputTest, HelpsEverywhere) {
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"--help"}, {"export", "--help"}, {"pool", "--help"}}) {
    const CommandResult help = bench_.Run(words);
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_THAT(help.out, AllOf(HasSubstr("Usage: mixdecks"), HasSubstr("Examples:")));
  }
  EXPECT_THAT(bench_.Run({"--version"}).out, StartsWith("mixdecks 1."));
  EXPECT_EQ(bench_.Run({}).exitCode, 2);
  EXPECT_EQ(bench_.Run({"import"}).exitCode, 2);
}

}  // namespace
}  // namespace mixdecks
