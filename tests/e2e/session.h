// What a host process has: the loaded library with a document, and a switcher for it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "simulator/switcher_simulator.h"
#include "tests/e2e/com_class.h"
#include "tests/e2e/dialog_driver.h"
#include "tests/e2e/sample_picture.h"
#include "tools/memory_host/memory_host.h"
#include "tools/plugin_host/plugin_library.h"

namespace mixdecks::e2e {

/// The built library, beside the tests.
inline constexpr const wchar_t* kPluginFile = L"Mixdecks.8bp";

/// What a user does while a dialog is open; runs on a thread of its own.
using User = std::function<void(DialogDriver&)>;

/// The loaded library and a host with a document. The switcher is whatever COM finds.
class HostedPlugin {
 public:
  explicit HostedPlugin(HostDocument document) : host(std::move(document)) {}
  /// Fails the test when the plug-in broke a rule of the host.
  ~HostedPlugin();

  /// Runs a selector while `user` works; closes what the user left open. The result word.
  std::int16_t Start(const User& user) { return Run(Selector::kStart, user); }
  std::int16_t About(const User& user) { return Run(Selector::kAbout, user); }

  PluginLibrary library{kPluginFile};
  MemoryHost host;

 private:
  std::int16_t Run(Selector selector, const User& user);
};

/// The same with a switcher of its own in this process.
class Session : public HostedPlugin {
 public:
  explicit Session(simulator::Scenario scenario = {},
                   HostDocument document = DocumentOf(BusyPicture(64, 36), true));
  /// Ends the switcher and fails the test when the plug-in broke other rules than expected.
  ~Session();

  std::vector<std::string> expectedViolations;
  simulator::SwitcherSimulator simulator;
  ScopedComClass comClass{simulator};
};

/// The still in a slot (from 0); fails the test when there is none.
simulator::Still StillIn(const simulator::SwitcherSimulator& simulator, std::uint32_t slot);

}  // namespace mixdecks::e2e
