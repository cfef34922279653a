// How the library talks to the person at the terminal: every message goes to standard
// output and is flushed at once, so that it comes out ahead of whatever the update tool
// prints. C stdio rather than iostreams: loading the library sets up no streams, a write
// that failed in one call does not silence the next, and a host's own buffered lines keep
// their place ahead of the library's.
#ifndef TOVAK_PLATFORM_CONSOLE_H
#define TOVAK_PLATFORM_CONSOLE_H

#include <cstdio>
#include <string>
#include <string_view>

namespace tovak {

// One call per message, so that an unbuffered standard output gets each line whole. The
// texts hold no NUL byte for puts() to stop at: they come from C strings and literals.
inline void writeLine(const char* text) {
  std::puts(text);
  std::fflush(stdout);
}

inline void writeLine(const std::string& text) { writeLine(text.c_str()); }

// No line end and no flush: the text waits in the buffer.
inline void writeText(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

}  // namespace tovak

#endif  // TOVAK_PLATFORM_CONSOLE_H
