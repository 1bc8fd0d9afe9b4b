// The process's own command line and streams, in UTF-8 on every system.
#pragma once

#include <string>
#include <vector>

namespace mixdecks {

/// The words of the command line behind the program's name. Takes what `main` got.
std::vector<std::string> CommandLineWords(int count, char** arguments);

/// Makes the standard streams carry UTF-8 text, and bytes from the standard input unchanged. Once,
/// before they are used. A console has its own code page back when the process exits.
void PrepareStreams();

}  // namespace mixdecks
