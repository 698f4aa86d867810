// Runs a fuzz target without a fuzzer: every seed of a folder, and a fixed number of mutations of each, others with
// another TWQB_ROUND. For the ordinary test run, on any compiler; ./run fuzz searches further.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void Run(const std::string& input) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

// One to four small changes: a byte, a cut, a doubled or a swapped range.
std::string Mutated(std::string input, std::mt19937_64& random) {
  const auto below = [&](std::size_t n) { return n == 0 ? 0 : static_cast<std::size_t>(random() % n); };
  for (std::size_t i = below(4) + 1; i > 0 && !input.empty(); --i) {
    const auto at = below(input.size());
    const auto length = below(std::min<std::size_t>(input.size() - at, 40)) + 1;
    switch (below(4)) {
      case 0:
        input[at] = static_cast<char>(below(256));
        break;
      case 1:
        input.erase(at, length);
        break;
      case 2:
        input.insert(at, input.substr(at, length));
        break;
      default:
        input.replace(below(input.size()), 0, input.substr(at, length));
        break;
    }
  }
  return input;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s SEEDS MUTATIONS\n", argv[0]);
    return 2;
  }
  std::vector<std::filesystem::path> seeds;
  for (const auto& entry : std::filesystem::directory_iterator(argv[1])) seeds.push_back(entry.path());
  std::ranges::sort(seeds);
  if (seeds.empty()) {
    std::fprintf(stderr, "no seeds in %s\n", argv[1]);
    return 1;
  }
  const int mutations = std::atoi(argv[2]);
  const char* round = std::getenv("TWQB_ROUND");
  std::mt19937_64 random(round == nullptr ? 1 : std::strtoull(round, nullptr, 10));
  for (const auto& path : seeds) {
    std::ifstream file(path, std::ios::binary);
    const std::string seed{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    Run(seed);
    for (int i = 0; i < mutations; ++i) Run(Mutated(seed, random));
  }
  std::printf("%zu seeds, %d mutations of each\n", seeds.size(), mutations);
  return 0;
}
