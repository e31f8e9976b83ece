/// Runs a fuzz target without a fuzzing engine: every file of the corpus folders given, then a
/// fixed number of mutations of them from a fixed seed. With clang, the same targets link to
/// libFuzzer.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace
{

using Bytes = std::vector<std::uint8_t>;

constexpr int kMutations = 20'000;
constexpr std::size_t kLargestGrowth = 64; // bytes inserted at once

Bytes readFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::size_t below(std::mt19937& random, std::size_t limit)
{
    return limit == 0 ? 0 : random() % limit;
}

void mutateOnce(Bytes& bytes, std::mt19937& random)
{
    const auto position = static_cast<std::ptrdiff_t>(below(random, bytes.size() + 1));
    const auto at = bytes.begin() + position;
    switch (random() % 4) {
    case 0: // change a byte
        if (at != bytes.end()) {
            *at = static_cast<std::uint8_t>(random());
        }
        break;
    case 1: // cut the end off
        bytes.erase(at, bytes.end());
        break;
    case 2: // insert bytes
        bytes.insert(at, 1 + below(random, kLargestGrowth), static_cast<std::uint8_t>(random()));
        break;
    default: // repeat what follows
        const Bytes tail(at, bytes.end());
        bytes.insert(bytes.end(), tail.begin(), tail.end());
        break;
    }
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<Bytes> corpus{{}};
    for (int i = 1; i < argc; ++i) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i])) {
            if (entry.is_regular_file()) {
                corpus.push_back(readFile(entry.path()));
            }
        }
    }
    if (corpus.size() < 2) {
        std::fputs("no seeds found\n", stderr);
        return EXIT_FAILURE;
    }
    for (const Bytes& seed : corpus) {
        LLVMFuzzerTestOneInput(seed.data(), seed.size());
    }
    std::mt19937 random(1);
    for (int i = 0; i < kMutations; ++i) {
        Bytes mutated = corpus[below(random, corpus.size())];
        for (std::size_t n = 1 + below(random, 8); n > 0; --n) {
            mutateOnce(mutated, random);
        }
        LLVMFuzzerTestOneInput(mutated.data(), mutated.size());
    }
    std::printf("%zu seeds and %d mutations done\n", corpus.size() - 1, kMutations);
    return EXIT_SUCCESS;
}
