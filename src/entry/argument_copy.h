// Private copies of the caller's argument strings. dll_main parses the copies and blanks
// the caller's own strings, so that user names and passwords typed on the legacy line do
// not linger in the launcher's process listing.
#ifndef TOVAK_ENTRY_ARGUMENT_COPY_H
#define TOVAK_ENTRY_ARGUMENT_COPY_H

#include <cstddef>

namespace tovak {

class ArgumentCopy {
 public:
  // Copies argv[0..argc-1]. If memory runs out the process ends at once with status 0 and
  // prints nothing: that is what launchers of this library have always seen.
  ArgumentCopy(int argc, char** argv);
  ~ArgumentCopy();
  ArgumentCopy(const ArgumentCopy&) = delete;
  ArgumentCopy& operator=(const ArgumentCopy&) = delete;

  int count() const { return count_; }
  char** strings() const { return strings_; }

  // Overwrites every byte of the copied argv[1..argc-1] with a blank, keeping each length;
  // argv[0] stays. The lengths are the copies': the strings are not measured again.
  void blankOriginals() const;

 private:
  // A launcher's usual vector fits here, with no allocation beyond the copies themselves (the
  // allocations of a call are budgeted: bench/costs.py); a longer one gets a table sized from
  // argc.
  static constexpr int kInlineCount = 50;

  char** originals_;
  int count_ = 0;
  char** strings_ = nullptr;
  std::size_t* lengths_ = nullptr;
  char* inlineStrings_[kInlineCount];
  std::size_t inlineLengths_[kInlineCount];
};

}  // namespace tovak

#endif  // TOVAK_ENTRY_ARGUMENT_COPY_H
