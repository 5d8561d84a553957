// A fuzz target without a fuzzer: replay CORPUS_FOLDER [MUTATIONS]
//
// Runs the target on every file of the corpus, in the order of their names, then
// on so many mutations of them. The mutations come from one seed, so that every
// run is the same: this keeps the targets and their seeds working, where the
// fuzzer itself looks for what is new. A target that finds a mistake stops the
// program, which tells the number of the input on the standard error.

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

std::vector<Bytes> read_corpus(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  std::vector<Bytes> corpus;
  for (const auto& path : paths) {
    std::ifstream file(path, std::ios::binary);
    corpus.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return corpus;
}

/// Changes inputs at random, the same way in every run.
class Mutator {
 public:
  explicit Mutator(const std::vector<Bytes>& corpus) : m_corpus(corpus) {}

  Bytes next() {
    Bytes input = any_of_corpus();
    for (std::size_t edits = 1 + below(6); edits > 0; --edits) edit(input);
    return input;
  }

 private:
  // Not a distribution of the standard library: those differ between them.
  std::size_t below(std::size_t limit) { return m_random() % limit; }
  const Bytes& any_of_corpus() { return m_corpus[below(m_corpus.size())]; }

  void edit(Bytes& input) {
    const std::size_t at = below(input.size() + 1);
    const auto place = input.begin() + static_cast<std::ptrdiff_t>(at);
    const std::size_t rest = input.size() - at;
    switch (below(5)) {
      case 0:
        if (rest > 0) input[at] = static_cast<std::uint8_t>(m_random());
        break;
      case 1:
        input.insert(place, static_cast<std::uint8_t>(m_random()));
        break;
      case 2:
        input.erase(place, place + static_cast<std::ptrdiff_t>(std::min(rest, 1 + below(16))));
        break;
      case 3:
        set_number(input, at);
        break;
      default:
        insert_piece(input, at);
        break;
    }
  }

  /// A number that counts and coordinates go wrong at.
  void set_number(Bytes& input, std::size_t at) {
    constexpr std::array<std::int32_t, 8> numbers = {0,         1,       -1,         0x7FFFFFFF,
                                                     INT32_MIN, 0x10000, 0x40000000, 0x20000002};
    const std::int32_t number = numbers[below(numbers.size())];
    if (input.size() - at >= sizeof number) std::memcpy(&input[at], &number, sizeof number);
  }

  void insert_piece(Bytes& input, std::size_t at) {
    const Bytes& source = any_of_corpus();
    const std::size_t from = below(source.size() + 1);
    const std::size_t count = std::min(source.size() - from, below(64));
    const auto first = source.begin() + static_cast<std::ptrdiff_t>(from);
    input.insert(input.begin() + static_cast<std::ptrdiff_t>(at), first,
                 first + static_cast<std::ptrdiff_t>(count));
  }

  const std::vector<Bytes>& m_corpus;
  std::mt19937 m_random{20261121};
};

/// Which input is being run, counted from 1.
volatile std::size_t current = 0;

void tell_and_stop(int signal) {
  std::fprintf(stderr, "Stopped in input %zu.\n", current);
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

void run(const Bytes& input) {
  current = current + 1;
  LLVMFuzzerTestOneInput(input.data(), input.size());
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<Bytes> corpus = argc > 1 ? read_corpus(argv[1]) : std::vector<Bytes>();
  if (corpus.empty()) {
    std::fprintf(stderr, "Usage: %s CORPUS_FOLDER [MUTATIONS]\n", argv[0]);
    return 2;
  }
  const std::size_t mutations = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1000;
  for (const int signal : {SIGABRT, SIGSEGV, SIGFPE}) std::signal(signal, &tell_and_stop);
  for (const Bytes& input : corpus) run(input);
  Mutator mutator(corpus);
  for (std::size_t i = 0; i < mutations; ++i) run(mutator.next());
  std::printf("%zu inputs of the corpus, %zu mutations\n", corpus.size(), mutations);
  return 0;
}
