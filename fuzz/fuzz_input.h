// How both fuzz targets read their input: tokens separated by '\n', the first one being
// the command word.
#ifndef TOVAK_FUZZ_FUZZ_INPUT_H
#define TOVAK_FUZZ_FUZZ_INPUT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

inline std::vector<std::string> tokensOf(const uint8_t* data, std::size_t size) {
  std::vector<std::string> tokens(1);
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == '\n')
      tokens.emplace_back();
    else
      tokens.back().push_back(static_cast<char>(data[i]));
  }
  return tokens;
}

#endif  // TOVAK_FUZZ_FUZZ_INPUT_H
