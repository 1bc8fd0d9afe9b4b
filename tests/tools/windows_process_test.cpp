// The built command as a file and as a process, as Windows sees it.

#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "tests/simulator/temporary_folder.h"

namespace mixdecks {
namespace {

constexpr const char* kCommand = "mixdecks.exe";

/// The command's exit code; it shares this process's console.
DWORD RunCommand(const std::string& words) {
  std::string line = std::string(kCommand) + " " + words;
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process)) {
    ADD_FAILURE() << "the command cannot be started: error " << GetLastError();
    return ~DWORD{0};
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code = ~DWORD{0};
  GetExitCodeProcess(process.hProcess, &code);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  return code;
}

TEST(CommandFile, IsShippedWithoutSymbols) {
  const std::string file = test::ReadText(kCommand);
  ASSERT_GE(file.size(), sizeof(IMAGE_DOS_HEADER));
  IMAGE_DOS_HEADER start{};
  std::memcpy(&start, file.data(), sizeof start);
  IMAGE_NT_HEADERS64 headers{};
  ASSERT_GE(file.size(), static_cast<std::size_t>(start.e_lfanew) + sizeof headers);
  std::memcpy(&headers, file.data() + start.e_lfanew, sizeof headers);
  EXPECT_EQ(headers.Signature, DWORD{IMAGE_NT_SIGNATURE});
  EXPECT_EQ(headers.FileHeader.NumberOfSymbols, 0u);
  EXPECT_EQ(file.find(".debug_"), std::string::npos);
}

/// A console with a code page other than the command's.
class CommandOnConsoleTest : public testing::Test {
 protected:
  void SetUp() override {
    if (GetConsoleOutputCP() == 0) {  // there is none, or none that has one
      FreeConsole();
      ASSERT_TRUE(AllocConsole()) << "error " << GetLastError();
    }
    former_ = GetConsoleOutputCP();
    ASSERT_TRUE(SetConsoleOutputCP(kCodePage)) << "error " << GetLastError();
  }
  void TearDown() override {
    EXPECT_EQ(GetConsoleOutputCP(), kCodePage);
    SetConsoleOutputCP(former_);
  }

 private:
  static constexpr UINT kCodePage = 437;
  UINT former_ = 0;
};

TEST_F(CommandOnConsoleTest, LeavesTheCodePage) {
  EXPECT_EQ(RunCommand("--version"), 0u);
}

TEST_F(CommandOnConsoleTest, LeavesTheCodePageAfterAFault) {
  EXPECT_EQ(RunCommand("--no-such-option"), 2u);
}

}  // namespace
}  // namespace mixdecks
