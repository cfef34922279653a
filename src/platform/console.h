// How the library talks to the person at the terminal: every message goes to standard
// output and is flushed at once, so that it comes out ahead of whatever the update tool
// prints. C stdio rather than iostreams: loading the library sets up no streams, a write
// that failed in one call does not silence the next, and a host's own buffered lines keep
// their place ahead of the library's.
#ifndef TOVAK_PLATFORM_CONSOLE_H
#define TOVAK_PLATFORM_CONSOLE_H

#include <charconv>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

namespace tovak {

// One call per message, so that an unbuffered standard output gets each line whole. The
// texts come from C strings and literals, so they hold no NUL byte for puts() to stop at.
inline void writeLine(const char* text) {
  std::puts(text);
  std::fflush(stdout);
}

inline void writeLine(const std::string& text) { writeLine(text.c_str()); }

// "<text><number>" and a line end, in one call, for a literal text.
template <std::size_t N>
inline void writeLine(const char (&text)[N], int number) {
  char line[N + 11];  // the text, up to eleven characters of an int, the NUL
  std::memcpy(line, text, N - 1);
  *std::to_chars(line + N - 1, line + sizeof line - 1, number).ptr = '\0';
  writeLine(line);
}

// No line end and no flush: the text waits in the buffer.
inline void writeText(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

}  // namespace tovak

#endif  // TOVAK_PLATFORM_CONSOLE_H
