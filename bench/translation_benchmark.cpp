// The cost of one whole translation as dll_main does it short of running the tool: argument
// copy and blanking, parsing, shape check, dispatch, the translator's run and the result.
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

#include "entry/translation.h"
#include "library_call.h"

namespace {

// The arguments live in one buffer so that restoring them after each blanking is a single
// memcpy, a few nanoseconds next to the translation itself.
class ReusableLine {
 public:
  explicit ReusableLine(const std::vector<std::string>& words) {
    std::vector<std::size_t> offsets;
    for (const std::string& word : words) {
      offsets.push_back(pristine_.size());
      pristine_.insert(pristine_.end(), word.begin(), word.end());
      pristine_.push_back('\0');
    }
    buffer_ = pristine_;
    for (std::size_t offset : offsets) {
      pointers_.push_back(buffer_.data() + offset);
    }
  }
  void restore() { std::memcpy(buffer_.data(), pristine_.data(), pristine_.size()); }
  int argc() const { return static_cast<int>(pointers_.size()); }
  char** argv() { return pointers_.data(); }

 private:
  std::vector<char> pristine_;
  std::vector<char> buffer_;
  std::vector<char*> pointers_;
};

// Whatever the library prints is caught, so that a terminal is not what is measured.
void translate(benchmark::State& state, ReusableLine& line) {
  translate::CapturedOutput quiet;
  for (auto _ : state) {
    line.restore();
    tovak::Translation translation = tovak::translateArguments(line.argc(), line.argv());
    benchmark::DoNotOptimize(translation.commandLine.data());
  }
  quiet.finish();
}

void typicalLine(benchmark::State& state, const std::vector<std::string>& words) {
  ReusableLine line(words);
  translate(state, line);
}

BENCHMARK_CAPTURE(typicalLine, compare,
                  std::vector<std::string>{"tovak", "compare", "-F", "-D", "-l", "/srv/repo", "-f",
                                           "A1", "-i", "3,4", "-m", "7X21", "--xml",
                                           "--vmware-esxi=esx1"});
BENCHMARK_CAPTURE(typicalLine, update,
                  std::vector<std::string>{"tovak", "update", "-F", "--noinventory",
                                           "--host=10.0.0.5",
                                           "--update-args=--user=admin,--password=secret,--backup",
                                           "-m", "7X21", "-l", "/srv/repo"});
BENCHMARK_CAPTURE(typicalLine, acquire,
                  std::vector<std::string>{"tovak", "acquire", "-l", "/srv/repo", "-m", "7X21",
                                           "-o", "rhel8", "--proxy-address=proxy.local",
                                           "--proxy-port=3128", "--proxy-user=admin",
                                           "--proxy-password=secret"});
BENCHMARK_CAPTURE(typicalLine, quenmark,
                  std::vector<std::string>{"tovak", "quenmark", "-s", "--vq-address=10.1.1.1",
                                           "--vq-user=USERID", "--vq-password=PASSW0RD"});

// A compare line of state.range(0) option tokens, made of repeated supported options.
void scaling(benchmark::State& state) {
  const std::vector<std::string> group = {"-m", "7X21", "--local=/srv/repo", "-F"};
  std::vector<std::string> words = {"tovak", "compare"};
  for (int64_t i = 0; i < state.range(0); ++i) {
    words.push_back(group[static_cast<std::size_t>(i) % group.size()]);
  }
  ReusableLine line(words);
  translate(state, line);
  state.SetComplexityN(state.range(0));
}

BENCHMARK(scaling)->RangeMultiplier(2)->Range(8, 65536)->Complexity(benchmark::oN);
// One call timed on its own, as every run of the launcher makes one: the caches hold nothing
// of the line before it.
BENCHMARK(scaling)->Name("oneCall")->Arg(8192)->Arg(65536)->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
