// How the library talks to the person at the terminal: every message goes to standard
// output and is flushed at once, so that it comes out ahead of whatever the update tool
// prints. Going through std::cout lets in-process callers (tests, fuzzer) capture it.
#ifndef TOVAK_PLATFORM_CONSOLE_H
#define TOVAK_PLATFORM_CONSOLE_H

#include <iostream>
#include <string_view>

namespace tovak {

inline void writeLine(std::string_view text) { std::cout << text << std::endl; }

// No line end and no flush: the text waits in the stream's buffer.
inline void writeText(std::string_view text) { std::cout << text; }

}  // namespace tovak

#endif  // TOVAK_PLATFORM_CONSOLE_H
