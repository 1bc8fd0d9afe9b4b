// The about box as a real window.
#include "dialog/window_messages.h"
#include "tests/e2e/host_window.h"
#include "tests/e2e/plugin_fixture.h"

namespace mixdecks::e2e {
namespace {

class AboutBox : public PluginTest {
 protected:
  static std::string TextOf(HWND box, int control) {
    char text[128] = {};
    GetDlgItemTextA(box, control, text, sizeof text);
    return text;
  }
};

TEST_F(AboutBox, SaysVersionAndNotice) {
  Session session;
  session.host.ResultWord() = 77;
  session.About([](DialogDriver& dialog) {
    const HWND box = dialog.WaitForAboutBox();
    ASSERT_NE(box, nullptr);
    dialog.WaitUntil("the version is filled in",
                     [&] { return TextOf(box, kAboutVersion) == "Version 1.0"; });
    EXPECT_EQ(TextOf(box, kAboutNotice), "Copyright (C) Tollenmark Design. All rights reserved.");
  });
  EXPECT_EQ(session.host.DataWord(), 0) << "nothing else is touched";
}

TEST_F(AboutBox, StandsOverTheHostsWindow) {
  Session session;
  const HostWindow host(-700, 40, 900, 600);
  session.host.SetParentWindow(host.Get());
  session.About([&](DialogDriver& dialog) {
    const HWND box = dialog.WaitForAboutBox();
    ASSERT_NE(box, nullptr);
    SendMessageW(box, WM_NULL, 0, 0);  // answered once it is filled in and placed
    RECT place{};
    GetWindowRect(box, &place);
    const POINT corner = PlaceOver({-700, 40, 200, 640}, place);
    EXPECT_EQ(place.left, corner.x);
    EXPECT_EQ(place.top, corner.y);
    EXPECT_EQ(GetWindow(box, GW_OWNER), host.Get());
  });
}

TEST_F(AboutBox, ClosesAtKeysAndAClick) {
  Session session;
  const auto closeWith = [&](UINT message, WPARAM first) {
    session.About([&](DialogDriver& dialog) {
      const HWND box = dialog.WaitForAboutBox();
      ASSERT_NE(box, nullptr);
      dialog.WaitUntil("the version is filled in",
                       [&] { return TextOf(box, kAboutVersion) == "Version 1.0"; });
      PostMessageW(box, message, first, 1);
      dialog.WaitUntilClosed();
    });
  };
  closeWith(WM_KEYDOWN, VK_ESCAPE);
  closeWith(WM_KEYDOWN, VK_RETURN);
  closeWith(WM_CHAR, VK_ESCAPE);
  closeWith(WM_CHAR, VK_RETURN);
  closeWith(WM_LBUTTONDOWN, MK_LBUTTON);
}

TEST_F(AboutBox, StaysAtOtherKeys) {
  Session session;
  session.About([](DialogDriver& dialog) {
    const HWND box = dialog.WaitForAboutBox();
    ASSERT_NE(box, nullptr);
    for (const WPARAM key : {'a', ' ', '\t'})
      PostMessageW(box, WM_CHAR, key, 1);
    EXPECT_EQ(SendMessageW(box, WM_CHAR, 'b', 1), 0);
    EXPECT_TRUE(IsWindow(box));
    PostMessageW(box, WM_LBUTTONDOWN, MK_LBUTTON, 0);
    dialog.WaitUntilClosed();
  });
}

}  // namespace
}  // namespace mixdecks::e2e
