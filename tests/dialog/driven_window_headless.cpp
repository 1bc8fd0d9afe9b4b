#include "dialog/dialog_templates.h"
#include "dialog/headless_dialog.h"
#include "dialog/window_messages.h"
#include "tests/dialog/driven_window.h"

namespace mixdecks::testing {
namespace {

constexpr std::chrono::seconds kPatience(20);

class DrivenHeadlessWindow final : public DrivenWindow {
 public:
  explicit DrivenHeadlessWindow(WindowProcedure procedure)
      : dialog_(kExportDialogTemplate, std::move(procedure)) {
    dialog_.Send(kWmInitDialog, 0, 0);
  }

  WindowOperations& Operations() override { return dialog_; }
  void Click(int button) override { dialog_.Click(button); }
  void Type(int edit, std::u16string_view keys) override { dialog_.Type(edit, keys); }
  void PasteOver(int edit, const std::u16string& text) override { dialog_.PasteOver(edit, text); }
  void Choose(int list, std::int32_t index) override { dialog_.Choose(list, index); }

  std::u16string Caption() override { return dialog_.Caption(); }
  std::u16string Text(int control) override { return dialog_.Control(control).text; }
  bool IsEnabled(int control) override { return dialog_.Control(control).enabled; }
  std::vector<std::u16string> Items(int list) override { return dialog_.Control(list).items; }
  std::optional<std::uint32_t> TextColour(int edit) override { return dialog_.TextColour(edit); }
  WindowPlace Place() override {
    return {dialog_.left, dialog_.top, dialog_.placement.width, dialog_.placement.height};
  }
  bool WasRedrawn(int control) override {
    const int redraws = dialog_.Control(control).redraws;
    return std::exchange(knownRedraws_[control], redraws) != redraws;
  }
  bool HandleMessagesUntil(const std::function<bool()>& done) override {
    return dialog_.HandleMessagesUntil(done, kPatience);
  }

 private:
  HeadlessDialog dialog_;
  std::map<int, int> knownRedraws_;
};

std::unique_ptr<DrivenWindow> OpenHeadless(WindowProcedure procedure) {
  return std::make_unique<DrivenHeadlessWindow>(std::move(procedure));
}

std::intptr_t RunHeadless(WindowProcedure procedure) {
  HeadlessDialog dialog(kExportDialogTemplate, std::move(procedure));
  return dialog.RunModal(0, [](HeadlessDialog&) {});
}

}  // namespace

WindowAdapter HeadlessAdapter() {
  return {"Headless", [] { return true; }, OpenHeadless, RunHeadless};
}

}  // namespace mixdecks::testing
