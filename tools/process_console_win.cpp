#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <windows.h>
// After it.
#include <shellapi.h>

#include <cstdlib>

#include "simulator/unicode.h"
#include "tools/process_console.h"

namespace mixdecks {
namespace {

/// 0 without a console.
UINT formerCodePage = 0;

void RestoreCodePage() {
  if (formerCodePage != 0) SetConsoleOutputCP(formerCodePage);
}

}  // namespace

std::vector<std::string> CommandLineWords(int /*count*/, char** /*arguments*/) {
  // What `main` gets has lost the characters that the system's code page does not have.
  int count = 0;
  wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
  if (wide == nullptr) return {};
  std::vector<std::string> words;
  for (int i = 1; i < count; ++i)
    words.push_back(simulator::ToUtf8(reinterpret_cast<const char16_t*>(wide[i])));
  LocalFree(wide);
  return words;
}

void PrepareStreams() {
  // The console stays, with others who write to it.
  formerCodePage = GetConsoleOutputCP();
  std::atexit(RestoreCodePage);
  SetConsoleOutputCP(CP_UTF8);
  _setmode(_fileno(stdin), _O_BINARY);
}

}  // namespace mixdecks
