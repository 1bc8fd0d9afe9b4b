#include "simulator/contact_sheet.h"

#include <algorithm>

#include "simulator/code_text.h"
#include "simulator/contact_sheet_style.h"
#include "simulator/unicode.h"
#include "transfer/video_modes.h"

namespace mixdecks::simulator {
namespace {

std::string Escaped(std::string_view text) {
  return EscapeHtml(ToUtf16(text));
}

std::string Size(std::uint32_t width, std::uint32_t height) {
  return std::to_string(width) + " × " + std::to_string(height);
}

std::string ModeText(std::uint32_t code) {
  const VideoModeInfo& mode = *FindVideoMode(code);
  return Size(mode.width, mode.height) + ", mode " + Escaped(CodeText(code));
}

/// "8.3 MB": enough to tell sizes apart.
std::string ByteText(std::uint64_t bytes) {
  const std::uint64_t tenths = (bytes + 50'000) / 100'000;
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " MB";
}

std::string NameText(const Still& still) {
  return still.name.empty() ? "(no name)" : EscapeHtml(still.name);
}

/// The picture at the shape that a screen gives it: pixels of standard definition are not square.
std::string Picture(std::uint32_t slot, const Still& still) {
  const VideoModeInfo& mode = *FindVideoMode(still.mode);
  const std::string file = PictureFileName(slot);
  return "<a class=\"picture\" href=\"" + file +
         "\" style=\"aspect-ratio: " + std::to_string(mode.aspectNumerator) + " / " +
         std::to_string(mode.aspectDenominator) + "\"><img src=\"" + file + "\" alt=\"" +
         NameText(still) + "\" loading=\"lazy\"></a>";
}

std::string Card(std::string_view kind, const std::string& picture, const std::string& number,
                 const std::string& what) {
  return "<li class=\"" + std::string(kind) + "\">" + picture + "<div class=\"text\">" +
         "<span class=\"number\">" + number + "</span><div class=\"what\">" + what +
         "</div></div></li>\n";
}

std::string Badges(const PoolContents& contents, std::uint32_t slot) {
  std::string badges;
  for (std::size_t player = contents.players.size(); player-- > 0;) {
    if (contents.players[player] != slot) continue;
    badges += "<span class=\"badge\">Player " + std::to_string(player + 1) + "</span>";
  }
  return badges;
}

std::string SlotCard(const PoolContents& contents, std::uint32_t slot) {
  const std::string number = std::to_string(slot + 1);
  const std::string badges = Badges(contents, slot);
  if (!contents.slots[slot]) {
    return Card("empty", "<span class=\"picture\">empty</span>", number,
                badges + "<span class=\"facts\">no still</span>");
  }
  const Still& still = *contents.slots[slot];
  const std::string facts = ModeText(still.mode) + "<br>" + std::string(AlphaText(still.alpha)) +
                            ", <a href=\"" + FrameFileName(slot) + "\">frame</a> of " +
                            ByteText(still.Bytes());
  return Card(badges.empty() ? "still" : "live", Picture(slot, still), number,
              badges + "<bdi class=\"name\">" + NameText(still) + "</bdi><span class=\"facts\">" +
                  facts + "</span>");
}

std::string PlayerCard(const PoolContents& contents, std::size_t player) {
  const std::string number = std::to_string(player + 1);
  const std::optional<std::uint32_t> slot = contents.players[player];
  if (!slot || !contents.slots[*slot]) {
    const std::string shown =
        slot ? "slot " + std::to_string(*slot + 1) + ", empty" : std::string("shows nothing");
    return Card("empty", "<span class=\"picture\">black</span>", number,
                "<span class=\"facts\">" + shown + "</span>");
  }
  const Still& still = *contents.slots[*slot];
  return Card("live", Picture(*slot, still), number,
              "<bdi class=\"name\">" + NameText(still) + "</bdi><span class=\"facts\">slot " +
                  std::to_string(*slot + 1) + "</span>");
}

std::string Header(const PoolContents& contents) {
  const auto used = std::ranges::count_if(
      contents.slots, [](const std::optional<Still>& still) { return still.has_value(); });
  return "<header><h1>Media pool</h1><p>" + ModeText(contents.mode) + "</p><p>" +
         std::to_string(used) + " of " + std::to_string(contents.slots.size()) +
         " slots in use</p></header>\n";
}

}  // namespace

std::string EscapeHtml(std::u16string_view text) {
  std::u16string escaped;
  for (const char16_t unit : text) {
    switch (unit) {
      case u'&':
        escaped += u"&amp;";
        break;
      case u'<':
        escaped += u"&lt;";
        break;
      case u'>':
        escaped += u"&gt;";
        break;
      case u'"':
        escaped += u"&quot;";
        break;
      case u'\'':
        escaped += u"&#39;";
        break;
      case 0x7F:
        escaped += u'\u2421';
        break;
      default:
        escaped += unit < 0x20 ? static_cast<char16_t>(0x2400 + unit) : unit;
    }
  }
  return ToUtf8(escaped);
}

std::string WriteContactSheet(const PoolContents& contents) {
  std::string page =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width\">\n"
      "<title>Media pool</title>\n<style>";
  page += kContactSheetStyle;
  page += "</style>\n</head>\n<body>\n" + Header(contents);
  if (!contents.players.empty()) page += "<h2>Media players</h2>\n<ol class=\"players\">\n";
  for (std::size_t player = 0; player < contents.players.size(); ++player) {
    page += PlayerCard(contents, player);
  }
  if (!contents.players.empty()) page += "</ol>\n";
  page += "<h2>Stills</h2>\n<ol class=\"stills\">\n";
  for (std::uint32_t slot = 0; slot < contents.slots.size(); ++slot) {
    page += SlotCard(contents, slot);
  }
  page +=
      "</ol>\n<footer>A simulated switcher of Mixdecks. Reload to see what changed.</footer>\n"
      "</body>\n</html>\n";
  return page;
}

}  // namespace mixdecks::simulator
